#pragma once

#include <QWidget>

#include <memory>

class ConnectionButtons;
class DeviceList;

namespace Ui {
class WSerialConnection;
}

/// Panel to choose a serial (RS485) port, its baud rate and the address of the module, and to
/// connect through it.
///
/// It holds no connection itself. It tells the user's choice by openDevice() and shows by its two
/// buttons what it last heard: the buttons turn to connected at once when "Connect" is pressed,
/// and whoever fails to open the port turns them back by showDisconnected().
class WSerialConnection : public QWidget
{
    Q_OBJECT

public:
    /// An empty list, 9600 baud, address 1, both buttons disabled, titled "Serial Connection".
    explicit WSerialConnection(QWidget *parent = nullptr);
    /// The same without a parent, titled @p title.
    explicit WSerialConnection(const QString &title);
    ~WSerialConnection() override;

    /// Appends a port to the list; the first one enables "Connect". Of @p description (which may
    /// be empty) the first word is shown. A port that is listed already is listed twice.
    void addDevice(const QString &port, const QString &description);
    /// Removes the first entry of @p port, if there is one. If it is the chosen one, the buttons
    /// go back to disconnected; with the list empty, both are disabled.
    void removeDevice(const QString &port);
    /// Empties the list and leaves the buttons as they are.
    void clearDevices();
    /// Shows that the port is open: only "Disconnect" can be pressed.
    void showConnected();
    /// Shows that no port is open: only "Connect" can be pressed.
    void showDisconnected();
    /// Sets the title of the group box.
    void setTitle(const QString &title);

signals:
    /// The user wants to connect through @p port, one of those given to addDevice(), at
    /// @p baudrate (4800 to 115200 baud) to the module with @p address (0 to 255).
    void openDevice(QString port, int baudrate, int address);
    /// The user wants to end the connection.
    void closeDevice();

public slots:
    /// Asks for the chosen port to be opened; does nothing if none is chosen.
    void on_btnConnect_clicked();
    /// Asks for the connection to be closed.
    void on_btnDisconnect_clicked();

private:
    std::unique_ptr<Ui::WSerialConnection> m_ui;
    std::unique_ptr<ConnectionButtons> m_buttons;
    std::unique_ptr<DeviceList> m_devices;
};
