#include "app/DEncoderInitialization.h"
#include "app/StepperTest.h"
#include "support/SimulatedCanBus.h"
#include "support/SimulatedPort.h"
#include "support/TurnWheel.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QPointer>
#include <QTextEdit>
#include <QTimer>

#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using simulator::EncoderFate;

namespace {

constexpr auto ReadState = "01 06 84 00 00 00 00 00 8B"_L1;
constexpr auto ReadFullsteps = "01 06 CA 00 00 00 00 00 D1"_L1;
constexpr auto StartDetection = "01 05 84 00 00 00 00 01 8B"_L1;

} // namespace

/// The detection of the encoder as a user goes through it, with a simulated module on a real port.
class tst_StepperEncoder : public StepperTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void opensWithThePanelsValuesApplied_data();
    void opensWithThePanelsValuesApplied();
    void dialogTalksToTheModulesAddress();
    void fullstepsGoToTheModule();
    void wheelWithoutTheFocusSendsNothing();
    void detection_data();
    void detection();
    void detectionOverBothTransports();
    void endlessDetectionGoesOnBehindAClosedDialog();
    void silentModuleCostsOneTimeOut_data();
    void silentModuleCostsOneTimeOut();
    void silentModuleOnCanLeavesTheOther();
    void programEndsDuringARun_data();
    void programEndsDuringARun();
    void windowGoesWithADialogThatRuns();

private:
    /// Clicks on the button that opens the dialog, and does @p inDialog when it is open. Returns
    /// when the dialog has closed.
    void openDialog(const char *button, const std::function<void()> &inDialog);
    void clickStart();
    void clickClose();
    bool areControlsEnabled() const;
    QString stateText() const;
    template <typename Widget>
    Widget *inDialog(const char *name) const
    {
        auto *widget = m_dialog->findChild<Widget *>(QLatin1String(name));
        if (!widget) {
            qFatal("no %s in the dialog", name);
        }
        return widget;
    }
    qsizetype timeOuts() const
    {
        return m_log->lines().filter(u"communicationTimeouted!"_s).size();
    }

    std::unique_ptr<SimulatedPort> m_module;
    QPointer<DEncoderInitialization> m_dialog;
};

void tst_StepperEncoder::init()
{
    StepperTest::init();
    m_module = std::make_unique<SimulatedPort>();
    connectOverUsb(m_module->portName());
    stopPolling(*m_module);
    m_log->clear();
}

void tst_StepperEncoder::cleanup()
{
    StepperTest::cleanup();
    QVERIFY2(!m_dialog, "every dialog goes in the end");
    m_module.reset();
}

void tst_StepperEncoder::openDialog(const char *button, const std::function<void()> &inDialog)
{
    // The dialog's event loop runs within the click.
    QTimer waiting;
    connect(&waiting, &QTimer::timeout, this, [&] {
        auto *dialog = qobject_cast<DEncoderInitialization *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible()) {
            return;
        }
        waiting.stop();
        m_dialog = dialog;
        inDialog();
    });
    waiting.start(5);
    auto *tabs = child<QTabWidget>("tabWidget");
    tabs->setCurrentIndex(qstrcmp(button, "btnInitEncoder2") == 0 ? 1 : 4);
    QTest::mouseClick(child<QPushButton>(button), Qt::LeftButton);
    QVERIFY(!waiting.isActive());
}

void tst_StepperEncoder::clickStart()
{
    QTest::mouseClick(inDialog<QPushButton>("btnStartInitialization"), Qt::LeftButton);
}

void tst_StepperEncoder::clickClose()
{
    QTest::mouseClick(inDialog<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Close),
                      Qt::LeftButton);
}

bool tst_StepperEncoder::areControlsEnabled() const
{
    return inDialog<QWidget>("btnStartInitialization")->isEnabled()
        && inDialog<QWidget>("buttonBox")->isEnabled()
        && inDialog<QWidget>("sbFullstepResolution")->isEnabled();
}

QString tst_StepperEncoder::stateText() const
{
    return inDialog<QTextEdit>("teInitializationState")->toPlainText();
}

void tst_StepperEncoder::opensWithThePanelsValuesApplied_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("Encoder tab") << QByteArray("btnInitEncoder");
    QTest::newRow("Quickstart tab") << QByteArray("btnInitEncoder2");
}

void tst_StepperEncoder::opensWithThePanelsValuesApplied()
{
    QFETCH(QByteArray, button);
    m_module->module().setAxisParameter(132, 3);
    QStringList opening;
    openDialog(button.constData(), [&] {
        opening = m_module->requests();
        m_module->clearWireLog();
        QCOMPARE(stateText(), u"State=3: Encoder detection failed!"_s);
        QCOMPARE(inDialog<QSpinBox>("sbFullstepResolution")->value(), 200);
        QCOMPARE(inDialog<QSpinBox>("sbFullstepResolution")->toolTip(), u"AP: 202"_s);
        QCOMPARE(m_dialog->address(), char(1));
        clickClose();
    });
    QCOMPARE(opening,
             QStringList({u"01 05 D2 00 00 00 0F A0 87"_s, // the panel's values
                          u"01 05 CA 00 00 00 00 C8 98"_s, u"01 05 70 00 00 00 00 00 76"_s,
                          ReadState, ReadFullsteps}));
    // And what the detection may have changed.
    QCOMPARE(m_module->requests(),
             QStringList({u"01 06 D1 00 00 00 00 00 D8"_s, u"01 06 D2 00 00 00 00 00 D9"_s,
                          ReadFullsteps, u"01 06 70 00 00 00 00 00 77"_s}));
    QTRY_VERIFY(!m_dialog);
}

void tst_StepperEncoder::dialogTalksToTheModulesAddress()
{
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    click("wUsbConnection", "btnDisconnect");
    SimulatedPort module({.address = 7}, 9600);
    connectOverSerial(module.portName(), 9600, 7);
    openDialog("btnInitEncoder", [&] {
        QCOMPARE(m_dialog->address(), char(7));
        QVERIFY(module.requests().contains(u"07 06 84 00 00 00 00 00 91"_s));
        clickClose();
    });
}

void tst_StepperEncoder::fullstepsGoToTheModule()
{
    openDialog("btnInitEncoder", [&] {
        m_module->clearWireLog();
        auto *fullsteps = inDialog<QSpinBox>("sbFullstepResolution");
        fullsteps->setFocus();
        QTest::keyClick(fullsteps, Qt::Key_Down);
        QCOMPARE(m_module->requests(), QStringList(u"01 05 CA 00 00 00 00 C7 97"_s));
        clickClose();
    });
    QCOMPARE(m_module->module().axisParameter(202), 199);
}

void tst_StepperEncoder::wheelWithoutTheFocusSendsNothing()
{
    openDialog("btnInitEncoder", [&] {
        m_module->clearWireLog();
        inDialog<QWidget>("btnStartInitialization")->setFocus();
        turnWheel(inDialog<QSpinBox>("sbFullstepResolution"));
        QCOMPARE(m_module->requests(), QStringList());
        clickClose();
    });
}

void tst_StepperEncoder::detection_data()
{
    QTest::addColumn<EncoderFate>("fate");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("lastReply");
    QTest::newRow("succeeds") << EncoderFate::Found
                              << u"State=2: Encoder was successfully detected."_s
                              << u"> 02 01 64 06 00 00 00 02 6F"_s;
    QTest::newRow("fails") << EncoderFate::NotFound << u"State=3: Encoder detection failed!"_s
                           << u"> 02 01 64 06 00 00 00 03 70"_s;
}

void tst_StepperEncoder::detection()
{
    QFETCH(EncoderFate, fate);
    QFETCH(QString, text);
    QFETCH(QString, lastReply);
    m_module->module().chooseEncoder(fate, 400ms);
    QStringList texts;
    openDialog("btnInitEncoder", [&] {
        texts.append(stateText());
        m_module->clearWireLog();
        clickStart();
        QVERIFY(!areControlsEnabled());
        QTRY_COMPARE(stateText(), u"State=1: Encoder detection still running..."_s);
        QTRY_VERIFY_WITH_TIMEOUT(areControlsEnabled(), 30000);
        QCOMPARE(stateText(), text);

        // The start, then questions. Usually one more after the one that brought the result; it
        // depends on how soon the thread looks at its flag.
        QStringList requests = m_module->requests();
        QCOMPARE(requests.takeFirst(), StartDetection);
        QCOMPARE(requests.count(ReadState), requests.size());
        QCOMPARE(m_module->wireLog().constLast(), lastReply);
        clickClose();
    });
    QCOMPARE(texts, QStringList(u"State=0: Encoder detection has not been performed."_s));
    const auto *offset = child<QSpinBox>("sbEncoderOffset", "wEncoderSettings");
    QCOMPARE(offset->value(), fate == EncoderFate::Found ? simulator::Axis::foundOffset : 0);
    QTRY_VERIFY(!m_dialog);
}

void tst_StepperEncoder::detectionOverBothTransports()
{
    SimulatedCanBus bus;
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    connectOverCan(1000, 1, 2);
    m_module->module().chooseEncoder(EncoderFate::Found, 300ms);
    bus.module().chooseEncoder(EncoderFate::Found, 300ms);
    openDialog("btnInitEncoder", [&] {
        clickStart();
        QTRY_VERIFY_WITH_TIMEOUT(areControlsEnabled(), 30000);
        clickClose();
    });
    QTRY_COMPARE(m_module->module().axisParameter(132), 2);
    QTRY_COMPARE(bus.module().axisParameter(132), 2);
}

void tst_StepperEncoder::endlessDetectionGoesOnBehindAClosedDialog()
{
    m_module->module().chooseEncoder(EncoderFate::Endless, 0ms);
    openDialog("btnInitEncoder", [&] {
        clickStart();
        QTRY_COMPARE(stateText(), u"State=1: Encoder detection still running..."_s);
        m_dialog->close(); // by its frame
    });
    QVERIFY(m_dialog);
    QVERIFY(!m_dialog->isVisible());
    m_module->clearWireLog();
    QTRY_COMPARE_GE(m_module->requests().count(ReadState), 3);
    QVERIFY(m_dialog);

    // A second dialog beside the hidden one.
    const QPointer<DEncoderInitialization> hidden = m_dialog;
    openDialog("btnInitEncoder", [&] {
        QVERIFY(m_dialog != hidden);
        QVERIFY(areControlsEnabled());
        m_module->module().setAxisParameter(132, 2);
        QTRY_VERIFY_WITH_TIMEOUT(!hidden, 30000); // released when its run is over
        clickClose();
    });
    QTRY_VERIFY(!m_dialog);
}

void tst_StepperEncoder::silentModuleCostsOneTimeOut_data()
{
    QTest::addColumn<bool>("pulledOut");
    QTest::newRow("silent") << false;
    QTest::newRow("pulled out") << true;
}

void tst_StepperEncoder::silentModuleCostsOneTimeOut()
{
    QFETCH(bool, pulledOut);
    m_module->module().chooseEncoder(EncoderFate::Endless, 0ms);
    openDialog("btnInitEncoder", [&] {
        clickStart();
        QTRY_COMPARE(stateText(), u"State=1: Encoder detection still running..."_s);
        if (pulledOut) {
            m_module->pullOut();
        } else {
            QVERIFY(m_module->fault(u"silence"_s));
        }
        QTRY_COMPARE_WITH_TIMEOUT(timeOuts(), 1, 30000);
        // The pacemaker goes on, and none of its calls gets anywhere.
        qsizetype calls = 0;
        connect(m_dialog, &DEncoderInitialization::requestValue, this, [&calls] { ++calls; });
        QTRY_COMPARE_GE_WITH_TIMEOUT(calls, 10, 30000);
        disconnect(m_dialog, &DEncoderInitialization::requestValue, this, nullptr);
        QCOMPARE(timeOuts(), 1);
        QVERIFY(!areControlsEnabled());
        QCOMPARE(stateText(), u"State=1: Encoder detection still running..."_s);
        m_dialog->close();
    });
    QVERIFY(isReady("wUsbConnection"));
}

/// Its channel is closed, and the detection goes on over the other transport.
void tst_StepperEncoder::silentModuleOnCanLeavesTheOther()
{
    SimulatedCanBus bus;
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    connectOverCan(1000, 1, 2);
    m_module->module().chooseEncoder(EncoderFate::Endless, 0ms);
    bus.module().chooseEncoder(EncoderFate::Endless, 0ms);
    openDialog("btnInitEncoder", [&] {
        clickStart();
        QTRY_COMPARE(stateText(), u"State=1: Encoder detection still running..."_s);
        QVERIFY(bus.fault(u"silence"_s));
        QTRY_COMPARE_WITH_TIMEOUT(timeOuts(), 1, 30000);
        QVERIFY(isReady("wCANKvaserConnection"));
        bus.clear();
        m_module->clearWireLog();
        QTRY_COMPARE_GE_WITH_TIMEOUT(m_module->requests().count(ReadState), 5, 30000);
        QCOMPARE(requestsOf(bus), QStringList());
        QCOMPARE(timeOuts(), 1);
        m_module->module().setAxisParameter(132, 2);
        QTRY_VERIFY_WITH_TIMEOUT(areControlsEnabled(), 30000);
        clickClose();
    });
}

void tst_StepperEncoder::programEndsDuringARun_data()
{
    QTest::addColumn<bool>("windowsClose");
    QTest::newRow("windows close") << true;
    QTest::newRow("event loop ends") << false;
}

void tst_StepperEncoder::programEndsDuringARun()
{
    QFETCH(bool, windowsClose);
    m_module->module().chooseEncoder(EncoderFate::Endless, 0ms);
    QTimer::singleShot(0, this, [this, windowsClose] {
        openDialog("btnInitEncoder", [&] {
            clickStart();
            QTRY_COMPARE(stateText(), u"State=1: Encoder detection still running..."_s);
            if (windowsClose) {
                QApplication::quit();
            } else {
                QApplication::exit();
            }
            m_module->clearWireLog();
        });
    });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(m_module->requests(), QStringList());
    QVERIFY(m_dialog);
    QVERIFY(!QTest::qWaitFor([this] { return !m_module->requests().isEmpty(); }, 300));
}

/// A window that is deleted takes hidden dialogs with it.
void tst_StepperEncoder::windowGoesWithADialogThatRuns()
{
    m_module->module().chooseEncoder(EncoderFate::Endless, 0ms);
    openDialog("btnInitEncoder", [&] {
        clickStart();
        QTRY_COMPARE(stateText(), u"State=1: Encoder detection still running..."_s);
        m_dialog->close();
    });
    QVERIFY(m_dialog);
    m_stepper.reset();
    QVERIFY(!m_dialog);
}

QTEST_MAIN(tst_StepperEncoder)
#include "tst_StepperEncoder.moc"
