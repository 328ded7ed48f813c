#pragma once

#include <QList>
#include <QStringList>

namespace driver {

/// How a step is written, such as "wait WIDGET PROPERTY OP VALUE [SECONDS]": the same line that the
/// help shows is what arguments are checked against. Words in capitals stand for an argument of
/// that kind, other words for themselves; what is in brackets may be left out; the last word may be
/// repeated if it ends in "...".
class Usage
{
public:
    explicit Usage(const QString &usage);

    /// Why `arguments` don't follow the usage; empty if they do.
    QString mismatch(const QStringList &arguments) const;

private:
    QString m_usage;
    /// The usage without brackets, once for each choice of the bracketed parts.
    QList<QStringList> m_forms;
};

} // namespace driver
