#include "driver/Usage.h"

#include "driver/Condition.h"
#include "driver/WidgetPath.h"

#include <QKeySequence>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace driver {

namespace {

bool isNumber(const QString &text)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok && number >= 0;
}

bool isSize(const QString &text)
{
    return isNumber(text) && text.toInt() > 0;
}

bool isNotches(const QString &text)
{
    bool ok = false;
    return text.toInt(&ok) != 0 && ok;
}

bool isSeconds(const QString &text)
{
    static const QRegularExpression decimal(u"^\\d{1,6}(\\.\\d+)?$"_s);
    return decimal.match(text).hasMatch();
}

bool isKeys(const QString &text)
{
    const QKeySequence keys = QKeySequence::fromString(text);
    for (int i = 0; i < keys.count(); ++i) {
        if (keys[static_cast<uint>(i)].key() == Qt::Key_unknown) {
            return false;
        }
    }
    return !keys.isEmpty();
}

bool isRange(const QString &text)
{
    const QStringList ends = text.split(u".."_s);
    return ends.size() == 2 && std::all_of(ends.begin(), ends.end(), [](const QString &end) {
               bool ok = false;
               end.toInt(&ok);
               return ok;
           });
}

bool isProperty(const QString &text)
{
    static const QRegularExpression identifier(u"^[A-Za-z_]\\w*$"_s);
    return identifier.match(text).hasMatch();
}

bool isPath(const QString &text)
{
    return WidgetPath(text).isValid();
}

struct Kind
{
    QLatin1StringView word;
    bool (*accepts)(const QString &text);
};

// Kinds that aren't listed take any text.
constexpr Kind kinds[] = {
    {"WIDGET"_L1, isPath},       {"MS"_L1, isNumber},
    {"SECONDS"_L1, isSeconds},   {"WIDTH"_L1, isSize},
    {"HEIGHT"_L1, isSize},       {"NOTCHES"_L1, isNotches},
    {"FROM..TO"_L1, isRange},    {"KEYS"_L1, isKeys},
    {"PROPERTY"_L1, isProperty}, {"OP"_L1, Condition::isOperator},
};

bool accepts(const QString &word, const QString &argument)
{
    if (word != word.toUpper()) {
        return word == argument;
    }
    const auto kind = std::find_if(std::begin(kinds), std::end(kinds),
                                   [&](const Kind &each) { return each.word == word; });
    return kind == std::end(kinds) || kind->accepts(argument);
}

// Repeats the last word of a form for the arguments that it stands for.
QStringList stretched(QStringList form, qsizetype count)
{
    if (form.isEmpty() || !form.last().endsWith(u"..."_s)) {
        return form;
    }
    form.last().chop(3);
    while (form.size() < count) {
        form.append(form.last());
    }
    return form;
}

} // namespace

Usage::Usage(const QString &usage)
    : m_usage(usage)
{
    static const QRegularExpression bracket(u"\\[([^\\]]*)\\]"_s);
    QStringList open{usage.section(u' ', 1)};
    while (!open.isEmpty()) {
        const QString form = open.takeFirst();
        const QRegularExpressionMatch match = bracket.match(form);
        if (!match.hasMatch()) {
            m_forms.append(form.split(u' ', Qt::SkipEmptyParts));
            continue;
        }
        for (const QString &choice : {QString(), match.captured(1)}) {
            open.append(
                QString(form).replace(match.capturedStart(), match.capturedLength(), choice));
        }
    }
}

QString Usage::mismatch(const QStringList &arguments) const
{
    QString problem = u"the number of arguments is wrong"_s;
    for (const QStringList &each : m_forms) {
        const QStringList form = stretched(each, arguments.size());
        if (form.size() != arguments.size()) {
            continue;
        }
        const auto [word, argument] =
            std::mismatch(form.begin(), form.end(), arguments.begin(), accepts);
        if (word == form.end()) {
            return {};
        }
        problem = u"\"%1\" doesn't fit %2"_s.arg(*argument, *word);
    }
    return u"%1; usage: %2"_s.arg(problem, m_usage);
}

} // namespace driver
