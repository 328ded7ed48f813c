#include "panels/WCANConnection.h"

#include "panels/ConnectionButtons.h"
#include "ui_WCANConnection.h"

namespace {

/// In kBit/s, in the order of the list.
constexpr int DefaultBitrates[] = {1000, 500, 250, 125, 100, 50, 20, 10};

} // namespace

WCANConnection::WCANConnection(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WCANConnection>())
{
    m_ui->setupUi(this);
    m_buttons = std::make_unique<ConnectionButtons>(m_ui->btnConnect, m_ui->btnDisconnect);
    for (const int bitrate : DefaultBitrates) {
        addBitrate(bitrate);
    }
}

WCANConnection::~WCANConnection() = default;

void WCANConnection::showConnected()
{
    m_buttons->showConnected();
}

void WCANConnection::showDisconnected()
{
    m_buttons->showDisconnected();
}

void WCANConnection::setTitle(const QString &title)
{
    m_ui->gbConnection->setTitle(title);
}

void WCANConnection::clearBitrates()
{
    m_ui->cmbBitrate->clear();
}

void WCANConnection::addBitrate(int kbit)
{
    m_ui->cmbBitrate->addItem(QString::number(kbit));
}

void WCANConnection::on_btnConnect_clicked()
{
    // Before the signal: whoever fails to open the channel has turned the buttons back on its
    // return.
    showConnected();
    emit openDevice(m_ui->cmbBitrate->currentText().toInt(), m_ui->sbSendId->value(),
                    m_ui->sbReceiveId->value());
}

void WCANConnection::on_btnDisconnect_clicked()
{
    showDisconnected();
    emit closeDevice();
}

void WCANConnection::deviceClosed()
{
    showDisconnected();
}
