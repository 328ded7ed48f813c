#include "simulator/protocol/Module.h"

#include "simulator/axis/AxisParameterTable.h"

#include <algorithm>
#include <array>
#include <limits>

namespace simulator {

namespace {

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

constexpr std::uint8_t rotateLeft = 2;
constexpr std::uint8_t readVersionCommand = 136;
constexpr std::uint8_t versionAsText = 0;
constexpr std::uint8_t versionAsNumber = 1;
constexpr std::uint8_t moveAbsolute = 0;
constexpr std::uint8_t moveRelative = 1;
constexpr std::uint8_t moveToCoordinate = 2;
constexpr std::int32_t modelNumber = 7710;

// User variables and the module's own settings.
std::vector<Bank> globalBanks()
{
    return {{0, 256, lowest, highest, true},
            {1, 256, lowest, highest, true},
            {2, 256, lowest, highest, true},
            {3, 256, lowest, highest, true}};
}

// Digital inputs, analogue inputs (12 bits) and digital outputs.
std::vector<Bank> ioBanks()
{
    return {{0, 8, 0, 1, false}, {1, 8, 0, 4095, false}, {2, 8, 0, 1, true}};
}

// Positions by number, for MVP.
std::vector<Bank> coordinateBank()
{
    return {{0, 21, -highest, highest, true}};
}

} // namespace

struct Module::CommandEntry
{
    std::uint8_t command;
    bool forMotor; ///< motorBank is a motor, and there is only motor 0
    Outcome (Module::*carryOut)(const Request &);
};

Module::Module(Identity identity, TimeSource clock)
    : m_identity(std::move(identity))
    , m_clock(std::move(clock))
    , m_axis(m_clock())
    , m_coordinates(coordinateBank())
    , m_globals(globalBanks())
    , m_io(ioBanks())
{
}

Reply Module::execute(const Request &request)
{
    static constexpr auto commands = std::to_array<CommandEntry>({
        {1, true, &Module::rotate}, // ROR
        {rotateLeft, true, &Module::rotate}, // ROL
        {3, true, &Module::stop}, // MST
        {4, true, &Module::moveToPosition}, // MVP
        {5, true, &Module::writeAxisParameter}, // SAP
        {6, true, &Module::readAxisParameter}, // GAP
        {9, false, &Module::writeGlobalParameter}, // SGP
        {10, false, &Module::readGlobalParameter}, // GGP
        {14, false, &Module::writeIo}, // SIO
        {15, false, &Module::readIo}, // GIO
        {30, true, &Module::writeCoordinate}, // SCO
        {31, true, &Module::readCoordinate}, // GCO
        {32, true, &Module::captureCoordinate}, // CCO
        {readVersionCommand, false, &Module::readVersion},
    });

    const auto entry =
        std::find_if(commands.begin(), commands.end(), [&request](const CommandEntry &candidate) {
            return candidate.command == request.command;
        });
    const std::lock_guard lock(m_mutex);
    Outcome outcome{Status::Done, request.value};
    if (!request.intact) {
        outcome.status = Status::WrongChecksum;
    } else if (entry == commands.end()) {
        outcome.status = Status::InvalidCommand;
    } else if (entry->forMotor && request.motorBank != 0) {
        outcome.status = Status::InvalidValue;
    } else {
        outcome = (this->*entry->carryOut)(request);
    }

    Reply reply;
    reply.replyAddress = m_identity.replyAddress;
    reply.moduleAddress = m_identity.address;
    reply.status = static_cast<std::uint8_t>(outcome.status);
    reply.command = request.command;
    reply.value = outcome.value;
    if (outcome.status == Status::Done && request.command == readVersionCommand
        && request.type == versionAsText) {
        reply.text.emplace();
        m_identity.versionText.copy(reply.text->data(), reply.text->size());
    }
    return reply;
}

Module::Outcome Module::rotate(const Request &request)
{
    if (request.type != 0) {
        return {Status::WrongType, request.value};
    }
    if (request.command == rotateLeft && request.value == lowest) {
        return {Status::InvalidValue, request.value}; // it has no opposite
    }
    const std::int32_t velocity = request.command == rotateLeft ? -request.value : request.value;
    return {axisNow().write(axis::targetVelocity, velocity), request.value};
}

Module::Outcome Module::stop(const Request &request)
{
    return {axisNow().write(axis::targetVelocity, 0), request.value};
}

Module::Outcome Module::moveToPosition(const Request &request)
{
    std::int64_t target = request.value;
    if (request.type == moveRelative) {
        target += axisNow().read(axis::actualPosition).value_or(0);
    } else if (request.type == moveToCoordinate) {
        const bool exists = request.value >= 0 && request.value <= 255;
        const auto coordinate = exists
            ? m_coordinates.value(0, static_cast<std::uint8_t>(request.value))
            : std::nullopt;
        if (!coordinate) {
            return {Status::InvalidValue, request.value};
        }
        target = *coordinate;
    } else if (request.type != moveAbsolute) {
        return {Status::WrongType, request.value};
    }
    if (target < -highest || target > highest) {
        return {Status::InvalidValue, request.value};
    }
    return {axisNow().write(axis::targetPosition, static_cast<std::int32_t>(target)),
            request.value};
}

Module::Outcome Module::writeAxisParameter(const Request &request)
{
    const Status status = axisNow().write(request.type, request.value);
    return {status, m_axis.read(request.type).value_or(request.value)};
}

Module::Outcome Module::readAxisParameter(const Request &request)
{
    const auto value = axisNow().read(request.type);
    return {value ? Status::Done : Status::WrongType, value.value_or(0)};
}

Module::Outcome Module::writeCoordinate(const Request &request)
{
    const Status status = m_coordinates.write(0, request.type, request.value);
    return {status, m_coordinates.value(0, request.type).value_or(request.value)};
}

Module::Outcome Module::readCoordinate(const Request &request)
{
    const auto value = m_coordinates.value(0, request.type);
    return {value ? Status::Done : Status::WrongType, value.value_or(0)};
}

Module::Outcome Module::captureCoordinate(const Request &request)
{
    const std::int32_t position = axisNow().read(axis::actualPosition).value_or(0);
    const bool exists = m_coordinates.set(0, request.type, position);
    return {exists ? Status::Done : Status::WrongType, exists ? position : request.value};
}

Module::Outcome Module::writeGlobalParameter(const Request &request)
{
    const Status status = m_globals.write(request.motorBank, request.type, request.value);
    return {status, m_globals.value(request.motorBank, request.type).value_or(request.value)};
}

Module::Outcome Module::readGlobalParameter(const Request &request)
{
    const auto value = m_globals.value(request.motorBank, request.type);
    return {value ? Status::Done : Status::WrongType, value.value_or(0)};
}

Module::Outcome Module::writeIo(const Request &request)
{
    const Status status = m_io.write(request.motorBank, request.type, request.value);
    return {status, m_io.value(request.motorBank, request.type).value_or(request.value)};
}

Module::Outcome Module::readIo(const Request &request)
{
    const auto value = m_io.value(request.motorBank, request.type);
    return {value ? Status::Done : Status::WrongType, value.value_or(0)};
}

Module::Outcome Module::readVersion(const Request &request)
{
    if (request.type != versionAsText && request.type != versionAsNumber) {
        return {Status::WrongType, 0};
    }
    return {Status::Done,
            modelNumber << 16 | m_identity.majorVersion << 8 | m_identity.minorVersion};
}

Axis &Module::axisNow()
{
    m_axis.advanceTo(m_clock());
    return m_axis;
}

std::optional<std::int32_t> Module::axisParameter(std::uint8_t number)
{
    const std::lock_guard lock(m_mutex);
    return axisNow().read(number);
}

bool Module::setAxisParameter(std::uint8_t number, std::int32_t value)
{
    const std::lock_guard lock(m_mutex);
    return axisNow().set(number, value);
}

bool Module::releaseAxisParameter(std::uint8_t number)
{
    const std::lock_guard lock(m_mutex);
    return axisNow().release(number);
}

bool Module::setAxisParameterRange(std::uint8_t number, std::int32_t minimum, std::int32_t maximum)
{
    const std::lock_guard lock(m_mutex);
    return m_axis.parameters().setRange(number, minimum, maximum);
}

void Module::setLimitPolicy(LimitPolicy policy)
{
    const std::lock_guard lock(m_mutex);
    m_axis.parameters().setLimitPolicy(policy);
}

void Module::placeSwitch(Axis::Switch which, std::optional<std::int32_t> position)
{
    const std::lock_guard lock(m_mutex);
    axisNow().placeSwitch(which, position);
}

void Module::chooseEncoder(EncoderFate fate, std::chrono::milliseconds duration)
{
    const std::lock_guard lock(m_mutex);
    axisNow().chooseEncoder(fate, duration);
}

void Module::setSeed(std::uint32_t seed)
{
    const std::lock_guard lock(m_mutex);
    m_axis.setSeed(seed);
}

std::optional<std::int32_t> Module::globalParameter(std::uint8_t bank, std::uint8_t number) const
{
    const std::lock_guard lock(m_mutex);
    return m_globals.value(bank, number);
}

bool Module::setGlobalParameter(std::uint8_t bank, std::uint8_t number, std::int32_t value)
{
    const std::lock_guard lock(m_mutex);
    return m_globals.set(bank, number, value);
}

std::optional<std::int32_t> Module::ioValue(std::uint8_t bank, std::uint8_t port) const
{
    const std::lock_guard lock(m_mutex);
    return m_io.value(bank, port);
}

bool Module::setIoValue(std::uint8_t bank, std::uint8_t port, std::int32_t value)
{
    const std::lock_guard lock(m_mutex);
    return m_io.set(bank, port, value);
}

} // namespace simulator
