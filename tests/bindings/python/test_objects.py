"""Objects, values and failures of the Python package, without windows."""

from __future__ import annotations

import gc
import os
import pathlib
import pickle
import subprocess
import sys
import threading
import unittest
from unittest import mock

import orvenmod
from orvenmod import native
from orvenmod.objects import Property
from suitetest import TOOL, SuiteTest


def none_is_alive() -> bool:
    return int(native.component().DllCanUnloadNow()) == 0


class Objects(SuiteTest):
    def test_every_member_has_a_python_name(self) -> None:
        for made in (orvenmod.BasicInfo, orvenmod.Dictionaries, orvenmod.ClassDesigner):
            with made() as one:
                members = one.members()
            properties = {held.name for held in vars(made).values() if isinstance(held, Property)}
            self.assertEqual(properties, {each.name for each in members if not each.is_method})
            for method in (each for each in members if each.is_method):
                name = {"mainInterface": "main_interface", "mainSingleInterface": "main_single_interface"}[method.name]
                code = getattr(made, name).__code__
                self.assertEqual(code.co_argcount - 1, len(method.parameters), name)

    def test_a_property_comes_back_in_its_own_kind(self) -> None:
        with orvenmod.BasicInfo() as items:
            for value in (None, True, 7, 70000, 2.5, "权限", ""):
                items.user_right = value
                self.assertEqual(items.user_right, value)
                self.assertIs(type(items.user_right), type(value))

    def test_a_value_is_converted_to_the_propertys_type(self) -> None:
        with orvenmod.Object("orvenmod.CLSBASICINFO") as items:
            items.put("STATUS", " 3 ")
            self.assertEqual(items.get("status"), 3)
            items.put("fName", 2.5)
            self.assertEqual(items.get("fname"), "2.5")

    def test_a_value_that_does_not_fit_is_an_exception_of_its_kind(self) -> None:
        with orvenmod.BasicInfo() as items:
            items.status = 5
            for value, kind, builtin, number in (
                ("abc", orvenmod.TypeMismatch, TypeError, 13),
                (40000, orvenmod.Overflow, OverflowError, 6),
                (2**40, orvenmod.Overflow, OverflowError, 6),
            ):
                with self.assertRaises(kind) as failed:
                    items.status = value  # type: ignore[assignment]
                self.assertIsInstance(failed.exception, builtin)
                self.assertEqual(failed.exception.number, number)
                self.assertEqual(failed.exception.text, str(failed.exception))
            self.assertEqual(items.status, 5)

    def test_a_text_that_no_call_takes_is_refused(self) -> None:
        with orvenmod.BasicInfo() as items:
            self.assertRaises(ValueError, items.put, "fName", "a\0b")
            self.assertRaises(UnicodeEncodeError, items.put, "fName", "\ud800")
            self.assertRaises(TypeError, items.put, "fName", b"bytes")
            self.assertRaises(TypeError, items.put, "fName", [])

    def test_names_that_are_none_are_told(self) -> None:
        self.assertRaises(orvenmod.CannotCreate, orvenmod.Object, "Orvenmod.clsNone")
        with orvenmod.BasicInfo() as items:
            self.assertRaises(orvenmod.NoSuchMember, items.get, "fNone")
            self.assertRaises(orvenmod.NoSuchMember, items.call, "fName")
            self.assertRaises(orvenmod.WrongArguments, items.call, "mainInterface", 3)
            self.assertRaises(orvenmod.WrongArguments, items.call, "mainInterface", *[1] * 8)

    def test_a_closed_object_is_known_as_such(self) -> None:
        items = orvenmod.BasicInfo()
        items.close()
        items.close()
        self.assertRaises(orvenmod.Released, items.get, "fName")

    def test_an_object_is_closed_when_nothing_refers_to_it(self) -> None:
        items = orvenmod.BasicInfo()
        self.assertFalse(none_is_alive())
        del items
        gc.collect()
        self.assertTrue(none_is_alive())

    def test_an_object_that_another_thread_drops_is_closed_with_the_next_call(self) -> None:
        held = [orvenmod.BasicInfo(), orvenmod.BasicInfo()]
        other = threading.Thread(target=held.clear)
        other.start()
        other.join()
        gc.collect()
        self.assertFalse(none_is_alive())
        orvenmod.newest_schema_version()
        self.assertTrue(none_is_alive())

    def test_an_object_dropped_before_a_failure_is_told_leaves_the_failure(self) -> None:
        component = native.component()
        held = [orvenmod.BasicInfo()]

        class DroppingOne:
            def __getattr__(self, name: str) -> object:
                return getattr(component, name)

            def orvenmod_get(self, *arguments: object) -> int:
                number = int(component.orvenmod_get(*arguments))
                held.clear()
                return number

        with orvenmod.BasicInfo() as items:
            with mock.patch.object(native, "component", DroppingOne):
                with self.assertRaises(orvenmod.NoSuchMember) as failed:
                    items.get("fNone")
        self.assertIn("fNone", failed.exception.text)
        self.assertTrue(none_is_alive())

    def test_an_object_of_another_thread_is_refused(self) -> None:
        failures: list[BaseException] = []

        def use(items: orvenmod.BasicInfo) -> None:
            try:
                items.get("fName")
            except orvenmod.InvalidCall as failure:
                failures.append(failure)

        with orvenmod.BasicInfo() as items:
            other = threading.Thread(target=use, args=(items,))
            other.start()
            other.join()
            self.assertEqual(items.name, "")
        self.assertEqual(len(failures), 1)

    def test_another_thread_cannot_close_an_object(self) -> None:
        failures: list[BaseException] = []

        def close(items: orvenmod.BasicInfo) -> None:
            try:
                items.close()
            except orvenmod.InvalidCall as failure:
                failures.append(failure)

        items = orvenmod.BasicInfo()
        other = threading.Thread(target=close, args=(items,))
        other.start()
        other.join()
        self.assertEqual(len(failures), 1)
        self.assertEqual(items.name, "")
        items.close()
        self.assertRaises(orvenmod.Released, items.get, "fName")

    def test_a_long_number_keeps_its_digits(self) -> None:
        with orvenmod.BasicInfo() as items:
            for number in (6901234567890, 6901234567890123, -(2**63), 10**400):
                items.put("fName", number)
                self.assertEqual(items.name, str(number))
                self.assertRaises(orvenmod.Overflow, items.put, "Status", number)

    def test_an_exception_goes_through_a_pickle(self) -> None:
        failures = (orvenmod.Error(2627, "重复"), orvenmod.Overflow(6, "溢出"), orvenmod.LibraryNotFound(48, "无"))
        for failure in failures:
            back = pickle.loads(pickle.dumps(failure))
            self.assertEqual((type(back), back.number, str(back)), (type(failure), failure.number, failure.text))


class Suite(SuiteTest):
    def test_the_version_is_told(self) -> None:
        self.assertRegex(orvenmod.version(), r"^\d+\.\d+\.\d+$")

    def test_settings_are_shared_and_kept(self) -> None:
        self.assertEqual(orvenmod.get_setting("Orvencom", "SystemSetup", "msgTitle", "无"), "无")
        orvenmod.save_setting("Orvencom", "SystemSetup", "msgTitle", "主机")
        self.assertEqual(orvenmod.get_setting("Orvencom", "SystemSetup", "msgTitle"), "主机")
        orvenmod.delete_setting("Orvencom", "SystemSetup")
        self.assertEqual(orvenmod.get_setting("Orvencom", "SystemSetup", "msgTitle"), "")

    def test_the_tables_are_made_once(self) -> None:
        orvenmod.create_schema(self.connection)
        self.assertEqual(orvenmod.schema_version(self.connection), orvenmod.newest_schema_version())
        orvenmod.upgrade_schema(self.connection)
        with self.assertRaises(orvenmod.Error) as failed:
            orvenmod.create_schema(self.connection)
        self.assertEqual(failed.exception.number, 2714)
        self.assertIn("tblItemClass", failed.exception.text)


class Finding(SuiteTest):
    """Which library is loaded: each start is a process of its own."""

    def loaded(self, library: str = "") -> subprocess.CompletedProcess[str]:
        program = "import orvenmod.native as native; print(native.component()._name)"
        return self.run_program([sys.executable, "-c", program], ORVENMOD_LIBRARY=library)

    def register(self, folder: pathlib.Path, file: str) -> None:
        (folder / "orvenmod").mkdir(parents=True)
        line = f"[Classes]\nOrvenmod.clsBasicInfo = {file}\n"
        (folder / "orvenmod" / "orvenmod.ini").write_text(line, "utf-8")

    def test_the_registered_library_is_loaded_the_users_before_the_machines(self) -> None:
        library = os.environ["ORVENMOD_LIBRARY"]
        self.register(self.folder / "machine", library.replace("o", "%6F"))
        self.assertEqual(self.loaded().stdout.strip(), library)
        self.register(self.folder / "settings", "/none/here.so")
        self.assertIn("/none/here.so", self.loaded().stderr)

    def test_a_registration_in_the_current_folder_is_nobodys(self) -> None:
        self.register(self.folder, "/none/here.so")
        program = "import orvenmod.native as native; print(native._registered_files())"
        done = subprocess.run(
            [sys.executable, "-c", program],
            env={**os.environ, "XDG_CONFIG_HOME": str(self.folder / "none"), "XDG_CONFIG_DIRS": "::."},
            cwd=self.folder,
            capture_output=True,
            encoding="utf-8",
        )
        self.assertEqual(done.stdout, "[]\n", done.stderr)

    def test_a_registered_path_may_be_any_bytes(self) -> None:
        file = self.folder / os.fsdecode(b"\xd5\xfd.so")
        self.register(self.folder / "machine", "HERE")
        ini = self.folder / "machine" / "orvenmod" / "orvenmod.ini"
        ini.write_bytes(ini.read_bytes().replace(b"HERE", os.fsencode(file)))
        self.assertIn("LibraryNotFound", self.loaded().stderr)
        file.symlink_to(os.environ["ORVENMOD_LIBRARY"])
        done = self.run_program([sys.executable, "-c", "import orvenmod; print(orvenmod.version())"], ORVENMOD_LIBRARY="")
        self.assertEqual(done.stdout.strip(), orvenmod.version())

    def test_what_orvenregister_writes_is_found(self) -> None:
        library = os.environ["ORVENMOD_LIBRARY"]
        self.assertEqual(self.run_program([os.environ["ORVENREGISTER"], library], **TOOL).returncode, 0)
        self.assertEqual(self.loaded().stdout.strip(), library)

    def test_a_library_that_is_none_is_told(self) -> None:
        for file in ("/none/here.so", "libc.so.6"):
            done = self.loaded(file)
            self.assertIn("LibraryNotFound", done.stderr)
            self.assertIn("加载动态库错误", done.stderr)


class WithoutADisplay(SuiteTest):
    def test_the_process_goes_on_with_an_error(self) -> None:
        program = """
import orvenmod
try:
    orvenmod.BasicInfo()
except orvenmod.Error as failure:
    print(failure.number, failure)
print("goes on")
"""
        nowhere = {"QT_QPA_PLATFORM": "", "DISPLAY": "", "WAYLAND_DISPLAY": ""}
        done = self.run_program([sys.executable, "-c", program], **nowhere)
        self.assertEqual(done.returncode, 0, done.stderr)
        told, after = done.stdout.splitlines()
        self.assertRegex(told, "^440 .*DISPLAY")
        self.assertEqual(after, "goes on")


if __name__ == "__main__":
    unittest.main()
