#include "driver/NearMatches.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace driver {

namespace {

constexpr qsizetype mostMatches = 5;

// Levenshtein's distance, by rows.
qsizetype editDistance(const QString &from, const QString &to)
{
    std::vector<qsizetype> row(static_cast<std::size_t>(to.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < from.size(); ++i) {
        qsizetype diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 1; j < row.size(); ++j) {
            const bool equal = from[i] == to[static_cast<qsizetype>(j) - 1];
            const qsizetype cost =
                std::min({row[j] + 1, row[j - 1] + 1, diagonal + (equal ? 0 : 1)});
            diagonal = std::exchange(row[j], cost);
        }
    }
    return row.back();
}

} // namespace

QStringList nearMatches(const QString &word, const QStringList &candidates)
{
    const QString wanted = word.toLower();
    const qsizetype farthest = std::max<qsizetype>(2, wanted.size() / 3);

    std::vector<std::pair<qsizetype, QString>> found;
    for (const QString &candidate : candidates) {
        const QString name = candidate.toLower();
        if (name.isEmpty()) {
            continue;
        }
        const qsizetype distance = editDistance(wanted, name);
        if (distance <= farthest || name.contains(wanted) || wanted.contains(name)) {
            found.emplace_back(distance, candidate);
        }
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());

    QStringList matches;
    for (const auto &[distance, candidate] : found) {
        if (matches.size() < mostMatches) {
            matches.append(candidate);
        }
    }
    return matches;
}

} // namespace driver
