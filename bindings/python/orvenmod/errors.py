"""What a call fails with. Every failure is an Error with a number and a text; the kinds that a program tells apart are
also the built-in exception that a Python programmer expects."""

from __future__ import annotations


class Error(Exception):
    """A failure of the component or of its database.

    number: as the component gives it; for the database's own failures that of the store or server.
    text:   what a user may be shown.
    """

    def __init__(self, number: int, text: str) -> None:
        super().__init__(text)
        self.number = number
        self.text = text

    def __reduce__(self) -> tuple[type[Error], tuple[int, str]]:
        return type(self), (self.number, self.text)


class InvalidCall(Error, ValueError):
    """A value that no call takes, or an object of another thread."""


class Overflow(Error, OverflowError):
    """A number that the member can't hold."""


class TypeMismatch(Error, TypeError):
    """A value that is none of the member's type, such as a word for a number."""


class Released(Error, ReferenceError):
    """The object was closed."""


class CannotCreate(Error):
    """No such class."""


class NoSuchMember(Error, AttributeError):
    """The object has no property, or no method, of that name."""


class WrongArguments(Error, TypeError):
    """An argument is missing, or there are too many."""


class LibraryNotFound(Error, OSError):
    """The component's library can't be loaded."""

    def __str__(self) -> str:
        return self.text


INVALID_CALL = 5
LIBRARY_NOT_LOADED = 48

_KINDS: dict[int, type[Error]] = {
    INVALID_CALL: InvalidCall,
    6: Overflow,
    13: TypeMismatch,
    LIBRARY_NOT_LOADED: LibraryNotFound,
    424: Released,
    429: CannotCreate,
    438: NoSuchMember,
    449: WrongArguments,
    450: WrongArguments,
}


def error(number: int, text: str) -> Error:
    """The exception of that number."""
    return _KINDS.get(number, Error)(number, text)
