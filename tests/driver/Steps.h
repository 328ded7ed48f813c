#pragma once

#include "driver/Plan.h"

#include <QStringList>

namespace driver {

/// The plan of each kind of step. Arguments have been checked against the step's usage; what each
/// step does stands in the table of Language.cpp. Plans are made when their step's turn has come.
namespace steps {

// PointerSteps.cpp
Plan click(const QStringList &arguments);
Plan doubleClick(const QStringList &arguments);
Plan press(const QStringList &arguments);
Plan release(const QStringList &arguments);
Plan wheel(const QStringList &arguments);
Plan check(const QStringList &arguments);
Plan uncheck(const QStringList &arguments);
Plan drag(const QStringList &arguments);

// ListSteps.cpp
Plan select(const QStringList &arguments);
Plan item(const QStringList &arguments);
Plan tab(const QStringList &arguments);
Plan menu(const QStringList &arguments);

// KeyboardSteps.cpp
Plan set(const QStringList &arguments);
Plan type(const QStringList &arguments);
Plan key(const QStringList &arguments);

// ObservingSteps.cpp
Plan wait(const QStringList &arguments);
Plan expect(const QStringList &arguments);
Plan gone(const QStringList &arguments);
Plan await(const QStringList &arguments);
Plan screenshot(const QStringList &arguments);
Plan print(const QStringList &arguments);
Plan sleep(const QStringList &arguments);

// WindowSteps.cpp
Plan resize(const QStringList &arguments);
Plan close(const QStringList &arguments);
Plan quit(const QStringList &arguments);

} // namespace steps

} // namespace driver
