#include "comm/Answers.h"
#include "comm/HandlerProbe.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/ScriptedPort.h"
#include "comm/SignalLog.h"
#include "serial/AbstractSerial.h"
#include "serial/SerialDeviceEnumerator.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"
#include "support/UsbMachine.h"

#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const UsbDevice Module;
const UsbDevice Adapter = {.vendor = "0403", .manufacturer = "ACME", .product = "Thing"};

/// The port that is used, among others that only come and go.
const auto UsedPort = u"ttyACM7"_s;

QString usbAttached(const QString &port, const QString &description = u"ZDRM-7710"_s)
{
    return u"handleAttachedUsbDevice(%1, %2)"_s.arg(port, description);
}

QString serialAttached(const QString &port)
{
    return u"handleAttachedSerialDevice(%1, unknown)"_s.arg(port);
}

} // namespace

/// Ports that come and go, sorted into USB modules and others. The list of ports belongs to the
/// process, and so does the machine that it is read from.
class tst_QSerialCommandHandlerPorts : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void constructionTellsNothing();
    void presentPortsAreReportedOnce();
    void vendorDecides_data();
    void vendorDecides();
    void description_data();
    void description();
    void emptyDescription();
    void portIsToldOnce();
    void pluggedInAgain();
    void otherPortGoesUnnoticed();
    void openModuleIsPulledOut();
    void openPortIsPulledOut();
    void closedPortIsPulledOut();
    void usedPortThatStays();
    void pulledOutInMidExchange();
    void listComesInOneOrder();
    void listIsWrittenWithItsSender();
    void busyPortIsTold();

private:
    void plugIn(const QString &name, const UsbDevice &device);
    QStringList waitForSignals(qsizetype count);

    std::unique_ptr<UsbMachine> m_machine;
    std::unique_ptr<ScriptedPort> m_port; ///< behind every port of the machine
    std::unique_ptr<QSerialCommandHandler> m_handler;
    std::unique_ptr<SignalLog> m_emitted;
};

void tst_QSerialCommandHandlerPorts::initTestCase()
{
    m_machine = std::make_unique<UsbMachine>();
    QCOMPARE(SerialDeviceEnumerator::instance()->devicesAvailable(), QStringList());
}

void tst_QSerialCommandHandlerPorts::init()
{
    TestCase::init();
    m_port = std::make_unique<ScriptedPort>();
    m_handler = std::make_unique<QSerialCommandHandler>();
    m_emitted = std::make_unique<SignalLog>(*m_handler);
}

void tst_QSerialCommandHandlerPorts::cleanup()
{
    m_emitted.reset();
    m_handler.reset();
    m_machine->pullOutAll();
    QTRY_COMPARE(SerialDeviceEnumerator::instance()->devicesAvailable(), QStringList());
    m_port.reset();
}

void tst_QSerialCommandHandlerPorts::cleanupTestCase()
{
    SerialDeviceEnumerator::instance()->setEnabled(false);
    m_machine.reset();
}

void tst_QSerialCommandHandlerPorts::plugIn(const QString &name, const UsbDevice &device)
{
    m_machine->plugIn(name, device, m_port->portName());
}

/// What the handler has told since the last call, once there is as much, or after a long wait.
QStringList tst_QSerialCommandHandlerPorts::waitForSignals(qsizetype count)
{
    static_cast<void>(QTest::qWaitFor([&] { return m_emitted->lines().size() >= count; }));
    return m_emitted->take();
}

void tst_QSerialCommandHandlerPorts::constructionTellsNothing()
{
    plugIn(u"ttyACM0"_s, Module);
    QCOMPARE(waitForSignals(1), {usbAttached(u"ttyACM0"_s)});
    const DebugLog log;
    QSerialCommandHandler second;
    const SignalLog emitted(second);
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(emitted.lines(), QStringList());
}

void tst_QSerialCommandHandlerPorts::presentPortsAreReportedOnce()
{
    plugIn(u"ttyACM0"_s, Module);
    plugIn(u"ttyUSB0"_s, Adapter);
    QCOMPARE(waitForSignals(2).size(), 2);

    QSerialCommandHandler second;
    SignalLog emitted(second);
    second.reportAvailableDevices();
    QCOMPARE(emitted.take(),
             QStringList({usbAttached(u"ttyACM0"_s), serialAttached(u"ttyUSB0"_s)}));
    second.reportAvailableDevices();
    QCOMPARE(emitted.lines(), QStringList());
}

void tst_QSerialCommandHandlerPorts::vendorDecides_data()
{
    QTest::addColumn<QByteArray>("vendor");
    QTest::addColumn<bool>("isModule");

    QTest::newRow("module") << "16d0"_ba << true;
    QTest::newRow("in capitals") << "16D0"_ba << true;
    QTest::newRow("starts so") << "16d0a"_ba << true;
    QTest::newRow("digits further on") << "116d0"_ba << false;
    QTest::newRow("another") << "0403"_ba << false;
    QTest::newRow("too short") << "16d"_ba << false;
    QTest::newRow("none") << QByteArray() << false;
}

void tst_QSerialCommandHandlerPorts::vendorDecides()
{
    QFETCH(QByteArray, vendor);
    QFETCH(bool, isModule);
    UsbDevice device;
    device.vendor = vendor;
    plugIn(u"ttyACM0"_s, device);
    QCOMPARE(waitForSignals(1),
             {isModule ? usbAttached(u"ttyACM0"_s) : serialAttached(u"ttyACM0"_s)});
}

void tst_QSerialCommandHandlerPorts::description_data()
{
    QTest::addColumn<QByteArray>("manufacturer");
    QTest::addColumn<QByteArray>("product");
    QTest::addColumn<QString>("friendlyName");
    QTest::addColumn<QString>("description");

    QTest::newRow("maker, model and port")
        << "Moravint"_ba
        << "ZDRM-7710 (COM7)"_ba << u"Moravint ZDRM-7710 (COM7)"_s << u"ZDRM-7710"_s;
    QTest::newRow("maker in the product")
        << "Moravint"_ba
        << "Moravint ZDRM-7711"_ba << u"Moravint ZDRM-7711"_s << u"ZDRM-7711"_s;
    QTest::newRow("maker twice") << QByteArray() << "Moravint Moravint ZDRM-7710"_ba
                                 << u"Moravint Moravint ZDRM-7710"_s << u"ZDRM-7710"_s;
    QTest::newRow("another maker") << "ACME"_ba
                                   << "Thing"_ba << u"ACME Thing"_s << u"ACME"_s;
    QTest::newRow("maker further on")
        << QByteArray() << "The Moravint ZDRM"_ba << u"The Moravint ZDRM"_s << u"The"_s;
    QTest::newRow("case counts") << "moravint"_ba
                                 << "ZDRM-7710"_ba << u"moravint ZDRM-7710"_s << u"moravint"_s;
    QTest::newRow("one word") << QByteArray() << "Moravint"_ba << u"Moravint"_s << u"Moravint"_s;
}

void tst_QSerialCommandHandlerPorts::description()
{
    QFETCH(QByteArray, manufacturer);
    QFETCH(QByteArray, product);
    QFETCH(QString, description);
    UsbDevice device;
    device.manufacturer = manufacturer;
    device.product = product;
    plugIn(u"ttyACM0"_s, device);
    QCOMPARE(waitForSignals(1), {usbAttached(u"ttyACM0"_s, description)});
    SerialDeviceEnumerator *const ports = SerialDeviceEnumerator::instance();
    ports->setDeviceName(u"ttyACM0"_s);
    QTEST(ports->friendlyName(), "friendlyName");
}

/// A device that names neither itself nor a driver.
void tst_QSerialCommandHandlerPorts::emptyDescription()
{
    UsbDevice nameless = Module;
    nameless.manufacturer.clear();
    nameless.product.clear();
    nameless.driver.clear();
    plugIn(UsedPort, nameless);
    QCOMPARE(waitForSignals(1), {usbAttached(UsedPort, QString())});
}

void tst_QSerialCommandHandlerPorts::portIsToldOnce()
{
    plugIn(u"ttyACM0"_s, Module);
    QCOMPARE(waitForSignals(1), {usbAttached(u"ttyACM0"_s)});
    plugIn(u"ttyACM1"_s, Module);
    QCOMPARE(waitForSignals(1), {usbAttached(u"ttyACM1"_s)});
    plugIn(u"ttyUSB0"_s, Adapter);
    QCOMPARE(waitForSignals(1), {serialAttached(u"ttyUSB0"_s)});
    plugIn(u"ttyUSB1"_s, Adapter);
    QCOMPARE(waitForSignals(1), {serialAttached(u"ttyUSB1"_s)});
}

void tst_QSerialCommandHandlerPorts::pluggedInAgain()
{
    for (int i = 0; i < 2; ++i) {
        plugIn(u"ttyACM0"_s, Module);
        QCOMPARE(waitForSignals(1), {usbAttached(u"ttyACM0"_s)});
        m_machine->pullOut(u"ttyACM0"_s);
        QTRY_VERIFY(SerialDeviceEnumerator::instance()->devicesAvailable().isEmpty());
    }
    QCOMPARE(m_emitted->lines(), QStringList()); // a port that nobody used goes without a word
}

void tst_QSerialCommandHandlerPorts::otherPortGoesUnnoticed()
{
    plugIn(UsedPort, Module);
    plugIn(u"ttyACM0"_s, Module);
    plugIn(u"ttyUSB0"_s, Adapter);
    QCOMPARE(waitForSignals(3).size(), 3);
    QVERIFY(m_handler->openDevice(UsedPort));
    m_machine->pullOut(u"ttyACM0"_s);
    m_machine->pullOut(u"ttyUSB0"_s);
    QTRY_COMPARE(SerialDeviceEnumerator::instance()->devicesAvailable(), QStringList(UsedPort));
    QCOMPARE(m_emitted->lines(), QStringList());
    QVERIFY(m_handler->isConnected());
    m_port->addAnswer(Answer300);
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->lines(), {u"requestedValue(1, 0, 4, 300)"_s});
}

void tst_QSerialCommandHandlerPorts::openModuleIsPulledOut()
{
    plugIn(UsedPort, Module);
    QCOMPARE(waitForSignals(1), {usbAttached(UsedPort)});
    QVERIFY(m_handler->openDevice(UsedPort));
    // Closed first, told then.
    bool wasConnected = true;
    connect(m_handler.get(), &QSerialCommandHandler::handleDetachedDevice, this,
            [&] { wasConnected = m_handler->isConnected(); });
    const DebugLog log;
    m_port->pullOut();
    m_machine->pullOut(UsedPort);
    QCOMPARE(waitForSignals(1), {detached(UsedPort)});
    QVERIFY(!wasConnected);
    QVERIFY(!deviceOf(*m_handler)->isOpen());
    QVERIFY(log.lines().contains(
        u" QSerialCommandHandler::changedSerialDevices \"%1\""_s.arg(UsedPort)));
}

void tst_QSerialCommandHandlerPorts::openPortIsPulledOut()
{
    plugIn(UsedPort, Adapter);
    QCOMPARE(waitForSignals(1), {serialAttached(UsedPort)});
    QVERIFY(m_handler->openDevice(UsedPort));
    const DebugLog log;
    m_port->pullOut();
    m_machine->pullOut(UsedPort);
    QCOMPARE(waitForSignals(1), {detached(UsedPort)});
    QVERIFY(!m_handler->isConnected());
    QVERIFY(!deviceOf(*m_handler)->isOpen());
    QVERIFY(log.lines().filter(u" QSerialCommandHandler::changedSerialDevices"_s).isEmpty());
}

void tst_QSerialCommandHandlerPorts::closedPortIsPulledOut()
{
    plugIn(UsedPort, Module);
    QCOMPARE(waitForSignals(1), {usbAttached(UsedPort)});
    QVERIFY(m_handler->openDevice(UsedPort));
    QVERIFY(m_handler->closeDevice());
    m_port->pullOut();
    m_machine->pullOut(UsedPort);
    QCOMPARE(waitForSignals(1), {detached(UsedPort)});
    QVERIFY(!m_handler->isConnected());
}

/// Only a change of the list counts: a module that falls silent is told of, but stays in it.
void tst_QSerialCommandHandlerPorts::usedPortThatStays()
{
    plugIn(UsedPort, Module);
    QCOMPARE(waitForSignals(1), {usbAttached(UsedPort)});
    QVERIFY(m_handler->openDevice(UsedPort));
    plugIn(u"ttyACM0"_s, Module);
    QCOMPARE(waitForSignals(1), {usbAttached(u"ttyACM0"_s)});
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->take(), {detached(UsedPort)});
    m_handler->reportAvailableDevices();
    QCOMPARE(m_emitted->lines(), QStringList());
    QVERIFY(m_handler->isConnected());
}

void tst_QSerialCommandHandlerPorts::pulledOutInMidExchange()
{
    plugIn(UsedPort, Module);
    QCOMPARE(waitForSignals(1), {usbAttached(UsedPort)});
    QVERIFY(m_handler->openDevice(UsedPort));
    m_port->pullOutOnRequest();
    m_machine->pullOut(UsedPort); // which nobody sees before the event loop runs again
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->take(), {detached(UsedPort)});
    QVERIFY(m_handler->isConnected());
    QCOMPARE(waitForSignals(1), {detached(UsedPort)});
    QVERIFY(!m_handler->isConnected());
}

/// All that one change brings: first what is about modules, then the rest, the lost before the new.
void tst_QSerialCommandHandlerPorts::listComesInOneOrder()
{
    plugIn(u"ttyACM0"_s, Module);
    plugIn(u"ttyACM1"_s, Module);
    plugIn(u"ttyUSB0"_s, Adapter);
    plugIn(UsedPort, Module);
    QCOMPARE(waitForSignals(4).size(), 4);

    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    handler.changedSerialDevices({UsedPort});
    QVERIFY(handler.openDevice(UsedPort));
    emitted.take();
    handler.changedSerialDevices({u"ttyUSB0"_s, u"ttyACM1"_s, u"nobody"_s, u"ttyACM0"_s});
    QCOMPARE(emitted.take(),
             QStringList({detached(UsedPort), usbAttached(u"ttyACM1"_s), usbAttached(u"ttyACM0"_s),
                          serialAttached(u"ttyUSB0"_s), serialAttached(u"nobody"_s)}));
    handler.changedSerialDevices({});
    QCOMPARE(emitted.take(), QStringList());
}

void tst_QSerialCommandHandlerPorts::listIsWrittenWithItsSender()
{
    plugIn(u"ttyACM0"_s, Module);
    DebugLog log;
    QCOMPARE(waitForSignals(1).size(), 1);
    static const QRegularExpression address(u"0x[0-9a-f]+"_s);
    QCOMPARE(log.lines().replaceInStrings(address, u"0x"_s),
             {u"\n ===> Serial devices: (\"ttyACM0\") SerialDeviceEnumerator(0x)"_s});
    log.clear();
    m_handler->changedSerialDevices({u"ttyACM0"_s, u"ttyUSB0"_s});
    QCOMPARE(log.lines(), {u"\n ===> Serial devices: (\"ttyACM0\", \"ttyUSB0\") QObject(0x0)"_s});
}

/// The open port is in the list, and yet nobody else can have it.
void tst_QSerialCommandHandlerPorts::busyPortIsTold()
{
    plugIn(UsedPort, Module);
    QCOMPARE(waitForSignals(1), {usbAttached(UsedPort)});
    QVERIFY(m_handler->openDevice(UsedPort));
    QSerialCommandHandler second;
    SignalLog emitted(second);
    second.reportAvailableDevices();
    QCOMPARE(emitted.lines(), {usbAttached(UsedPort)});
    const DebugLog log;
    QVERIFY(!second.openDevice(UsedPort));
    QCOMPARE(log.lines().constLast(), u"QSerialCommandHandler::Device is busy!"_s);
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandlerPorts)
#include "tst_QSerialCommandHandlerPorts.moc"
