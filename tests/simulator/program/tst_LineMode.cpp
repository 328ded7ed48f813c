#include "simulator/SimulatorProcess.h"
#include "simulator/serial/LineSettings.h"
#include "simulator/serial/Pty.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

#include <poll.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray question = QByteArray::fromHex("0106990000000000a0");
const QByteArray answer = QByteArray::fromHex("02016406000000f05d");
const QByteArray setSpeed = QByteArray::fromHex("010504000000001e28");
const QByteArray askSpeed = QByteArray::fromHex("01060400000000000b");
const QByteArray speed = QByteArray::fromHex("02016406000000 1e8b");

} // namespace

/// The program at the end of serial lines that exist already. A line is the far end of a
/// pseudo-terminal, behind a link, so that it can be replaced as a device that is plugged in again.
class tst_LineMode : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void answers();
    void leavesTheRateAloneOrSetsIt_data();
    void leavesTheRateAloneOrSetsIt();
    void goesOnAfterAHangUp();
    void waitsForALineThatIsAway();
    void linesThatCantBeServed_data();
    void linesThatCantBeServed();

private:
    void plug();
    /// Starts the program and waits until it serves the line.
    void start(const QStringList &more = {});
    /// Whether the program answers what is typed.
    bool hears();
    QByteArray exchange(const QByteArray &request, int timeout = 10000) const;
    /// Whether the program has the terminal @p port open. It lets go of one only to look for the
    /// line anew.
    bool isHeld(const QString &port) const;
    QString path() const { return m_folder->filePath(u"line"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<simulator::Pty> m_near;
    std::unique_ptr<SimulatorProcess> m_program;
};

void tst_LineMode::init()
{
    TestCase::init();
    m_program.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    plug();
}

void tst_LineMode::plug()
{
    m_near = std::make_unique<simulator::Pty>();
    QVERIFY(m_near->isOpen());
    QFile::remove(path());
    QVERIFY(QFile::link(QString::fromStdString(m_near->portPath()), path()));
}

void tst_LineMode::start(const QStringList &more)
{
    m_program = std::make_unique<SimulatorProcess>(QStringList{u"--line"_s, path()} + more);
    QVERIFY(hears());
}

bool tst_LineMode::hears()
{
    m_program->writeLine(u"help"_s);
    QString line;
    do {
        line = m_program->readLine(); // behind the help before
    } while (!line.isNull() && !line.startsWith(u"Usage:"_s));
    return !line.isNull();
}

QByteArray tst_LineMode::exchange(const QByteArray &request, int timeout) const
{
    const int fd = m_near->masterFd();
    QByteArray bytes;
    if (::write(fd, request.constData(), static_cast<std::size_t>(request.size())) < 0) {
        return bytes;
    }
    pollfd readable{fd, POLLIN, 0};
    char buffer[64];
    while (bytes.size() < 9 && ::poll(&readable, 1, timeout) > 0) {
        const ssize_t count = ::read(fd, buffer, sizeof buffer);
        if (count <= 0) {
            break;
        }
        bytes.append(buffer, count);
    }
    return bytes;
}

bool tst_LineMode::isHeld(const QString &port) const
{
    const QDir descriptors(u"/proc/%1/fd"_s.arg(m_program->processId()));
    const QFileInfoList entries = descriptors.entryInfoList(QDir::System | QDir::Files);
    return std::any_of(entries.begin(), entries.end(), [&port](const QFileInfo &entry) {
        const QString target = entry.symLinkTarget();
        return target == port || target == port + u" (deleted)"_s; // hung up
    });
}

void tst_LineMode::answers()
{
    start({u"--address"_s, u"1"_s, u"--log"_s, u"-"_s});
    QCOMPARE(exchange(question), answer);
    QString line;
    do {
        line = m_program->readLine(); // behind the help
    } while (!line.isNull() && !line.startsWith(u"line "_s));
    QCOMPARE(line, u"line < 01 06 99 00 00 00 00 00 A0"_s);
    QCOMPARE(m_program->readLine(), u"line > 02 01 64 06 00 00 00 F0 5D"_s);
    m_program->writeLine(u"line fault silence 1"_s);
    m_program->writeLine(u"quit"_s);
    QCOMPARE(m_program->waitForEnd(), 0);
    QVERIFY(m_program->messages().isEmpty());
}

void tst_LineMode::leavesTheRateAloneOrSetsIt_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("rate");
    QTest::newRow("as it is") << QStringList() << 57600;
    QTest::newRow("a usual one") << QStringList{u"--baud"_s, u"4800"_s} << 4800;
    QTest::newRow("without a constant of its own") << QStringList{u"--baud"_s, u"14400"_s} << 14400;
}

void tst_LineMode::leavesTheRateAloneOrSetsIt()
{
    QFETCH(const QStringList, options);
    QFETCH(const int, rate);
    QVERIFY(simulator::makeByteLine(m_near->masterFd(), 57600));
    start(options);
    const auto line = simulator::readLineSettings(m_near->masterFd());
    QVERIFY(line.has_value());
    QCOMPARE(line->toText(), std::to_string(rate) + " 8N1");
    QCOMPARE(exchange(question), answer);
}

void tst_LineMode::goesOnAfterAHangUp()
{
    start();
    QCOMPARE(exchange(setSpeed), QByteArray::fromHex("02016405000000 1e8a"));
    plug(); // the one before hangs up
    // What is sent before the program has opened the line is lost, as on a wire.
    QByteArray reply;
    QTRY_VERIFY_WITH_TIMEOUT(!(reply = exchange(askSpeed, 100)).isEmpty(), 30000);
    QCOMPARE(reply, speed); // the module has kept its supply
}

void tst_LineMode::waitsForALineThatIsAway()
{
    start();
    QCOMPARE(exchange(question), answer);
    QVERIFY(QFile::remove(path()));
    const QString port = QString::fromStdString(m_near->portPath());
    QVERIFY(isHeld(port));
    m_near.reset();
    QTRY_VERIFY_WITH_TIMEOUT(!isHeld(port), 30000);
    QVERIFY(hears()); // a line that is away keeps it from nothing else
    plug();
    QByteArray reply;
    QTRY_VERIFY_WITH_TIMEOUT(!(reply = exchange(question, 100)).isEmpty(), 30000);
    QCOMPARE(reply, answer);
    QVERIFY(m_program->messages().isEmpty());
}

void tst_LineMode::linesThatCantBeServed_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("no such line") << QStringList{u"--line"_s, u"/dev/no-such-line"_s}
                                  << u"the line /dev/no-such-line: No such file"_s;
    QTest::newRow("not a line") << QStringList{u"--line"_s, u"/dev/null"_s}
                                << u"the line /dev/null: Inappropriate ioctl"_s;
    QTest::newRow("no such CAN interface")
        << QStringList{u"--can-interface"_s, u"nowhere0"_s} << u"the CAN interface nowhere0: "_s;
}

void tst_LineMode::linesThatCantBeServed()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, message);
    SimulatorProcess program(arguments);
    QCOMPARE(program.waitForEnd(), 1);
    const QString said = program.messages();
    QVERIFY2(said.startsWith(u"zdr-simulator: cannot serve "_s + message), qPrintable(said));
    QCOMPARE(said.count(u'\n'), 1);
}

QTEST_GUILESS_MAIN(tst_LineMode)
#include "tst_LineMode.moc"
