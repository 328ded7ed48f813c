#include "simulator/can/CanBusServer.h"
#include "simulator/serving/ServingThread.h"
#include "support/TestCase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <memory>

#include <sys/socket.h>
#include <sys/un.h>

using namespace simulator;
using namespace Qt::StringLiterals;

namespace {

FileDescriptor connectTo(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.data(), path.size());
    FileDescriptor line(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    return ::connect(line.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
        ? std::move(line)
        : FileDescriptor();
}

/// The result of opening the channel over @p line; 0, which is no handle, if nothing came back.
int openChannel(const FileDescriptor &line)
{
    CanCall call;
    call.function = CanFunction::OpenChannel;
    CanAnswer answer;
    const bool isDone = ::send(line.get(), &call, sizeof call, MSG_NOSIGNAL) == sizeof call
        && ::recv(line.get(), &answer, sizeof answer, 0) == sizeof answer;
    return isDone ? answer.result : 0;
}

} // namespace

class tst_CanBusServer : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void servesPrograms();
    void programThatEndsLosesTheChannel();
    void wrongRecordEndsTheLine();
    void removesItsSocket();
    void takesOverALeftSocket();
    void refusesPathsThatDoNotFit();

private:
    QTemporaryDir m_directory;
    std::string m_path;
    Module m_module;
    std::unique_ptr<CanBus> m_bus;
    std::unique_ptr<CanBusServer> m_server;
    std::unique_ptr<ServingThread> m_thread;
};

void tst_CanBusServer::init()
{
    TestCase::init();
    m_path = m_directory.filePath(u"bus"_s).toStdString();
    m_bus = std::make_unique<CanBus>(m_module);
    m_server = std::make_unique<CanBusServer>(*m_bus, m_path);
    QVERIFY(m_server->isListening());
    m_thread =
        std::make_unique<ServingThread>([this](ServingLoop &loop) { m_server->attach(loop); });
}

void tst_CanBusServer::cleanup()
{
    m_thread.reset();
    m_server.reset();
    m_bus.reset();
}

void tst_CanBusServer::servesPrograms()
{
    const FileDescriptor first = connectTo(m_server->path());
    const FileDescriptor second = connectTo(m_server->path());
    QVERIFY(first.isValid() && second.isValid());
    QCOMPARE(openChannel(first), 1);
    QCOMPARE(openChannel(second), static_cast<int>(CanStatus::ChannelInUse));
}

void tst_CanBusServer::programThatEndsLosesTheChannel()
{
    FileDescriptor first = connectTo(m_server->path());
    QCOMPARE(openChannel(first), 1);
    first.reset();
    const FileDescriptor second = connectTo(m_server->path());
    int handle = 0;
    QVERIFY(QTest::qWaitFor([&] { return (handle = openChannel(second)) > 0; }));
    QCOMPARE(handle, 2);
}

void tst_CanBusServer::wrongRecordEndsTheLine()
{
    const FileDescriptor line = connectTo(m_server->path());
    QCOMPARE(::send(line.get(), "hello", 5, MSG_NOSIGNAL), ssize_t(5));
    char byte = 0;
    QCOMPARE(::recv(line.get(), &byte, 1, 0), ssize_t(0));
    QCOMPARE(openChannel(connectTo(m_server->path())), 1); // others are served on
}

void tst_CanBusServer::removesItsSocket()
{
    const QString path = QString::fromStdString(m_path);
    QVERIFY(QFile::exists(path));
    cleanup();
    QVERIFY(!QFile::exists(path));
}

void tst_CanBusServer::takesOverALeftSocket()
{
    cleanup();
    QFile left(QString::fromStdString(m_path));
    QVERIFY(left.open(QIODevice::WriteOnly));
    init();
    QCOMPARE(openChannel(connectTo(m_server->path())), 1);
}

void tst_CanBusServer::refusesPathsThatDoNotFit()
{
    CanBusServer tooLong(*m_bus, std::string(200, 'x'));
    QVERIFY(!tooLong.isListening());
    CanBusServer nowhere(*m_bus, m_directory.filePath(u"no/bus"_s).toStdString());
    QVERIFY(!nowhere.isListening());
}

QTEST_GUILESS_MAIN(tst_CanBusServer)
#include "tst_CanBusServer.moc"
