#include "comm/ScriptedPort.h"

#include <array>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr qsizetype DatagramSize = 9;
/// While nobody has the port open the master is hung up, which poll() reports without end.
constexpr std::chrono::milliseconds HangUpPause{2};

} // namespace

ScriptedPort::ScriptedPort()
    : m_stop(::eventfd(0, EFD_CLOEXEC))
    , m_thread([this] { serve(); })
{
}

ScriptedPort::~ScriptedPort()
{
    pullOut();
}

void ScriptedPort::addAnswer(std::vector<Piece> pieces)
{
    const std::lock_guard lock(m_mutex);
    m_answers.push_back(std::move(pieces));
}

void ScriptedPort::send(const QByteArray &hex)
{
    write(hex);
}

QStringList ScriptedPort::requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

void ScriptedPort::pullOut()
{
    if (m_thread.joinable()) {
        ::eventfd_write(m_stop.get(), 1);
        m_thread.join();
    }
    m_pty.close();
}

void ScriptedPort::pullOutOnRequest()
{
    const std::lock_guard lock(m_mutex);
    m_pullOutOnRequest = true;
}

void ScriptedPort::serve()
{
    std::array<pollfd, 2> watched{{{m_pty.masterFd(), POLLIN, 0}, {m_stop.get(), POLLIN, 0}}};
    while (::poll(watched.data(), watched.size(), -1) >= 0 && watched[1].revents == 0) {
        if (watched[0].revents & POLLIN) {
            receive();
        } else if (waitForStop(HangUpPause)) {
            return;
        }
        for (Answer answer; takeRequest(answer);) {
            for (const Piece &piece : answer) {
                if (waitForStop(piece.pause)) {
                    return;
                }
                write(piece.hex);
            }
        }
        if (const std::lock_guard lock(m_mutex); m_pullOutOnRequest && !m_requests.isEmpty()) {
            m_pty.close();
            return;
        }
    }
}

bool ScriptedPort::waitForStop(std::chrono::milliseconds timeout) const
{
    pollfd stop{m_stop.get(), POLLIN, 0};
    return ::poll(&stop, 1, static_cast<int>(timeout.count())) > 0;
}

void ScriptedPort::receive()
{
    std::array<char, 256> bytes;
    const ssize_t size = ::read(m_pty.masterFd(), bytes.data(), bytes.size());
    if (size > 0) {
        const std::lock_guard lock(m_mutex);
        m_partial.append(bytes.data(), size);
    }
}

/// Notes the next datagram, if one is complete, and fetches the answer to it.
bool ScriptedPort::takeRequest(Answer &answer)
{
    const std::lock_guard lock(m_mutex);
    if (m_partial.size() < DatagramSize) {
        return false;
    }
    m_requests.append(QString::fromLatin1(m_partial.first(DatagramSize).toHex()));
    m_partial.remove(0, DatagramSize);
    answer.clear();
    if (!m_answers.empty()) {
        answer = std::move(m_answers.front());
        m_answers.pop_front();
    }
    return true;
}

void ScriptedPort::write(const QByteArray &hex) const
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    if (::write(m_pty.masterFd(), bytes.constData(), static_cast<size_t>(bytes.size()))
        != bytes.size()) {
        qWarning("ScriptedPort: the far end could not write");
    }
}
