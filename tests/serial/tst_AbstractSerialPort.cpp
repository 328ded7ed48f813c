#include "DeviceReport.h"
#include "PtyPair.h"
#include "serial/AbstractSerial.h"
#include "support/TestCase.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {

constexpr QIODevice::OpenMode Buffered = QIODevice::ReadWrite;
constexpr QIODevice::OpenMode Direct = QIODevice::ReadWrite | QIODevice::Unbuffered;

// Looks until @p count bytes wait in the port of an unbuffered device, without the event loop.
bool arrive(const AbstractSerial &device, qint64 count)
{
    const QDeadlineTimer deadline(10000);
    while (device.bytesAvailable() < count && !deadline.hasExpired()) {
        QThread::usleep(100);
    }
    return device.bytesAvailable() == count;
}

} // namespace

// The device over a real port.
class tst_AbstractSerialPort : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void openModes_data();
    void openModes();
    void openOfMissingPort();
    void openOfHeldPort();
    void openTakesTheLineOver();
    void setBaudRateReachesTheLine();
    void bufferedReading();
    void bufferedWriting();
    void largeBufferedWriting();
    void unbufferedReading();
    void unbufferedWriting();
    void readyReadOncePerArrival_data();
    void readyReadOncePerArrival();
    void readLimit();
    void readLimitSetWhileClosed();
    void waitForReadyRead_data();
    void waitForReadyRead();
    void waitThatTimesOut();
    void waitWithoutLimitEnds();
    void readyReadAfterWait();
    void pulledOut_data();
    void pulledOut();
    void reopening();

private:
    std::unique_ptr<PtyPair> m_line;
    std::unique_ptr<AbstractSerial> m_device;
};

void tst_AbstractSerialPort::init()
{
    TestCase::init();
    m_device = std::make_unique<AbstractSerial>();
    m_line = std::make_unique<PtyPair>();
    QVERIFY(m_line->isOpen());
    m_device->setDeviceName(m_line->portName());
}

void tst_AbstractSerialPort::openModes_data()
{
    using Mode = QIODevice::OpenMode;
    QTest::addColumn<Mode>("mode");
    QTest::newRow("read") << Mode(QIODevice::ReadOnly);
    QTest::newRow("write") << Mode(QIODevice::WriteOnly);
    QTest::newRow("both") << Mode(QIODevice::ReadWrite);
    QTest::newRow("read, unbuffered") << (QIODevice::ReadOnly | QIODevice::Unbuffered);
    QTest::newRow("write, unbuffered") << (QIODevice::WriteOnly | QIODevice::Unbuffered);
    QTest::newRow("both, unbuffered") << (QIODevice::ReadWrite | QIODevice::Unbuffered);
}

void tst_AbstractSerialPort::openModes()
{
    QFETCH(QIODevice::OpenMode, mode);
    QVERIFY(m_device->open(mode));
    if (mode & QIODevice::WriteOnly) {
        QCOMPARE(m_device->write("out"_ba), 3);
        QTRY_COMPARE(m_line->received(), "out"_ba);
    }
    if (mode & QIODevice::ReadOnly) {
        QVERIFY(m_line->send("in"_ba));
        QTRY_COMPARE(m_device->bytesAvailable(), 2);
        QCOMPARE(m_device->read(2), "in"_ba);
    }
    m_device->close();
    QVERIFY(!m_device->isOpen());
}

void tst_AbstractSerialPort::openOfMissingPort()
{
    m_device->setDeviceName(u"no-such-port"_s);
    DeviceReport report(*m_device);
    QVERIFY(!m_device->open(Direct));
    QCOMPARE(report.take(), QStringList{u"Error opening. Error!"_s});
    QVERIFY(!m_device->isOpen());
}

void tst_AbstractSerialPort::openOfHeldPort()
{
    QVERIFY(m_device->open(Direct));
    AbstractSerial other;
    other.setDeviceName(m_line->portName());
    QVERIFY(!other.open(Direct));
    QCOMPARE(other.errorString(), u"Error opening. Error!"_s);
    m_device->close();
    QVERIFY(other.open(Direct));
}

void tst_AbstractSerialPort::openTakesTheLineOver()
{
    QCOMPARE(m_device->baudRate(), u"12 baud"_s);
    termios2 line = m_line->line();
    line.c_cflag = (line.c_cflag & ~unsigned(CBAUD)) | BOTHER | CSTOPB;
    line.c_ispeed = 4800;
    line.c_ospeed = 4800;
    m_line->setLine(line);
    QVERIFY(m_device->open(Direct));
    QCOMPARE(m_device->baudRate(), u"4800 baud"_s);
    QCOMPARE(m_device->stopBits(), u"2"_s);
    QCOMPARE(m_device->dataBits(), u"8 bit"_s);
    QCOMPARE(m_device->parity(), u"None"_s);
    QCOMPARE(m_device->flowControl(), u"Disable"_s);
}

void tst_AbstractSerialPort::setBaudRateReachesTheLine()
{
    QVERIFY(m_device->open(Direct));
    QVERIFY(m_device->setBaudRate(u"300000 baud"_s));
    QCOMPARE(m_line->line().c_ospeed, 300000U);
    QCOMPARE(m_device->baudRate(), u"300000 baud"_s);
    QVERIFY(m_device->setBaudRate(AbstractSerial::BaudRate57600));
    QCOMPARE(m_line->line().c_ospeed, 57600U);
    QVERIFY(!m_device->setBaudRate(9600, AbstractSerial::InputBaud));
    QCOMPARE(m_device->baudRate(), u"57600 baud"_s);
}

void tst_AbstractSerialPort::bufferedReading()
{
    QVERIFY(m_device->open(Buffered));
    QByteArray sent;
    for (int i = 0; i < 20; ++i) {
        const QByteArray part(100, static_cast<char>('a' + i));
        sent += part;
        QVERIFY(m_line->send(part));
        QTRY_COMPARE(m_device->bytesAvailable(), sent.size());
    }
    QCOMPARE(m_device->read(1), sent.first(1));
    QCOMPARE(m_device->readAll(), sent.mid(1));
    QVERIFY(m_line->send("line\n"_ba));
    QTRY_VERIFY(m_device->canReadLine());
    QCOMPARE(m_device->readLine(), "line\n"_ba);
}

void tst_AbstractSerialPort::bufferedWriting()
{
    QVERIFY(m_device->open(Buffered));
    QSignalSpy bytesWritten(m_device.get(), &QIODevice::bytesWritten);
    QCOMPARE(m_device->write("123456789"_ba), 9);
    QTRY_COMPARE(m_line->received(), "123456789"_ba);
    QTRY_COMPARE(m_device->bytesToWrite(), 0);
    qint64 told = 0;
    for (const QList<QVariant> &arguments : std::as_const(bytesWritten)) {
        told += arguments.constFirst().toLongLong();
    }
    QCOMPARE(told, 9);
}

void tst_AbstractSerialPort::largeBufferedWriting()
{
    QVERIFY(m_device->open(Buffered));
    QByteArray sent;
    for (int i = 0; i < 12; ++i) {
        const QByteArray part(300, static_cast<char>('a' + i));
        QCOMPARE(m_device->write(part), part.size());
        sent += part;
    }
    QTRY_COMPARE(m_line->received(), sent);
    QTRY_COMPARE(m_device->bytesToWrite(), 0);
}

// A wait in the GUI thread sees the bytes without the event loop.
void tst_AbstractSerialPort::unbufferedReading()
{
    QVERIFY(m_device->open(Direct));
    QCOMPARE(m_device->bytesAvailable(), 0);
    QVERIFY(m_line->send("123456789"_ba));
    QVERIFY(arrive(*m_device, 9));
    QCOMPARE(m_device->read(4), "1234"_ba);
    QCOMPARE(m_device->bytesAvailable(), 5);
    QCOMPARE(m_device->read(5), "56789"_ba);
    QCOMPARE(m_device->bytesAvailable(), 0);
}

void tst_AbstractSerialPort::unbufferedWriting()
{
    QVERIFY(m_device->open(Direct));
    const QSignalSpy bytesWritten(m_device.get(), &QIODevice::bytesWritten);
    QCOMPARE(m_device->write("123456789"_ba), 9);
    QTRY_COMPARE(m_line->received(), "123456789"_ba);
    QCOMPARE(bytesWritten.size(), 1);
}

void tst_AbstractSerialPort::readyReadOncePerArrival_data()
{
    using Mode = QIODevice::OpenMode;
    QTest::addColumn<Mode>("mode");
    QTest::newRow("buffered") << Buffered;
    QTest::newRow("unbuffered") << Direct;
}

// Unread bytes are no arrival: they must not bring the signal again and again.
void tst_AbstractSerialPort::readyReadOncePerArrival()
{
    QFETCH(QIODevice::OpenMode, mode);
    QVERIFY(m_device->open(mode));
    QSignalSpy readyRead(m_device.get(), &QIODevice::readyRead);
    for (int arrival = 1; arrival <= 3; ++arrival) {
        QVERIFY(m_line->send("1"_ba));
        QTRY_COMPARE(readyRead.size(), arrival);
        for (int turn = 0; turn < 100; ++turn) {
            QCoreApplication::processEvents();
        }
        QCOMPARE(readyRead.size(), arrival);
    }
    QCOMPARE(m_device->bytesAvailable(), 3);
}

void tst_AbstractSerialPort::readLimit()
{
    QVERIFY(m_device->open(Buffered));
    m_device->setReadBufferSize(4);
    QVERIFY(m_line->send("123456"_ba));
    QTRY_COMPARE(m_device->bytesAvailable(), 4);
    QVERIFY(m_line->send("7"_ba));
    QCoreApplication::processEvents();
    QCOMPARE(m_device->bytesAvailable(), 4);
    QCOMPARE(m_device->read(4), "1234"_ba);
    // The next character brings what waits.
    QVERIFY(m_line->send("8"_ba));
    QTRY_COMPARE(m_device->bytesAvailable(), 4);
    QCOMPARE(m_device->readAll(), "5678"_ba);
}

void tst_AbstractSerialPort::readLimitSetWhileClosed()
{
    m_device->setReadBufferSize(2);
    QVERIFY(m_device->open(Buffered));
    QVERIFY(m_line->send("123"_ba));
    QTRY_COMPARE(m_device->bytesAvailable(), 2);
    m_device->close();
    m_device->setReadBufferSize(0);
    QVERIFY(m_device->open(Buffered));
    QVERIFY(m_line->send("456"_ba));
    QTRY_VERIFY(m_device->bytesAvailable() >= 3);
    QVERIFY(m_device->readAll().endsWith("456"_ba));
}

void tst_AbstractSerialPort::waitForReadyRead_data()
{
    readyReadOncePerArrival_data();
}

void tst_AbstractSerialPort::waitForReadyRead()
{
    QFETCH(QIODevice::OpenMode, mode);
    QVERIFY(m_device->open(mode));
    QVERIFY(m_line->send("12"_ba));
    QVERIFY(m_device->waitForReadyRead(10000));
    QCOMPARE(m_device->bytesAvailable(), 2);
    QCOMPARE(m_device->read(2), "12"_ba);
}

void tst_AbstractSerialPort::waitThatTimesOut()
{
    QVERIFY(m_device->open(Buffered));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!m_device->waitForReadyRead(30));
    QVERIFY(timer.elapsed() >= 29);
    QCOMPARE(m_device->errorString(), u"Controls::Wait for ready read timeout. Error!"_s);
}

void tst_AbstractSerialPort::waitWithoutLimitEnds()
{
    QVERIFY(m_device->open(Direct));
    QVERIFY(!m_device->waitForReadyRead(-1));
    QVERIFY(!m_device->waitForBytesWritten(-1));
    QVERIFY(m_line->send("1"_ba));
    QVERIFY(arrive(*m_device, 1));
    QVERIFY(!m_device->waitForBytesWritten(-1));
    QVERIFY(m_device->waitForReadyRead(-1));
}

void tst_AbstractSerialPort::readyReadAfterWait()
{
    QVERIFY(m_device->open(Buffered));
    QVERIFY(!m_device->waitForReadyRead(0));
    QSignalSpy readyRead(m_device.get(), &QIODevice::readyRead);
    QVERIFY(m_line->send("1"_ba));
    QTRY_COMPARE(readyRead.size(), 1);
}

void tst_AbstractSerialPort::pulledOut_data()
{
    QTest::addColumn<QIODevice::OpenMode>("mode");
    QTest::addColumn<qint64>("available");
    QTest::addColumn<qint64>("written");
    QTest::newRow("buffered") << Buffered << qint64(0) << qint64(4);
    QTest::newRow("unbuffered") << Direct << qint64(-1) << qint64(-1);
}

// The buffer takes what the port refuses then; unbuffered, the refusal itself is the answer.
void tst_AbstractSerialPort::pulledOut()
{
    QFETCH(QIODevice::OpenMode, mode);
    QFETCH(qint64, available);
    QFETCH(qint64, written);
    QVERIFY(m_device->open(mode));
    m_line->close();
    QSignalSpy readyRead(m_device.get(), &QIODevice::readyRead);
    for (int turn = 0; turn < 100; ++turn) {
        QCoreApplication::processEvents();
    }
    QCOMPARE(readyRead.size(), 0);
    QCOMPARE(m_device->bytesAvailable(), available);
    QCOMPARE(m_device->read(9), QByteArray());
    QVERIFY(!m_device->waitForReadyRead(50));
    QVERIFY(!m_device->waitForReadyRead(-1));
    QCOMPARE(m_device->write("lost"_ba), written);
    QVERIFY(!m_device->waitForBytesWritten(50));
    QCOMPARE(m_device->bytesToWrite(), 0);
    QVERIFY(m_device->isOpen());
    m_device->close();
    QVERIFY(!m_device->isOpen());
}

void tst_AbstractSerialPort::reopening()
{
    for (const QIODevice::OpenMode mode : {Buffered, Direct, Buffered}) {
        QVERIFY(m_device->open(mode));
        QVERIFY(m_line->send("in"_ba));
        QTRY_COMPARE(m_device->bytesAvailable(), 2);
        QCOMPARE(m_device->read(2), "in"_ba);
        m_device->close();
        QCOMPARE(m_device->bytesToWrite(), 0);
    }
}

QTEST_GUILESS_MAIN(tst_AbstractSerialPort)
#include "tst_AbstractSerialPort.moc"
