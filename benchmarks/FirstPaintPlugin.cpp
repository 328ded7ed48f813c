#include <QEvent>
#include <QGenericPlugin>
#include <QGuiApplication>
#include <QTimer>

#include <cstdlib>

/// Ends an unchanged Qt program as soon as its first window has been painted:
/// QT_QPA_GENERIC_PLUGINS=zdrfirstpaint.
class FirstPaintPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "FirstPaintPlugin.json")

public:
    QObject *create(const QString &, const QString &) override
    {
        qGuiApp->installEventFilter(this);
        return new QObject;
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::UpdateRequest) {
            // Behind the request, when the window's content has been flushed.
            QTimer::singleShot(0, [] { std::_Exit(EXIT_SUCCESS); });
        }
        return false;
    }
};

#include "FirstPaintPlugin.moc"
