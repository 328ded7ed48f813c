#pragma once

#include "comm/can/CanLink.h"

#include <QByteArray>
#include <QString>

/// A CAN interface of this machine.
///
/// Speeds go through libsocketcan. Where the program was built without it, the speed is unknown and
/// can't be set.
class KernelCanLink : public CanLink
{
public:
    /// @param name of the interface, such as "can0"
    explicit KernelCanLink(const QString &name);

    bool isUp() const override;
    bool setUp(bool up) override;
    std::optional<unsigned int> bitRate() const override;
    bool setBitRate(unsigned int bitsPerSecond) override;
    int openSocket() override;

private:
    QByteArray m_name;
};

/// Name of the first CAN interface in the order of the names; empty, if there is none.
/// @param directory where the kernel lists its network interfaces
QString firstCanInterface(const QString &directory = QStringLiteral("/sys/class/net"));

/// Whether the kernel speaks CAN at all.
bool kernelHasCan();
