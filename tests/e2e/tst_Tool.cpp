#include "app/ParameterAccess.h"
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

namespace {

/// What the polling asks for all the time, and for the charts.
const QList<int> PolledNumbers = {18, 150, 151, 152, 131, 1, 15, 2, 0};

/// Of a connect, what can be told from the polling.
ParameterAccesses notPolled(ParameterAccesses accesses)
{
    accesses.removeIf([](const ParameterAccess &access) {
        return access.command == 6 && PolledNumbers.contains(access.number);
    });
    return accesses;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList asLogged(const QString &direction, QStringList datagrams)
{
    return datagrams.replaceInStrings(QRegularExpression(u"^"_s), direction);
}

/// As they stand in the log.
QStringList overUsb(const ParameterAccesses &accesses)
{
    return asLogged(u"usb < "_s, onSerialLine(notPolled(accesses)));
}

} // namespace

/// Starts the program as a user does, with modules plugged in, lets a script drive it with mouse
/// and keys, and compares all that crossed the wire.
class tst_Tool : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void threeTransports_data() { addEnvironments(); }
    void threeTransports();
    void demo_data() { addEnvironments(); }
    void demo();
    void portPulledOutWhileIdle();
    void portPulledOutInAnExchange();
    void closingWhileConnectedSaysNothing();
    void closingWhilePollingEndsAtOnce();
    void settingsFileIsLeftAlone();

private:
    static void addEnvironments();
    /// Runs the script to its end. A line that it prints reaches @p onPrint, which may write to the
    /// simulated modules.
    void run(const QString &script, const QStringList &environment = {},
             const std::function<void(SimulatorProcess &, const QString &)> &onPrint = {});
    QStringList wireLog() const;
    /// The wire log without what the polling asks for all the time, and the answers to it.
    QStringList commandLog() const;
    /// Only what went to the modules of that.
    QStringList requestLog() const { return commandLog().filter(u" < "_s); }

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
    // The end of it: the text of a failure is cut.
    const QString told = report.join(u'\n').right(500) + u'\n' + simulator.messages().right(500);
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
    return QString::fromLatin1(contentOf(m_folder->filePath(u"wire.log"_s)))
        .split(u'\n', Qt::SkipEmptyParts);
}

QStringList tst_Tool::commandLog() const
{
    QStringList numbers;
    for (const int number : PolledNumbers) {
        numbers.append(u"%1"_s.arg(number, 2, 16, QLatin1Char('0')).toUpper());
    }
    const QRegularExpression poll(
        u"< (?:.. 06|00. \\[8\\] 06) (?:%1) 00 00 00 00 00 "_s.arg(numbers.join(u'|')));
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

void tst_Tool::addEnvironments()
{
    QTest::addColumn<QStringList>("environment");
    QTest::newRow("as it is") << QStringList();
    QTest::newRow("German, with other separators in numbers")
        << QStringList({u"LC_ALL=de_DE.UTF-8"_s, u"LANG=de_DE.UTF-8"_s});
    QTest::newRow("at 200 %") << QStringList(u"QT_SCALE_FACTOR=2"_s);
}

void tst_Tool::threeTransports()
{
    QFETCH(QStringList, environment);
    run(QStringLiteral(ZDR_SCRIPTS "/transports.steps"), environment);
    // Each connect reads all values. The second and the third meet panels that show what the
    // module before had.
    QStringList requests = overUsb(firstConnect());
    requests.append(u"usb < 01 06 04 00 00 00 00 00 0B"_s);
    requests += asLogged(u"rs485 < "_s, onSerialLine(notPolled(connectToSecondModule()), 7));
    requests.append(u"rs485 < 07 06 05 00 00 00 00 00 12"_s);
    requests += onBus(notPolled(laterConnect()), 9);
    requests.append(u"can < 009 [8] 06 04 00 00 00 00 00 03"_s);
    const QStringList log = commandLog();
    QCOMPARE(log.filter(u" < "_s), requests);
    QCOMPARE(log.size(), 2 * requests.size()); // each has its answer
    for (const QString &reply :
         {u"usb > 02 01 64 06 00 00 C8 00 35"_s, u"rs485 > 02 07 64 06 00 00 C8 00 3B"_s,
          u"can > 002 [8] 09 64 06 00 00 C8 00 03"_s}) {
        // Of the direct command, which is the last over its transport.
        QCOMPARE(log.filter(reply.section(u'>', 0, 0) + u'>').constLast(), reply);
    }
}

void tst_Tool::demo()
{
    QFETCH(QStringList, environment);
    run(QStringLiteral(ZDR_DEMO_STEPS), environment);
    if (QTest::currentTestFailed()) {
        return;
    }
    using Access = ParameterAccess;
    const ParameterAccess stop = {3, 0, 0};
    const Access acceleration = Access::write(5, 50000);
    const Access velocity = Access::write(4, 100000);
    // To the end of the motion; what both ramp panels hear anew they write back.
    const QStringList requests = overUsb(firstConnect()
                                         + ParameterAccesses({{1, 0, 100000},
                                                              acceleration,
                                                              acceleration,
                                                              acceleration,
                                                              stop,
                                                              acceleration,
                                                              {4, 0, 10000},
                                                              acceleration,
                                                              velocity,
                                                              velocity,
                                                              velocity,
                                                              Access::write(14, 300),
                                                              stop}));
    QCOMPARE(requestLog().mid(0, requests.size()), requests);

    const QDir folder(m_folder->path());
    for (const char *name : {"connection", "jog-velocity", "jog-position", "jog-torque",
                             "direct-command", "rs485", "can"}) {
        QVERIFY2(folder.exists(QLatin1String(name) + ".png"_L1), name);
    }
    const int scale = environment.contains(u"QT_SCALE_FACTOR=2"_s) ? 2 : 1;
    QCOMPARE(QImage(folder.filePath(u"connection.png"_s)).size(), QSize(1000, 500) * scale);
    for (const char *name : {"settings.ini", "settings.zdr"}) {
        const QByteArray stored = contentOf(QStringLiteral(ZDR_DATA "/") + QLatin1String(name));
        QVERIFY(!stored.isEmpty());
        QCOMPARE(contentOf(folder.filePath(QLatin1String(name))), stored);
    }
}

void tst_Tool::portPulledOutWhileIdle()
{
    run(QStringLiteral(ZDR_SCRIPTS "/pull-out-idle.steps"), {},
        [](SimulatorProcess &simulator, const QString &line) { simulator.writeLine(line); });
    // Nothing went out while the port was away.
    QCOMPARE(requestLog(),
             overUsb(firstConnect()) + overUsb(laterConnect())
                 + QStringList(u"usb < 01 01 00 00 00 00 00 00 02"_s));
}

void tst_Tool::portPulledOutInAnExchange()
{
    const QString rotate = u"usb < 01 01 00 00 00 00 00 00 02"_s;
    run(QStringLiteral(ZDR_SCRIPTS "/pull-out-exchange.steps"), {},
        [this, &rotate](SimulatorProcess &simulator, const QString &line) {
            if (!line.contains(u"after the next request"_s)) {
                simulator.writeLine(line);
                return;
            }
            QTRY_VERIFY(requestLog().contains(rotate));
            simulator.writeLine(u"unplug usb"_s);
        });
    QCOMPARE(requestLog(), overUsb(firstConnect()) + QStringList(rotate) + overUsb(laterConnect()));
}

void tst_Tool::closingWhileConnectedSaysNothing()
{
    run(QStringLiteral(ZDR_SCRIPTS "/close-connected.steps"));
    // No stop and no close, though the motor turns.
    QCOMPARE(requestLog(),
             overUsb(firstConnect()) + QStringList(u"usb < 01 01 00 00 00 00 03 E8 ED"_s));
    QCOMPARE(commandLog().constLast(), u"usb > 02 01 64 01 00 00 03 E8 53"_s);
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
