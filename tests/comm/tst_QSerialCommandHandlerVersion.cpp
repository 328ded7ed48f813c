#include "comm/Answers.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/ScriptedPort.h"
#include "comm/SignalLog.h"
#include "support/DebugLog.h"
#include "support/SimulatedPort.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What a module says of its version.
class tst_QSerialCommandHandlerVersion : public TestCase
{
    Q_OBJECT

private slots:
    void versionText();
    void firmwareVersion_data();
    void firmwareVersion();
    void numberWithoutText();
    void ofASimulatedModule();
};

void tst_QSerialCommandHandlerVersion::versionText()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer("02" + "7710V105"_ba.toHex());
    QCOMPARE(handler.versionText(char(200)), u"7710V105"_s);
    QCOMPARE(port.requests(), {u"c88800000000000050"_s});

    port.addAnswer("02 41 00 42 00 00 00 ff 00");
    const QString text = handler.versionText(1);
    QCOMPARE(text, QString(u"A\0B\0\0\0\u00ff\0"_s));
    QCOMPARE(text.size(), 8);
}

void tst_QSerialCommandHandlerVersion::firmwareVersion_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("version");

    QTest::newRow("minor below 10") << "00000105"_ba
                                    << "7710V105"_ba << u"V 1.05"_s;
    QTest::newRow("minor 9") << "00000109"_ba
                             << "7710V109"_ba << u"V 1.09"_s;
    QTest::newRow("minor 10") << "0000010a"_ba
                              << "7710V110"_ba << u"V 1.10"_s;
    QTest::newRow("boot loader") << "00000105"_ba
                                 << "7710B105"_ba << u"Bootloader V 1.05"_s;
    QTest::newRow("small b") << "00000105"_ba
                             << "7710b105"_ba << u"Bootloader V 1.05"_s;
    QTest::newRow("upper half is ignored") << "7fff0c22"_ba
                                           << "7710V105"_ba << u"V 12.34"_s;
    QTest::newRow("signed numbers") << "0000fffe"_ba
                                    << "7710V105"_ba << u"V -1.0-2"_s;
}

void tst_QSerialCommandHandlerVersion::firmwareVersion()
{
    QFETCH(QByteArray, number);
    QFETCH(QByteArray, text);
    ScriptedPort port;
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer("02016488" + number + "ab");
    port.addAnswer("02" + text.toHex());
    const DebugLog log;
    QTEST(handler.firmwareVersion(1), "version");
    QCOMPARE(port.requests(), QStringList({u"01880100000000008a"_s, u"018800000000000089"_s}));
    const QString bytes = QString::fromLatin1(QByteArray::fromHex(number).toHex(',').toUpper())
                              .replace(u","_s, u", 0x"_s);
    QCOMPARE(
        log.lines(),
        {u"#################    fw  \"Reply[0x02, 0x01, 0x64, 0x88, 0x%1, 0xAB]\" \"%2\""_s.arg(
            bytes, QLatin1StringView(text))});
}

/// The module falls silent between the two questions.
void tst_QSerialCommandHandlerVersion::numberWithoutText()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer("02 01 64 88 00 00 01 05 f5");
    const DebugLog log;
    QCOMPARE(handler.firmwareVersion(1), u"V 1.05"_s);
    QCOMPARE(port.requests().size(), 2);
    QCOMPARE(emitted.lines(), {detached(port.portName())});
}

void tst_QSerialCommandHandlerVersion::ofASimulatedModule()
{
    simulator::Identity identity;
    identity.versionText = "7710B207";
    identity.majorVersion = 2;
    identity.minorVersion = 7;
    SimulatedPort port(identity);
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    QCOMPARE(handler.versionText(1), u"7710B207"_s);
    QCOMPARE(handler.firmwareVersion(1), u"Bootloader V 2.07"_s);
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandlerVersion)
#include "tst_QSerialCommandHandlerVersion.moc"
