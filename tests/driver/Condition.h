#pragma once

#include <QString>

class QWidget;

namespace driver {

/// A comparison of a widget's property with a value, such as `value >= 100`.
class Condition
{
public:
    /// Whether `text` is one of == != < <= > >= contains matches.
    static bool isOperator(const QString &text);

    /// `op` must be an operator. Two numbers are compared as numbers, anything else as text;
    /// `matches` takes a regular expression that must fit somewhere in the text.
    Condition(const QString &property, const QString &op, const QString &value);

    /// Why the condition doesn't hold for `widget`, as a predicate; empty if it holds.
    QString mismatch(const QWidget *widget) const;

    /// Whether `widget` has the property at all, so that waiting for its value makes sense.
    bool appliesTo(const QWidget *widget) const;

private:
    QString m_property;
    QString m_operator;
    QString m_value;
};

} // namespace driver
