#include "serial/LineSettings.h"
#include "support/TestCase.h"

#include <QTest>

class tst_LineSettings : public TestCase
{
    Q_OBJECT

private slots:
    void dataBits();
    void parity();
    void stopBits();
    void flowControl_data();
    void flowControl();
    void flowControlReadBack_data();
    void flowControlReadBack();
};

void tst_LineSettings::dataBits()
{
    LineSettings settings;
    for (int value = 0; value <= 3; ++value) {
        settings.setDataBits(AbstractSerial::DataBits(value));
        QCOMPARE(settings.byteSize, 5 + value);
        QCOMPARE(settings.enumeratedDataBits(), AbstractSerial::DataBits(value));
    }
    for (const int size : {-1, 0, 4, 9, 16}) {
        settings.byteSize = size;
        QCOMPARE(settings.enumeratedDataBits(), AbstractSerial::DataBitsUndefined);
    }
}

void tst_LineSettings::parity()
{
    LineSettings settings;
    for (int value = 4; value >= 0; --value) {
        settings.setParity(AbstractSerial::Parity(value));
        QCOMPARE(settings.parity, value);
        QCOMPARE(settings.checksParity, value != 0);
        QCOMPARE(settings.enumeratedParity(), AbstractSerial::Parity(value));
        // A kind without a parity bit, and a parity bit without a kind, are no enumerated value.
        settings.checksParity = !settings.checksParity;
        QCOMPARE(settings.enumeratedParity(), AbstractSerial::ParityUndefined);
    }
    for (const int kind : {-1, 5}) {
        settings.parity = kind;
        settings.checksParity = true;
        QCOMPARE(settings.enumeratedParity(), AbstractSerial::ParityUndefined);
    }
}

void tst_LineSettings::stopBits()
{
    LineSettings settings;
    for (int value = 2; value >= 0; --value) {
        settings.setStopBits(AbstractSerial::StopBits(value));
        QCOMPARE(settings.stopBits, value);
        QCOMPARE(settings.enumeratedStopBits(), AbstractSerial::StopBits(value));
    }
    for (const int value : {-1, 3}) {
        settings.stopBits = value;
        QCOMPARE(settings.enumeratedStopBits(), AbstractSerial::StopBitsUndefined);
    }
}

void tst_LineSettings::flowControl_data()
{
    QTest::addColumn<int>("flow");
    QTest::addColumn<bool>("ctsFlow");
    QTest::addColumn<int>("rtsControl");
    QTest::addColumn<bool>("characters");
    QTest::newRow("none") << 0 << false << 0 << false;
    QTest::newRow("hardware") << 1 << true << 2 << false;
    QTest::newRow("software") << 2 << false << 0 << true;
}

void tst_LineSettings::flowControl()
{
    QFETCH(int, flow);
    QFETCH(bool, ctsFlow);
    QFETCH(int, rtsControl);
    QFETCH(bool, characters);
    // Whatever was set before: each value states all four fields.
    for (int before = 0; before <= 2; ++before) {
        LineSettings settings;
        settings.setFlowControl(AbstractSerial::Flow(before));
        settings.setFlowControl(AbstractSerial::Flow(flow));
        QCOMPARE(settings.ctsFlow, ctsFlow);
        QCOMPARE(settings.rtsControl, rtsControl);
        QCOMPARE(settings.outX, characters);
        QCOMPARE(settings.inX, characters);
        QCOMPARE(settings.enumeratedFlowControl(), AbstractSerial::Flow(flow));
    }
}

void tst_LineSettings::flowControlReadBack_data()
{
    QTest::addColumn<bool>("ctsFlow");
    QTest::addColumn<int>("rtsControl");
    QTest::addColumn<bool>("inX");
    QTest::addColumn<bool>("outX");
    QTest::addColumn<int>("flow");
    for (int combination = 0; combination < 32; ++combination) {
        const bool cts = combination & 1;
        const bool in = combination & 2;
        const bool out = combination & 4;
        const int rts = combination >> 3;
        int flow = -1;
        if (cts && rts == 2 && !in && !out) {
            flow = 1;
        } else if (!cts && rts == 0 && in && out) {
            flow = 2;
        } else if (!cts && rts == 0 && !in && !out) {
            flow = 0;
        }
        QTest::addRow("cts %d rts %d in %d out %d", cts, rts, in, out)
            << cts << rts << in << out << flow;
    }
}

void tst_LineSettings::flowControlReadBack()
{
    LineSettings settings;
    QFETCH(bool, ctsFlow);
    QFETCH(int, rtsControl);
    QFETCH(bool, inX);
    QFETCH(bool, outX);
    settings.ctsFlow = ctsFlow;
    settings.rtsControl = rtsControl;
    settings.inX = inX;
    settings.outX = outX;
    QTEST(int(settings.enumeratedFlowControl()), "flow");
}

QTEST_GUILESS_MAIN(tst_LineSettings)
#include "tst_LineSettings.moc"
