#pragma once

#include <QThread>

/// How both transports wait for a reply: at most 51 attempts, 10 ms apart, so about half a second.
namespace ReplyPolling {

constexpr int Attempts = 51;
constexpr unsigned long IntervalMsecs = 10; // in usecs, Windows would round up to 11 ms

/// Blocks the thread until @p readOne gives something that isn't null, which is returned at once,
/// or until the sleep after the last attempt, which gives null.
template <typename ReadOne>
auto firstReply(ReadOne readOne) -> decltype(readOne())
{
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        if (auto *reply = readOne()) {
            return reply;
        }
        QThread::msleep(IntervalMsecs);
    }
    return nullptr;
}

} // namespace ReplyPolling
