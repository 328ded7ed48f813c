#pragma once

#include <QString>

/// The tool tip of a control that stands for the axis parameter @p number: "AP: " and the number,
/// 0 to 255. The byte is signed as it travels, so it is widened here: 131, not -125.
QString parameterToolTip(char number);
