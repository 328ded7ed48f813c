#pragma once

#include <QFile>
#include <QString>

/// The module's configuration as a script in its own command language, written to a file piece by
/// piece: ASCII with line feeds alone. Nothing reads such files back.
///
/// A file that can't be opened or written is no failure here: the pieces then go nowhere.
class ModuleScript
{
public:
    /// Empties the file @p fileName, if there is one.
    explicit ModuleScript(const QString &fileName);

    /// A command that sets axis parameter @p type, 0 to 255 in a signed byte, to @p value; with the
    /// end of the line. @p comment stands behind it as it is, after a blank.
    static QString sapLine(char type, int value, const QString &comment);

    /// The title of a section. All but the first have an empty line before them.
    void writeHeading(QStringView heading);
    /// Appends @p text, which is ASCII with its ends of lines, as it is.
    void write(const QString &text);
    /// Lets the module wait until its closed loop is initialised.
    void writeWaitForClosedLoop();

private:
    QFile m_file;
    bool m_isFirstHeading = true;
};
