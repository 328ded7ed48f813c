#include "panels/WConnection.h"

#include "panels/ConnectionButtons.h"
#include "panels/DeviceList.h"
#include "ui_WConnection.h"

#include <QDebug>

WConnection::WConnection(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WConnection>())
{
    m_ui->setupUi(this);
    m_buttons = std::make_unique<ConnectionButtons>(m_ui->btnConnect, m_ui->btnDisconnect);
    m_devices = std::make_unique<DeviceList>(m_ui->cmbDevices, *m_buttons);
}

WConnection::WConnection(const QString &title)
    : WConnection()
{
    setTitle(title);
}

WConnection::~WConnection() = default;

void WConnection::addDevice(const QString &port, const QString &description)
{
    qDebug().nospace() << "WConnection::addDevice(" << port << ", " << description << ")";
    m_devices->add(port, description);
}

void WConnection::removeDevice(const QString &port)
{
    m_devices->remove(port);
}

void WConnection::clearDevices()
{
    m_devices->clear();
}

void WConnection::showConnected()
{
    m_buttons->showConnected();
}

void WConnection::showDisconnected()
{
    m_buttons->showDisconnected();
}

void WConnection::setTitle(const QString &title)
{
    m_ui->gbConnection->setTitle(title);
}

void WConnection::on_btnConnect_clicked()
{
    const std::optional<QString> port = m_devices->currentPort();
    if (!port) {
        return;
    }
    qDebug().nospace() << "connect to: " << *port;
    // Before the signal: whoever fails to open the port has turned the buttons back on its return.
    showConnected();
    emit openDevice(*port);
}

void WConnection::on_btnDisconnect_clicked()
{
    showDisconnected();
    emit closeDevice();
}

void WConnection::deviceClosed()
{
    showDisconnected();
}
