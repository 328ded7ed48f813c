#include "driver/Report.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace driver::report {

namespace {

constexpr std::chrono::seconds patience{2};

void printLine(const QString &line)
{
    std::fputs((line + u'\n').toUtf8().constData(), stdout);
    std::fflush(stdout);
}

} // namespace

void ok(const Step &step)
{
    printLine(u"ok   %1 %2"_s.arg(QString::number(step.line), step.text));
}

void failed(const ScriptError &error)
{
    printLine(u"FAIL %1 %2: %3"_s.arg(QString::number(error.line), error.text, error.reason));
}

void done(qsizetype steps)
{
    printLine(u"done %1 steps"_s.arg(steps));
}

void endProgram()
{
    QCoreApplication::exit(failureCode);
    QTimer::singleShot(patience, endProgramNow);
}

void endProgramNow()
{
    std::fflush(nullptr);
    std::_Exit(failureCode);
}

} // namespace driver::report
