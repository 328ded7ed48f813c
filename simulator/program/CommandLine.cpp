#include "simulator/program/CommandLine.h"

#include "simulator/can/CanBus.h"
#include "simulator/protocol/FaultPlan.h"
#include "simulator/protocol/MachineLines.h"
#include "simulator/protocol/Text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <sstream>

#include <getopt.h>

namespace simulator {

namespace {

constexpr int maxBaudRate = 4000000;

// One option. `set` puts its argument into the options, and returns what is wrong with it.
struct OptionEntry
{
    const char *name;
    const char *argument; ///< its name in the help; null if the option has none
    const char *meaning;
    std::string (*set)(Options &options, const std::string &argument);
};

template <typename Number>
std::string setNumber(Number &target, const std::string &argument, int minimum, int maximum)
{
    const auto number = parseInt(argument, minimum, maximum);
    if (!number) {
        return "not a number from " + std::to_string(minimum) + " to " + std::to_string(maximum);
    }
    target = static_cast<Number>(*number);
    return {};
}

std::string setName(std::string &target, const std::string &argument)
{
    target = argument;
    return argument.empty() ? "empty" : std::string();
}

std::string setFirmware(Options &options, const std::string &argument)
{
    const std::size_t point = argument.find('.');
    const auto major = parseInt(argument.substr(0, point), 0, 127);
    const auto minor =
        point == std::string::npos ? std::nullopt : parseInt(argument.substr(point + 1), 0, 127);
    if (!major || !minor) {
        return "not a version, MAJOR.MINOR with numbers from 0 to 127";
    }
    options.identity.majorVersion = static_cast<std::uint8_t>(*major);
    options.identity.minorVersion = static_cast<std::uint8_t>(*minor);
    return {};
}

std::string setVersionText(Options &options, const std::string &argument)
{
    options.identity.versionText = argument;
    return argument.size() == 8 ? std::string() : "not a text of 8 characters";
}

std::string setLimits(Options &options, const std::string &argument)
{
    options.limits = argument == "clamp" ? LimitPolicy::Clamp : LimitPolicy::Refuse;
    return argument == "clamp" || argument == "refuse" ? std::string() : "neither refuse nor clamp";
}

std::string setCanBitRate(Options &options, const std::string &argument)
{
    const auto rate = parseInt(argument, 0, std::numeric_limits<int>::max());
    if (!rate || (*rate != 0 && !CanBus::hasSpeed(*rate))) {
        return "neither 0 nor a bit rate of CAN interfaces";
    }
    options.canBitRate = *rate;
    return {};
}

std::string addMachineLine(Options &options, const std::string &argument)
{
    Module likeThose; // what it refuses, every module would refuse
    options.machineLines.push_back(argument);
    return MachineLines::execute(argument, likeThose);
}

std::string setWithout(Options &options, const std::string &argument)
{
    options.startWithUsb = options.startWithUsb && argument != "usb";
    options.startWithRs485 = options.startWithRs485 && argument != "rs485";
    options.startWithCan = options.startWithCan && argument != "can";
    const bool known = argument == "usb" || argument == "rs485" || argument == "can";
    return known ? std::string() : "not usb, rs485 or can";
}

constexpr auto entries = std::to_array<OptionEntry>({
    {"pty", nullptr, "one module on a pseudo-terminal; its path is the first line of output",
     [](Options &o, const std::string &) { return o.pty = true, std::string(); }},
    {"plugged", nullptr, "start COMMAND with modules plugged in on USB, RS485 and CAN",
     [](Options &o, const std::string &) { return o.plugged = true, std::string(); }},
    {"line", "PATH", "one module on a serial line that exists, such as /dev/ttyUSB0",
     [](Options &o, const std::string &a) { return setName(o.linePath, a); }},
    {"can-interface", "NAME", "one module on a CAN interface of the kernel, such as can0",
     [](Options &o, const std::string &a) { return setName(o.canInterface, a); }},
    {"link", "PATH", "--pty: make PATH a symbolic link to the port, removed at the end",
     [](Options &o, const std::string &a) { return o.linkPath = a, std::string(); }},
    {"baud", "RATE",
     "--pty, --line: the module's rate, with 8N1; 0, the default: any, or the line's own",
     [](Options &o, const std::string &a) { return setNumber(o.baudRate, a, 0, maxBaudRate); }},
    {"rs485-address", "N", "--plugged: address of the module on RS485 (default 1)",
     [](Options &o, const std::string &a) { return setNumber(o.rs485Address, a, 0, 255); }},
    {"rs485-baud", "RATE", "--plugged: the rate of that module (default 9600); 0: any",
     [](Options &o, const std::string &a) {
         return setNumber(o.rs485BaudRate, a, 0, maxBaudRate);
     }},
    {"can-address", "N", "--plugged, --can-interface: address of the module on CAN (default 1)",
     [](Options &o, const std::string &a) { return setNumber(o.canAddress, a, 0, 255); }},
    {"can-bitrate", "KBIT", "--plugged: the rate of that module in kBit/s (default 1000); 0: any",
     setCanBitRate},
    {"without", "PORT", "--plugged: start with usb, rs485 or can pulled out", setWithout},
    {"address", "N", "address of the module on the pseudo-terminal, line or USB (default 1)",
     [](Options &o, const std::string &a) { return setNumber(o.identity.address, a, 0, 255); }},
    {"reply-address", "N", "address of the host, byte 0 of each reply (default 2)",
     [](Options &o, const std::string &a) {
         return setNumber(o.identity.replyAddress, a, 0, 255);
     }},
    {"version-text", "TEXT", "version in text form, 8 characters (default 7710V105)",
     setVersionText},
    {"firmware", "A.B", "version in number form (default 1.5)", setFirmware},
    {"limits", "HOW", "values out of range: refuse (default) or clamp to the range", setLimits},
    {"machine", "LINE", "carry out a line about the machine (below) at the start; repeatable",
     addMachineLine},
    {"seed", "N", "what the noise on the currents starts from (default 1)",
     [](Options &o, const std::string &a) {
         return setNumber(o.seed, a, 0, std::numeric_limits<int>::max());
     }},
    {"log", "FILE", "write all that crosses the lines to FILE; -: to the output",
     [](Options &o, const std::string &a) { return o.logPath = a, std::string(); }},
    {"help", nullptr, "print this",
     [](Options &o, const std::string &) { return o.help = true, std::string(); }},
});

// What can be wrong with the options together.
std::string contradiction(const Options &options)
{
    if (options.help) {
        return {};
    }
    const std::array modes{options.pty, options.plugged, !options.linePath.empty(),
                           !options.canInterface.empty()};
    if (std::count(modes.begin(), modes.end(), true) != 1) {
        return "one of --pty, --plugged, --line and --can-interface is needed";
    }
    if (options.plugged && options.command.empty()) {
        return "--plugged needs a command to start";
    }
    if (!options.plugged && !options.command.empty()) {
        return "too many arguments: " + options.command.front();
    }
    return {};
}

std::string describe(const OptionEntry &entry, const std::string &problem,
                     const std::string &argument)
{
    return std::string("--") + entry.name + ": " + problem + ": " + argument;
}

// Each line of @p lines two blanks further in.
std::string indented(const std::string &lines)
{
    std::istringstream input(lines);
    std::string text;
    for (std::string line; std::getline(input, line);) {
        text += "  " + line + "\n";
    }
    return text;
}

std::string column(std::string text)
{
    constexpr std::size_t width = 29;
    text.resize(std::max(text.size() + 1, width), ' ');
    return text;
}

} // namespace

std::string CommandLine::parse(int argc, char **argv, Options &options)
{
    std::array<option, entries.size() + 1> known{};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        known[i].name = entries[i].name;
        known[i].has_arg = entries[i].argument ? required_argument : no_argument;
    }

    // "+": what follows the first argument belongs to the command. ":": no messages from here.
    int found = 0;
    int index = 0;
    while ((found = ::getopt_long(argc, argv, "+:", known.data(), &index)) == 0) {
        const OptionEntry &entry = entries[static_cast<std::size_t>(index)];
        const std::string argument = ::optarg ? ::optarg : "";
        if (const std::string problem = entry.set(options, argument); !problem.empty()) {
            return describe(entry, problem, argument);
        }
    }
    if (found != -1) {
        return (found == ':' ? "missing argument of " : "bad option: ")
            + std::string(argv[::optind - 1]);
    }
    options.command.assign(argv + ::optind, argv + argc);
    return contradiction(options);
}

std::string CommandLine::help()
{
    std::string text =
        "Usage: zdr-simulator --pty [OPTIONS]\n"
        "       zdr-simulator --line PATH [OPTIONS]\n"
        "       zdr-simulator --can-interface NAME [OPTIONS]\n"
        "       zdr-simulator --plugged [OPTIONS] -- COMMAND [ARGUMENTS]\n"
        "Simulates the motor controller module ZDRM-7710 on serial ports and CAN.\n\n";
    for (const OptionEntry &entry : entries) {
        const std::string argument = entry.argument ? std::string(" ") + entry.argument : "";
        text += column(std::string("  --") + entry.name + argument) + entry.meaning + "\n";
    }
    text += "\nLines on the standard input:\n";
    text += indented(FaultPlan::help());
    text += indented(MachineLines::help());
    text += column("  PORT LINE") + "a fault or a line about the machine, for this port alone\n";
    text += indented(CanFaultPlan::help());
    text += column("  plug PORT, unplug PORT")
        + "--plugged: plug in or pull out usb, rs485 or can\n" + column("  help")
        + "print these lines\n" + column("  quit")
        + "end, the command with it\n"
          "N is the number of exchanges that a fault holds for; without it, until turned off. A\n"
          "canfault is one of the CAN interface, and counts the calls or replies that it spoils.\n"
          "The end of the input ends nothing: the program runs on until quit, SIGINT or SIGTERM,\n"
          "with --plugged until COMMAND ends, whose exit code it then returns.\n";
    return text;
}

} // namespace simulator
