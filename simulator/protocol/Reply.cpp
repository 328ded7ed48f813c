#include "simulator/protocol/Reply.h"

#include "simulator/protocol/BigEndian.h"

#include <algorithm>

namespace simulator {

Reply Reply::fromBytes(const Datagram &datagram)
{
    Reply reply;
    reply.replyAddress = datagram[0];
    reply.moduleAddress = datagram[1];
    reply.status = datagram[2];
    reply.command = datagram[3];
    reply.value = readBigEndian(std::span(datagram).subspan<4, 4>());
    return reply;
}

Datagram Reply::toBytes() const
{
    Datagram datagram{replyAddress};
    if (text) {
        std::transform(text->begin(), text->end(), datagram.begin() + 1,
                       [](char character) { return static_cast<std::uint8_t>(character); });
        return datagram;
    }
    datagram[1] = moduleAddress;
    datagram[2] = status;
    datagram[3] = command;
    writeBigEndian(value, std::span(datagram).subspan<4, 4>());
    datagram[8] = checksumOf(datagram);
    return datagram;
}

} // namespace simulator
