"""Runs the cases on the emulated machine, in all or those whose names hold one of the arguments.

Prints a line for each case. Exit status 0, if all passed.
"""

import os
import sys
import time
import unittest


class Lines(unittest.TestResult):
    """Tells the outcome of each case in a line, and of a failure the reason."""

    def startTest(self, test):
        super().startTest(test)
        self._started = time.monotonic()
        self._failed = False

    def stopTest(self, test):
        word = "FAIL" if self._failed else "PASS"
        took = time.monotonic() - self._started
        print(f"{word} {name_of(test)} ({took:.1f} s)", flush=True)
        super().stopTest(test)

    def addFailure(self, test, err):
        super().addFailure(test, err)
        self._tell(test, err)

    def addError(self, test, err):
        super().addError(test, err)
        self._tell(test, err)

    def addSubTest(self, test, subtest, err):
        super().addSubTest(test, subtest, err)
        if err:
            self._tell(subtest, err)

    def _tell(self, test, err):
        self._failed = True
        print(f"---- {test}\n{self._exc_info_to_string(err, test).rstrip()}", flush=True)


def name_of(test):
    words = test.id().split(".")[-2:]
    return f"{words[0]}: {words[1].removeprefix('test_').replace('_', ' ')}"


def cases(suite):
    for test in suite:
        if isinstance(test, unittest.TestSuite):
            yield from cases(test)
        else:
            yield test


def main():
    wanted = sys.argv[1:]
    found = unittest.defaultTestLoader.discover(os.path.dirname(os.path.abspath(__file__)))
    chosen = [test for test in cases(found)
              if not wanted or any(word in name_of(test) for word in wanted)]
    os.makedirs("/tmp/home", exist_ok=True)
    os.chmod("/tmp/home", 0o777)
    result = Lines()
    unittest.TestSuite(chosen).run(result)
    failed = len(result.failures) + len(result.errors)
    print(f"{result.testsRun} cases, {failed} failures", flush=True)
    return 0 if chosen and result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
