<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" sourcelanguage="en">
<context>
    <name>CorrectionSettings</name>
    <message>
        <source>Dynamic error correction</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Velocity correction P</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max. following error [s]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max. correction velocity [pps]</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DChartSelector</name>
    <message>
        <source>Dialog</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Available parameter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selected parameter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cmd</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Motor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select charts for &quot;%1&quot; graph</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DEncoderInitialization</name>
    <message>
        <source>Encoder initialization</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning! &lt;br&gt;The motor will rotate during initialization!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Motor fullstep resolution</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initialization status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start encoder initialization</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>State=0: Encoder detection has not been performed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>State=1: Encoder detection still running...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>State=2: Encoder was successfully detected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>State=3: Encoder detection failed!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainAppStyle</name>
    <message>
        <source>Font size %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export settings to *.ini</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import settings from *.ini</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export settings to ZDRL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Info</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show velocity graph</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show position graph</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show torque graph</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>110 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>300 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>600 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1200 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>2400 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>4800 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>9600 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>14400 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>19200 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>38400 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>56000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>57600 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>76800 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>115200 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>128000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>230400 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>256000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>460800 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>500000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>576000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>921600 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1000000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1152000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1500000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>2000000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>2500000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>3000000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>3500000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>4000000 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undefined data bits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>5 bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>6 bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>7 bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>8 bit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undefined parity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Odd</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Even</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undefined stop bits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1.5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undefined flow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hardware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Xon/Xoff</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No errors.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opened::Device is successfully opened. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closed::Device is successfully closed. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Baud rate is successfully set. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Parity is successfully set. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Data bits is successfully set. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Stop bits is successfully set. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Flow is successfully set. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Char timeout is successfully set. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::DTR is successfully changed. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::RTS is successfully changed. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Status lines successfully get. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Send break successfully. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Set break successfully. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Flush successfully. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Reset successfully. OK!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error opening. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device is not open. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opened::Opened mode unsupported. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opened::Opened mode undefined. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opened::Invalid device descriptor. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opened::Fail saved old settings. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opened::Fail get current settings. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opened::Fail set default settings. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device is already open. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closed::Fail set old settings. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closed::Fail close device descriptor. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closed::Fail close device. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parameters::Set baud rate fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parameters::Set data bits fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parameters::Set parity fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parameters::Set stop bits fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parameters::Set flow control fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parameters::Set char interval timeout. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parameters::Set total read interval timeout. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Get bytes available fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Set DTR fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Set RTS fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Get lines status fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Wait for ready read from device - i/o problem. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Wait for ready read timeout. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Wait for bytes writtten to device - i/o problem. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Wait for bytes writtten timeout. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Read data from device - i/o problem. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Write data to device - i/o problem. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Flush fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Send break fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Set break fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Controls::Reset fail. Error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undefined baud</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AbstractSerial::statusToString(Status val) -&gt; Status mode: %1 undefined. Error!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Stepper</name>
    <message>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RS485</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CAN (Kvaser)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quickstart</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loop mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Init encoder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closed Loop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Encoder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Torque</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Positioning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ZDRL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USB connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CAN connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Velocity mode [pps, pps/s]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>V_ACTUAL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>V_TARGET</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position mode [µsteps]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X_ACTUAL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X_TARGET</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Torque mode [mA]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Phase Î max</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Phase Î target</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open loop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closed loop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>General settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>full step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>half step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>4 microsteps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>8 microsteps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>16 microsteps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>32 microsteps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>64 microsteps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>128 microsteps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>256 microsteps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Chopper settings ZDR626</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current scaler settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current control [mA]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max. phase current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target phase current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max. velocity [pps]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Accel.[pps/s]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Velocity control [pps]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actual vel.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target vel.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position control [µsteps]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>actual [pps]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>target [pps]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>actual [µsteps]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>target [µsteps]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delta</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>delta</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings files (*.ini)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Setting files (*.ini)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export settings to ZDRL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ZDRL Files (*.zdr)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WActualStepperCurrents</name>
    <message>
        <source>Actual currents [mA]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Motor current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Peak current phase A</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Peak current phase B</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WCANConnection</name>
    <message>
        <source>CAN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bitrate [kBit/s]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Receive ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WChopperSettings</name>
    <message>
        <source>Chopper settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Blank time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Slope high side</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Slope low side</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hysteresis decrement</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hysteresis end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hysteresis start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off time</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WClosedLoopSettings</name>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>[mA]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max current [mA]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Supply voltage [1/10V]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DC current [mA]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature [C]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right limit switch disabled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left limit switch disabled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WConnection</name>
    <message>
        <source>Connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WCurrentControl</name>
    <message>
        <source>Current Control</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actual cur. [mA] </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target cur. [mA] </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apply current to the left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apply current to the left while held</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apply current to the right while held</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apply current to the right</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WCurrentScalerSettings</name>
    <message>
        <source>Scaler settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current I scaler min</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current I scaler max</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scaler lower limit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scaler upper limit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current scaler value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scale inc</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scale dec</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scale inc timeout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scaler dec timeout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current scaler enabled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current scaler input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>error x 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>error x gain</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WDialer</name>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WDirectMode</name>
    <message>
        <source>Request</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Command</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Motor/Bank</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reply</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WFieldWeakeningSettings</name>
    <message>
        <source>Field weakening settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gamma VMin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gamma VMax</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WJogPositionControl</name>
    <message>
        <source>Motor 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actual</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Track continuous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MVP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move absolut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MST</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target position dial</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WJogTorqueControl</name>
    <message>
        <source>Motor 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Track continuous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MST</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target current dial</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WJogVelocityControl</name>
    <message>
        <source> Motor 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Velocity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Accelleration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Acceleration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actual</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ROL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn left while held</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MST</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ROR</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn right while held</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target velocity dial</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Acceleration dial</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WOpenLoopSettings</name>
    <message>
        <source>Open loop settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Standby current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>[mA]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Standby current [mA]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Microstep resolution</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WPositionControl</name>
    <message>
        <source>Position control</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actual pos.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear on NULL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target pos.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Relative to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MVP_ABS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>abs. </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MVP_REL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>rel. </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WPositionMaintenanceSettings</name>
    <message>
        <source>Position maintenance settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position reached window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position reached time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position reached time [1/10ms]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>[1/10ms]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Standstill  error gain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Standstill  dampening</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Standstill  error limit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Velocity reached window</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WSerialConnection</name>
    <message>
        <source>Serial Connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Port:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Baudrate:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>4800</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>9600</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>14400</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>19200</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>38400</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>57600</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>115200</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disconnect</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WSimpleScaledGraphController</name>
    <message>
        <source>Scaling Y-axis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dynamic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>manual</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Min.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear charts</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WStepperEncoderSettings</name>
    <message>
        <source>Encoder settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actual encoder value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Encoder resolution (positions)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Motor fullstep resolution</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Encoder offset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Encoder type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SSI</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ABN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WStepperStatusFlags</name>
    <message>
        <source>Status flags</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Velocity mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Torque mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position reached</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Velocity reached</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Home switch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right switch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left switch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closed loop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undervoltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Overvoltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Overtemperature</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WStepperVelocityRampControl</name>
    <message>
        <source>Velocity ramp control</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max velocity [pps]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Acceleration [pps/s]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start-stop velocity [pps]</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WTraceController</name>
    <message>
        <source>Trace controller</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delay [ms]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WVelocityControl</name>
    <message>
        <source>Velocity control</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actual vel. [rpm] </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target vel. [rpm] </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ROL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn left while held</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MST</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn right while held</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ROR</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn right</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>msgText</name>
    <message>
        <source>unable to open port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restart by cycle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try restart</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device is busy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device is not connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device disconnected</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
