#include "panels/WPositionControl.h"

#include "comm/CommandNumbers.h"
#include "panels/CommandReply.h"
#include "panels/MoveType.h"
#include "panels/ParameterToolTip.h"
#include "panels/SaturatedInt.h"
#include "ui_WPositionControl.h"

using namespace Qt::StringLiterals;

WPositionControl::WPositionControl(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WPositionControl>())
    , m_relativeToActualText(u"actual position"_s)
    , m_relativeToTargetText(u"target position"_s)
{
    m_ui->setupUi(this);
    m_ui->cmbRelativeTo->addItems({m_relativeToActualText, m_relativeToTargetText});
    setApActualPosition(0);
    setApTargetPosition(0);
    setApClearOnNull(0);
    setApClearOnNullWithoutTip(0);
}

WPositionControl::~WPositionControl() = default;

void WPositionControl::setApActualPosition(char number)
{
    m_apActualPosition = number;
    m_ui->sbActualPosition->setToolTip(parameterToolTip(number));
    m_ui->btnClear->setToolTip(parameterToolTip(number));
}

void WPositionControl::setApTargetPosition(char number)
{
    m_apTargetPosition = number;
    m_ui->sbTargetPosition->setToolTip(parameterToolTip(number));
}

void WPositionControl::setApClearOnNull(char number)
{
    m_apClearOnNull = number;
    m_ui->btnClearOnNull->setToolTip(parameterToolTip(number));
}

void WPositionControl::setApClearOnNullWithoutTip(char number)
{
    m_apClearOnNullWithoutTip = number;
}

void WPositionControl::setStopWithMotorStop(bool stopWithMotorStop)
{
    m_stopWithMotorStop = stopWithMotorStop;
}

void WPositionControl::setRelativeToActualByAbsolute(bool relativeToActualByAbsolute)
{
    m_relativeToActualByAbsolute = relativeToActualByAbsolute;
}

QList<char> *WPositionControl::traceParameters() const
{
    return new QList<char>{m_apActualPosition};
}

void WPositionControl::readValues()
{
    emit requestValue(address(), motor(), m_apActualPosition);
    emit requestValue(address(), motor(), m_apTargetPosition);
}

void WPositionControl::setTitle(const QString &title)
{
    m_ui->gbPositionControl->setTitle(title);
}

void WPositionControl::setActualLabel(const QString &label)
{
    m_ui->lblActualPosition->setText(label);
}

void WPositionControl::setTargetLabel(const QString &label)
{
    m_ui->lblTargetPosition->setText(label);
}

void WPositionControl::setTargetStep(int step)
{
    m_ui->sbTargetPosition->setSingleStep(step);
}

void WPositionControl::requestedTraceValue(char address, char motorBank, char type, int value)
{
    requestedValue(address, motorBank, type, value);
}

void WPositionControl::requestedValue(char address, char motorBank, char type, int value)
{
    if (isFrom(address, motorBank) && type == m_apActualPosition) {
        m_ui->sbActualPosition->setValue(value);
    }
}

void WPositionControl::requestedCommand(char address, char command, char type, char motorBank,
                                        char status, int value)
{
    if (CommandReply::isRead(command, status)) {
        requestedTraceValue(address, motorBank, type, value);
    }
}

void WPositionControl::on_btnMoveAbsolute_clicked()
{
    const int target = m_ui->sbTargetPosition->value();
    move(MoveType::Absolute, target);
    m_lastTargetPosition = target;
}

void WPositionControl::on_btnMoveRelative_clicked()
{
    const int distance = m_ui->sbTargetPosition->value();
    // In all cases, also where the move starts from the actual position and doesn't use it.
    m_lastTargetPosition = SaturatedInt::sum(m_lastTargetPosition, distance);
    if (m_ui->cmbRelativeTo->currentText().startsWith(m_relativeToTargetText)) {
        move(MoveType::Absolute, m_lastTargetPosition);
    } else if (m_relativeToActualByAbsolute) {
        move(MoveType::Absolute, SaturatedInt::sum(m_ui->sbActualPosition->value(), distance));
    } else {
        move(MoveType::Relative, distance);
    }
}

void WPositionControl::on_btnStop_clicked()
{
    if (m_stopWithMotorStop) {
        emit doROX(address(), motor(), CommandNumber::MotorStop, 0);
    } else {
        move(MoveType::Relative, 0);
    }
}

void WPositionControl::on_btnClear_clicked()
{
    emit changeValue(address(), motor(), m_apActualPosition, 0);
    emit actualPositionChange(address(), motor(), 0);
}

void WPositionControl::on_btnClearOnNull_clicked()
{
    emit changeValue(address(), motor(), m_apClearOnNullWithoutTip, 1);
    emit changeValue(address(), motor(), m_apClearOnNull, 1);
}

void WPositionControl::move(char moveType, int value)
{
    emit doMove(address(), motor(), CommandNumber::MoveToPosition, moveType, value);
    emit targetPositionChange(address(), motor(), moveType, value);
}
