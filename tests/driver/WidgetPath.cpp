#include "driver/WidgetPath.h"

#include <QVariant>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace driver {

namespace {

// Slashes inside brackets belong to a text.
QStringList splitAtSlashes(const QString &path)
{
    QStringList parts{QString()};
    int depth = 0;
    for (const QChar c : path) {
        if (c == u'[') {
            ++depth;
        } else if (c == u']') {
            --depth;
        }
        if (c == u'/' && depth == 0) {
            parts.append(QString());
        } else {
            parts.last().append(c);
        }
    }
    return parts;
}

} // namespace

QString withoutMnemonic(const QString &text)
{
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && i + 1 < text.size()) {
            ++i;
        }
        plain.append(text[i]);
    }
    return plain;
}

QString shownText(const QWidget *widget)
{
    for (const char *property : {"text", "title"}) {
        const QVariant text = widget->property(property);
        if (text.isValid()) {
            return withoutMnemonic(text.toString());
        }
    }
    return {};
}

WidgetPath::WidgetPath(const QString &path)
{
    const QStringList parts = splitAtSlashes(path);
    for (const QString &part : parts) {
        Segment segment{Kind::Name, part};
        if (part.startsWith(u':')) {
            segment = {Kind::Class, part.mid(1)};
        } else if (part.startsWith(u'[') && part.endsWith(u']')) {
            segment = {Kind::Text, withoutMnemonic(part.mid(1, part.size() - 2))};
        } else if (part.contains(u'[')) {
            segment.word.clear();
        }
        if (segment.word.isEmpty()) {
            m_segments.clear();
            return;
        }
        m_segments.append(segment);
    }
}

bool WidgetPath::Segment::matches(const QWidget *widget) const
{
    switch (kind) {
    case Kind::Name:
        return widget->objectName() == word;
    case Kind::Text:
        return shownText(widget) == word;
    case Kind::Class:
        return widget->inherits(word.toLatin1().constData());
    }
    return false;
}

bool WidgetPath::matchesLast(const QWidget *widget) const
{
    return isValid() && m_segments.last().matches(widget);
}

bool WidgetPath::matches(const QWidget *widget) const
{
    if (!matchesLast(widget)) {
        return false;
    }
    // The nearest ancestor that fits is always a right choice, since it leaves the most others.
    auto open = m_segments.crbegin() + 1;
    for (widget = widget->parentWidget(); widget && open != m_segments.crend();
         widget = widget->parentWidget()) {
        if (open->matches(widget)) {
            ++open;
        }
    }
    return open == m_segments.crend();
}

QString WidgetPath::lastWord() const
{
    return isValid() ? m_segments.last().word : QString();
}

} // namespace driver
