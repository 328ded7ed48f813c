#pragma once

class QWidget;

/// Gives every icon below @p widget the application palette's text colour, so that pictures drawn
/// in one colour can be read in light and dark palettes alike: first of all buttons, then of all
/// actions, at last the pictures of labels and the icons of tree items. Only the shape of a picture
/// counts, which is its alpha channel; its own colours are lost.
///
/// Each of the three passes tells the debug stream how many buttons, actions, and labels with a
/// picture it has found.
void setIconsToTextColor(QWidget *widget);
