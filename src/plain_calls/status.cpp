// status.cpp: the sentences of the statuses, and the version.
#include "finites/elements.h"
#include "finites/version.h"

const char* finites_text(finites_status status) {
  switch (status) {
    case FINITES_OK: return "success";
    case FINITES_NULL: return "a required pointer is null";
    case FINITES_NAN: return "an input is NaN or infinite";
    case FINITES_RANGE:
      return "an input is above 1e30 in size, or a thickness, modulus, factor or distance of nodes above 0 is below "
             "1e-30; or a count is negative; or a batch breaks 0 <= begin <= end <= count, or a stride of it is "
             "negative or shorter than an answer";
    case FINITES_NODES: return "nodes: a plate has 3 or 4, a solid 4, 6 or 8";
    case FINITES_BAD_CODE:
      return "a code is none of its list: theory, orthotropic, curve with its forces, model, ends, at_ends, face or "
             "lumped";
    case FINITES_COINCIDENT: return "two nodes coincide";
    case FINITES_DEGENERATE:
      return "degenerate geometry: the element has no area or volume, is re-entrant or inverted; look at the order of "
             "its nodes";
    case FINITES_ORIENTATION: return "up is parallel to the member, or axes are not orthonormal and right-handed";
    case FINITES_THICKNESS: return "thickness must be above 0";
    case FINITES_MODULUS: return "a modulus (E, E2, G, G12, G13, G23) must be above 0";
    case FINITES_POISSON:
      return "Poisson's ratio must be above -1 and at most 0.5 (a solid: below 0.5); orthotropic: nu nu21 below 1 and "
             "E nu21 = E2 nu";
    case FINITES_FACTOR:
      return "a factor is negative, all are 0 (the struct was not initialised), or shear_factor is 0 in a thick "
             "orthotropic plate";
    case FINITES_DENSITY: return "density is negative";
    case FINITES_SECTION: return "area, Iz, Iy and J must be above 0, shear areas not negative";
    case FINITES_FIXITY: return "a fixity must be between 0 (pin) and 1 (rigid)";
    case FINITES_RELEASE: return "a release must be 0 (none), 1 (first end) or 2 (second end)";
    case FINITES_LENGTH: return "a place lies outside the member, or the unstressed length of a cable is not above 0";
    case FINITES_STIFFNESS: return "the stiffness of a link or spring is negative";
    case FINITES_SLACK: return "a slack cable without load has no shape";
    case FINITES_NO_CONVERGENCE: return "the equilibrium of the cable was not found";
    case FINITES_YIELD: return "a yield stress or a capacity must be above 0";
    case FINITES_HARDENING: return "hardening must be at least 0 and below E";
    case FINITES_LAYERS: return "layers must be 3, 5, 7, 9, 11, 13 or 15";
    case FINITES_RETURN: return "the return to the yield surface failed: try a smaller step";
    case FINITES_MECHANISM: return "releases or hinges leave a mechanism";
    case FINITES_MEMORY: return "no memory for the state";
    case FINITES_STATE:
      return "the element has no plastic state: it must be a thin or thick isotropic plate whose stiffness factors are "
             "1";
    case FINITES_RESULT:
      return "the answer is not finite although the input is: the element lies at the edge of the range";
  }
  return "unknown status";
}

const char* finites_version(void) { return FINITES_VERSION_TEXT; }
