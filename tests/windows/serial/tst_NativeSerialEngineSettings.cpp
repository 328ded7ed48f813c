#include "serial/FakedLine.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What the engine asks of a driver to open, set and close a port, and what it makes of the
/// answers. The driver is a fake, which takes everything and fails where it is told to.
class tst_NativeSerialEngineSettings : public TestCase
{
    Q_OBJECT

private slots:
    void opening();
    void openingForOneDirection_data();
    void openingForOneDirection();
    void openingFails_data();
    void openingFails();
    void openingWithoutOneEvent_data();
    void openingWithoutOneEvent();
    void openingFailsAfterAGoodOne_data();
    void openingFailsAfterAGoodOne();
    void settingsFoundAreReadBack_data();
    void settingsFoundAreReadBack();
    void closing();
    void closingWhereAnEventStays();
    void endOfTheEngineCloses();

    void eachDataBitsReachTheDriver_data();
    void eachDataBitsReachTheDriver();
    void eachParityReachesTheDriver();
    void stopBitsGuard_data();
    void stopBitsGuard();
    void oneAndAHalfStopBitsAreLeftByFiveDataBitsOnly();
    void eachFlowReachesTheDriver_data();
    void eachFlowReachesTheDriver();
    void refusedValueIsSentAgain();
    void flowLeavesTheComputedTimeout();
};

namespace {

/// The calls of an opening that gets as far as the end, but for the events.
const QStringList Opening{u"GetCommState"_s, u"GetCommTimeouts"_s, u"SetCommState"_s,
                          u"SetCommTimeouts 65535 0 0 0 0"_s};
const auto NewEvent = u"CreateEventW 0 0 0"_s; // resets itself, not signalled, no name

QString creation(const QString &access)
{
    return u"CreateFileW \\\\.\\COM7 access %1 sharing 0 creation 3 flags 40000000"_s.arg(access);
}

} // namespace

void tst_NativeSerialEngineSettings::opening()
{
    FakeDriver driver;
    driver.line.fOutX = driver.line.fInX = driver.line.fNull = driver.line.fAbortOnError = TRUE;
    driver.line.XonLim = 17;
    driver.timeouts = {1, 2, 3, 4, 5};
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    engine->setDeviceName(u"COM7"_s);
    QVERIFY(engine->open(QIODevice::ReadWrite));
    QCOMPARE(driver.takeCalls(),
             (QStringList(creation(u"c0000000"_s)) + Opening
              + QStringList{NewEvent, NewEvent, NewEvent}));
    QCOMPARE(int(driver.line.fBinary), 1);
    QCOMPARE(int(driver.line.fOutX), 0);
    QCOMPARE(int(driver.line.fInX), 0);
    QCOMPARE(int(driver.line.fNull), 0);
    QCOMPARE(int(driver.line.fAbortOnError), 0);
    QCOMPARE(int(driver.line.XonLim), 17); // the rest stays as found
    QVERIFY(engine->descriptor() != -1);
}

void tst_NativeSerialEngineSettings::openingForOneDirection_data()
{
    QTest::addColumn<QIODevice::OpenMode>("mode");
    QTest::addColumn<QString>("access");
    QTest::addColumn<qint64>("read");
    QTest::addColumn<qint64>("written");
    QTest::newRow("to read") << QIODevice::OpenMode(QIODevice::ReadOnly) << u"80000000"_s
                             << qint64(1) << qint64(-1);
    QTest::newRow("to write") << QIODevice::OpenMode(QIODevice::WriteOnly) << u"40000000"_s
                              << qint64(0) << qint64(1);
}

void tst_NativeSerialEngineSettings::openingForOneDirection()
{
    QFETCH(QIODevice::OpenMode, mode);
    QFETCH(QString, access);
    FakeDriver driver;
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    engine->setDeviceName(u"COM7"_s);
    QVERIFY(engine->open(mode));
    // One event for the direction, one for waiting.
    QCOMPARE(driver.takeCalls(),
             (QStringList(creation(access)) + Opening + QStringList{NewEvent, NewEvent}));
    driver.received = "r";
    char byte = 0;
    QTEST(engine->read(&byte, 1), "read");
    QTEST(engine->write("w", 1), "written");
}

void tst_NativeSerialEngineSettings::openingFails_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<bool>("restores"); // what is given back only if it was found
    QTest::newRow("port") << "CreateFileW"_ba << false;
    QTest::newRow("settings that can't be read") << "GetCommState"_ba << false;
    QTest::newRow("timeouts that can't be read") << "GetCommTimeouts"_ba << false;
    QTest::newRow("settings that are refused") << "SetCommState"_ba << true;
    QTest::newRow("timeouts that are refused") << "SetCommTimeouts"_ba << true;
    QTest::newRow("no event") << "CreateEventW"_ba << true;
}

void tst_NativeSerialEngineSettings::openingFails()
{
    QFETCH(QByteArray, function);
    QFETCH(bool, restores);
    FakeDriver driver;
    driver.timeouts = {1, 2, 3, 4, 5};
    driver.failing = {function};
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    engine->setDeviceName(u"COM7"_s);
    QVERIFY(!engine->open(QIODevice::ReadWrite));
    QCOMPARE(engine->descriptor(), qintptr(-1));
    const QStringList calls = driver.takeCalls();
    QCOMPARE(calls.count(u"CloseHandle port"_s), function == "CreateFileW" ? 0 : 1);
    QCOMPARE(calls.contains(u"SetCommTimeouts 1 2 3 4 5"_s), restores);
    // The engine is none the worse for it.
    driver.failing.clear();
    QVERIFY(engine->open(QIODevice::ReadWrite));
}

void tst_NativeSerialEngineSettings::openingWithoutOneEvent_data()
{
    QTest::addColumn<int>("missing"); // in the order in which they are made
    QTest::newRow("to read") << 1;
    QTest::newRow("to write") << 2;
    QTest::newRow("to wait") << 3;
}

void tst_NativeSerialEngineSettings::openingWithoutOneEvent()
{
    QFETCH(int, missing);
    FakeDriver driver;
    driver.timeouts = {1, 2, 3, 4, 5};
    driver.failAt("CreateEventW"_ba, missing);
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    engine->setDeviceName(u"COM7"_s);
    QVERIFY(!engine->open(QIODevice::ReadWrite));
    QCOMPARE(engine->descriptor(), qintptr(-1));
    const QStringList calls = driver.takeCalls();
    QCOMPARE(calls.count(NewEvent), missing);
    QVERIFY(calls.contains(u"SetCommTimeouts 1 2 3 4 5"_s));
    QCOMPARE(calls.count(u"CloseHandle port"_s), 1);
    QCOMPARE(calls.count(u"CloseHandle event"_s), missing - 1); // those that there were
}

void tst_NativeSerialEngineSettings::openingFailsAfterAGoodOne_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<QStringList>("timeoutsSet");
    const auto defaults = u"SetCommTimeouts 65535 0 0 0 0"_s;
    const auto found = u"SetCommTimeouts 6 7 8 9 10"_s;
    QTest::newRow("port") << "CreateFileW"_ba << QStringList();
    // What was found at the good opening belongs to another port by now.
    QTest::newRow("settings that can't be read") << "GetCommState"_ba << QStringList();
    QTest::newRow("timeouts that can't be read") << "GetCommTimeouts"_ba << QStringList();
    QTest::newRow("settings that are refused") << "SetCommState"_ba << QStringList{found};
    QTest::newRow("timeouts that are refused")
        << "SetCommTimeouts"_ba << QStringList{defaults, found};
    QTest::newRow("no event") << "CreateEventW"_ba << QStringList{defaults, found};
}

void tst_NativeSerialEngineSettings::openingFailsAfterAGoodOne()
{
    QFETCH(QByteArray, function);
    FakeDriver driver;
    driver.timeouts = {1, 2, 3, 4, 5};
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    QVERIFY(engine->open(QIODevice::ReadWrite));
    engine->setTotalReadConstantTimeout(-1);
    QCOMPARE(engine->totalReadConstantTimeout(), 266);
    QVERIFY(engine->close());

    driver.timeouts = {6, 7, 8, 9, 10};
    driver.takeCalls();
    driver.failing = {function};
    QVERIFY(!engine->open(QIODevice::ReadWrite));
    QCOMPARE(engine->descriptor(), qintptr(-1));
    const QStringList timeouts = driver.takeCalls().filter(u"SetCommTimeouts"_s);
    QTEST(timeouts, "timeoutsSet");
    // Once the defaults were asked for, nothing of the good opening is left.
    if (timeouts.size() > 1) {
        QCOMPARE(engine->totalReadConstantTimeout(), 0);
        engine->setCharIntervalTimeout(100);
        QCOMPARE(engine->totalReadConstantTimeout(), 0); // it isn't computed any more
    }
}

void tst_NativeSerialEngineSettings::settingsFoundAreReadBack_data()
{
    QTest::addColumn<DCB>("line");
    QTest::addColumn<int>("dataBits");
    QTest::addColumn<int>("parity");
    QTest::addColumn<int>("stopBits");
    QTest::addColumn<int>("flow");
    const auto row = [](const char *name, const auto &change, QList<int> values) {
        DCB line{};
        line.ByteSize = 8;
        change(line);
        QTest::newRow(name) << line << values[0] << values[1] << values[2] << values[3];
    };
    row("plain", [](DCB &) {}, {3, 0, 0, 0});
    row("5 bits", [](DCB &line) { line.ByteSize = 5; }, {0, 0, 0, 0});
    row("9 bits", [](DCB &line) { line.ByteSize = 9; }, {-1, 0, 0, 0});
    row("space parity", [](DCB &line) { line.Parity = 4, line.fParity = 1; }, {3, 4, 0, 0});
    row("parity that isn't checked", [](DCB &line) { line.Parity = 1; }, {3, -1, 0, 0});
    row("check of no parity", [](DCB &line) { line.fParity = 1; }, {3, -1, 0, 0});
    row("unknown parity", [](DCB &line) { line.Parity = 5, line.fParity = 1; }, {3, -1, 0, 0});
    row("2 stop bits", [](DCB &line) { line.StopBits = 2; }, {3, 0, 2, 0});
    row("unknown stop bits", [](DCB &line) { line.StopBits = 3; }, {3, 0, -1, 0});
    row("hardware flow", [](DCB &line) { line.fOutxCtsFlow = 1, line.fRtsControl = 2; },
        {3, 0, 0, 1});
    row("CTS without RTS", [](DCB &line) { line.fOutxCtsFlow = 1; }, {3, 0, 0, -1});
    row("RTS simply on", [](DCB &line) { line.fRtsControl = 1; }, {3, 0, 0, -1});
    row("software flow, which opening takes away", [](DCB &line) { line.fOutX = line.fInX = 1; },
        {3, 0, 0, 0});
}

void tst_NativeSerialEngineSettings::settingsFoundAreReadBack()
{
    QFETCH(DCB, line);
    FakeDriver driver;
    driver.line = line;
    driver.line.BaudRate = 300000;
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    QVERIFY(engine->open(QIODevice::ReadWrite));
    QCOMPARE(engine->baudRate(AbstractSerial::AllBaud), 300000);
    QTEST(int(engine->dataBits()), "dataBits");
    QTEST(int(engine->parity()), "parity");
    QTEST(int(engine->stopBits()), "stopBits");
    QTEST(int(engine->flowControl()), "flow");
}

// The line settings found are read over and not given back: that asymmetry is by design.
void tst_NativeSerialEngineSettings::closing()
{
    FakeDriver driver;
    driver.timeouts = {1, 2, 3, 4, 5};
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    QVERIFY(engine->open(QIODevice::ReadWrite));
    driver.takeCalls();
    QVERIFY(engine->close());
    const auto event = u"CloseHandle event"_s;
    QCOMPARE(driver.takeCalls(),
             (QStringList{u"GetCommState"_s, u"SetCommTimeouts 1 2 3 4 5"_s, u"CancelIo"_s,
                          u"CloseHandle port"_s, event, event, event}));
    QVERIFY(engine->close());
    QCOMPARE(driver.takeCalls(), QStringList());
}

void tst_NativeSerialEngineSettings::closingWhereAnEventStays()
{
    FakedLine line;
    line.driver.failing = {"CloseHandle"_ba};
    QVERIFY(!line.engine->close());
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
    QCOMPARE(line.driver.takeCalls().count(u"CloseHandle event"_s), 3);
    QVERIFY(line.engine->close());
}

// With the event of the notifier, which is a child of the engine.
void tst_NativeSerialEngineSettings::endOfTheEngineCloses()
{
    FakedLine line;
    line.driver.ending = FakeDriver::Ending::Later;
    line.engine->setReadNotificationEnabled(true, false);
    line.driver.takeCalls();
    delete line.engine;
    const auto event = u"CloseHandle event"_s;
    QCOMPARE(line.driver.takeCalls(),
             (QStringList{u"SetCommMask 0"_s, u"GetCommState"_s, u"SetCommTimeouts 0 0 0 0 0"_s,
                          u"CancelIo"_s, u"CloseHandle port"_s, event, event, event, event}));
}

void tst_NativeSerialEngineSettings::eachDataBitsReachTheDriver_data()
{
    QTest::addColumn<int>("stopBits");
    QTest::addColumn<QList<bool>>("taken"); // 5 to 8 bits
    QTest::newRow("1") << 0 << QList<bool>{true, true, true, true};
    QTest::newRow("1.5") << 1 << QList<bool>{true, false, false, false};
    QTest::newRow("2") << 2 << QList<bool>{false, true, true, true};
}

void tst_NativeSerialEngineSettings::eachDataBitsReachTheDriver()
{
    QFETCH(int, stopBits);
    QFETCH(QList<bool>, taken);
    for (int value = 0; value < taken.size(); ++value) {
        FakeDriver driver;
        driver.line.StopBits = BYTE(stopBits);
        driver.line.ByteSize = 9; // one that is none of them
        QObject parent;
        AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
        QVERIFY(engine->open(QIODevice::ReadWrite));
        QCOMPARE(engine->setDataBits(AbstractSerial::DataBits(value)), taken.at(value));
        QCOMPARE(int(driver.line.ByteSize), taken.at(value) ? value + 5 : 9);
        QCOMPARE(int(engine->dataBits()), taken.at(value) ? value : -1);
    }
}

void tst_NativeSerialEngineSettings::eachParityReachesTheDriver()
{
    FakedLine line;
    for (const int value : {1, 2, 3, 4, 0}) {
        QVERIFY(line.engine->setParity(AbstractSerial::Parity(value)));
        QCOMPARE(int(line.driver.line.Parity), value);
        QCOMPARE(bool(line.driver.line.fParity), value != 0);
        QCOMPARE(int(line.engine->parity()), value);
    }
}

void tst_NativeSerialEngineSettings::stopBitsGuard_data()
{
    QTest::addColumn<int>("byteSize");
    QTest::addColumn<int>("stopBits");
    QTest::addColumn<bool>("taken"); // whatever is asked for
    for (const int byteSize : {5, 6, 7, 8}) {
        for (const int stopBits : {0, 1, 2}) {
            QTest::addRow("%d bits, stop bits %d", byteSize, stopBits)
                << byteSize << stopBits << (stopBits != (byteSize == 5 ? 2 : 1));
        }
    }
}

void tst_NativeSerialEngineSettings::stopBitsGuard()
{
    QFETCH(int, byteSize);
    QFETCH(int, stopBits);
    QFETCH(bool, taken);
    for (const int value : {0, 1, 2}) {
        FakeDriver driver;
        driver.line.ByteSize = BYTE(byteSize);
        driver.line.StopBits = BYTE(stopBits);
        QObject parent;
        AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
        QVERIFY(engine->open(QIODevice::ReadWrite));
        QCOMPARE(engine->setStopBits(AbstractSerial::StopBits(value)), taken);
        QCOMPARE(int(driver.line.StopBits), taken ? value : stopBits);
        QCOMPARE(int(engine->stopBits()), taken ? value : stopBits);
    }
}

// Asked for with 8 data bits they pass, since the stop bits are 1 by then. By design the guards
// look at the state before the call alone: with 6 to 8 data bits no other stop bits are taken any
// more, and of the data bits only 5. With those any stop bits are.
void tst_NativeSerialEngineSettings::oneAndAHalfStopBitsAreLeftByFiveDataBitsOnly()
{
    FakedLine line;
    QVERIFY(line.engine->setStopBits(AbstractSerial::StopBits1_5));
    QCOMPARE(int(line.driver.line.StopBits), 1);
    for (const int value : {0, 1, 2}) {
        QVERIFY(!line.engine->setStopBits(AbstractSerial::StopBits(value)));
    }
    for (const int value : {1, 2, 3}) {
        QVERIFY(!line.engine->setDataBits(AbstractSerial::DataBits(value)));
    }
    QCOMPARE(line.engine->stopBits(), AbstractSerial::StopBits1_5);
    QVERIFY(line.engine->setDataBits(AbstractSerial::DataBits5));
    QVERIFY(line.engine->setStopBits(AbstractSerial::StopBits1));
    QVERIFY(line.engine->setDataBits(AbstractSerial::DataBits8));
}

void tst_NativeSerialEngineSettings::eachFlowReachesTheDriver_data()
{
    QTest::addColumn<AbstractSerial::Flow>("value");
    QTest::addColumn<QList<int>>("fields"); // fOutxCtsFlow, fRtsControl, fInX, fOutX
    QTest::newRow("none") << AbstractSerial::FlowDisable << QList<int>{0, 0, 0, 0};
    QTest::newRow("hardware") << AbstractSerial::FlowHardware << QList<int>{1, 2, 0, 0};
    QTest::newRow("software") << AbstractSerial::FlowXonXoff << QList<int>{0, 0, 1, 1};
}

void tst_NativeSerialEngineSettings::eachFlowReachesTheDriver()
{
    QFETCH(AbstractSerial::Flow, value);
    FakeDriver driver;
    driver.line.fRtsControl = 3;
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    QVERIFY(engine->open(QIODevice::ReadWrite));
    QVERIFY(engine->setFlowControl(value));
    const DCB &line = driver.line;
    QTEST((QList<int>{int(line.fOutxCtsFlow), int(line.fRtsControl), int(line.fInX),
                      int(line.fOutX)}),
          "fields");
    QCOMPARE(engine->flowControl(), value);
}

void tst_NativeSerialEngineSettings::refusedValueIsSentAgain()
{
    FakedLine line;
    line.driver.failing = {"SetCommState"_ba};
    QVERIFY(!line.engine->setBaudRate(115200, AbstractSerial::AllBaud));
    QVERIFY(!line.engine->setParity(AbstractSerial::ParityOdd));
    QCOMPARE(line.engine->baudRate(AbstractSerial::AllBaud), 9600);
    QCOMPARE(line.engine->parity(), AbstractSerial::ParityNone);
    line.driver.failing.clear();
    QVERIFY(line.engine->setStopBits(AbstractSerial::StopBits2));
    QCOMPARE(int(line.driver.line.BaudRate), 115200);
    QCOMPARE(int(line.driver.line.Parity), 1);
    QCOMPARE(line.engine->baudRate(AbstractSerial::AllBaud), 9600);
    QCOMPARE(line.engine->parity(), AbstractSerial::ParityNone);
}

void tst_NativeSerialEngineSettings::flowLeavesTheComputedTimeout()
{
    FakedLine line;
    line.engine->setTotalReadConstantTimeout(-1);
    QCOMPARE(line.driver.takeCalls(), QStringList(u"SetCommTimeouts 65535 0 266 0 0"_s));
    line.engine->setTotalReadConstantTimeout(-1); // nothing new to tell
    QVERIFY(line.engine->setFlowControl(AbstractSerial::FlowHardware));
    QCOMPARE(line.driver.takeCalls(), QStringList(u"SetCommState"_s));
    QVERIFY(line.engine->setStopBits(AbstractSerial::StopBits2));
    QCOMPARE(line.driver.takeCalls(),
             (QStringList{u"SetCommState"_s, u"SetCommTimeouts 65535 0 293 0 0"_s}));
}

QTEST_GUILESS_MAIN(tst_NativeSerialEngineSettings)
#include "tst_NativeSerialEngineSettings.moc"
