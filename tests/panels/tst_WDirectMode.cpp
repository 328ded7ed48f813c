#include "DirectModeTest.h"
#include "PanelTest.h"
#include "panels/WDirectMode.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QComboBox>
#include <QSpinBox>

#include <limits>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace DirectModeTest;

class tst_WDirectMode : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void setAddress_data();
    void setAddress();
    void sendWholeRow();
    void sendWidestBytes();
    void typedValue_data();
    void typedValue();
    void answerWithinTheSignal();
    void requestResult_data();
    void requestResult();
    void requestResultIgnoresRequest();
    void requestedCommandMatches();
    void requestedCommandAnswersOnce();
    void requestedCommandMismatch_data();
    void requestedCommandMismatch();
    void requestedCommandCompares8Bits();
    void requestedCommandWithoutRequest();
    void requestedCommandWithinTheSignal();
};

void tst_WDirectMode::signalsAndSlots()
{
    const QMetaObject &metaObject = WDirectMode::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             QStringList{u"doRequest(char address, char command, char type, char motorBank, "
                         "int value)"_s});
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             (QStringList{u"requestResult(char address, char motorBank, char command, "
                          "char status, int value)"_s,
                          u"requestedCommand(char address, char command, char type, "
                          "char motorBank, char status, int data)"_s,
                          u"on_btnSend_clicked()"_s}));
    QWidget window;
    QCOMPARE(WDirectMode(&window).parentWidget(), &window);
}

void tst_WDirectMode::setAddress_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("shown");
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("7") << 7 << 7;
    QTest::newRow("127") << 127 << 127;
    // Negative as a signed byte, below the least value of the field.
    QTest::newRow("128") << 128 << 0;
    QTest::newRow("255") << 255 << 0;
}

void tst_WDirectMode::setAddress()
{
    QFETCH(int, address);
    QFETCH(int, shown);
    const Panel panel;
    QCOMPARE(panel->address(), byte(1));
    panel->setAddress(byte(address));
    QCOMPARE(panel.child<QSpinBox>("sbRequestAddress")->value(), shown);
    QCOMPARE(panel->address(), byte(shown));
    QSignalSpy sent(panel.get(), &WDirectMode::doRequest);
    panel.click("btnSend");
    QCOMPARE(sent, QList<QVariantList>{request(shown, 1, 0, 0, 0)});
}

void tst_WDirectMode::sendWholeRow()
{
    const Panel panel;
    panel->setAddress(9);
    fillRequest(panel, 2, 4, 5, -6); // MST needs neither type nor value
    QSignalSpy sent(panel.get(), &WDirectMode::doRequest);
    panel.click("btnSend");
    panel.click("btnSend");
    QCOMPARE(sent, (QList<QVariantList>{request(9, 3, 4, 5, -6), request(9, 3, 4, 5, -6)}));
    QCOMPARE(replyRow(panel), (QList<int>{0, 0, 0, 0, 0})); // no answer, no change
    QVERIFY(panel.enabled("btnSend"));
}

void tst_WDirectMode::sendWidestBytes()
{
    const Panel panel;
    fillRequest(panel, 0, 255, 128, largestValue);
    QSignalSpy sent(panel.get(), &WDirectMode::doRequest);
    panel.click("btnSend");
    QCOMPARE(sent, QList<QVariantList>{request(1, 1, -1, -128, largestValue)});
}

void tst_WDirectMode::typedValue_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    for (const char *locale : {"C", "de_DE"}) {
        const QString name = QString::fromLatin1(locale);
        QTest::addRow("%s positive", locale) << name << u"1234567"_s << 1234567;
        QTest::addRow("%s negative", locale) << name << u"-1000"_s << -1000;
        QTest::addRow("%s largest", locale) << name << u"2147483647"_s << largestValue;
        QTest::addRow("%s least", locale) << name << u"-2147483647"_s << -largestValue;
        // One below the least: the last digit isn't accepted.
        QTest::addRow("%s out of reach", locale) << name << u"-2147483648"_s << -214748364;
    }
}

void tst_WDirectMode::typedValue()
{
    QFETCH(QString, locale);
    QFETCH(QString, text);
    QFETCH(int, value);
    const DefaultLocale defaultLocale(locale);
    const Panel panel;
    panel.type("sbRequestValue", text);
    QSignalSpy sent(panel.get(), &WDirectMode::doRequest);
    panel.click("btnSend");
    QCOMPARE(sent, QList<QVariantList>{request(1, 1, 0, 0, value)});
    QCOMPARE(panel.child<QSpinBox>("sbRequestValue")->text(), QString::number(value));
}

void tst_WDirectMode::answerWithinTheSignal()
{
    const Panel panel;
    connect(panel.get(), &WDirectMode::doRequest, panel.get(),
            [&](char address, char command, char, char motorBank, int value) {
                panel->requestResult(address, motorBank, command, 100, value + 1);
            });
    fillRequest(panel, 5, 4, 2, 41);
    panel.click("btnSend");
    QCOMPARE(replyRow(panel), (QList<int>{1, 6, 100, 2, 42}));
}

void tst_WDirectMode::requestResult_data()
{
    QTest::addColumn<QList<int>>("arguments"); // address, motor or bank, command, status, value
    QTest::addColumn<QList<int>>("shown");
    const auto row = [](const char *name, const QList<int> &arguments, const QList<int> &shown) {
        QTest::newRow(name) << arguments << shown;
    };
    row("each in its field", {1, 2, 3, 100, 5}, {1, 3, 100, 2, 5});
    row("largest signed bytes", {127, 127, 127, 127, largestValue},
        {127, 127, 127, 127, largestValue});
    row("bytes from 128 on show as 0", {128, 200, 136, 255, -1}, {0, 0, 0, 0, -1});
    row("least value", {1, 0, 6, 100, -largestValue}, {1, 6, 100, 0, -largestValue});
    row("value below the field", {1, 0, 6, 100, std::numeric_limits<int>::min()},
        {1, 6, 100, 0, -largestValue});
}

void tst_WDirectMode::requestResult()
{
    QFETCH(QList<int>, arguments);
    QFETCH(QList<int>, shown);
    const Panel panel;
    panel->requestResult(50, 50, 50, 50, 50); // so that a 0 shows as a change
    panel->requestResult(byte(arguments[0]), byte(arguments[1]), byte(arguments[2]),
                         byte(arguments[3]), arguments[4]);
    QCOMPARE(replyRow(panel), shown);
}

void tst_WDirectMode::requestResultIgnoresRequest()
{
    const Panel panel;
    fillRequest(panel, 5, 4, 2, 0);
    panel.click("btnSend");
    panel->requestResult(9, 8, 7, 6, 5);
    QCOMPARE(replyRow(panel), (QList<int>{9, 7, 6, 8, 5}));
    // It doesn't consume the request either.
    panel->requestedCommand(1, 6, 4, 2, 100, 77);
    QCOMPARE(replyRow(panel), (QList<int>{1, 6, 100, 2, 77}));
}

void tst_WDirectMode::requestedCommandMatches()
{
    const Panel panel;
    fillRequest(panel, 5, 4, 2, 0);
    panel.click("btnSend");
    panel->requestedCommand(3, 6, 4, 2, 100, -5); // the address isn't compared
    QCOMPARE(replyRow(panel), (QList<int>{3, 6, 100, 2, -5}));
}

void tst_WDirectMode::requestedCommandAnswersOnce()
{
    const Panel panel;
    fillRequest(panel, 5, 4, 2, 0);
    panel.click("btnSend");
    panel->requestedCommand(1, 6, 4, 2, 100, 1);
    panel->requestedCommand(1, 6, 4, 2, 100, 2);
    QCOMPARE(replyRow(panel), (QList<int>{1, 6, 100, 2, 1}));
    panel->requestedCommand(1, 0, 0, 0, 100, 4); // what stands for "no request"
    QCOMPARE(replyRow(panel), (QList<int>{1, 0, 100, 0, 4}));
    panel.click("btnSend");
    panel->requestedCommand(1, 6, 4, 2, 100, 3);
    QCOMPARE(replyRow(panel), (QList<int>{1, 6, 100, 2, 3}));
}

void tst_WDirectMode::requestedCommandMismatch_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("motorBank");
    QTest::newRow("command") << 5 << 4 << 2;
    QTest::newRow("type") << 6 << 5 << 2;
    QTest::newRow("motor or bank") << 6 << 4 << 3;
}

void tst_WDirectMode::requestedCommandMismatch()
{
    QFETCH(int, command);
    QFETCH(int, type);
    QFETCH(int, motorBank);
    const Panel panel;
    fillRequest(panel, 5, 4, 2, 0);
    panel.click("btnSend");
    panel->requestedCommand(1, byte(command), byte(type), byte(motorBank), 100, 9);
    QCOMPARE(replyRow(panel), (QList<int>{0, 0, 0, 0, 0}));
    // The request still waits for its reply.
    panel->requestedCommand(1, 6, 4, 2, 100, 9);
    QCOMPARE(replyRow(panel), (QList<int>{1, 6, 100, 2, 9}));
}

void tst_WDirectMode::requestedCommandCompares8Bits()
{
    const Panel panel;
    fillRequest(panel, 5, 230, 255, 0);
    panel.click("btnSend");
    panel->requestedCommand(1, 6, byte(230), byte(255), byte(200), 9);
    QCOMPARE(replyRow(panel), (QList<int>{1, 6, 0, 0, 9}));
}

void tst_WDirectMode::requestedCommandWithoutRequest()
{
    // The remembered numbers are 0 at first and after a match: only such a reply is shown.
    const Panel panel;
    panel->requestedCommand(1, 6, 0, 0, 100, 9);
    QCOMPARE(replyRow(panel), (QList<int>{0, 0, 0, 0, 0}));
    panel->requestedCommand(1, 0, 0, 0, 100, 9);
    QCOMPARE(replyRow(panel), (QList<int>{1, 0, 100, 0, 9}));
}

void tst_WDirectMode::requestedCommandWithinTheSignal()
{
    const Panel panel;
    connect(panel.get(), &WDirectMode::doRequest, panel.get(),
            [&](char address, char command, char type, char motorBank, int value) {
                panel->requestedCommand(address, command, type, motorBank, 100, value);
            });
    fillRequest(panel, 5, 4, 2, 41);
    panel.click("btnSend");
    QCOMPARE(replyRow(panel), (QList<int>{1, 6, 100, 2, 41}));
}

QTEST_MAIN(tst_WDirectMode)
#include "tst_WDirectMode.moc"
