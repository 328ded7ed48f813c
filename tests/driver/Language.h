#pragma once

#include "driver/Plan.h"

#include <QLatin1StringView>
#include <QStringList>

#include <span>

namespace driver {

/// One kind of step.
struct Verb
{
    /// How it is written; the first word is its name. See Usage.
    QLatin1StringView usage;
    /// What it does, for the help.
    QLatin1StringView explanation;
    /// Makes the plan of a step from arguments that follow the usage.
    Plan (*plan)(const QStringList &arguments);
};

/// The whole language.
std::span<const Verb> verbs();

/// The names of all steps.
QStringList verbNames();

/// The step of this name; null if there is none.
const Verb *verbNamed(const QString &name);

/// What the language is, for people: all steps, how widgets are named, what is printed.
QString helpText();

} // namespace driver
