"""From matrices of elements to the matrix of a structure."""
from __future__ import annotations

from typing import Any, Sequence

import numpy as np
from numpy.typing import ArrayLike, NDArray

from ._arrays import Floats, numbers
from .errors import ArgumentError

Integers = NDArray[np.int64]


def freedoms(elements: ArrayLike, per_node: int = 6, fixed: ArrayLike = (), *,
             nodes: int | None = None) -> tuple[Integers, int]:
    """Numbers the degrees of freedom of a mesh, node by node; those that are fixed get -1.

    Parameters
    ----------
    elements : (n, k) of int
        Nodes of each element, from 0.
    per_node : int
        6 for plates and beams, 3 for trusses, cables and solids.
    fixed : sequence of int
        Degrees of freedom per_node * node + component that supports hold.
    nodes : int, optional
        Number of nodes. Default: the largest node of an element and 1. Nodes of no element have no unknowns.

    Returns
    -------
    (n, k * per_node) of int
        The unknowns of each element, for `assemble`.
    int
        How many unknowns there are.

    Examples
    --------
    >>> numbered, count = freedoms([[0, 1], [1, 2]], per_node=3, fixed=[0, 1, 2])
    >>> numbered.tolist(), count
    ([[-1, -1, -1, 0, 1, 2], [0, 1, 2, 3, 4, 5]], 6)
    """
    mesh = _whole("elements", elements)
    if mesh.ndim != 2 or mesh.size == 0:
        raise ArgumentError(f"elements has shape {mesh.shape}, expected (n, k)", argument="elements")
    if mesh.min() < 0:
        raise ArgumentError(f"elements has the node {mesh.min()}: nodes count from 0", argument="elements")
    held = _whole("fixed", fixed).ravel()
    if nodes is not None and nodes <= mesh.max():
        raise ArgumentError(f"elements has the node {mesh.max()}, there are {nodes} nodes", argument="elements")
    total = per_node * (int(mesh.max()) + 1 if nodes is None else nodes)
    if held.size and not (0 <= held.min() and held.max() < total):
        raise ArgumentError(f"fixed has the degrees of freedom {held.min()} to {held.max()}, there are 0 to "
                            f"{total - 1}", argument="fixed")
    number = np.zeros(total, np.int64)
    number[np.setdiff1d(np.arange(total // per_node), mesh)[:, None] * per_node + np.arange(per_node)] = -1
    number[held] = -1
    free = number == 0
    number[free] = np.arange(np.count_nonzero(free))
    every = (mesh[:, :, None] * per_node + np.arange(per_node)).reshape(len(mesh), -1)
    return number[every], int(np.count_nonzero(free))


def assemble(blocks: Any, freedoms: Any, size: int | None = None) -> Any:
    """Adds matrices, or vectors, of elements into those of the structure.

    Parameters
    ----------
    blocks : (n, m, m) or (n, m), or a sequence of such arrays
        Matrices or vectors of the elements; a sequence holds several kinds of elements, all matrices or all vectors.
    freedoms : (n, m) of int, or a sequence of such arrays
        For each block its unknowns from 0; entries at -1 are left out (supports).
    size : int, optional
        Number of unknowns. Default: the largest one and 1.

    Returns
    -------
    scipy.sparse.csr_matrix (size, size), or an array (size,) of vectors
        Sums where elements share unknowns.

    Examples
    --------
    Two springs in a row, the first end held:

    >>> import numpy as np
    >>> spring = np.array([[1.0, -1.0], [-1.0, 1.0]])
    >>> assemble(np.array([spring, 2 * spring]), [[-1, 0], [0, 1]]).toarray()
    array([[ 3., -2.],
           [-2.,  2.]])
    >>> assemble(np.array([[1.0, 2.0], [3.0, 4.0]]), [[-1, 0], [0, 1]])
    array([5., 4.])
    """
    pairs = _pairs(blocks, freedoms)
    largest = max(int(unknowns.max()) for _, unknowns in pairs)
    count = largest + 1 if size is None else int(size)
    if largest >= count:
        raise ArgumentError(f"freedoms has the unknown {largest}, size is {count}", argument="freedoms")
    if pairs[0][0].ndim == 2:
        vector = np.zeros(count)
        for block, unknowns in pairs:
            kept = unknowns >= 0
            np.add.at(vector, unknowns[kept], block[kept])
        return vector
    return _matrix(pairs, count)


def _matrix(pairs: Sequence[tuple[Floats, Integers]], count: int) -> Any:
    from scipy import sparse

    rows, columns, values = [], [], []
    for block, unknowns in pairs:
        row = np.broadcast_to(unknowns[:, :, None], block.shape)
        column = np.broadcast_to(unknowns[:, None, :], block.shape)
        kept = (row >= 0) & (column >= 0)
        rows.append(row[kept])
        columns.append(column[kept])
        values.append(block[kept])
    entries = (np.concatenate(values), (np.concatenate(rows), np.concatenate(columns)))
    matrix = sparse.coo_matrix(entries, shape=(count, count)).tocsr()
    matrix.sum_duplicates()
    return matrix


def _pairs(blocks: Any, freedoms: Any) -> list[tuple[Floats, Integers]]:
    several = isinstance(blocks, (list, tuple))
    blocks_of = list(blocks) if several else [blocks]
    freedoms_of = list(freedoms) if several else [freedoms]
    if len(blocks_of) != len(freedoms_of) or not blocks_of:
        raise ArgumentError(f"there are {len(blocks_of)} arrays of blocks and {len(freedoms_of)} of freedoms",
                            argument="freedoms")
    pairs = []
    for block_given, unknowns_given in zip(blocks_of, freedoms_of):
        block, unknowns = numbers("blocks", block_given), _whole("freedoms", unknowns_given)
        fits = (block.ndim in (2, 3) and block.size > 0 and unknowns.shape == block.shape[:2]
                and (block.ndim == 2 or block.shape[1] == block.shape[2]))
        if not fits:
            raise ArgumentError(f"blocks has shape {block.shape} and freedoms {unknowns.shape}, expected (n, m, m) or "
                                "(n, m), and (n, m)", argument="blocks")
        if unknowns.min() < -1:
            raise ArgumentError(f"freedoms has {unknowns.min()}: unknowns count from 0, and -1 is left out",
                                argument="freedoms")
        pairs.append((block, unknowns))
    if len({block.ndim for block, _ in pairs}) > 1:
        raise ArgumentError("blocks has matrices and vectors", argument="blocks")
    return pairs


def _whole(name: str, value: ArrayLike) -> Integers:
    array = np.asarray(value)
    if array.size == 0:
        return np.zeros(array.shape, np.int64)
    if array.dtype.kind not in "iu":
        raise ArgumentError(f"{name} is an array of {array.dtype}: expected whole numbers", argument=name)
    return array.astype(np.int64)


__all__ = ["assemble", "freedoms"]
