"""The component's library through its C interface, by ctypes alone. Programs use the package itself."""

from __future__ import annotations

import collections
import configparser
import ctypes
import functools
import os
import pathlib
import re
import threading
from ctypes import POINTER, c_char_p, c_double, c_int32, c_size_t, c_void_p
from typing import Optional, Union

from .errors import INVALID_CALL, LIBRARY_NOT_LOADED, error

Value = Optional[Union[bool, int, float, str]]
"""What a property holds or a method takes; None is no value."""

NOTHING, BOOLEAN, INT16, INT32, DOUBLE, TEXT = range(6)
PROPERTY, METHOD = 1, 2

_SONAME = "liborvenmod.so.0"


class CValue(ctypes.Structure):
    _fields_ = [("type", c_int32), ("integer", c_int32), ("number", c_double), ("text", c_void_p)]


class CMember(ctypes.Structure):
    _fields_ = [("name", c_char_p), ("kind", c_int32), ("type", c_int32), ("parameter_count", c_int32)]


class CParameter(ctypes.Structure):
    _fields_ = [("name", c_char_p), ("type", c_int32), ("optional", c_int32)]


_SIGNATURES = {
    "orvenmod_create": [c_char_p, POINTER(c_void_p)],
    "orvenmod_release": [c_void_p],
    "orvenmod_get": [c_void_p, c_char_p, POINTER(CValue)],
    "orvenmod_put": [c_void_p, c_char_p, POINTER(CValue)],
    "orvenmod_call": [c_void_p, c_char_p, POINTER(CValue), c_size_t, POINTER(CValue)],
    "orvenmod_member_count": [c_void_p, POINTER(c_int32)],
    "orvenmod_member_at": [c_void_p, c_int32, POINTER(CMember)],
    "orvenmod_parameter_at": [c_void_p, c_int32, c_int32, POINTER(CParameter)],
    "orvenmod_free": [c_void_p],
    "orvenmod_get_setting": [c_char_p, c_char_p, c_char_p, c_char_p, POINTER(c_void_p)],
    "orvenmod_save_setting": [c_char_p, c_char_p, c_char_p, c_char_p],
    "orvenmod_delete_setting": [c_char_p, c_char_p, c_char_p],
    "orvenmod_create_schema": [c_char_p],
    "orvenmod_upgrade_schema": [c_char_p],
    "orvenmod_schema_version": [c_char_p, POINTER(c_int32)],
    "orvenmod_newest_schema_version": [POINTER(c_int32)],
}


def _registered_files() -> list[str]:
    """What the class is registered with: for the user, then for the machine."""
    own = os.environ.get("XDG_CONFIG_HOME", "")
    shared = os.environ.get("XDG_CONFIG_DIRS") or "/etc/xdg"
    folders = [own if own.startswith("/") else os.path.expanduser("~/.config")]
    # A relative one would be found in whatever folder is the current one.
    folders += [folder for folder in shared.split(":") if folder.startswith("/")]
    files = []
    for folder in folders:
        registrations = configparser.RawConfigParser(delimiters="=", comment_prefixes=(";", "#"), strict=False)
        try:
            ini = pathlib.Path(folder, "orvenmod", "orvenmod.ini").read_text("utf-8", "surrogateescape")
            registrations.read_string(ini)
            file = registrations.get("Classes", "Orvenmod.clsBasicInfo", fallback="")
        except (OSError, configparser.Error):
            continue  # a file that can't be read registers nothing
        if file:
            files.append(re.sub(rb"%([0-9A-Fa-f]{2})", lambda pair: bytes([int(pair[1], 16)]), os.fsencode(file)))
    return [os.fsdecode(file) for file in files]


@functools.cache
def component() -> ctypes.CDLL:
    """The library: the one that ORVENMOD_LIBRARY names, else the one registered, else the one installed."""
    named = os.environ.get("ORVENMOD_LIBRARY")
    file = named or next(iter(_registered_files()), _SONAME)
    try:
        loaded = ctypes.CDLL(file)
        for name, arguments in _SIGNATURES.items():
            function = getattr(loaded, name)
            function.argtypes = arguments
            function.restype = c_int32
        for name in ("orvenmod_version", "orvenmod_error_text"):
            getattr(loaded, name).restype = c_char_p
    except (OSError, AttributeError, UnicodeDecodeError) as why:
        raise error(LIBRARY_NOT_LOADED, f"加载动态库错误：{why}") from why
    return loaded


class _Thread(threading.local):
    calling = False


_thread = _Thread()
_abandoned: collections.deque[c_void_p] = collections.deque()


def call(name: str, *arguments: object) -> None:
    """Calls a function of the library; raises what it fails with."""
    loaded = component()
    _release_abandoned(loaded)
    within, _thread.calling = _thread.calling, True
    try:
        number = getattr(loaded, name)(*arguments)
        if number != 0:
            raise error(number, loaded.orvenmod_error_text().decode("utf-8", "replace"))
    finally:
        _thread.calling = within


def abandon(handle: c_void_p) -> None:
    """Releases an object that nothing refers to: now, or with the next call of the thread that it belongs to.

    It comes at any moment and on any thread. Between a call and the text of its failure it would take that text away.
    """
    _abandoned.append(handle)
    if not _thread.calling:
        _release_abandoned(component())


def _release_abandoned(loaded: ctypes.CDLL) -> None:
    for _ in range(len(_abandoned)):
        try:
            handle = _abandoned.popleft()
        except IndexError:
            return  # another thread was faster
        if loaded.orvenmod_release(handle) == INVALID_CALL:
            _abandoned.append(handle)  # it is another thread's


def encoded(text: str) -> bytes:
    """A text for the library, where a zero character would end it."""
    if not isinstance(text, str):
        raise TypeError(f"a text is wanted, not {type(text).__name__}")
    if "\0" in text:
        raise ValueError("a text can't hold a zero character")
    return text.encode("utf-8")


def taken(text: c_void_p | int | None) -> str:
    """A text that the library handed out, freed."""
    address = text.value if isinstance(text, c_void_p) else text
    if address is None:
        return ""
    try:
        return ctypes.string_at(address).decode("utf-8", "replace")
    finally:
        component().orvenmod_free(address)


def to_c(value: Value, kept: list[bytes]) -> CValue:
    """The library's form of a value; a text's bytes are put into `kept`, which must outlive it."""
    if value is None:
        return CValue(NOTHING)
    if isinstance(value, bool):
        return CValue(BOOLEAN, integer=int(value))
    if isinstance(value, int):
        if -(2**31) <= value < 2**31:
            return CValue(INT32, integer=value)
        # A number with a fraction keeps fifteen digits, a text all; members of 16 bits refuse either as too large.
        if abs(value) < 10**15:
            return CValue(DOUBLE, number=float(value))
        value = str(value)
    if isinstance(value, float):
        return CValue(DOUBLE, number=value)
    kept.append(encoded(value))
    return CValue(TEXT, text=ctypes.cast(c_char_p(kept[-1]), c_void_p))


def from_c(value: CValue) -> Value:
    """The value, whose text is freed."""
    if value.type == TEXT:
        return taken(value.text)
    if value.type == DOUBLE:
        return float(value.number)
    if value.type == BOOLEAN:
        return bool(value.integer)
    return None if value.type == NOTHING else int(value.integer)
