"""Other threads of Python while a window of the component is open."""

from __future__ import annotations

import sys

from suitetest import SuiteTest

PROGRAM = """
import pathlib, sys, threading, time
import orvenmod

connection, seen, answered = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])

def answer():
    while not seen.exists():
        time.sleep(0.01)
    answered.touch()

threading.Thread(target=answer).start()
with orvenmod.BasicInfo() as items:
    items.main_interface(3, "", "", connection, 1)
"""


class Threads(SuiteTest):
    def test_other_threads_go_on_while_a_window_is_open(self) -> None:
        self.create_suite({})
        seen, answered = self.folder / "seen.png", self.folder / "answered"
        # The clerk closes the window only after the thread has answered.
        steps = f"window frmBasicInfoList\npicture {seen}\nawait {answered}\nclose\n"
        done = self.host([sys.executable, "-c", PROGRAM, self.connection, str(seen), str(answered)], steps)
        self.assertEqual(done.returncode, 0, done.stderr)
