#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace simulator {
struct Identity;
}

/// An object of the tests' far end, which lives in another program on the other system, while this
/// one lives. The environment variable ZDR_PORT_HOST has the number of that program's TCP port.
/// A far end that can't be reached ends the test.
class RemoteObject
{
public:
    /// Asks for an object, "scripted".
    explicit RemoteObject(const QByteArray &kind);
    ~RemoteObject();
    RemoteObject(const RemoteObject &) = delete;
    RemoteObject &operator=(const RemoteObject &) = delete;

    /// Where the object is: "COM20", or the number of a TCP port.
    QByteArray place() const { return m_place; }

    /// Has @p command carried out and answers its result; nothing if it failed.
    std::optional<QByteArray> execute(const QByteArray &command) const;
    /// The same for a command whose result is a list of lines.
    QStringList lines(const QByteArray &command) const;

    /// What the kinds with a module behind them are asked for by: "simulated 1 2 37373130 1 5 0".
    static QByteArray moduleKind(const char *kind, const simulator::Identity &identity, int speed);

private:
    std::optional<QByteArray> exchange(const QByteArray &line) const;

    std::uintptr_t m_socket;
    QByteArray m_place;
};

/// The module behind a RemoteObject, as far as tests look into it.
class RemoteModule
{
public:
    explicit RemoteModule(const RemoteObject &object)
        : m_object(object)
    {
    }

    std::optional<std::int32_t> axisParameter(std::uint8_t number) const;
    bool setAxisParameter(std::uint8_t number, std::int32_t value) const;
    bool setGlobalParameter(std::uint8_t bank, std::uint8_t number, std::int32_t value) const;
    bool setIoValue(std::uint8_t bank, std::uint8_t port, std::int32_t value) const;

private:
    bool set(const char *command, std::initializer_list<std::int32_t> numbers) const;

    const RemoteObject &m_object;
};
