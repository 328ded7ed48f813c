#include "simulator/SimulatorProcess.h"

#include <QDeadlineTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30000; // ms

} // namespace

SimulatorProcess::SimulatorProcess(const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The started program gets another library in front of the sanitizer's.
    const QString options = environment.value(u"ASAN_OPTIONS"_s);
    environment.insert(u"ASAN_OPTIONS"_s,
                       options + (options.isEmpty() ? u""_s : u":"_s)
                           + u"verify_asan_link_order=0"_s);
    m_process.setProcessEnvironment(environment);
    m_process.start(QStringLiteral(ZDR_SIMULATOR_PROGRAM), arguments);
    m_process.waitForStarted(patience);
}

SimulatorProcess::~SimulatorProcess()
{
    if (isRunning()) {
        m_process.terminate();
        m_process.waitForFinished(patience);
    }
}

QString SimulatorProcess::readLine()
{
    const QDeadlineTimer deadline(patience);
    while (!m_process.canReadLine() && isRunning() && !deadline.hasExpired()) {
        m_process.waitForReadyRead(100);
    }
    return m_process.canReadLine() ? QString::fromUtf8(m_process.readLine()).chopped(1) : QString();
}

void SimulatorProcess::writeLine(const QString &line)
{
    m_process.write(line.toUtf8() + '\n');
    m_process.waitForBytesWritten(patience);
}

int SimulatorProcess::waitForEnd()
{
    if (isRunning() && !m_process.waitForFinished(patience)) {
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QString SimulatorProcess::messages()
{
    m_messages += m_process.readAllStandardError();
    return QString::fromUtf8(m_messages);
}
