#include "driver/DriverPlugin.h"

#include "driver/Language.h"
#include "driver/Report.h"
#include "driver/ScriptParser.h"
#include "driver/StepRunner.h"

#include <QApplication>
#include <QFile>
#include <QTimer>

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace driver {

namespace {

// No loop runs yet that could be left.
void failFirst(QObject *context, const ScriptError &error)
{
    QTimer::singleShot(0, context, [error] {
        report::failed(error);
        report::endProgram();
    });
}

void helpFirst(QObject *context)
{
    QTimer::singleShot(0, context, [] {
        std::fputs(helpText().toUtf8().constData(), stdout);
        QCoreApplication::exit(0);
    });
}

} // namespace

QObject *DriverPlugin::create(const QString &key, const QString &script)
{
    if (key.compare(u"zdrdriver"_s, Qt::CaseInsensitive) != 0) {
        return nullptr;
    }
    // Programs that this one starts are driven by nobody.
    qunsetenv("QT_QPA_GENERIC_PLUGINS");

    auto context = std::make_unique<QObject>();
    if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
        failFirst(context.get(), {0, script, u"the program has no widgets"_s});
        return context.release();
    }
    if (script == u"--help"_s) {
        helpFirst(context.get());
        return context.release();
    }
    QFile file(script);
    if (!file.open(QIODevice::ReadOnly)) {
        failFirst(context.get(), {0, script, u"the script can't be read"_s});
        return context.release();
    }
    ScriptParser parser;
    if (!parser.parse(QString::fromUtf8(file.readAll()))) {
        failFirst(context.get(), parser.error());
        return context.release();
    }
    auto *runner = new StepRunner(parser.script(), context.get());
    QTimer::singleShot(0, runner, &StepRunner::start);
    return context.release();
}

} // namespace driver
