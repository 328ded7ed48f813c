#include "panels/WDirectMode.h"

#include "ui_WDirectMode.h"

using namespace Qt::StringLiterals;

namespace {

struct CommandItem
{
    int number;
    QLatin1String mnemonic;
};

/// The commands that the panel offers, in the order of the list. The numbers between them are not
/// for the user.
constexpr CommandItem CommandItems[] = {
    {1, "ROR"_L1},   {2, "ROL"_L1},   {3, "MST"_L1},  {4, "MVP"_L1},   {5, "SAP"_L1},
    {6, "GAP"_L1},   {7, "STAP"_L1},  {8, "RSAP"_L1}, {9, "SGP"_L1},   {10, "GGP"_L1},
    {11, "STGP"_L1}, {12, "RSGP"_L1}, {13, "RFS"_L1}, {14, "SIO"_L1},  {15, "GIO"_L1},
    {19, "CALC"_L1}, {20, "COMP"_L1}, {21, "JC"_L1},  {22, "JA"_L1},   {23, "CSUB"_L1},
    {24, "RSUB"_L1}, {25, "EI"_L1},   {26, "DI"_L1},  {27, "WAIT"_L1}, {28, "STOP"_L1},
    {29, "SAC"_L1},  {30, "SCO"_L1},  {31, "GCO"_L1}, {32, "CCO"_L1},  {33, "CALCX"_L1},
    {34, "AAP"_L1},  {35, "AGP"_L1},  {36, "CLE"_L1}, {37, "VECT"_L1}, {38, "RETI"_L1},
    {39, "ACO"_L1},  {64, "UF0"_L1},  {65, "UF1"_L1}, {66, "UF2"_L1},  {67, "UF3"_L1},
    {68, "UF4"_L1},  {69, "UF5"_L1},  {70, "UF6"_L1}, {71, "UF7"_L1},
};

} // namespace

WDirectMode::WDirectMode(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WDirectMode>())
{
    m_ui->setupUi(this);
    for (const CommandItem &item : CommandItems) {
        m_ui->cbCommand->addItem(QString::number(item.number) + " - "_L1 + item.mnemonic,
                                 item.number);
    }
}

WDirectMode::~WDirectMode() = default;

void WDirectMode::requestResult(char address, char motorBank, char command, char status, int value)
{
    showReply(address, motorBank, command, status, value);
}

void WDirectMode::requestedCommand(char address, char command, char type, char motorBank,
                                   char status, int value)
{
    if (command != m_lastCommand || type != m_lastType || motorBank != m_lastMotorBank) {
        return;
    }
    showReply(address, m_lastMotorBank, m_lastCommand, status, value);
    m_lastCommand = 0;
    m_lastType = 0;
    m_lastMotorBank = 0;
}

void WDirectMode::on_btnSend_clicked()
{
    // Kept before the signal: the handler answers within it.
    m_lastCommand = static_cast<char>(m_ui->cbCommand->currentData().toInt());
    m_lastType = static_cast<char>(m_ui->sbRequestType->value());
    m_lastMotorBank = static_cast<char>(m_ui->sbRequestMotorBank->value());
    emit doRequest(address(), m_lastCommand, m_lastType, m_lastMotorBank,
                   m_ui->sbRequestValue->value());
}

void WDirectMode::setAddress(char address)
{
    m_ui->sbRequestAddress->setValue(address);
}

char WDirectMode::address() const
{
    return static_cast<char>(m_ui->sbRequestAddress->value());
}

void WDirectMode::showReply(char address, char motorBank, char command, char status, int value)
{
    m_ui->sbReplyAddress->setValue(address);
    m_ui->sbReplyMotorBank->setValue(motorBank);
    m_ui->sbReplyCommand->setValue(command);
    m_ui->sbReplyType->setValue(status); // a reply has no type
    m_ui->sbReplyValue->setValue(value);
}
