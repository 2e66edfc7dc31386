"""Arrays of arguments: their shapes, and one value for all elements or one for each."""
from __future__ import annotations

from typing import Any, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .errors import ArgumentError

Floats = NDArray[np.float64]
Records = NDArray[np.void]


class Given:
    """A named argument: its numbers, of shape `inner`, or (n, \\*inner) with one for each of n elements."""

    def __init__(self, name: str, value: ArrayLike, inner: tuple[int, ...] = ()) -> None:
        self.name = name
        self.inner = inner
        self.array = numbers(name, value, inner)
        self.length: int | None = None
        if self.array.ndim == len(inner) + 1 and self.array.shape[1:] == inner:
            self.length = self.array.shape[0]
        elif self.array.shape != inner:
            raise ArgumentError(f"{name} has shape {self.array.shape}, expected {expected(inner)}", argument=name)
        if self.length == 0:
            raise ArgumentError(f"{name} has shape {self.array.shape}: there is no element", argument=name)

    def rows(self) -> Floats:
        """The numbers as a contiguous array (1 or n, size)."""
        size = int(np.prod(self.inner, dtype=int))
        return np.ascontiguousarray(self.array.reshape(self.length or 1, size))


def expected(inner: tuple[int, ...]) -> str:
    """What shapes an argument may have.

    >>> expected(()), expected((4, 3))
    ('() or (n,)', '(4, 3) or (n, 4, 3)')
    """
    return f"{inner} or ({', '.join(['n', *map(str, inner)])}{',' if not inner else ''})"


def numbers(name: str, value: ArrayLike, inner: tuple[int, ...] | None = None) -> Floats:
    """An array of float64; what is no array of real numbers is refused by its name."""
    shapes = "" if inner is None else f" of shape {expected(inner)}"
    try:
        array = np.asarray(value)
    except ValueError as error:
        raise ArgumentError(f"{name} is no regular array: expected numbers{shapes}", argument=name) from error
    if array.dtype.kind not in "iuf":
        what = type(value).__name__ if array.dtype.kind == "O" else f"an array of {array.dtype}"
        raise ArgumentError(f"{name} is {what}: expected real numbers{shapes}", argument=name)
    return array.astype(np.float64)


def common_length(lengths: Sequence[tuple[str, int | None]]) -> int | None:
    """The number of elements that arguments agree on; None where each has one value."""
    found: tuple[str, int] | None = None
    for name, length in lengths:
        if length is None:
            continue
        if found is not None and found[1] != length:
            raise ArgumentError(
                f"{name} is for {length} elements, {found[0]} for {found[1]}: expected one value, or one for each of "
                f"the {found[1]} elements", argument=name)
        if found is None:
            found = (name, length)
    return None if found is None else found[1]


def code_of(name: str, value: Any, codes: dict[str, int]) -> int:
    """The number of a named choice."""
    if not isinstance(value, str) or value not in codes:
        listed = ", ".join(repr(code) for code in codes)
        raise ArgumentError(f"{name} is {value!r}: expected one of {listed}", argument=name)
    return codes[value]


def thread_count(threads: int) -> int:
    """The number of threads of a call."""
    if isinstance(threads, bool) or not isinstance(threads, (int, np.integer)) or threads < 1:
        raise ArgumentError(f"threads is {threads!r}: expected a whole number from 1", argument="threads")
    return min(int(threads), 1024)


def length_mismatch(name: str, length: int | None, elements: int | None) -> ArgumentError:
    """The argument of a row of states has another length than the row."""
    return ArgumentError(f"{name} is for {length or 1} elements, the state has {elements or 1}", argument=name)
