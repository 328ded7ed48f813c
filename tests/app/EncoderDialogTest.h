#pragma once

#include "app/DEncoderInitialization.h"
#include "support/TestCase.h"

#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QStringList>
#include <QTest>
#include <QTextEdit>

#include <optional>

/// Base of the tests of the encoder dialog by itself: a shown one for each test function, with a
/// transport that is played by the test.
class EncoderDialogTest : public TestCase
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    static constexpr char Address = 5;
    static constexpr char StateParameter = static_cast<char>(132);
    static constexpr char FullstepParameter = static_cast<char>(202);

    template <typename Widget = QWidget>
    Widget *child(const char *name) const
    {
        auto *widget = m_dialog->findChild<Widget *>(QLatin1String(name));
        if (!widget) {
            qFatal("no %s", name);
        }
        return widget;
    }
    void start() { QTest::mouseClick(child("btnStartInitialization"), Qt::LeftButton); }
    bool areControlsEnabled() const;
    bool areControlsDisabled() const;
    QString stateText() const { return child<QTextEdit>("teInitializationState")->toPlainText(); }
    void reply(char type, int value) { m_dialog->requestedValue(Address, 0, type, value); }

    QPointer<DEncoderInitialization> m_dialog;
    QStringList m_requests; ///< "get 5 0 132", "set 5 0 132 1"
    /// What the module answers to a question for the state; none: it is silent.
    std::optional<int> m_state;
};
