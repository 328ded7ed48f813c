#include "DeviceReport.h"
#include "FakeSerialEngine.h"
#include "serial/AbstractSerial.h"
#include "support/TestCase.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Operation = std::function<bool(AbstractSerial &)>;
Q_DECLARE_METATYPE(Operation)

// The speed by number, by value and by text, and the speed that is set.
class tst_AbstractSerialBaudRate : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void baudRateBelowOne_data();
    void baudRateBelowOne();
    void baudRateDirection();
    void baudRateByText_data();
    void baudRateByText();
    void baudRateByTextWithoutNumber_data();
    void baudRateByTextWithoutNumber();
    void presentBaudRate();
    void baudRateOutsideTheTable();
};

void tst_AbstractSerialBaudRate::init()
{
    TestCase::init();
    FakeSerialEngine::log().clear();
}

void tst_AbstractSerialBaudRate::baudRateBelowOne_data()
{
    QTest::addColumn<Operation>("operation");
    const auto byRate = [](int rate) {
        return Operation([rate](AbstractSerial &device) { return device.setBaudRate(rate); });
    };
    const auto byValue = [](int value) {
        return Operation([value](AbstractSerial &device) {
            return device.setBaudRate(AbstractSerial::BaudRate(value));
        });
    };
    QTest::newRow("rate 0") << byRate(0);
    QTest::newRow("rate -1") << byRate(-1);
    QTest::newRow("value undefined") << byValue(AbstractSerial::BaudRateUndefined);
    QTest::newRow("value 35") << byValue(35);
    QTest::newRow("value 2000000000") << byValue(2000000000);
    QTest::newRow("value -2") << byValue(-2);
}

void tst_AbstractSerialBaudRate::baudRateBelowOne()
{
    QFETCH(Operation, operation);
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(!operation(device));
    QCOMPARE(FakeSerialEngine::log(), QStringList());
    QCOMPARE(report.take(), QStringList{u"Parameters::Set baud rate fail. Error!"_s});
}

void tst_AbstractSerialBaudRate::baudRateDirection()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::log().clear();
    QVERIFY(device.setBaudRate(1, AbstractSerial::InputBaud));
    QVERIFY(device.setBaudRate(AbstractSerial::BaudRate9600, AbstractSerial::OutputBaud));
    QVERIFY(device.setBaudRate(u"50"_s, AbstractSerial::AllBaud));
    QCOMPARE(
        FakeSerialEngine::log(),
        (QStringList{u"setBaudRate(1, 1)"_s, u"setBaudRate(9600, 2)"_s, u"setBaudRate(50, 3)"_s}));
}

void tst_AbstractSerialBaudRate::baudRateByText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("text of the table") << u"9600 baud"_s;
    QTest::newRow("number alone") << u"9600"_s;
    QTest::newRow("number in a sentence") << u"about 9600 of 19200"_s;
    QTest::newRow("sign is no digit") << u"-9600"_s;
    QTest::newRow("leading zeros") << u"009600"_s;
    QTest::newRow("up to a point") << u"9600.75"_s;
}

void tst_AbstractSerialBaudRate::baudRateByText()
{
    QFETCH(QString, text);
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::log().clear();
    QVERIFY(device.setBaudRate(text));
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"setBaudRate(9600, 3)"_s});
}

void tst_AbstractSerialBaudRate::baudRateByTextWithoutNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isOpen");
    for (const bool isOpen : {true, false}) {
        const char *const state = isOpen ? "open" : "closed";
        QTest::addRow("empty, %s", state) << QString() << isOpen;
        QTest::addRow("no digits, %s", state) << u"Undefined baud"_s << isOpen;
        QTest::addRow("too large, %s", state) << u"2147483648 baud"_s << isOpen;
        QTest::addRow("zero, %s", state) << u"0 baud"_s << isOpen;
    }
}

void tst_AbstractSerialBaudRate::baudRateByTextWithoutNumber()
{
    QFETCH(QString, text);
    QFETCH(bool, isOpen);
    AbstractSerial device;
    if (isOpen) {
        QVERIFY(device.open(QIODevice::ReadWrite));
    }
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(!device.setBaudRate(text));
    QCOMPARE(FakeSerialEngine::log(), QStringList());
    QCOMPARE(report.take(),
             QStringList{isOpen ? u"Parameters::Set baud rate fail. Error!"_s
                                : u"Device is not open. Error!"_s});
}

void tst_AbstractSerialBaudRate::presentBaudRate()
{
    AbstractSerial device;
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    QCOMPARE(device.baudRate(), u"12 baud"_s);
    engine->setRates(4800, 9600);
    QCOMPARE(device.baudRate(AbstractSerial::InputBaud), u"4800 baud"_s);
    QCOMPARE(device.baudRate(AbstractSerial::OutputBaud), u"9600 baud"_s);
    QCOMPARE(device.baudRate(AbstractSerial::AllBaud), u"Undefined baud"_s);
    engine->setRates(-1, -1);
    QCOMPARE(device.baudRate(), u"Undefined baud"_s);
    engine->setRates(1, 1);
    QCOMPARE(device.baudRate(), u"1 baud"_s);
}

void tst_AbstractSerialBaudRate::baudRateOutsideTheTable()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    QVERIFY(device.setBaudRate(300000));
    QCOMPARE(device.baudRate(), u"300000 baud"_s);
}

QTEST_GUILESS_MAIN(tst_AbstractSerialBaudRate)
#include "tst_AbstractSerialBaudRate.moc"
