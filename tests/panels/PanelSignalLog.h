#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QStringList>

#include <utility>

/// Every signal that a panel's own class declares, as a line of text, in the order of their coming:
/// "doROX(1, 0, 2, 5000)". Bytes stand as signed numbers, as they travel.
class PanelSignalLog : public QObject
{
public:
    explicit PanelSignalLog(QObject *panel)
        : m_panel(panel)
    {
        const QMetaObject *metaObject = panel->metaObject();
        for (int i = metaObject->methodOffset(); i < metaObject->methodCount(); ++i) {
            if (metaObject->method(i).methodType() == QMetaMethod::Signal) {
                QMetaObject::connect(panel, i, this, firstOwnMethod() + i);
            }
        }
    }

    /// The lines so far, which are thereby forgotten.
    QStringList take() { return std::exchange(m_lines, {}); }

    /// Stands for one slot for each of the panel's methods, by which the signals arrive.
    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        id = QObject::qt_metacall(call, id, arguments);
        if (call != QMetaObject::InvokeMetaMethod || id < 0) {
            return id;
        }
        const QMetaMethod signal = m_panel->metaObject()->method(id);
        QStringList texts;
        for (int i = 0; i < signal.parameterCount(); ++i) {
            texts.append(toText(signal.parameterType(i), arguments[i + 1]));
        }
        m_lines.append(QString::fromLatin1(signal.name()) + u'(' + texts.join(QStringLiteral(", "))
                       + u')');
        return -1;
    }

private:
    static int firstOwnMethod() { return QObject::staticMetaObject.methodCount(); }

    static QString toText(int type, const void *argument)
    {
        switch (type) {
        case QMetaType::Char:
            return QString::number(int{*static_cast<const char *>(argument)});
        case QMetaType::Int:
            return QString::number(*static_cast<const int *>(argument));
        case QMetaType::Bool:
            return QVariant(*static_cast<const bool *>(argument)).toString();
        default:
            return QStringLiteral("?");
        }
    }

    QObject *m_panel;
    QStringList m_lines;
};
