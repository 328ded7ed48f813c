#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QStringList>

/// One exchange about an axis parameter: a read, or a write of a value.
struct ParameterAccess
{
    int command;
    int number;
    int value;

    static constexpr ParameterAccess read(int number) { return {6, number, 0}; }
    static constexpr ParameterAccess write(int number, int value) { return {5, number, value}; }

    /// As the log of a serial line has it: "01 06 06 00 00 00 00 00 0D".
    QString onSerialLine(int address = 1) const
    {
        QByteArray bytes = headedBy(address);
        int sum = 0;
        for (const char byte : std::as_const(bytes)) {
            sum += byte;
        }
        bytes.append(static_cast<char>(sum));
        return QString::fromLatin1(bytes.toHex(' ').toUpper());
    }

    /// As the log of a bus has it: "can < 001 [8] 06 06 00 00 00 00 00 03".
    QString onBus(int sendId = 1) const
    {
        QByteArray bytes = headedBy(sendId).mid(1);
        bytes.append('\x03'); // the identifier for the reply, which nothing looks at
        const QString id = QString::number(sendId, 16).toUpper().rightJustified(3, u'0');
        return QStringLiteral("can < ") + id + QStringLiteral(" [8] ")
            + QString::fromLatin1(bytes.toHex(' ').toUpper());
    }

private:
    QByteArray headedBy(int address) const
    {
        QByteArray bytes;
        for (const int byte :
             {address, command, number, 0, value >> 24, value >> 16, value >> 8, value}) {
            bytes.append(static_cast<char>(byte));
        }
        return bytes;
    }
};

using ParameterAccesses = QList<ParameterAccess>;

inline QStringList onSerialLine(const ParameterAccesses &accesses, int address = 1)
{
    QStringList texts;
    for (const ParameterAccess &access : accesses) {
        texts.append(access.onSerialLine(address));
    }
    return texts;
}

inline QStringList onBus(const ParameterAccesses &accesses, int sendId = 1)
{
    QStringList texts;
    for (const ParameterAccess &access : accesses) {
        texts.append(access.onBus(sendId));
    }
    return texts;
}

/// What a connect asks for, panel by panel.
inline QList<int> numbersReadByAConnect()
{
    return {
        131, 5, // the jog panel for velocity
        6,   12,  13,  129, 15,  153, 154, 155, // general settings
        7,   140, 156, // open loop
        162, 163, 164, 165, 166, 167, 175, 176, // chopper
        4,   5,   130, // velocity ramp
        108, 109, // field weakening
        134, 135, 136, 137, 138, 17, // position maintenance
        113, 114, 116, 117, 118, 119, 120, 121, 122, 123, 115, // current scaler
        209, 210, 202, 112, // encoder
        124, 125, 126, // dynamic correction
    };
}

/// A connect that finds in the module what the panels show: it writes nothing.
inline ParameterAccesses laterConnect()
{
    ParameterAccesses accesses;
    for (const int number : numbersReadByAConnect()) {
        accesses.append(ParameterAccess::read(number));
    }
    return accesses;
}

/// The first connect to a module as it comes from the simulator. A value that differs from the one
/// that its control starts with is written back, by each of its controls in turn.
inline ParameterAccesses firstConnect()
{
    constexpr auto read = &ParameterAccess::read;
    constexpr auto write = &ParameterAccess::write;
    QHash<int, ParameterAccesses> echoes{
        {5, {write(5, 51200), write(5, 51200)}}, // two ramp panels
        {6, {write(6, 128), read(15)}}, // and how much that is in mA
        {12, {write(12, 1)}},
        {13, {write(13, 1)}},
        {7, {write(7, 8), read(156)}},
        {140, {write(140, 8)}},
        {162, {write(162, 2)}},
        {165, {write(165, 2)}},
        {166, {write(166, 3)}},
        {167, {write(167, 5)}},
        {175, {write(175, 3)}},
        {176, {write(176, 3)}},
        {4, {write(4, 51200), write(4, 51200)}},
        {130, {write(130, 0), write(130, 0)}}, // the controls start with 1
        {108, {write(108, 50000)}},
        {109, {write(109, 300000)}},
        {134, {write(134, 50)}},
        {135, {write(135, 100)}},
        {136, {write(136, 20)}},
        {137, {write(137, 100)}},
        {138, {write(138, 1000)}},
        {17, {write(17, 100)}},
        {113, {write(113, 25)}},
        {114, {write(114, 200)}},
        // The lower limit of the scaler pushes the upper one, which still shows 0, before that one
        // is read; so the module's 200 is gone, and the read finds 101.
        {116, {write(116, 100), write(117, 101)}},
        {118, {write(118, 4)}},
        {119, {write(119, 2)}},
        {120, {write(120, 1)}},
        {121, {write(121, 100)}},
        {115, {write(115, 0)}}, // neither button of the choice is checked at the start
        {124, {write(124, 1000), write(124, 1000)}}, // two correction panels
        {125, {write(125, 10), write(125, 10)}},
        {126, {write(126, 10000), write(126, 10000)}},
    };
    ParameterAccesses accesses;
    for (const int number : numbersReadByAConnect()) {
        accesses.append(read(number));
        accesses.append(echoes.take(number));
    }
    return accesses;
}

/// The connect to a second fresh module after firstConnect() to another: the panels show what that
/// one had, and it differs only by what firstConnect() left in it.
inline ParameterAccesses connectToSecondModule()
{
    ParameterAccesses accesses = laterConnect();
    const qsizetype upperLimit = numbersReadByAConnect().indexOf(117);
    accesses.insert(upperLimit + 1, ParameterAccess::write(117, 200));
    return accesses;
}
