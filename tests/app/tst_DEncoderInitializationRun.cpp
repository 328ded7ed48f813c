#include "app/EncoderDialogTest.h"
#include "app/EncoderInitializationThread.h"

#include <QDialogButtonBox>

using namespace Qt::StringLiterals;

namespace {

constexpr int GenerousMsecs = 30'000;

} // namespace

/// A run of the detection, and what becomes of the dialog around it.
class tst_DEncoderInitializationRun : public EncoderDialogTest
{
    Q_OBJECT

private slots:
    void runStartsThenAsks();
    void resultAtTheFirstPollEndsTheRun_data();
    void resultAtTheFirstPollEndsTheRun();
    void otherStatesDoNotEndTheRun_data();
    void otherStatesDoNotEndTheRun();
    void secondRunIsNotStoppedByTheFirst();
    void silenceLeavesTheText();
    void limitLeavesTheText();
    void runGoesOnInTheHiddenDialog_data();
    void runGoesOnInTheHiddenDialog();
    void closeButtonAndEscapeClose_data();
    void closeButtonAndEscapeClose();
    void buttonBoxDecidesTheResult_data();
    void buttonBoxDecidesTheResult();
    void deletedWhileItRuns();
    void deletesItselfWhenIdle_data();
    void deletesItselfWhenIdle();
};

void tst_DEncoderInitializationRun::runStartsThenAsks()
{
    m_state = 1;
    start();
    QVERIFY(areControlsDisabled());
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_requests.size(), 4, GenerousMsecs);
    QCOMPARE(
        m_requests.first(4),
        QStringList({u"set 5 0 132 1"_s, u"get 5 0 132"_s, u"get 5 0 132"_s, u"get 5 0 132"_s}));
    QCOMPARE(stateText(), u"State=1: Encoder detection still running..."_s);
    QVERIFY(areControlsDisabled());
    m_state = 2;
    QTRY_VERIFY_WITH_TIMEOUT(areControlsEnabled(), GenerousMsecs);
}

void tst_DEncoderInitializationRun::resultAtTheFirstPollEndsTheRun_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    QTest::newRow("success") << 2 << u"State=2: Encoder was successfully detected."_s;
    QTest::newRow("failure") << 3 << u"State=3: Encoder detection failed!"_s;
}

void tst_DEncoderInitializationRun::resultAtTheFirstPollEndsTheRun()
{
    QFETCH(int, state);
    m_state = state;
    start();
    QTRY_VERIFY_WITH_TIMEOUT(areControlsEnabled(), GenerousMsecs);
    QTEST(stateText(), "text");
    // Usually one more, since the thread asks before it looks at its flag; how many it is depends
    // on which of the two threads is faster.
    QStringList polls = m_requests;
    QCOMPARE(polls.takeFirst(), u"set 5 0 132 1"_s);
    QCOMPARE(polls.count(u"get 5 0 132"_s), polls.size());
    QCOMPARE_GE(polls.size(), 1);
    QCOMPARE_LE(polls.size(), EncoderInitializationThread::MaxCycles / 10);
}

void tst_DEncoderInitializationRun::otherStatesDoNotEndTheRun_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("not performed") << 0;
    QTest::newRow("running") << 1;
    QTest::newRow("unknown") << 7;
}

void tst_DEncoderInitializationRun::otherStatesDoNotEndTheRun()
{
    QFETCH(int, state);
    m_state = state;
    start();
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_requests.size(), 6, GenerousMsecs);
    QVERIFY(areControlsDisabled());
}

void tst_DEncoderInitializationRun::secondRunIsNotStoppedByTheFirst()
{
    m_state = 2;
    start();
    QTRY_VERIFY_WITH_TIMEOUT(areControlsEnabled(), GenerousMsecs);
    m_requests.clear();
    m_state = 1;
    start();
    QVERIFY(areControlsDisabled());
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_requests.size(), 5, GenerousMsecs);
    QCOMPARE(m_requests.constFirst(), u"set 5 0 132 1"_s);
    QVERIFY(areControlsDisabled());
    m_state = 3;
    QTRY_VERIFY_WITH_TIMEOUT(areControlsEnabled(), GenerousMsecs);
}

void tst_DEncoderInitializationRun::silenceLeavesTheText()
{
    reply(StateParameter, 0);
    start();
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_requests.size(), 4, GenerousMsecs);
    QCOMPARE(stateText(), u"State=0: Encoder detection has not been performed."_s);
    QVERIFY(areControlsDisabled());
}

/// Without a result the run's end frees the controls, and nothing else happens.
void tst_DEncoderInitializationRun::limitLeavesTheText()
{
    m_state = 1;
    start();
    QTRY_COMPARE_WITH_TIMEOUT(stateText(), u"State=1: Encoder detection still running..."_s,
                              GenerousMsecs);
    QVERIFY(areControlsDisabled());
    m_dialog->handleInitThreadReady(); // as at the limit
    QVERIFY(areControlsEnabled());
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(stateText(), u"State=1: Encoder detection still running..."_s);
}

void tst_DEncoderInitializationRun::runGoesOnInTheHiddenDialog_data()
{
    QTest::addColumn<bool>("byFrame");
    QTest::newRow("frame") << true;
    QTest::newRow("Escape") << false;
}

void tst_DEncoderInitializationRun::runGoesOnInTheHiddenDialog()
{
    QFETCH(bool, byFrame);
    m_state = 1;
    start();
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_requests.size(), 2, GenerousMsecs);
    if (byFrame) {
        m_dialog->close();
    } else {
        QTest::keyClick(m_dialog, Qt::Key_Escape);
    }
    QVERIFY(!m_dialog->isVisible());
    const auto before = m_requests.size();
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_requests.size(), before + 2, GenerousMsecs);
    m_state = 2;
    QTRY_VERIFY_WITH_TIMEOUT(areControlsEnabled(), GenerousMsecs);
}

void tst_DEncoderInitializationRun::closeButtonAndEscapeClose_data()
{
    QTest::addColumn<bool>("byButton");
    QTest::newRow("Close") << true;
    QTest::newRow("Escape") << false;
}

void tst_DEncoderInitializationRun::closeButtonAndEscapeClose()
{
    QFETCH(bool, byButton);
    if (byButton) {
        QTest::mouseClick(child<QDialogButtonBox>("buttonBox")->button(QDialogButtonBox::Close),
                          Qt::LeftButton);
    } else {
        QTest::keyClick(m_dialog, Qt::Key_Escape);
    }
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    QCOMPARE(m_requests, QStringList());
}

void tst_DEncoderInitializationRun::buttonBoxDecidesTheResult_data()
{
    QTest::addColumn<bool>("accepted");
    QTest::newRow("accepted") << true;
    QTest::newRow("rejected") << false;
}

void tst_DEncoderInitializationRun::buttonBoxDecidesTheResult()
{
    QFETCH(bool, accepted);
    auto *box = child<QDialogButtonBox>("buttonBox");
    m_dialog->setResult(accepted ? QDialog::Rejected : QDialog::Accepted);
    if (accepted) {
        emit box->accepted();
    } else {
        emit box->rejected();
    }
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(accepted ? QDialog::Accepted : QDialog::Rejected));
}

void tst_DEncoderInitializationRun::deletedWhileItRuns()
{
    m_state = 1;
    start();
    QTRY_COMPARE_GE_WITH_TIMEOUT(m_requests.size(), 2, GenerousMsecs);
    delete m_dialog;
    const auto before = m_requests.size();
    QCoreApplication::processEvents();
    QCOMPARE(m_requests.size(), before);
}

void tst_DEncoderInitializationRun::deletesItselfWhenIdle_data()
{
    QTest::addColumn<bool>("running");
    QTest::newRow("idle") << false;
    QTest::newRow("in a run") << true;
}

void tst_DEncoderInitializationRun::deletesItselfWhenIdle()
{
    QFETCH(bool, running);
    m_state = 1;
    if (running) {
        start();
        QTRY_COMPARE_GE_WITH_TIMEOUT(m_requests.size(), 2, GenerousMsecs);
    }
    m_dialog->close();
    m_dialog->deleteWhenIdle();
    if (running) {
        const auto before = m_requests.size();
        QTRY_COMPARE_GE_WITH_TIMEOUT(m_requests.size(), before + 2, GenerousMsecs);
        QVERIFY2(m_dialog, "it lives while it asks");
        m_state = 2;
    }
    QTRY_VERIFY_WITH_TIMEOUT(!m_dialog, GenerousMsecs);
}

QTEST_MAIN(tst_DEncoderInitializationRun)
#include "tst_DEncoderInitializationRun.moc"
