// check_solid.cpp: finites_check_solid: record, material, nodes and shape of a solid.
#include <algorithm>
#include <cmath>
#include <limits>

#include "finites/fields.h"
#include "finites/records.h"
#include "plain_calls/checks/check_vectors.h"
#include "plain_calls/checks/findings.h"

namespace {

constexpr double SMALLEST_DETERMINANT = 1e-20;  // the library refuses a Jacobian below it

// A corner and the ends of the three edges that leave it, right-handed in an element that is not inside out; `share`
// of their triple product is the Jacobian there.
struct CORNER {
  int at, a, b, c;
};
constexpr CORNER BRICK[8] = {{0, 1, 3, 4}, {1, 2, 0, 5}, {2, 3, 1, 6}, {3, 0, 2, 7},
                             {4, 7, 5, 0}, {5, 4, 6, 1}, {6, 5, 7, 2}, {7, 6, 4, 3}};
constexpr CORNER WEDGE[6] = {{0, 1, 2, 3}, {1, 2, 0, 4}, {2, 0, 1, 5}, {3, 5, 4, 0}, {4, 3, 5, 1}, {5, 4, 3, 2}};
constexpr CORNER TETRAHEDRON[1] = {{0, 1, 2, 3}};

struct SHAPE {
  const CORNER* corners;
  int count;
  double share;
};

SHAPE shape_of(std::int32_t nodes) {
  if (nodes == 8) return {BRICK, 8, 1.0 / 8.0};
  if (nodes == 6) return {WEDGE, 6, 1.0 / 2.0};
  return {TETRAHEDRON, 1, 1.0};
}

bool read_nodes(CHECK& check, const SOLID_RECORD& record, std::int32_t pos, VECTOR3* X) {
  bool read = true;
  for (int m = 1; m <= record.NNODE; ++m) {
    const SENTENCE name = SENTENCE() << "NODE_OFF(" << std::int64_t{m} << ") of SOLID_REC(" << std::int64_t{pos} << ")";
    if (!check.has_block({name, static_cast<double>(record.NODE_OFF(m))}, NODE_X + 2, "node block")) {
      read = false;
      continue;
    }
    X[m - 1] = node_at(check.A, record.NODE_OFF(m));
    if (finite(X[m - 1])) continue;
    check.find(ERROR, FINITES_FOUND_NOT_FINITE,
               SENTENCE() << "a coordinate of node " << std::int64_t{m} << ", from A(ptr + NODE_X) = A("
                          << std::int64_t{record.NODE_OFF(m)} + NODE_X << ") on, is NaN or infinite: so is the matrix");
    read = false;
  }
  return read;
}

// The Jacobian at the corners.
void check_shape(CHECK& check, const VECTOR3* X, std::int32_t nodes) {
  const SHAPE shape = shape_of(nodes);
  double longest = 0.0, largest = 0.0, positive = 0.0, least = std::numeric_limits<double>::infinity();
  for (int c = 0; c < shape.count; ++c) {
    const CORNER& k = shape.corners[c];
    const VECTOR3 a = X[k.a] - X[k.at], b = X[k.b] - X[k.at], u = X[k.c] - X[k.at];
    const double j = shape.share * dot(cross(a, b), u);
    longest = std::max({longest, size(a), size(b), size(u)});
    largest = std::max(largest, std::fabs(j));
    positive = std::max(positive, j);
    least = std::min(least, j);
  }
  const double none = TINY * longest * longest * longest;
  if (!(largest > std::max(none, SMALLEST_DETERMINANT))) {
    check.find(
        ERROR, FINITES_FOUND_NO_AREA,
        SENTENCE() << "the solid has no volume (Jacobian " << largest
                   << ", the library refuses below 1e-20): message 1228, or infinite values; look at NODE_OFF, at "
                      "the order of the nodes and at the unit of length");
  } else if (!(positive > none)) {
    check.find(
        WARNING, FINITES_FOUND_FOLDED,
        SENTENCE() << "the solid is inside out (all Jacobians are negative), and so is its stiffness: nodes of the "
                      "first face go round it so that the normal leads to the others; swap the faces");
  } else if (!(least > none)) {
    check.find(
        WARNING, FINITES_FOUND_FOLDED,
        SENTENCE()
            << "the Jacobian at a corner is " << least
            << ": the solid is folded or an edge has collapsed, and stresses there are not right; order its nodes "
               "face by face, or take a kind of fewer nodes");
  }
}

void check_material(CHECK& check, const SOLID_RECORD& record, std::int32_t pos) {
  const SUBJECT pointer = record_field("MAT_OFF", "SOLID_REC", pos, record.MAT_OFF);
  if (!check.has_block(pointer, MATERIAL_UNIT_WEIGHT, "material block")) return;
  const BLOCK block{"mat", record.MAT_OFF};
  check.above_zero(check.field(block, NAMED(MATERIAL_YOUNG)), FINITES_FOUND_YOUNG, WARNING,
                   "all stiffness is zero; set it to the modulus");
  check.finite(check.field(block, NAMED(MATERIAL_UNIT_WEIGHT)));
  const SUBJECT nu = check.field(block, NAMED(MATERIAL_POISSON));
  if (!check.finite(nu)) return;
  if (nu.value == 0.5 || nu.value == -1.0) {
    check.find(ERROR, FINITES_FOUND_POISSON, nu,
               "(1 + nu) (1 - 2 nu) is 0: the matrix is NaN or infinite, without a message; take 0.49 or so");
  } else if (nu.value < -1.0 || nu.value > 0.5) {
    check.find(WARNING, FINITES_FOUND_POISSON, nu, "no solid has it: it lies between -1 and 0.5");
  }
}

// The position of its record, as the library looks it up; 0 where it refuses.
std::int32_t position(CHECK& check) {
  const char* const refused =
      " is not there: the library refuses the call with message 1228 and writes no result; allocate and fill it";
  const std::int32_t* const pos = optional_record(check, SOLANAELEM.SOLID_POS, check.elem(), "SOLANAELEM.SOLID_POS");
  if (pos == nullptr) {
    check.find(ERROR, FINITES_FOUND_SOLID_POSITION,
               SENTENCE() << "SOLANAELEM.SOLID_POS(" << std::int64_t{check.elem()} << ")" << refused);
    return 0;
  }
  if (optional_record(check, SOLANAELEM.SOLID_REC, *pos, "SOLANAELEM.SOLID_REC") != nullptr) return *pos;
  check.find(ERROR, FINITES_FOUND_SOLID_POSITION,
             SENTENCE() << "SOLANAELEM.SOLID_REC(" << std::int64_t{*pos} << "), where SOLID_POS leads," << refused);
  return 0;
}

void check_record(CHECK& check, std::int32_t pos) {
  const SOLID_RECORD& record = SOLANAELEM.SOLID_REC(pos);
  const SUBJECT factor = record_field("STIFF_FACTOR", "SOLID_REC", pos, static_cast<double>(record.STIFF_FACTOR));
  check.above_zero(factor, FINITES_FOUND_STIFF_FACTOR, WARNING, "the matrix is zero; set it to 1");
  check_material(check, record, pos);
  const std::int32_t n = record.NNODE;
  if (n != 4 && n != 6 && n != 8) {
    check.find(ERROR, FINITES_FOUND_NODE_COUNT, record_field("NNODE", "SOLID_REC", pos, n),
               "no kind of solid has it: message 1228 where it is the count of the call; set it to 4, 6 or 8");
    return;
  }
  VECTOR3 X[8];
  if (read_nodes(check, record, pos, X)) check_shape(check, X, n);
  if (check.A.INTEGER(SECOND_ORDER) != GEOMETRIC_ADDED || HAS_ELEMENT(SOLANAELEM.SOLID_NL_REC, pos)) return;
  check.find(WARNING, FINITES_FOUND_NO_STORED_FORCES,
             SENTENCE() << "A(SECOND_ORDER) is 1, but SOLANAELEM.SOLID_NL_REC(" << std::int64_t{pos}
                        << ") is not there: the stiffness has no geometric part");
}

}  // namespace

std::int32_t finites_check_solid(std::int32_t elem, const double* A, std::int64_t n, finites_finding* findings,
                                 std::int32_t capacity) {
  CHECK check(A, n, findings, capacity);
  check.begin(elem, 0);
  if (check.A.length() < SECOND_ORDER) {
    check.find(
        ERROR, FINITES_FOUND_NO_MODEL_DATA,
        SENTENCE() << "MODEL_DATA is missing or shorter than its header: the library reads beyond it or crashes; "
                      "pass the array and its length");
    return check.count();
  }
  const std::int32_t pos = position(check);
  if (pos == 0) return check.count();
  check.begin(elem, SOLANAELEM.SOLID_REC(pos).ELEM_NO);
  check_record(check, pos);
  return check.count();
}
