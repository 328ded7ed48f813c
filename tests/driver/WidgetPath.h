#pragma once

#include <QList>
#include <QString>

class QWidget;

namespace driver {

/// How a script names a widget: segments with slashes between, the last one for the widget itself,
/// those before it for ancestors of it, outer ones first. Ancestors may be left out. A segment is
///   name     a widget with this object name
///   [text]   a widget that shows this text or title, a mnemonic's "&" left out
///   :Class   a widget of this class or one derived from it
class WidgetPath
{
public:
    explicit WidgetPath(const QString &path);

    /// Whether the path is well-formed: at least one segment, none empty, all brackets closed.
    bool isValid() const { return !m_segments.isEmpty(); }
    /// Whether the path stands for `widget`.
    bool matches(const QWidget *widget) const;
    /// Whether the last segment alone stands for `widget`.
    bool matchesLast(const QWidget *widget) const;
    /// What is left of the last segment without the mark of its kind.
    QString lastWord() const;

private:
    enum class Kind { Name, Text, Class };
    struct Segment
    {
        Kind kind = Kind::Name;
        QString word;
        bool matches(const QWidget *widget) const;
    };

    QList<Segment> m_segments;
};

/// The text that a user reads on `widget`: its text, or else its title, without the "&" of a
/// mnemonic; empty if it has none.
QString shownText(const QWidget *widget);

/// `text` without the marks of mnemonics: "&File" is read as "File", "R&&D" as "R&D".
QString withoutMnemonic(const QString &text);

} // namespace driver
