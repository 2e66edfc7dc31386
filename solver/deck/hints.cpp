// hints.cpp: what a user can do about a keyword, a parameter or an element type that this solver refuses.
#include "deck/hints.h"

#include <algorithm>
#include <iterator>

namespace solver::deck {

namespace {

struct hint {
  const char* name;  // as it begins, without blanks
  const char* text;
};

struct parameter_hint {
  const char* keyword;
  const char* parameter;
  const char* text;
};

constexpr char NO_TIME[] =
    "there is no response in time: *STATIC gives the state under steady loads, *FREQUENCY the natural frequencies";
constexpr char VALUES_OF_ELEMENTS[] =
    "values that vary from element to element are not read: give sets with sections of their own";
constexpr char TIE_INSTEAD[] =
    "there is no contact: tie surfaces that stay together by *TIE, or join them by *EQUATION or springs; leave the "
    "card "
    "out where they stay apart";
constexpr char NO_HEAT[] =
    "no heat is computed: give the temperatures of the nodes by *TEMPERATURE in a step with *STATIC";
constexpr char NO_RUBBER[] = "strains are small: give the initial modulus by *ELASTIC";
constexpr char NO_CREEP[] =
    "nothing creeps or relaxes: a *STATIC step with a reduced modulus in *ELASTIC is the usual estimate";
constexpr char NO_OTHER_YIELDING[] = "what yields are shells with *PLASTIC (von Mises) and frames with *PLASTIC HINGE";
constexpr char NO_CONNECTORS[] = "a CONN3D2 with *LINK SECTION joins two nodes by six stiffnesses";
constexpr char NO_OPTIMIZATION[] = "there are no sensitivities and no optimization: change the deck and solve again";
constexpr char NO_FLOW[] = "there is no flow: give its pressures by *DLOAD";
constexpr char OWN_UNITS[] =
    "materials are *ELASTIC with *DENSITY, *EXPANSION and *PLASTIC: leave the card out, or give "
    "the property that it stands for by one of them";

// In the order of the alphabet; the first that fits counts, so that longer names stand before shorter ones.
// clang-format off
constexpr hint REFUSED_KEYWORDS[] = {
    {"*ACOUSTIC", "there are no acoustic elements"},
    {"*ADAPTIVEMESH", "the mesh stays as it is"},
    {"*ADJUST", "nodes stay where *NODE puts them"},
    {"*ANNEAL", NO_CREEP},
    {"*AQUA", "there are no waves and currents: give their forces by *DLOAD"},
    {"*AXIAL", "sections of beams are elastic: give area, inertias and E by *BEAM GENERAL SECTION"},
    {"*BASEMOTION", NO_TIME},
    {"*BEAMADDEDINERTIA", "add the mass to the *DENSITY of the section, or give it by *MASS elements"},
    {"*BEAMFLUIDINERTIA", "add the mass to the *DENSITY of the section, or give it by *MASS elements"},
    {"*BEAMSTIFFNESS", "give area and inertias by *BEAM GENERAL SECTION"},
    {"*BOND", TIE_INSTEAD},
    {"*BRITTLE", "nothing cracks: give the modulus of the cracked section by *ELASTIC"},
    {"*BUCKLINGENVELOPE", NO_OTHER_YIELDING},
    {"*BULKVISCOSITY", "the card may be left out: there is no response in time"},
    {"*CADDEDMASS", "give the mass by *MASS elements"},
    {"*CAPCREEP", NO_CREEP},
    {"*CAPPLASTICITY", NO_OTHER_YIELDING},
    {"*CASTIRON", NO_OTHER_YIELDING},
    {"*CAVITY", NO_HEAT},
    {"*CFILM", NO_HEAT},
    {"*CFD", NO_FLOW},
    {"*CFLUX", NO_HEAT},
    {"*CHANGEFRICTION", TIE_INSTEAD},
    {"*CHANGEPLASTIC", NO_OTHER_YIELDING},
    {"*CHANGESOLIDSECTION", "sections do not change from step to step: give a deck for each state"},
    {"*CLAYPLASTICITY", NO_OTHER_YIELDING},
    {"*CLEARANCE", TIE_INSTEAD},
    {"*CO-SIMULATION", "one program solves alone: give the loads of the other by *CLOAD, *DLOAD or *TEMPERATURE"},
    {"*COHESIVE", "there are no cohesive elements: springs or links join parts that may part"},
    {"*COMBINEDTESTDATA", NO_CREEP},
    {"*COMPLEXFREQUENCY", "damping and rotation are not counted: *FREQUENCY gives the undamped frequencies"},
    {"*CONCRETE", "concrete does not crack here: give the modulus of the cracked section by *ELASTIC"},
    {"*CONNECTOR", NO_CONNECTORS},
    {"*CONSTRAINTCONTROLS", "the card may be left out: conditions hold exactly"},
    {"*CONTACT", TIE_INSTEAD},
    {"*CONTOURINTEGRAL", "no cracks are followed: the results give displacements and stresses at their tips"},
    {"*CORRELATION", NO_TIME},
    {"*COUPLEDTEMPERATUREDISPLACEMENT", NO_HEAT},
    {"*CRACK", "no cracks are followed: the results give displacements and stresses at their tips"},
    {"*CRADIATE", NO_HEAT},
    {"*CREEP", NO_CREEP},
    {"*CRUSHABLEFOAM", NO_OTHER_YIELDING},
    {"*CYCLEDPLASTIC", "hardening is isotropic: one line from the yield stress in *PLASTIC"},
    {"*CYCLICHARDENING", "hardening is isotropic: one line from the yield stress in *PLASTIC"},
    {"*CYCLICSYMMETRY", "model the whole structure, or a sector with *BOUNDARY on planes of symmetry"},
    {"*CYCLIC", "model the whole structure, or a sector with *BOUNDARY on planes of symmetry"},
    {"*DADDEDMASS", "give the mass by *MASS elements"},
    {"*DAMAGE", "nothing is damaged or fails: compare the stresses with their limits"},
    {"*DASHPOT", "damping has no part in statics and natural frequencies: leave dashpots out"},
    {"*DEBOND", TIE_INSTEAD},
    {"*DEFORMATIONPLASTICITY", NO_OTHER_YIELDING},
    {"*DEPVAR", "there is no user material: use *ELASTIC"},
    {"*DESIGN", NO_OPTIMIZATION},
    {"*DFLUX", NO_HEAT},
    {"*DSFLUX", NO_HEAT},
    {"*DIRECTCYCLIC", NO_TIME},
    {"*DISPLAYBODY", "the card may be left out: only elements are shown"},
    {"*DISTRIBUTIONTABLE", VALUES_OF_ELEMENTS},
    {"*DISTRIBUTION", VALUES_OF_ELEMENTS},
    {"*DRAGCHAIN", "give the drag by *CLOAD"},
    {"*DRUCKERPRAGER", NO_OTHER_YIELDING},
    {"*DYNAMIC", NO_TIME},
    {"*ELECTRO", "there are no electric and magnetic fields"},
    {"*EMBEDDEDELEMENT", "share the nodes, or tie them by *EQUATION or *TIE"},
    {"*ENRICHMENT", "no cracks are followed: the results give displacements and stresses at their tips"},
    {"*EOS", NO_RUBBER},
    {"*EPJOINT", NO_CONNECTORS},
    {"*EULERIAN", "the mesh moves with the material: use solids"},
    {"*EXTREMEVALUE", "the summary names the largest values: leave the card out"},
    {"*FABRIC", "give the moduli by *ELASTIC, TYPE=LAMINA"},
    {"*FAILSTRAIN", "nothing fails: compare the strains with their limits"},
    {"*FAILSTRESS", "nothing fails: compare the stresses with their limits"},
    {"*FAILURERATIOS", NO_OTHER_YIELDING},
    {"*FASTENER", "join the sheets by a CONN3D2 with *LINK SECTION between nodes that *COUPLING joins to them"},
    {"*FEASIBLEDIRECTION", NO_OPTIMIZATION},
    {"*FIELD", "there are no field variables: give a material of its own for each value"},
    {"*FILM", NO_HEAT},
    {"*FIXEDMASSSCALING", "the card may be left out: there is no response in time"},
    {"*FLEXIBLEBODY", "there are no substructures: put the whole model into one deck"},
    {"*FLUID", NO_FLOW},
    {"*FOUNDATION", "put springs (SPRING1 with *SPRING) under the nodes, each with its share of the area"},
    {"*FRACTURECRITERION", "no cracks are followed: the results give displacements and stresses at their tips"},
    {"*FRAMESECTION", "use B33 with *BEAM GENERAL SECTION, and *PLASTIC HINGE where it yields"},
    {"*GAP", "gaps do not close: put a spring or a truss where the gap is known to be closed, none where open"},
    {"*GASKET", "there are no gaskets: solids or springs stand for them"},
    {"*GEOMETRIC", NO_OPTIMIZATION},
    {"*GEOSTATIC", "steps begin without stresses: *STATIC with the weight gives those of the ground"},
    {"*GLOBALDAMPING", "damping has no part in statics and natural frequencies: leave the card out"},
    {"*GREEN", NO_TIME},
    {"*HCF", "there is no assessment of fatigue: it takes the stresses of the results"},
    {"*HEATCAP", NO_HEAT},
    {"*HEATTRANSFER", NO_HEAT},
    {"*HOURGLASSSTIFFNESS", "the card may be left out: no element is integrated by one point"},
    {"*HYPERELASTIC", NO_RUBBER},
    {"*HYPERFOAM", NO_RUBBER},
    {"*HYPOELASTIC", NO_RUBBER},
    {"*HYSTERESIS", NO_CREEP},
    {"*IMPEDANCE", "there are no acoustic elements"},
    {"*IMPERFECTION", "there are no imperfections: move the nodes in *NODE and use PDELTA"},
    {"*IMPORT", "nothing is imported: *INCLUDE brings in text"},
    {"*INCIDENTWAVE", NO_TIME},
    {"*INELASTICHEAT", NO_HEAT},
    {"*INERTIARELIEF", "hold the structure statically determinate by *BOUNDARY and give the accelerations by GRAV"},
    {"*INITIALSTRAININCREASE", "initial strains are given as temperatures, of trusses by PRETENSION"},
    {"*INTERFACE", TIE_INSTEAD},
    {"*ITS", NO_CONNECTORS},
    {"*JOINTEDMATERIAL", NO_OTHER_YIELDING},
    {"*JOINT", NO_CONNECTORS},
    {"*JOULE", NO_HEAT},
    {"*M1", "sections of beams are elastic: give I11 by *BEAM GENERAL SECTION"},
    {"*M2", "sections of beams are elastic: give I22 by *BEAM GENERAL SECTION"},
    {"*MAGNETIC", "there are no electric and magnetic fields"},
    {"*MAPSOLUTION", "no step goes on from another mesh: give the loads that lead to the state"},
    {"*MASSADJUST", "give the mass by *DENSITY and *MASS elements"},
    {"*MASSDIFFUSION", NO_HEAT},
    {"*MASSFLOW", NO_FLOW},
    {"*MATRIX", "matrices are neither read nor made: use elements"},
    {"*MODALDAMPING", "damping has no part in natural frequencies: leave the card out"},
    {"*MODALDYNAMIC", NO_TIME},
    {"*MODELCHANGE", "elements neither come nor go: give a deck for each state"},
    {"*MOHRCOULOMB", NO_OTHER_YIELDING},
    {"*MOISTURESWELLING", "give the swelling by *EXPANSION and *TEMPERATURE"},
    {"*MOTION", "prescribe displacements by *BOUNDARY"},
    {"*NETWORKMPC", NO_FLOW},
    {"*NMAP", "give the nodes in global coordinates, or by *NODE, SYSTEM=C"},
    {"*NOANALYSIS", "finites-solve --check reads and checks a deck without solving it"},
    {"*NOCOMPRESSION", "materials carry tension and compression: a cable (*CABLE SECTION) is slack in compression"},
    {"*NODALTHICKNESS", "thicknesses are given by element: sets with a *SHELL SECTION each"},
    {"*NONSTRUCTURALMASS", "add the mass to the *DENSITY of the section, or give it by *MASS elements"},
    {"*NORMAL", "normals are those of the elements: leave the card out"},
    {"*NOTENSION", "materials carry tension and compression alike: leave out what is in tension and solve again"},
    {"*OBJECTIVE", NO_OPTIMIZATION},
    {"*PARAMETER", "no expressions are worked out: write the numbers"},
    {"*PERMEABILITY", NO_FLOW},
    {"*PIEZOELECTRIC", "there are no electric and magnetic fields"},
    {"*PIPE-SOIL", "put springs (SPRING1 with *SPRING) under the nodes"},
    {"*PLASTICAXIAL", "give the plastic axial force by *PLASTIC HINGE"},
    {"*PLASTICM", "give the plastic moments by *PLASTIC HINGE"},
    {"*PLASTICTORQUE", "no hinge takes a torque: give axial force and moments by *PLASTIC HINGE"},
    {"*POREFLUID", NO_FLOW},
    {"*POROUS", NO_OTHER_YIELDING},
    {"*POTENTIAL", NO_OTHER_YIELDING},
    {"*PRE-TENSIONSECTION", "a truss with PRETENSION stands for a bolt; a change of temperature shortens solids"},
    {"*PRESSUREPENETRATION", NO_FLOW},
    {"*PRESSURESTRESS", "give the pressure by *DLOAD"},
    {"*PRESTRESSHOLD", "give trusses a PRETENSION, which their ends then share out"},
    {"*PSDDEFINITION", NO_TIME},
    {"*RADIATE", NO_HEAT},
    {"*SRADIATE", NO_HEAT},
    {"*SFILM", NO_HEAT},
    {"*RANDOMFIELD", NO_OPTIMIZATION},
    {"*RANDOMRESPONSE", NO_TIME},
    {"*RATEDEPENDENT", NO_CREEP},
    {"*REBAR", "give reinforcement as trusses (T3D2) or membranes on the nodes of the shell"},
    {"*REFINEMESH", "finites-solve refines nothing by itself: let the mesher do it"},
    {"*RESPONSESPECTRUM", NO_TIME},
    {"*RESULTS", "the results are written in one fixed form: leave the card out"},
    {"*RETAINEDNODALDOFS", "there are no substructures: put the whole model into one deck"},
    {"*RIGIDSURFACE", TIE_INSTEAD},
    {"*ROBUSTDESIGN", NO_OPTIMIZATION},
    {"*SECTIONORIGIN", "give the places of *CENTROID and *SHEAR CENTER from the nodes"},
    {"*SELECTCYCLICSYMMETRYMODES", "model the whole structure, or a sector with *BOUNDARY on planes of symmetry"},
    {"*SELECTEIGENMODES", "all modes that are found are given: leave the card out"},
    {"*SENSITIVITY", NO_OPTIMIZATION},
    {"*SHEARFAILURE", "nothing is damaged or fails: compare the stresses with their limits"},
    {"*SHEARRETENTION", "concrete does not crack here: give the modulus of the cracked section by *ELASTIC"},
    {"*SHELLGENERALSECTION", "give a thickness, or layers, by *SHELL SECTION"},
    {"*SHELLTOSOLIDCOUPLING", "write *TIE, or *COUPLING with *KINEMATIC for each node of the edge of the shell"},
    {"*SLIDELINE", TIE_INSTEAD},
    {"*SOILS", NO_FLOW},
    {"*SOLUTIONTECHNIQUE", "the card may be left out: equations are solved directly"},
    {"*SPECIFICGASCONSTANT", NO_FLOW},
    {"*SPECTRUM", NO_TIME},
    {"*STEADYSTATEDYNAMICS", NO_TIME},
    {"*STEADYSTATETRANSPORT", NO_TIME},
    {"*STRAINENERGY", NO_OPTIMIZATION},
    {"*SUBCYCLING", NO_TIME},
    {"*SUBMODEL", "prescribe the displacements of the larger model by *BOUNDARY"},
    {"*SUBSTRUCTURE", "there are no substructures: put the whole model into one deck"},
    {"*SURFACEFLAW", "no cracks are followed: the results give displacements and stresses at their tips"},
    {"*SURFACEPROPERTY", TIE_INSTEAD},
    {"*SURFACESECTION", "elements of surfaces have no stiffness: give their mass by *MASS elements"},
    {"*SWELLING", "give the swelling by *EXPANSION and *TEMPERATURE"},
    {"*SYMMETRICMODELGENERATION", "the mesh is read as it stands: let the mesher make it"},
    {"*SYSTEM", "give the nodes in global coordinates, in a *PART with a rotated *INSTANCE, or by *NODE, SYSTEM=C"},
    {"*TENSILEFAILURE", "nothing is damaged or fails: compare the stresses with their limits"},
    {"*TENSIONSTIFFENING", "concrete does not crack here: give the modulus of the cracked section by *ELASTIC"},
    {"*TORQUE", "sections of beams are elastic: give J by *BEAM GENERAL SECTION"},
    {"*TRANSVERSESHEAR", "it stands right below a beam section"},
    {"*UEL", "nothing of the user's is compiled in: use the elements and materials of this solver"},
    {"*UMAT", "there is no user material: use *ELASTIC"},
    {"*UNCOUPLEDTEMPERATUREDISPLACEMENT", NO_HEAT},
    {"*UNIAXIALTESTDATA", NO_RUBBER},
    {"*USER", "nothing of the user's is compiled in: use the elements and materials of this solver"},
    {"*VALUESATINFINITY", OWN_UNITS},
    {"*VARIABLEMASSSCALING", "the card may be left out: there is no response in time"},
    {"*VIEWFACTOR", NO_HEAT},
    {"*VISCOELASTIC", NO_CREEP},
    {"*VISCOUS", NO_CREEP},
    {"*VISCO", NO_CREEP},
    {"*VOLUMETRICTESTDATA", NO_RUBBER},
    {"*WAVE", "there are no waves and currents: give their forces by *DLOAD"},
    {"*WIND", "give the pressure of the wind by *DLOAD"},
};

constexpr parameter_hint REFUSED_PARAMETERS[] = {
    {"*CLOAD", "FOLLOWER", "loads keep their direction; displacements are small"},
    {"*DLOAD", "FOLLOWER", "loads keep their direction; displacements are small"},
    {"*CLOAD", "USER", "nothing of the user's is compiled in: give the values on data lines"},
    {"*DLOAD", "USER", "nothing of the user's is compiled in: give the values on data lines"},
    {"*BOUNDARY", "USER", "nothing of the user's is compiled in: give the values on data lines"},
    {"*TEMPERATURE", "USER", "nothing of the user's is compiled in: give the values on data lines"},
    {"*TEMPERATURE", "FILE", "no result file is read: give the temperatures of the nodes on data lines"},
    {"*BOUNDARY", "FIXED", "no step goes on from another: give the values that hold"},
    {"*BOUNDARY", "SUBMODEL", "prescribe the displacements of the larger model as values"},
    {"*BOUNDARY", "BASENAME", "nothing moves in time: give the conditions in the head of the deck"},
    {"*STATIC", "RIKS", "*PUSHOVER and *ELASTOPLASTIC follow frames and shells to their limit load, *BUCKLE gives the "
                        "critical load"},
    {"*STATIC", "FULLYPLASTIC", "*ELASTOPLASTIC follows shells to their limit load"},
    {"*FREQUENCY", "RESIDUALMODES", "the modes are those of the structure alone"},
    {"*FREQUENCY", "COMPLEX", "damping and rotation are not counted"},
    {"*SHELL SECTION", "DENSITY", "give the mass by the *DENSITY of the material"},
    {"*SHELL SECTION", "NODALTHICKNESS", "give sets with a *SHELL SECTION each"},
    {"*SHELL SECTION", "SHELLTHICKNESS", "give sets with a *SHELL SECTION each"},
    {"*NODE", "INPUT", "only *INCLUDE stands for a file here"},
};

constexpr char OUT_OF_PLANE[] =
    "plane strain is not supported: CPS3 or CPS4 with E / (1 - nu^2), nu / (1 - nu) and the expansion alpha (1 + nu) "
    "have the same answer in the plane";
constexpr char ROUND[] = "axisymmetric elements are not supported: model a sector, by S4 (shells) or C3D8 with "
                         "symmetry on its planes";
constexpr char HEAT[] = "no heat is computed: use elements of solids or shells and give temperatures by *TEMPERATURE";

constexpr hint REFUSED_TYPES[] = {
    {"CPE", OUT_OF_PLANE},
    {"CGPE", OUT_OF_PLANE},
    {"CAX", ROUND},
    {"CGAX", ROUND},
    {"SAX", ROUND},
    {"MAX", ROUND},
    {"DCOUP", "DCOUP3D is read, and *COUPLING with *DISTRIBUTING"},
    {"DC", HEAT},
    {"DS", HEAT},
    {"DASHPOT", "damping has no part in statics and natural frequencies: leave dashpots out"},
    {"GAP", "gaps do not close: put a spring or a truss where the gap is known to be closed, none where open"},
    {"COH", "there are no cohesive elements: springs or links join parts that may part"},
    {"AC", "there are no acoustic elements"},
    {"CONN2D2", "use CONN3D2 with *LINK SECTION"},
    {"T2D3", "use T2D2"},
    {"T3D3", "use T3D2"},
    {"B22", "use B21"},
    {"B23", "use B21, or B33 with the freedoms out of the plane held"},
    {"B21H", "use B21"},
    {"B34", "use B33"},
    {"B32OS", "no beam counts warping: use B31 or B32 with the torsion constant of the section"},
    {"B31OS", "no beam counts warping: use B31 with the torsion constant of the section"},
    {"PIPE", "use B31 with *BEAM SECTION, SECTION=PIPE"},
    {"ELBOW", "use B31 with *BEAM SECTION, SECTION=PIPE; the ovalisation of a bend is not counted"},
    {"FRAME3D", "use B33 with *BEAM GENERAL SECTION, and *PLASTIC HINGE where it yields"},
    {"FRAME2D", "use B33 with *BEAM GENERAL SECTION, and *PLASTIC HINGE where it yields"},
    {"RB", "use *RIGID BODY"},
    {"R3D", "use *RIGID BODY"},
    {"SC", "continuum shells are not supported: use S3 or S4 in the mid surface"},
    {"STRI65", "use S6 or S3"},
    {"S9R5", "use S8R or S4"},
    {"C3D5", "divide it into tetrahedra (C3D4)"},
    {"U", "nothing of the user's is compiled in"},
};
// clang-format on

template <std::size_t N>
const char* find_hint(const hint (&list)[N], const std::string& name) {
  const hint* const found =
      std::find_if(std::begin(list), std::end(list), [&](const hint& each) { return name.rfind(each.name, 0) == 0; });
  return found == std::end(list) ? nullptr : found->text;
}

}  // namespace

std::string refusal_of(const std::string& keyword) {
  const char* const text = find_hint(REFUSED_KEYWORDS, keyword);
  if (text == nullptr) return "this solver does not know the keyword";
  return std::string("this solver does not have the keyword: ") + text;
}

const char* hint_for_parameter(const std::string& keyword, const std::string& parameter) {
  for (const parameter_hint& each : REFUSED_PARAMETERS) {
    std::string name = each.keyword;
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    if (keyword == name && parameter == each.parameter) return each.text;
  }
  return nullptr;
}

const char* hint_for_type(const std::string& type) { return find_hint(REFUSED_TYPES, type); }

}  // namespace solver::deck
