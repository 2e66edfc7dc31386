// partition.cpp: the elements over the ranks, by PETSc's partitioner on the graph of their neighbours.
//
// Two elements are neighbours if they share nodes; the edge between them weighs as many. A part then has few nodes in
// common with the others, at which their matrices and forces are added up. Elements weigh what their matrices take. The
// first rank divides for all, in one thread: what several ranks or threads do together depends on who comes first, and
// the same model would be divided in one way today and in another tomorrow.
#include <petscmat.h>

#include <algorithm>
#include <cstdlib>

#include "elements/scatter_map.h"
#include "engines/petsc/exchange.h"
#include "engines/petsc/handles.h"
#include "system/ranks.h"

namespace solver {

namespace {

#if defined(PETSC_HAVE_PARMETIS)
constexpr const char* PARTITIONER = MATPARTITIONINGPARMETIS;
constexpr const char* PARTITIONER_NAME = "ParMETIS";
#elif defined(PETSC_HAVE_PTSCOTCH)
constexpr const char* PARTITIONER = MATPARTITIONINGPTSCOTCH;
constexpr const char* PARTITIONER_NAME = "PT-Scotch";
#else
constexpr const char* PARTITIONER = nullptr;
constexpr const char* PARTITIONER_NAME = "";
#endif

using owned_partitioning = owned<MatPartitioning, MatPartitioningDestroy>;
using owned_set = owned<IS, ISDestroy>;

constexpr std::size_t LEAST_ELEMENTS = 8;  // for each rank: fewer are not worth a graph

std::size_t start_of(std::size_t count, int process) { return count * subscript(process) / subscript(rank_count()); }

// Stretches of elements as the deck numbers them.
numbered<int> stretches(std::size_t count) {
  numbered<int> process_of(count, 0);
  for (int process = 0; process < rank_count(); ++process) {
    for (std::size_t e = start_of(count, process); e < start_of(count, process + 1); ++e) process_of[e] = process;
  }
  return process_of;
}

// PETSc frees what it has taken, which it has allocated.
class graph {
 public:
  explicit graph(const model& m) {
    const numbered<std::vector<PetscInt>> at_node = elements_at_nodes(m);
    std::vector<PetscInt> start(1, 0), neighbour, weight;
    for (std::size_t e = 0; e < m.elements.size(); ++e) {
      append_row(m, e, at_node, neighbour, weight);
      start.push_back(static_cast<PetscInt>(neighbour.size()));
    }
    const auto count = static_cast<PetscInt>(m.elements.size());
    require(MatCreateMPIAdj(PETSC_COMM_SELF, count, count, of_petsc(start), of_petsc(neighbour), of_petsc(weight),
                            matrix_.place()),
            "the graph of the elements");
  }
  Mat get() const { return matrix_.get(); }

  static PetscInt* of_petsc(const std::vector<PetscInt>& values) {
    PetscInt* copy = nullptr;
    require(PetscMalloc1(values.size() + 1, &copy), "memory");
    std::copy(values.begin(), values.end(), copy);
    return copy;
  }

 private:
  static numbered<std::vector<PetscInt>> elements_at_nodes(const model& m) {
    numbered<std::vector<PetscInt>> at_node(m.nodes.size());
    for (std::size_t e = 0; e < m.elements.size(); ++e) {
      for (const int n : m.elements[e].nodes) at_node[n].push_back(static_cast<PetscInt>(e));
    }
    return at_node;
  }

  static void append_row(const model& m, std::size_t e, const numbered<std::vector<PetscInt>>& at_node,
                         std::vector<PetscInt>& neighbour, std::vector<PetscInt>& weight) {
    std::vector<PetscInt> found;
    for (const int n : m.elements[e].nodes) found.insert(found.end(), at_node[n].begin(), at_node[n].end());
    std::sort(found.begin(), found.end());
    for (std::size_t i = 0; i < found.size();) {
      const std::size_t begin = i;
      while (i < found.size() && found[i] == found[begin]) ++i;
      if (found[begin] == static_cast<PetscInt>(e)) continue;
      neighbour.push_back(found[begin]);
      weight.push_back(static_cast<PetscInt>(i - begin));
    }
  }

  owned_matrix matrix_;
};

std::vector<int> parts_of(const model& m) {
  const char* const what = "the division of the elements";
  setenv("SCOTCH_PTHREAD_NUMBER", "1", 0);  // which Scotch reads; others pass it over
  const graph neighbours(m);
  std::vector<PetscInt> weight;
  for (const element& e : m.elements) weight.push_back(element_freedoms(e));
  owned_partitioning partitioning;
  require(MatPartitioningCreate(PETSC_COMM_SELF, partitioning.place()), what);
  require(MatPartitioningSetAdjacency(partitioning.get(), neighbours.get()), what);
  require(MatPartitioningSetType(partitioning.get(), PARTITIONER), what);
  require(MatPartitioningSetUseEdgeWeights(partitioning.get(), PETSC_TRUE), what);
  require(MatPartitioningSetVertexWeights(partitioning.get(), graph::of_petsc(weight)), what);
  require(MatPartitioningSetNParts(partitioning.get(), rank_count()), what);
  owned_set parts;
  require(MatPartitioningApply(partitioning.get(), parts.place()), what);
  const PetscInt* indices = nullptr;
  require(ISGetIndices(parts.get(), &indices), what);
  std::vector<int> result(indices, indices + m.elements.size());
  require(ISRestoreIndices(parts.get(), &indices), what);
  return result;
}

// A rank may be left without an element, of a small model; that is no fault.
bool is_a_division(const std::vector<int>& parts) {
  return std::all_of(parts.begin(), parts.end(), [](int part) { return part >= 0 && part < rank_count(); });
}

}  // namespace

element_division divide_elements(const model& m) {
  const std::size_t count = m.elements.size();
  if (rank_count() == 1) return {};
  if (PARTITIONER == nullptr) return {stretches(count), "in the order of the deck (this PETSc has no partitioner)"};
  if (count < LEAST_ELEMENTS * subscript(rank_count())) return {stretches(count), "in the order of the deck"};
  std::vector<int> found;
  fail_together([&] {
    if (is_first_rank()) found = parts_of(m);
  });
  if (!true_for_all(!is_first_rank() || is_a_division(found))) {
    return {stretches(count), std::string("in the order of the deck (") + PARTITIONER_NAME + " gave no division)"};
  }
  found.resize(count);
  must(MPI_Bcast(found.data(), number_of(count), MPI_INT, 0, PETSC_COMM_WORLD));
  return {found, std::string("by ") + PARTITIONER_NAME};
}

}  // namespace solver
