#pragma once

#include "simulator/AxisParameters.h"
#include "simulator/Reply.h"
#include "simulator/Request.h"
#include "simulator/ValueBanks.h"

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
};

/// One simulated controller: turns requests into replies and holds the state behind them. It knows
/// nothing of lines, bytes and faults. Every operation may be called from every thread.
class Module
{
public:
    explicit Module(Identity identity = {});

    /// The module's own address.
    std::uint8_t address() const { return m_identity.address; }

    /// Carries out @p request and gives the answer. The address isn't looked at: who is meant is a
    /// matter of the line.
    Reply execute(const Request &request);

    /// Axis parameter @p number as a host would read it; nothing, if there is none.
    std::optional<std::int32_t> axisParameter(std::uint8_t number) const;
    /// Changes axis parameter @p number from inside the module, read-only ones included; what
    /// follows from it is brought up to date. False, if there is none.
    bool setAxisParameter(std::uint8_t number, std::int32_t value);
    /// See AxisParameters::setRange().
    bool setAxisParameterRange(std::uint8_t number, std::int32_t minimum, std::int32_t maximum);
    /// See AxisParameters::setLimitPolicy().
    void setLimitPolicy(LimitPolicy policy);

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
    Outcome readVersion(const Request &request);

    Outcome turnAt(std::int32_t velocity);
    std::int32_t axisValue(std::uint8_t number) const;
    void followAxisParameter(std::uint8_t number);

    mutable std::mutex m_mutex; // guards all below m_identity, which never changes
    const Identity m_identity;
    AxisParameters m_axis;
    ValueBanks m_globals;
    ValueBanks m_io;
};

} // namespace simulator
