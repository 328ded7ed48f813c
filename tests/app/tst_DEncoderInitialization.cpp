#include "app/EncoderDialogTest.h"
#include "panels/PanelTest.h"
#include "support/MetaMethods.h"

#include <QDialogButtonBox>
#include <QLabel>

#include <limits>

using namespace Qt::StringLiterals;

/// The form of the dialog, and what it does with single values.
class tst_DEncoderInitialization : public EncoderDialogTest
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void form_data();
    void form() { PanelTest::compareProperty(*m_dialog); }
    void arrangement();
    void startValues();
    void fullstepParameterIsTheToolTip_data();
    void fullstepParameterIsTheToolTip();
    void requestsItsValues();

    void stateTexts_data();
    void stateTexts();
    void repliesOfOthersAreIgnored_data();
    void repliesOfOthersAreIgnored();
    void oneNumberForBothParameters();
    void changedFullstepsAreWritten();
    void confirmedFullstepsAreNotWritten();
    void readFullstepsAreEchoedOnce();
};

void tst_DEncoderInitialization::signalsAndSlots()
{
    const QMetaObject &metaObject = DEncoderInitialization::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QDialog::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             QStringList({u"requestValue(char address, char motorBank, char type)"_s,
                          u"changeValue(char address, char motorBank, char type, int value)"_s}));
    QCOMPARE(
        ownMethods(metaObject, QMetaMethod::Slot),
        QStringList({u"on_btnStartInitialization_clicked()"_s, u"handleInitThreadReady()"_s,
                     u"handleStartInitialization()"_s, u"handleRequestInitializationState()"_s,
                     u"on_sbFullstepResolution_valueChanged(int value)"_s,
                     u"requestedValue(char address, char motorBank, char type, int value)"_s}));
}

void tst_DEncoderInitialization::form_data()
{
    using PanelTest::addPropertyRow;
    PanelTest::addPropertyColumns();
    addPropertyRow("panel", "DEncoderInitialization", "objectName", u"DEncoderInitialization"_s);
    addPropertyRow("panel", "DEncoderInitialization", "windowTitle", u"Encoder initialization"_s);
    addPropertyRow("panel", "DEncoderInitialization", "maximumSize", QSize(392, 163));
    addPropertyRow("panel", "DEncoderInitialization", "size", QSize(392, 163));
    addPropertyRow("lblWarning", "QLabel", "text",
                   u"Warning! <br>The motor will rotate during initialization!"_s);
    addPropertyRow("lblInitializationStatus_2", "QLabel", "text", u"Motor fullstep resolution"_s);
    addPropertyRow("lblInitializationStatus_2", "QLabel", "maximumHeight", 30);
    addPropertyRow("lblInitializationStatus", "QLabel", "text", u"Initialization status"_s);
    addPropertyRow("lblInitializationStatus", "QLabel", "maximumHeight", 30);
    PanelTest::addSpinBoxRows("sbFullstepResolution", 0, 400, 200, true);
    addPropertyRow("sbFullstepResolution", "QSpinBox", "minimumWidth", 60);
    addPropertyRow("sbFullstepResolution", "QSpinBox", "toolTip", u"AP: 202"_s);
    addPropertyRow("teInitializationState", "QTextEdit", "readOnly", true);
    addPropertyRow("teInitializationState", "QTextEdit", "acceptRichText", false);
    addPropertyRow("teInitializationState", "QTextEdit", "undoRedoEnabled", false);
    addPropertyRow("teInitializationState", "QTextEdit", "maximumHeight", 20);
    addPropertyRow("teInitializationState", "QTextEdit", "plainText", QString());
    addPropertyRow("btnStartInitialization", "QPushButton", "text",
                   u"Start encoder initialization"_s);
    addPropertyRow("btnStartInitialization", "QPushButton", "enabled", true);
    addPropertyRow("buttonBox", "QDialogButtonBox", "enabled", true);
}

void tst_DEncoderInitialization::arrangement()
{
    const auto *warning = child<QLabel>("lblWarning");
    QCOMPARE(warning->font().pointSize(), 15);
    QCOMPARE(warning->alignment(), Qt::AlignCenter);
    const auto *text = child<QTextEdit>("teInitializationState");
    QCOMPARE(text->lineWrapMode(), QTextEdit::NoWrap);
    QCOMPARE(text->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(text->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(text->textInteractionFlags(), Qt::NoTextInteraction);
    const auto *box = child<QDialogButtonBox>("buttonBox");
    QCOMPARE(box->orientation(), Qt::Horizontal);
    QCOMPARE(box->standardButtons(), QDialogButtonBox::Close);

    const auto place = [this](const char *name) {
        const QWidget *widget = child(name);
        return QRect(widget->mapTo(m_dialog, QPoint()), widget->size());
    };
    const QRect fullsteps = place("sbFullstepResolution");
    const QRect state = place("teInitializationState");
    QVERIFY(place("lblWarning").bottom() < fullsteps.top());
    QVERIFY(place("lblWarning").width() > m_dialog->width() * 9 / 10);
    QVERIFY(place("lblInitializationStatus_2").right() < fullsteps.left());
    QVERIFY(place("lblInitializationStatus").right() < state.left());
    QVERIFY(fullsteps.bottom() < state.top());
    QVERIFY(place("lblInitializationStatus_2").bottom() < place("lblInitializationStatus").top());
    QVERIFY(state.bottom() < place("btnStartInitialization").top());
    QVERIFY(place("btnStartInitialization").right() < place("buttonBox").left());
    for (const char *name : {"lblWarning", "sbFullstepResolution", "teInitializationState",
                             "btnStartInitialization", "buttonBox"}) {
        QVERIFY2(m_dialog->rect().contains(place(name)), name);
    }
}

void tst_DEncoderInitialization::startValues()
{
    const DEncoderInitialization dialog(nullptr);
    QCOMPARE(dialog.address(), char(1));
    QCOMPARE(dialog.motorBank(), char(0));
    QVERIFY(!dialog.parent());
    QCOMPARE(dialog.findChild<QSpinBox *>(u"sbFullstepResolution"_s)->toolTip(), u"AP: 0"_s);
}

void tst_DEncoderInitialization::fullstepParameterIsTheToolTip_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("small") << 7 << u"AP: 7"_s;
    QTest::newRow("127") << 127 << u"AP: 127"_s;
    QTest::newRow("above 127") << 202 << u"AP: 202"_s;
    QTest::newRow("largest") << 255 << u"AP: 255"_s;
}

void tst_DEncoderInitialization::fullstepParameterIsTheToolTip()
{
    QFETCH(int, number);
    m_dialog->setFullstepParameter(static_cast<char>(number));
    QTEST(child("sbFullstepResolution")->toolTip(), "toolTip");
}

void tst_DEncoderInitialization::requestsItsValues()
{
    m_dialog->setMotorBank(1);
    QCOMPARE(m_dialog->address(), Address);
    QCOMPARE(m_dialog->motorBank(), char(1));
    m_dialog->requestValues();
    QCOMPARE(m_requests, QStringList({u"get 5 1 132"_s, u"get 5 1 202"_s}));
}

void tst_DEncoderInitialization::stateTexts_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << u"State=0: Encoder detection has not been performed."_s;
    QTest::newRow("1") << 1 << u"State=1: Encoder detection still running..."_s;
    QTest::newRow("2") << 2 << u"State=2: Encoder was successfully detected."_s;
    QTest::newRow("3") << 3 << u"State=3: Encoder detection failed!"_s;
    for (const int other :
         {4, 7, -1, 256, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        QTest::addRow("%d: stays as it is", other)
            << other << u"State=1: Encoder detection still running..."_s;
    }
}

void tst_DEncoderInitialization::stateTexts()
{
    QFETCH(int, state);
    reply(StateParameter, 1);
    reply(StateParameter, state);
    QTEST(stateText(), "text");
    QCOMPARE(m_requests, QStringList());
}

void tst_DEncoderInitialization::repliesOfOthersAreIgnored_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("motorBank");
    QTest::addColumn<int>("type");
    QTest::newRow("another address, the state") << 6 << 0 << 132;
    QTest::newRow("another address, the full steps") << 6 << 0 << 202;
    QTest::newRow("another motor, the state") << 5 << 1 << 132;
    QTest::newRow("another motor, the full steps") << 5 << 1 << 202;
    QTest::newRow("another parameter") << 5 << 0 << 133;
}

void tst_DEncoderInitialization::repliesOfOthersAreIgnored()
{
    QFETCH(int, address);
    QFETCH(int, motorBank);
    QFETCH(int, type);
    m_dialog->requestedValue(static_cast<char>(address), static_cast<char>(motorBank),
                             static_cast<char>(type), 2);
    QCOMPARE(stateText(), QString());
    QCOMPARE(child<QSpinBox>("sbFullstepResolution")->value(), 200);
    QCOMPARE(m_requests, QStringList());
}

/// As at first, when both have the number 0.
void tst_DEncoderInitialization::oneNumberForBothParameters()
{
    m_dialog->setFullstepParameter(StateParameter);
    reply(StateParameter, 3);
    QCOMPARE(stateText(), u"State=3: Encoder detection failed!"_s);
    QCOMPARE(child<QSpinBox>("sbFullstepResolution")->value(), 3);
}

void tst_DEncoderInitialization::changedFullstepsAreWritten()
{
    auto *fullsteps = child<QSpinBox>("sbFullstepResolution");
    fullsteps->setFocus();
    QTest::keyClick(fullsteps, Qt::Key_Up);
    QTest::keySequence(fullsteps, QKeySequence::SelectAll);
    QTest::keyClicks(fullsteps, u"400"_s);
    QCOMPARE(m_requests,
             QStringList({u"set 5 0 202 201"_s, u"set 5 0 202 4"_s, u"set 5 0 202 40"_s,
                          u"set 5 0 202 400"_s}));
}

void tst_DEncoderInitialization::confirmedFullstepsAreNotWritten()
{
    reply(FullstepParameter, 200);
    QCOMPARE(m_requests, QStringList());
}

void tst_DEncoderInitialization::readFullstepsAreEchoedOnce()
{
    reply(FullstepParameter, 400);
    reply(FullstepParameter, 400);
    QCOMPARE(child<QSpinBox>("sbFullstepResolution")->value(), 400);
    QCOMPARE(m_requests, QStringList(u"set 5 0 202 400"_s));
}

QTEST_MAIN(tst_DEncoderInitialization)
#include "tst_DEncoderInitialization.moc"
