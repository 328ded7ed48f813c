// The module's configuration as a file. There are no settings panels yet whose values could be
// saved: the three entries do nothing, as they do with no module connected.

#include "app/Stepper.h"

void Stepper::exportSettings() { }

void Stepper::importSettings() { }

void Stepper::exportSettingsToZDRL() { }
