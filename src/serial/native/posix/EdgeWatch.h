#pragma once

/// Hears when characters come to a descriptor, once for each arrival, however many of them stay
/// unread. Its own descriptor becomes readable then, so that an event loop can watch that one.
///
/// A loop that watched the port itself would spin for as long as one byte is left unread.
class EdgeWatch
{
public:
    enum class Event {
        None,
        CharactersCame,
        PortLost ///< told once; nothing follows until the next watch()
    };

    EdgeWatch();
    ~EdgeWatch();
    EdgeWatch(const EdgeWatch &) = delete;
    EdgeWatch &operator=(const EdgeWatch &) = delete;

    /// The descriptor for the event loop, -1 if the kernel gave none.
    int descriptor() const { return m_epoll; }

    /// Watches @p descriptor, which stays the caller's, instead of the one before. Characters
    /// that wait there already are not told; a port that is lost already is.
    void watch(int descriptor);
    /// Ends the watching. To be called before the descriptor is closed.
    void stop();
    /// Takes what happened since the last call.
    Event take();

private:
    void arm();

    int m_epoll;
    int m_watched = -1;
};
