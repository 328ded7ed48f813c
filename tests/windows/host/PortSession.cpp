#include "windows/host/PortSession.h"

#include "comm/ScriptedPort.h"
#include "serial/PtyPair.h"
#include "support/SimulatedCanBus.h"
#include "support/SimulatedPort.h"
#include "windows/host/CanRelay.h"

#include <QStringList>

namespace {

constexpr auto Done = "";

QByteArray done(bool success)
{
    return success ? QByteArray(Done) : QByteArray();
}

/// An empty list differs from one with an empty text by nothing, which no log contains.
QByteArray joined(const QStringList &lines)
{
    return done(true) + lines.join(u'\t').toUtf8();
}

QString text(const QByteArrayList &words)
{
    return QString::fromUtf8(words.mid(1).join(' '));
}

std::uint8_t byte(const QByteArray &word)
{
    return static_cast<std::uint8_t>(word.toUInt());
}

simulator::Identity identityOf(const QByteArrayList &words)
{
    return {byte(words.value(1)), byte(words.value(2)),
            QByteArray::fromHex(words.value(3)).toStdString(), byte(words.value(4)),
            byte(words.value(5))};
}

/// `get-axis N`, `set-axis N V`, `set-global BANK N V`, `set-io BANK PORT V`
QByteArray executeOn(simulator::Module &module, const QByteArrayList &words)
{
    const QByteArray &command = words.constFirst();
    const QByteArray last = words.constLast();
    if (command == "get-axis") {
        const auto value = module.axisParameter(byte(last));
        return value ? QByteArray::number(*value) : QByteArray();
    }
    if (command == "set-axis") {
        return done(module.setAxisParameter(byte(words.value(1)), last.toInt()));
    }
    if (command == "set-global") {
        return done(
            module.setGlobalParameter(byte(words.value(1)), byte(words.value(2)), last.toInt()));
    }
    if (command == "set-io") {
        return done(module.setIoValue(byte(words.value(1)), byte(words.value(2)), last.toInt()));
    }
    return {};
}

/// `send HEX`, `received`, `line`, `leave-line RATE`, `pull-out`
class PlainSession : public PortSession
{
public:
    QByteArray place() const override { return m_port.portName().toLatin1(); }

    QByteArray execute(const QByteArrayList &words) override
    {
        const QByteArray &command = words.constFirst();
        if (command == "send") {
            return done(m_port.send(QByteArray::fromHex(words.value(1))));
        }
        if (command == "received") {
            return done(true) + m_port.received().toHex();
        }
        if (command == "line") {
            return line();
        }
        if (command == "leave-line") {
            // Two rates by their numbers, by which wine knows them, the others as they are.
            const unsigned rate = words.value(1).toUInt();
            termios2 settings = m_port.line();
            settings.c_cflag &= ~tcflag_t(CBAUD);
            settings.c_cflag |= rate == 9600 ? B9600 : rate == 19200 ? B19200 : BOTHER;
            settings.c_ispeed = settings.c_ospeed = rate;
            m_port.setLine(settings);
            return Done;
        }
        if (command == "pull-out") {
            m_port.close();
            return Done;
        }
        return {};
    }

private:
    /// Rate, stop bits, flow control. The kernel keeps a pseudo-terminal at 8 bits without parity.
    QByteArray line() const
    {
        const termios2 settings = m_port.line();
        const bool hardware = settings.c_cflag & CRTSCTS;
        const bool software = (settings.c_iflag & (IXON | IXOFF)) == (IXON | IXOFF);
        return QByteArray::number(settings.c_ospeed) + (settings.c_cflag & CSTOPB ? " 2" : " 1")
            + (hardware       ? " hardware"
                   : software ? " software"
                              : " none");
    }

    PtyPair m_port;
};

/// `answer MSECS HEX [MSECS HEX]...`, `send HEX`, `requests`, `pull-out`, `pull-out-on-request`
class ScriptedSession : public PortSession
{
public:
    QByteArray place() const override { return m_port.portName().toLatin1(); }

    QByteArray execute(const QByteArrayList &words) override
    {
        const QByteArray &command = words.constFirst();
        if (command == "requests") {
            return joined(m_port.requests());
        }
        if (command == "answer") {
            addAnswer(words);
        } else if (command == "send") {
            m_port.send(words.value(1));
        } else if (command == "pull-out") {
            m_port.pullOut();
        } else if (command == "pull-out-on-request") {
            m_port.pullOutOnRequest();
        } else {
            return {};
        }
        return Done;
    }

private:
    void addAnswer(const QByteArrayList &words)
    {
        std::vector<ScriptedPort::Piece> pieces;
        for (qsizetype i = 1; i + 1 < words.size(); i += 2) {
            pieces.push_back({words.at(i + 1), std::chrono::milliseconds(words.at(i).toInt())});
        }
        m_port.addAnswer(std::move(pieces));
    }

    ScriptedPort m_port;
};

/// `fault ...`, `wire-log`, `requests`, `clear`, `pull-out`, and those of the module
class SimulatedSession : public PortSession
{
public:
    explicit SimulatedSession(const QByteArrayList &words)
        : m_port(identityOf(words), words.value(6).toInt())
    {
    }

    QByteArray place() const override { return m_port.portName().toLatin1(); }

    QByteArray execute(const QByteArrayList &words) override
    {
        const QByteArray &command = words.constFirst();
        if (command == "fault") {
            return done(m_port.fault(text(words)));
        }
        if (command == "wire-log") {
            return joined(m_port.wireLog());
        }
        if (command == "requests") {
            return joined(m_port.requests());
        }
        if (command == "clear") {
            m_port.clearWireLog();
            return Done;
        }
        if (command == "pull-out") {
            m_port.pullOut();
            return Done;
        }
        return executeOn(m_port.module(), words);
    }

private:
    SimulatedPort m_port;
};

/// `fault ...`, `canfault ...`, `frames`, `calls`, `clear`, `pull-out`, and those of the module
class CanSession : public PortSession
{
public:
    explicit CanSession(const QByteArrayList &words)
        : m_bus(identityOf(words), words.value(6).toInt())
        , m_relay(qgetenv(simulator::canBusVariable))
    {
    }

    QByteArray place() const override { return QByteArray::number(m_relay.port()); }
    bool isPort() const override { return false; }

    QByteArray execute(const QByteArrayList &words) override
    {
        const QByteArray &command = words.constFirst();
        if (command == "fault") {
            return done(m_bus.fault(text(words)));
        }
        if (command == "canfault") {
            return done(m_bus.canFault(text(words)));
        }
        if (command == "frames") {
            return joined(m_bus.frames());
        }
        if (command == "calls") {
            return joined(m_bus.calls());
        }
        if (command == "clear") {
            m_bus.clear();
            return Done;
        }
        if (command == "pull-out") {
            m_bus.pullOut();
            return Done;
        }
        return executeOn(m_bus.module(), words);
    }

private:
    SimulatedCanBus m_bus;
    CanRelay m_relay; // before the bus, whose socket it uses
};

} // namespace

std::unique_ptr<PortSession> PortSession::create(const QByteArrayList &words)
{
    const QByteArray kind = words.value(0);
    if (kind == "plain") {
        return std::make_unique<PlainSession>();
    }
    if (kind == "scripted") {
        return std::make_unique<ScriptedSession>();
    }
    if (kind == "simulated") {
        return std::make_unique<SimulatedSession>(words);
    }
    if (kind == "can") {
        return std::make_unique<CanSession>(words);
    }
    return nullptr;
}
