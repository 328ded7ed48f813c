#include "driver/Condition.h"

#include <QComboBox>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTabWidget>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>

using namespace Qt::StringLiterals;

namespace driver {

namespace {

template <typename Relation>
bool compare(const QString &left, const QString &right)
{
    bool leftIsNumber = false;
    bool rightIsNumber = false;
    const double leftNumber = left.toDouble(&leftIsNumber);
    const double rightNumber = right.toDouble(&rightIsNumber);
    if (leftIsNumber && rightIsNumber) {
        return Relation()(leftNumber, rightNumber);
    }
    return Relation()(left, right);
}

bool containsText(const QString &text, const QString &part)
{
    return text.contains(part);
}

bool matchesPattern(const QString &text, const QString &pattern)
{
    return QRegularExpression(pattern).match(text).hasMatch();
}

struct Operator
{
    QLatin1StringView name;
    bool (*holds)(const QString &actual, const QString &expected);
};

constexpr Operator operators[] = {
    {"=="_L1, compare<std::equal_to<>>}, {"!="_L1, compare<std::not_equal_to<>>},
    {"<"_L1, compare<std::less<>>},      {"<="_L1, compare<std::less_equal<>>},
    {">"_L1, compare<std::greater<>>},   {">="_L1, compare<std::greater_equal<>>},
    {"contains"_L1, containsText},       {"matches"_L1, matchesPattern},
};

const Operator *operatorNamed(const QString &name)
{
    const auto found = std::find_if(std::begin(operators), std::end(operators),
                                    [&](const Operator &each) { return each.name == name; });
    return found == std::end(operators) ? nullptr : found;
}

// Texts of lists that no property gives, with "|" between.
std::optional<QString> itemTexts(const QWidget *widget)
{
    QStringList texts;
    if (const auto *combo = qobject_cast<const QComboBox *>(widget)) {
        for (int i = 0; i < combo->count(); ++i) {
            texts.append(combo->itemText(i));
        }
    } else if (const auto *tabs = qobject_cast<const QTabWidget *>(widget)) {
        for (int i = 0; i < tabs->count(); ++i) {
            texts.append(tabs->tabText(i));
        }
    } else {
        return std::nullopt;
    }
    return texts.join(u'|');
}

// The value as text; nothing if the widget has no such property or if it can't be shown as text.
std::optional<QString> valueOf(const QWidget *widget, const QString &name)
{
    if (name == u"items"_s) {
        return itemTexts(widget);
    }
    const auto *tabs = qobject_cast<const QTabWidget *>(widget);
    if (tabs && name == u"currentTabText"_s) {
        return tabs->tabText(tabs->currentIndex());
    }

    const QByteArray key = name.toLatin1();
    const QVariant value = widget->property(key.constData());
    if (!value.isValid()) {
        return std::nullopt;
    }
    const QMetaProperty property =
        widget->metaObject()->property(widget->metaObject()->indexOfProperty(key.constData()));
    if (property.isEnumType() && !property.isFlagType()) {
        return QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
    }
    if (!value.canConvert<QString>()) {
        return std::nullopt;
    }
    return value.toString();
}

} // namespace

bool Condition::isOperator(const QString &text)
{
    return operatorNamed(text) != nullptr;
}

Condition::Condition(const QString &property, const QString &op, const QString &value)
    : m_property(property)
    , m_operator(op)
    , m_value(value)
{
}

bool Condition::appliesTo(const QWidget *widget) const
{
    return valueOf(widget, m_property).has_value();
}

QString Condition::mismatch(const QWidget *widget) const
{
    const std::optional<QString> actual = valueOf(widget, m_property);
    if (!actual) {
        return u"a %1 has no property \"%2\" that can be compared"_s.arg(
            QString::fromLatin1(widget->metaObject()->className()), m_property);
    }
    if (operatorNamed(m_operator)->holds(*actual, m_value)) {
        return {};
    }
    return u"%1 is \"%2\""_s.arg(m_property, *actual);
}

} // namespace driver
