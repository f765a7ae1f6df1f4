"""The component's version, the settings that host and component share, and the suite's tables."""

from __future__ import annotations

from ctypes import byref, c_int32, c_void_p

from . import native
from .native import encoded


def version() -> str:
    """ "major.minor.patch" of the library that is loaded."""
    return str(native.component().orvenmod_version().decode())


def get_setting(application: str, section: str, key: str, fallback: str = "") -> str:
    """A setting of this user; `fallback` where there is none."""
    value = c_void_p()
    native.call(
        "orvenmod_get_setting", encoded(application), encoded(section), encoded(key), encoded(fallback), byref(value)
    )
    return native.taken(value)


def save_setting(application: str, section: str, key: str, value: str) -> None:
    """Keeps a setting of this user."""
    native.call("orvenmod_save_setting", encoded(application), encoded(section), encoded(key), encoded(value))


def delete_setting(application: str, section: str = "", key: str = "") -> None:
    """Removes a key; without a key the section, and without a section all of the application."""
    native.call("orvenmod_delete_setting", encoded(application), encoded(section), encoded(key))


def create_schema(connection: str) -> None:
    """Makes the suite's tables in an empty database; a file of the embedded store is made where there is none."""
    native.call("orvenmod_create_schema", encoded(connection))


def upgrade_schema(connection: str) -> None:
    """Adds to a database that an earlier version made what later versions added."""
    native.call("orvenmod_upgrade_schema", encoded(connection))


def schema_version(connection: str) -> int:
    """The version of a database's schema."""
    version = c_int32()
    native.call("orvenmod_schema_version", encoded(connection), byref(version))
    return version.value


def newest_schema_version() -> int:
    """The version that create_schema makes and upgrade_schema leads to."""
    version = c_int32()
    native.call("orvenmod_newest_schema_version", byref(version))
    return version.value
