#pragma once

#include <QStringList>

namespace driver {

/// Those of `candidates` that somebody may have meant who wrote `word`: names that contain it, are
/// contained in it or differ by few letters; the nearest first, five at most, each once.
QStringList nearMatches(const QString &word, const QStringList &candidates);

} // namespace driver
