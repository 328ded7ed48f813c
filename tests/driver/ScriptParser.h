#pragma once

#include "driver/Script.h"

#include <optional>

namespace driver {

/// Reads a script whole, before its first step is carried out, so that a slip in the last line
/// doesn't come to light only after minutes.
class ScriptParser
{
public:
    /// Reads `text`. Returns false at the first line that is wrong; see error().
    bool parse(const QString &text);

    /// The steps in order.
    const Script &script() const { return m_script; }
    /// What was wrong, after parse() has returned false.
    const ScriptError &error() const { return m_error; }

private:
    struct Word
    {
        QString text;
        bool quoted = false;
    };

    bool parseLine(int number, const QString &line);
    bool split(const QString &line, QList<Word> &words);
    bool takeQuoted(const QString &line, qsizetype &at, Word &word);
    bool replaceVariables(QString &text);
    bool fail(const QString &reason);

    Script m_script;
    ScriptError m_error;
};

} // namespace driver
