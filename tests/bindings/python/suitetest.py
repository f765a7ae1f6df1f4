"""A small suite of a test's own: database, settings, and a clerk who works the windows of the component."""

from __future__ import annotations

import atexit
import os
import pathlib
import subprocess
import tempfile
import unittest

import orvenmod


# The library asks for the user's folder once, so that all cases of a process share it.
_settings = tempfile.TemporaryDirectory(prefix="orvenmod-test-")
atexit.register(_settings.cleanup)
os.environ["XDG_CONFIG_HOME"] = _settings.name

# The sanitizers' runtime is preloaded into hosts, which bring none along; the tools have it in themselves.
TOOL = {"LD_PRELOAD": ""}


class SuiteTest(unittest.TestCase):
    """The environment names what was built: the library, the shell, the clerk."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix="orvenmod-test-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.database = self.folder / "suite.db"
        self.connection = f"Provider=SQLite;Data Source={self.database}"

    def run_program(self, program: list[str], typed: str = "", **environment: str) -> subprocess.CompletedProcess[str]:
        """Runs a program of its own user, with settings in the case's folder."""
        folders = {"XDG_CONFIG_HOME": f"{self.folder}/settings", "XDG_CONFIG_DIRS": f"{self.folder}/machine"}
        everything = {**os.environ, **folders, "PYTHONIOENCODING": "utf-8", **environment}
        return subprocess.run(
            program, env=everything, input=typed, capture_output=True, encoding="utf-8", timeout=120
        )

    def create_suite(self, items: dict[tuple[int, str], list[tuple[str, str]]]) -> None:
        """The suite's tables with items: codes and names by class and its table."""
        orvenmod.create_schema(self.connection)
        statements = []
        for (item_class, table), rows in items.items():
            for place, (number, name) in enumerate(rows, item_class * 1000):
                statements += [
                    "insert into tblItem"
                    "(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber) "
                    f"values({place},'{number}','{name}',{item_class},0,1,1,0,'.{place}.')",
                    f"insert into {table}(fItemId,fNumber,fName) values({place},'{number}','{name}')",
                ]
        self.query("\n".join(statements))

    def query(self, statements: str) -> str:
        """What the shell answers, a JSON line a statement."""
        done = self.run_program([os.environ["ORVENSQL"], self.connection], statements, **TOOL)
        self.assertNotIn("error", done.stdout)
        return done.stdout

    def host(self, program: list[str], steps: str, typed: str = "") -> subprocess.CompletedProcess[str]:
        """Runs a host's program with the clerk in it."""
        script = self.folder / "clerk.txt"
        script.write_text(steps, "utf-8")
        preloaded = f"{os.environ.get('LD_PRELOAD', '')} {os.environ['ORVEN_CLERK_LIBRARY']}"
        return self.run_program(program, typed, LD_PRELOAD=preloaded, ORVEN_TEST_CLERK=str(script))
