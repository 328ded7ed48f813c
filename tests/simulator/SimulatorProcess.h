#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

/// The program zdr-simulator, started as a user would.
class SimulatorProcess
{
public:
    /// Starts it with @p arguments.
    explicit SimulatorProcess(const QStringList &arguments);
    /// Ends it, if it still runs.
    ~SimulatorProcess();

    /// The next line of its output, without the line end; null if none comes.
    QString readLine();
    /// Writes @p line to its input.
    void writeLine(const QString &line);
    /// Closes its input.
    void closeInput() { m_process.closeWriteChannel(); }
    /// Sends it SIGTERM.
    void terminate() { m_process.terminate(); }
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// Waits for its end. @return the exit code; -1, if it crashed or doesn't end
    int waitForEnd();
    /// What is left of its output.
    QString output() { return QString::fromUtf8(m_process.readAllStandardOutput()); }
    /// All that it has written on its standard error so far.
    QString messages();
    qint64 processId() const { return m_process.processId(); }

private:
    QProcess m_process;
    QByteArray m_messages;
};
