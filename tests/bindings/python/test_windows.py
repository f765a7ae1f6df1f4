"""Programs in Python while a window of the component is open, and what comes back from it."""

from __future__ import annotations

import sys

from suitetest import SuiteTest

THREADS = """
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


BILL = """
import sys
import orvenmod

with orvenmod.BasicInfo() as items:
    picked = items.main_interface(3, "", sys.argv[2], sys.argv[1], 1, item_called=1)
    print(bool(picked), picked.for_bill)
"""

DICTIONARY = """
import sys
import orvenmod

with orvenmod.Dictionaries() as dictionaries:
    picked = dictionaries.main_single_interface(1, int(sys.argv[2]), sys.argv[1])
    print(bool(picked), picked.for_bill, picked.number, picked.name)
"""


class Windows(SuiteTest):
    def python(self, program: str, steps: str, *arguments: str) -> str:
        """What the program prints."""
        done = self.host([sys.executable, "-c", program, self.connection, *arguments], steps)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def test_many_goods_are_picked_for_a_bill(self) -> None:
        self.create_suite({(3, "ICItem"): [("01", "螺丝"), ("02", "螺母"), ("03", "螺栓")]})
        steps = "window frmBasicInfoList\npick vsf1 2\nclick cmdAddItem\n"
        self.assertEqual(self.python(BILL, steps, "螺"), "True True\n")
        self.assertIn('"3001"', self.query("select fItemId from tblItemInput"))

    def test_a_bill_of_nothing_counts_as_false(self) -> None:
        self.create_suite({})
        self.assertEqual(self.python(BILL, "window frmBasicInfoList\nclose\n", ""), "False False\n")

    def test_an_entry_of_a_dictionary_is_picked(self) -> None:
        self.create_suite({})
        self.query("insert into tblSubType(fItemId,fNumber,fName,fItemClassId) values(7,'01','箱',60)")
        self.assertEqual(self.python(DICTIONARY, "window frmJCZLList\npick vsf1 1\n", "60"), "True False 01 箱\n")

    def test_other_threads_go_on_while_a_window_is_open(self) -> None:
        self.create_suite({})
        seen, answered = self.folder / "seen.png", self.folder / "answered"
        # The clerk closes the window only after the thread has answered.
        steps = f"window frmBasicInfoList\npicture {seen}\nawait {answered}\nclose\n"
        self.assertEqual(self.python(THREADS, steps, str(seen), str(answered)), "")
