#include "app/WheelGuard.h"
#include "support/TestCase.h"
#include "support/TurnWheel.h"

#include <QComboBox>
#include <QDial>
#include <QLineEdit>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>

namespace {

int valueOf(const QWidget *widget)
{
    if (const auto *combo = qobject_cast<const QComboBox *>(widget)) {
        return -combo->currentIndex(); // the wheel goes up the list
    }
    return widget->property("value").toInt();
}

} // namespace

class tst_WheelGuard : public TestCase
{
    Q_OBJECT

private slots:
    void wheelChangesOnlyTheFocusedControl_data();
    void wheelChangesOnlyTheFocusedControl();
    void wheelNeverTakesTheFocus();
    void scrollBarsAreLeftAlone();
};

void tst_WheelGuard::wheelChangesOnlyTheFocusedControl_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("spin box") << 0;
    QTest::newRow("dial") << 1;
    QTest::newRow("slider") << 2;
    QTest::newRow("combo box") << 3;
}

void tst_WheelGuard::wheelChangesOnlyTheFocusedControl()
{
    QFETCH(int, index);
    QWidget root;
    auto *layout = new QVBoxLayout(&root);
    auto *elsewhere = new QLineEdit;
    layout->addWidget(elsewhere);
    auto *combo = new QComboBox;
    combo->addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    combo->setCurrentIndex(2);
    const QList<QWidget *> controls = {new QSpinBox, new QDial, new QSlider(Qt::Horizontal), combo};
    for (QWidget *control : controls) {
        layout->addWidget(control);
    }
    WheelGuard::install(&root);
    root.show();
    QVERIFY(QTest::qWaitForWindowActive(&root));
    QWidget *control = controls.at(index);

    elsewhere->setFocus();
    const int before = valueOf(control);
    turnWheel(control);
    QCOMPARE(valueOf(control), before);

    control->setFocus();
    turnWheel(control);
    QVERIFY(valueOf(control) > before);
}

void tst_WheelGuard::wheelNeverTakesTheFocus()
{
    QWidget root;
    auto *layout = new QVBoxLayout(&root);
    auto *elsewhere = new QLineEdit;
    auto *spinBox = new QSpinBox;
    layout->addWidget(elsewhere);
    layout->addWidget(spinBox);
    WheelGuard::install(&root);
    QCOMPARE(spinBox->focusPolicy(), Qt::StrongFocus);
    root.show();
    QVERIFY(QTest::qWaitForWindowActive(&root));
    elsewhere->setFocus();
    turnWheel(spinBox);
    turnWheel(spinBox);
    QVERIFY(elsewhere->hasFocus());
    QCOMPARE(spinBox->value(), 0);
}

void tst_WheelGuard::scrollBarsAreLeftAlone()
{
    QWidget root;
    auto *layout = new QVBoxLayout(&root);
    auto *scrollBar = new QScrollBar(Qt::Vertical);
    scrollBar->setValue(50);
    layout->addWidget(scrollBar);
    WheelGuard::install(&root);
    root.show();
    QVERIFY(QTest::qWaitForWindowActive(&root));
    turnWheel(scrollBar);
    QVERIFY(scrollBar->value() < 50);
}

QTEST_MAIN(tst_WheelGuard)
#include "tst_WheelGuard.moc"
