#include "comm/MessageCatalogue.h"

#include <QCoreApplication>

namespace {

constexpr const char *Context = "msgText";
constexpr const char *Messages[] = {
    QT_TRANSLATE_NOOP("msgText", "unable to open port"),
    QT_TRANSLATE_NOOP("msgText", "Firmware update"),
    QT_TRANSLATE_NOOP("msgText", "Restart by cycle"),
    QT_TRANSLATE_NOOP("msgText", "Try restart"),
    QT_TRANSLATE_NOOP("msgText", "Device is busy"),
    QT_TRANSLATE_NOOP("msgText", "Device is not connected"),
    QT_TRANSLATE_NOOP("msgText", "Device disconnected"),
};

} // namespace

QStringList messageCatalogue()
{
    QStringList texts;
    for (const char *message : Messages) {
        texts.append(QCoreApplication::translate(Context, message));
    }
    return texts;
}
