#include "simulator/Module.h"

#include "simulator/AxisParameterTable.h"

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
constexpr std::int32_t modelNumber = 7710;

// Bits of the status word, AP 18.
constexpr std::int32_t positionReached = 1 << 0;
constexpr std::int32_t velocityReached = 1 << 1;
constexpr std::int32_t closedLoop = 1 << 2;
constexpr std::int32_t positionMode = 1 << 3;
constexpr std::int32_t velocityMode = 1 << 4;
constexpr std::int32_t torqueMode = 1 << 5;
constexpr std::int32_t modeBits =
    positionReached | velocityReached | positionMode | velocityMode | torqueMode;

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

std::int32_t scaledCurrent(std::int32_t scale)
{
    return static_cast<std::int32_t>(std::int64_t{scale} * fullScaleCurrent / 255);
}

} // namespace

struct Module::CommandEntry
{
    std::uint8_t command;
    bool forMotor; ///< motorBank is a motor, and there is only motor 0
    Outcome (Module::*carryOut)(const Request &);
};

Module::Module(Identity identity)
    : m_identity(std::move(identity))
    , m_globals(globalBanks())
    , m_io(ioBanks())
{
    followAxisParameter(axis::maxCurrent);
    followAxisParameter(axis::standbyCurrent);
    m_axis.set(axis::statusFlags, positionMode | positionReached);
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
    const Outcome outcome = turnAt(request.command == rotateLeft ? -request.value : request.value);
    return {outcome.status, request.value};
}

Module::Outcome Module::stop(const Request &request)
{
    turnAt(0);
    return {Status::Done, request.value};
}

Module::Outcome Module::moveToPosition(const Request &request)
{
    if (request.type != moveAbsolute && request.type != moveRelative) {
        return {Status::WrongType, request.value};
    }
    const std::int64_t start = request.type == moveRelative ? axisValue(axis::actualPosition) : 0;
    const std::int64_t target = start + request.value;
    if (target < -highest || target > highest) {
        return {Status::InvalidValue, request.value};
    }
    const Status status = m_axis.write(axis::targetPosition, static_cast<std::int32_t>(target));
    if (status == Status::Done) {
        followAxisParameter(axis::targetPosition);
    }
    return {status, request.value};
}

Module::Outcome Module::writeAxisParameter(const Request &request)
{
    const Status status = m_axis.write(request.type, request.value);
    if (status == Status::Done) {
        followAxisParameter(request.type);
        if (request.type == axis::actualPosition) {
            // It gives the place where the motor stands another number. Nothing is to move for it.
            m_axis.set(axis::targetPosition, axisValue(axis::actualPosition));
        }
    }
    return {status, m_axis.value(request.type).value_or(request.value)};
}

Module::Outcome Module::readAxisParameter(const Request &request)
{
    const auto value = m_axis.value(request.type);
    return {value ? Status::Done : Status::WrongType, value.value_or(0)};
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

Module::Outcome Module::turnAt(std::int32_t velocity)
{
    const Status status = m_axis.write(axis::targetVelocity, velocity);
    if (status == Status::Done) {
        followAxisParameter(axis::targetVelocity);
    }
    return {status, velocity};
}

std::int32_t Module::axisValue(std::uint8_t number) const
{
    return m_axis.value(number).value_or(0);
}

// What a new value of one parameter does to others. Motion takes no time here: what is wanted is
// reached at once.
void Module::followAxisParameter(std::uint8_t number)
{
    const std::int32_t value = axisValue(number);
    const auto enterMode = [this](std::int32_t bits) {
        m_axis.set(axis::statusFlags, (axisValue(axis::statusFlags) & ~modeBits) | bits);
    };
    switch (number) {
    case axis::targetPosition:
        m_axis.set(axis::targetVelocity, 0);
        m_axis.set(axis::actualVelocity, 0);
        m_axis.set(axis::actualPosition, value);
        enterMode(positionMode | positionReached);
        break;
    case axis::targetVelocity:
        m_axis.set(axis::actualVelocity, value);
        enterMode(velocityMode | velocityReached);
        break;
    case axis::targetPhaseCurrent:
        enterMode(torqueMode);
        break;
    case axis::maxCurrent:
        m_axis.set(axis::maxPhaseCurrent, scaledCurrent(value));
        break;
    case axis::standbyCurrent:
        m_axis.set(axis::standbyPhaseCurrent, scaledCurrent(value));
        break;
    case axis::closedLoopMode:
        m_axis.set(axis::statusFlags,
                   (axisValue(axis::statusFlags) & ~closedLoop) | (value != 0 ? closedLoop : 0));
        break;
    default:
        break;
    }
}

std::optional<std::int32_t> Module::axisParameter(std::uint8_t number) const
{
    const std::lock_guard lock(m_mutex);
    return m_axis.value(number);
}

bool Module::setAxisParameter(std::uint8_t number, std::int32_t value)
{
    const std::lock_guard lock(m_mutex);
    const bool known = m_axis.set(number, value);
    followAxisParameter(number);
    return known;
}

bool Module::setAxisParameterRange(std::uint8_t number, std::int32_t minimum, std::int32_t maximum)
{
    const std::lock_guard lock(m_mutex);
    return m_axis.setRange(number, minimum, maximum);
}

void Module::setLimitPolicy(LimitPolicy policy)
{
    const std::lock_guard lock(m_mutex);
    m_axis.setLimitPolicy(policy);
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
