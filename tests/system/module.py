"""The simulated module at the far end of a line."""

import subprocess

PROGRAM = "/opt/zdr/bin/zdr-simulator"


class Module:
    """A module that serves a line, and its wire log."""

    def __init__(self, log_file, *options):
        self._log_file = log_file
        self._options = options
        self._process = None
        self.start()

    @classmethod
    def on_line(cls, log_file, path, *options):
        return cls(log_file, "--line", path, *options)

    @classmethod
    def on_can(cls, log_file, interface, *options):
        return cls(log_file, "--can-interface", interface, *options)

    def start(self):
        """Returns when the line is served."""
        self._process = subprocess.Popen(
            [PROGRAM, *self._options, "--log", self._log_file], text=True,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.tell("")

    def tell(self, line):
        """Carries out a line of the simulator's console. Returns when that is done."""
        self._process.stdin.write(f"{line}\nhelp\n")  # the help shows that it has got there
        self._process.stdin.flush()
        for printed in self._process.stdout:
            if printed.startswith("Usage:"):
                return
        raise AssertionError("the simulated module has ended")

    def log(self):
        """All that crossed the line since the last start, as a list of lines."""
        with open(self._log_file, encoding="ascii") as file:
            return file.read().splitlines()

    def stop(self):
        """Lets go of the line."""
        if self._process.poll() is None:
            self._process.terminate()
        self._process.wait()
        self._process.stdin.close()
        self._process.stdout.close()
