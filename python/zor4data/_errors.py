"""What goes wrong, as exceptions."""

from __future__ import annotations

import os


def show_text(text: str) -> str:
    """The same on one line: line breaks and the like as Python writes them."""
    return "".join(sign if sign.isprintable() else sign.encode("unicode_escape").decode("ascii") for sign in text)


class Error(Exception):
    """What the exceptions of this package have in common.

    Attributes
    ----------
    path : str
        The file.
    cause : str
        One line of English, without path and full stop.
    number : int
        The cause's number, which stays what it is: ``zor4data/enumFileCause.h`` of the library lists them.
        0 where the cause has none.
    """

    def __init__(self, path: str, cause: str, number: int) -> None:
        super().__init__(path, cause, number)
        self.path = path
        self.cause = cause
        self.number = number

    def __str__(self) -> str:
        return show_text(f"{self.path}: {self.cause}")


class ReadError(Error):
    """A file that is not loaded, and why."""


class LossWarning(UserWarning):
    """A file that is loaded with a loss: its path, and what is lost."""


class WriteError(Error):
    """A file that is not saved, and why. An older file of its name stays as it was.

    Attributes
    ----------
    errno : int
        What the system said; 0 where it said nothing.
    """

    def __init__(self, path: str, cause: str, number: int, errno: int = 0) -> None:
        super().__init__(path, cause, number)
        self.args = (path, cause, number, errno)
        self.errno = errno

    def __str__(self) -> str:
        said = f" ({os.strerror(self.errno)})" if self.errno else ""
        return super().__str__() + said


#: Causes of a save that fails, by their numbers.
_WRITE_CAUSES = {
    2: "its folder cannot be looked up",
    3: "it is a directory",
    4: "it is a pipe, a device or the like",
    120: "no file can be made in its folder",
    121: "not every byte arrived: the disk is full, or it would grow too large",
    122: "it could not be brought to the disk",
    123: "it could not be given its name",
    124: "it is a symbolic link that leads nowhere, or in a circle",
    125: "the cloud has nothing to save",
}


def make_write_error(path: str, number: int, errno: int) -> WriteError:
    """Put a number that the library gave into words."""
    return WriteError(path, _WRITE_CAUSES.get(number, "it is not saved"), number, errno)
