#include "app/SettingsFileContent.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView ByteOrderMark = "\xEF\xBB\xBF";

bool isSpace(char byte)
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

bool isLineEnd(char byte)
{
    return byte == '\n' || byte == '\r';
}

/// One line without its comment. In quotes a line goes on over the ends of lines, and a backslash
/// takes what follows it along, the end of a line included.
struct Line
{
    QByteArrayView text;
    qsizetype equalsSign = -1; ///< place of the first one outside of quotes; -1: none
};

void skipSpacesAndComments(QByteArrayView &rest)
{
    for (;;) {
        rest = rest.sliced(std::find_if_not(rest.begin(), rest.end(), isSpace) - rest.begin());
        if (!rest.startsWith(';')) {
            return;
        }
        rest = rest.sliced(std::find_if(rest.begin(), rest.end(), isLineEnd) - rest.begin());
    }
}

/// Takes the next line that says something off @p rest; an empty one at the end.
Line takeLine(QByteArrayView &rest)
{
    skipSpacesAndComments(rest);
    Line line;
    bool isQuoted = false;
    qsizetype i = 0;
    for (; i < rest.size(); ++i) {
        const char byte = rest[i];
        if (byte == '\\') {
            ++i;
            if (i + 1 < rest.size() && rest[i] == '\r' && rest[i + 1] == '\n') {
                ++i;
            }
        } else if (byte == '"') {
            isQuoted = !isQuoted;
        } else if (isQuoted) {
            continue;
        } else if (isLineEnd(byte) || byte == ';') {
            break;
        } else if (byte == '=' && line.equalsSign < 0) {
            line.equalsSign = i;
        }
    }
    i = std::min(i, rest.size());
    line.text = rest.first(i);
    rest = rest.sliced(i);
    return line;
}

/// The name of a section or key as it is compared. In the file "%20" stands for a blank.
QString comparable(QByteArrayView name)
{
    const QByteArray bytes = QByteArray::fromPercentEncoding(name.trimmed().toByteArray());
    return QString::fromUtf8(bytes).toLower();
}

/// What stands before the key for all keys that follow the section's line @p text.
QString sectionPrefix(QByteArrayView text)
{
    const QByteArrayView behindBracket = text.sliced(1);
    const qsizetype end = behindBracket.indexOf(']');
    return comparable(end < 0 ? behindBracket : behindBracket.first(end)) + u'/';
}

QString valueText(QByteArrayView raw)
{
    return QString::fromUtf8(raw).remove(u'"');
}

} // namespace

SettingsFileContent::SettingsFileContent(QByteArrayView text)
{
    QByteArrayView rest = text;
    if (rest.startsWith(ByteOrderMark)) {
        rest = rest.sliced(ByteOrderMark.size());
    }
    QString prefix = u"general/"_s; // of keys without a section
    for (Line line = takeLine(rest); !line.text.isEmpty(); line = takeLine(rest)) {
        if (line.text.startsWith('[')) {
            prefix = sectionPrefix(line.text);
        } else if (line.equalsSign >= 0) {
            m_texts.insert(prefix + comparable(line.text.first(line.equalsSign)),
                           valueText(line.text.sliced(line.equalsSign + 1)));
        }
    }
}

SettingsFileContent SettingsFileContent::ofFile(const QString &fileName)
{
    // Devices and pipes might never end.
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly)) {
        return SettingsFileContent({});
    }
    return SettingsFileContent(file.read(LargestSize));
}

int SettingsFileContent::number(QStringView section, QStringView key) const
{
    return m_texts.value((section.toString() + u'/' + key.toString()).toLower()).toInt();
}
