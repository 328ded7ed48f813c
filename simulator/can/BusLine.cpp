#include "simulator/can/BusLine.h"

namespace simulator {

CanAnswer BusLine::execute(const CanCall &call)
{
    CanAnswer answer;
    if (!isOpen() || !exchange(call, answer)) {
        close();
        answer = {static_cast<std::int32_t>(CanStatus::NoBus), {}};
    }
    return answer;
}

} // namespace simulator
