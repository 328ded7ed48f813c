#include "simulator/can/CanBus.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

struct Speed
{
    std::int64_t code;
    int kiloBitsPerSecond;
};

constexpr std::array<Speed, 7> speeds{{
    {-1, 1000},
    {-2, 500},
    {-3, 250},
    {-4, 125},
    {-5, 100},
    {-7, 50},
    {-9, 10},
}};

constexpr std::int64_t addressMask = 0xff;

CanAnswer answer(CanStatus status)
{
    return {static_cast<std::int32_t>(status), {}};
}

} // namespace

CanBus::CanBus(Module &module, int kiloBitsPerSecond)
    : m_modulesSpeed(kiloBitsPerSecond)
    , m_endpoint(module, m_faults, m_canFaults)
{
}

bool CanBus::hasSpeed(int kiloBitsPerSecond)
{
    return std::any_of(speeds.begin(), speeds.end(), [kiloBitsPerSecond](const Speed &speed) {
        return speed.kiloBitsPerSecond == kiloBitsPerSecond;
    });
}

CanAnswer CanBus::execute(int caller, const CanCall &call)
{
    const CanAnswer result = carryOut(caller, call);
    m_calls.append(call.toText() + " = " + std::to_string(result.result));
    return result;
}

void CanBus::leave(int caller)
{
    if (m_owner == caller) {
        m_onBus = false;
        m_owner.reset();
    }
}

CanAnswer CanBus::carryOut(int caller, const CanCall &call)
{
    if (call.function == CanFunction::InitializeLibrary) {
        return answer(CanStatus::Done);
    }
    if (call.function == CanFunction::OpenChannel) {
        return {openChannel(caller, call), {}};
    }
    if (m_owner != caller || call.arguments[0] != m_lastHandle) {
        return answer(CanStatus::WrongHandle);
    }
    switch (call.function) {
    case CanFunction::SetBusParams:
        return answer(setSpeed(call));
    case CanFunction::BusOn:
        return answer(busOn());
    case CanFunction::BusOff:
        return answer(busOff());
    case CanFunction::Write:
        return answer(write(call));
    case CanFunction::Read:
        return read();
    default:
        return answer(close());
    }
}

// Every opening gets a handle of its own, so that one that is over can be told from the next.
std::int32_t CanBus::openChannel(int caller, const CanCall &call)
{
    if (isRefused(CanFault::NoChannel) || call.arguments[0] != 0) {
        return static_cast<std::int32_t>(CanStatus::NoChannel);
    }
    if (m_owner) {
        return static_cast<std::int32_t>(CanStatus::ChannelInUse);
    }
    m_owner = caller;
    return ++m_lastHandle;
}

CanStatus CanBus::close()
{
    if (isRefused(CanFault::CloseRefused)) {
        return CanStatus::Refused;
    }
    m_onBus = false;
    m_owner.reset();
    return CanStatus::Done;
}

CanStatus CanBus::setSpeed(const CanCall &call)
{
    const auto speed = std::find_if(speeds.begin(), speeds.end(), [&call](const Speed &candidate) {
        return candidate.code == call.arguments[1];
    });
    if (isRefused(CanFault::SpeedRefused)) {
        return CanStatus::Refused;
    }
    if (speed == speeds.end()) {
        return CanStatus::NoSuchSpeed;
    }
    m_speed = speed->kiloBitsPerSecond;
    return CanStatus::Done;
}

CanStatus CanBus::busOn()
{
    if (isRefused(CanFault::OnRefused)) {
        return CanStatus::Refused;
    }
    // What was on the bus before is over.
    while (m_endpoint.takeDue(CanEndpoint::Clock::now())) { }
    m_onBus = true;
    return CanStatus::Done;
}

CanStatus CanBus::busOff()
{
    if (isRefused(CanFault::OffRefused)) {
        return CanStatus::Refused;
    }
    m_onBus = false;
    return CanStatus::Done;
}

CanStatus CanBus::write(const CanCall &call)
{
    if (!m_onBus) {
        return CanStatus::OffBus;
    }
    CanFrame frame;
    frame.identifier = static_cast<std::uint16_t>(call.arguments[1] & addressMask);
    frame.length = static_cast<std::uint8_t>(
        std::clamp<std::int64_t>(call.arguments[2], 0, std::int64_t{maxFrameLength}));
    frame.data = call.data;
    m_frames.append((modulesSpeed() ? "can < " : "can ? ") + frame.toText());
    if (modulesSpeed()) {
        m_endpoint.receive(frame, CanEndpoint::Clock::now());
    }
    return CanStatus::Done;
}

CanAnswer CanBus::read()
{
    if (!m_onBus) {
        return answer(CanStatus::OffBus);
    }
    const std::optional<CanFrame> frame = m_endpoint.takeDue(CanEndpoint::Clock::now());
    if (!frame || !modulesSpeed()) {
        return answer(CanStatus::NoFrame);
    }
    m_frames.append("can > " + frame->toText());
    return {static_cast<std::int32_t>(CanStatus::Done), *frame};
}

bool CanBus::isRefused(CanFault fault)
{
    return m_canFaults.take(fault).has_value();
}

bool CanBus::modulesSpeed() const
{
    return m_modulesSpeed == 0 || m_speed == m_modulesSpeed;
}

} // namespace simulator
