#include "simulator/RawPort.h"
#include "simulator/SimulatorProcess.h"
#include "support/TestCase.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <csignal>
#include <numeric>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray question = QByteArray::fromHex("0106990000000000a0");
const QByteArray answer = QByteArray::fromHex("02016406000000f05d");

QByteArray datagram(int command, int type, int value)
{
    QByteArray bytes(9, '\0');
    bytes[0] = 1;
    bytes[1] = static_cast<char>(command);
    bytes[2] = static_cast<char>(type);
    qToBigEndian<qint32>(value, bytes.data() + 4);
    bytes[8] = static_cast<char>(std::accumulate(bytes.begin(), bytes.end() - 1, 0));
    return bytes;
}

QByteArray readAxis(int number)
{
    return datagram(6, number, 0);
}

QByteArray writeAxis(int number, int value)
{
    return datagram(5, number, value);
}

int valueOf(RawPort &port, const QByteArray &request)
{
    const QByteArray reply = port.exchange(request);
    return reply.size() == 9 ? qFromBigEndian<qint32>(reply.constData() + 4) : -1;
}

} // namespace

class tst_SimulatorProgram : public TestCase
{
    Q_OBJECT

private slots:
    void help();
    void wrongOptions_data();
    void wrongOptions();
    void pty();
    void ptyIdentity();
    void baudRate();
    void clamping();
    void machineFromTheOptions();
    void machineFromTheInput();
    void seed();
    void motorNeedsItsTime();
    void faultsFromTheInput();
    void wrongLines();
    void endOfInputEndsNothing();
    void quits();
    void endsOnSignal_data();
    void endsOnSignal();
    void link();
    void linkNeverReplacesAFile();
    void logFile();
    void logOnTheOutput();
};

void tst_SimulatorProgram::help()
{
    SimulatorProcess program({u"--help"_s});
    QCOMPARE(program.waitForEnd(), 0);
    const QString text = program.output();
    for (const char *word : {"--pty",
                             "--plugged",
                             "--line PATH",
                             "--can-interface NAME",
                             "--link PATH",
                             "--baud RATE",
                             "--address N",
                             "--reply-address N",
                             "--version-text TEXT",
                             "--firmware A.B",
                             "--limits HOW",
                             "--rs485-address N",
                             "--rs485-baud RATE",
                             "--can-address N",
                             "--can-bitrate KBIT",
                             "--without PORT",
                             "--machine LINE",
                             "--seed N",
                             "--log FILE",
                             "--help",
                             "fault silence [N]",
                             "canfault foreign ID [N]",
                             "switch SIDE POSITION",
                             "encoder endless",
                             "range AP MINIMUM MAXIMUM",
                             "plug PORT, unplug PORT",
                             "quit"}) {
        QVERIFY2(text.contains(QLatin1String(word)), word);
    }
    QVERIFY(program.messages().isEmpty());
}

void tst_SimulatorProgram::wrongOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << QStringList{};
    QTest::newRow("unknown") << QStringList{u"--pty"_s, u"--bogus"_s};
    QTest::newRow("short form") << QStringList{u"--pty"_s, u"-x"_s};
    QTest::newRow("both modes") << QStringList{u"--pty"_s, u"--plugged"_s, u"true"_s};
    QTest::newRow("line and pseudo-terminal")
        << QStringList{u"--pty"_s, u"--line"_s, u"/dev/tty"_s};
    QTest::newRow("line and CAN interface")
        << QStringList{u"--line"_s, u"/dev/tty"_s, u"--can-interface"_s, u"can0"_s};
    QTest::newRow("line with a command") << QStringList{u"--line"_s, u"/dev/tty"_s, u"true"_s};
    QTest::newRow("line without a name") << QStringList{u"--line"_s, u""_s};
    QTest::newRow("CAN interface without a name") << QStringList{u"--can-interface"_s, u""_s};
    QTest::newRow("no command") << QStringList{u"--plugged"_s, u"--"_s};
    QTest::newRow("stray argument") << QStringList{u"--pty"_s, u"stray"_s};
    QTest::newRow("missing argument") << QStringList{u"--pty"_s, u"--baud"_s};
    const QList<QStringList> values{
        {u"--baud"_s, u"x"_s},
        {u"--baud"_s, u"-1"_s},
        {u"--baud"_s, u"9600x"_s},
        {u"--baud"_s, u"99999999999"_s},
        {u"--address"_s, u"256"_s},
        {u"--reply-address"_s, u""_s},
        {u"--rs485-address"_s, u"1.0"_s},
        {u"--rs485-baud"_s, u"fast"_s},
        {u"--firmware"_s, u"1"_s},
        {u"--firmware"_s, u"1.128"_s},
        {u"--firmware"_s, u"a.b"_s},
        {u"--version-text"_s, u"short"_s},
        {u"--limits"_s, u"none"_s},
        {u"--without"_s, u"pty"_s},
        {u"--machine"_s, u"switch up 5"_s},
        {u"--machine"_s, u"fault silence"_s},
        {u"--machine"_s, u""_s},
        {u"--seed"_s, u"-1"_s},
        {u"--seed"_s, u"x"_s},
        {u"--can-address"_s, u"256"_s},
        {u"--can-bitrate"_s, u"300"_s},
        {u"--can-bitrate"_s, u"-1"_s},
        {u"--can-bitrate"_s, u"fast"_s},
    };
    for (const QStringList &value : values) {
        QTest::newRow(qPrintable(value.join(u' '))) << QStringList{u"--pty"_s} + value;
    }
}

void tst_SimulatorProgram::wrongOptions()
{
    QFETCH(QStringList, arguments);
    SimulatorProcess program(arguments);
    QCOMPARE(program.waitForEnd(), 2);
    QVERIFY(program.output().isEmpty());
    const QString message = program.messages();
    QVERIFY(message.startsWith(u"zdr-simulator: "_s));
    QCOMPARE(message.count(u'\n'), 1);
}

void tst_SimulatorProgram::pty()
{
    SimulatorProcess program({u"--pty"_s});
    RawPort port(program.readLine());
    QVERIFY(port.isOpen());
    QCOMPARE(port.exchange(question), answer);
    QVERIFY(port.reopen());
    QCOMPARE(port.exchange(question), answer);
}

void tst_SimulatorProgram::ptyIdentity()
{
    SimulatorProcess program({u"--pty"_s, u"--address=200"_s, u"--reply-address"_s, u"5"_s,
                              u"--version-text"_s, u"7711B207"_s, u"--firmware"_s, u"2.7"_s});
    RawPort port(program.readLine());
    QCOMPARE(port.exchange(QByteArray::fromHex("c88800000000000050")),
             QByteArray("\x05"
                        "7711B207"));
    const QByteArray number = port.exchange(QByteArray::fromHex("c88801000000000051"));
    QCOMPARE(number.left(4), QByteArray::fromHex("05c86488"));
    QCOMPARE(number.mid(6, 2), QByteArray::fromHex("0207"));
}

void tst_SimulatorProgram::baudRate()
{
    SimulatorProcess program({u"--pty"_s, u"--baud"_s, u"19200"_s, u"--log"_s, u"-"_s});
    RawPort port(program.readLine());
    QVERIFY(port.setLine(9600));
    QVERIFY(port.send(question));
    QCOMPARE(program.readLine(), u"pty ? 01 06 99 00 00 00 00 00 A0"_s);
    QVERIFY(port.setLine(19200));
    QCOMPARE(port.exchange(question), answer);
}

void tst_SimulatorProgram::clamping()
{
    const QByteArray tooMuch = QByteArray::fromHex("010506000000012c39");
    SimulatorProcess refusing({u"--pty"_s, u"--limits"_s, u"refuse"_s});
    RawPort first(refusing.readLine());
    QCOMPARE(first.exchange(tooMuch), QByteArray::fromHex("02010405000000808c"));
    SimulatorProcess clamping({u"--pty"_s, u"--limits"_s, u"clamp"_s});
    RawPort second(clamping.readLine());
    QCOMPARE(second.exchange(tooMuch), QByteArray::fromHex("02016405000000ff6b"));
}

void tst_SimulatorProgram::machineFromTheOptions()
{
    SimulatorProcess program({u"--pty"_s, u"--machine"_s, u"range 6 0 200"_s, u"--limits"_s,
                              u"clamp"_s, u"--machine"_s, u"switch left 0"_s, u"--machine"_s,
                              u"encoder failure 0"_s});
    RawPort port(program.readLine());
    QCOMPARE(valueOf(port, writeAxis(6, 255)), 200);
    QCOMPARE(valueOf(port, readAxis(18)), 0x089);
    QCOMPARE(valueOf(port, writeAxis(132, 1)), 1);
    QCOMPARE(valueOf(port, readAxis(132)), 3);
}

void tst_SimulatorProgram::machineFromTheInput()
{
    SimulatorProcess program({u"--pty"_s});
    RawPort port(program.readLine());
    program.writeLine(u"set 153 80"_s);
    program.writeLine(u"pty switch right 0"_s);
    program.writeLine(u"nonsense"_s); // its message shows that the lines before have been read
    QTRY_VERIFY_WITH_TIMEOUT(program.messages().contains(u"nonsense"_s), 30000);
    QCOMPARE(valueOf(port, readAxis(18)), 0x309);
    program.writeLine(u"release 153"_s);
    program.writeLine(u"switch right off"_s);
    program.writeLine(u"more nonsense"_s);
    QTRY_VERIFY_WITH_TIMEOUT(program.messages().contains(u"more"_s), 30000);
    QCOMPARE(valueOf(port, readAxis(18)), 0x009);
    QCOMPARE(program.messages().count(u'\n'), 2);
}

void tst_SimulatorProgram::seed()
{
    const auto noise = [](const QString &number) {
        SimulatorProcess program({u"--pty"_s, u"--seed"_s, number});
        RawPort port(program.readLine());
        valueOf(port, writeAxis(130, 1000000)); // no ramp
        valueOf(port, writeAxis(2, 1000));
        QList<int> values;
        for (int i = 0; i < 10; ++i) {
            values.append(valueOf(port, readAxis(150)));
        }
        return values;
    };
    const QList<int> first = noise(u"1"_s);
    QCOMPARE(noise(u"1"_s), first);
    QVERIFY(noise(u"2"_s) != first);
}

void tst_SimulatorProgram::motorNeedsItsTime()
{
    SimulatorProcess program({u"--pty"_s});
    RawPort port(program.readLine());
    QCOMPARE(valueOf(port, writeAxis(5, 1)), 1); // so slow that it would take half an hour
    QCOMPARE(valueOf(port, writeAxis(0, 1000000)), 1000000);
    QTRY_VERIFY_WITH_TIMEOUT(valueOf(port, readAxis(1)) > 0, 30000);
    QVERIFY(valueOf(port, readAxis(1)) < 1000000);
    QCOMPARE(valueOf(port, readAxis(18)), 0x008);
}

void tst_SimulatorProgram::faultsFromTheInput()
{
    SimulatorProcess program({u"--pty"_s, u"--log"_s, u"-"_s});
    RawPort port(program.readLine());
    program.writeLine(u"fault doubled"_s);
    program.writeLine(u"pty fault status 3 1"_s);
    program.writeLine(u"nonsense"_s); // its message shows that the lines before have been read
    QTRY_VERIFY_WITH_TIMEOUT(program.messages().contains(u"nonsense"_s), 30000);
    port.send(question);
    const QByteArray other = QByteArray::fromHex("02010306000000f0fc");
    QCOMPARE(port.receive(18), other + other);
    port.send(question);
    QCOMPARE(port.receive(18), answer + answer);
}

void tst_SimulatorProgram::wrongLines()
{
    SimulatorProcess program({u"--pty"_s});
    QVERIFY(!program.readLine().isEmpty());
    for (const QString &line :
         {u"fault noise"_s, u"plug pty"_s, u"unplug usb"_s, u"usb fault off"_s, u"pty"_s,
          u"canfault off"_s, u"switch up 5"_s, u"pty encoder"_s, u""_s, QString(5000, u'x')}) {
        program.writeLine(line);
    }
    program.writeLine(u"quit"_s);
    QCOMPARE(program.waitForEnd(), 0);
    QCOMPARE(program.messages().count(u"zdr-simulator: "_s), 8); // not for the last two
}

void tst_SimulatorProgram::endOfInputEndsNothing()
{
    SimulatorProcess program({u"--pty"_s});
    RawPort port(program.readLine());
    program.closeInput();
    QCOMPARE(port.exchange(question), answer);

    const auto processorTicks = [&program] {
        QFile file(u"/proc/%1/stat"_s.arg(program.processId()));
        const bool open = file.open(QIODevice::ReadOnly);
        const QByteArrayList fields = open ? file.readAll().split(' ') : QByteArrayList();
        return fields.value(13).toLong() + fields.value(14).toLong();
    };
    const long before = processorTicks();
    QTest::qWait(500);
    QVERIFY(processorTicks() - before < ::sysconf(_SC_CLK_TCK) / 4);
    QVERIFY(program.isRunning());
}

void tst_SimulatorProgram::quits()
{
    SimulatorProcess program({u"--pty"_s});
    QVERIFY(!program.readLine().isEmpty());
    program.writeLine(u"help"_s);
    QVERIFY(program.readLine().startsWith(u"Usage:"_s));
    program.writeLine(u"quit"_s);
    QCOMPARE(program.waitForEnd(), 0);
    QVERIFY(program.messages().isEmpty());
}

void tst_SimulatorProgram::endsOnSignal_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void tst_SimulatorProgram::endsOnSignal()
{
    QFETCH(int, number);
    SimulatorProcess program({u"--pty"_s});
    RawPort port(program.readLine());
    QCOMPARE(::kill(static_cast<pid_t>(program.processId()), number), 0);
    QCOMPARE(program.waitForEnd(), 0);
    QVERIFY(port.waitForHangUp());
}

void tst_SimulatorProgram::link()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"port"_s);
    QVERIFY(QFile::link(u"/nowhere"_s, path)); // left over from a run that was killed
    SimulatorProcess program({u"--pty"_s, u"--link"_s, path});
    const QString name = program.readLine();
    QCOMPARE(QFileInfo(path).symLinkTarget(), name);
    RawPort port(path);
    QCOMPARE(port.exchange(question), answer);
    program.terminate();
    QCOMPARE(program.waitForEnd(), 0);
    QVERIFY(!QFileInfo(path).isSymLink());
}

void tst_SimulatorProgram::linkNeverReplacesAFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"letter"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    SimulatorProcess program({u"--pty"_s, u"--link"_s, path});
    QCOMPARE(program.waitForEnd(), 1);
    QCOMPARE(program.messages().count(u'\n'), 1);
    QVERIFY(QFileInfo(path).isFile());
    QVERIFY(!QFileInfo(path).isSymLink());
}

void tst_SimulatorProgram::logFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"log"_s);
    SimulatorProcess program({u"--pty"_s, u"--log"_s, path});
    RawPort port(program.readLine());
    QCOMPARE(port.exchange(question), answer);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    // Written out at once, not at the end.
    QTRY_COMPARE((file.seek(0), file.readAll()),
                 QByteArray("pty < 01 06 99 00 00 00 00 00 A0\n"
                            "pty > 02 01 64 06 00 00 00 F0 5D\n"));

    SimulatorProcess failing({u"--pty"_s, u"--log"_s, folder.filePath(u"no/such/folder"_s)});
    QCOMPARE(failing.waitForEnd(), 1);
    QCOMPARE(failing.messages().count(u'\n'), 1);
}

void tst_SimulatorProgram::logOnTheOutput()
{
    SimulatorProcess program({u"--pty"_s, u"--log"_s, u"-"_s});
    RawPort port(program.readLine());
    QCOMPARE(port.exchange(question), answer);
    QCOMPARE(program.readLine(), u"pty < 01 06 99 00 00 00 00 00 A0"_s);
    QCOMPARE(program.readLine(), u"pty > 02 01 64 06 00 00 00 F0 5D"_s);
}

QTEST_GUILESS_MAIN(tst_SimulatorProgram)
#include "tst_SimulatorProgram.moc"
