#include "simulator/protocol/Request.h"

#include "simulator/protocol/BigEndian.h"

#include <numeric>

namespace simulator {

std::uint8_t checksumOf(const Datagram &datagram)
{
    const unsigned sum = std::accumulate(datagram.begin(), datagram.end() - 1, 0U);
    return static_cast<std::uint8_t>(sum & 0xffU);
}

Request Request::fromBytes(const Datagram &datagram)
{
    Request request;
    request.address = datagram[0];
    request.command = datagram[1];
    request.type = datagram[2];
    request.motorBank = datagram[3];
    request.value = readBigEndian(std::span(datagram).subspan<4, 4>());
    request.intact = datagram[8] == checksumOf(datagram);
    return request;
}

Datagram Request::toBytes() const
{
    Datagram datagram{address, command, type, motorBank};
    writeBigEndian(value, std::span(datagram).subspan<4, 4>());
    datagram[8] = static_cast<std::uint8_t>(checksumOf(datagram) + (intact ? 0 : 1));
    return datagram;
}

} // namespace simulator
