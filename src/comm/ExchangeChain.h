#pragma once

/// Exchanges that follow from the answer of an exchange. A panel that shows another value than it
/// wrote writes that one, too, from within the answer, and with a sound module such a chain ends
/// after a few links, when both agree.
///
/// They never agree on a line that is one reply behind, after a doubled or a late reply: each write
/// is answered with the value before it, and the control goes to and fro. So a chain has an end, or
/// the stack has. What is written last stays shown; the next read tells what the module holds.
///
/// Held by each exchange while it lasts. Counted over all transports, which are of one thread: one
/// link can start links on each of them.
class ExchangeChain
{
public:
    /// Far more than all controls of one parameter need to agree with a module that limits.
    static constexpr int LongestChain = 64;

    ExchangeChain()
    {
        s_links = s_depth == 0 ? 1 : s_links + 1;
        ++s_depth;
    }
    ~ExchangeChain() { --s_depth; }
    ExchangeChain(const ExchangeChain &) = delete;
    ExchangeChain &operator=(const ExchangeChain &) = delete;

    /// Whether the exchange that holds this is one too many, and so must not take place.
    bool isTooLong() const { return s_links > LongestChain; }

private:
    static inline int s_depth = 0;
    static inline int s_links = 0; ///< exchanges since the outermost one began
};
