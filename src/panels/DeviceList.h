#pragma once

#include "panels/ConnectionButtons.h"

#include <QString>

#include <optional>

class QComboBox;

/// The devices that a connection panel offers in a combo box, and what their coming and going
/// means for the panel's buttons.
///
/// Each item shows the port and, in brackets, the first word of the description. Its user data is
/// the list (port, description): the port in it identifies the item, the shown text is never
/// parsed.
class DeviceList
{
public:
    /// Works on a combo box that the form owns; it must outlive this object.
    DeviceList(QComboBox *comboBox, const ConnectionButtons &buttons);

    /// Appends a device. The first one enables "Connect"; later ones leave the buttons alone, so
    /// that a device that turns up while connected doesn't enable it. A port that is listed
    /// already gets a second item.
    void add(const QString &port, const QString &description);
    /// Removes the first item of @p port, and only that. If it is the current one the buttons go
    /// back to disconnected before; without any item left, "Connect" is disabled.
    void remove(const QString &port);
    /// Removes all items. No button changes.
    void clear();
    /// The port of the current item; nothing if no item is selected.
    std::optional<QString> currentPort() const;

private:
    int indexOf(const QString &port) const;

    QComboBox *m_comboBox;
    ConnectionButtons m_buttons;
};
