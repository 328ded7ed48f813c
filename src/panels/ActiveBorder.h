#pragma once

class QGroupBox;

/// Marks the group box of a jog panel as that of the module's present kind of motion by a blue
/// border, or takes the mark away.
void setActiveBorder(QGroupBox *groupBox, bool active);
