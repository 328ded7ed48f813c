#pragma once

#include <QFileDialog>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

/// Whoever sits in front of the file dialogs, which hold up the call that shows them: waits for
/// each and answers it by keys. The toolkit's own dialog is what the test platform shows.
class FileDialogUser : public QObject
{
    Q_OBJECT

public:
    FileDialogUser();

    /// Will paste @p fileName into the next dialogs and press Enter. Whether an existing file may
    /// be replaced is answered by yes.
    void willEnter(const QString &fileName);
    /// Will press Escape in the next dialogs.
    void willCancel();

    int dialogs() const { return m_dialogs; } ///< seen so far
    bool hadParent() const { return m_hadParent; } ///< the last dialog
    QString title() const { return m_title; } ///< of the last dialog
    QStringList filters() const { return m_filters; } ///< of the last dialog
    QString proposedName() const { return m_proposedName; } ///< what stood in the last dialog
    QString folder() const { return m_folder; } ///< that the last dialog showed at first

private:
    void look();
    void answer(QFileDialog *dialog);

    QTimer m_timer;
    QString m_fileName; ///< null: will cancel
    QPointer<QFileDialog> m_answered; ///< null, when it is gone
    int m_dialogs = 0;
    bool m_hadParent = false;
    QString m_title;
    QStringList m_filters;
    QString m_proposedName;
    QString m_folder;
};
