#include "driver/ScriptParser.h"

#include "driver/Language.h"
#include "driver/NearMatches.h"
#include "driver/Usage.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace driver {

bool ScriptParser::parse(const QString &text)
{
    m_script.clear();
    const QStringList lines = text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (!parseLine(static_cast<int>(i) + 1, lines[i].trimmed())) {
            return false;
        }
    }
    return true;
}

bool ScriptParser::parseLine(int number, const QString &line)
{
    m_error = {number, line, {}};
    QList<Word> words;
    if (!split(line, words)) {
        return false;
    }
    if (words.isEmpty()) {
        return true;
    }

    QStringList arguments;
    QStringList shown;
    for (Word &word : words) {
        if (!replaceVariables(word.text)) {
            return false;
        }
        arguments.append(word.text);
        shown.append(word.quoted ? u'"' + word.text + u'"' : word.text);
    }
    const QString name = arguments.takeFirst();
    const Verb *verb = verbNamed(name);
    if (!verb) {
        const QStringList near = nearMatches(name, verbNames());
        return fail(u"there is no step of this name%1"_s.arg(
            near.isEmpty() ? QString() : u"; near it: "_s + near.join(u", "_s)));
    }
    if (const QString wrong = Usage(QString(verb->usage)).mismatch(arguments); !wrong.isEmpty()) {
        return fail(wrong);
    }
    m_script.append({number, verb, arguments, shown.join(u' ')});
    return true;
}

bool ScriptParser::split(const QString &line, QList<Word> &words)
{
    qsizetype at = 0;
    while (at < line.size()) {
        if (line[at].isSpace()) {
            ++at;
            continue;
        }
        if (line[at] == u'#') {
            return true;
        }
        Word word;
        if (line[at] == u'"') {
            if (!takeQuoted(line, at, word)) {
                return false;
            }
        } else {
            while (at < line.size() && !line[at].isSpace()) {
                word.text.append(line[at++]);
            }
        }
        words.append(word);
    }
    return true;
}

bool ScriptParser::takeQuoted(const QString &line, qsizetype &at, Word &word)
{
    word.quoted = true;
    for (++at; at < line.size(); ++at) {
        // Any other backslash stands for itself: paths have them.
        const bool escaped = line[at] == u'\\' && at + 1 < line.size()
            && (line[at + 1] == u'"' || line[at + 1] == u'\\');
        if (escaped) {
            word.text.append(line[++at]);
        } else if (line[at] == u'"') {
            ++at;
            if (at < line.size() && !line[at].isSpace()) {
                return fail(u"a blank must follow the closing quote"_s);
            }
            return true;
        } else {
            word.text.append(line[at]);
        }
    }
    return fail(u"the closing quote is missing"_s);
}

bool ScriptParser::replaceVariables(QString &text)
{
    static const QRegularExpression variable(u"\\$\\{([A-Za-z_][A-Za-z0-9_]*)\\}"_s);
    QString replaced;
    qsizetype end = 0;
    for (const QRegularExpressionMatch &match : variable.globalMatch(text)) {
        const QByteArray name = match.captured(1).toLocal8Bit();
        if (!qEnvironmentVariableIsSet(name.constData())) {
            return fail(u"the environment has no variable %1"_s.arg(match.captured(1)));
        }
        replaced += QStringView(text).mid(end, match.capturedStart() - end);
        replaced += qEnvironmentVariable(name.constData());
        end = match.capturedEnd();
    }
    text = replaced + text.mid(end);
    return true;
}

bool ScriptParser::fail(const QString &reason)
{
    m_error.reason = reason;
    return false;
}

} // namespace driver
