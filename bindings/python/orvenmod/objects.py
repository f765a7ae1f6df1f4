"""The component's three classes, and any of them by the names of its members."""

from __future__ import annotations

import weakref
from ctypes import byref, c_int32, c_void_p
from typing import Generic, NamedTuple, Optional, TypeVar, cast

from . import native
from .native import Value

Self = TypeVar("Self", bound="Object")
Held = TypeVar("Held")


class Picked(NamedTuple):
    """What the user picked; all texts are empty, and it counts as false, where nothing was."""

    item_id: str
    number: str
    name: str

    def __bool__(self) -> bool:
        return self.item_id != ""

    @property
    def for_bill(self) -> bool:
        """Whether many goods were picked: they stand in the table tblItemInput."""
        return self.item_id == "-1"


class Member(NamedTuple):
    """A property or a method of an object."""

    name: str
    is_method: bool
    parameters: tuple[str, ...]


class Object:
    """An object of a class of the component, by the names of its members; case doesn't matter.

    It belongs to the thread that made it. Close it, or use it in a `with` statement; else it is closed when nothing
    refers to it any more; where another thread was the last to refer to it, with the next call of its own one.

    >>> with Object("Orvenmod.clsBasicInfo") as items:
    ...     items.put("Status", "3")
    ...     items.get("status")
    3
    """

    def __init__(self, class_name: str) -> None:
        handle = c_void_p()
        native.call("orvenmod_create", native.encoded(class_name), byref(handle))
        self._handle = handle
        self._closing = weakref.finalize(self, native.abandon, handle)

    def close(self) -> None:
        """Ends the object. A second time does nothing. Raises InvalidCall on a thread that it doesn't belong to."""
        if self._closing.alive:
            native.call("orvenmod_release", self._handle)
            self._closing.detach()

    def __enter__(self: Self) -> Self:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def get(self, name: str) -> Value:
        """The value of a property."""
        value = native.CValue()
        native.call("orvenmod_get", self._handle, native.encoded(name), byref(value))
        return native.from_c(value)

    def put(self, name: str, value: Value) -> None:
        """Sets a property; None clears it. Raises TypeMismatch or Overflow for a value that it can't hold."""
        kept: list[bytes] = []
        given = native.to_c(value, kept)
        native.call("orvenmod_put", self._handle, native.encoded(name), byref(given))

    def call(self, name: str, *arguments: Value) -> Value:
        """Calls a method; an argument that is None counts as left out. Returns when its window is closed."""
        kept: list[bytes] = []
        given = (native.CValue * len(arguments))(*[native.to_c(each, kept) for each in arguments])
        result = native.CValue()
        native.call("orvenmod_call", self._handle, native.encoded(name), given, len(arguments), byref(result))
        return native.from_c(result)

    def members(self) -> list[Member]:
        """The properties and methods that the object has."""
        count = c_int32()
        native.call("orvenmod_member_count", self._handle, byref(count))
        return [self._member(index) for index in range(count.value)]

    def _member(self, index: int) -> Member:
        member = native.CMember()
        native.call("orvenmod_member_at", self._handle, index, byref(member))
        names = []
        for at in range(member.parameter_count):
            parameter = native.CParameter()
            native.call("orvenmod_parameter_at", self._handle, index, at, byref(parameter))
            names.append(parameter.name.decode())
        return Member(member.name.decode(), member.kind == native.METHOD, tuple(names))


class Property(Generic[Held]):
    """A property under its Python name; `name` is the component's own."""

    def __init__(self, name: str, doc: str = "a plain stored value") -> None:
        self.name = name
        self.__doc__ = doc

    def __get__(self, owner: Object, _: Optional[type] = None) -> Held:
        return cast(Held, self if owner is None else owner.get(self.name))

    def __set__(self, owner: Object, value: Held) -> None:
        owner.put(self.name, cast(Value, value))


class BasicInfo(Object):
    """The items of one class: a window to manage them, to pick one, or to pick many for a bill.

    >>> with BasicInfo() as items:
    ...     goods = items.main_interface(3, "", "", "Provider=SQLite;Data Source=suite.db", 1)
    ...     if goods:
    ...         print(goods.number, goods.name)
    """

    def __init__(self) -> None:
        super().__init__("Orvenmod.clsBasicInfo")

    def main_interface(
        self,
        item_class_id: int,
        find_field: str,
        find_value: str,
        connection: str,
        is_return: int,
        item_called: Value = None,
        param_sql: Optional[str] = None,
    ) -> Picked:
        """Shows the items of a class and returns when the window is closed.

        find_field:  ignored
        find_value:  narrows the first list to codes and names that hold it
        is_return:   1 makes the window a picker
        item_called: 1 with class 3 and is_return 1 picks many goods for a bill
        param_sql:   a condition on every list, beginning with " and "
        """
        self.call("mainInterface", item_class_id, find_field, find_value, connection, is_return, item_called, param_sql)
        return Picked(self.item_id, self.number, self.name)

    item_id: Property[str] = Property("fItemId", "result")
    number: Property[str] = Property("fNumber", "result")
    name: Property[str] = Property("fName", "result")
    item_class_id: Property[int] = Property("fItemClassId", "the class of the last entry")
    user_right: Property[Value] = Property("UserRight")
    find_value: Property[str] = Property("strFindValue")
    db_connection: Property[str] = Property("DBConnection")
    find_sql: Property[str] = Property("strFindSql")
    item_name: Property[str] = Property("fItemName")
    table_name: Property[str] = Property("fTableName")
    status: Property[int] = Property("Status")


class Dictionaries(Object):
    """The dictionaries: simple lists of codes and names."""

    def __init__(self) -> None:
        super().__init__("Orvenmod.clsJCZL")

    def main_interface(self, connection: str) -> None:
        """Manages all dictionaries."""
        self.call("mainInterface", connection)

    def main_single_interface(self, is_return: int, item_class_id: int, connection: str) -> Picked:
        """Shows one dictionary, with `is_return` 1 as a picker."""
        self.call("mainSingleInterface", is_return, item_class_id, connection)
        return Picked(self.item_id, self.number, self.name)

    user_right: Property[Value] = Property("UserRight")
    item_id: Property[str] = Property("fItemId", "result")
    name: Property[str] = Property("fName", "result")
    number: Property[str] = Property("fNumber", "result")


class ClassDesigner(Object):
    """The designer of item classes and their fields."""

    def __init__(self) -> None:
        super().__init__("Orvenmod.clsHSXMManage")

    def main_interface(self) -> None:
        """Works in the database that `db_connection` names."""
        self.call("mainInterface")

    user_right: Property[Value] = Property("UserRight")
    db_connection: Property[str] = Property("DBConnection", "the connection string of the entry")
