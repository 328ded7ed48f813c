#include "simulator/SimulatorProcess.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList plugged(const QStringList &options, const QStringList &probe)
{
    return QStringList{u"--plugged"_s} + options
        + QStringList{u"--"_s, QStringLiteral(ZDR_PLUGGED_PROBE)} + probe;
}

const QString usbLine = u"/dev/ttyACM0|16d0|7710|ZDRM-7710|16d0|7710|Moravint|ZDRM-7710"_s;
const QString rs485Line =
    u"/dev/ttyUSB0|0403|6001|FT232R_USB_UART|0403|6001|FTDI|FT232R USB UART"_s;

} // namespace

class tst_PluggedMode : public TestCase
{
    Q_OBJECT

private slots:
    void exitCode_data();
    void exitCode();
    void unknownCommand();
    void commandArgumentsAreItsOwn();
    void ports();
    void without();
    void exchangeOverUsb();
    void exchangeOverRs485();
    void rs485AtAnotherRate();
    void identityOfTheUsbModule();
    void faults_data();
    void faults();
    void machineLines_data();
    void machineLines();
    void plugEvents();
    void pullOutWhileOpen();
    void plugTwice();
    void quitEndsTheCommand();
    void signalEndsTheCommand();
    void endOfInputEndsNothing();
    void leavesNothingBehind();
};

void tst_PluggedMode::exitCode_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("0") << 0;
    QTest::newRow("7") << 7;
}

void tst_PluggedMode::exitCode()
{
    QFETCH(int, code);
    SimulatorProcess program(plugged({}, {u"exit"_s, QString::number(code)}));
    QCOMPARE(program.waitForEnd(), code);
    QVERIFY2(program.messages().isEmpty(), "nothing to complain of");
}

void tst_PluggedMode::unknownCommand()
{
    SimulatorProcess program({u"--plugged"_s, u"--"_s, u"/no/such/program"_s});
    QCOMPARE(program.waitForEnd(), 127);
    QCOMPARE(program.messages(),
             u"zdr-simulator: cannot start /no/such/program: No such file or directory\n"_s);
}

void tst_PluggedMode::commandArgumentsAreItsOwn()
{
    // Found in PATH; options behind the command aren't the simulator's.
    SimulatorProcess program({u"--plugged"_s, u"echo"_s, u"--bogus"_s, u"two  words"_s});
    QCOMPARE(program.readLine(), u"--bogus two  words"_s);
    QCOMPARE(program.waitForEnd(), 0);
}

void tst_PluggedMode::ports()
{
    SimulatorProcess program(plugged({}, {u"list"_s}));
    QCOMPARE(program.readLine(), usbLine);
    QCOMPARE(program.readLine(), rs485Line);
    QCOMPARE(program.waitForEnd(), 0);
    QCOMPARE(program.output(), QString());
}

void tst_PluggedMode::without()
{
    SimulatorProcess noUsb(plugged({u"--without"_s, u"usb"_s}, {u"list"_s}));
    QCOMPARE(noUsb.readLine(), rs485Line);
    QCOMPARE(noUsb.waitForEnd(), 0);
    QCOMPARE(noUsb.output(), QString());

    SimulatorProcess none(
        plugged({u"--without"_s, u"usb"_s, u"--without"_s, u"rs485"_s}, {u"list"_s}));
    QCOMPARE(none.waitForEnd(), 0);
    QCOMPARE(none.output(), QString());
}

void tst_PluggedMode::exchangeOverUsb()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"log"_s);
    SimulatorProcess program(plugged({u"--log"_s, path},
                                     {u"exchange"_s, u"/dev/ttyACM0"_s, u"300000"_s,
                                      u"0106990000000000a0"_s, u"018800000000000089"_s}));
    QCOMPARE(program.readLine(), u"02016406000000f05d"_s);
    QCOMPARE(program.readLine(), u"023737313056313035"_s); // 7710V105
    QCOMPARE(program.waitForEnd(), 0);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(),
             QByteArray("usb < 01 06 99 00 00 00 00 00 A0\n"
                        "usb > 02 01 64 06 00 00 00 F0 5D\n"
                        "usb < 01 88 00 00 00 00 00 00 89\n"
                        "usb > 02 37 37 31 30 56 31 30 35\n"));
}

void tst_PluggedMode::exchangeOverRs485()
{
    // The first request is for another address on the bus: no answer.
    SimulatorProcess program(plugged({u"--rs485-address"_s, u"3"_s, u"--rs485-baud"_s, u"14400"_s},
                                     {u"exchange"_s, u"/dev/ttyUSB0"_s, u"14400"_s,
                                      u"0106990000000000a0"_s, u"0306990000000000a2"_s}));
    QCOMPARE(program.readLine(), QString(u""_s));
    QCOMPARE(program.readLine(), u"02036406000000f05f"_s);
    QCOMPARE(program.waitForEnd(), 0);
}

void tst_PluggedMode::rs485AtAnotherRate()
{
    SimulatorProcess program(
        plugged({u"--log"_s, u"-"_s},
                {u"exchange"_s, u"/dev/ttyUSB0"_s, u"19200"_s, u"0106990000000000a0"_s}));
    QCOMPARE(program.waitForEnd(), 0);
    QCOMPARE(program.output(), u"rs485 ? 01 06 99 00 00 00 00 00 A0\n\n"_s);
}

void tst_PluggedMode::identityOfTheUsbModule()
{
    SimulatorProcess program(
        plugged({u"--address"_s, u"5"_s, u"--reply-address"_s, u"6"_s},
                {u"exchange"_s, u"/dev/ttyACM0"_s, u"9600"_s, u"0506990000000000a4"_s}));
    QCOMPARE(program.readLine(), u"06056406000000f065"_s);
    QCOMPARE(program.waitForEnd(), 0);
}

void tst_PluggedMode::faults_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("node");
    QTest::addColumn<int>("status");
    const QString usb = u"/dev/ttyACM0"_s;
    const QString rs485 = u"/dev/ttyUSB0"_s;
    QTest::newRow("both, usb") << u"fault status 5"_s << usb << 5;
    QTest::newRow("both, rs485") << u"fault status 5"_s << rs485 << 5;
    QTest::newRow("usb, usb") << u"usb fault status 5"_s << usb << 5;
    QTest::newRow("usb, rs485") << u"usb fault status 5"_s << rs485 << 100;
    QTest::newRow("rs485, usb") << u"rs485 fault status 5"_s << usb << 100;
    QTest::newRow("rs485, rs485") << u"rs485 fault status 5"_s << rs485 << 5;
}

void tst_PluggedMode::faults()
{
    QFETCH(QString, line);
    QFETCH(QString, node);
    QFETCH(int, status);
    SimulatorProcess program(plugged({u"--without"_s, u"usb"_s, u"--without"_s, u"rs485"_s},
                                     {u"exchange"_s, node, u"9600"_s, u"0106990000000000a0"_s}));
    program.writeLine(line); // before there is a port, so that it holds for the exchange
    program.writeLine(u"plug usb"_s);
    program.writeLine(u"plug rs485"_s);
    const QByteArray reply = QByteArray::fromHex(program.readLine().toLatin1());
    QCOMPARE(reply.size(), 9);
    QCOMPARE(int(reply.at(2)), status);
    QCOMPARE(program.waitForEnd(), 0);
    QVERIFY(program.messages().isEmpty());
}

void tst_PluggedMode::machineLines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("node");
    QTest::addColumn<QByteArray>("voltage");
    const QString usb = u"/dev/ttyACM0"_s;
    const QString rs485 = u"/dev/ttyUSB0"_s;
    const QByteArray usual = "000000f0";
    const QByteArray low = "00000050";
    QTest::newRow("all, usb") << u"set 153 80"_s << usb << low;
    QTest::newRow("all, rs485") << u"set 153 80"_s << rs485 << low;
    QTest::newRow("usb, usb") << u"usb set 153 80"_s << usb << low;
    QTest::newRow("usb, rs485") << u"usb set 153 80"_s << rs485 << usual;
    QTest::newRow("can, usb") << u"can set 153 80"_s << usb << usual;
}

void tst_PluggedMode::machineLines()
{
    QFETCH(QString, line);
    QFETCH(QString, node);
    SimulatorProcess program(plugged({u"--without"_s, u"usb"_s, u"--without"_s, u"rs485"_s},
                                     {u"exchange"_s, node, u"9600"_s, u"0106990000000000a0"_s}));
    program.writeLine(line);
    program.writeLine(u"plug usb"_s);
    program.writeLine(u"plug rs485"_s);
    QTEST(program.readLine().toLatin1().mid(8, 8), "voltage");
    QCOMPARE(program.waitForEnd(), 0);
    QVERIFY(program.messages().isEmpty());
}

void tst_PluggedMode::plugEvents()
{
    SimulatorProcess program(plugged({u"--without"_s, u"rs485"_s}, {u"watch"_s, u"6"_s}));
    QCOMPARE(program.readLine(), u"ready"_s);
    for (int round = 0; round < 2; ++round) {
        program.writeLine(u"unplug usb"_s);
        QCOMPARE(program.readLine(), u"remove /dev/ttyACM0 is gone"_s);
        program.writeLine(u"plug usb"_s);
        QCOMPARE(program.readLine(), u"add /dev/ttyACM0 opens"_s);
    }
    program.writeLine(u"plug rs485"_s);
    QCOMPARE(program.readLine(), u"add /dev/ttyUSB0 opens"_s);
    program.writeLine(u"unplug rs485"_s);
    QCOMPARE(program.readLine(), u"remove /dev/ttyUSB0 is gone"_s);
    QCOMPARE(program.waitForEnd(), 0);
    QVERIFY(program.messages().isEmpty());
}

void tst_PluggedMode::pullOutWhileOpen()
{
    SimulatorProcess program(plugged({}, {u"hold"_s, u"/dev/ttyUSB0"_s}));
    QCOMPARE(program.readLine(), u"ready"_s);
    program.writeLine(u"unplug rs485"_s);
    QCOMPARE(program.readLine(), u"hung up"_s);
    QCOMPARE(program.waitForEnd(), 0);
}

void tst_PluggedMode::plugTwice()
{
    SimulatorProcess program(plugged({}, {u"hold"_s, u"/dev/ttyACM0"_s}));
    QCOMPARE(program.readLine(), u"ready"_s);
    program.writeLine(u"plug usb"_s);
    program.writeLine(u"unplug rs485"_s);
    program.writeLine(u"unplug rs485"_s);
    program.writeLine(u"plug lpt"_s);
    program.writeLine(u"unplug usb"_s);
    QCOMPARE(program.waitForEnd(), 0);
    QCOMPARE(program.messages(),
             u"zdr-simulator: ttyACM0 is plugged in already\n"
             "zdr-simulator: ttyUSB0 is not plugged in\n"
             "zdr-simulator: no port to plug or unplug: lpt\n"_s);
}

void tst_PluggedMode::quitEndsTheCommand()
{
    SimulatorProcess program(plugged({}, {u"hold"_s, u"/dev/ttyACM0"_s}));
    QCOMPARE(program.readLine(), u"ready"_s);
    program.writeLine(u"quit"_s);
    QCOMPARE(program.waitForEnd(), 128 + 15);
}

void tst_PluggedMode::signalEndsTheCommand()
{
    SimulatorProcess program(plugged({}, {u"hold"_s, u"/dev/ttyACM0"_s}));
    QCOMPARE(program.readLine(), u"ready"_s);
    program.terminate();
    QCOMPARE(program.waitForEnd(), 128 + 15);
}

void tst_PluggedMode::endOfInputEndsNothing()
{
    const QString request = u"0106990000000000a0"_s;
    SimulatorProcess program(
        plugged({u"--without"_s, u"usb"_s},
                {u"exchange"_s, u"/dev/ttyACM0"_s, u"9600"_s, request, request}));
    // The command gives the first request up after a second, so the second one comes long after the
    // end of the input.
    program.writeLine(u"usb fault silence 1"_s);
    program.writeLine(u"plug usb"_s);
    program.closeInput();
    QCOMPARE(program.readLine(), u""_s);
    QCOMPARE(program.readLine(), u"02016406000000f05d"_s);
    QCOMPARE(program.waitForEnd(), 0);
    QVERIFY(program.messages().isEmpty());
}

void tst_PluggedMode::leavesNothingBehind()
{
    // umockdev makes its testbed there.
    const QTemporaryDir folder;
    QVERIFY(qputenv("TMPDIR", folder.path().toLocal8Bit()));
    {
        SimulatorProcess program(plugged({}, {u"hold"_s, u"/dev/ttyACM0"_s}));
        QCOMPARE(program.readLine(), u"ready"_s);
        QVERIFY(!QDir(folder.path()).isEmpty());
        program.terminate();
        QCOMPARE(program.waitForEnd(), 128 + 15);
    }
    qunsetenv("TMPDIR");
    QVERIFY(QDir(folder.path()).isEmpty());
}

QTEST_GUILESS_MAIN(tst_PluggedMode)
#include "tst_PluggedMode.moc"
