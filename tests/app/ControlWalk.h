#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QWidget>

/// @file
/// A walk over the controls of a window, as a user meets them by eye, keyboard or screen reader.

/// Whether there is anything of it to be seen: a hidden chart is a visible widget of no height.
bool isSeen(const QWidget *widget);

/// Whether the toolkit has made @p widget as a part of a control, which speaks for itself.
bool isPartOfAControl(const QWidget *widget);

/// Whether a user can set or read a value by @p widget, or set something off.
bool isControl(const QWidget *widget);

/// The controls of @p window that can be seen.
QList<QWidget *> visibleControls(const QWidget *window);

/// What a screen reader says for @p control: its own name, its text, or that of its label; empty,
/// if it has none of them.
QString nameOf(const QWidget *window, const QWidget *control);

/// The group box that @p control stands in, or its window.
const QWidget *groupOf(const QWidget *control);

/// The names of @p widget and of what it stands in, from the window on.
QByteArray describe(const QWidget *widget);

/// All texts of @p window that can carry a mnemonic and are to be seen at the same time.
QStringList visibleTexts(const QWidget *window);

/// The controls of @p window that Tab visits, from the first until it comes round.
QList<QWidget *> tabOrder(QWidget *window);
