#pragma once

#include <QGenericPlugin>

namespace driver {

/// Takes the driver into any Qt program that is started with
///
///     QT_PLUGIN_PATH=<folder of the plug-ins> QT_QPA_GENERIC_PLUGINS=zdrdriver:<script>
///
/// With "--help" in place of the script it prints the language of the scripts (see Language.cpp)
/// and ends the program.
class DriverPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

public:
    /// Called while the application object is being made. Returns an object that the application
    /// owns, or null if `key` isn't the driver's.
    QObject *create(const QString &key, const QString &script) override;
};

} // namespace driver
