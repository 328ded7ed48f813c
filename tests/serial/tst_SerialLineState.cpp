#include "serial/SerialLineState.h"
#include "support/TestCase.h"

#include <QList>
#include <QTest>

namespace {

/// A driver that notes what it is given and refuses when told to.
class NotingLine : public SerialLineState
{
public:
    QList<LineSettings> sent;
    QList<int> timeouts;
    bool refuses = false;

protected:
    bool applySettings() override
    {
        sent.append(settings);
        return !refuses;
    }
    void applyTimeouts() override { timeouts.append(readTotalTimeout); }
};

} // namespace

class tst_SerialLineState : public TestCase
{
    Q_OBJECT

private slots:
    void startValues();
    void setterSendsTheWholeAndTakesOver();
    void baudRateNeedsBothDirections();
    void undefinedValuesReachNoDriver();
    void refusedValueStaysAndIsSentAgain();
    void fiveDataBitsAgainstTwoStopBits();
    void oneAndAHalfStopBitsWithEightDataBitsIsATrap();
    void computedTimeoutFollowsTheLine();
    void flowControlLeavesTheComputedTimeout();
    void fixedTimeout();
    void computedTimeoutIsAppliedOnChangeOnly();
    void noComputedTimeoutWithoutOneRate();
    void readBack();
};

void tst_SerialLineState::startValues()
{
    const NotingLine line;
    QVERIFY(line.deviceName.isEmpty());
    QCOMPARE(line.inputBaudRate, 12);
    QCOMPARE(line.outputBaudRate, 12);
    QCOMPARE(line.dataBits, 3);
    QCOMPARE(line.parity, 0);
    QCOMPARE(line.stopBits, 0);
    QCOMPARE(line.flow, 0);
    QCOMPARE(line.charIntervalTimeout, 0);
    QCOMPARE(line.spareInt, 0);
    QVERIFY(!line.oldSettingsSaved);
    QCOMPARE(line.descriptor, qintptr(-1));
    QVERIFY(!line.receiver);
    QVERIFY(!line.autoReadTotalTimeout);
    QCOMPARE(line.readTotalTimeout, 0);
}

void tst_SerialLineState::setterSendsTheWholeAndTakesOver()
{
    NotingLine line;
    QVERIFY(line.setBaudRate(19200, AbstractSerial::AllBaud));
    QVERIFY(line.setDataBits(AbstractSerial::DataBits7));
    QVERIFY(line.setParity(AbstractSerial::ParityMark));
    QVERIFY(line.setStopBits(AbstractSerial::StopBits2));
    QVERIFY(line.setFlowControl(AbstractSerial::FlowHardware));
    QCOMPARE(line.inputBaudRate, 19200);
    QCOMPARE(line.outputBaudRate, 19200);
    QCOMPARE(line.dataBits, 2);
    QCOMPARE(line.parity, 3);
    QCOMPARE(line.stopBits, 2);
    QCOMPARE(line.flow, 1);
    QCOMPARE(line.sent.size(), 5);
    const LineSettings last{.baudRate = 19200,
                            .byteSize = 7,
                            .checksParity = true,
                            .parity = 3,
                            .stopBits = 2,
                            .ctsFlow = true,
                            .rtsControl = 2,
                            .outX = false,
                            .inX = false};
    QVERIFY(line.sent.last() == last);
}

void tst_SerialLineState::baudRateNeedsBothDirections()
{
    NotingLine line;
    for (const AbstractSerial::BaudRateDirection direction :
         {AbstractSerial::BaudRateDirection(),
          AbstractSerial::BaudRateDirection(AbstractSerial::InputBaud),
          AbstractSerial::BaudRateDirection(AbstractSerial::OutputBaud)}) {
        QVERIFY(!line.setBaudRate(9600, direction));
    }
    for (const int rate : {0, -1, -9600}) {
        QVERIFY(!line.setBaudRate(rate, AbstractSerial::AllBaud));
    }
    QVERIFY(line.sent.isEmpty());
    QCOMPARE(line.inputBaudRate, 12);
}

void tst_SerialLineState::undefinedValuesReachNoDriver()
{
    NotingLine line;
    for (const int value : {-1, 5, 99}) {
        QVERIFY(!line.setDataBits(AbstractSerial::DataBits(value)));
        QVERIFY(!line.setParity(AbstractSerial::Parity(value)));
        QVERIFY(!line.setStopBits(AbstractSerial::StopBits(value)));
        QVERIFY(!line.setFlowControl(AbstractSerial::Flow(value)));
    }
    QVERIFY(line.sent.isEmpty());
    QVERIFY(line.settings == LineSettings());
}

void tst_SerialLineState::refusedValueStaysAndIsSentAgain()
{
    NotingLine line;
    line.refuses = true;
    QVERIFY(!line.setParity(AbstractSerial::ParityEven));
    QVERIFY(!line.setDataBits(AbstractSerial::DataBits6));
    QVERIFY(!line.setStopBits(AbstractSerial::StopBits2));
    QVERIFY(!line.setFlowControl(AbstractSerial::FlowXonXoff));
    QVERIFY(!line.setBaudRate(300, AbstractSerial::AllBaud));
    QCOMPARE(line.parity, 0);
    QCOMPARE(line.dataBits, 3);
    QCOMPARE(line.stopBits, 0);
    QCOMPARE(line.flow, 0);
    QCOMPARE(line.inputBaudRate, 12);

    line.refuses = false;
    QVERIFY(line.setBaudRate(9600, AbstractSerial::AllBaud));
    QCOMPARE(line.sent.last().parity, 2);
    QVERIFY(line.sent.last().checksParity);
    QCOMPARE(line.sent.last().byteSize, 6);
    QCOMPARE(line.sent.last().stopBits, 2);
    QVERIFY(line.sent.last().inX && line.sent.last().outX);
    QCOMPARE(line.parity, 0);
}

void tst_SerialLineState::fiveDataBitsAgainstTwoStopBits()
{
    NotingLine line;
    QVERIFY(line.setStopBits(AbstractSerial::StopBits2));
    QVERIFY(!line.setDataBits(AbstractSerial::DataBits5));
    QCOMPARE(line.sent.size(), 1);
    QVERIFY(line.setStopBits(AbstractSerial::StopBits1));
    QVERIFY(line.setDataBits(AbstractSerial::DataBits5));
    // The guard sees the one stop bit of now, and so lets two in.
    QVERIFY(line.setStopBits(AbstractSerial::StopBits2));
    QVERIFY(!line.setStopBits(AbstractSerial::StopBits1));
    QVERIFY(line.setDataBits(AbstractSerial::DataBits8));
    QVERIFY(line.setStopBits(AbstractSerial::StopBits1));
}

void tst_SerialLineState::oneAndAHalfStopBitsWithEightDataBitsIsATrap()
{
    NotingLine line;
    QVERIFY(line.setStopBits(AbstractSerial::StopBits1_5));
    QCOMPARE(line.stopBits, 1);
    QCOMPARE(line.sent.last().byteSize, 8);
    for (int value = 0; value <= 2; ++value) {
        QVERIFY(!line.setStopBits(AbstractSerial::StopBits(value)));
    }
    for (int value = 1; value <= 3; ++value) {
        QVERIFY(!line.setDataBits(AbstractSerial::DataBits(value)));
    }
    QVERIFY(line.setDataBits(AbstractSerial::DataBits5));
    QVERIFY(line.setStopBits(AbstractSerial::StopBits1));
}

void tst_SerialLineState::computedTimeoutFollowsTheLine()
{
    NotingLine line;
    QVERIFY(line.setBaudRate(9600, AbstractSerial::AllBaud));
    line.setTotalReadTimeout(-1);
    QCOMPARE(line.readTotalTimeout, 266);
    line.setCharIntervalTimeout(100);
    QCOMPARE(line.readTotalTimeout, 291);
    QVERIFY(line.setParity(AbstractSerial::ParityOdd));
    QCOMPARE(line.readTotalTimeout, 293 + 25);
    QVERIFY(line.setStopBits(AbstractSerial::StopBits2));
    QCOMPARE(line.readTotalTimeout, 320 + 25);
    QVERIFY(line.setDataBits(AbstractSerial::DataBits7));
    QCOMPARE(line.readTotalTimeout, 293 + 25);
    QVERIFY(line.setBaudRate(19200, AbstractSerial::AllBaud));
    QCOMPARE(line.readTotalTimeout, 146 + 25);
    QCOMPARE(line.timeouts, (QList<int>{266, 291, 318, 345, 318, 171}));

    line.refuses = true;
    QVERIFY(!line.setBaudRate(300, AbstractSerial::AllBaud));
    QCOMPARE(line.readTotalTimeout, 171);
}

void tst_SerialLineState::flowControlLeavesTheComputedTimeout()
{
    NotingLine line;
    line.setTotalReadTimeout(-1);
    line.readTotalTimeout = 1;
    line.timeouts.clear();
    QVERIFY(line.setFlowControl(AbstractSerial::FlowXonXoff));
    QCOMPARE(line.readTotalTimeout, 1);
    QVERIFY(line.timeouts.isEmpty());
    QVERIFY(line.setParity(AbstractSerial::ParityNone));
    QVERIFY(line.readTotalTimeout != 1);
}

void tst_SerialLineState::fixedTimeout()
{
    NotingLine line;
    line.setTotalReadTimeout(-1);
    QVERIFY(line.autoReadTotalTimeout);
    line.setTotalReadTimeout(70);
    QVERIFY(!line.autoReadTotalTimeout);
    QCOMPARE(line.readTotalTimeout, 70);
    QCOMPARE(line.timeouts.last(), 70);
    line.setCharIntervalTimeout(1000);
    QVERIFY(line.setBaudRate(300, AbstractSerial::AllBaud));
    QCOMPARE(line.readTotalTimeout, 70);
    line.setTotalReadTimeout(0);
    QCOMPARE(line.readTotalTimeout, 0);
}

void tst_SerialLineState::computedTimeoutIsAppliedOnChangeOnly()
{
    NotingLine line;
    QVERIFY(line.setBaudRate(9600, AbstractSerial::AllBaud));
    line.setTotalReadTimeout(-1);
    line.setTotalReadTimeout(-1);
    line.setCharIntervalTimeout(0);
    QCOMPARE(line.timeouts, QList<int>{266});
}

void tst_SerialLineState::noComputedTimeoutWithoutOneRate()
{
    NotingLine line;
    line.inputBaudRate = 300;
    line.outputBaudRate = 9600;
    line.setTotalReadTimeout(-1);
    line.inputBaudRate = line.outputBaudRate = 0;
    line.setCharIntervalTimeout(1000);
    line.inputBaudRate = line.outputBaudRate = -1;
    line.setCharIntervalTimeout(2000);
    QVERIFY(line.timeouts.isEmpty());
    QCOMPARE(line.readTotalTimeout, 0);
    QVERIFY(line.autoReadTotalTimeout);
}

void tst_SerialLineState::readBack()
{
    NotingLine line;
    line.settings = {.baudRate = 57600,
                     .byteSize = 6,
                     .checksParity = true,
                     .parity = 4,
                     .stopBits = 2,
                     .ctsFlow = false,
                     .rtsControl = 0,
                     .outX = true,
                     .inX = true};
    line.readBackSettings();
    QCOMPARE(line.inputBaudRate, 57600);
    QCOMPARE(line.outputBaudRate, 57600);
    QCOMPARE(line.dataBits, 1);
    QCOMPARE(line.parity, 4);
    QCOMPARE(line.stopBits, 2);
    QCOMPARE(line.flow, 2);
    line.settings = {.baudRate = 1,
                     .byteSize = 4,
                     .checksParity = false,
                     .parity = 1,
                     .stopBits = 3,
                     .ctsFlow = true,
                     .rtsControl = 1,
                     .outX = false,
                     .inX = false};
    line.readBackSettings();
    QCOMPARE(line.dataBits, -1);
    QCOMPARE(line.parity, -1);
    QCOMPARE(line.stopBits, -1);
    QCOMPARE(line.flow, -1);
}

QTEST_GUILESS_MAIN(tst_SerialLineState)
#include "tst_SerialLineState.moc"
