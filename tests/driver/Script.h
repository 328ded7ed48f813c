#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace driver {

struct Verb;

/// One line of a script, checked and with its variables replaced.
struct Step
{
    /// Number of the line in the script, from 1 on.
    int line = 0;
    /// What to do; one of verbs().
    const Verb *verb = nullptr;
    /// What follows the verb, without the quotes.
    QStringList arguments;
    /// The step as it is reported.
    QString text;
};

using Script = QList<Step>;

/// Why a script can't be run.
struct ScriptError
{
    int line = 0;
    QString text;
    QString reason;
};

} // namespace driver
