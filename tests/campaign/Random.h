#pragma once

#include <QList>

#include <random>

/// Every choice of a campaign comes from here, so that a seed tells the whole of it.
class Random
{
public:
    explicit Random(unsigned seed)
        : m_engine(seed)
    {
    }

    /// 0 to @p bound - 1; 0 if @p bound isn't positive.
    int below(qsizetype bound)
    {
        return bound > 0 ? int(m_engine() % static_cast<unsigned>(bound)) : 0;
    }
    /// True once in @p times.
    bool oneIn(int times) { return below(times) == 0; }
    /// One of @p list, which must not be empty.
    template <typename T>
    const T &of(const QList<T> &list)
    {
        return list.at(below(list.size()));
    }
    /// Numbers as users and broken modules have them: small, huge, negative.
    int number()
    {
        constexpr int Bounds[] = {2, 10, 300, 100000, 2147483647};
        const int magnitude = below(Bounds[below(std::size(Bounds))]);
        return oneIn(3) ? -magnitude : magnitude;
    }

private:
    std::mt19937 m_engine;
};
