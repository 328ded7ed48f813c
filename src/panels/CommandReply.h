#pragma once

#include "comm/CommandNumbers.h"

/// What a panel asks of a raw reply before it reads the value.
namespace CommandReply {

/// Status of a command that was carried out.
constexpr char CarriedOut = 100;

/// True for the reply to a GAP that was carried out.
constexpr bool isRead(char command, char status)
{
    return status == CarriedOut && command == CommandNumber::GetAxisParameter;
}

} // namespace CommandReply
