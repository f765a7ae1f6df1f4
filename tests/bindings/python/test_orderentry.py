"""The small order entries, in each language, with a clerk at their windows."""

from __future__ import annotations

import os
import sys

from suitetest import SuiteTest

PICKS = """window frmBasicInfoList
pick vsf1 2
window frmBasicInfoList
pick vsf1 1
window frmBasicInfoList
pick vsf1 3
window frmBasicInfoList
close
"""


CUSTOMERS = [("01", "华联商贸"), ("02", "永新五金店")]
GOODS = [("01", "内六角螺丝"), ("02", "螺母"), ("03", "墙壁开关")]


class OrderEntry:
    """The same cases for every language; `program` starts one."""

    program: list[str]

    def setUp(self) -> None:
        super().setUp()
        self.create_suite({(1, "tblCustomer"): CUSTOMERS, (3, "ICItem"): GOODS})

    def test_picks_a_customer_and_goods_and_prints_the_order(self) -> None:
        done = self.host([*self.program, self.connection], PICKS, typed="2.5\nabc\n4\n")
        self.assertEqual(done.returncode, 0, done.stderr)
        order = done.stdout[done.stdout.index("订单") :].splitlines()
        self.assertIn("02 永新五金店", order[0])
        for line, (number, name), quantity in ((order[1], GOODS[0], "2.5"), (order[2], GOODS[2], "4")):
            self.assertEqual(line.split()[1], number)
            self.assertIn(name, line)
            self.assertEqual(line.split()[-1], quantity)
        self.assertIn("共 2 种货品", order[3])

    def test_ends_without_an_order_where_no_customer_is_picked(self) -> None:
        done = self.host([*self.program, self.connection], "window frmBasicInfoList\nclose\n")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertNotIn("订单", done.stdout)

    def test_tells_what_the_database_says_where_there_is_none(self) -> None:
        done = self.host([*self.program, f"Provider=SQLite;Data Source={self.folder}/none.db"], "")
        self.assertEqual(done.returncode, 1)
        self.assertIn("none.db", done.stderr)


class PythonOrderEntry(OrderEntry, SuiteTest):
    program = [sys.executable, os.environ.get("ORVEN_PYTHON_EXAMPLE", "")]


if os.environ.get("ORVEN_PASCAL_EXAMPLE"):

    class PascalOrderEntry(OrderEntry, SuiteTest):
        program = [os.environ["ORVEN_PASCAL_EXAMPLE"]]
