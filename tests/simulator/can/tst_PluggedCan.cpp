#include "simulator/SimulatorProcess.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The codes of speeds, as programs give them to the library.
const QString code1000 = u"-1"_s;
const QString code500 = u"-2"_s;

QStringList plugged(const QStringList &options, const QStringList &probe)
{
    return QStringList{u"--plugged"_s} + options
        + QStringList{u"--"_s, QStringLiteral(ZDR_CAN_PROBE)} + probe;
}

// Axis parameter 6 is read, and what the module answers.
const QString question = u"0606000000000003"_s;
const QString answer = u"002: 01 64 06 00 00 00 80 03"_s;
const QString nothing = u"nothing"_s;

} // namespace

class tst_PluggedCan : public TestCase
{
    Q_OBJECT

private slots:
    void exchange();
    void addressAndBitRate();
    void anyBitRate();
    void wrongBitRate();
    void limits();
    void searchPathIsKept_data();
    void searchPathIsKept();
    void without();
    void faults_data();
    void faults();
    void pullOut();
    void pullOutAndPlugAtOnce();
    void wrongLines();
    void leavesNothingBehind();
    void socketPathTooLong();
};

void tst_PluggedCan::exchange()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"log"_s);
    SimulatorProcess program(plugged(
        {u"--log"_s, path}, {u"exchange"_s, code1000, u"1"_s, question, u"0604000000000003"_s}));
    QCOMPARE(program.readLine(), answer);
    QCOMPARE(program.readLine(), u"002: 01 64 06 00 00 c8 00 03"_s);
    QCOMPARE(program.waitForEnd(), 0);
    QCOMPARE(program.messages(), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(),
             QByteArray("can < 001 [8] 06 06 00 00 00 00 00 03\n"
                        "can > 002 [8] 01 64 06 00 00 00 80 03\n"
                        "can < 001 [8] 06 04 00 00 00 00 00 03\n"
                        "can > 002 [8] 01 64 06 00 00 C8 00 03\n"));
}

void tst_PluggedCan::addressAndBitRate()
{
    const QStringList options{u"--can-address"_s,   u"200"_s, u"--can-bitrate"_s, u"500"_s,
                              u"--reply-address"_s, u"9"_s};
    SimulatorProcess program(plugged(options, {u"exchange"_s, code500, u"200"_s, question}));
    QCOMPARE(program.readLine(), u"009: c8 64 06 00 00 00 80 03"_s);
    QCOMPARE(program.waitForEnd(), 0);

    // The address of the module on USB is another one.
    SimulatorProcess other(plugged(options + QStringList{u"--address"_s, u"7"_s},
                                   {u"exchange"_s, code500, u"7"_s, question}));
    QCOMPARE(other.readLine(), nothing);
    QCOMPARE(other.waitForEnd(), 0);
}

void tst_PluggedCan::anyBitRate()
{
    for (const QString &code : {code1000, code500, u"-9"_s}) {
        SimulatorProcess program(
            plugged({u"--can-bitrate"_s, u"0"_s}, {u"exchange"_s, code, u"1"_s, question}));
        QCOMPARE(program.readLine(), answer);
        QCOMPARE(program.waitForEnd(), 0);
    }
}

void tst_PluggedCan::wrongBitRate()
{
    SimulatorProcess program(
        plugged({u"--log"_s, u"-"_s}, {u"exchange"_s, code500, u"1"_s, question}));
    QCOMPARE(program.readLine(), u"can ? 001 [8] 06 06 00 00 00 00 00 03"_s);
    QCOMPARE(program.readLine(), nothing);
    QCOMPARE(program.waitForEnd(), 0);
    QCOMPARE(program.output(), QString());
}

void tst_PluggedCan::limits()
{
    const QStringList tooMuch{u"exchange"_s, code1000, u"1"_s, u"050600000000c803"_s,
                              u"050600000001f403"_s};
    SimulatorProcess refusing(plugged({u"--limits"_s, u"refuse"_s}, tooMuch));
    QCOMPARE(refusing.readLine(), u"002: 01 64 05 00 00 00 c8 03"_s);
    QCOMPARE(refusing.readLine(), u"002: 01 04 05 00 00 00 c8 03"_s);
    SimulatorProcess clamping(plugged({u"--limits"_s, u"clamp"_s}, tooMuch));
    QCOMPARE(clamping.readLine(), u"002: 01 64 05 00 00 00 c8 03"_s);
    QCOMPARE(clamping.readLine(), u"002: 01 64 05 00 00 00 ff 03"_s);
}

void tst_PluggedCan::searchPathIsKept_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("none") << QByteArray() << u""_s;
    QTest::newRow("some") << QByteArray("/no/such/folder:/nor/this")
                          << u":/no/such/folder:/nor/this"_s;
}

void tst_PluggedCan::searchPathIsKept()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, after);
    const QByteArray own = qgetenv("LD_LIBRARY_PATH");
    QVERIFY(qputenv("LD_LIBRARY_PATH", before));
    SimulatorProcess program({u"--plugged"_s, u"sh"_s, u"-c"_s, u"echo \"$LD_LIBRARY_PATH\""_s});
    own.isNull() ? qunsetenv("LD_LIBRARY_PATH") : qputenv("LD_LIBRARY_PATH", own);
    const QString path = program.readLine();
    QCOMPARE(program.waitForEnd(), 0);
    QVERIFY2(path.endsWith(after), qPrintable(path));
    const QString first = path.chopped(after.size());
    QVERIFY2(QDir(first).exists(u"libcanlib.so.1"_s), qPrintable(path));
}

void tst_PluggedCan::without()
{
    // The probe waits for the interface.
    SimulatorProcess program(
        plugged({u"--without"_s, u"can"_s}, {u"exchange"_s, code1000, u"1"_s, question}));
    program.writeLine(u"unplug can"_s);
    QTRY_COMPARE_WITH_TIMEOUT(program.messages(),
                              u"zdr-simulator: the CAN interface is not plugged in\n"_s, 30000);
    QVERIFY(program.isRunning());
    program.writeLine(u"plug can"_s);
    QCOMPARE(program.readLine(), answer);
    QCOMPARE(program.waitForEnd(), 0);
}

void tst_PluggedCan::faults_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("replies");
    const QString foreign = u"123: a5 a5 a5 a5 a5 a5 a5 a5"_s;
    const QString status = u"002: 01 05 06 00 00 00 80 03"_s;
    QTest::newRow("all ports") << u"fault status 5 1"_s << QStringList{status, answer};
    QTest::newRow("can alone") << u"can fault silence 1"_s << QStringList{nothing, answer};
    QTest::newRow("another port") << u"usb fault silence"_s << QStringList{answer, answer};
    QTest::newRow("foreign") << u"canfault foreign 291 1"_s << QStringList{foreign, answer};
    QTest::newRow("module-id") << u"canfault module-id 9 1"_s
                               << QStringList{u"002: 09 64 06 00 00 00 80 03"_s, answer};
    QTest::newRow("on-refused") << u"canfault on-refused"_s
                                << QStringList{u"not written"_s, u"not written"_s};
}

void tst_PluggedCan::faults()
{
    QFETCH(QString, line);
    QFETCH(QStringList, replies);
    SimulatorProcess program(
        plugged({u"--without"_s, u"can"_s}, {u"exchange"_s, code1000, u"1"_s, question, question}));
    program.writeLine(line); // before there is an interface, so that it holds for the exchanges
    program.writeLine(u"plug can"_s);
    QCOMPARE(QStringList({program.readLine(), program.readLine()}), replies);
    program.waitForEnd();
    QCOMPARE(program.messages(), QString());
}

void tst_PluggedCan::pullOut()
{
    SimulatorProcess program(plugged({}, {u"hold"_s, code1000}));
    QCOMPARE(program.readLine(), u"ready"_s);
    program.writeLine(u"unplug can"_s);
    QCOMPARE(program.readLine(), u"gone"_s);
    program.writeLine(u"plug can"_s);
    QCOMPARE(program.readLine(), u"back"_s);
    QCOMPARE(program.waitForEnd(), 0);
    QCOMPARE(program.messages(), QString());
}

void tst_PluggedCan::pullOutAndPlugAtOnce()
{
    // What was open is over, although the interface is back before anybody looks.
    SimulatorProcess program(plugged({}, {u"hold"_s, code1000}));
    QCOMPARE(program.readLine(), u"ready"_s);
    program.writeLine(u"unplug can\nplug can"_s);
    QCOMPARE(program.readLine(), u"gone"_s);
    QCOMPARE(program.readLine(), u"back"_s);
    QCOMPARE(program.waitForEnd(), 0);
}

void tst_PluggedCan::wrongLines()
{
    SimulatorProcess program(plugged({}, {u"hold"_s, code1000}));
    QCOMPARE(program.readLine(), u"ready"_s);
    program.writeLine(u"plug can"_s);
    program.writeLine(u"canfault noise"_s);
    program.writeLine(u"can canfault no-channel"_s);
    program.writeLine(u"quit"_s);
    QCOMPARE(program.waitForEnd(), 128 + 15);
    QCOMPARE(program.messages(),
             u"zdr-simulator: the CAN interface is plugged in already\n"
             "zdr-simulator: unknown CAN fault: noise\n"
             "zdr-simulator: a fault line starts with the word fault\n"_s);
}

void tst_PluggedCan::leavesNothingBehind()
{
    const QTemporaryDir folder;
    QVERIFY(qputenv("TMPDIR", folder.path().toLocal8Bit()));
    {
        SimulatorProcess program(plugged({}, {u"hold"_s, code1000}));
        QCOMPARE(program.readLine(), u"ready"_s);
        const QDir own(folder.path());
        const QStringList folders = own.entryList({u"zdr-simulator-*"_s}, QDir::Dirs);
        QCOMPARE(folders.size(), 1);
        QCOMPARE(QFile::permissions(own.filePath(folders.first()))
                     & (QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
                        | QFile::WriteOther | QFile::ExeOther),
                 QFile::Permissions());
        program.terminate();
        QCOMPARE(program.waitForEnd(), 128 + 15);
    }
    qunsetenv("TMPDIR");
    QVERIFY(QDir(folder.path()).isEmpty());
}

void tst_PluggedCan::socketPathTooLong()
{
    const QTemporaryDir folder;
    const QString longPath = folder.filePath(QString(100, u'x'));
    QVERIFY(QDir().mkdir(longPath));
    QVERIFY(qputenv("TMPDIR", longPath.toLocal8Bit()));
    // umockdev has sockets of its own for each port.
    SimulatorProcess program(
        {u"--plugged"_s, u"--without"_s, u"usb"_s, u"--without"_s, u"rs485"_s, u"true"_s});
    qunsetenv("TMPDIR");
    QCOMPARE(program.waitForEnd(), 1);
    QVERIFY(program.messages().startsWith(u"zdr-simulator: cannot listen at the socket "_s));
    QCOMPARE(program.messages().count(u'\n'), 1);
    QVERIFY(QDir(longPath).isEmpty());
}

QTEST_GUILESS_MAIN(tst_PluggedCan)
#include "tst_PluggedCan.moc"
