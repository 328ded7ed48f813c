#include "PortNode.h"

#include "Uninterrupted.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>

using namespace Qt::StringLiterals;

int PortNode::open(const QString &name, int access)
{
    const QByteArray path = QFile::encodeName(name.contains(u'/') ? name : "/dev/"_L1 + name);
    const int flags = access | O_NOCTTY | O_NONBLOCK | O_CLOEXEC;
    return uninterrupted([&] { return ::open(path.constData(), flags); });
}

bool PortNode::lock(int descriptor)
{
    if (uninterrupted([=] { return ::flock(descriptor, LOCK_EX | LOCK_NB); }) != 0) {
        return false;
    }
    // Root opens a port although it is held without sharing, so ask for that by itself. A node
    // that refuses the question is held by the lock alone.
    int exclusive = 0;
    return uninterrupted([&] { return ::ioctl(descriptor, TIOCGEXCL, &exclusive); }) != 0
        || exclusive == 0;
}
