#include "simulator/plugged/Testbed.h"

#include "simulator/plugged/IoctlForwarder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <sys/stat.h>
#include <umockdev.h>
#include <unistd.h>

namespace simulator {

namespace {

constexpr char preloadLibrary[] = "libumockdev-preload.so.0";

std::string takeMessage(GError *error)
{
    std::string message = error ? error->message : "unknown error";
    g_clear_error(&error);
    return message;
}

} // namespace

Testbed::Testbed()
    : m_testbed(umockdev_testbed_new())
{
}

Testbed::~Testbed()
{
    g_object_unref(m_testbed);
}

std::vector<std::string> Testbed::environment() const
{
    const char *others = std::getenv("LD_PRELOAD");
    const std::string rest = others && *others ? std::string(":") + others : std::string();
    return {"UMOCKDEV_DIR=" + path(""), "LD_PRELOAD=" + std::string(preloadLibrary) + rest};
}

// The node is made here and not by umockdev (its "N:" line): umockdev never lets go of a terminal
// that it has made, so that it could neither hang up nor be plugged in a second time.
std::string Testbed::plug(const SerialDevice &device, const std::string &terminalPath)
{
    // In this order: a program may try the node at any time.
    if (!IoctlForwarder::attach(m_testbed, "/dev/" + device.node, terminalPath)) {
        return "cannot attach the terminal controls of " + device.node;
    }
    ::mkdir(path("/dev").c_str(), 0755);
    if (::symlink(terminalPath.c_str(), path("/dev/" + device.node).c_str()) < 0) {
        return "cannot make the node " + device.node + ": " + std::strerror(errno);
    }
    // This also announces the devices. Who hears of them opens the node at once.
    GError *error = nullptr;
    if (!umockdev_testbed_add_from_string(m_testbed, device.description.c_str(), &error)) {
        return takeMessage(error);
    }
    return {};
}

void Testbed::unplug(const SerialDevice &device)
{
    // Who hears of the removal looks at once what is left. umockdev can only announce devices that
    // it still has, so what is looked at goes first.
    removeLinks(device);
    for (const std::string &devicePath : device.paths) {
        umockdev_testbed_uevent(m_testbed, devicePath.c_str(), "remove");
    }
    for (const std::string &devicePath : device.paths) {
        umockdev_testbed_remove_device(m_testbed, devicePath.c_str());
    }
    IoctlForwarder::detach(m_testbed, "/dev/" + device.node);
}

std::string Testbed::path(const std::string &below) const
{
    gchar *root = umockdev_testbed_get_root_dir(m_testbed);
    std::string whole = root + below;
    g_free(root);
    return whole;
}

void Testbed::removeLinks(const SerialDevice &device)
{
    for (const std::string &link :
         {"/sys/class/tty/" + device.node, "/sys/dev/char/" + device.number, "/dev/" + device.node,
          "/dev/.node/" + device.node}) {
        ::unlink(path(link).c_str());
    }
}

} // namespace simulator
