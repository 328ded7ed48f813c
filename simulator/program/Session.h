#pragma once

#include "simulator/program/CommandLine.h"
#include "simulator/program/Console.h"
#include "simulator/program/LineReader.h"
#include "simulator/program/LogFile.h"
#include "simulator/program/SignalReader.h"
#include "simulator/serving/ServingLoop.h"

#include <memory>
#include <string>

namespace simulator {

/// What all modes of the program share: the loop, the console on the standard input, the signals
/// that end it, and the log.
class Session
{
public:
    explicit Session(const Options &options);
    virtual ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// Runs the mode to its end. @return the program's exit code
    int run();

protected:
    /// Sets up all there is to serve. @return an empty text, or in one line what went wrong
    virtual std::string start() = 0;
    /// The user wants it to end; the loop has to be stopped sooner or later.
    virtual void quit() { m_loop.stop(); }
    /// The time given by ::alarm() is over.
    virtual void handleAlarm() { }
    /// After the loop has ended: the exit code.
    virtual int finish() { return 0; }

    /// Makes @p module what the options want it to be.
    void prepare(Module &module) const;
    /// Lets lines on the standard input reach @p ports.
    void listenTo(std::vector<Console::Port> ports);

    const Options &options() const { return m_options; }
    ServingLoop &loop() { return m_loop; }
    LogFile &logFile() { return m_logFile; }

private:
    void handleSignal();

    const Options m_options;
    SignalReader m_signals; // before all that starts threads
    ServingLoop m_loop;
    LogFile m_logFile;
    std::unique_ptr<Console> m_console;
    LineReader m_input;
};

/// Prints @p problem as this program's message on the standard error.
void complain(const std::string &problem);

} // namespace simulator
