"""Orvenmod, the master-data module of a small-business suite: its windows to browse, pick and keep items, for a program
in Python.

>>> import orvenmod
>>> orvenmod.save_setting("Orvencom", "SystemLogin", "gLoginUserId", "2")
>>> with orvenmod.BasicInfo() as items:
...     goods = items.main_interface(3, "", "", "Provider=SQLite;Data Source=suite.db", 1)
...     print(goods.number, goods.name)

The windows are the component's own: no toolkit is needed here. An entry method returns when its window is closed; while
it is open other threads of Python go on. Failures are orvenmod.Error, with a number and a text.
"""

from .errors import (
    CannotCreate,
    Error,
    InvalidCall,
    LibraryNotFound,
    NoSuchMember,
    Overflow,
    Released,
    TypeMismatch,
    WrongArguments,
)
from .objects import BasicInfo, ClassDesigner, Dictionaries, Member, Object, Picked
from .suite import (
    create_schema,
    delete_setting,
    get_setting,
    newest_schema_version,
    save_setting,
    schema_version,
    upgrade_schema,
    version,
)

__all__ = [
    "BasicInfo",
    "CannotCreate",
    "ClassDesigner",
    "Dictionaries",
    "Error",
    "InvalidCall",
    "LibraryNotFound",
    "Member",
    "NoSuchMember",
    "Object",
    "Overflow",
    "Picked",
    "Released",
    "TypeMismatch",
    "WrongArguments",
    "create_schema",
    "delete_setting",
    "get_setting",
    "newest_schema_version",
    "save_setting",
    "schema_version",
    "upgrade_schema",
    "version",
]
