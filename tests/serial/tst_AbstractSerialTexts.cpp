#include "FakeSerialEngine.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

struct Rate
{
    AbstractSerial::BaudRate value;
    int number;
    int rate;
    bool isListed;
};

const QList<Rate> rates = {
    {AbstractSerial::BaudRate50, 0, 50, false},
    {AbstractSerial::BaudRate75, 1, 75, false},
    {AbstractSerial::BaudRate110, 2, 110, true},
    {AbstractSerial::BaudRate134, 3, 134, false},
    {AbstractSerial::BaudRate150, 4, 150, false},
    {AbstractSerial::BaudRate200, 5, 200, false},
    {AbstractSerial::BaudRate300, 6, 300, true},
    {AbstractSerial::BaudRate600, 7, 600, true},
    {AbstractSerial::BaudRate1200, 8, 1200, true},
    {AbstractSerial::BaudRate1800, 9, 1800, false},
    {AbstractSerial::BaudRate2400, 10, 2400, true},
    {AbstractSerial::BaudRate4800, 11, 4800, true},
    {AbstractSerial::BaudRate9600, 12, 9600, true},
    {AbstractSerial::BaudRate14400, 13, 14400, true},
    {AbstractSerial::BaudRate19200, 14, 19200, true},
    {AbstractSerial::BaudRate38400, 15, 38400, true},
    {AbstractSerial::BaudRate56000, 16, 56000, true},
    {AbstractSerial::BaudRate57600, 17, 57600, true},
    {AbstractSerial::BaudRate76800, 18, 76800, true},
    {AbstractSerial::BaudRate115200, 19, 115200, true},
    {AbstractSerial::BaudRate128000, 20, 128000, true},
    {AbstractSerial::BaudRate230400, 21, 230400, true},
    {AbstractSerial::BaudRate256000, 22, 256000, true},
    {AbstractSerial::BaudRate460800, 23, 460800, true},
    {AbstractSerial::BaudRate500000, 24, 500000, true},
    {AbstractSerial::BaudRate576000, 25, 576000, true},
    {AbstractSerial::BaudRate921600, 26, 921600, true},
    {AbstractSerial::BaudRate1000000, 27, 1000000, true},
    {AbstractSerial::BaudRate1152000, 28, 1152000, true},
    {AbstractSerial::BaudRate1500000, 29, 1500000, true},
    {AbstractSerial::BaudRate2000000, 30, 2000000, true},
    {AbstractSerial::BaudRate2500000, 31, 2500000, true},
    {AbstractSerial::BaudRate3000000, 32, 3000000, true},
    {AbstractSerial::BaudRate3500000, 33, 3500000, true},
    {AbstractSerial::BaudRate4000000, 34, 4000000, true},
};

struct Message
{
    AbstractSerial::Status status;
    int number;
    const char *text;
};

const QList<Message> messages = {
    {AbstractSerial::StatusNoError, 0, "No errors."},
    {AbstractSerial::StatusOpened, 1, "Opened::Device is successfully opened. OK!"},
    {AbstractSerial::StatusClosed, 2, "Closed::Device is successfully closed. OK!"},
    {AbstractSerial::StatusBaudRateSet, 3, "Controls::Baud rate is successfully set. OK!"},
    {AbstractSerial::StatusParitySet, 4, "Controls::Parity is successfully set. OK!"},
    {AbstractSerial::StatusDataBitsSet, 5, "Controls::Data bits is successfully set. OK!"},
    {AbstractSerial::StatusStopBitsSet, 6, "Controls::Stop bits is successfully set. OK!"},
    {AbstractSerial::StatusFlowSet, 7, "Controls::Flow is successfully set. OK!"},
    {AbstractSerial::StatusCharTimeoutSet, 8, "Controls::Char timeout is successfully set. OK!"},
    {AbstractSerial::StatusDtrChanged, 9, "Controls::DTR is successfully changed. OK!"},
    {AbstractSerial::StatusRtsChanged, 10, "Controls::RTS is successfully changed. OK!"},
    {AbstractSerial::StatusLinesRead, 11, "Controls::Status lines successfully get. OK!"},
    {AbstractSerial::StatusBreakSent, 12, "Controls::Send break successfully. OK!"},
    {AbstractSerial::StatusBreakSet, 13, "Controls::Set break successfully. OK!"},
    {AbstractSerial::StatusFlushed, 14, "Controls::Flush successfully. OK!"},
    {AbstractSerial::StatusReset, 15, "Controls::Reset successfully. OK!"},
    {AbstractSerial::FailOpening, 32, "Error opening. Error!"},
    {AbstractSerial::FailNotOpen, 33, "Device is not open. Error!"},
    {AbstractSerial::FailModeUnsupported, 34, "Opened::Opened mode unsupported. Error!"},
    {AbstractSerial::FailModeUndefined, 35, "Opened::Opened mode undefined. Error!"},
    {AbstractSerial::FailInvalidDescriptor, 36, "Opened::Invalid device descriptor. Error!"},
    {AbstractSerial::FailSaveOldSettings, 37, "Opened::Fail saved old settings. Error!"},
    {AbstractSerial::FailGetCurrentSettings, 38, "Opened::Fail get current settings. Error!"},
    {AbstractSerial::FailSetDefaultSettings, 39, "Opened::Fail set default settings. Error!"},
    {AbstractSerial::FailAlreadyOpen, 40, "Device is already open. Error!"},
    {AbstractSerial::FailSetOldSettings, 41, "Closed::Fail set old settings. Error!"},
    {AbstractSerial::FailCloseDescriptor, 42, "Closed::Fail close device descriptor. Error!"},
    {AbstractSerial::FailClose, 43, "Closed::Fail close device. Error!"},
    {AbstractSerial::FailSetBaudRate, 64, "Parameters::Set baud rate fail. Error!"},
    {AbstractSerial::FailSetDataBits, 65, "Parameters::Set data bits fail. Error!"},
    {AbstractSerial::FailSetParity, 66, "Parameters::Set parity fail. Error!"},
    {AbstractSerial::FailSetStopBits, 67, "Parameters::Set stop bits fail. Error!"},
    {AbstractSerial::FailSetFlow, 68, "Parameters::Set flow control fail. Error!"},
    {AbstractSerial::FailSetCharInterval, 69, "Parameters::Set char interval timeout. Error!"},
    {AbstractSerial::FailSetTotalRead, 70, "Parameters::Set total read interval timeout. Error!"},
    {AbstractSerial::FailBytesAvailable, 96, "Controls::Get bytes available fail. Error!"},
    {AbstractSerial::FailSetDtr, 97, "Controls::Set DTR fail. Error!"},
    {AbstractSerial::FailSetRts, 98, "Controls::Set RTS fail. Error!"},
    {AbstractSerial::FailLineStatus, 99, "Controls::Get lines status fail. Error!"},
    {AbstractSerial::FailWaitReadIo, 100,
     "Controls::Wait for ready read from device - i/o problem. Error!"},
    {AbstractSerial::FailWaitReadTimeout, 101, "Controls::Wait for ready read timeout. Error!"},
    {AbstractSerial::FailWaitWriteIo, 102,
     "Controls::Wait for bytes writtten to device - i/o problem. Error!"},
    {AbstractSerial::FailWaitWriteTimeout, 103,
     "Controls::Wait for bytes writtten timeout. Error!"},
    {AbstractSerial::FailReadIo, 104, "Controls::Read data from device - i/o problem. Error!"},
    {AbstractSerial::FailWriteIo, 105, "Controls::Write data to device - i/o problem. Error!"},
    {AbstractSerial::FailFlush, 106, "Controls::Flush fail. Error!"},
    {AbstractSerial::FailSendBreak, 107, "Controls::Send break fail. Error!"},
    {AbstractSerial::FailSetBreak, 108, "Controls::Set break fail. Error!"},
    {AbstractSerial::FailReset, 109, "Controls::Reset fail. Error!"},
};

using Texts = QMap<int, QString>;

template <typename Value>
QString debugLine(Value value)
{
    QString line;
    QDebug(&line) << value;
    return line.trimmed();
}

} // namespace

// Puts every text of the context "QObject" into brackets.
class BracketTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        return QLatin1String(context) == "QObject"_L1
            ? u'[' + QString::fromLatin1(sourceText) + u']'
            : QString();
    }
};

class tst_AbstractSerialTexts : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void baudRates_data();
    void baudRates();
    void baudRateMapHoldsTheListedRates();
    void enumerationMaps();
    void listsAreTheTextsInKeyOrder();
    void listsAreSharedByAllDevices();
    void statusMessages_data();
    void statusMessages();
    void unknownStatus_data();
    void unknownStatus();
    void dataBitsDebug();
    void parityDebug();
    void stopBitsDebug();
    void flowDebug();
    void lineStatusDebug_data();
    void lineStatusDebug();
    void lineStatusOfTwoLinesHasNoWord();
    void debugLeavesTheStreamAsItWas();
    void directionFlags();
    void textsAreTranslated();
};

void tst_AbstractSerialTexts::init()
{
    TestCase::init();
    FakeSerialEngine::log().clear();
}

void tst_AbstractSerialTexts::baudRates_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("rate");
    QTest::addColumn<bool>("isListed");
    for (const Rate &row : rates) {
        QTest::addRow("%d", row.rate) << int(row.value) << row.number << row.rate << row.isListed;
    }
}

void tst_AbstractSerialTexts::baudRates()
{
    QFETCH(int, value);
    QFETCH(int, number);
    QFETCH(int, rate);
    QFETCH(bool, isListed);
    QCOMPARE(value, number);
    const auto baudRate = AbstractSerial::BaudRate(value);

    AbstractSerial device;
    QCOMPARE(device.baudRateMap().value(value, u"none"_s),
             isListed ? QString::number(rate) + u" baud"_s : u"none"_s);
    QCOMPARE(debugLine(baudRate), u"BaudRate(\"%1\")"_s.arg(rate));

    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::log().clear();
    QVERIFY(device.setBaudRate(baudRate));
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"setBaudRate(%1, 3)"_s.arg(rate)});
    QCOMPARE(device.baudRate(), QString::number(rate) + u" baud"_s);
}

void tst_AbstractSerialTexts::baudRateMapHoldsTheListedRates()
{
    const AbstractSerial device;
    const Texts texts = device.baudRateMap();
    QCOMPARE(texts.size(), 30);
    QCOMPARE(texts.value(-1), u"Undefined baud"_s);
    QCOMPARE(debugLine(AbstractSerial::BaudRateUndefined), u"BaudRate(\"Undefined\")"_s);
    QCOMPARE(debugLine(AbstractSerial::BaudRate(35)), u"BaudRate(\"Undefined\")"_s);
}

void tst_AbstractSerialTexts::enumerationMaps()
{
    const AbstractSerial device;
    QCOMPARE(device.dataBitsMap(),
             (Texts{{-1, u"Undefined data bits"_s},
                    {0, u"5 bit"_s},
                    {1, u"6 bit"_s},
                    {2, u"7 bit"_s},
                    {3, u"8 bit"_s}}));
    QCOMPARE(device.parityMap(),
             (Texts{{-1, u"Undefined parity"_s},
                    {0, u"None"_s},
                    {1, u"Odd"_s},
                    {2, u"Even"_s},
                    {3, u"Mark"_s},
                    {4, u"Space"_s}}));
    QCOMPARE(device.stopBitsMap(),
             (Texts{{-1, u"Undefined stop bits"_s}, {0, u"1"_s}, {1, u"1.5"_s}, {2, u"2"_s}}));
    QCOMPARE(
        device.flowControlMap(),
        (Texts{
            {-1, u"Undefined flow"_s}, {0, u"Disable"_s}, {1, u"Hardware"_s}, {2, u"Xon/Xoff"_s}}));
}

void tst_AbstractSerialTexts::listsAreTheTextsInKeyOrder()
{
    const AbstractSerial device;
    QStringList baudRates = {u"Undefined baud"_s};
    for (const Rate &row : rates) {
        if (row.isListed) {
            baudRates.append(QString::number(row.rate) + u" baud"_s);
        }
    }
    QCOMPARE(device.listBaudRate(), baudRates);
    QCOMPARE(
        device.listDataBits(),
        (QStringList{u"Undefined data bits"_s, u"5 bit"_s, u"6 bit"_s, u"7 bit"_s, u"8 bit"_s}));
    QCOMPARE(device.listParity(),
             (QStringList{u"Undefined parity"_s, u"None"_s, u"Odd"_s, u"Even"_s, u"Mark"_s,
                          u"Space"_s}));
    QCOMPARE(device.listStopBits(),
             (QStringList{u"Undefined stop bits"_s, u"1"_s, u"1.5"_s, u"2"_s}));
    QCOMPARE(device.listFlowControl(),
             (QStringList{u"Undefined flow"_s, u"Disable"_s, u"Hardware"_s, u"Xon/Xoff"_s}));
}

// A device without an engine has empty tables and yet the lists that another device made.
void tst_AbstractSerialTexts::listsAreSharedByAllDevices()
{
    const AbstractSerial first;
    FakeSerialEngine::setAvailable(false);
    const AbstractSerial second;
    FakeSerialEngine::setAvailable(true);
    const QList<QStringList> lists = {first.listBaudRate(), first.listDataBits(),
                                      first.listParity(), first.listStopBits(),
                                      first.listFlowControl()};
    QVERIFY(second.parityMap().isEmpty());
    QVERIFY(!lists.contains(QStringList()));
    QCOMPARE((QList<QStringList>{second.listBaudRate(), second.listDataBits(), second.listParity(),
                                 second.listStopBits(), second.listFlowControl()}),
             lists);
}

void tst_AbstractSerialTexts::statusMessages_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    for (const Message &row : messages) {
        QTest::addRow("%d", row.number)
            << int(row.status) << row.number << QString::fromLatin1(row.text);
    }
}

void tst_AbstractSerialTexts::statusMessages()
{
    QFETCH(int, status);
    QFETCH(int, number);
    QFETCH(QString, text);
    const AbstractSerial device;
    QCOMPARE(status, number);
    QCOMPARE(device.statusToString(AbstractSerial::Status(number)), text);
}

void tst_AbstractSerialTexts::unknownStatus_data()
{
    QTest::addColumn<int>("number");
    QSet<int> known;
    for (const Message &row : messages) {
        known.insert(row.number);
    }
    for (int number = -1; number <= 200; ++number) {
        if (!known.contains(number)) {
            QTest::addRow("%d", number) << number;
        }
    }
}

void tst_AbstractSerialTexts::unknownStatus()
{
    QFETCH(int, number);
    const AbstractSerial device;
    QCOMPARE(
        device.statusToString(AbstractSerial::Status(number)),
        u"AbstractSerial::statusToString(Status val) -> Status mode: %1 undefined. Error!"_s.arg(
            number));
}

void tst_AbstractSerialTexts::dataBitsDebug()
{
    QCOMPARE(debugLine(AbstractSerial::DataBitsUndefined), u"DataBits(\"Undefined\")"_s);
    QCOMPARE(debugLine(AbstractSerial::DataBits5), u"DataBits(\"5\")"_s);
    QCOMPARE(debugLine(AbstractSerial::DataBits6), u"DataBits(\"6\")"_s);
    QCOMPARE(debugLine(AbstractSerial::DataBits7), u"DataBits(\"7\")"_s);
    QCOMPARE(debugLine(AbstractSerial::DataBits8), u"DataBits(\"8\")"_s);
    QCOMPARE(debugLine(AbstractSerial::DataBits(4)), u"DataBits(\"Undefined\")"_s);
}

void tst_AbstractSerialTexts::parityDebug()
{
    QCOMPARE(debugLine(AbstractSerial::ParityUndefined), u"Parity(\"Undefined\")"_s);
    QCOMPARE(debugLine(AbstractSerial::ParityNone), u"Parity(\"None\")"_s);
    QCOMPARE(debugLine(AbstractSerial::ParityOdd), u"Parity(\"Odd\")"_s);
    QCOMPARE(debugLine(AbstractSerial::ParityEven), u"Parity(\"Even\")"_s);
    QCOMPARE(debugLine(AbstractSerial::ParityMark), u"Parity(\"Mark\")"_s);
    QCOMPARE(debugLine(AbstractSerial::ParitySpace), u"Parity(\"Space\")"_s);
}

void tst_AbstractSerialTexts::stopBitsDebug()
{
    QCOMPARE(debugLine(AbstractSerial::StopBitsUndefined), u"StopBits(\"Undefined\")"_s);
    QCOMPARE(debugLine(AbstractSerial::StopBits1), u"StopBits(\"1\")"_s);
    QCOMPARE(debugLine(AbstractSerial::StopBits1_5), u"StopBits(\"1.5\")"_s);
    QCOMPARE(debugLine(AbstractSerial::StopBits2), u"StopBits(\"2\")"_s);
}

void tst_AbstractSerialTexts::flowDebug()
{
    QCOMPARE(debugLine(AbstractSerial::FlowUndefined), u"Flow(\"Undefined\")"_s);
    QCOMPARE(debugLine(AbstractSerial::FlowDisable), u"Flow(\"Disable\")"_s);
    QCOMPARE(debugLine(AbstractSerial::FlowHardware), u"Flow(\"Hardware\")"_s);
    QCOMPARE(debugLine(AbstractSerial::FlowXonXoff), u"Flow(\"Xon/Xoff\")"_s);
}

void tst_AbstractSerialTexts::lineStatusDebug_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("word");
    QTest::newRow("LE") << int(AbstractSerial::LineLE) << 1 << u"LE"_s;
    QTest::newRow("DTR") << int(AbstractSerial::LineDTR) << 2 << u"DTR"_s;
    QTest::newRow("RTS") << int(AbstractSerial::LineRTS) << 4 << u"RTS"_s;
    QTest::newRow("ST") << int(AbstractSerial::LineST) << 8 << u"ST"_s;
    QTest::newRow("SR") << int(AbstractSerial::LineSR) << 16 << u"SR"_s;
    QTest::newRow("CTS") << int(AbstractSerial::LineCTS) << 32 << u"CTS"_s;
    QTest::newRow("DCD") << int(AbstractSerial::LineDCD) << 64 << u"DCD"_s;
    QTest::newRow("RI") << int(AbstractSerial::LineRI) << 128 << u"RI"_s;
    QTest::newRow("DSR") << int(AbstractSerial::LineDSR) << 256 << u"DSR"_s;
    QTest::newRow("Error") << int(AbstractSerial::LineErr) << 32768 << u"Error"_s;
}

void tst_AbstractSerialTexts::lineStatusDebug()
{
    QFETCH(int, flag);
    QFETCH(int, number);
    QFETCH(QString, word);
    QCOMPARE(flag, number);
    QCOMPARE(debugLine(AbstractSerial::LineStatus(AbstractSerial::LineStatusFlag(number))),
             u"LineStatus(\"%1\")"_s.arg(word));
}

void tst_AbstractSerialTexts::lineStatusOfTwoLinesHasNoWord()
{
    QCOMPARE(
        debugLine(AbstractSerial::LineStatus(AbstractSerial::LineCTS | AbstractSerial::LineDSR)),
        u"LineStatus(\"\")"_s);
    QCOMPARE(debugLine(AbstractSerial::LineStatus()), u"LineStatus(\"\")"_s);
}

void tst_AbstractSerialTexts::debugLeavesTheStreamAsItWas()
{
    const DebugLog log;
    qDebug() << AbstractSerial::DataBits8 << u"quoted"_s << AbstractSerial::BaudRate9600 << 1;
    QCOMPARE(log.lines(), QStringList{u"DataBits(\"8\") \"quoted\" BaudRate(\"9600\") 1"_s});
}

void tst_AbstractSerialTexts::directionFlags()
{
    QCOMPARE(int(AbstractSerial::InputBaud), 1);
    QCOMPARE(int(AbstractSerial::OutputBaud), 2);
    QCOMPARE(int(AbstractSerial::AllBaud), 3);
}

void tst_AbstractSerialTexts::textsAreTranslated()
{
    BracketTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const AbstractSerial device;
    QCOMPARE(device.baudRateMap().value(-1), u"[Undefined baud]"_s);
    QCOMPARE(device.baudRateMap().value(12), u"[9600 baud]"_s);
    QCOMPARE(device.dataBits(), u"[8 bit]"_s);
    QCOMPARE(device.parity(), u"[None]"_s);
    QCOMPARE(device.stopBits(), u"[1]"_s);
    QCOMPARE(device.flowControl(), u"[Disable]"_s);
    QCOMPARE(device.baudRate(), u"[12 baud]"_s);
    QCOMPARE(device.statusToString(AbstractSerial::StatusNoError), u"[No errors.]"_s);
    QCOMPARE(
        device.statusToString(AbstractSerial::Status(16)),
        u"[AbstractSerial::statusToString(Status val) -> Status mode: 16 undefined. Error!]"_s);
    QCOMPARE(debugLine(AbstractSerial::ParityEven), u"Parity(\"Even\")"_s);
}

QTEST_GUILESS_MAIN(tst_AbstractSerialTexts)
#include "tst_AbstractSerialTexts.moc"
