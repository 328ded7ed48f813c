#pragma once

#include <QStringList>

/// Messages about the connection, translated, for a message display that the window leaves room
/// for. Nothing shows them yet; all reporting goes to the debug stream. They are listed here so
/// that translators have them.
QStringList messageCatalogue();
