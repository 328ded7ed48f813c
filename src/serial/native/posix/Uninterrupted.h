#pragma once

#include <cerrno>

/// Calls @p operation, a call of the system that answers -1 on failure, again for as long as a
/// signal interrupts it, and returns its last answer.
template <typename Operation>
auto uninterrupted(Operation operation)
{
    auto result = operation();
    while (result == -1 && errno == EINTR) {
        result = operation();
    }
    return result;
}
