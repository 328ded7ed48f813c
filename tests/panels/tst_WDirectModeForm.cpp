#include "DirectModeTest.h"
#include "PanelTest.h"
#include "panels/WDirectMode.h"
#include "support/TestCase.h"

#include <QComboBox>
#include <QLabel>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace DirectModeTest;

class tst_WDirectModeForm : public TestCase
{
    Q_OBJECT

private slots:
    void properties_data();
    void properties() { compareProperty(WDirectMode()); }
    void labels_data();
    void labels();
    void layoutFits_data();
    void layoutFits();
    void commandCount();
    void commands_data();
    void commands();
    void choiceChangesNothing();
    void fieldsKeepTheirEnabledState();
    void keyboard();
};

void tst_WDirectModeForm::properties_data()
{
    addPropertyColumns();
    addPropertyRow("panel", "WDirectMode", "size", QSize(500, 190));
    addPropertyRow("panel", "WDirectMode", "minimumSize", QSize(450, 180));
    addPropertyRow("panel", "WDirectMode", "maximumSize", QSize(500, 190));
    addPropertyRow("gbRequest", "QGroupBox", "title", u"Request"_s);
    addPropertyRow("cbCommand", "QComboBox", "enabled", true);
    addPropertyRow("cbCommand", "QComboBox", "editable", false);
    addPropertyRow("cbCommand", "QComboBox", "currentIndex", 0);
    addSpinBoxRows("sbRequestAddress", 0, 255, 1, false);
    addSpinBoxRows("sbRequestType", 0, 255, 0, true);
    addSpinBoxRows("sbRequestMotorBank", 0, 255, 0, true);
    addSpinBoxRows("sbRequestValue", -largestValue, largestValue, 0, true);
    addPropertyRow("btnSend", "QPushButton", "text", u"Send"_s);
    addPropertyRow("btnSend", "QPushButton", "maximumWidth", 60);
    addPropertyRow("btnSend", "QPushButton", "enabled", true);
    addPropertyRow("gbReply", "QGroupBox", "title", u"Reply"_s);
    addSpinBoxRows("sbReplyAddress", 0, 255, 0, false);
    addSpinBoxRows("sbReplyCommand", 0, 255, 0, false);
    addSpinBoxRows("sbReplyType", 0, 255, 0, false);
    addSpinBoxRows("sbReplyMotorBank", 0, 255, 0, false);
    addSpinBoxRows("sbReplyValue", -largestValue, largestValue, 0, false);
}

void tst_WDirectModeForm::labels_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("text");
    const std::pair<const char *, const char *> rows[] = {
        {"sbRequestAddress", "Address"},    {"cbCommand", "Command"},
        {"sbRequestType", "Type"},          {"sbRequestMotorBank", "Motor/Bank"},
        {"sbRequestValue", "Value"},        {"sbReplyAddress", "Address"},
        {"sbReplyCommand", "Command"},      {"sbReplyType", "Type"},
        {"sbReplyMotorBank", "Motor/Bank"}, {"sbReplyValue", "Value"},
    };
    for (const auto &[field, text] : rows) {
        QTest::newRow(field) << QByteArray(field) << QString::fromLatin1(text);
    }
}

void tst_WDirectModeForm::labels()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, text);
    const Panel panel;
    const QWidget *widget = panel.child(field.constData());
    const QLabel *label = nullptr;
    for (const QLabel *candidate : panel->findChildren<QLabel *>()) {
        if (candidate->buddy() == widget) {
            label = candidate;
        }
    }
    QVERIFY(label);
    QCOMPARE(label->text(), text);
    QVERIFY(label->alignment().testFlag(Qt::AlignHCenter));
    QVERIFY(label->geometry().bottom() < widget->geometry().top());
    QVERIFY(std::abs(label->geometry().center().x() - widget->geometry().center().x()) <= 1);
}

void tst_WDirectModeForm::layoutFits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("initial") << QSize(500, 190);
    QTest::newRow("least") << QSize(450, 180);
}

void tst_WDirectModeForm::layoutFits()
{
    QFETCH(QSize, size);
    const Panel panel;
    panel->resize(size);
    fillRequest(panel, 0, 255, 255, -largestValue);
    QCOMPARE(panel->size(), size);
    QTRY_COMPARE(panel.clipped(), QStringList());
}

void tst_WDirectModeForm::commandCount()
{
    QCOMPARE(Panel().child<QComboBox>("cbCommand")->count(), 44);
}

void tst_WDirectModeForm::commands_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    const QStringList texts =
        u"1 - ROR,2 - ROL,3 - MST,4 - MVP,5 - SAP,6 - GAP,7 - STAP,8 - RSAP,9 - SGP,"
        "10 - GGP,11 - STGP,12 - RSGP,13 - RFS,14 - SIO,15 - GIO,19 - CALC,20 - COMP,"
        "21 - JC,22 - JA,23 - CSUB,24 - RSUB,25 - EI,26 - DI,27 - WAIT,28 - STOP,"
        "29 - SAC,30 - SCO,31 - GCO,32 - CCO,33 - CALCX,34 - AAP,35 - AGP,36 - CLE,"
        "37 - VECT,38 - RETI,39 - ACO,64 - UF0,65 - UF1,66 - UF2,67 - UF3,68 - UF4,"
        "69 - UF5,70 - UF6,71 - UF7"_s.split(u',');
    for (int index = 0; index < texts.size(); ++index) {
        const QString &text = texts.at(index);
        QTest::newRow(qPrintable(text)) << index << text.section(u' ', 0, 0).toInt() << text;
    }
}

void tst_WDirectModeForm::commands()
{
    QFETCH(int, index);
    QFETCH(int, number);
    QFETCH(QString, text);
    const Panel panel;
    auto *commands = panel.child<QComboBox>("cbCommand");
    QCOMPARE(commands->itemText(index), text);
    QCOMPARE(commands->itemData(index, Qt::UserRole), QVariant(number));
    commands->setCurrentIndex(index);
    QSignalSpy sent(panel.get(), &WDirectMode::doRequest);
    panel.click("btnSend");
    QCOMPARE(sent, QList<QVariantList>{request(1, number, 0, 0, 0)});
}

void tst_WDirectModeForm::choiceChangesNothing()
{
    const Panel panel;
    QSignalSpy sent(panel.get(), &WDirectMode::doRequest);
    panel->requestResult(1, 2, 3, 100, 5);
    fillRequest(panel, 0, 7, 8, 9);
    auto *commands = panel.child<QComboBox>("cbCommand");
    for (int i = 0; i < commands->count(); ++i) {
        commands->setCurrentIndex(i);
        QCOMPARE(replyRow(panel), (QList<int>{1, 3, 100, 2, 5}));
        QCOMPARE(panel.child<QSpinBox>("sbRequestType")->value(), 7);
        QCOMPARE(panel.child<QSpinBox>("sbRequestMotorBank")->value(), 8);
        QCOMPARE(panel.child<QSpinBox>("sbRequestValue")->value(), 9);
    }
    QVERIFY(sent.isEmpty());
}

void tst_WDirectModeForm::fieldsKeepTheirEnabledState()
{
    const Panel panel;
    panel->setAddress(5);
    auto *commands = panel.child<QComboBox>("cbCommand");
    for (int i = 0; i < commands->count(); ++i) {
        commands->setCurrentIndex(i);
        panel.click("btnSend");
        panel->requestResult(1, 2, 3, 100, 5);
        for (const char *field :
             {"sbRequestType", "sbRequestMotorBank", "sbRequestValue", "cbCommand", "btnSend"}) {
            QVERIFY2(panel.enabled(field), field);
        }
        for (const char *field : {"sbRequestAddress", "sbReplyAddress", "sbReplyCommand",
                                  "sbReplyType", "sbReplyMotorBank", "sbReplyValue"}) {
            QVERIFY2(!panel.enabled(field), field);
        }
    }
}

void tst_WDirectModeForm::keyboard()
{
    const Panel panel;
    QCOMPARE(panel.tabOrder("cbCommand"),
             (QStringList{u"cbCommand"_s, u"sbRequestType"_s, u"sbRequestMotorBank"_s,
                          u"sbRequestValue"_s, u"btnSend"_s}));
    QTest::keyClicks(panel.child("cbCommand"), u"6"_s); // first item that begins so
    panel.type("sbRequestType", u"131"_s);
    panel.type("sbRequestMotorBank", u"1"_s);
    panel.type("sbRequestValue", u"-12"_s);
    QSignalSpy sent(panel.get(), &WDirectMode::doRequest);
    panel.child("btnSend")->setFocus();
    QTest::keyClick(panel.child("btnSend"), Qt::Key_Space);
    QCOMPARE(sent, QList<QVariantList>{request(1, 6, 131, 1, -12)});
}

QTEST_MAIN(tst_WDirectModeForm)
#include "tst_WDirectModeForm.moc"
