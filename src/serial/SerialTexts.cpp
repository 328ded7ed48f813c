#include "serial/SerialTexts.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDebugStateSaver>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct BaudRateRow
{
    int rate; // in baud
    const char *text; // null for a rate that is understood and not offered
};

struct EnumRow
{
    int value;
    const char *text;
    const char *debugText;
};

struct StatusRow
{
    AbstractSerial::Status status;
    const char *message;
};

struct LineRow
{
    AbstractSerial::LineStatusFlag line;
    const char *word;
};

// The index is the enumeration value.
constexpr std::array BaudRateRows = {
    BaudRateRow{50, nullptr},
    BaudRateRow{75, nullptr},
    BaudRateRow{110, QT_TRANSLATE_NOOP("QObject", "110 baud")},
    BaudRateRow{134, nullptr},
    BaudRateRow{150, nullptr},
    BaudRateRow{200, nullptr},
    BaudRateRow{300, QT_TRANSLATE_NOOP("QObject", "300 baud")},
    BaudRateRow{600, QT_TRANSLATE_NOOP("QObject", "600 baud")},
    BaudRateRow{1200, QT_TRANSLATE_NOOP("QObject", "1200 baud")},
    BaudRateRow{1800, nullptr},
    BaudRateRow{2400, QT_TRANSLATE_NOOP("QObject", "2400 baud")},
    BaudRateRow{4800, QT_TRANSLATE_NOOP("QObject", "4800 baud")},
    BaudRateRow{9600, QT_TRANSLATE_NOOP("QObject", "9600 baud")},
    BaudRateRow{14400, QT_TRANSLATE_NOOP("QObject", "14400 baud")},
    BaudRateRow{19200, QT_TRANSLATE_NOOP("QObject", "19200 baud")},
    BaudRateRow{38400, QT_TRANSLATE_NOOP("QObject", "38400 baud")},
    BaudRateRow{56000, QT_TRANSLATE_NOOP("QObject", "56000 baud")},
    BaudRateRow{57600, QT_TRANSLATE_NOOP("QObject", "57600 baud")},
    BaudRateRow{76800, QT_TRANSLATE_NOOP("QObject", "76800 baud")},
    BaudRateRow{115200, QT_TRANSLATE_NOOP("QObject", "115200 baud")},
    BaudRateRow{128000, QT_TRANSLATE_NOOP("QObject", "128000 baud")},
    BaudRateRow{230400, QT_TRANSLATE_NOOP("QObject", "230400 baud")},
    BaudRateRow{256000, QT_TRANSLATE_NOOP("QObject", "256000 baud")},
    BaudRateRow{460800, QT_TRANSLATE_NOOP("QObject", "460800 baud")},
    BaudRateRow{500000, QT_TRANSLATE_NOOP("QObject", "500000 baud")},
    BaudRateRow{576000, QT_TRANSLATE_NOOP("QObject", "576000 baud")},
    BaudRateRow{921600, QT_TRANSLATE_NOOP("QObject", "921600 baud")},
    BaudRateRow{1000000, QT_TRANSLATE_NOOP("QObject", "1000000 baud")},
    BaudRateRow{1152000, QT_TRANSLATE_NOOP("QObject", "1152000 baud")},
    BaudRateRow{1500000, QT_TRANSLATE_NOOP("QObject", "1500000 baud")},
    BaudRateRow{2000000, QT_TRANSLATE_NOOP("QObject", "2000000 baud")},
    BaudRateRow{2500000, QT_TRANSLATE_NOOP("QObject", "2500000 baud")},
    BaudRateRow{3000000, QT_TRANSLATE_NOOP("QObject", "3000000 baud")},
    BaudRateRow{3500000, QT_TRANSLATE_NOOP("QObject", "3500000 baud")},
    BaudRateRow{4000000, QT_TRANSLATE_NOOP("QObject", "4000000 baud")},
};

constexpr std::array DataBitsRows = {
    EnumRow{AbstractSerial::DataBitsUndefined, QT_TRANSLATE_NOOP("QObject", "Undefined data bits"),
            "Undefined"},
    EnumRow{AbstractSerial::DataBits5, QT_TRANSLATE_NOOP("QObject", "5 bit"), "5"},
    EnumRow{AbstractSerial::DataBits6, QT_TRANSLATE_NOOP("QObject", "6 bit"), "6"},
    EnumRow{AbstractSerial::DataBits7, QT_TRANSLATE_NOOP("QObject", "7 bit"), "7"},
    EnumRow{AbstractSerial::DataBits8, QT_TRANSLATE_NOOP("QObject", "8 bit"), "8"},
};

constexpr std::array ParityRows = {
    EnumRow{AbstractSerial::ParityUndefined, QT_TRANSLATE_NOOP("QObject", "Undefined parity"),
            "Undefined"},
    EnumRow{AbstractSerial::ParityNone, QT_TRANSLATE_NOOP("QObject", "None"), "None"},
    EnumRow{AbstractSerial::ParityOdd, QT_TRANSLATE_NOOP("QObject", "Odd"), "Odd"},
    EnumRow{AbstractSerial::ParityEven, QT_TRANSLATE_NOOP("QObject", "Even"), "Even"},
    EnumRow{AbstractSerial::ParityMark, QT_TRANSLATE_NOOP("QObject", "Mark"), "Mark"},
    EnumRow{AbstractSerial::ParitySpace, QT_TRANSLATE_NOOP("QObject", "Space"), "Space"},
};

constexpr std::array StopBitsRows = {
    EnumRow{AbstractSerial::StopBitsUndefined, QT_TRANSLATE_NOOP("QObject", "Undefined stop bits"),
            "Undefined"},
    EnumRow{AbstractSerial::StopBits1, QT_TRANSLATE_NOOP("QObject", "1"), "1"},
    EnumRow{AbstractSerial::StopBits1_5, QT_TRANSLATE_NOOP("QObject", "1.5"), "1.5"},
    EnumRow{AbstractSerial::StopBits2, QT_TRANSLATE_NOOP("QObject", "2"), "2"},
};

constexpr std::array FlowRows = {
    EnumRow{AbstractSerial::FlowUndefined, QT_TRANSLATE_NOOP("QObject", "Undefined flow"),
            "Undefined"},
    EnumRow{AbstractSerial::FlowDisable, QT_TRANSLATE_NOOP("QObject", "Disable"), "Disable"},
    EnumRow{AbstractSerial::FlowHardware, QT_TRANSLATE_NOOP("QObject", "Hardware"), "Hardware"},
    EnumRow{AbstractSerial::FlowXonXoff, QT_TRANSLATE_NOOP("QObject", "Xon/Xoff"), "Xon/Xoff"},
};

constexpr std::array LineRows = {
    LineRow{AbstractSerial::LineLE, "LE"},   LineRow{AbstractSerial::LineDTR, "DTR"},
    LineRow{AbstractSerial::LineRTS, "RTS"}, LineRow{AbstractSerial::LineST, "ST"},
    LineRow{AbstractSerial::LineSR, "SR"},   LineRow{AbstractSerial::LineCTS, "CTS"},
    LineRow{AbstractSerial::LineDCD, "DCD"}, LineRow{AbstractSerial::LineRI, "RI"},
    LineRow{AbstractSerial::LineDSR, "DSR"}, LineRow{AbstractSerial::LineErr, "Error"},
};

constexpr std::array StatusRows = {
    StatusRow{AbstractSerial::StatusNoError, QT_TRANSLATE_NOOP("QObject", "No errors.")},
    StatusRow{AbstractSerial::StatusOpened,
              QT_TRANSLATE_NOOP("QObject", "Opened::Device is successfully opened. OK!")},
    StatusRow{AbstractSerial::StatusClosed,
              QT_TRANSLATE_NOOP("QObject", "Closed::Device is successfully closed. OK!")},
    StatusRow{AbstractSerial::StatusBaudRateSet,
              QT_TRANSLATE_NOOP("QObject", "Controls::Baud rate is successfully set. OK!")},
    StatusRow{AbstractSerial::StatusParitySet,
              QT_TRANSLATE_NOOP("QObject", "Controls::Parity is successfully set. OK!")},
    StatusRow{AbstractSerial::StatusDataBitsSet,
              QT_TRANSLATE_NOOP("QObject", "Controls::Data bits is successfully set. OK!")},
    StatusRow{AbstractSerial::StatusStopBitsSet,
              QT_TRANSLATE_NOOP("QObject", "Controls::Stop bits is successfully set. OK!")},
    StatusRow{AbstractSerial::StatusFlowSet,
              QT_TRANSLATE_NOOP("QObject", "Controls::Flow is successfully set. OK!")},
    StatusRow{AbstractSerial::StatusCharTimeoutSet,
              QT_TRANSLATE_NOOP("QObject", "Controls::Char timeout is successfully set. OK!")},
    StatusRow{AbstractSerial::StatusDtrChanged,
              QT_TRANSLATE_NOOP("QObject", "Controls::DTR is successfully changed. OK!")},
    StatusRow{AbstractSerial::StatusRtsChanged,
              QT_TRANSLATE_NOOP("QObject", "Controls::RTS is successfully changed. OK!")},
    StatusRow{AbstractSerial::StatusLinesRead,
              QT_TRANSLATE_NOOP("QObject", "Controls::Status lines successfully get. OK!")},
    StatusRow{AbstractSerial::StatusBreakSent,
              QT_TRANSLATE_NOOP("QObject", "Controls::Send break successfully. OK!")},
    StatusRow{AbstractSerial::StatusBreakSet,
              QT_TRANSLATE_NOOP("QObject", "Controls::Set break successfully. OK!")},
    StatusRow{AbstractSerial::StatusFlushed,
              QT_TRANSLATE_NOOP("QObject", "Controls::Flush successfully. OK!")},
    StatusRow{AbstractSerial::StatusReset,
              QT_TRANSLATE_NOOP("QObject", "Controls::Reset successfully. OK!")},
    StatusRow{AbstractSerial::FailOpening, QT_TRANSLATE_NOOP("QObject", "Error opening. Error!")},
    StatusRow{AbstractSerial::FailNotOpen,
              QT_TRANSLATE_NOOP("QObject", "Device is not open. Error!")},
    StatusRow{AbstractSerial::FailModeUnsupported,
              QT_TRANSLATE_NOOP("QObject", "Opened::Opened mode unsupported. Error!")},
    StatusRow{AbstractSerial::FailModeUndefined,
              QT_TRANSLATE_NOOP("QObject", "Opened::Opened mode undefined. Error!")},
    StatusRow{AbstractSerial::FailInvalidDescriptor,
              QT_TRANSLATE_NOOP("QObject", "Opened::Invalid device descriptor. Error!")},
    StatusRow{AbstractSerial::FailSaveOldSettings,
              QT_TRANSLATE_NOOP("QObject", "Opened::Fail saved old settings. Error!")},
    StatusRow{AbstractSerial::FailGetCurrentSettings,
              QT_TRANSLATE_NOOP("QObject", "Opened::Fail get current settings. Error!")},
    StatusRow{AbstractSerial::FailSetDefaultSettings,
              QT_TRANSLATE_NOOP("QObject", "Opened::Fail set default settings. Error!")},
    StatusRow{AbstractSerial::FailAlreadyOpen,
              QT_TRANSLATE_NOOP("QObject", "Device is already open. Error!")},
    StatusRow{AbstractSerial::FailSetOldSettings,
              QT_TRANSLATE_NOOP("QObject", "Closed::Fail set old settings. Error!")},
    StatusRow{AbstractSerial::FailCloseDescriptor,
              QT_TRANSLATE_NOOP("QObject", "Closed::Fail close device descriptor. Error!")},
    StatusRow{AbstractSerial::FailClose,
              QT_TRANSLATE_NOOP("QObject", "Closed::Fail close device. Error!")},
    StatusRow{AbstractSerial::FailSetBaudRate,
              QT_TRANSLATE_NOOP("QObject", "Parameters::Set baud rate fail. Error!")},
    StatusRow{AbstractSerial::FailSetDataBits,
              QT_TRANSLATE_NOOP("QObject", "Parameters::Set data bits fail. Error!")},
    StatusRow{AbstractSerial::FailSetParity,
              QT_TRANSLATE_NOOP("QObject", "Parameters::Set parity fail. Error!")},
    StatusRow{AbstractSerial::FailSetStopBits,
              QT_TRANSLATE_NOOP("QObject", "Parameters::Set stop bits fail. Error!")},
    StatusRow{AbstractSerial::FailSetFlow,
              QT_TRANSLATE_NOOP("QObject", "Parameters::Set flow control fail. Error!")},
    StatusRow{AbstractSerial::FailSetCharInterval,
              QT_TRANSLATE_NOOP("QObject", "Parameters::Set char interval timeout. Error!")},
    StatusRow{AbstractSerial::FailSetTotalRead,
              QT_TRANSLATE_NOOP("QObject", "Parameters::Set total read interval timeout. Error!")},
    StatusRow{AbstractSerial::FailBytesAvailable,
              QT_TRANSLATE_NOOP("QObject", "Controls::Get bytes available fail. Error!")},
    StatusRow{AbstractSerial::FailSetDtr,
              QT_TRANSLATE_NOOP("QObject", "Controls::Set DTR fail. Error!")},
    StatusRow{AbstractSerial::FailSetRts,
              QT_TRANSLATE_NOOP("QObject", "Controls::Set RTS fail. Error!")},
    StatusRow{AbstractSerial::FailLineStatus,
              QT_TRANSLATE_NOOP("QObject", "Controls::Get lines status fail. Error!")},
    StatusRow{AbstractSerial::FailWaitReadIo,
              QT_TRANSLATE_NOOP("QObject",
                                "Controls::Wait for ready read from device - i/o problem. Error!")},
    StatusRow{AbstractSerial::FailWaitReadTimeout,
              QT_TRANSLATE_NOOP("QObject", "Controls::Wait for ready read timeout. Error!")},
    StatusRow{AbstractSerial::FailWaitWriteIo,
              QT_TRANSLATE_NOOP(
                  "QObject", "Controls::Wait for bytes writtten to device - i/o problem. Error!")},
    StatusRow{AbstractSerial::FailWaitWriteTimeout,
              QT_TRANSLATE_NOOP("QObject", "Controls::Wait for bytes writtten timeout. Error!")},
    StatusRow{
        AbstractSerial::FailReadIo,
        QT_TRANSLATE_NOOP("QObject", "Controls::Read data from device - i/o problem. Error!")},
    StatusRow{AbstractSerial::FailWriteIo,
              QT_TRANSLATE_NOOP("QObject", "Controls::Write data to device - i/o problem. Error!")},
    StatusRow{AbstractSerial::FailFlush,
              QT_TRANSLATE_NOOP("QObject", "Controls::Flush fail. Error!")},
    StatusRow{AbstractSerial::FailSendBreak,
              QT_TRANSLATE_NOOP("QObject", "Controls::Send break fail. Error!")},
    StatusRow{AbstractSerial::FailSetBreak,
              QT_TRANSLATE_NOOP("QObject", "Controls::Set break fail. Error!")},
    StatusRow{AbstractSerial::FailReset,
              QT_TRANSLATE_NOOP("QObject", "Controls::Reset fail. Error!")},
};

QString translated(const char *text)
{
    return QCoreApplication::translate("QObject", text);
}

template <typename Rows>
QMap<int, QString> translatedTexts(const Rows &rows)
{
    QMap<int, QString> texts;
    for (const EnumRow &row : rows) {
        texts.insert(row.value, translated(row.text));
    }
    return texts;
}

template <typename Rows>
QString debugText(const Rows &rows, int value)
{
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [value](const EnumRow &r) { return r.value == value; });
    return QLatin1String(row == rows.end() ? "Undefined" : row->debugText);
}

QDebug print(QDebug debug, const char *type, const QString &text)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << type << "(\"" << text << "\")";
    return debug;
}

} // namespace

int SerialTexts::rate(AbstractSerial::BaudRate value)
{
    const bool known = value >= 0 && static_cast<size_t>(value) < BaudRateRows.size();
    return known ? BaudRateRows.at(static_cast<size_t>(value)).rate : -1;
}

QString SerialTexts::rateText(int rate)
{
    return translated(QT_TRANSLATE_NOOP("QObject", "%1 baud")).arg(rate);
}

QMap<int, QString> SerialTexts::baudRates()
{
    QMap<int, QString> texts;
    texts.insert(AbstractSerial::BaudRateUndefined,
                 translated(QT_TRANSLATE_NOOP("QObject", "Undefined baud")));
    for (size_t value = 0; value < BaudRateRows.size(); ++value) {
        if (const char *const text = BaudRateRows.at(value).text) {
            texts.insert(static_cast<int>(value), translated(text));
        }
    }
    return texts;
}

QMap<int, QString> SerialTexts::dataBits()
{
    return translatedTexts(DataBitsRows);
}

QMap<int, QString> SerialTexts::parities()
{
    return translatedTexts(ParityRows);
}

QMap<int, QString> SerialTexts::stopBits()
{
    return translatedTexts(StopBitsRows);
}

QMap<int, QString> SerialTexts::flows()
{
    return translatedTexts(FlowRows);
}

QString SerialTexts::message(AbstractSerial::Status status)
{
    const auto row = std::find_if(StatusRows.begin(), StatusRows.end(),
                                  [status](const StatusRow &r) { return r.status == status; });
    if (row != StatusRows.end()) {
        return translated(row->message);
    }
    return translated(
               QT_TRANSLATE_NOOP("QObject",
                                 "AbstractSerial::statusToString(Status val) -> Status mode: "
                                 "%1 undefined. Error!"))
        .arg(static_cast<int>(status));
}

QDebug operator<<(QDebug debug, AbstractSerial::BaudRate value)
{
    const int rate = SerialTexts::rate(value);
    return print(debug, "BaudRate", rate < 0 ? u"Undefined"_s : QString::number(rate));
}

QDebug operator<<(QDebug debug, AbstractSerial::DataBits value)
{
    return print(debug, "DataBits", debugText(DataBitsRows, value));
}

QDebug operator<<(QDebug debug, AbstractSerial::Parity value)
{
    return print(debug, "Parity", debugText(ParityRows, value));
}

QDebug operator<<(QDebug debug, AbstractSerial::StopBits value)
{
    return print(debug, "StopBits", debugText(StopBitsRows, value));
}

QDebug operator<<(QDebug debug, AbstractSerial::Flow value)
{
    return print(debug, "Flow", debugText(FlowRows, value));
}

// Each word stands for a value that is that flag and nothing else, so a set of two lines prints no
// word at all. That is kept by design: a reader of the log sees the lines one at a time.
QDebug operator<<(QDebug debug, AbstractSerial::LineStatus value)
{
    QStringList words;
    for (const LineRow &row : LineRows) {
        if (value == AbstractSerial::LineStatus(row.line)) {
            words.append(QLatin1String(row.word));
        }
    }
    return print(debug, "LineStatus", words.join(u'|'));
}
