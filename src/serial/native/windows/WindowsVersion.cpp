#include "WindowsVersion.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

struct Version
{
    std::pair<int, int> system; ///< major and minor
    int number;
};

/// Ascending.
constexpr Version Versions[] = {
    {{4, 0}, 16}, {{5, 0}, 32}, {{5, 1}, 48}, {{5, 2}, 64}, {{6, 0}, 128}, {{6, 1}, 144},
};

} // namespace

int windowsVersionNumber(int major, int minor)
{
    const auto later = std::upper_bound(
        std::begin(Versions), std::end(Versions), std::pair(major, minor),
        [](const auto &system, const Version &version) { return system < version.system; });
    return later == std::begin(Versions) ? 0 : std::prev(later)->number;
}
