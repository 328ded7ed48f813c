#pragma once

#include <memory>
#include <string>
#include <vector>

// umockdev's own name for its type. Its header would bring GLib along.
typedef struct _UMockdevTestbed UMockdevTestbed; // NOLINT(bugprone-reserved-identifier)

namespace simulator {

/// One thing to plug in: a serial port with all that is between it and the root hub.
struct SerialDevice
{
    std::string node; ///< name of the port, "ttyACM0"
    std::string number; ///< major and minor number of the node, "166:0"
    std::string description; ///< the devices as umockdev reads them, without a node
    std::vector<std::string> paths; ///< their paths in /sys, the port first, up to the hub
};

/// A world of devices beside the real one. It exists only for programs that run with environment()
/// added to theirs. Make one before other threads start: it sets an environment variable.
class Testbed
{
public:
    Testbed();
    ~Testbed();
    Testbed(const Testbed &) = delete;
    Testbed &operator=(const Testbed &) = delete;

    /// What the preload library needs, as "NAME=value" texts.
    std::vector<std::string> environment() const;

    /// Adds @p device with the terminal @p terminalPath behind its node, then announces it as the
    /// kernel does. @return an empty text, or in one line what went wrong.
    std::string plug(const SerialDevice &device, const std::string &terminalPath);

    /// Takes @p device away, then announces that.
    void unplug(const SerialDevice &device);

private:
    std::string path(const std::string &below) const;
    void removeLinks(const SerialDevice &device);

    UMockdevTestbed *m_testbed;
};

} // namespace simulator
