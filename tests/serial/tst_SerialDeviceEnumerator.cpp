#include "SerialTestbed.h"
#include "serial/SerialDeviceEnumerator.h"
#include "support/TestCase.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QSocketNotifier>
#include <QTest>

#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// The list of ports and its changes, on the machine of a SerialTestbed.
class tst_SerialDeviceEnumerator : public TestCase
{
    Q_OBJECT

private slots:
    void declaresSignalThenSlot();
    void isOneInTheProcess();

    void startsEmptyWithoutPorts();
    void scansDuringConstruction();
    void tellsPlugInAndPullOut();
    void tellsBurstOnce();
    void tellsChangedName();
    void tellsRealChangesOnly();
    void tellsFailedScanAsChange();
    void stopsAndResumesWatch();
    void staysEmptyWithoutWatch();

    void answersEmptyForUnknownName();
    void keepsRecordUntilChosenAgain();
    void opensNodeOfTheName();
};

namespace {

QStringList portsOf(const QSignalSpy &changes, qsizetype index)
{
    return changes.at(index).constFirst().toStringList();
}

/// All text accessors, in the order of the record.
QStringList textsOf(const SerialDeviceEnumerator &ports)
{
    return {ports.portName(),   ports.deviceObject(), ports.deviceClass(), ports.locationInfo(),
            ports.driverPath(), ports.friendlyName(), ports.description(), ports.vendorId(),
            ports.productId(),  ports.manufacturer(), ports.service(),     ports.busName(),
            ports.reserved()};
}

/// Lets opening a file fail in this process while the object lives.
class NoMoreFiles
{
public:
    NoMoreFiles()
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const int next = ::dup(STDERR_FILENO);
        ::close(next);
        const rlimit none{static_cast<rlim_t>(next), m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreFiles() { setrlimit(RLIMIT_NOFILE, &m_before); }
    NoMoreFiles(const NoMoreFiles &) = delete;
    NoMoreFiles &operator=(const NoMoreFiles &) = delete;

private:
    rlimit m_before{};
};

} // namespace

void tst_SerialDeviceEnumerator::declaresSignalThenSlot()
{
    const QMetaObject &meta = SerialDeviceEnumerator::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);

    const QMetaMethod signal = meta.method(meta.methodOffset());
    QCOMPARE(signal.methodType(), QMetaMethod::Signal);
    QCOMPARE(signal.methodSignature(), "hasChanged(QStringList)"_ba);
    QCOMPARE(signal.parameterNames(), QByteArrayList{"list"_ba});

    const QMetaMethod slot = meta.method(meta.methodOffset() + 1);
    QCOMPARE(slot.methodType(), QMetaMethod::Slot);
    QCOMPARE(slot.methodSignature(), "_q_processWatcher()"_ba);
}

void tst_SerialDeviceEnumerator::isOneInTheProcess()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {});

    SerialDeviceEnumerator *const ports = SerialDeviceEnumerator::instance();
    QVERIFY(ports);
    QCOMPARE(SerialDeviceEnumerator::instance(), ports);
    QCOMPARE(ports->parent(), nullptr);
    QVERIFY(ports->isEnabled());
    QCOMPARE(ports->devicesAvailable(), QStringList{u"ttyACM0"_s});
}

void tst_SerialDeviceEnumerator::startsEmptyWithoutPorts()
{
    SerialTestbed machine;
    SerialDeviceEnumerator ports;
    QVERIFY(ports.isEnabled());
    QCOMPARE(ports.devicesAvailable(), QStringList());
    QVERIFY(!ports.isExists());
    QVERIFY(!ports.isBusy());
    QCOMPARE(ports.name(), QString());
}

void tst_SerialDeviceEnumerator::scansDuringConstruction()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {});
    QObject owner;
    const auto *ports = new SerialDeviceEnumerator(&owner);
    QCOMPARE(ports->parent(), &owner);
    QVERIFY(ports->isEnabled());
    QCOMPARE(ports->devicesAvailable(), QStringList{u"ttyACM0"_s});
}

void tst_SerialDeviceEnumerator::tellsPlugInAndPullOut()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM1", {});
    SerialDeviceEnumerator ports;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);

    machine.plugIn("ttyACM0", {});
    QTRY_COMPARE(changes.size(), 1);
    QCOMPARE(portsOf(changes, 0), (QStringList{u"ttyACM0"_s, u"ttyACM1"_s}));
    QCOMPARE(ports.devicesAvailable(), portsOf(changes, 0));

    machine.pullOut("ttyACM1");
    QTRY_COMPARE(changes.size(), 2);
    QCOMPARE(portsOf(changes, 1), QStringList{u"ttyACM0"_s});

    machine.pullOut("ttyACM0");
    QTRY_COMPARE(changes.size(), 3);
    QCOMPARE(portsOf(changes, 2), QStringList());
    QCOMPARE(ports.devicesAvailable(), QStringList());

    machine.plugIn("ttyACM0", {});
    QTRY_COMPARE(changes.size(), 4);
    QCOMPARE(portsOf(changes, 3), QStringList{u"ttyACM0"_s});
}

void tst_SerialDeviceEnumerator::tellsBurstOnce()
{
    SerialTestbed machine;
    SerialDeviceEnumerator ports;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    const auto *notifier = ports.findChild<QSocketNotifier *>();
    QVERIFY(notifier);
    QSignalSpy activations(notifier, &QSocketNotifier::activated);
    for (const QByteArray name : {"ttyACM0", "ttyACM1", "ttyACM2"}) {
        machine.plugIn(name, {});
    }
    QTRY_COMPARE(changes.size(), 1);
    QCOMPARE(portsOf(changes, 0), (QStringList{u"ttyACM0"_s, u"ttyACM1"_s, u"ttyACM2"_s}));

    // Nothing is left to be read, which would set off one scan after the other.
    for (int i = 0; i < 10; ++i) {
        QCoreApplication::processEvents();
    }
    QCOMPARE(activations.size(), 1);
}

void tst_SerialDeviceEnumerator::tellsChangedName()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {});
    SerialDeviceEnumerator ports;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);

    machine.setUsbAttribute("ttyACM0", "product", "ZDRM-7711");
    machine.touch("ttyACM0");
    QTRY_COMPARE(changes.size(), 1);
    QCOMPARE(portsOf(changes, 0), QStringList{u"ttyACM0"_s});
    ports.setDeviceName(u"ttyACM0"_s);
    QCOMPARE(ports.friendlyName(), u"Moravint ZDRM-7711"_s);
}

void tst_SerialDeviceEnumerator::tellsRealChangesOnly()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {});
    SerialDeviceEnumerator ports;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);

    // Each of the two events comes to a scan of its own.
    machine.touch("ttyACM0");
    ports._q_processWatcher();
    machine.touch("ttyACM0");
    ports._q_processWatcher();
    QCOMPARE(changes.size(), 0);

    // A scan that finds nothing new says nothing: only a real change can end a wait.
    machine.plugIn("ttyACM1", {});
    QTRY_COMPARE(changes.size(), 1);
    machine.touch("ttyACM0");
    machine.touch("ttyACM1");
    machine.pullOut("ttyACM0");
    QTRY_COMPARE(changes.size(), 2);
    QCOMPARE(portsOf(changes, 1), QStringList{u"ttyACM1"_s});
}

// A scan that can't be done looks as if the ports had been pulled out, until the next one.
void tst_SerialDeviceEnumerator::tellsFailedScanAsChange()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {});
    SerialDeviceEnumerator ports;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    {
        const NoMoreFiles limit;
        ports._q_processWatcher();
    }
    QCOMPARE(changes.size(), 1);
    QCOMPARE(portsOf(changes, 0), QStringList());
    QCOMPARE(ports.devicesAvailable(), QStringList());

    ports._q_processWatcher();
    QCOMPARE(changes.size(), 2);
    QCOMPARE(portsOf(changes, 1), QStringList{u"ttyACM0"_s});
    QCOMPARE(ports.devicesAvailable(), QStringList{u"ttyACM0"_s});
}

void tst_SerialDeviceEnumerator::stopsAndResumesWatch()
{
    SerialTestbed machine;
    SerialDeviceEnumerator ports;
    SerialDeviceEnumerator witness;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    QSignalSpy witnessed(&witness, &SerialDeviceEnumerator::hasChanged);

    ports.setEnabled(false);
    QVERIFY(!ports.isEnabled());
    machine.plugIn("ttyACM0", {});
    QTRY_COMPARE(witnessed.size(), 1);
    QCOMPARE(changes.size(), 0);
    QCOMPARE(ports.devicesAvailable(), QStringList());

    ports.setEnabled(true);
    QVERIFY(ports.isEnabled());
    QCOMPARE(changes.size(), 1); // at once, without the event loop
    QCOMPARE(portsOf(changes, 0), QStringList{u"ttyACM0"_s});

    ports.setEnabled(true);
    machine.pullOut("ttyACM0");
    QTRY_COMPARE(changes.size(), 2);
    QCOMPARE(portsOf(changes, 1), QStringList());
}

void tst_SerialDeviceEnumerator::staysEmptyWithoutWatch()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {});
    std::unique_ptr<SerialDeviceEnumerator> ports;
    {
        const NoMoreFiles limit;
        ports = std::make_unique<SerialDeviceEnumerator>();
    }
    QSignalSpy changes(ports.get(), &SerialDeviceEnumerator::hasChanged);

    QVERIFY(!ports->isEnabled());
    ports->setEnabled(true);
    ports->_q_processWatcher();
    ports->setEnabled(false);
    QVERIFY(!ports->isEnabled());
    QCOMPARE(ports->devicesAvailable(), QStringList());
    QCOMPARE(changes.size(), 0);
}

void tst_SerialDeviceEnumerator::answersEmptyForUnknownName()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {});
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"ttyACM0"_s);
    ports.setDeviceName(u"ttyACM9"_s);

    QCOMPARE(ports.name(), u"ttyACM9"_s);
    QVERIFY(!ports.isExists());
    QCOMPARE(textsOf(ports).join(QString()), QString());
    QCOMPARE(ports.hardwareIds(), QStringList());
}

void tst_SerialDeviceEnumerator::keepsRecordUntilChosenAgain()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {});
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"ttyACM0"_s);
    const QStringList texts = textsOf(ports);
    const QStringList hardwareIds = ports.hardwareIds();
    QVERIFY(!hardwareIds.isEmpty());

    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    machine.setUsbAttribute("ttyACM0", "product", "ZDRM-7711");
    machine.touch("ttyACM0");
    QTRY_COMPARE(changes.size(), 1);
    QCOMPARE(textsOf(ports), texts);
    QVERIFY(ports.isExists());

    machine.pullOut("ttyACM0");
    QTRY_COMPARE(changes.size(), 2);
    QCOMPARE(textsOf(ports), texts);
    QCOMPARE(ports.hardwareIds(), hardwareIds);
    QVERIFY(!ports.isExists());
    QVERIFY(ports.isBusy());

    ports.setDeviceName(u"ttyACM0"_s);
    QCOMPARE(ports.portName(), QString());
}

void tst_SerialDeviceEnumerator::opensNodeOfTheName()
{
    SerialTestbed machine;
    machine.plugIn("ttyACM0", {}); // has no node
    machine.add("P: /devices/platform/uart\nE: SUBSYSTEM=platform\n\n");
    machine.add("P: /devices/platform/uart/tty/ttyAMA0\nN: ttyAMA0\nE: SUBSYSTEM=tty\n"
                "E: DEVNAME=/dev/ttyAMA0\n\n");
    SerialDeviceEnumerator ports;

    ports.setDeviceName(u"ttyAMA0"_s);
    QVERIFY(ports.isExists());
    QVERIFY(!ports.isBusy());
    ports.setDeviceName(u"/dev/ttyAMA0"_s);
    QVERIFY(!ports.isExists());
    QVERIFY(!ports.isBusy());
    ports.setDeviceName(u"ttyACM0"_s);
    QVERIFY(ports.isExists());
    QVERIFY(ports.isBusy());
}

QTEST_GUILESS_MAIN(tst_SerialDeviceEnumerator)
#include "tst_SerialDeviceEnumerator.moc"
