#include "serial/native/posix/TermiosSettings.h"
#include "support/TestCase.h"

#include <QTest>

using TermiosSettings::Medium;

class tst_TermiosSettings : public TestCase
{
    Q_OBJECT

private slots:
    void storesEachField_data();
    void storesEachField();
    void storeLeavesOtherBits();
    void storeDropsASeparateInputRate();
    void loadsWhatWasStored();
    void stopBitsDependOnTheSize();
    void inconsistentFindings();
    void rawCarriesEveryByte();
    void silentRefusalIsSeen_data();
    void silentRefusalIsSeen();
    void rateMayMissByTheDivider();
    void pseudoTerminalHasNeitherSizeNorParity();
};

namespace {

constexpr tcflag_t Form = CSIZE | PARENB | PARODD | CMSPAR | CSTOPB | CRTSCTS;

LineSettings plainSettings()
{
    LineSettings settings;
    settings.baudRate = 9600;
    return settings;
}

termios2 stored(const LineSettings &settings)
{
    termios2 line{};
    TermiosSettings::store(settings, line);
    return line;
}

} // namespace

void tst_TermiosSettings::storesEachField_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("parity");
    QTest::addColumn<int>("stopBits");
    QTest::addColumn<int>("flow");
    QTest::addColumn<tcflag_t>("control");
    QTest::addColumn<tcflag_t>("input");
    const tcflag_t none = 0;
    QTest::newRow("8N1") << 3 << 0 << 0 << 0 << tcflag_t(CS8) << none;
    QTest::newRow("5 bits") << 0 << 0 << 0 << 0 << tcflag_t(CS5) << none;
    QTest::newRow("6 bits") << 1 << 0 << 0 << 0 << tcflag_t(CS6) << none;
    QTest::newRow("7 bits") << 2 << 0 << 0 << 0 << tcflag_t(CS7) << none;
    QTest::newRow("odd") << 3 << 1 << 0 << 0 << tcflag_t(CS8 | PARENB | PARODD) << none;
    QTest::newRow("even") << 3 << 2 << 0 << 0 << tcflag_t(CS8 | PARENB) << none;
    QTest::newRow("mark") << 3 << 3 << 0 << 0 << tcflag_t(CS8 | PARENB | CMSPAR | PARODD) << none;
    QTest::newRow("space") << 3 << 4 << 0 << 0 << tcflag_t(CS8 | PARENB | CMSPAR) << none;
    QTest::newRow("1.5 stop bits") << 0 << 0 << 1 << 0 << tcflag_t(CS5 | CSTOPB) << none;
    QTest::newRow("2 stop bits") << 3 << 0 << 2 << 0 << tcflag_t(CS8 | CSTOPB) << none;
    QTest::newRow("hardware flow") << 3 << 0 << 0 << 1 << tcflag_t(CS8 | CRTSCTS) << none;
    QTest::newRow("software flow") << 3 << 0 << 0 << 2 << tcflag_t(CS8) << tcflag_t(IXON | IXOFF);
}

void tst_TermiosSettings::storesEachField()
{
    QFETCH(int, size);
    QFETCH(int, parity);
    QFETCH(int, stopBits);
    QFETCH(int, flow);
    QFETCH(tcflag_t, control);
    QFETCH(tcflag_t, input);
    LineSettings settings = plainSettings();
    settings.setDataBits(AbstractSerial::DataBits(size));
    settings.setParity(AbstractSerial::Parity(parity));
    settings.setStopBits(AbstractSerial::StopBits(stopBits));
    settings.setFlowControl(AbstractSerial::Flow(flow));
    // From no bit and from every bit: each is stated, none is left as it was.
    for (const tcflag_t before : {tcflag_t(0), ~tcflag_t(0)}) {
        termios2 line{};
        line.c_cflag = line.c_iflag = before;
        TermiosSettings::store(settings, line);
        QCOMPARE(line.c_cflag & Form, control);
        QCOMPARE(line.c_cflag & CBAUD, tcflag_t(BOTHER));
        QCOMPARE(line.c_ospeed, speed_t(9600));
        QCOMPARE(line.c_ispeed, speed_t(9600));
        QCOMPARE(line.c_iflag & (IXON | IXOFF), input);
    }
}

void tst_TermiosSettings::storeLeavesOtherBits()
{
    termios2 line{};
    line.c_cflag = HUPCL | CLOCAL | CREAD;
    line.c_iflag = IGNBRK;
    line.c_lflag = ECHO;
    line.c_oflag = OPOST;
    TermiosSettings::store(plainSettings(), line);
    QCOMPARE(line.c_cflag, tcflag_t(HUPCL | CLOCAL | CREAD | CS8 | BOTHER));
    QCOMPARE(line.c_iflag, tcflag_t(IGNBRK));
    QCOMPARE(line.c_lflag, tcflag_t(ECHO));
    QCOMPARE(line.c_oflag, tcflag_t(OPOST));
}

void tst_TermiosSettings::storeDropsASeparateInputRate()
{
    termios2 line{};
    line.c_cflag = tcflag_t(B300) << IBSHIFT | B9600;
    TermiosSettings::store(plainSettings(), line);
    QCOMPARE(line.c_cflag >> IBSHIFT & CBAUD, tcflag_t(0));
}

void tst_TermiosSettings::loadsWhatWasStored()
{
    for (int size = 0; size <= 3; ++size) {
        for (int parity = 0; parity <= 4; ++parity) {
            for (int flow = 0; flow <= 2; ++flow) {
                LineSettings settings = plainSettings();
                settings.setDataBits(AbstractSerial::DataBits(size));
                settings.setParity(AbstractSerial::Parity(parity));
                settings.setFlowControl(AbstractSerial::Flow(flow));
                QVERIFY(TermiosSettings::load(stored(settings)) == settings);
            }
        }
    }
}

void tst_TermiosSettings::stopBitsDependOnTheSize()
{
    termios2 line{};
    line.c_cflag = CS5;
    QCOMPARE(TermiosSettings::load(line).enumeratedStopBits(), AbstractSerial::StopBits1);
    line.c_cflag = CS5 | CSTOPB;
    QCOMPARE(TermiosSettings::load(line).enumeratedStopBits(), AbstractSerial::StopBits1_5);
    for (const tcflag_t size : {CS6, CS7, CS8}) {
        line.c_cflag = size | CSTOPB;
        QCOMPARE(TermiosSettings::load(line).enumeratedStopBits(), AbstractSerial::StopBits2);
    }
}

void tst_TermiosSettings::inconsistentFindings()
{
    termios2 line{};
    for (const tcflag_t kind : {tcflag_t(PARODD), tcflag_t(CMSPAR), tcflag_t(CMSPAR | PARODD)}) {
        line.c_cflag = CS8 | kind;
        QCOMPARE(TermiosSettings::load(line).enumeratedParity(), AbstractSerial::ParityUndefined);
    }
    line.c_cflag = CS8;
    for (const tcflag_t half : {IXON, IXOFF}) {
        line.c_iflag = half;
        QCOMPARE(TermiosSettings::load(line).enumeratedFlowControl(),
                 AbstractSerial::FlowUndefined);
    }
    line.c_cflag = CS8 | CRTSCTS;
    line.c_iflag = IXON | IXOFF;
    QCOMPARE(TermiosSettings::load(line).enumeratedFlowControl(), AbstractSerial::FlowUndefined);
}

void tst_TermiosSettings::rawCarriesEveryByte()
{
    termios2 line{};
    line.c_iflag = line.c_oflag = line.c_lflag = ~tcflag_t(0);
    line.c_cflag = CS7 | PARENB | CRTSCTS | HUPCL;
    TermiosSettings::makeRaw(line);
    QCOMPARE(line.c_iflag
                 & (IGNBRK | BRKINT | IGNPAR | PARMRK | INPCK | ISTRIP | INLCR | IGNCR | ICRNL
                    | IXON | IXANY | IXOFF),
             tcflag_t(0));
    QCOMPARE(line.c_oflag & OPOST, tcflag_t(0));
    QCOMPARE(line.c_lflag & (ECHO | ECHONL | ICANON | ISIG | IEXTEN), tcflag_t(0));
    QCOMPARE(line.c_cflag, tcflag_t(CS7 | PARENB | CRTSCTS | HUPCL | CREAD | CLOCAL));
}

void tst_TermiosSettings::silentRefusalIsSeen_data()
{
    QTest::addColumn<tcflag_t>("controlLost");
    QTest::addColumn<tcflag_t>("inputLost");
    const tcflag_t none = 0;
    QTest::newRow("size") << tcflag_t(CS6) << none;
    QTest::newRow("parity bit") << tcflag_t(PARENB) << none;
    QTest::newRow("kind of parity") << tcflag_t(PARODD) << none;
    QTest::newRow("mark and space") << tcflag_t(CMSPAR) << none;
    QTest::newRow("stop bits") << tcflag_t(CSTOPB) << none;
    QTest::newRow("hardware flow") << tcflag_t(CRTSCTS) << none;
    QTest::newRow("XON heeded") << none << tcflag_t(IXON);
    QTest::newRow("XON sent") << none << tcflag_t(IXOFF);
}

void tst_TermiosSettings::silentRefusalIsSeen()
{
    QFETCH(tcflag_t, controlLost);
    QFETCH(tcflag_t, inputLost);
    termios2 wanted{};
    wanted.c_cflag = BOTHER | CS8 | PARENB | PARODD | CMSPAR | CSTOPB | CRTSCTS;
    wanted.c_iflag = IXON | IXOFF;
    wanted.c_ospeed = wanted.c_ispeed = 9600;
    QVERIFY(TermiosSettings::isTaken(wanted, wanted, Medium::Wire));
    termios2 taken = wanted;
    taken.c_cflag &= ~controlLost;
    taken.c_iflag &= ~inputLost;
    QVERIFY(!TermiosSettings::isTaken(wanted, taken, Medium::Wire));
}

void tst_TermiosSettings::rateMayMissByTheDivider()
{
    const termios2 wanted = stored(plainSettings());
    termios2 taken = wanted;
    // Drivers answer with the constant of a rate, too.
    taken.c_cflag = (taken.c_cflag & ~tcflag_t(CBAUD)) | B9600;
    for (const speed_t rate : {9408U, 9600U, 9792U}) {
        taken.c_ospeed = rate;
        QVERIFY(TermiosSettings::isTaken(wanted, taken, Medium::Wire));
    }
    for (const speed_t rate : {0U, 9407U, 9793U, 115200U}) {
        taken.c_ospeed = rate;
        QVERIFY(!TermiosSettings::isTaken(wanted, taken, Medium::Wire));
    }
}

void tst_TermiosSettings::pseudoTerminalHasNeitherSizeNorParity()
{
    LineSettings settings = plainSettings();
    settings.setDataBits(AbstractSerial::DataBits5);
    settings.setParity(AbstractSerial::ParitySpace);
    const termios2 wanted = stored(settings);
    termios2 taken = wanted;
    taken.c_cflag = (taken.c_cflag & ~tcflag_t(CSIZE | PARENB)) | CS8;
    QVERIFY(TermiosSettings::isTaken(wanted, taken, Medium::Pseudo));
    QVERIFY(!TermiosSettings::isTaken(wanted, taken, Medium::Wire));
    taken.c_cflag ^= CSTOPB;
    QVERIFY(!TermiosSettings::isTaken(wanted, taken, Medium::Pseudo));
}

QTEST_GUILESS_MAIN(tst_TermiosSettings)
#include "tst_TermiosSettings.moc"
