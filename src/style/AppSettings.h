#pragma once

#include <QMap>
#include <QSettings>
#include <QVariant>

class QWidget;

/// The settings of the application in the user's own INI file, for the organisation
/// "MORAVINT Drive Works" and the executable's base name. To be made on the stack where it is
/// needed. Failures of the file pass silently, and a missing key gives the default.
///
/// A normal run of the program neither reads nor writes the file: the window always opens at the
/// same size, and only the style's selector of a font size keeps its choice here.
class AppSettings : public QSettings
{
    Q_OBJECT

public:
    /// Binds to the file, which need not exist.
    AppSettings();

    /// Stores the state of a QMainWindow, and size and position of any widget under keys that end
    /// in @p suffix, and writes the file. A maximised or minimised widget keeps its last normal
    /// geometry on file.
    void saveWidgetGeometry(QWidget *widget, const QString &suffix);
    /// Centres the widget on the primary screen, then applies what is stored under @p suffix; what
    /// isn't stored stays.
    void restoreWidgetGeometry(QWidget *widget, const QString &suffix);

    /// A free map of named values at the top level of the file; empty if there is none.
    QMap<QString, QVariant> readParameterMap() const;
    /// Stores @p map in place of the one before and writes the file. Tells of it on the debug
    /// stream.
    void writeParameterMap(const QMap<QString, QVariant> &map);
};
