"""The devices of the emulated machine: plugging, pulling out, looking at what their drivers do."""

import fcntl
import importlib.machinery
import importlib.util
import json
import os
import struct
import subprocess
import time

# Kernel ABI of x86-64 that Python's termios module has no names for.
TCGETS2 = 0x802C542A
TERMIOS2 = "=4I B19s 2I"
TIOCMGET = 0x5415
CSIZE, CS8, CSTOPB, PARENB, CRTSCTS = 0x30, 0x30, 0x40, 0x100, 0x80000000

MODEM_LINES = {"DTR": 0x002, "RTS": 0x004, "CTS": 0x020, "CD": 0x040, "DSR": 0x100}

LIMIT = 120  # seconds; generous, since the emulation shares a busy machine


def run(*command):
    """Runs a command to its end. Returns what it printed; raises on a failure."""
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT).stdout


def wait_until(condition, what):
    """Waits until CONDITION() is true. Raises AssertionError naming WHAT if it never gets so."""
    end = time.monotonic() + LIMIT
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain until {what}")
        time.sleep(0.01)


def settle():
    """Waits until udev has handled all that has happened so far."""
    run("udevadm", "settle", f"--timeout={LIMIT}")


def load_monitor():
    """The rig's client of the emulator's monitor; its file has no suffix that import looks for."""
    loader = importlib.machinery.SourceFileLoader("rig_qmp", "/usr/local/bin/rig-qmp")
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("rig_qmp", loader))
    loader.exec_module(module)
    return module.Qmp()


class Emulator:
    """The machine that this system runs in."""

    _monitor = None

    @classmethod
    def command(cls, name, **arguments):
        # Kept: starting the client anew would take longer than an exchange with a module.
        if cls._monitor is None:
            cls._monitor = load_monitor()
        answer = cls._monitor.command(name, **arguments)
        if "error" in answer:
            raise AssertionError(f"{name}: {answer['error']}")


class Line:
    """A serial port looked at beside the program that holds it. Needs root: that holder keeps all
    others out."""

    def __init__(self, path):
        self._fd = os.open(path, os.O_RDWR | os.O_NOCTTY | os.O_NONBLOCK)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.close(self._fd)

    def settings(self):
        """The driver's settings as text: "14400 8N1"."""
        size = struct.calcsize(TERMIOS2)
        fields = struct.unpack(TERMIOS2, fcntl.ioctl(self._fd, TCGETS2, bytes(size)))
        flags, rate = fields[2], fields[7]
        form = f"{5 + ((flags & CSIZE) >> 4)}{'P' if flags & PARENB else 'N'}" \
               f"{2 if flags & CSTOPB else 1}"
        return f"{rate} {form}{' RTS/CTS' if flags & CRTSCTS else ''}"

    def modem_lines(self):
        """The names of the modem lines that are on."""
        word = struct.unpack("i", fcntl.ioctl(self._fd, TIOCMGET, bytes(4)))[0]
        return {name for name, bit in MODEM_LINES.items() if word & bit}


class AcmDevice:
    """A CDC-ACM device: the module, unless told to be another maker's."""

    def __init__(self, number=0, vendor="0x16d0", product="0x7710", maker="Moravint",
                 name="Moravint ZDRM-7710"):
        self._rig = ("rig-acm", "-n", str(number))
        environment = dict(os.environ, RIG_VID=vendor, RIG_PID=product, RIG_MANUFACTURER=maker,
                           RIG_PRODUCT=name)
        subprocess.run([*self._rig, "create"], check=True, env=environment)
        gadget = f"/sys/kernel/config/usb_gadget/rig{number}/functions/acm.{number}/port_num"
        with open(gadget, encoding="ascii") as file:
            self.far_end = f"/dev/ttyGS{file.read().strip()}"
        wait_until(lambda: os.path.exists(self.far_end), f"{self.far_end} is there")

    def pull_out(self):
        run(*self._rig, "unplug")

    def plug(self):
        run(*self._rig, "plug")

    def destroy(self):
        run(*self._rig, "destroy")
        settle()


class FtdiAdapter:
    """The FTDI adapter, whose other end is a 16550 port."""

    far_end = "/dev/ttyS1"

    def pull_out(self):
        Emulator.command("device_del", id="ftdi0")

    def plug(self):
        Emulator.command("device_add", driver="usb-serial", id="ftdi0", bus="xhci.0", port="1",
                         chardev="ftdi0", serial="RIG00001", **{"always-plugged": True})


class CanCard:
    """The card behind can0, the tool's side of the bus. The module is on can1."""

    def pull_out(self):
        Emulator.command("device_del", id="kv0")
        wait_until(lambda: not os.path.exists("/sys/class/net/can0"), "can0 is gone")

    def plug(self):
        Emulator.command("device_add", driver="kvaser_pci", id="kv0", canbus="canbus0", addr="0x05")
        wait_until(lambda: os.path.exists("/sys/class/net/can0"), "can0 is there")
        settle()


class CanInterface:
    """A CAN interface of the kernel."""

    def __init__(self, name):
        self._name = name

    def up(self, bits_per_second):
        self.down()
        run("ip", "link", "set", self._name, "type", "can", "bitrate", str(bits_per_second))
        run("ip", "link", "set", self._name, "up")

    def down(self):
        run("ip", "link", "set", self._name, "down")

    def state(self):
        """Whether it is up, and its bit rate: "up 500000"."""
        details = json.loads(run("ip", "-details", "-json", "link", "show", self._name))[0]
        rate = details["linkinfo"]["info_data"].get("bittiming", {}).get("bitrate", 0)
        return f"{'up' if 'UP' in details['flags'] else 'down'} {rate}"
