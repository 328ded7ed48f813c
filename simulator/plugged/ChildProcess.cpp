#include "simulator/plugged/ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace simulator {

namespace {

std::vector<char *> pointers(std::vector<std::string> &texts)
{
    std::vector<char *> result;
    result.reserve(texts.size() + 1);
    for (std::string &text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

std::string nameOf(const std::string &variable)
{
    return variable.substr(0, variable.find('=') + 1);
}

std::vector<std::string> overlaid(const std::vector<std::string> &changes)
{
    std::vector<std::string> result = changes;
    for (char **variable = environ; *variable; ++variable) {
        const std::string name = nameOf(*variable);
        bool changed = false;
        for (const std::string &change : changes) {
            changed = changed || nameOf(change) == name;
        }
        if (!changed) {
            result.emplace_back(*variable);
        }
    }
    return result;
}

// Runs in the child, a copy of a process with threads: only what is safe there may be called.
[[noreturn]] void becomeProgram(char **arguments, char **environment, pid_t parent)
{
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) {
        ::_exit(127); // the parent died before it could be watched
    }
    ::signal(SIGPIPE, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    const int nothing = ::open("/dev/null", O_RDONLY);
    ::dup2(nothing, STDIN_FILENO);
    ::close(nothing);
    ::execvpe(arguments[0], arguments, environment);
    ::dprintf(STDERR_FILENO, "zdr-simulator: cannot start %s: %s\n", arguments[0],
              ::strerrordesc_np(errno));
    ::_exit(127);
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string> &command,
                           const std::vector<std::string> &environment)
{
    std::vector<std::string> argumentTexts = command;
    std::vector<std::string> environmentTexts = overlaid(environment);
    const std::vector<char *> arguments = pointers(argumentTexts);
    const std::vector<char *> variables = pointers(environmentTexts);
    const pid_t parent = ::getpid();

    const pid_t pid = ::fork();
    if (pid == 0) {
        becomeProgram(const_cast<char **>(arguments.data()), const_cast<char **>(variables.data()),
                      parent);
    }
    m_pid = pid;
    if (m_pid > 0) {
        m_end = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, m_pid, 0)));
    }
}

ChildProcess::~ChildProcess()
{
    kill();
    wait();
}

void ChildProcess::terminate()
{
    send(SIGTERM);
}

void ChildProcess::kill()
{
    send(SIGKILL);
}

void ChildProcess::send(int signal)
{
    if (m_pid > 0) {
        ::kill(m_pid, signal);
    }
}

int ChildProcess::wait()
{
    int status = 0;
    while (m_pid > 0) {
        if (::waitpid(m_pid, &status, 0) == m_pid) {
            m_exitCode = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
            m_pid = -1;
        } else if (errno != EINTR) {
            m_pid = -1;
        }
    }
    return m_exitCode;
}

} // namespace simulator
