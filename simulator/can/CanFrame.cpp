#include "simulator/can/CanFrame.h"

namespace simulator {

std::string CanFrame::toText() const
{
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text{digits[(identifier >> 8) & 0xf], digits[(identifier >> 4) & 0xf],
                     digits[identifier & 0xf]};
    text += " [" + std::to_string(length) + "]";
    for (std::size_t i = 0; i < length; ++i) {
        text += {' ', digits[data[i] >> 4], digits[data[i] & 0xf]};
    }
    return text;
}

} // namespace simulator
