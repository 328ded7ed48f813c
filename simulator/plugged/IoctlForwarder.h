#pragma once

#include <string>

// umockdev's own name for its type. Its header would bring GLib along.
typedef struct _UMockdevTestbed UMockdevTestbed; // NOLINT(bugprone-reserved-identifier)

namespace simulator {

/// Lets the terminal controls (ioctl) of a program in a testbed reach the terminal behind an
/// emulated node: umockdev would refuse them all, and the line's speed would never be set.
///
/// Forwarded are settings, counts of waiting bytes, flush, drain and flow. Refused as not there
/// (ENOTTY) stay the modem lines and breaks, which a pseudo-terminal hasn't either, and the
/// exclusive mode, which would lock this very forwarder out.
class IoctlForwarder
{
public:
    /// Forwards those of @p node to the terminal @p terminalPath. False on failure.
    static bool attach(UMockdevTestbed *testbed, const std::string &node,
                       const std::string &terminalPath);
    /// Ends that. Harmless, if nothing is attached.
    static void detach(UMockdevTestbed *testbed, const std::string &node);
};

} // namespace simulator
