#pragma once

#include <QWidget>

#include <memory>

class ConnectionButtons;
class DeviceList;

namespace Ui {
class WConnection;
}

/// Panel to choose a USB device from a list and to connect to it.
///
/// It holds no connection itself. It tells the user's choice by openDevice() and shows by its two
/// buttons what it last heard: the buttons turn to connected at once when "Connect" is pressed,
/// and whoever fails to open the device turns them back by showDisconnected().
class WConnection : public QWidget
{
    Q_OBJECT

public:
    /// An empty list, both buttons disabled, titled "Connection".
    explicit WConnection(QWidget *parent = nullptr);
    /// The same without a parent, titled @p title.
    explicit WConnection(const QString &title);
    ~WConnection() override;

    /// Appends a device to the list; the first one enables "Connect". Of @p description (which may
    /// be empty) the first word is shown. A port that is listed already is listed twice.
    void addDevice(const QString &port, const QString &description);
    /// Removes the first entry of @p port, if there is one. If it is the chosen one, the buttons
    /// go back to disconnected; with the list empty, both are disabled.
    void removeDevice(const QString &port);
    /// Empties the list and leaves the buttons as they are.
    void clearDevices();
    /// Shows that the device is open: only "Disconnect" can be pressed.
    void showConnected();
    /// Shows that no device is open: only "Connect" can be pressed.
    void showDisconnected();
    /// Sets the title of the group box.
    void setTitle(const QString &title);

signals:
    /// The user wants to connect to @p port, one of those given to addDevice().
    void openDevice(QString port);
    /// The user wants to end the connection.
    void closeDevice();

public slots:
    /// Asks for the chosen device to be opened; does nothing if none is chosen.
    void on_btnConnect_clicked();
    /// Asks for the connection to be closed.
    void on_btnDisconnect_clicked();
    /// Does what showDisconnected() does.
    void deviceClosed();

private:
    std::unique_ptr<Ui::WConnection> m_ui;
    std::unique_ptr<ConnectionButtons> m_buttons;
    std::unique_ptr<DeviceList> m_devices;
};
