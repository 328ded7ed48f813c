#pragma once

#include "simulator/axis/AxisParameters.h"
#include "simulator/protocol/Module.h"

#include <string>
#include <vector>

namespace simulator {

/// What the user asked for on the command line.
struct Options
{
    bool help = false; ///< only print the help
    bool pty = false; ///< one module on a pseudo-terminal
    bool plugged = false; ///< a program with three modules plugged in
    std::string linePath; ///< the serial line to serve; empty: none
    std::string canInterface; ///< the kernel's CAN interface to serve; empty: none
    Identity identity; ///< of the module on the pseudo-terminal, line or USB port
    LimitPolicy limits = LimitPolicy::Refuse;
    std::uint32_t seed = 1; ///< of the noise on the currents
    std::vector<std::string> machineLines; ///< of MachineLines, for each module at the start
    int baudRate = 0; ///< of the module on the pseudo-terminal or line; 0: any
    std::uint8_t rs485Address = 1; ///< of the module behind the adapter
    int rs485BaudRate = 9600; ///< of the module behind the adapter; 0: any
    std::uint8_t canAddress = 1; ///< of the module on CAN
    int canBitRate = 1000; ///< of the module on CAN in kBit/s; 0: any
    bool startWithUsb = true; ///< the USB module is plugged in from the start
    bool startWithRs485 = true; ///< the adapter is plugged in from the start
    bool startWithCan = true; ///< the CAN interface is plugged in from the start
    std::string linkPath; ///< symbolic link to the port; empty: none
    std::string logPath; ///< where the wire log goes, "-" is standard output; empty: nowhere
    std::vector<std::string> command; ///< the program to start, with its arguments
};

/// The program's command line.
class CommandLine
{
public:
    /// Reads the arguments of main() into @p options.
    /// @return an empty text, or in one line what is wrong with them
    static std::string parse(int argc, char **argv, Options &options);

    /// The help text, complete.
    static std::string help();
};

} // namespace simulator
