#include "panels/ConnectionButtons.h"

#include <QPushButton>

ConnectionButtons::ConnectionButtons(QPushButton *connectButton, QPushButton *disconnectButton)
    : m_connect(connectButton)
    , m_disconnect(disconnectButton)
{
}

// A button that is disabled hands the keyboard focus on to the next enabled control. So the other
// one is enabled first: who works by keyboard gets from "Connect" to "Disconnect".

void ConnectionButtons::showConnected()
{
    m_disconnect->setEnabled(true);
    m_connect->setEnabled(false);
}

void ConnectionButtons::showDisconnected()
{
    m_connect->setEnabled(true);
    m_disconnect->setEnabled(false);
}

void ConnectionButtons::setConnectEnabled(bool enabled)
{
    m_connect->setEnabled(enabled);
}
