#include "simulator/can/CanCall.h"

#include <span>

namespace simulator {

namespace {

std::string joined(std::span<const std::int64_t> numbers)
{
    std::string text;
    for (const std::int64_t number : numbers) {
        text += (text.empty() ? "" : ", ") + std::to_string(number);
    }
    return text;
}

/// All eight data bytes, however many of them are to go out.
std::string dataText(const CanCall &call)
{
    constexpr std::size_t dataStart = sizeof "000 [8]";
    return CanFrame{0, maxFrameLength, call.data}.toText().substr(dataStart);
}

} // namespace

std::string CanCall::toText() const
{
    const std::span<const std::int64_t> numbers(arguments);
    switch (function) {
    case CanFunction::InitializeLibrary:
        return "canInitializeLibrary()";
    case CanFunction::OpenChannel:
        return "canOpenChannel(" + joined(numbers.first(2)) + ")";
    case CanFunction::SetBusParams:
        return "canSetBusParams(" + joined(numbers) + ")";
    case CanFunction::BusOn:
        return "canBusOn(" + joined(numbers.first(1)) + ")";
    case CanFunction::Write:
        return "canWrite(" + joined(numbers.first(2)) + ", " + dataText(*this) + ", "
            + joined(numbers.subspan(2, 2)) + ")";
    case CanFunction::Read:
        return "canRead(" + joined(numbers.first(1)) + (numbers[1] != 0 ? ", flags" : ", null")
            + (numbers[2] != 0 ? ", time" : ", null") + ")";
    case CanFunction::BusOff:
        return "canBusOff(" + joined(numbers.first(1)) + ")";
    case CanFunction::Close:
        return "canClose(" + joined(numbers.first(1)) + ")";
    }
    return {};
}

} // namespace simulator
