#include "app/EncoderDialogTest.h"

using namespace Qt::StringLiterals;

void EncoderDialogTest::init()
{
    TestCase::init();
    m_requests.clear();
    m_state.reset();
    m_dialog = new DEncoderInitialization(nullptr);
    connect(m_dialog, &DEncoderInitialization::requestValue, this,
            [this](char address, char motorBank, char type) {
                m_requests.append(u"get %1 %2 %3"_s.arg(int(address))
                                      .arg(int(motorBank))
                                      .arg(static_cast<unsigned char>(type)));
                if (type == StateParameter && m_state) {
                    reply(type, *m_state);
                }
            });
    connect(m_dialog, &DEncoderInitialization::changeValue, this,
            [this](char address, char motorBank, char type, int value) {
                m_requests.append(u"set %1 %2 %3 %4"_s.arg(int(address))
                                      .arg(int(motorBank))
                                      .arg(static_cast<unsigned char>(type))
                                      .arg(value));
            });
    m_dialog->setAddress(Address);
    m_dialog->setStateParameter(StateParameter);
    m_dialog->setFullstepParameter(FullstepParameter);
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog));
}

void EncoderDialogTest::cleanup()
{
    delete m_dialog;
}

bool EncoderDialogTest::areControlsEnabled() const
{
    return child("btnStartInitialization")->isEnabled() && child("buttonBox")->isEnabled()
        && child("sbFullstepResolution")->isEnabled();
}

bool EncoderDialogTest::areControlsDisabled() const
{
    return !child("btnStartInitialization")->isEnabled() && !child("buttonBox")->isEnabled()
        && !child("sbFullstepResolution")->isEnabled();
}
