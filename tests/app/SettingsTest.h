#pragma once

#include "app/FileDialogUser.h"
#include "app/StepperTest.h"

#include <QTemporaryDir>

#include <functional>

class SimulatedPort;

/// What the tests of the saved configuration share: a folder of their own, in which the program
/// "was started", somebody in front of the file dialogs, and what goes over the wire.
class SettingsTest : public StepperTest
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    struct Value
    {
        int number;
        int value;
    };

    /// A key of the settings file.
    struct Key
    {
        const char *section;
        const char *key;
        int number; ///< of its parameter

        QString fullName() const { return QLatin1String(section) + u'/' + QLatin1String(key); }
    };

    /// All keys in the order of the export.
    static const QList<Key> &keys();

    /// A datagram as the wire log has it: "01 06 06 00 00 00 00 00 0D".
    static QString datagram(int command, int type, int value, int address = 1);
    /// The numbers in the order of the export, which keys() has, too.
    static QList<int> exportedNumbers();
    static QStringList readsOf(const QList<int> &numbers);
    /// Values that differ from those of a fresh module and from each other where they may.
    static QList<Value> distinctValues();
    static void setValues(SimulatedPort &module, const QList<Value> &values);

    /// A module with the values, connected, with its panels filled and the polling stopped.
    std::unique_ptr<SimulatedPort> connectedModule(const QList<Value> &values = {});
    void importFile(const QString &fileName);
    void exportFile(const QString &fileName);
    static int valueOf(SimulatedPort &module, int number);

    QString path(const QString &fileName) const { return m_folder.filePath(fileName); }
    static QByteArray contentOf(const QString &fileName);
    static void write(const QString &fileName, const QByteArray &content);
    /// A file that is stored beside the tests.
    static QByteArray stored(const QString &fileName);

    /// Runs @p slot while another thread waits for @p count requests and then calls @p then.
    void runAndInterrupt(void (Stepper::*slot)(), SimulatedPort &module, qsizetype count,
                         const std::function<void()> &then);
    /// Runs @p slot on @p fileName while a module with the distinct values is polled: what the run
    /// asks has to be @p expected without a poll in between, and the polling has to go on after it.
    void verifyThatPollingWaits(void (Stepper::*slot)(), const QString &fileName,
                                const QStringList &expected);
    /// The debug lines without those of the platform, which shows windows and says so.
    QStringList told() const;
    /// How often an answer was waited for in vain.
    qsizetype timeOuts() const;
    /// Requests that the module got and didn't answer.
    static qsizetype unanswered(const SimulatedPort &module);

    std::unique_ptr<FileDialogUser> m_user;

private:
    QTemporaryDir m_folder;
    QString m_folderBefore;
};
