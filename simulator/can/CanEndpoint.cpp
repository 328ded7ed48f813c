#include "simulator/can/CanEndpoint.h"

#include "simulator/protocol/BigEndian.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr std::uint8_t lastByte = 3;
constexpr std::uint8_t garbageByte = 0xa5;

Request requestOf(const CanFrame &frame)
{
    Request request;
    request.address = static_cast<std::uint8_t>(frame.identifier);
    request.command = frame.data[0];
    request.type = frame.data[1];
    request.motorBank = frame.data[2];
    request.value = readBigEndian(std::span(frame.data).subspan<3, 4>());
    return request;
}

CanFrame frameOf(const Reply &reply)
{
    CanFrame frame;
    frame.identifier = reply.replyAddress;
    if (reply.text) {
        std::transform(reply.text->begin(), reply.text->end(), frame.data.begin(),
                       [](char character) { return static_cast<std::uint8_t>(character); });
        return frame;
    }
    frame.data = {reply.moduleAddress, reply.status, reply.command};
    writeBigEndian(reply.value, std::span(frame.data).subspan<3, 4>());
    frame.data.back() = lastByte;
    return frame;
}

CanFrame garbageFrame(std::uint16_t identifier, std::size_t length)
{
    CanFrame frame{identifier, static_cast<std::uint8_t>(length), {}};
    std::fill_n(frame.data.begin(), length, garbageByte);
    return frame;
}

} // namespace

CanEndpoint::CanEndpoint(Module &module, FaultPlan &faults, CanFaultPlan &canFaults)
    : m_module(module)
    , m_faults(faults)
    , m_canFaults(canFaults)
{
}

void CanEndpoint::receive(const CanFrame &frame, Clock::time_point now)
{
    if (frame.identifier != m_module.address() || frame.length != maxFrameLength
        || frame.data.back() != lastByte) {
        return;
    }
    Reply reply = m_module.execute(requestOf(frame));
    const ExchangeFaults faults = m_faults.next();
    const std::optional<int> foreign = m_canFaults.take(CanFault::Foreign);
    const std::optional<int> moduleId = m_canFaults.take(CanFault::ModuleId);

    const Clock::time_point due = now + faults.delay;
    if (foreign) {
        send(garbageFrame(static_cast<std::uint16_t>(*foreign), maxFrameLength), due);
    }
    if (faults.silence) {
        return;
    }
    reply.status = faults.status.value_or(reply.status);
    reply.moduleAddress = static_cast<std::uint8_t>(moduleId.value_or(reply.moduleAddress));
    CanFrame answer = frameOf(reply);
    if (faults.wrongChecksum) {
        answer.data.back() = static_cast<std::uint8_t>(~answer.data.back());
    }
    // As many bytes too short as a datagram is to be. Nothing on a bus is longer than eight bytes.
    const std::size_t missing = datagramSize - std::min(faults.length, datagramSize);
    answer.length = static_cast<std::uint8_t>(maxFrameLength - std::min(missing, maxFrameLength));
    for (int copy = 0; copy < faults.copies; ++copy) {
        send(answer, due);
    }
    for (std::size_t rest = faults.garbage; rest > 0;) {
        const std::size_t length = std::min(rest, maxFrameLength);
        send(garbageFrame(answer.identifier, length), due);
        rest -= length;
    }
}

std::optional<CanEndpoint::Clock::time_point> CanEndpoint::nextDue() const
{
    return m_pending.empty() ? std::nullopt : std::optional(m_pending.front().due);
}

std::optional<CanFrame> CanEndpoint::takeDue(Clock::time_point now)
{
    if (m_pending.empty() || m_pending.front().due > now) {
        return std::nullopt;
    }
    const CanFrame frame = m_pending.front().frame;
    m_pending.pop_front();
    return frame;
}

// A module does one thing after the other: no reply overtakes the one before.
void CanEndpoint::send(const CanFrame &frame, Clock::time_point due)
{
    if (!m_pending.empty()) {
        due = std::max(due, m_pending.back().due);
    }
    m_pending.push_back({due, frame});
}

} // namespace simulator
