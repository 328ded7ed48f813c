// The far end of the tests of the Windows program: ports and a CAN bus that live on Linux, used by
// programs under wine. Wine takes a link to a pseudo-terminal in its folder "dosdevices" for a COM
// port; a program asks for one over a TCP port and commands it by lines. See PortSession.

#include "windows/host/Loopback.h"
#include "windows/host/PortSession.h"

#include <QFile>

#include <atomic>
#include <cstdio>
#include <thread>

#include <unistd.h>

using simulator::FileDescriptor;

namespace {

/// Numbers below are the machine's.
constexpr int FirstComPort = 20;
constexpr int ComPorts = 200;

QByteArray dosDevices;
std::atomic<int> lastComPort{0};

/// A line without its end; null if the program has gone.
QByteArray readLine(int program)
{
    QByteArray line("");
    for (char character = 0; Loopback::readAll(program, &character, 1); line.append(character)) {
        if (character == '\n') {
            return line;
        }
    }
    return {};
}

bool writeLine(int program, const QByteArray &line)
{
    const QByteArray whole = line + '\n';
    return Loopback::writeAll(program, whole.constData(), static_cast<std::size_t>(whole.size()));
}

/// A COM port that leads to the pseudo-terminal @p path while the object lives.
class ComPortLink
{
public:
    explicit ComPortLink(const QByteArray &path)
        : m_number(QByteArray::number(FirstComPort + lastComPort++ % ComPorts))
    {
        ::unlink(file().constData()); // left over from a run that was killed
        if (::symlink(path.constData(), file().constData()) < 0) {
            std::perror(file().constData());
        }
    }
    ~ComPortLink() { ::unlink(file().constData()); }
    ComPortLink(const ComPortLink &) = delete;
    ComPortLink &operator=(const ComPortLink &) = delete;

    QByteArray name() const { return "COM" + m_number; }

private:
    QByteArray file() const { return dosDevices + "/com" + m_number; }

    const QByteArray m_number;
};

/// Serves one program, which asks for an object by its first line, until it says `end`, which is
/// answered when the object is gone, or closes the connection.
void serve(const FileDescriptor &program)
{
    auto session = PortSession::create(readLine(program.get()).split(' '));
    if (!session) {
        writeLine(program.get(), "! no such object");
        return;
    }
    std::unique_ptr<ComPortLink> link;
    if (session->isPort()) {
        link = std::make_unique<ComPortLink>(session->place());
    }
    writeLine(program.get(), "= " + (link ? link->name() : session->place()));
    for (;;) {
        const QByteArray line = readLine(program.get());
        if (line.isNull() || line == "end") {
            break;
        }
        const QByteArray result = session->execute(line.split(' '));
        writeLine(program.get(), result.isNull() ? QByteArray("!") : "= " + result);
    }
    link.reset();
    session.reset();
    writeLine(program.get(), "= ");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: zdr_port_host FOLDER (dosdevices of a wine prefix)\n", stderr);
        return 2;
    }
    dosDevices = argv[1];
    const FileDescriptor listener = Loopback::listen();
    std::printf("%d\n", Loopback::portOf(listener));
    std::fflush(stdout);
    for (;;) {
        FileDescriptor program = Loopback::accept(listener);
        if (!program.isValid()) {
            return 1;
        }
        std::thread([program = std::move(program)] { serve(program); }).detach();
    }
}
