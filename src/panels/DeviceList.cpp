#include "panels/DeviceList.h"

#include <QComboBox>
#include <QDebug>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

// The description is cut at a single blank with empty words kept: one that begins with a blank
// shows as " []".
QString displayText(const QString &port, const QString &description)
{
    if (description.isEmpty()) {
        return port;
    }
    return port + u" ["_s + description.section(u' ', 0, 0) + u']';
}

// The combo box is narrow and shows one word of the description; the tool tip tells all.
QString toolTipText(const QString &port, const QString &description)
{
    return description.isEmpty() ? port : port + u'\n' + description;
}

void showCurrentToolTip(QComboBox *comboBox)
{
    comboBox->setToolTip(comboBox->currentData(Qt::ToolTipRole).toString());
}

void debugItem(int index, const QVariantList &data)
{
    QDebug debug = qDebug().nospace();
    debug << "item[" << index << "]: (";
    const char *separator = "";
    for (const QVariant &element : data) {
        debug << separator << element.toString();
        separator = ", ";
    }
    debug << ")";
}

} // namespace

DeviceList::DeviceList(QComboBox *comboBox, const ConnectionButtons &buttons)
    : m_comboBox(comboBox)
    , m_buttons(buttons)
{
    QObject::connect(comboBox, &QComboBox::currentIndexChanged, comboBox,
                     [comboBox] { showCurrentToolTip(comboBox); });
}

void DeviceList::add(const QString &port, const QString &description)
{
    if (m_comboBox->count() == 0) {
        m_buttons.setConnectEnabled(true);
    }
    m_comboBox->addItem(displayText(port, description), QVariantList{port, description});
    m_comboBox->setItemData(m_comboBox->count() - 1, toolTipText(port, description),
                            Qt::ToolTipRole);
    showCurrentToolTip(m_comboBox); // the first item became the current one without its tool tip
}

void DeviceList::remove(const QString &port)
{
    qDebug().nospace() << "removeDevice(" << port << ")";
    const int index = indexOf(port);
    if (index < 0) {
        return;
    }
    if (index == m_comboBox->currentIndex()) {
        m_buttons.showDisconnected();
    }
    m_comboBox->removeItem(index);
    if (m_comboBox->count() == 0) {
        m_buttons.setConnectEnabled(false);
    }
}

void DeviceList::clear()
{
    m_comboBox->clear();
}

std::optional<QString> DeviceList::currentPort() const
{
    const QVariantList data = m_comboBox->currentData().toList();
    if (data.isEmpty()) {
        return std::nullopt;
    }
    return data.first().toString();
}

/// The first item of @p port, compared exactly; -1 if there is none. Reports each item on the way.
int DeviceList::indexOf(const QString &port) const
{
    for (int index = 0; index < m_comboBox->count(); ++index) {
        const QVariantList data = m_comboBox->itemData(index).toList();
        debugItem(index, data);
        if (data.isEmpty()) {
            continue;
        }
        const QString itemPort = data.first().toString();
        qDebug().nospace() << "port: " << itemPort << " description: " << data.value(1).toString();
        if (itemPort == port) {
            return index;
        }
    }
    return -1;
}
