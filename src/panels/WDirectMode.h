#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class WDirectMode;
}

/// Console for one raw command: a row of fields for the request, one for the reply.
///
/// The panel checks nothing, waits for nothing and reports nothing. "Send" always sends the whole
/// row; the reply row keeps what it shows until the next reply arrives.
///
/// Addresses, commands, types, banks and status codes are signed bytes and widen by sign: a byte of
/// 128 or above reaches its field as a negative number, which the field (0 to 255) shows as 0.
class WDirectMode : public QWidget
{
    Q_OBJECT

public:
    /// Address 1, the first command, all numbers 0.
    explicit WDirectMode(QWidget *parent = nullptr);
    ~WDirectMode() override;

    /// Sets the address that requests go to. One of 128 or above becomes 0, see above.
    void setAddress(char address);
    /// The address that requests go to, as a byte.
    char address() const;

signals:
    /// The user wants to send a command. Numbers above 127 come as the same byte, so as negative
    /// ones.
    void doRequest(char address, char command, char type, char motorBank, int value);

public slots:
    /// Shows a reply, whatever was asked for last. The field "Type" shows @p status, since a reply
    /// has no type.
    void requestResult(char address, char motorBank, char command, char status, int value);
    /// Shows a reply if @p command, @p type and @p motorBank are those of the last request, and
    /// then forgets that request: the same reply is not shown twice.
    void requestedCommand(char address, char command, char type, char motorBank, char status,
                          int data);
    /// Sends the request row by doRequest().
    void on_btnSend_clicked();

private:
    void showReply(char address, char motorBank, char command, char status, int value);

    std::unique_ptr<Ui::WDirectMode> m_ui;
    char m_lastCommand = 0;
    char m_lastType = 0;
    char m_lastMotorBank = 0;
};
