"""Assembly against dense sums."""
import numpy as np

import finites as fe


def test_against_a_dense_sum(random):
    blocks = random.standard_normal((20, 6, 6))
    freedoms = np.array([random.choice(15, 6, replace=False) for _ in range(20)]) - 2
    freedoms[freedoms < 0] = -1
    dense = np.zeros((13, 13))
    for block, unknowns in zip(blocks, freedoms):
        for i, row in enumerate(unknowns):
            for j, column in enumerate(unknowns):
                if row >= 0 and column >= 0:
                    dense[row, column] += block[i, j]
    matrix = fe.assemble(blocks, freedoms)
    assert matrix.format == "csr" and matrix.shape == (13, 13) and np.allclose(matrix.toarray(), dense)
    assert fe.assemble(blocks, freedoms, 20).shape == (20, 20)


def test_several_kinds_of_elements(random):
    a, b = random.standard_normal((3, 4, 4)), random.standard_normal((2, 2, 2))
    fa, fb = [[0, 1, 2, 3], [2, 3, 4, 5], [4, 5, 0, 1]], [[0, 5], [-1, 3]]
    together = fe.assemble([a, b], [fa, fb], 6).toarray()
    assert np.allclose(together, (fe.assemble(a, fa, 6) + fe.assemble(b, fb, 6)).toarray())
    vectors = fe.assemble([a[:, 0], b[:, 0]], [fa, fb], 6)
    expected = np.zeros(6)
    for rows, numbers in ((a[:, 0], fa), (b[:, 0], fb)):
        for row, unknowns in zip(rows, numbers):
            for value, i in zip(row, unknowns):
                if i >= 0:
                    expected[i] += value
    assert np.allclose(vectors, expected)


def test_numbers_of_unknowns():
    numbered, count = fe.freedoms([[0, 2], [2, 4]], per_node=2, fixed=[0, 9], nodes=6)
    # Nodes 1, 3 and 5 have no element.
    assert numbered.tolist() == [[-1, 0, 1, 2], [1, 2, 3, -1]] and count == 4


def test_a_cantilever_of_beams(steel):
    """The tip of a cantilever in ten elements: P L^3 / 3 E I."""
    nodes = np.column_stack([np.linspace(0, 3, 11), np.zeros(11), np.zeros(11)])
    elements = np.column_stack([np.arange(10), np.arange(1, 11)])
    beams = fe.Beam(nodes[elements], steel, 1e-2, Iz=8e-5, Iy=8e-5, J=1e-5)
    freedoms, count = fe.freedoms(elements, fixed=range(6))
    K = fe.assemble(beams.stiffness(), freedoms, count).toarray()
    load = np.zeros(count)
    load[-4] = -1000.0
    assert np.isclose(np.linalg.solve(K, load)[-4], -1000 * 27 / (3 * steel.E * 8e-5), rtol=1e-8)
