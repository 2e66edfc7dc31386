"""What all descriptions of elements share: records of the library in an array, one element or a batch of n."""
from __future__ import annotations

from typing import Any, Callable, ClassVar, Iterable, Sequence, TypeVar, overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _finites
from ._arrays import Floats, Given, Records, common_length, thread_count
from .errors import ArgumentError, element_error

Self = TypeVar("Self", bound="Elements")


class Field:
    """A field of the records, read as an attribute: one value, or an array with one for each element."""

    def __init__(self, doc: str, name: str | None = None) -> None:
        self.__doc__ = doc
        self._name = name or ""

    def __set_name__(self, owner: type, name: str) -> None:
        self._name = self._name or name

    @overload
    def __get__(self, instance: None, owner: type) -> Field: ...

    @overload
    def __get__(self, instance: Elements, owner: type) -> Any: ...

    def __get__(self, instance: Elements | None, owner: type) -> Any:
        if instance is None:
            return self
        return instance._field(self._name)


class Elements:
    """An element, or a batch of n elements of one kind: an immutable description that can be pickled and compared.

    `len` counts a batch; an index or a slice takes elements out of it. Every call takes ``threads``, among which a
    batch is cut; the interpreter is free meanwhile.
    """

    _hidden: ClassVar[tuple[str, ...]] = ("unused", "xyz")
    __slots__ = ("_records", "_length")
    __hash__ = None  # type: ignore[assignment]

    _records: Records
    _length: int | None

    @staticmethod
    def _fresh() -> Records:
        """One record as the library initialises it."""
        raise NotImplementedError

    def _build(self, fields: Sequence[tuple[str, Given]], codes: dict[str, int]) -> None:
        """Records as the library initialises them, with these fields; arrays make a batch."""
        self._length = common_length([(given.name, given.length) for _, given in fields])
        records = np.repeat(self._fresh(), self._length or 1)
        for name, code in codes.items():
            records[name] = code
        for name, given in fields:
            target = records[name]
            if given.inner and target.shape[1:] != given.inner:  # the nodes of a smaller shape
                target = target[:, : given.inner[0]]
            target[...] = given.array
        records.flags.writeable = False
        self._records = records

    @property
    def records(self) -> Records:
        """The records of the library, an array of n structures (read only)."""
        return self._records

    @property
    def batch(self) -> bool:
        """Whether these are n elements: answers have a leading axis of n then."""
        return self._length is not None

    def _field(self, name: str) -> Any:
        values = self._records[name]
        return values if self.batch else values[0]

    def __len__(self) -> int:
        if self._length is None:
            raise TypeError(f"this {type(self).__name__} is one element and has no length")
        return self._length

    def __getitem__(self: Self, index: Any) -> Self:
        if self._length is None:
            raise TypeError(f"this {type(self).__name__} is one element: there is no batch to take one from")
        chosen = self._records[index]
        single = isinstance(chosen, np.void)
        if not single and (chosen.ndim != 1 or chosen.size == 0):
            raise IndexError("an index of a batch takes out one element, or some of them in a row")
        return self._of(np.array([chosen], dtype=self._records.dtype) if single else chosen.copy(), not single)

    @classmethod
    def _of(cls: type[Self], records: Records, batch: bool) -> Self:
        made = cls.__new__(cls)
        records.flags.writeable = False
        made._records = records
        made._length = records.size if batch else None
        return made

    def __reduce__(self) -> tuple[Any, ...]:
        return (_again, (type(self), self._records, self.batch))

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Elements) or type(self) is not type(other):
            return NotImplemented
        return self._length == other._length and self._records.tobytes() == other._records.tobytes()

    def __repr__(self) -> str:
        fresh = self._fresh()[0]
        parts = [self._shape_text()]
        for name in self._records.dtype.names or ():
            values = self._records[name]
            if name in self._hidden or np.array_equal(values[0], fresh[name]) and np.all(values == values[0]):
                continue
            parts.append(f"{name}={self._value_text(name, values)}")
        return f"{type(self).__name__}({', '.join(parts)})"

    def _shape_text(self) -> str:
        return "one element" if self._length is None else f"{self._length} elements"

    def _value_text(self, name: str, values: NDArray[Any]) -> str:
        if not np.all(values == values[0]):
            return f"{np.min(values):.6g}..{np.max(values):.6g}"
        return f"{values[0]:.6g}" if values.ndim == 1 else np.array2string(values[0], separator=", ", precision=6)

    def _changed(self: Self, fields: Sequence[tuple[str, Given]]) -> Self:
        length = common_length([(type(self).__name__, self._length), *((g.name, g.length) for _, g in fields)])
        records = np.repeat(self._records, length) if length and not self.batch else self._records.copy()
        for name, given in fields:
            target = records[name]
            if given.inner and target.shape[1:] != given.inner:
                target = target[:, : given.inner[0]]
            target[...] = given.array
        return self._of(records, length is not None)

    def replace(self: Self, **changes: ArrayLike) -> Self:
        """The same elements with other numbers: ``plate.replace(thickness=0.03)``, ``cables.replace(nodes=x)``.

        Parameters
        ----------
        **changes : array_like
            New values by the name of the attribute, one for all elements or one for each.
        """
        fields = []
        for name, value in changes.items():
            record = self._replaceable().get(name)
            if record is None:
                listed = ", ".join(sorted(self._replaceable()))
                raise ArgumentError(f"{name} cannot be replaced; what can: {listed}", argument=name)
            inner = self._records.dtype[record].shape
            if record == "xyz":
                inner = (self._node_count(), 3)
            fields.append((record, Given(name, value, inner)))
        return self._changed(fields)

    def _node_count(self) -> int:
        names = self._records.dtype.names or ()
        return int(self._records["nodes"][0]) if "nodes" in names else int(self._records.dtype["xyz"].shape[0])

    def _replaceable(self) -> dict[str, str]:
        dtype = self._records.dtype
        names = {name: name for name in dtype.names or () if dtype[name].base == np.float64 and name != "xyz"}
        return {**names, "nodes": "xyz"} if "xyz" in (dtype.names or ()) else names

    def _run(self, function: Callable[..., tuple[int, int]], shape: tuple[int, ...],
             given: Iterable[Given | None] = (), extra: tuple[Any, ...] = (), *, threads: int = 1,
             dtype: Any = np.float64) -> Any:
        """function(records, *given, *extra, out, threads) with out (n, \\*shape); one element answers without n."""
        threads = thread_count(threads)
        inputs = list(given)
        there = [one for one in inputs if one is not None]
        length = common_length([(type(self).__name__, self._length), *((one.name, one.length) for one in there)])
        records = self._records if length is None or self.batch else np.repeat(self._records, length)
        rows = [None if one is None else one.rows() for one in inputs]
        out = np.zeros((records.size, *shape), dtype)
        status, element = function(records, *rows, *extra, out, threads)
        if status != 0:
            values = {name: records[name][element] for name in records.dtype.names or ()}
            for one in there:
                values[one.name] = one.array if one.length is None else one.array[element]
            raise element_error(status, None if length is None else element, values)
        return out if length is not None else out.reshape(shape)


def _again(kind: type[Elements], records: Records, batch: bool) -> Elements:
    return kind._of(records.copy(), batch)


def nodes_of(name: str, nodes: ArrayLike, counts: Sequence[int]) -> Given:
    """Coordinates (k, 3) or (n, k, 3), where k is one of the counts."""
    listed = " or ".join(f"({count}, 3) or (n, {count}, 3)" for count in counts)
    try:
        shape = np.shape(nodes)
    except ValueError as error:
        raise ArgumentError(f"{name} is no regular array: expected {listed}", argument=name) from error
    for count in counts:
        if shape[-2:] == (count, 3) and len(shape) in (2, 3):
            return Given(name, nodes, (count, 3))
    raise ArgumentError(f"{name} has shape {shape}, expected {listed}", argument=name)


def version() -> str:
    """The version of the library that runs."""
    return _finites.version()


def lanes() -> int:
    """How many elements a batch does at once on this processor: the vector lanes it uses.

    >>> lanes() in (2, 4, 8)
    True
    """
    return _finites.lanes()


__all__ = ["Elements", "Field", "Floats", "nodes_of", "version", "lanes"]
