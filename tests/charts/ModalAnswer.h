#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <functional>
#include <utility>

/// Waits, while the object lives, for a modal dialog of one kind and then plays the user in it.
/// What is still open after that is rejected, so that a failed test ends.
template <typename Dialog>
class ModalAnswer
{
public:
    explicit ModalAnswer(std::function<void(Dialog *)> answer)
        : m_answer(std::move(answer))
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start(0);
    }

    /// Whether the dialog came.
    bool given() const { return m_given; }

private:
    void look()
    {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible()) {
            return;
        }
        m_timer.stop();
        m_given = true;
        m_answer(dialog);
        if (dialog->isVisible()) {
            dialog->reject();
        }
    }

    std::function<void(Dialog *)> m_answer;
    QTimer m_timer;
    bool m_given = false;
};
