#include "style/AppSettings.h"

#include <QCoreApplication>
#include <QDebug>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

constexpr int StateVersion = 0;

const QString Group = u"Mainwindow"_s;
const QString WindowStateKey = u"WindowState"_s;
const QString SizeKey = u"Size"_s;
const QString PositionKey = u"Position"_s;
const QString ParameterMapKey = u"Parameter Map"_s;

} // namespace

AppSettings::AppSettings()
    : QSettings(QSettings::IniFormat, QSettings::UserScope, u"MORAVINT Drive Works"_s, qAppName())
{
}

void AppSettings::saveWidgetGeometry(QWidget *widget, const QString &suffix)
{
    beginGroup(Group);
    if (const auto *window = qobject_cast<QMainWindow *>(widget)) {
        setValue(WindowStateKey, window->saveState(StateVersion));
    }
    if (!widget->isMaximized() && !widget->isMinimized()) {
        setValue(SizeKey + suffix, widget->size());
        setValue(PositionKey + suffix, widget->pos());
    }
    endGroup();
    sync();
}

void AppSettings::restoreWidgetGeometry(QWidget *widget, const QString &suffix)
{
    // The screen's own origin isn't added: the primary screen's is the desktop's.
    if (const QScreen *primary = QGuiApplication::primaryScreen()) {
        const QSize screen = primary->geometry().size();
        widget->move((screen.width() - widget->width()) / 2,
                     (screen.height() - widget->height()) / 2);
    }

    beginGroup(Group);
    if (auto *window = qobject_cast<QMainWindow *>(widget)) {
        window->restoreState(value(WindowStateKey).toByteArray(), StateVersion);
    }
    widget->resize(value(SizeKey + suffix, widget->size()).toSize());
    widget->move(value(PositionKey + suffix, widget->pos()).toPoint());
    endGroup();
}

QMap<QString, QVariant> AppSettings::readParameterMap() const
{
    return value(ParameterMapKey, QVariant()).toMap();
}

void AppSettings::writeParameterMap(const QMap<QString, QVariant> &map)
{
    qDebug() << "Parameter" << map;
    setValue(ParameterMapKey, map);
    sync();
}
