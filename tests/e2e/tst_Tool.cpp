#include "simulator/SimulatorProcess.h"
#include "support/TestCase.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

/// Starts the program as a user does, with modules plugged in, lets a script drive it with mouse
/// and keys, and compares all that crossed the wire.
class tst_Tool : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void demo_data();
    void demo();
    void portPulledOutWhileIdle();
    void portPulledOutInAnExchange();
    void closingWhileConnectedSaysNothing();
    void closingWhilePollingEndsAtOnce();
    void settingsFileIsLeftAlone();

private:
    /// Runs the script to its end. A line that it prints reaches @p onPrint, which may write to the
    /// simulated modules.
    void run(const QString &script, const QStringList &environment = {},
             const std::function<void(SimulatorProcess &, const QString &)> &onPrint = {});
    QStringList wireLog() const;
    /// The wire log without what the polling asks for all the time, and the answers to it.
    QStringList commandLog() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_Tool::init()
{
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_Tool::run(const QString &script, const QStringList &environment,
                   const std::function<void(SimulatorProcess &, const QString &)> &onPrint)
{
    QStringList command = {u"env"_s, u"DEMO_PICTURES="_s + m_folder->path(),
                           u"QT_PLUGIN_PATH="_s + QStringLiteral(ZDR_DRIVER_PLUGINS),
                           u"QT_QPA_GENERIC_PLUGINS=zdrdriver:"_s + script};
    command += environment;
    command += {QStringLiteral(ZDR_LAUNCHER), QStringLiteral(ZDR_TOOL)};
    SimulatorProcess simulator(QStringList{u"--plugged"_s, u"--rs485-address"_s, u"7"_s,
                                           u"--rs485-baud"_s, u"14400"_s, u"--can-address"_s,
                                           u"9"_s, u"--can-bitrate"_s, u"500"_s, u"--log"_s,
                                           m_folder->filePath(u"wire.log"_s), u"--"_s}
                               + command);
    QStringList report;
    for (QString line = simulator.readLine(); !line.isNull(); line = simulator.readLine()) {
        report.append(line);
        const QString printed = line.section(u" print "_s, 1);
        if (onPrint && !printed.isEmpty()) {
            onPrint(simulator, QString(printed).remove(u'"'));
        }
    }
    const QString told = report.join(u'\n') + u'\n' + simulator.messages();
    QVERIFY2(!report.filter(QRegularExpression(u"^done "_s)).isEmpty(), qPrintable(told));
    const int exitCode = simulator.waitForEnd();
    if (exitCode != 0) {
        // By itself, since the text of a failure is cut.
        qInfo().noquote() << simulator.messages();
    }
    QCOMPARE(exitCode, 0);
}

QStringList tst_Tool::wireLog() const
{
    QFile file(m_folder->filePath(u"wire.log"_s));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QString::fromLatin1(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

QStringList tst_Tool::commandLog() const
{
    static const QRegularExpression poll(
        u"< (?:.. 06|00. \\[8\\] 06) (?:12|96|97|98|83|01|0F) 00 00 00 00 00 "_s);
    QStringList commands;
    bool isAnswerToPoll = false;
    const QStringList log = wireLog();
    for (const QString &line : log) {
        if (line.contains(u" < "_s)) {
            isAnswerToPoll = poll.match(line).hasMatch();
        }
        if (!isAnswerToPoll) {
            commands.append(line);
        }
    }
    return commands;
}

void tst_Tool::demo_data()
{
    QTest::addColumn<QStringList>("environment");
    QTest::newRow("as it is") << QStringList();
    QTest::newRow("German, with other separators in numbers")
        << QStringList({u"LC_ALL=de_DE.UTF-8"_s, u"LANG=de_DE.UTF-8"_s});
    QTest::newRow("at 200 %") << QStringList(u"QT_SCALE_FACTOR=2"_s);
}

void tst_Tool::demo()
{
    QFETCH(QStringList, environment);
    run(QStringLiteral(ZDR_DEMO_STEPS), environment);
    QCOMPARE(commandLog(),
             QStringList({
                 u"usb < 01 06 04 00 00 00 00 00 0B"_s,
                 u"usb > 02 01 64 06 00 00 C8 00 35"_s,
                 u"rs485 < 07 06 05 00 00 00 00 00 12"_s,
                 u"rs485 > 02 07 64 06 00 00 C8 00 3B"_s,
                 u"can < 009 [8] 06 04 00 00 00 00 00 03"_s,
                 u"can > 002 [8] 09 64 06 00 00 C8 00 03"_s,
             }));
    const QDir folder(m_folder->path());
    QCOMPARE(
        folder.entryList({u"*.png"_s}, QDir::Files, QDir::Name),
        QStringList({u"can.png"_s, u"connection.png"_s, u"direct-command.png"_s, u"rs485.png"_s}));
    const int scale = environment.contains(u"QT_SCALE_FACTOR=2"_s) ? 2 : 1;
    QCOMPARE(QImage(folder.filePath(u"connection.png"_s)).size(), QSize(1000, 500) * scale);
}

void tst_Tool::portPulledOutWhileIdle()
{
    run(QStringLiteral(ZDR_SCRIPTS "/pull-out-idle.steps"), {},
        [](SimulatorProcess &simulator, const QString &line) { simulator.writeLine(line); });
    // Nothing went out while the port was away.
    QCOMPARE(commandLog().filter(u"usb <"_s).size(), 1);
}

void tst_Tool::portPulledOutInAnExchange()
{
    run(QStringLiteral(ZDR_SCRIPTS "/pull-out-exchange.steps"), {},
        [this](SimulatorProcess &simulator, const QString &line) {
            if (!line.contains(u"after the next request"_s)) {
                simulator.writeLine(line);
                return;
            }
            QTRY_VERIFY(!commandLog().isEmpty());
            simulator.writeLine(u"unplug usb"_s);
        });
    QCOMPARE(commandLog(), QStringList(u"usb < 01 01 00 00 00 00 00 00 02"_s));
}

void tst_Tool::closingWhileConnectedSaysNothing()
{
    run(QStringLiteral(ZDR_SCRIPTS "/close-connected.steps"));
    // No stop and no close, though the motor turns.
    QCOMPARE(commandLog(),
             QStringList(
                 {u"usb < 01 01 00 00 00 00 03 E8 ED"_s, u"usb > 02 01 64 01 00 00 03 E8 53"_s}));
}

void tst_Tool::closingWhilePollingEndsAtOnce()
{
    QStringList logWhenAsleep;
    run(QStringLiteral(ZDR_SCRIPTS "/close-polling.steps"), {},
        [&](SimulatorProcess &, const QString &line) {
            if (line == "asleep"_L1) {
                logWhenAsleep = wireLog();
            }
        });
    QVERIFY(!logWhenAsleep.isEmpty());
    QCOMPARE(wireLog(), logWhenAsleep);
}

void tst_Tool::settingsFileIsLeftAlone()
{
    run(QStringLiteral(ZDR_SCRIPTS "/close-connected.steps"),
        {u"XDG_CONFIG_HOME="_s + m_folder->filePath(u"config"_s)});
    QVERIFY(!QDir(m_folder->filePath(u"config"_s)).exists());
}

QTEST_GUILESS_MAIN(tst_Tool)
#include "tst_Tool.moc"
