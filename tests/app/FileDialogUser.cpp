#include "app/FileDialogUser.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

FileDialogUser::FileDialogUser()
{
    constexpr int LookIntervalMsecs = 5;
    connect(&m_timer, &QTimer::timeout, this, &FileDialogUser::look);
    m_timer.start(LookIntervalMsecs);
}

void FileDialogUser::willEnter(const QString &fileName)
{
    m_fileName = fileName;
}

void FileDialogUser::willCancel()
{
    m_fileName = QString();
}

void FileDialogUser::look()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (auto *question = qobject_cast<QMessageBox *>(modal)) {
        QTest::keyClick(question->button(QMessageBox::Yes), Qt::Key_Space);
        return;
    }
    auto *dialog = qobject_cast<QFileDialog *>(modal);
    if (dialog && dialog != m_answered && dialog->isVisible()) {
        m_answered = dialog;
        // Not from here: the answer may bring up a question, and no timer fires within its own
        // call.
        QMetaObject::invokeMethod(
            this, [this, dialog] { answer(dialog); }, Qt::QueuedConnection);
    }
}

void FileDialogUser::answer(QFileDialog *dialog)
{
    auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
    if (!edit) {
        qFatal("not the toolkit's own dialog");
    }
    ++m_dialogs;
    m_hadParent = dialog->parentWidget();
    m_title = dialog->windowTitle();
    m_filters = dialog->nameFilters();
    m_proposedName = edit->text();
    m_folder = dialog->directory().absolutePath();
    if (m_fileName.isNull()) {
        QTest::keyClick(dialog, Qt::Key_Escape);
        return;
    }
    edit->setCompleter(nullptr); // its list comes up at any time and takes the keys
    edit->setFocus();
    QTest::keySequence(edit, QKeySequence::SelectAll);
    // Not typed: the dialog changes its folder at every slash that it sees come.
    QGuiApplication::clipboard()->setText(m_fileName);
    QTest::keySequence(edit, QKeySequence::Paste);
    QTest::keyClick(edit, Qt::Key_Return);
}
