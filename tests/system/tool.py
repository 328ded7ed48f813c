"""The tool, driven by a script with mouse and keys."""

import contextlib
import os
import signal
import subprocess
import tempfile
import threading

PROGRAM = "/opt/zdr/bin/zdrm7710"
PLUGINS = "/opt/zdr/plugins"
LIMIT = 900  # seconds that one run may take, with all that happens in its cues
CUE_LIMIT = 600  # seconds that one cue may take

# An ordinary user, and the group that serial ports belong to.
USER = ("setpriv", "--reuid=1000", "--regid=1000", "--clear-groups")
DIALOUT_USER = ("setpriv", "--reuid=1000", "--regid=1000", "--groups=20")
ROOT = ()

# What the platform plug-in says of itself.
HARMLESS = ("This plugin does not support",)


class Tool:
    """One start of the tool.

    Its script has the steps of the driver, and one more: "cue NAME" lets this program do what the
    CUES have under that name, while the script waits for its end.
    """

    def __init__(self, script, cues=None, account=ROOT):
        self._cues = cues or {}
        self._folder = tempfile.TemporaryDirectory(prefix="tool.")
        os.chmod(self._folder.name, 0o755)
        self._report = []
        self._problem = None
        with open(self._path("script"), "w", encoding="utf-8") as file:
            file.write("\n".join(self._steps(script)))
        environment = dict(os.environ, QT_PLUGIN_PATH=PLUGINS, HOME="/tmp/home",
                           XDG_RUNTIME_DIR="/run/user/1000" if account else "/run/user/0",
                           QT_QPA_GENERIC_PLUGINS=f"zdrdriver:{self._path('script')}",
                           QT_MESSAGE_PATTERN="%{type}: %{message}")
        with open(self._path("messages"), "wb") as messages:
            self._process = subprocess.Popen([*account, PROGRAM], env=environment, text=True,
                                             stdout=subprocess.PIPE, stderr=messages)
        self._reader = threading.Thread(target=self._read)
        self._reader.start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._reader.join()
        self._process.wait()
        self._process.stdout.close()
        self._folder.cleanup()

    def finish(self):
        """Waits for the end of the script and of the tool. Raises AssertionError unless both went
        well and the toolkit had nothing to warn of."""
        timer = threading.Timer(LIMIT, self._process.kill)
        timer.start()
        self._reader.join()
        status = self._process.wait()
        timer.cancel()
        if self._problem:
            raise self._problem
        done = any(line.startswith("done ") for line in self._report)
        if status != 0 or not done:
            last = self._report[-1:] or ["it didn't start"]
            said = "\n".join(self.messages().splitlines()[-20:])
            raise AssertionError(f"the tool ended with {status}: {last[0]}\n{said}")
        warnings = [line for line in self.messages().splitlines()
                    if line.startswith(("warning: ", "critical: ", "fatal: "))
                    and not any(word in line for word in HARMLESS)]
        if warnings:
            raise AssertionError(f"the toolkit warned: {warnings}")

    @contextlib.contextmanager
    def held_up(self):
        """While this lasts the tool gets no processor time, and so notices nothing."""
        self._process.send_signal(signal.SIGSTOP)
        try:
            yield
        finally:
            self._process.send_signal(signal.SIGCONT)

    def messages(self):
        """All that it has written on its standard error so far."""
        with open(self._path("messages"), encoding="utf-8", errors="replace") as file:
            return file.read()

    def processor_seconds(self):
        """The processor time that it has used so far."""
        with open(f"/proc/{self._process.pid}/stat", encoding="ascii") as file:
            fields = file.read().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def _path(self, name):
        return os.path.join(self._folder.name, name)

    def _steps(self, script):
        for line in script.splitlines():
            words = line.split()
            if words[:1] == ["cue"]:
                yield f"print cue-{words[1]}"
                yield f'await "{self._path(words[1])}" {CUE_LIMIT}'
            else:
                yield line.strip()

    def _read(self):
        for line in self._process.stdout:
            self._report.append(line.rstrip())
            words = line.split()
            if words[:1] == ["ok"] and words[2] == "print" and words[3].startswith("cue-"):
                self._carry_out(words[3].removeprefix("cue-"))

    def _carry_out(self, cue):
        try:
            self._cues[cue]()
        except Exception as problem:  # pylint: disable=broad-except
            self._problem = problem
            self._process.kill()
        with open(self._path(cue), "w", encoding="ascii"):
            pass
