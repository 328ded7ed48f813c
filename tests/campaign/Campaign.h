#pragma once

#include "campaign/FaultyWorld.h"
#include "campaign/Random.h"
#include "campaign/RandomUser.h"

#include <QFile>
#include <QObject>

#include <atomic>
#include <memory>
#include <thread>

#include <pthread.h>

class MainWindow;

/// Lets a user without a plan and a world full of faults loose on the whole window, for a number of
/// steps. The window is closed and made anew now and then. There is nothing to compare: the program
/// must neither crash nor hang, and the sanitizers must find nothing.
class Campaign : public QObject
{
    Q_OBJECT

public:
    /// The steps are told in the file @p log, the last ones of which tell what led to a failure.
    Campaign(unsigned seed, int steps, const QString &log);
    ~Campaign() override;

    /// Runs to the last step. A step that hangs ends the program and shows where it stands.
    void run();

private:
    /// One step, which first queues the next: a dialog that it opens has its own event loop.
    void step();
    void tell(const QString &what);
    void renewWindow();
    void watch(const std::stop_token &stop);

    Random m_random;
    FaultyWorld m_world;
    RandomUser m_user;
    std::unique_ptr<MainWindow> m_window;
    QFile m_log;
    int m_stepsLeft;
    int m_stepsOfWindow = 0;
    int m_nested = 0; ///< steps that are under way, one in another's dialog
    std::atomic<int> m_stepsDone = 0;
    pthread_t m_mainThread;
    std::jthread m_watchdog; // last: it is the first to end
};
