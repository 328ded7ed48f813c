#pragma once

class QPushButton;

/// The "Connect" and "Disconnect" buttons of a connection panel. Which of them is enabled is the
/// panel's only display of the state of its connection.
class ConnectionButtons
{
public:
    /// Works on two buttons that the form owns; they must outlive this object.
    ConnectionButtons(QPushButton *connectButton, QPushButton *disconnectButton);

    /// Only "Disconnect" can be pressed.
    void showConnected();
    /// Only "Connect" can be pressed.
    void showDisconnected();
    /// Lets "Connect" be pressed or not; "Disconnect" stays as it is.
    void setConnectEnabled(bool enabled);

private:
    QPushButton *m_connect;
    QPushButton *m_disconnect;
};
