#pragma once

#include <cstdlib>

/// Ends the fuzzer if @p condition doesn't hold; the input is kept by libFuzzer.
inline void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}
