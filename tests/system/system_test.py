"""What the test cases have in common."""

import os
import tempfile
import time
import unittest

from hardware import LIMIT, settle, wait_until
from module import Module
from tool import ROOT, Tool

# How long the windows may take to follow what happens to the hardware.
PATIENCE = LIMIT

CONNECT_USB = f"""
    wait wUsbConnection/btnConnect enabled == true {PATIENCE}
    click wUsbConnection/btnConnect
    wait tabWidget currentTabText == Quickstart {PATIENCE}
    """

STOP_POLLING = """
    tab tabWidget Connection
    click wTraceController/btnStop
    """


def ask(value):
    """Steps that ask the module for axis parameter 4 and expect VALUE."""
    return f"""
    tab tabWidget ZDRL
    select wDirectMode/cbCommand "6 - GAP"
    set wDirectMode/sbRequestType 4
    click wDirectMode/btnSend
    wait wDirectMode/sbReplyValue value == {value} {PATIENCE}
    expect wDirectMode/sbReplyType value == 100
    """


def wait_until_free(node):
    """Waits until no process holds the device node any more, also one that has gone."""
    def is_free():
        for process in filter(str.isdigit, os.listdir("/proc")):
            try:
                files = os.scandir(f"/proc/{process}/fd")
                if any(os.readlink(file).startswith(node) for file in files):
                    return False
            except OSError:  # it has ended meanwhile
                continue
        return True

    wait_until(is_free, f"nobody holds {node}")


def wait_until_gone(node):
    """Waits until the pulled-out device has lost its node, and all holders have let it go."""
    wait_until(lambda: not os.path.exists(node), f"{node} is gone")
    wait_until_free(node)


class SystemTest(unittest.TestCase):
    """A case on the emulated machine."""

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="case.")
        self.addCleanup(self.folder.cleanup)
        self.addCleanup(settle)

    def serve_line(self, path, *options):
        """A module at the end of the serial line PATH, until the end of the case."""
        return self._serve(Module.on_line(self._log_file(), path, *options))

    def serve_can(self, interface, *options):
        """A module behind a CAN interface, until the end of the case."""
        return self._serve(Module.on_can(self._log_file(), interface, *options))

    def drive(self, script, cues=None, account=ROOT):
        """Runs the tool by SCRIPT to its end. Returns what it said on its standard error."""
        with Tool(script, cues, account) as tool:
            tool.finish()
            return tool.messages()

    def assert_idle(self, tool):
        """The tool uses next to no processor time, though its port has gone."""
        before = tool.processor_seconds()
        time.sleep(2)
        self.assertLess(tool.processor_seconds() - before, 0.5)

    def _log_file(self):
        return os.path.join(self.folder.name, "wire.log")

    def _serve(self, module):
        self.addCleanup(module.stop)
        return module
