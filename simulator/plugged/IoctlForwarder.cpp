#include "simulator/plugged/IoctlForwarder.h"

#include "simulator/serving/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>

#include <asm/termbits.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <umockdev.h>
#include <unistd.h>

namespace simulator {

namespace {

struct Control
{
    unsigned long request;
    std::size_t size; ///< of what the argument points to; 0: the argument is a number
};

constexpr auto forwarded = std::to_array<Control>({
    {TCGETS, sizeof(termios)},
    {TCSETS, sizeof(termios)},
    {TCSETSW, sizeof(termios)},
    {TCSETSF, sizeof(termios)},
    {TCGETS2, sizeof(termios2)},
    {TCSETS2, sizeof(termios2)},
    {TCSETSW2, sizeof(termios2)},
    {TCSETSF2, sizeof(termios2)},
    {FIONREAD, sizeof(int)},
    {TIOCOUTQ, sizeof(int)},
    {TCFLSH, 0},
    {TCSBRK, 0},
    {TCXONC, 0},
});

// Straight to the kernel: the library's functions would lead back into umockdev, whose preload
// library is part of this process, too, and which waits for this very answer.
FileDescriptor openDirectly(const std::string &path)
{
    return FileDescriptor(static_cast<int>(
        ::syscall(SYS_openat, AT_FDCWD, path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)));
}

int controlDirectly(int fd, unsigned long request, void *data)
{
    return static_cast<int>(::syscall(SYS_ioctl, fd, request, data));
}

// Called by umockdev, on a thread of its own. False lets umockdev refuse the control.
gboolean forward(UMockdevIoctlBase *, UMockdevIoctlClient *client, gpointer terminalPath)
{
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    const auto control =
        std::find_if(forwarded.begin(), forwarded.end(),
                     [request](const Control &known) { return known.request == request; });
    const FileDescriptor terminal = openDirectly(*static_cast<const std::string *>(terminalPath));
    if (control == forwarded.end() || !terminal.isValid()) {
        return FALSE;
    }

    UMockdevIoctlData *argument = umockdev_ioctl_client_get_arg(client); // the client's own
    UMockdevIoctlData *pointedTo = nullptr;
    void *data = *reinterpret_cast<void **>(argument->data);
    if (control->size > 0) {
        pointedTo = umockdev_ioctl_data_resolve(argument, 0, control->size, nullptr);
        if (!pointedTo) {
            return FALSE;
        }
        data = pointedTo->data;
    }
    const int result = controlDirectly(terminal.get(), request, data);
    umockdev_ioctl_client_complete(client, result, result < 0 ? errno : 0);
    g_clear_object(&pointedTo);
    return TRUE;
}

void deletePath(gpointer terminalPath, GClosure *)
{
    delete static_cast<std::string *>(terminalPath);
}

} // namespace

bool IoctlForwarder::attach(UMockdevTestbed *testbed, const std::string &node,
                            const std::string &terminalPath)
{
    UMockdevIoctlBase *handler = umockdev_ioctl_base_new();
    g_signal_connect_data(handler, "handle-ioctl", G_CALLBACK(forward),
                          new std::string(terminalPath), deletePath, GConnectFlags(0));
    const bool attached = umockdev_testbed_attach_ioctl(testbed, node.c_str(), handler, nullptr);
    g_object_unref(handler);
    return attached;
}

void IoctlForwarder::detach(UMockdevTestbed *testbed, const std::string &node)
{
    umockdev_testbed_detach_ioctl(testbed, node.c_str(), nullptr);
}

} // namespace simulator
