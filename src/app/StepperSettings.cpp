// The module's configuration as a file. Values come from the module and go to it, not to the
// panels, each by an exchange that blocks. There are no messages: all that happens is told to the
// debug stream.

#include "app/ModuleScript.h"
#include "app/SettingsFileContent.h"
#include "app/SettingsGroup.h"
#include "app/Stepper.h"
#include "comm/ByteText.h"
#include "comm/CANKvaserCommandHandler.h"
#include "comm/Command.h"
#include "comm/CommandNumbers.h"
#include "comm/QSerialCommandHandler.h"

#include <QDateTime>
#include <QDebug>
#include <QFileDialog>
#include <QSettings>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr char SettingsMotorBank = 0;
constexpr int ClosedLoop = 1;

/// While it lives, the flag of a lost module tells of this run alone. A loss of earlier, after
/// which a serial port may still be open and its module answer again, stands in it afterwards.
class LossInThisRun
{
public:
    explicit LossInThisRun(bool &lost)
        : m_lost(lost)
        , m_wasLost(std::exchange(lost, false))
    {
    }
    ~LossInThisRun() { m_lost = m_lost || m_wasLost; }
    LossInThisRun(const LossInThisRun &) = delete;
    LossInThisRun &operator=(const LossInThisRun &) = delete;

private:
    bool &m_lost;
    bool m_wasLost;
};

/// The present time and @p name, in the folder that the program was started in.
QString proposedName(const QString &name)
{
    return QDateTime::currentDateTime().toString(u"./yyyyMMdd_hh.mm.ss_") + name;
}

/// Sets @p key of the open section in whatever case the file has it. Where QSettings tells keys
/// apart by case, the file could else hold the key twice, and the import find the old value.
void setInAnySpelling(QSettings &settings, const QString &key, int value)
{
    const QString section = settings.group();
    const QString fullKey = section + u'/' + key;
    settings.endGroup();
    bool isInFile = false;
    const QStringList keysInFile = settings.allKeys();
    for (const QString &keyInFile : keysInFile) {
        if (keyInFile.compare(fullKey, Qt::CaseInsensitive) == 0) {
            settings.setValue(keyInFile, value);
            isInFile = true;
        }
    }
    if (!isInFile) {
        settings.setValue(fullKey, value);
    }
    settings.beginGroup(section);
}

} // namespace

bool Stepper::isAnyHandlerConnected() const
{
    return m_serialHandler->isConnected() || m_canHandler->isConnected();
}

std::unique_ptr<Command> Stepper::exchangeSetting(CommandHandlerInterface *handler, char command,
                                                  char type, int value)
{
    if (m_deviceDetached) {
        return nullptr;
    }
    Command request(m_moduleAddress, command, type, SettingsMotorBank, value);
    handler->sendCommand(&request);
    return std::unique_ptr<Command>(handler->readReply(m_moduleAddress));
}

// --- Settings file ----------------------------------------------------------------------------

void Stepper::exportSettings()
{
    qDebug("exporting settings to ini...");
    if (!isAnyHandlerConnected()) {
        return;
    }
    const QString fileName = QFileDialog::getSaveFileName(nullptr, tr("Export settings"),
                                                          proposedName(u"ZDRM-7710_Settings.ini"_s),
                                                          tr("Settings files (*.ini)"));
    qDebug().nospace() << "export to: " << fileName;

    const LossInThisRun lossInThisRun(m_deviceDetached);
    // By design nothing stops an export whose dialog was cancelled: all is read from the module,
    // and stored nowhere.
    QSettings settings(fileName, QSettings::IniFormat);
    for (const SettingsGroup &group : SettingsGroups::ExportOrder) {
        settings.beginGroup(group.section.toString());
        for (const AxisParameter &parameter : group.parameters) {
            writeSetting(settings, parameter, parameter.settingsKey.toString());
        }
        settings.endGroup();
    }
    qDebug("export to ini done.");
}

void Stepper::writeSetting(QSettings &settings, char type, const QString &key)
{
    // With two modules the second one's value stays.
    onConnectedHandlers([&](CommandHandlerInterface *handler) {
        const auto reply = exchangeSetting(handler, CommandNumber::GetAxisParameter, type, 0);
        if (!reply) {
            return;
        }
        setInAnySpelling(settings, key, reply->value());
        qDebug().nospace() << key << " = " << QString::number(reply->value());
    });
}

void Stepper::importSettings()
{
    qDebug("import settings from ini...");
    if (!isAnyHandlerConnected()) {
        return;
    }
    const QString fileName = QFileDialog::getOpenFileName(nullptr, tr("Import settings"), u"./"_s,
                                                          tr("Setting files (*.ini)"));
    if (fileName.isEmpty()) {
        qDebug("importFileName is empty!");
        return;
    }
    qDebug().nospace() << "importFileName: " << fileName;

    const LossInThisRun lossInThisRun(m_deviceDetached);
    // By design a file that says nothing, or that can't be read, sets every parameter to 0.
    const auto content = SettingsFileContent::ofFile(fileName);
    for (const SettingsGroup &group : SettingsGroups::ImportOrder) {
        for (const AxisParameter &parameter : group.parameters) {
            importSetting(content, group.section, parameter, parameter.settingsKey.toString());
        }
    }
    qDebug("import from ini done.");
}

void Stepper::importSetting(const SettingsFileContent &content, QStringView section, char type,
                            const QString &key)
{
    const int value = content.number(section, key);
    onConnectedHandlers([&](CommandHandlerInterface *handler) {
        const auto reply = exchangeSetting(handler, CommandNumber::SetAxisParameter, type, value);
        if (!reply) {
            return;
        }
        // The record carries the reply's status in its type. A refusal isn't acted upon.
        qDebug().nospace() << key << " = " << QString::number(value) << "("
                           << QString::number(unsignedByte(reply->type())) << ")";
        // The panels hear the answer: this is how they show what was imported.
        handler->getAxisParameter(m_moduleAddress, SettingsMotorBank, type);
    });
}

// --- Script -----------------------------------------------------------------------------------

void Stepper::exportSettingsToZDRL()
{
    qDebug("exporting settings to zdrl...");
    if (!isAnyHandlerConnected()) {
        return;
    }
    const QString fileName = QFileDialog::getSaveFileName(nullptr, tr("Export settings to ZDRL"),
                                                          proposedName(u"ZDRM-7710_Settings.zdr"_s),
                                                          tr("ZDRL Files (*.zdr)"));
    qDebug().nospace() << "export to: " << fileName;

    const LossInThisRun lossInThisRun(m_deviceDetached);
    {
        // As above, a cancelled dialog or a file that can't be opened stops nothing.
        ModuleScript script(fileName);
        for (const SettingsGroup &group : SettingsGroups::ScriptOrder) {
            if (m_deviceDetached) {
                break; // no titles without their lines
            }
            script.writeHeading(group.heading);
            for (const AxisParameter &parameter : group.parameters) {
                script.write(sapLine(parameter, "\t// "_L1 + parameter.scriptComment.toString()));
            }
        }
        onConnectedHandlers([&](CommandHandlerInterface *handler) {
            const auto reply = exchangeSetting(handler, CommandNumber::GetAxisParameter,
                                               AxisParameters::ClosedLoopMode, 0);
            if (reply && reply->value() == ClosedLoop) {
                script.writeWaitForClosedLoop();
            }
        });
    }
    qDebug("export to zdrl done.");
}

QString Stepper::sapLine(char type, const QString &comment)
{
    QString lines;
    onConnectedHandlers([&](CommandHandlerInterface *handler) {
        const auto reply = exchangeSetting(handler, CommandNumber::GetAxisParameter, type, 0);
        if (reply) {
            lines += ModuleScript::sapLine(type, reply->value(), comment);
        }
    });
    return lines;
}
