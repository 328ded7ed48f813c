#pragma once

#include "support/RemoteObject.h"

#include <chrono>
#include <vector>

/// A COM port whose far end, on the other system, does what it was told in advance. The same class
/// as there, for the same tests.
class ScriptedPort
{
public:
    struct Piece
    {
        QByteArray hex;
        std::chrono::milliseconds pause{0};
    };

    ScriptedPort()
        : m_object("scripted")
    {
    }

    QString portName() const { return QString::fromLatin1(m_object.place()); }

    void addAnswer(const QByteArray &hex) { addAnswer(std::vector<Piece>{{hex, {}}}); }
    void addAnswer(const std::vector<Piece> &pieces)
    {
        QByteArray command = "answer";
        for (const Piece &piece : pieces) {
            command += ' ' + QByteArray::number(piece.pause.count()) + ' ' + compact(piece.hex);
        }
        m_object.execute(command);
    }
    void send(const QByteArray &hex) { m_object.execute("send " + compact(hex)); }

    QStringList requests() const { return m_object.lines("requests"); }

    void pullOut() { m_object.execute("pull-out"); }
    void pullOutOnRequest() { m_object.execute("pull-out-on-request"); }

private:
    static QByteArray compact(const QByteArray &hex) { return QByteArray::fromHex(hex).toHex(); }

    RemoteObject m_object;
};
