#pragma once

#include "simulator/serial/Pty.h"
#include "simulator/serving/FileDescriptor.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

/// A serial port that really exists, a pseudo-terminal, whose far end does what it was told in
/// advance, byte by byte: right, wrong, too little and too much alike. All bytes are written as
/// hexadecimal text, blanks allowed.
class ScriptedPort
{
public:
    /// A stretch of an answer, sent after a pause.
    struct Piece
    {
        QByteArray hex;
        std::chrono::milliseconds pause{0};
    };

    ScriptedPort();
    ~ScriptedPort();
    ScriptedPort(const ScriptedPort &) = delete;
    ScriptedPort &operator=(const ScriptedPort &) = delete;

    QString portName() const { return QString::fromStdString(m_pty.portPath()); }
    /// The far end, for the line's settings; it stays this object's.
    int masterFd() const { return m_pty.masterFd(); }

    /// What goes out when the next datagram that has no answer yet has come in full. Datagrams
    /// without an answer are met by silence.
    void addAnswer(const QByteArray &hex) { addAnswer(std::vector<Piece>{{hex, {}}}); }
    void addAnswer(std::vector<Piece> pieces);
    /// Sends at once.
    void send(const QByteArray &hex);

    /// The nine-byte datagrams that came in full, each as lower-case hexadecimal text.
    QStringList requests() const;

    /// Pulls the port out: whoever has it open sees a hang-up. For good.
    void pullOut();
    /// The same when the next datagram has come in full, in place of an answer.
    void pullOutOnRequest();

private:
    using Answer = std::vector<Piece>;

    void serve();
    bool waitForStop(std::chrono::milliseconds timeout) const;
    void receive();
    bool takeRequest(Answer &answer);
    void write(const QByteArray &hex) const;

    simulator::Pty m_pty;
    simulator::FileDescriptor m_stop; ///< readable when the thread is to end

    mutable std::mutex m_mutex; // guards the next four
    QByteArray m_partial;
    QStringList m_requests;
    std::deque<Answer> m_answers;
    bool m_pullOutOnRequest = false;

    std::thread m_thread;
};
