// From the start of the process to the window's first paint, and the memory that it took until
// then: the tool, a window with as many plain controls, and a bare window, in turns.

#include "benchmarks/Figure.h"

#include <QElapsedTimer>
#include <QList>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int Runs = 21;
constexpr unsigned LimitSecs = 300;

struct Start
{
    double msecs;
    double residentMiB; ///< at its peak
};

/// Nothing if the program didn't end by itself, and well.
std::optional<Start> start(const char *program)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    char *const arguments[] = {const_cast<char *>(program), nullptr};
    QElapsedTimer timer;
    timer.start();
    pid_t process = 0;
    const bool started =
        ::posix_spawn(&process, program, &actions, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (!started || ::wait4(process, &status, 0, &usage) < 0 || status != EXIT_SUCCESS) {
        return std::nullopt;
    }
    return Start{static_cast<double>(timer.nsecsElapsed()) / 1e6,
                 static_cast<double>(usage.ru_maxrss) / 1024};
}

class Program
{
public:
    explicit Program(const char *path)
        : m_path(path)
    {
    }

    bool startOnce()
    {
        const std::optional<Start> once = start(m_path);
        if (once) {
            m_starts.append(*once);
        }
        return once.has_value();
    }

    double median(double Start::*field) const
    {
        QList<double> values;
        for (const Start &once : m_starts) {
            values.append(once.*field);
        }
        std::sort(values.begin(), values.end());
        return values.at(values.size() / 2);
    }

private:
    const char *m_path;
    QList<Start> m_starts;
};

} // namespace

int main()
{
    ::setenv("QT_QPA_GENERIC_PLUGINS", "zdrfirstpaint", 1);
    ::setenv("QT_PLUGIN_PATH", ZDR_PLUGINS, 1);
    ::alarm(LimitSecs); // for a program that never paints

    Program tool(ZDR_TOOL);
    Program plainControls(ZDR_PLAIN_CONTROLS);
    Program bareWindow(ZDR_BARE_WINDOW);
    for (int run = 0; run < Runs; ++run) {
        for (Program *program : {&tool, &plainControls, &bareWindow}) {
            if (!program->startOnce()) {
                std::fputs("bench_start: a program failed\n", stderr);
                return EXIT_FAILURE;
            }
        }
    }
    const auto print = [&tool](const QString &name, const Program &peer, double Start::*field,
                               const QString &unit, std::optional<double> goal) {
        Figure{name, tool.median(field), peer.median(field), unit, goal}.print();
    };
    print(u"start to first paint, against plain controls"_s, plainControls, &Start::msecs, u"ms"_s,
          1.5);
    print(u"start to first paint, against a bare window"_s, bareWindow, &Start::msecs, u"ms"_s, {});
    print(u"resident memory, against plain controls"_s, plainControls, &Start::residentMiB,
          u"MiB"_s, 1.25);
    print(u"resident memory, against a bare window"_s, bareWindow, &Start::residentMiB, u"MiB"_s,
          {});
    return EXIT_SUCCESS;
}
