#include "simulator/program/SignalReader.h"

#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

namespace simulator {

SignalReader::SignalReader(std::initializer_list<int> signals)
{
    sigset_t set;
    ::sigemptyset(&set);
    for (const int signal : signals) {
        ::sigaddset(&set, signal);
    }
    ::sigprocmask(SIG_BLOCK, &set, nullptr);
    m_fd = FileDescriptor(::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
}

int SignalReader::take()
{
    signalfd_siginfo info{};
    return ::read(m_fd.get(), &info, sizeof info) == sizeof info ? static_cast<int>(info.ssi_signo)
                                                                 : 0;
}

} // namespace simulator
