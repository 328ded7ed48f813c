#pragma once

/// A speed of the bus that has a code of its own in CANlib. Codes -6 and -8 belong to speeds that
/// the module doesn't have.
struct CanBitRate
{
    int kiloBitsPerSecond;
    int code;
};

constexpr CanBitRate CanBitRates[] = {
    {1000, -1}, {500, -2}, {250, -3}, {125, -4}, {100, -5}, {50, -7}, {10, -9},
};

/// The code of a speed in kBit/s; 0, which no library takes, if it has none.
constexpr int canBitRateCode(int kiloBitsPerSecond)
{
    for (const CanBitRate &rate : CanBitRates) {
        if (rate.kiloBitsPerSecond == kiloBitsPerSecond) {
            return rate.code;
        }
    }
    return 0;
}

/// The speed of a code in bit/s; 0 for a code that isn't in use.
constexpr unsigned int canBitsPerSecond(long code)
{
    for (const CanBitRate &rate : CanBitRates) {
        if (rate.code == code) {
            return static_cast<unsigned int>(rate.kiloBitsPerSecond) * 1000U;
        }
    }
    return 0;
}
