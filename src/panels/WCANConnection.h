#pragma once

#include <QWidget>

#include <memory>

class ConnectionButtons;

namespace Ui {
class WCANConnection;
}

/// Panel to choose the bit rate and the identifiers of a CAN connection, and to connect.
///
/// It holds no connection itself. It tells the user's choice by openDevice() and shows by its two
/// buttons what it last heard: the buttons turn to connected at once when "Connect" is pressed,
/// and whoever fails to open the channel turns them back by showDisconnected().
class WCANConnection : public QWidget
{
    Q_OBJECT

public:
    /// Eight bit rates with 1000 kBit/s chosen, send identifier 1, receive identifier 2, ready to
    /// connect (no device has to turn up first), titled "CAN".
    explicit WCANConnection(QWidget *parent = nullptr);
    ~WCANConnection() override;

    /// Shows that the channel is open: only "Disconnect" can be pressed.
    void showConnected();
    /// Shows that no channel is open: only "Connect" can be pressed.
    void showDisconnected();
    /// Sets the title of the group box.
    void setTitle(const QString &title);
    /// Empties the list of bit rates.
    void clearBitrates();
    /// Appends @p kbit, in kBit/s, to the list of bit rates. The first one becomes the chosen one.
    void addBitrate(int kbit);

signals:
    /// The user wants to connect at @p bitrate kBit/s (0 if the list is empty) with the given
    /// identifiers, each 0 to 255.
    void openDevice(int bitrate, int sendID, int receiveID);
    /// The user wants to end the connection.
    void closeDevice();

public slots:
    /// Asks for the channel to be opened.
    void on_btnConnect_clicked();
    /// Asks for the connection to be closed.
    void on_btnDisconnect_clicked();
    /// Does what showDisconnected() does.
    void deviceClosed();

private:
    std::unique_ptr<Ui::WCANConnection> m_ui;
    std::unique_ptr<ConnectionButtons> m_buttons;
};
