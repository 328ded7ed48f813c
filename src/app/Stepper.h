#pragma once

#include "panels/AxisParameter.h"

#include <QWidget>

#include <array>
#include <memory>
#include <vector>

class CANKvaserCommandHandler;
class Command;
class CommandHandlerInterface;
class CorrectionSettings;
class QSerialCommandHandler;
class QSettings;
class SettingsFileContent;
class TraceCommand;
class WSimpleScaledDrawer;
class WStepperVelocityRampControl;

namespace Ui {
class Stepper;
}

/// The central widget and the one assembly point: it owns the transports, wires every panel to
/// them, tells the panels which module address to talk to, and enables the controls with the
/// connection. No panel knows another panel or a transport.
///
/// There is no current transport: what must reach the module asks each in turn whether it is
/// connected, and goes out on each that is.
///
/// An open slot hands the module's address to all panels, opens its transport, reads the settings,
/// enables the controls, shows the quickstart tab and starts polling. If the transport doesn't
/// open, its connection panel returns to ready; if the module is lost meanwhile, the controls stay
/// disabled. A close slot disables them; polling goes on, and a closed transport sends nothing.
///
/// A connection is lost without a message: the connection panels return to ready, the tabs stay as
/// they were.
class Stepper : public QWidget
{
    Q_OBJECT

public:
    /// @p mainWindow is the window that takes the widget over. It is only stored.
    explicit Stepper(QWidget *mainWindow);
    /// Closes the transports.
    ~Stepper() override;

    /// Shows or hides a chart, and has the values that it needs polled or no longer polled.
    void showVelocityDrawer(bool show);
    void showPositionDrawer(bool show);
    void showTorqueDrawer(bool show);

public slots:
    /// Offers the port of a USB module for a connection.
    void handleAttachedUsbDevice(QString port, QString description);
    /// Also for a module that only failed to answer in time. Both serial panels return to ready;
    /// the transport is left as it is.
    void handleDetachedUsbDevice(QString port);
    /// Over USB the module's address is always 1. An empty @p port doesn't open.
    void openUsbHandler(QString port);
    /// Closes the serial port, whichever slot has opened it.
    void closeUsbHandler();
    /// @p baudrate in baud; @p address is the module's, of which the lowest 8 bits count. An empty
    /// @p port doesn't open. Once opened, values are polled less often, also on later connections.
    void openSerialHandler(QString port, int baudrate, int address);
    /// The same as closeUsbHandler(), with a debug line.
    void closeSerialHandler();
    /// Offers a serial port that is no USB module's for a connection.
    void handleAttachedSerialDevice(QString port, QString description);
    /// @p bitrate in kBit/s; @p sendID is the module's address, of which the lowest 8 bits count.
    /// @p receiveID is ignored: the module's replies are known by coming next.
    void openCANKvaserHandler(int bitrate, int sendID, int receiveID);
    /// Closes the CAN channel.
    void closeCANKvaserHandler();
    /// The CAN module didn't answer: unlike a serial port, the channel is closed.
    void handleCanKvaserDeviceClosed(char id);
    /// @p value in pps: the sign chooses the direction of rotation, 0 stops. Has no connection.
    void handleTargetVelocityChange(char address, char motorBank, int value);
    /// Moves to, or by, @p value in µsteps; @p moveType 0 is absolute, 1 relative.
    void handleTargetPositionChange(char address, char motorBank, char moveType, int value);
    /// Sets the actual position to 0, whatever @p value says.
    void handleActualPositionChange(char address, char motorBank, int value);
    /// Sets the target current, @p value in mA; its sign is the direction of the torque.
    void handleTargetTorqueChange(char address, char motorBank, int value);
    /// Loop mode 0 or 1; any other does nothing. Has no connection.
    void handleSelectedTypeChanged(int type);
    /// @p value in mA becomes the largest target current that can be entered.
    void handleMaxCurrentChanged(int value);
    /// Highlights the jog panel of the kind of motion that the module is in: 0 positioning,
    /// 1 velocity, 2 torque. Any other leaves the highlight as it is.
    void handleMotorControlModeChanged(int mode);
    /// Reads all settings from the module into an INI file that the user names.
    void exportSettings();
    /// Writes all settings of an INI file that the user names to the module, and reads back each.
    /// What the file lacks, or isn't a number there, is written as 0.
    void importSettings();
    /// Reads all settings from the module into a script in its language, which the user names.
    void exportSettingsToZDRL();
    /// Shows the loop mode that a module answered with, if the tab has an item for it. Address and
    /// bank are deliberately not looked at: there is one loop mode box for whatever is connected.
    void requestedValue(char address, char motorBank, char type, int value);
    /// Sends the chosen loop mode: @p value is the text of an item, whose number stands before
    /// " :". Any other text is mode 0.
    void actualLoopModeChanged(QString value);
    /// Builds the list of polled values anew, since the curves of a chart are others now.
    void updateTraceValues();
    /// Has the encoder detected in a dialog.
    void handleBtnEncoderClicked();
    /// What must not change while the motor turns is locked until it stands still.
    void handleMotorHalted(bool halted);

private:
    void createSerialHandler();
    void createCanHandler();
    void wireTraceController();
    void wireConnectionPanels();
    void wireDirectMode();
    void assembleQuickstartTab();
    void assembleSettingsTab();
    void assembleClosedLoopTab();
    void assembleEncoderTab();
    void assembleTorqueTab();
    void assembleVelocityTab();
    void assemblePositioningTab();
    void assembleStates();
    void assembleRampControl(WStepperVelocityRampControl *ramp);
    void assembleCorrectionSettings(CorrectionSettings *correction);
    /// Binds @p panel to both transports by each of @p Links, which are of Wire.
    template <unsigned Links, typename Panel>
    void wire(Panel *panel);

    void buildAvailableTraceCommands();
    void configureCharts();
    void wireCharts();
    void showDrawer(WSimpleScaledDrawer *drawer, bool show);
    /// The charts from top to bottom.
    std::array<WSimpleScaledDrawer *, 3> drawers() const;

    /// What the three open slots have in common: hand @p address to the panels, open the transport
    /// by @p open (false puts @p panel back to ready), read the settings, enable the controls.
    template <typename ConnectionPanel, typename OpenTransport>
    void openConnection(char address, ConnectionPanel *panel, OpenTransport open);
    /// Lets the panels read their values, one panel at a time, until the module is lost.
    void readModuleSettings();
    /// Enables or disables all that needs a module. The connection tab always stays enabled.
    void enableModuleControls(bool enabled);
    /// Hands @p address to every panel and builds the list of polled values anew.
    void updateTraceCommands(char address);
    void handAddressToPanels(char address);
    /// What the panels show all the time, then what the charts on display need.
    void collectTraceCommands(char address);

    bool isAnyHandlerConnected() const;
    /// One exchange of an export or import. Null, if no answer came, and at once for the rest of a
    /// run that has lost a module.
    std::unique_ptr<Command> exchangeSetting(CommandHandlerInterface *handler, char command,
                                             char type, int value);
    /// One axis parameter from the module into the open section.
    void writeSetting(QSettings &settings, char type, const QString &key);
    /// One key to the module, which is then asked for the value, so that the panels follow.
    void importSetting(const SettingsFileContent &content, QStringView section, char type,
                       const QString &key);
    /// The line of a script that sets an axis parameter to what the module has; with two modules
    /// two lines, and none without an answer.
    QString sapLine(char type, const QString &comment);

    /// Calls @p wire with each transport in turn: a connection to both is written once.
    template <typename Wiring>
    void withBothHandlers(Wiring wire);
    /// Calls @p send with each transport that is connected, in turn.
    template <typename Sending>
    void onConnectedHandlers(Sending send);

    std::unique_ptr<Ui::Stepper> m_ui;
    QWidget *m_mainWindow; ///< not owned
    char m_moduleAddress = 1; ///< from the last open attempt
    /// Set when the transport goes away, cleared at the start of each open attempt; it ends the
    /// reading of the settings early. Only calls on this thread change it, nested in an exchange.
    bool m_deviceDetached = true;
    char m_loopModeParameter = AxisParameters::ClosedLoopMode;
    std::unique_ptr<QSerialCommandHandler> m_serialHandler; ///< serves USB and RS485 alike
    std::unique_ptr<CANKvaserCommandHandler> m_canHandler;
    /// What a chart may show.
    std::vector<std::unique_ptr<TraceCommand>> m_availableTraceCommands;
    /// What the list of polled values holds.
    std::vector<std::unique_ptr<TraceCommand>> m_traceCommands;
};

template <typename Wiring>
void Stepper::withBothHandlers(Wiring wire)
{
    wire(m_serialHandler.get());
    wire(m_canHandler.get());
}

template <typename Sending>
void Stepper::onConnectedHandlers(Sending send)
{
    withBothHandlers([&send](auto *handler) {
        if (handler->isConnected()) {
            send(handler);
        }
    });
}
