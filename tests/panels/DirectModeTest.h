#pragma once

#include "PanelTest.h"
#include "panels/WDirectMode.h"

#include <QComboBox>
#include <QSpinBox>

#include <limits>

/// What the tests of the direct mode share.
namespace DirectModeTest {

using Panel = PanelTest::Shown<WDirectMode>;

inline constexpr int largestValue = std::numeric_limits<int>::max();

/// Address, command, type, motor or bank, value, as the reply row shows them.
inline QList<int> replyRow(const Panel &panel)
{
    QList<int> row;
    for (const char *field :
         {"sbReplyAddress", "sbReplyCommand", "sbReplyType", "sbReplyMotorBank", "sbReplyValue"}) {
        row.append(panel.child<QSpinBox>(field)->value());
    }
    return row;
}

inline void fillRequest(const Panel &panel, int commandIndex, int type, int motorBank, int value)
{
    panel.child<QComboBox>("cbCommand")->setCurrentIndex(commandIndex);
    panel.child<QSpinBox>("sbRequestType")->setValue(type);
    panel.child<QSpinBox>("sbRequestMotorBank")->setValue(motorBank);
    panel.child<QSpinBox>("sbRequestValue")->setValue(value);
}

inline char byte(int value)
{
    return static_cast<char>(value);
}

inline QVariantList request(int address, int command, int type, int motorBank, int value)
{
    return {QVariant::fromValue(byte(address)), QVariant::fromValue(byte(command)),
            QVariant::fromValue(byte(type)), QVariant::fromValue(byte(motorBank)), value};
}

} // namespace DirectModeTest
