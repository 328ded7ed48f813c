#pragma once

#include "simulator/can/CanFrame.h"

#include <array>
#include <cstdint>
#include <string>

namespace simulator {

/// The environment variable that names the local socket of the simulated bus.
inline constexpr const char *canBusVariable = "ZDR_SIMULATED_CAN_BUS";

/// The functions of a CAN library, in the order in which a program needs them.
enum class CanFunction : std::uint8_t {
    InitializeLibrary,
    OpenChannel,
    SetBusParams,
    BusOn,
    Write,
    Read,
    BusOff,
    Close,
};

/// One call of a CAN library's function, as it goes over the local socket to the simulated bus.
/// Both sides are built together, so the records go as they lie in memory, one a packet.
struct CanCall
{
    /// The arguments in their order, but for the data: of Read, after the handle, only whether
    /// flags and time were asked for.
    std::array<std::int64_t, 7> arguments{};
    std::array<std::uint8_t, maxFrameLength> data{}; ///< of Write
    CanFunction function = CanFunction::InitializeLibrary;

    /// The call as a line of a program, "canWrite(1, -56, 06 01 00 00 00 00 00 03, 8, 0)".
    std::string toText() const;
};

/// The codes with which calls fail. They are this library's own: a program may only rely on their
/// being negative.
enum class CanStatus : std::int32_t {
    Done = 0,
    NoBus = -31, ///< no simulated bus listens at the socket
    NoChannel = -32, ///< there is no such channel
    ChannelInUse = -33, ///< somebody has it open already
    WrongHandle = -34, ///< the caller has no such channel open
    NoSuchSpeed = -35, ///< not one of the codes of a speed
    OffBus = -36, ///< the channel isn't on the bus
    NoFrame = -37, ///< nothing was received
    Refused = -38, ///< a fault has it so
};

/// What comes back.
struct CanAnswer
{
    std::int32_t result = 0; ///< a handle, or a CanStatus
    CanFrame frame; ///< of Read
};

} // namespace simulator
