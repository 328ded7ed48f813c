#include "support/RemoteObject.h"

#include "simulator/protocol/Module.h"

#include <winsock2.h>
#include <ws2tcpip.h>

namespace {

SOCKET connectToHost()
{
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<u_short>(qEnvironmentVariableIntValue("ZDR_PORT_HOST")));
    const SOCKET socket = ::socket(AF_INET, SOCK_STREAM, 0);
    if (::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        qFatal("RemoteObject: nothing answers at the port of ZDR_PORT_HOST");
    }
    const int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char *>(&on), sizeof on);
    return socket;
}

} // namespace

RemoteObject::RemoteObject(const QByteArray &kind)
    : m_socket(connectToHost())
{
    const auto place = exchange(kind);
    if (!place) {
        qFatal("RemoteObject: there is no object \"%s\"", kind.constData());
    }
    m_place = *place;
}

RemoteObject::~RemoteObject()
{
    exchange("end"); // the next object must not meet this one
    ::closesocket(m_socket);
    WSACleanup();
}

std::optional<QByteArray> RemoteObject::execute(const QByteArray &command) const
{
    return exchange(command);
}

QStringList RemoteObject::lines(const QByteArray &command) const
{
    const QString all = QString::fromUtf8(exchange(command).value_or(QByteArray()));
    return all.isEmpty() ? QStringList() : all.split(u'\t');
}

QByteArray RemoteObject::moduleKind(const char *kind, const simulator::Identity &identity,
                                    int speed)
{
    const QByteArrayList words{kind,
                               QByteArray::number(identity.address),
                               QByteArray::number(identity.replyAddress),
                               QByteArray::fromStdString(identity.versionText).toHex(),
                               QByteArray::number(identity.majorVersion),
                               QByteArray::number(identity.minorVersion),
                               QByteArray::number(speed)};
    return words.join(' ');
}

std::optional<QByteArray> RemoteObject::exchange(const QByteArray &line) const
{
    const QByteArray question = line + '\n';
    if (::send(m_socket, question.constData(), static_cast<int>(question.size()), 0)
        != question.size()) {
        qFatal("RemoteObject: the far end has gone");
    }
    QByteArray answer;
    for (char character = 0; character != '\n'; answer.append(character)) {
        if (::recv(m_socket, &character, 1, 0) != 1) {
            qFatal("RemoteObject: the far end has gone");
        }
    }
    if (!answer.startsWith('=')) {
        return std::nullopt;
    }
    return answer.mid(2).chopped(1); // "= " in front of the result, the end of the line behind it
}

std::optional<std::int32_t> RemoteModule::axisParameter(std::uint8_t number) const
{
    const auto value = m_object.execute("get-axis " + QByteArray::number(number));
    return value ? std::optional(value->toInt()) : std::nullopt;
}

bool RemoteModule::setAxisParameter(std::uint8_t number, std::int32_t value) const
{
    return set("set-axis", {number, value});
}

bool RemoteModule::setGlobalParameter(std::uint8_t bank, std::uint8_t number,
                                      std::int32_t value) const
{
    return set("set-global", {bank, number, value});
}

bool RemoteModule::setIoValue(std::uint8_t bank, std::uint8_t port, std::int32_t value) const
{
    return set("set-io", {bank, port, value});
}

bool RemoteModule::set(const char *command, std::initializer_list<std::int32_t> numbers) const
{
    QByteArray line(command);
    for (const std::int32_t number : numbers) {
        line += ' ' + QByteArray::number(number);
    }
    return m_object.execute(line).has_value();
}
