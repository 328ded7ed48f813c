#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QString>

/// What a settings file says, for the import. The file is an INI file as QSettings writes it, but
/// it is not read by QSettings, which tells keys apart by case on every system but one: a key that
/// isn't found would set a parameter of the module to 0.
///
/// Sections and keys are compared without regard to case. Of two lines with the same key the later
/// one counts. The text of a value ends at a semicolon, and double quotes around it, or around a
/// part of it, are taken off. Values are numbers only: one with an escape sequence isn't any.
class SettingsFileContent
{
public:
    /// Files are read up to here, in bytes, so that a huge one that was picked by mistake is no
    /// harm; a settings file has about a thousand.
    static constexpr qint64 LargestSize = 1 << 20;

    /// @p text is what stands in the file.
    explicit SettingsFileContent(QByteArrayView text);
    /// What the file @p fileName says: nothing, if there is none, if it can't be read, or if it is
    /// no plain file.
    static SettingsFileContent ofFile(const QString &fileName);

    /// The value of @p key in @p section. 0 where the file has none, or where its text isn't a
    /// whole decimal number of 32 bits with or without a sign.
    int number(QStringView section, QStringView key) const;

private:
    QHash<QString, QString> m_texts; ///< by "section/key", both in lower case
};
