#include "app/DEncoderInitialization.h"

#include "app/EncoderInitializationThread.h"
#include "panels/ParameterToolTip.h"
#include "ui_DEncoderInitialization.h"

namespace {

/// Value of the state parameter that starts a detection.
constexpr int StartDetection = 1;

/// What the module says of a detection, by the value of the state parameter.
constexpr struct
{
    const char *text;
    bool isResult; ///< nothing more will come
} States[] = {
    {QT_TRANSLATE_NOOP("DEncoderInitialization",
                       "State=0: Encoder detection has not been performed."),
     false},
    {QT_TRANSLATE_NOOP("DEncoderInitialization", "State=1: Encoder detection still running..."),
     false},
    {QT_TRANSLATE_NOOP("DEncoderInitialization", "State=2: Encoder was successfully detected."),
     true},
    {QT_TRANSLATE_NOOP("DEncoderInitialization", "State=3: Encoder detection failed!"), true},
};

} // namespace

DEncoderInitialization::DEncoderInitialization(Stepper *stepper)
    : m_ui(std::make_unique<Ui::DEncoderInitialization>())
    , m_stepper(stepper)
    , m_initThread(std::make_unique<EncoderInitializationThread>())
{
    m_ui->setupUi(this);
    fitWarning();
    setFullstepParameter(m_fullstepParameter);

    const auto *thread = m_initThread.get();
    connect(thread, &EncoderInitializationThread::ready, this,
            &DEncoderInitialization::handleInitThreadReady);
    connect(thread, &EncoderInitializationThread::startInitialization, this,
            &DEncoderInitialization::handleStartInitialization);
    connect(thread, &EncoderInitializationThread::requestInitializationState, this,
            &DEncoderInitialization::handleRequestInitializationState);
}

DEncoderInitialization::~DEncoderInitialization() = default;

void DEncoderInitialization::setAddress(char address)
{
    m_address = address;
}

char DEncoderInitialization::address() const
{
    return m_address;
}

void DEncoderInitialization::setMotorBank(char motorBank)
{
    m_motorBank = motorBank;
}

char DEncoderInitialization::motorBank() const
{
    return m_motorBank;
}

void DEncoderInitialization::setStateParameter(char parameter)
{
    m_stateParameter = parameter;
}

void DEncoderInitialization::setFullstepParameter(char parameter)
{
    m_fullstepParameter = parameter;
    m_ui->sbFullstepResolution->setToolTip(parameterToolTip(parameter));
}

void DEncoderInitialization::requestValues()
{
    emit requestValue(m_address, m_motorBank, m_stateParameter);
    emit requestValue(m_address, m_motorBank, m_fullstepParameter);
}

void DEncoderInitialization::deleteWhenIdle()
{
    // Connected first: the run may end between the two lines.
    connect(m_initThread.get(), &QThread::finished, this, &QObject::deleteLater);
    if (!m_initThread->isRunning()) {
        deleteLater();
    }
}

void DEncoderInitialization::on_btnStartInitialization_clicked()
{
    setControlsEnabled(false);
    m_initThread->start();
}

void DEncoderInitialization::handleInitThreadReady()
{
    setControlsEnabled(true);
}

void DEncoderInitialization::handleStartInitialization()
{
    emit changeValue(m_address, m_motorBank, m_stateParameter, StartDetection);
}

void DEncoderInitialization::handleRequestInitializationState()
{
    emit requestValue(m_address, m_motorBank, m_stateParameter);
}

void DEncoderInitialization::on_sbFullstepResolution_valueChanged(int value)
{
    emit changeValue(m_address, m_motorBank, m_fullstepParameter, value);
}

void DEncoderInitialization::requestedValue(char address, char motorBank, char type, int value)
{
    if (address != m_address || motorBank != m_motorBank) {
        return;
    }
    if (type == m_stateParameter) {
        showState(value);
    }
    if (type == m_fullstepParameter) {
        // Writes the value back to the module, if the control changes; the echo ends there.
        m_ui->sbFullstepResolution->setValue(value);
    }
}

void DEncoderInitialization::showState(int state)
{
    if (state < 0 || state >= static_cast<int>(std::size(States))) {
        return;
    }
    m_ui->teInitializationState->setPlainText(tr(States[state].text));
    if (States[state].isResult) {
        m_initThread->stop();
    }
}

/// Fonts differ in width, and the dialog must not grow: where the warning is too wide for it, its
/// letters get narrower.
void DEncoderInitialization::fitWarning()
{
    const QMargins margins = layout()->contentsMargins();
    const int room = maximumWidth() - margins.left() - margins.right();
    QFont font = m_ui->lblWarning->font();
    for (int stretch = QFont::Unstretched;
         stretch > QFont::UltraCondensed && m_ui->lblWarning->sizeHint().width() > room;) {
        font.setStretch(--stretch);
        m_ui->lblWarning->setFont(font);
    }
}

void DEncoderInitialization::setControlsEnabled(bool enabled)
{
    m_ui->btnStartInitialization->setEnabled(enabled);
    m_ui->buttonBox->setEnabled(enabled);
    m_ui->sbFullstepResolution->setEnabled(enabled);
}
