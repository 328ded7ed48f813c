"""A module on RS485, behind an FTDI adapter."""

import os

from hardware import FtdiAdapter, Line, wait_until
from system_test import PATIENCE, STOP_POLLING, SystemTest, ask, wait_until_free, wait_until_gone
from tool import Tool

NODE = "/dev/ttyUSB0"
RATES = (4800, 9600, 14400, 115200)  # 14400 has no constant of its own in the kernel

SHOW_PANEL = f"""
    tab tabWidget Connection
    tab twConnections RS485
    set wSerialConnection/sbAddress 7
    wait wSerialConnection/cmbDevices items contains ttyUSB0 {PATIENCE}
    select wSerialConnection/cmbDevices "ttyUSB0 [unknown]"
    """

CONNECT = f"""
    click wSerialConnection/btnConnect
    wait tabWidget currentTabText == Quickstart {PATIENCE}
    """


# The adapter was there before, and stays in the list; being plugged in again makes a further item.
PLUGGED_AGAIN = f"""
    wait wSerialConnection/cmbDevices items matches "ttyUSB0.*ttyUSB0" {PATIENCE}
    {CONNECT}
    """


class Rs485(SystemTest):
    """The adapter's driver gets what the tool is set to, and may be pulled out."""

    def serve(self, rate):
        module = self.serve_line(FtdiAdapter.far_end, "--address", "7", "--baud", str(rate))
        module.tell("set 4 11111")
        return module

    def test_speeds_and_modem_lines(self):
        self.module = None
        script = SHOW_PANEL
        cues = {}
        for rate in RATES:
            cues[f"serve-{rate}"] = lambda rate=rate: self.serve_instead(rate)
            cues[f"look-{rate}"] = lambda rate=rate: self.assert_line(rate)
            script += f"""
                cue serve-{rate}
                select wSerialConnection/cmbBaudrates {rate}
                {CONNECT}
                cue look-{rate}
                {ask(rate)}
                tab tabWidget Connection
                click wSerialConnection/btnDisconnect
                """
        self.drive(script + "close", cues)

    def serve_instead(self, rate):
        """A module at RATE takes the place of the one before."""
        wait_until_free(NODE)
        if self.module:
            self.assertIn("line < 07 06 04 00 00 00 00 00 11", self.module.log())
            self.module.stop()
        self.module = self.serve(rate)
        self.module.tell(f"set 4 {rate}")

    def assert_line(self, rate):
        with Line(NODE) as line:
            self.assertEqual(line.settings(), f"{rate} 8N1")
            self.assertEqual(line.modem_lines(), {"DTR", "RTS", "CTS", "DSR", "CD"})

    def test_adapter_pulled_out_and_plugged_in_again(self):
        adapter = FtdiAdapter()
        module = self.serve(19200)

        def plug_again():
            wait_until_gone(NODE)
            module.tell("set 4 22222")
            adapter.plug()
            wait_until(lambda: os.path.exists(NODE), f"{NODE} is there")
            self.assertFalse(os.path.exists("/dev/ttyUSB1"))

        with Tool(f"""
            {SHOW_PANEL}
            select wSerialConnection/cmbBaudrates 19200
            {CONNECT}
            {STOP_POLLING}
            cue out
            wait wSerialConnection/btnConnect enabled == true {PATIENCE}
            expect wSerialConnection/btnDisconnect enabled == false
            cue idle
            cue again
            {PLUGGED_AGAIN}
            {ask(22222)}
            close
            """, {"out": adapter.pull_out, "idle": lambda: self.assert_idle(tool),
                  "again": plug_again}) as tool:
            tool.finish()

    def test_adapter_pulled_out_while_the_tool_polls(self):
        adapter = FtdiAdapter()
        module = self.serve(115200)

        def pull_out_amid_polling():
            count = len(module.log())
            wait_until(lambda: len(module.log()) > count + 20, "the tool polls")
            adapter.pull_out()

        def plug_again():
            wait_until_gone(NODE)
            adapter.plug()
            wait_until(lambda: os.path.exists(NODE), f"{NODE} is there")

        self.drive(f"""
            {SHOW_PANEL}
            select wSerialConnection/cmbBaudrates 115200
            {CONNECT}
            cue out
            tab tabWidget Connection
            wait wSerialConnection/btnConnect enabled == true {PATIENCE}
            cue again
            {PLUGGED_AGAIN}
            {ask(11111)}
            close
            """, {"out": pull_out_amid_polling, "again": plug_again})
        self.assertFalse(os.path.exists("/dev/ttyUSB1"))
