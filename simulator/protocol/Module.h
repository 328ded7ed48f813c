#pragma once

#include "simulator/axis/Axis.h"
#include "simulator/protocol/Reply.h"
#include "simulator/protocol/Request.h"
#include "simulator/protocol/ValueBanks.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace simulator {

/// Who a module is.
struct Identity
{
    std::uint8_t address = 1; ///< own address on the line
    std::uint8_t replyAddress = 2; ///< the host that it answers to
    std::string versionText = "7710V105"; ///< the first eight characters count, padded with zeros
    std::uint8_t majorVersion = 1;
    std::uint8_t minorVersion = 5;

    /// The same module at another address.
    Identity at(std::uint8_t otherAddress) const
    {
        Identity other = *this;
        other.address = otherAddress;
        return other;
    }
};

/// One simulated controller: turns requests into replies and holds the state behind them. It knows
/// nothing of lines, bytes and faults. Nothing happens between two calls: each first makes up for
/// the time that passed since the one before. Every operation may be called from every thread.
class Module
{
public:
    /// @p clock is the time that the module lives in; it is asked at every call.
    explicit Module(Identity identity = {}, TimeSource clock = std::chrono::steady_clock::now);

    /// The module's own address.
    std::uint8_t address() const { return m_identity.address; }

    /// Carries out @p request and gives the answer. The address isn't looked at: who is meant is a
    /// matter of the line.
    Reply execute(const Request &request);

    /// Axis parameter @p number as a host would read it; nothing, if there is none.
    std::optional<std::int32_t> axisParameter(std::uint8_t number);
    /// See Axis::set().
    bool setAxisParameter(std::uint8_t number, std::int32_t value);
    /// See Axis::release().
    bool releaseAxisParameter(std::uint8_t number);
    /// See AxisParameters::setRange().
    bool setAxisParameterRange(std::uint8_t number, std::int32_t minimum, std::int32_t maximum);
    /// See AxisParameters::setLimitPolicy().
    void setLimitPolicy(LimitPolicy policy);
    /// See Axis::placeSwitch().
    void placeSwitch(Axis::Switch which, std::optional<std::int32_t> position);
    /// See Axis::chooseEncoder().
    void chooseEncoder(EncoderFate fate, std::chrono::milliseconds duration);
    /// Starts the noise on the currents anew, as @p seed gives it.
    void setSeed(std::uint32_t seed);

    /// Global parameter @p number of @p bank; nothing, if there is none.
    std::optional<std::int32_t> globalParameter(std::uint8_t bank, std::uint8_t number) const;
    /// Changes a global parameter from inside the module. False, if there is none.
    bool setGlobalParameter(std::uint8_t bank, std::uint8_t number, std::int32_t value);

    /// I/O port @p port of @p bank; nothing, if there is none.
    std::optional<std::int32_t> ioValue(std::uint8_t bank, std::uint8_t port) const;
    /// Changes a port from inside the module, inputs included. False, if there is none.
    bool setIoValue(std::uint8_t bank, std::uint8_t port, std::int32_t value);

private:
    struct CommandEntry;
    struct Outcome
    {
        Status status = Status::Done;
        std::int32_t value = 0;
    };

    Outcome rotate(const Request &request);
    Outcome stop(const Request &request);
    Outcome moveToPosition(const Request &request);
    Outcome writeAxisParameter(const Request &request);
    Outcome readAxisParameter(const Request &request);
    Outcome writeGlobalParameter(const Request &request);
    Outcome readGlobalParameter(const Request &request);
    Outcome writeIo(const Request &request);
    Outcome readIo(const Request &request);
    Outcome writeCoordinate(const Request &request);
    Outcome readCoordinate(const Request &request);
    Outcome captureCoordinate(const Request &request);
    Outcome readVersion(const Request &request);

    /// The axis, with all time made up for. Under the lock only.
    Axis &axisNow();

    mutable std::mutex m_mutex; // guards all below that isn't const
    const Identity m_identity;
    const TimeSource m_clock;
    Axis m_axis;
    ValueBanks m_coordinates; // a bank a motor
    ValueBanks m_globals;
    ValueBanks m_io;
};

} // namespace simulator
