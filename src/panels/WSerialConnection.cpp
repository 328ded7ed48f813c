#include "panels/WSerialConnection.h"

#include "panels/ConnectionButtons.h"
#include "panels/DeviceList.h"
#include "ui_WSerialConnection.h"

#include <QDebug>

#include <algorithm>
#include <array>

namespace {

/// Moves the letters of all labels together alike until the widest text fits its label. The labels
/// are of one fixed width, which not every font leaves room enough in. The font itself stays: each
/// other one would have to be loaded, which is the dearest part of the program's start.
void fitTexts(const std::array<QLabel *, 3> &labels)
{
    const auto fits = [](const QLabel *label) {
        return label->sizeHint().width() <= label->maximumWidth();
    };
    constexpr double Closest = -2.0; // pixels; still readable
    constexpr double Step = 0.25;
    for (double spacing = 0; spacing >= Closest && !std::all_of(labels.begin(), labels.end(), fits);
         spacing -= Step) {
        for (QLabel *label : labels) {
            QFont font = label->font();
            font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
            label->setFont(font);
        }
    }
}

} // namespace

WSerialConnection::WSerialConnection(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WSerialConnection>())
{
    m_ui->setupUi(this);
    fitTexts({m_ui->lblPort, m_ui->lblBaudrate, m_ui->lblAddress});
    m_buttons = std::make_unique<ConnectionButtons>(m_ui->btnConnect, m_ui->btnDisconnect);
    m_devices = std::make_unique<DeviceList>(m_ui->cmbDevices, *m_buttons);
}

WSerialConnection::WSerialConnection(const QString &title)
    : WSerialConnection()
{
    setTitle(title);
}

WSerialConnection::~WSerialConnection() = default;

void WSerialConnection::addDevice(const QString &port, const QString &description)
{
    qDebug().nospace() << "WSerialConnection::addDevice(" << port << ", " << description << ")";
    m_devices->add(port, description);
}

void WSerialConnection::removeDevice(const QString &port)
{
    m_devices->remove(port);
}

void WSerialConnection::clearDevices()
{
    m_devices->clear();
}

void WSerialConnection::showConnected()
{
    m_buttons->showConnected();
}

void WSerialConnection::showDisconnected()
{
    m_buttons->showDisconnected();
}

void WSerialConnection::setTitle(const QString &title)
{
    m_ui->gbSerialConnection->setTitle(title);
}

void WSerialConnection::on_btnConnect_clicked()
{
    const std::optional<QString> port = m_devices->currentPort();
    if (!port) {
        return;
    }
    qDebug().nospace() << "connect to: " << *port;
    // Before the signal: whoever fails to open the port has turned the buttons back on its return.
    showConnected();
    emit openDevice(*port, m_ui->cmbBaudrates->currentText().toInt(), m_ui->sbAddress->value());
}

void WSerialConnection::on_btnDisconnect_clicked()
{
    showDisconnected();
    emit closeDevice();
}
