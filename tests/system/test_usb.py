"""The module's own USB port."""

import os
import threading
import time

from hardware import AcmDevice, Line, wait_until
from system_test import (CONNECT_USB, PATIENCE, STOP_POLLING, SystemTest, ask, wait_until_free,
                         wait_until_gone)
from tool import Tool

NODE = "/dev/ttyACM0"

# A port that was connected once stays in the list; a new one is a further item.
PLUGGED_AGAIN = f"""
    tab tabWidget Connection
    wait wUsbConnection/cmbDevices items == "ttyACM0 [ZDRM-7710]|ttyACM0 [ZDRM-7710]" {PATIENCE}
    click wUsbConnection/btnConnect
    wait tabWidget currentTabText == Quickstart {PATIENCE}
    """

DISCONNECTED = f"""
    tab tabWidget Connection
    wait wUsbConnection/btnConnect enabled == true {PATIENCE}
    expect wUsbConnection/btnDisconnect enabled == false
    """


class Usb(SystemTest):
    """The port of the module comes, works, goes, and comes again."""

    def plug_module(self):
        device = AcmDevice()
        self.addCleanup(device.destroy)
        self.module = self.serve_line(device.far_end)
        self.module.tell("set 4 11111")
        return device

    def plug_again(self, device):
        """Plugs the module in and makes sure that it got its old name back."""
        wait_until_gone(NODE)
        self.module.tell("fault off")
        self.module.tell("set 4 22222")
        device.plug()
        wait_until(lambda: os.path.exists(NODE), f"{NODE} is there")
        self.assertFalse(os.path.exists("/dev/ttyACM1"))

    def test_module_is_known_by_its_vendor_as_it_is_plugged_in(self):
        # A modem of another maker takes the first name.
        other = AcmDevice(number=1, vendor="0x1209", product="0x0001", maker="Other",
                          name="Other Modem")
        self.addCleanup(other.destroy)
        self.drive(f"""
            wait wSerialConnection/cmbDevices items contains ttyACM0 {PATIENCE}
            expect wUsbConnection/cmbDevices items == ""
            expect wUsbConnection/btnConnect enabled == false
            cue plug
            wait wUsbConnection/cmbDevices items == "ttyACM1 [ZDRM-7710]" {PATIENCE}
            {CONNECT_USB}
            {ask(11111)}
            close
            """, {"plug": self.plug_module})
        self.assertIn("line < 01 06 04 00 00 00 00 00 0B", self.module.log())

    def test_pulled_out_while_idle_and_plugged_in_again(self):
        device = self.plug_module()
        with Tool(f"""
            {CONNECT_USB}
            {STOP_POLLING}
            cue out
            {DISCONNECTED}
            cue idle
            cue again
            {PLUGGED_AGAIN}
            {ask(22222)}
            close
            """, {"out": device.pull_out, "idle": lambda: self.assert_idle(tool),
                  "again": lambda: self.plug_again(device)}) as tool:
            tool.finish()

    def test_pulled_out_in_an_exchange_and_plugged_in_again(self):
        device = self.plug_module()
        question = "line < 01 01 00 00 00 00 00 00 02"

        def fall_silent():
            # Where polling was at work, its last answer comes first.
            self.module.tell("fault silence")

        def pull_out_when_asked():
            wait_until(lambda: self.module.log()[-1] == question, "the module is asked")
            device.pull_out()

        # Sending blocks the window until the tool gives up: the cue has to come before.
        self.drive(f"""
            {CONNECT_USB}
            {STOP_POLLING}
            cue silence
            tab tabWidget ZDRL
            cue watch
            click wDirectMode/btnSend
            {DISCONNECTED}
            cue again
            {PLUGGED_AGAIN}
            {ask(22222)}
            close
            """, {"silence": fall_silent,
                  "watch": lambda: threading.Thread(target=pull_out_when_asked).start(),
                  "again": lambda: self.plug_again(device)})
        self.assertIn(question, self.module.log())

    def test_pulled_out_while_the_tool_polls_and_plugged_in_again(self):
        device = self.plug_module()

        def pull_out_amid_polling():
            count = len(self.module.log())
            wait_until(lambda: len(self.module.log()) > count + 20, "the tool polls")
            device.pull_out()

        self.drive(f"""
            {CONNECT_USB}
            cue out
            {DISCONNECTED}
            cue again
            {PLUGGED_AGAIN}
            {ask(22222)}
            close
            """, {"out": pull_out_amid_polling, "again": lambda: self.plug_again(device)})

    def test_plugged_in_again_before_the_tool_has_noticed(self):
        device = self.plug_module()

        def out_and_in():
            with tool.held_up():
                device.pull_out()
                wait_until(lambda: not os.path.exists(NODE), f"{NODE} is gone")
                device.plug()
                # The old name is taken for as long as the tool holds it.
                wait_until(lambda: os.path.exists("/dev/ttyACM1"), "the module has another name")
                self.module.tell("set 4 33333")
            wait_until_free(NODE)

        with Tool(f"""
            {CONNECT_USB}
            {STOP_POLLING}
            cue out-and-in
            {DISCONNECTED}
            wait wUsbConnection/cmbDevices items contains "ttyACM1 [ZDRM-7710]" {PATIENCE}
            select wUsbConnection/cmbDevices "ttyACM1 [ZDRM-7710]"
            {CONNECT_USB}
            {ask(33333)}
            close
            """, {"out-and-in": out_and_in}) as tool:
            tool.finish()

    def test_modem_lines_of_a_module_that_restarts(self):
        self.plug_module()

        def assert_lines(*names):
            with Line(NODE) as line:
                wait_until(lambda: line.modem_lines() == set(names),
                           f"the lines are {names}, not {line.modem_lines()}")

        def stop():
            assert_lines("DTR", "RTS", "CTS", "DSR", "CD")
            self.module.stop()
            assert_lines("DTR", "RTS", "CTS")

        def wait_until_told(value):
            wait_until(lambda: f"Dsr notifier. Value: {value}" in tool.messages(),
                       f"the tool has seen that DSR is {value}")

        def restart():
            # What the tool compares with starts as "off", also for a line that is on as the port
            # is opened: the first change to be told is the rise.
            stop()
            time.sleep(1)  # it looks ten times a second, and says nothing of the first fall
            self.module.start()
            wait_until_told("true")
            stop()
            wait_until_told("false")
            self.module.start()
            self.module.tell("set 4 33333")

        with Tool(f"""
            {CONNECT_USB}
            {STOP_POLLING}
            cue restart
            {ask(33333)}
            close
            """, {"restart": restart}) as tool:
            tool.finish()
