#include "comm/Answers.h"
#include "comm/HandlerProbe.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/ScriptedPort.h"
#include "comm/SignalLog.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The handler's name is looked at twice, at the first opening and at the first wait, and each time
/// the choice then holds for the process. This program makes two different ones.
class tst_QSerialCommandHandlerChoices : public TestCase
{
    Q_OBJECT

private slots:
    void openingAndWaitingChooseForThemselves();
};

void tst_QSerialCommandHandlerChoices::openingAndWaitingChooseForThemselves()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    handler.setObjectName(u"USB construct"_s);
    QVERIFY(handler.openDevice(port.portName()));
    QCOMPARE(int(deviceOf(handler)->openMode()), 0x03);

    // Only the polled form tells of silence.
    handler.setObjectName(QString());
    SignalLog emitted(handler);
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(port.requests(), QStringList(u"01060400000000000b"_s));
    QCOMPARE(emitted.take(), QStringList(detached(port.portName())));

    handler.setObjectName(u"USB construct"_s);
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(emitted.take(), QStringList(detached(port.portName())));

    handler.setObjectName(QString());
    handler.closeDevice();
    QVERIFY(handler.openDevice(port.portName()));
    QCOMPARE(int(deviceOf(handler)->openMode()), 0x03);
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandlerChoices)
#include "tst_QSerialCommandHandlerChoices.moc"
