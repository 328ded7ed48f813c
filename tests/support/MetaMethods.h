#pragma once

#include <QMetaMethod>
#include <QStringList>

/// The methods of @p kind that @p metaObject itself declares, in order, each as it would be
/// declared: "slotCts(bool value)".
inline QStringList ownMethods(const QMetaObject &metaObject, QMetaMethod::MethodType kind)
{
    QStringList methods;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        if (method.methodType() != kind) {
            continue;
        }
        QStringList parameters;
        for (int j = 0; j < method.parameterCount(); ++j) {
            const QByteArray name = method.parameterNames().at(j);
            parameters.append(QString::fromLatin1(method.parameterTypes().at(j)
                                                  + (name.isEmpty() ? "" : " ") + name));
        }
        methods.append(QString::fromLatin1(method.name()) + u'('
                       + parameters.join(QStringLiteral(", ")) + u')');
    }
    return methods;
}
