! finites.f90: finites_library, the Fortran module over the library: interfaces of the plain calls (elements.h), of the
! checks and builders of the protocol (checks.h, builders.h) and of the exported routines (finites.h), types of their
! structs and records, names of all codes.
!
! Written by script/fortran_module.py from the headers; changes belong there. The headers describe every call, and what
! they say holds here with these differences:
!
!   - a struct finites_x is the type finites_x_t. All its fields start at 0; finites_x_init fills the rest
!   - extents are turned round: double xyz[4][3] is xyz(3, 4). Matrices are plain Fortran arrays, K(24, 24)
!   - what may be null is optional; a state is a type(c_ptr)
!   - batches count elements from 0 as in C: begin 0 and end n are all n of them, and failed is 0 for the first. An
!     array of a batch is a target: xyz%first = c_loc(x), or finites_reals_t(c_loc(u), 12) as an argument
!
! The module is not called finites: Fortran takes the name of a routine, FINITES, and that of a module for one.
!
! Fortran 2018 (optional arguments of procedures that bind to C); gfortran 9 and later have it. Compile this file with
! your program, or link the target finites::fortran of the CMake package.
module finites_library
  use, intrinsic :: iso_c_binding
  implicit none
  public

  ! -------------------------------------------------------------------------------- codes of elements.h

  integer(c_int32_t), parameter :: FINITES_OK = 0
  integer(c_int32_t), parameter :: FINITES_NULL = 1
  integer(c_int32_t), parameter :: FINITES_NAN = 2
  integer(c_int32_t), parameter :: FINITES_RANGE = 3
  integer(c_int32_t), parameter :: FINITES_NODES = 4
  integer(c_int32_t), parameter :: FINITES_BAD_CODE = 5
  integer(c_int32_t), parameter :: FINITES_COINCIDENT = 6
  integer(c_int32_t), parameter :: FINITES_DEGENERATE = 7
  integer(c_int32_t), parameter :: FINITES_ORIENTATION = 8
  integer(c_int32_t), parameter :: FINITES_THICKNESS = 9
  integer(c_int32_t), parameter :: FINITES_MODULUS = 10
  integer(c_int32_t), parameter :: FINITES_POISSON = 11
  integer(c_int32_t), parameter :: FINITES_FACTOR = 12
  integer(c_int32_t), parameter :: FINITES_DENSITY = 13
  integer(c_int32_t), parameter :: FINITES_SECTION = 14
  integer(c_int32_t), parameter :: FINITES_FIXITY = 15
  integer(c_int32_t), parameter :: FINITES_RELEASE = 16
  integer(c_int32_t), parameter :: FINITES_LENGTH = 17
  integer(c_int32_t), parameter :: FINITES_STIFFNESS = 18
  integer(c_int32_t), parameter :: FINITES_SLACK = 19
  integer(c_int32_t), parameter :: FINITES_NO_CONVERGENCE = 20
  integer(c_int32_t), parameter :: FINITES_YIELD = 21
  integer(c_int32_t), parameter :: FINITES_HARDENING = 22
  integer(c_int32_t), parameter :: FINITES_LAYERS = 23
  integer(c_int32_t), parameter :: FINITES_RETURN = 24
  integer(c_int32_t), parameter :: FINITES_MECHANISM = 25
  integer(c_int32_t), parameter :: FINITES_MEMORY = 26
  integer(c_int32_t), parameter :: FINITES_STATE = 27
  integer(c_int32_t), parameter :: FINITES_RESULT = 28
  integer(c_int32_t), parameter :: FINITES_THICK = 0
  integer(c_int32_t), parameter :: FINITES_THIN = 1
  integer(c_int32_t), parameter :: FINITES_MEMBRANE = 2
  integer(c_int32_t), parameter :: FINITES_MEMBRANE_REDUCED = 98
  integer(c_int32_t), parameter :: FINITES_WHOLE_SECTION = 1
  integer(c_int32_t), parameter :: FINITES_LAYERED = 2
  integer(c_int32_t), parameter :: FINITES_SIDE_ELASTIC = 0
  integer(c_int32_t), parameter :: FINITES_SIDE_POSITIVE = 1
  integer(c_int32_t), parameter :: FINITES_SIDE_NEGATIVE = 2
  integer(c_int32_t), parameter :: FINITES_SIDE_CORNER = 3
  integer(c_int32_t), parameter :: FINITES_SINGLE = 1
  integer(c_int32_t), parameter :: FINITES_ORBISON = 2
  integer(c_int32_t), parameter :: FINITES_SEGMENTS = 3

  ! -------------------------------------------------------------------------------- codes of checks.h

  integer(c_int32_t), parameter :: FINITES_SEVERITY_NOTE = 1
  integer(c_int32_t), parameter :: FINITES_SEVERITY_WARNING = 2
  integer(c_int32_t), parameter :: FINITES_SEVERITY_ERROR = 3
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_MODEL_DATA = 101
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_BLOCK = 102
  integer(c_int32_t), parameter :: FINITES_FOUND_BLOCK_OUTSIDE = 103
  integer(c_int32_t), parameter :: FINITES_FOUND_NOT_FINITE = 104
  integer(c_int32_t), parameter :: FINITES_FOUND_EXCHANGE_AREA = 105
  integer(c_int32_t), parameter :: FINITES_FOUND_ENTRY_TABLE = 106
  integer(c_int32_t), parameter :: FINITES_FOUND_SWITCH = 107
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_RECORDS = 201
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_RECORD = 202
  integer(c_int32_t), parameter :: FINITES_FOUND_RECORD_FLAG = 203
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_KIND = 204
  integer(c_int32_t), parameter :: FINITES_FOUND_NODE_COUNT = 301
  integer(c_int32_t), parameter :: FINITES_FOUND_NODE_COUNTS_DIFFER = 302
  integer(c_int32_t), parameter :: FINITES_FOUND_COINCIDENT_NODES = 303
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_AREA = 304
  integer(c_int32_t), parameter :: FINITES_FOUND_FOLDED = 305
  integer(c_int32_t), parameter :: FINITES_FOUND_WARPED = 306
  integer(c_int32_t), parameter :: FINITES_FOUND_LENGTH = 307
  integer(c_int32_t), parameter :: FINITES_FOUND_LENGTHS_DIFFER = 308
  integer(c_int32_t), parameter :: FINITES_FOUND_FORMULATION = 401
  integer(c_int32_t), parameter :: FINITES_FOUND_MODIFIER = 402
  integer(c_int32_t), parameter :: FINITES_FOUND_MASS_FACTOR = 403
  integer(c_int32_t), parameter :: FINITES_FOUND_THICKNESS = 404
  integer(c_int32_t), parameter :: FINITES_FOUND_YOUNG = 405
  integer(c_int32_t), parameter :: FINITES_FOUND_POISSON = 406
  integer(c_int32_t), parameter :: FINITES_FOUND_SHEAR_MODULUS = 407
  integer(c_int32_t), parameter :: FINITES_FOUND_ANGLE = 408
  integer(c_int32_t), parameter :: FINITES_FOUND_OFFSETS = 409
  integer(c_int32_t), parameter :: FINITES_FOUND_SECTION_TYPE = 410
  integer(c_int32_t), parameter :: FINITES_FOUND_COMPOSITE = 411
  integer(c_int32_t), parameter :: FINITES_FOUND_ORTHOTROPY = 412
  integer(c_int32_t), parameter :: FINITES_FOUND_STIFF_LIST = 413
  integer(c_int32_t), parameter :: FINITES_FOUND_UNITS = 414
  integer(c_int32_t), parameter :: FINITES_FOUND_STIFF_FACTOR = 415
  integer(c_int32_t), parameter :: FINITES_FOUND_SOLID_POSITION = 416
  integer(c_int32_t), parameter :: FINITES_FOUND_NOT_YIELDING = 501
  integer(c_int32_t), parameter :: FINITES_FOUND_YIELD_STRESS = 502
  integer(c_int32_t), parameter :: FINITES_FOUND_HARDENING = 503
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_PLATE_STATE = 504
  integer(c_int32_t), parameter :: FINITES_FOUND_STATE_FIELDS = 505
  integer(c_int32_t), parameter :: FINITES_FOUND_NPT_THICK = 506
  integer(c_int32_t), parameter :: FINITES_FOUND_STATE_NOT_STARTED = 507
  integer(c_int32_t), parameter :: FINITES_FOUND_SPECTRAL = 508
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_STORED_FORCES = 509
  integer(c_int32_t), parameter :: FINITES_FOUND_FIXITY = 601
  integer(c_int32_t), parameter :: FINITES_FOUND_FACTOR = 602
  integer(c_int32_t), parameter :: FINITES_FOUND_SECTION = 603
  integer(c_int32_t), parameter :: FINITES_FOUND_MODULUS = 604
  integer(c_int32_t), parameter :: FINITES_FOUND_SHEAR_AREA = 605
  integer(c_int32_t), parameter :: FINITES_FOUND_RELEASE = 606
  integer(c_int32_t), parameter :: FINITES_FOUND_REMOVAL = 607
  integer(c_int32_t), parameter :: FINITES_FOUND_REDUCTION = 608
  integer(c_int32_t), parameter :: FINITES_FOUND_SEMI_RIGID = 609
  integer(c_int32_t), parameter :: FINITES_FOUND_PRETENSION = 610
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_AXIAL_FORCE = 611
  integer(c_int32_t), parameter :: FINITES_FOUND_UNSTRESSED_LENGTH = 612
  integer(c_int32_t), parameter :: FINITES_FOUND_LOAD_FACTOR = 613
  integer(c_int32_t), parameter :: FINITES_FOUND_SLACK = 614
  integer(c_int32_t), parameter :: FINITES_FOUND_PROPERTY_ADDRESS = 615
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_STIFFNESS = 616
  integer(c_int32_t), parameter :: FINITES_FOUND_NONLINEAR_SPRING = 617
  integer(c_int32_t), parameter :: FINITES_FOUND_RIGID_STIFFNESS = 618
  integer(c_int32_t), parameter :: FINITES_FOUND_WEIGHT = 619
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_HINGE = 701
  integer(c_int32_t), parameter :: FINITES_FOUND_HINGE_CURVE = 702
  integer(c_int32_t), parameter :: FINITES_FOUND_HINGE_CAPACITY = 703
  integer(c_int32_t), parameter :: FINITES_FOUND_HINGE_STATE = 704
  integer(c_int32_t), parameter :: FINITES_FOUND_HINGE_FORCES = 705
  integer(c_int32_t), parameter :: FINITES_FOUND_NO_NONLINEAR_LIBRARY = 706
  integer(c_int32_t), parameter :: FINITES_FINDING_LENGTH = 320
  integer(c_int32_t), parameter :: FINITES_ELEMENT_NONE = 0
  integer(c_int32_t), parameter :: FINITES_ELEMENT_PLATE = 1
  integer(c_int32_t), parameter :: FINITES_ELEMENT_BEAM = 2
  integer(c_int32_t), parameter :: FINITES_ELEMENT_TRUSS = 3
  integer(c_int32_t), parameter :: FINITES_ELEMENT_CABLE = 4
  integer(c_int32_t), parameter :: FINITES_ELEMENT_LINK = 5
  integer(c_int32_t), parameter :: FINITES_ELEMENT_SPRING = 6
  integer(c_int32_t), parameter :: FINITES_ELEMENT_SOLID = 7

  ! -------------------------------------------------------------------------------- codes of builders.h

  integer(c_int32_t), parameter :: FINITES_SECTION_STATE_REALS = 424

  ! -------------------------------------------------------------------------------- codes of fields.h

  integer(c_int32_t), parameter :: NONLIN_MATERIAL = 13
  integer(c_int32_t), parameter :: STEP_COUNTER = 14
  integer(c_int32_t), parameter :: ANALYSIS_STATE = 15
  integer(c_int32_t), parameter :: RES_BASE = 29
  integer(c_int32_t), parameter :: SECOND_ORDER = 41
  integer(c_int32_t), parameter :: SHEAR_DEFORMATION = 42
  integer(c_int32_t), parameter :: EQUATION_TABLE = 79
  integer(c_int32_t), parameter :: ENTRY_START = 100
  integer(c_int32_t), parameter :: ENTRY_STRIDE = 102
  integer(c_int32_t), parameter :: LOAD_CASES = 151
  integer(c_int32_t), parameter :: JOINT_RESULTS = 215
  integer(c_int32_t), parameter :: GEOMETRIC_ADDED = 1
  integer(c_int32_t), parameter :: GEOMETRIC_APART = 3
  integer(c_int32_t), parameter :: EXCHANGE_DISPLACEMENTS = 0
  integer(c_int32_t), parameter :: EXCHANGE_FORCES = 24
  integer(c_int32_t), parameter :: EXCHANGE_NODES = 48
  integer(c_int32_t), parameter :: EXCHANGE_POINTS = 408
  integer(c_int32_t), parameter :: EXCHANGE_LENGTH = 768
  integer(c_int32_t), parameter :: ELEM_ID = 1
  integer(c_int32_t), parameter :: MASS_FACTOR = 24
  integer(c_int32_t), parameter :: BLOCK_NODE_COUNT = 35
  integer(c_int32_t), parameter :: FORMULATION = 39
  integer(c_int32_t), parameter :: OFFSET_SWITCH = 41
  integer(c_int32_t), parameter :: COMMON_OFFSET = 42
  integer(c_int32_t), parameter :: MODIFIER_MEMBRANE = 57
  integer(c_int32_t), parameter :: MODIFIER_BENDING = 58
  integer(c_int32_t), parameter :: MODIFIER_SHEAR = 59
  integer(c_int32_t), parameter :: ORTHO_ANGLE_IN = 61
  integer(c_int32_t), parameter :: PLASTIC_SWITCH = 62
  integer(c_int32_t), parameter :: FORMULATION_THICK = 0
  integer(c_int32_t), parameter :: FORMULATION_THIN = 1
  integer(c_int32_t), parameter :: FORMULATION_MEMBRANE = 2
  integer(c_int32_t), parameter :: FORMULATION_MEMBRANE_PLASTIC = 3
  integer(c_int32_t), parameter :: FORMULATION_MEMBRANE_REDUCED = 98
  integer(c_int32_t), parameter :: FORMULATION_MEMBRANE_OTHER = 99
  integer(c_int32_t), parameter :: FIXITY_Y1 = 7
  integer(c_int32_t), parameter :: FIXITY_Z1 = 8
  integer(c_int32_t), parameter :: FIXITY_Y2 = 9
  integer(c_int32_t), parameter :: FIXITY_Z2 = 10
  integer(c_int32_t), parameter :: MEMBER_SECTION = 12
  integer(c_int32_t), parameter :: MEMBER_MATERIAL = 13
  integer(c_int32_t), parameter :: MEMBER_NODE_1 = 14
  integer(c_int32_t), parameter :: MEMBER_NODE_2 = 15
  integer(c_int32_t), parameter :: MEMBER_WEIGHT = 18
  integer(c_int32_t), parameter :: PROPERTY_ADDRESS = 31
  integer(c_int32_t), parameter :: FACTOR_AREA = 42
  integer(c_int32_t), parameter :: FACTOR_I1 = 43
  integer(c_int32_t), parameter :: FACTOR_I2 = 44
  integer(c_int32_t), parameter :: FACTOR_J = 45
  integer(c_int32_t), parameter :: RELEASE_AXIAL = 54
  integer(c_int32_t), parameter :: RELEASE_Y = 55
  integer(c_int32_t), parameter :: RELEASE_Z = 56
  integer(c_int32_t), parameter :: RELEASE_TORSION = 57
  integer(c_int32_t), parameter :: FACTOR_TORSION = 67
  integer(c_int32_t), parameter :: UNSTRESSED_LENGTH = 70
  integer(c_int32_t), parameter :: PRETENSION_STRESS = 71
  integer(c_int32_t), parameter :: REMOVE_MIN = 82
  integer(c_int32_t), parameter :: REDUCTION_INDEX = 83
  integer(c_int32_t), parameter :: MODE_STEP = 0
  integer(c_int32_t), parameter :: MODE_LOCAL = 1
  integer(c_int32_t), parameter :: MODE_ELASTIC = 2
  integer(c_int32_t), parameter :: SOLID_CODE = 4600
  integer(c_int32_t), parameter :: SECTION_NUMBER = 27
  integer(c_int32_t), parameter :: SECTION_TYPE = 28
  integer(c_int32_t), parameter :: SECTION_THICKNESS = 30
  integer(c_int32_t), parameter :: HOMOGENEOUS_SECTION = 1
  integer(c_int32_t), parameter :: COMPOSITE_SECTION = 6
  integer(c_int32_t), parameter :: FRAME_SECTION_TYPE = 2
  integer(c_int32_t), parameter :: SECTION_AREA = 3
  integer(c_int32_t), parameter :: SECTION_SHEAR_AREA_Z = 4
  integer(c_int32_t), parameter :: SECTION_SHEAR_AREA_Y = 5
  integer(c_int32_t), parameter :: SECTION_I1 = 6
  integer(c_int32_t), parameter :: SECTION_I2 = 7
  integer(c_int32_t), parameter :: SECTION_J = 8
  integer(c_int32_t), parameter :: YIELDING_TRUSS_SECTION = 10
  integer(c_int32_t), parameter :: PRETENSIONED_SECTION = 14
  integer(c_int32_t), parameter :: MATERIAL_NUMBER = 0
  integer(c_int32_t), parameter :: MATERIAL_YIELD_STRESS = 1
  integer(c_int32_t), parameter :: MATERIAL_YOUNG = 3
  integer(c_int32_t), parameter :: MATERIAL_POISSON = 4
  integer(c_int32_t), parameter :: MATERIAL_UNIT_WEIGHT = 5
  integer(c_int32_t), parameter :: MATERIAL_EXPANSION = 6
  integer(c_int32_t), parameter :: MATERIAL_SHEAR_MODULUS = 7
  integer(c_int32_t), parameter :: MEMBER_E1 = 3
  integer(c_int32_t), parameter :: MEMBER_G = 7
  integer(c_int32_t), parameter :: MEMBER_E2 = 8
  integer(c_int32_t), parameter :: MEMBER_MATERIAL_KIND = 9
  integer(c_int32_t), parameter :: COLD_FORMED_MATERIAL = 1
  real(c_double), parameter :: GRAVITY = 9810.0_c_double
  integer(c_int32_t), parameter :: NODE_X = 5
  integer(c_int32_t), parameter :: NODE_JOINT = 15
  integer(c_int32_t), parameter :: NODE_LOCAL_AXES = 28
  integer(c_int32_t), parameter :: OP_STIFFNESS = 1
  integer(c_int32_t), parameter :: OP_MASS = 2
  integer(c_int32_t), parameter :: OP_FORCES = 3
  integer(c_int32_t), parameter :: OP_FORCES_COMMIT = 33
  integer(c_int32_t), parameter :: OP_LOADS = 4
  integer(c_int32_t), parameter :: OP_BODY_LOAD = 41
  integer(c_int32_t), parameter :: OP_TEMPERATURE_LOAD = 401
  integer(c_int32_t), parameter :: OP_RESULTS = 5
  integer(c_int32_t), parameter :: OP_FRAME = 6
  integer(c_int32_t), parameter :: OP_GEOMETRIC = 7
  integer(c_int32_t), parameter :: OP_GEOMETRIC_STORED = 71
  integer(c_int32_t), parameter :: OP_GEOMETRY = 8
  integer(c_int32_t), parameter :: OP_POINT_LOCATION = 9
  integer(c_int32_t), parameter :: OP_POINT_LOAD = 10
  integer(c_int32_t), parameter :: KIND_TRI_THIN = 10
  integer(c_int32_t), parameter :: KIND_TRI_THICK = 11
  integer(c_int32_t), parameter :: KIND_TRI_MEMBRANE = 12
  integer(c_int32_t), parameter :: KIND_QUAD_THIN = 20
  integer(c_int32_t), parameter :: KIND_QUAD_THICK = 21
  integer(c_int32_t), parameter :: KIND_QUAD_MEMBRANE = 22
  integer(c_int32_t), parameter :: BEHAV_ISOTROPIC = 0
  integer(c_int32_t), parameter :: BEHAV_GENERAL = 1
  integer(c_int32_t), parameter :: BEHAV_SECTION_PLASTIC = 2
  integer(c_int32_t), parameter :: BEHAV_LAYERED_PLASTIC = 3
  integer(c_int32_t), parameter :: PART_MEMBRANE = 1
  integer(c_int32_t), parameter :: PART_BENDING = 2
  integer(c_int32_t), parameter :: PART_SHEAR = 4
  integer(c_int32_t), parameter :: PART_SECTION_PLASTIC = 8
  integer(c_int32_t), parameter :: RULE_FULL = 1
  integer(c_int32_t), parameter :: RULE_ELEMENT = 2
  integer(c_int32_t), parameter :: RULE_CENTRE = 2
  integer(c_int32_t), parameter :: RULE_NODES = 3
  integer(c_int32_t), parameter :: MATERIAL_ELASTIC = 0
  integer(c_int32_t), parameter :: MATERIAL_YIELDING = 1
  integer(c_int32_t), parameter :: MATERIAL_YIELDING_OTHER = 3
  integer(c_int32_t), parameter :: PLATE_MODEL_NONE = 0
  integer(c_int32_t), parameter :: PLATE_MODEL_SECTION = 1
  integer(c_int32_t), parameter :: PLATE_MODEL_LAYERED = 2
  integer(c_int32_t), parameter :: STIFF_FACTOR_1 = 1
  integer(c_int32_t), parameter :: STIFF_FACTOR_2 = 2
  integer(c_int32_t), parameter :: LOAD_ROW_X = 7
  integer(c_int32_t), parameter :: LOAD_ROW_STRAIN = 13
  integer(c_int32_t), parameter :: MESSAGE_LENGTH = 500
  integer(c_int32_t), parameter :: REMOVE_STEP_WHOLE = 0
  integer(c_int32_t), parameter :: HINGE_MODEL_ON = 1
  integer(c_int32_t), parameter :: SINGLE_FORCES = 1
  integer(c_int32_t), parameter :: ORBISON = 2
  integer(c_int32_t), parameter :: LINEAR_SEGMENTS = 3
  integer(c_int32_t), parameter :: ONLY_P = 1
  integer(c_int32_t), parameter :: ONLY_MY = 2
  integer(c_int32_t), parameter :: ONLY_MZ = 3
  integer(c_int32_t), parameter :: P_AND_MY = 4
  integer(c_int32_t), parameter :: P_AND_MZ = 5
  integer(c_int32_t), parameter :: MY_AND_MZ = 6
  integer(c_int32_t), parameter :: ALL_FORCES = 7
  integer(c_int32_t), parameter :: NO_HINGE = 0
  integer(c_int32_t), parameter :: YIELDING = 1
  integer(c_int32_t), parameter :: NO_PART = 2
  integer(c_int32_t), parameter :: CURRENT_STATE = 1
  integer(c_int32_t), parameter :: SECOND_STATE = 2
  integer(c_int32_t), parameter :: SPRING_KIND_X = 2
  integer(c_int32_t), parameter :: SPRING_KIND_Y = 13
  integer(c_int32_t), parameter :: SPRING_KIND_Z = 24
  integer(c_int32_t), parameter :: SPRING_KIND_RX = 11
  integer(c_int32_t), parameter :: SPRING_KIND_RY = 22
  integer(c_int32_t), parameter :: SPRING_KIND_RZ = 33
  integer(c_int32_t), parameter :: SPRING_STIFFNESS_X = 4
  integer(c_int32_t), parameter :: SPRING_STIFFNESS_Y = 15
  integer(c_int32_t), parameter :: SPRING_STIFFNESS_Z = 26
  integer(c_int32_t), parameter :: SPRING_STIFFNESS_RX = 12
  integer(c_int32_t), parameter :: SPRING_STIFFNESS_RY = 23
  integer(c_int32_t), parameter :: SPRING_STIFFNESS_RZ = 34
  integer(c_int32_t), parameter :: SPRING_WORDS = 35
  integer(c_int32_t), parameter :: LINK_KIND = 1
  integer(c_int32_t), parameter :: LINK_COUNT = 2
  integer(c_int32_t), parameter :: LINK_FORM = 5
  integer(c_int32_t), parameter :: LINK_SHIFT = 5
  integer(c_int32_t), parameter :: LINK_WORDS = 40
  integer(c_int32_t), parameter :: FLOORED_LINK = 9
  integer(c_int32_t), parameter :: COMPONENT_FREE = 0
  integer(c_int32_t), parameter :: COMPONENT_NONLINEAR = 8
  integer(c_int32_t), parameter :: COMPONENT_RIGID = 9
  integer(c_int32_t), parameter :: RES_LENGTH = 90
  integer(c_int32_t), parameter :: RES_POINTS = 4
  integer(c_int32_t), parameter :: RES_VALUES = 360
  integer(c_int32_t), parameter :: COL_X = 1
  integer(c_int32_t), parameter :: COL_Y = 2
  integer(c_int32_t), parameter :: COL_Z = 3
  integer(c_int32_t), parameter :: COL_STRAIN_TOP = 4
  integer(c_int32_t), parameter :: COL_STRESS_TOP = 7
  integer(c_int32_t), parameter :: COL_PRINCIPAL_TOP = 10
  integer(c_int32_t), parameter :: COL_STRAIN_MID = 15
  integer(c_int32_t), parameter :: COL_STRESS_MID = 18
  integer(c_int32_t), parameter :: COL_PRINCIPAL_MID = 21
  integer(c_int32_t), parameter :: COL_STRAIN_BOTTOM = 26
  integer(c_int32_t), parameter :: COL_STRESS_BOTTOM = 29
  integer(c_int32_t), parameter :: COL_PRINCIPAL_BOTTOM = 32
  integer(c_int32_t), parameter :: COL_FORCES = 37
  integer(c_int32_t), parameter :: COL_MOMENTS = 40
  integer(c_int32_t), parameter :: COL_SHEAR_STRAIN = 43
  integer(c_int32_t), parameter :: COL_SHEAR_FORCE = 45
  integer(c_int32_t), parameter :: COL_SHEAR_STRESS = 47
  integer(c_int32_t), parameter :: COL_SPARE = 49
  integer(c_int32_t), parameter :: COL_PLASTIC_TOP = 51
  integer(c_int32_t), parameter :: COL_PLASTIC_MID = 54
  integer(c_int32_t), parameter :: COL_PLASTIC_BOTTOM = 57
  integer(c_int32_t), parameter :: COL_PLASTIC_SHEAR = 60
  integer(c_int32_t), parameter :: COL_LAST = 62
  integer(c_int32_t), parameter :: RES100_LENGTH = 100
  integer(c_int32_t), parameter :: RES100_EQUIVALENT_TOP = 7
  integer(c_int32_t), parameter :: RES100_EQUIVALENT_MID = 8
  integer(c_int32_t), parameter :: RES100_EQUIVALENT_BOTTOM = 9
  integer(c_int32_t), parameter :: RES100_STRESS_TOP = 24
  integer(c_int32_t), parameter :: RES100_STRESS_MID = 27
  integer(c_int32_t), parameter :: RES100_STRESS_BOTTOM = 30
  integer(c_int32_t), parameter :: RES100_SPARE = 33
  integer(c_int32_t), parameter :: RES100_PRINCIPAL_TOP = 34
  integer(c_int32_t), parameter :: RES100_PRINCIPAL_MID = 38
  integer(c_int32_t), parameter :: RES100_PRINCIPAL_BOTTOM = 42
  integer(c_int32_t), parameter :: RES100_SHEAR_STRESS = 46
  integer(c_int32_t), parameter :: RES50_LENGTH = 50
  integer(c_int32_t), parameter :: WORD_STRAIN = 4
  integer(c_int32_t), parameter :: WORD_STRESS = 10
  integer(c_int32_t), parameter :: WORD_MISES = 22
  integer(c_int32_t), parameter :: WORD_PRINCIPAL = 23
  integer(c_int32_t), parameter :: WORD_FORCE = 36
  integer(c_int32_t), parameter :: WORDS_OF_POINT = 35
  integer(c_int32_t), parameter :: WORDS_WRITTEN = 40

  ! -------------------------------------------------------------------------------- structs of the plain calls

  type, bind(c) :: finites_plate_t
    integer(c_int32_t) :: nodes = 0
    integer(c_int32_t) :: theory = 0
    integer(c_int32_t) :: orthotropic = 0
    integer(c_int32_t) :: unused = 0
    real(c_double) :: xyz(3, 4) = 0
    real(c_double) :: offset(3, 4) = 0
    real(c_double) :: thickness = 0
    real(c_double) :: E = 0
    real(c_double) :: nu = 0
    real(c_double) :: density = 0
    real(c_double) :: expansion = 0
    real(c_double) :: E2 = 0
    real(c_double) :: nu21 = 0
    real(c_double) :: G12 = 0
    real(c_double) :: G13 = 0
    real(c_double) :: G23 = 0
    real(c_double) :: expansion2 = 0
    real(c_double) :: angle = 0
    real(c_double) :: twist_factor = 0
    real(c_double) :: inplane_shear_factor = 0
    real(c_double) :: membrane_factor = 0
    real(c_double) :: bending_factor = 0
    real(c_double) :: shear_factor = 0
    real(c_double) :: mass_factor = 0
  end type finites_plate_t

  type, bind(c) :: finites_plate_measures_t
    real(c_double) :: area = 0
    real(c_double) :: volume = 0
    real(c_double) :: mass = 0
    real(c_double) :: center(3) = 0
    real(c_double) :: axes(3, 3) = 0
  end type finites_plate_measures_t

  type, bind(c) :: finites_location_t
    integer(c_int32_t) :: inside = 0
    integer(c_int32_t) :: above = 0
    real(c_double) :: distance = 0
  end type finites_location_t

  type, bind(c) :: finites_surface_t
    real(c_double) :: strain(3) = 0
    real(c_double) :: stress(3) = 0
    real(c_double) :: angle = 0
    real(c_double) :: s1 = 0
    real(c_double) :: s2 = 0
    real(c_double) :: max_shear = 0
    real(c_double) :: von_mises = 0
    real(c_double) :: plastic_strain(3) = 0
  end type finites_surface_t

  type, bind(c) :: finites_plate_point_t
    real(c_double) :: xyz(3) = 0
    type(finites_surface_t) :: top
    type(finites_surface_t) :: middle
    type(finites_surface_t) :: bottom
    real(c_double) :: force(3) = 0
    real(c_double) :: moment(3) = 0
    real(c_double) :: shear_strain(2) = 0
    real(c_double) :: shear_force(2) = 0
    real(c_double) :: shear_stress(2) = 0
    real(c_double) :: plastic_shear_strain(2) = 0
  end type finites_plate_point_t

  type, bind(c) :: finites_plate_results_t
    integer(c_int32_t) :: nodes = 0
    integer(c_int32_t) :: points = 0
    type(finites_plate_point_t) :: node(4)
    type(finites_plate_point_t) :: point(4)
  end type finites_plate_results_t

  type, bind(c) :: finites_plastic_t
    integer(c_int32_t) :: model = 0
    integer(c_int32_t) :: layers = 0
    real(c_double) :: yield_stress = 0
    real(c_double) :: hardening = 0
  end type finites_plastic_t

  type, bind(c) :: finites_section_t
    real(c_double) :: thickness = 0
    real(c_double) :: yield_stress = 0
    real(c_double) :: plastic_modulus = 0
  end type finites_section_t

  type, bind(c) :: finites_section_corner_t
    real(c_double) :: flow(8) = 0
    real(c_double) :: equivalent = 0
    real(c_double) :: mixed = 0
    real(c_double) :: tangent(64) = 0
  end type finites_section_corner_t

  type, bind(c) :: finites_beam_t
    real(c_double) :: xyz(3, 2) = 0
    real(c_double) :: up(3) = 0
    real(c_double) :: offset(3, 2) = 0
    real(c_double) :: E = 0
    real(c_double) :: G = 0
    real(c_double) :: E2 = 0
    real(c_double) :: density = 0
    real(c_double) :: expansion = 0
    real(c_double) :: area = 0
    real(c_double) :: Iz = 0
    real(c_double) :: Iy = 0
    real(c_double) :: J = 0
    real(c_double) :: shear_area_y = 0
    real(c_double) :: shear_area_z = 0
    real(c_double) :: fixity_z(2) = 0
    real(c_double) :: fixity_y(2) = 0
    integer(c_int32_t) :: release_axial = 0
    integer(c_int32_t) :: release_y = 0
    integer(c_int32_t) :: release_z = 0
    integer(c_int32_t) :: release_torsion = 0
  end type finites_beam_t

  type, bind(c) :: finites_beam_point_load_t
    real(c_double) :: x = 0
    real(c_double) :: force(3) = 0
    real(c_double) :: moment(3) = 0
  end type finites_beam_point_load_t

  type, bind(c) :: finites_beam_load_t
    real(c_double) :: line(3) = 0
    real(c_double) :: line_local(3) = 0
    real(c_double) :: temperature = 0
    real(c_double) :: gradient_y = 0
    real(c_double) :: gradient_z = 0
    integer(c_int32_t) :: point_count = 0
    integer(c_int32_t) :: unused = 0
    type(c_ptr) :: points = c_null_ptr
  end type finites_beam_load_t

  type, bind(c) :: finites_beam_section_t
    real(c_double) :: x = 0
    real(c_double) :: force(3) = 0
    real(c_double) :: moment(3) = 0
    real(c_double) :: displacement(3) = 0
    real(c_double) :: rotation(3) = 0
  end type finites_beam_section_t

  type, bind(c) :: finites_member_measures_t
    real(c_double) :: length = 0
    real(c_double) :: volume = 0
    real(c_double) :: mass = 0
    real(c_double) :: center(3) = 0
    real(c_double) :: axes(3, 3) = 0
  end type finites_member_measures_t

  type, bind(c) :: finites_yield_t
    integer(c_int32_t) :: curve = 0
    integer(c_int32_t) :: forces = 0
    real(c_double) :: capacity(3) = 0
  end type finites_yield_t

  type, bind(c) :: finites_hinge_t
    integer(c_int32_t) :: yields = 0
    integer(c_int32_t) :: unused = 0
    real(c_double) :: force(3) = 0
    real(c_double) :: value = 0
    real(c_double) :: plastic(3) = 0
  end type finites_hinge_t

  type, bind(c) :: finites_truss_t
    real(c_double) :: xyz(3, 2) = 0
    real(c_double) :: E = 0
    real(c_double) :: area = 0
    real(c_double) :: density = 0
    real(c_double) :: expansion = 0
    real(c_double) :: pretension = 0
  end type finites_truss_t

  type, bind(c) :: finites_cable_t
    real(c_double) :: xyz(3, 2) = 0
    real(c_double) :: E = 0
    real(c_double) :: area = 0
    real(c_double) :: length = 0
    real(c_double) :: strain = 0
    real(c_double) :: load(3) = 0
  end type finites_cable_t

  type, bind(c) :: finites_link_t
    real(c_double) :: xyz(3, 2) = 0
    real(c_double) :: up(3) = 0
    real(c_double) :: k(6) = 0
    integer(c_int32_t) :: at_ends = 0
    integer(c_int32_t) :: unused = 0
  end type finites_link_t

  type, bind(c) :: finites_spring_t
    real(c_double) :: k(6) = 0
    real(c_double) :: axes(3, 3) = 0
  end type finites_spring_t

  type, bind(c) :: finites_solid_t
    integer(c_int32_t) :: nodes = 0
    integer(c_int32_t) :: unused = 0
    real(c_double) :: xyz(3, 8) = 0
    real(c_double) :: E = 0
    real(c_double) :: nu = 0
    real(c_double) :: density = 0
    real(c_double) :: expansion = 0
    real(c_double) :: stiffness_factor = 0
  end type finites_solid_t

  type, bind(c) :: finites_solid_measures_t
    real(c_double) :: volume = 0
    real(c_double) :: mass = 0
    real(c_double) :: center(3) = 0
    real(c_double) :: axes(3, 3) = 0
  end type finites_solid_measures_t

  type, bind(c) :: finites_solid_point_t
    real(c_double) :: xyz(3) = 0
    real(c_double) :: strain(6) = 0
    real(c_double) :: stress(6) = 0
    real(c_double) :: principal(3) = 0
    real(c_double) :: von_mises = 0
  end type finites_solid_point_t

  type, bind(c) :: finites_solid_results_t
    integer(c_int32_t) :: nodes = 0
    integer(c_int32_t) :: points = 0
    type(finites_solid_point_t) :: node(8)
    type(finites_solid_point_t) :: point(8)
  end type finites_solid_results_t

  type, bind(c) :: finites_reals_t
    type(c_ptr) :: first = c_null_ptr
    integer(c_int64_t) :: stride = 0
  end type finites_reals_t

  type, bind(c) :: finites_plates_t
    type(finites_plate_t) :: common
    integer(c_int64_t) :: count = 0
    type(finites_reals_t) :: xyz
    type(finites_reals_t) :: offset
    type(finites_reals_t) :: thickness
    type(finites_reals_t) :: E
    type(finites_reals_t) :: nu
    type(finites_reals_t) :: density
    type(finites_reals_t) :: angle
  end type finites_plates_t

  type, bind(c) :: finites_beams_t
    type(finites_beam_t) :: common
    integer(c_int64_t) :: count = 0
    type(finites_reals_t) :: xyz
    type(finites_reals_t) :: up
    type(finites_reals_t) :: offset
    type(finites_reals_t) :: E
    type(finites_reals_t) :: G
    type(finites_reals_t) :: density
    type(finites_reals_t) :: area
    type(finites_reals_t) :: Iz
    type(finites_reals_t) :: Iy
    type(finites_reals_t) :: J
  end type finites_beams_t

  type, bind(c) :: finites_trusses_t
    type(finites_truss_t) :: common
    integer(c_int64_t) :: count = 0
    type(finites_reals_t) :: xyz
    type(finites_reals_t) :: E
    type(finites_reals_t) :: area
    type(finites_reals_t) :: density
    type(finites_reals_t) :: pretension
  end type finites_trusses_t

  type, bind(c) :: finites_solids_t
    type(finites_solid_t) :: common
    integer(c_int64_t) :: count = 0
    type(finites_reals_t) :: xyz
    type(finites_reals_t) :: E
    type(finites_reals_t) :: nu
    type(finites_reals_t) :: density
  end type finites_solids_t

  type, bind(c) :: finites_finding_t
    integer(c_int32_t) :: severity = 0
    integer(c_int32_t) :: code = 0
    integer(c_int32_t) :: element = 0
    integer(c_int32_t) :: number = 0
    character(kind=c_char) :: text(320) = c_null_char
  end type finites_finding_t


  ! -------------------------------------------------------------------------------- records of records.h

  type, bind(c) :: array_dimension
    integer(c_int64_t) :: EXTENT = 0
    integer(c_int64_t) :: STRIDE = 0
    integer(c_int64_t) :: LOWER = 0
  end type array_dimension

  type, bind(c) :: array_reference_1
    type(c_ptr) :: base = c_null_ptr
    integer(c_int64_t) :: element_length = 0
    integer(c_int32_t) :: allocated_flag = 0
    type(array_dimension) :: dimension(1)
  end type array_reference_1

  type, bind(c) :: array_reference_2
    type(c_ptr) :: base = c_null_ptr
    integer(c_int64_t) :: element_length = 0
    integer(c_int32_t) :: allocated_flag = 0
    type(array_dimension) :: dimension(2)
  end type array_reference_2

  type, bind(c) :: array_reference_3
    type(c_ptr) :: base = c_null_ptr
    integer(c_int64_t) :: element_length = 0
    integer(c_int32_t) :: allocated_flag = 0
    type(array_dimension) :: dimension(3)
  end type array_reference_3

  type, bind(c) :: member_record
    type(array_reference_2) :: MEMBER_LOADS
    real(c_double) :: AXIAL_FORCE = 0
    real(c_double) :: K11_COPY = 0
    real(c_double) :: PRESTRESS_FORCE = 0
    real(c_double) :: TAU_B = 0
    integer(c_int32_t) :: NL_SPRING_IDX(3) = 0
    integer(c_int32_t) :: REMOVE_STEP = 0
    integer(c_int32_t) :: REMOVE_STEP_SPR(3) = 0
    real(c_double) :: LENGTH = 0
  end type member_record

  type, bind(c) :: member_forces_record
    real(c_double) :: F_END(12) = 0
    real(c_double) :: F_END_STEP(12) = 0
    real(c_double) :: F_END_ITER(12) = 0
  end type member_forces_record

  type, bind(c) :: spring_nl_record
    real(c_double) :: K_CURRENT = 0
    real(c_double) :: K_INITIAL = 0
  end type spring_nl_record

  type, bind(c) :: hinge_record
    integer(c_int32_t) :: HINGE_MODEL = 0
    integer(c_int32_t) :: CURVE_KIND = 0
    integer(c_int32_t) :: FORCE_SET = 0
    real(c_double) :: CAP_P = 0
    real(c_double) :: CAP_MY = 0
    real(c_double) :: CAP_MZ = 0
    integer(c_int32_t) :: AXIAL_RELEASE = 0
    integer(c_int32_t) :: END1_STATE = 0
    integer(c_int32_t) :: END1_SEG(4) = 0
    integer(c_int32_t) :: END2_STATE = 0
    integer(c_int32_t) :: END2_SEG(4) = 0
    real(c_double) :: K_ELASTIC(12, 12) = 0
  end type hinge_record

  type, bind(c) :: alt_forces_record
    real(c_double) :: F_END(12) = 0
    real(c_double) :: F_END_STEP(12) = 0
  end type alt_forces_record

  type, bind(c) :: alt_state_record
    real(c_double) :: LOAD_STEP = 0
    type(array_reference_1) :: MEMBER_FORCES
  end type alt_state_record

  type, bind(c) :: solid_record
    integer(c_int32_t) :: ELEM_NO = 0
    integer(c_int32_t) :: MAT_OFF = 0
    integer(c_int32_t) :: NNODE = 0
    integer(c_int32_t) :: NODE_OFF(9) = 0
    real(c_float) :: STIFF_FACTOR = 0
    real(c_double) :: U_ELEM(3, 27) = 0
    real(c_double) :: F_ELEM(3, 27) = 0
    real(c_double) :: RES50_NODE(50, 27) = 0
    real(c_double) :: RES50_GAUSS(50, 27) = 0
  end type solid_record

  type, bind(c) :: solid_nl_record
    real(c_double) :: GAUSS_STRESS(6, 27) = 0
    real(c_double) :: U_NL(3, 27) = 0
  end type solid_nl_record

  type, bind(c) :: plate_record
    integer(c_int32_t) :: SECTION_PTR = 0
    integer(c_int32_t) :: MATERIAL_PTR = 0
    integer(c_int32_t) :: NODE_COUNT = 0
    integer(c_int32_t) :: NODE_PTR(4) = 0
    real(c_float) :: AREA = 0
    real(c_float) :: WEIGHT = 0
    real(c_float) :: FACTORED_WEIGHT = 0
    real(c_double) :: NODE_OFFSETS(4, 3) = 0
  end type plate_record

  type, bind(c) :: point_state_record
    type(array_reference_2) :: SIG
    type(array_reference_2) :: EP_START
    type(array_reference_2) :: EP_CUR
    type(array_reference_2) :: EP_INC
    type(array_reference_1) :: EPBAR_START
    type(array_reference_1) :: EPBAR_CUR
    type(array_reference_3) :: TANGENT
  end type point_state_record

  type, bind(c) :: plate_state_record
    real(c_double) :: STORED_NODAL_FORCES(6, 4) = 0
    real(c_double) :: STORED_DISPLACEMENTS(6, 4) = 0
    type(array_reference_2) :: SEC_EP_START
    type(array_reference_2) :: SEC_EP_CUR
    type(array_reference_1) :: SEC_EPBAR_START
    type(array_reference_1) :: SEC_EPBAR_CUR
    type(array_reference_2) :: SEC_EP_INC
    type(array_reference_3) :: SEC_TANGENT
    type(array_reference_1) :: SEC_CURV_INC
    type(array_reference_1) :: SEC_AUX
    type(array_reference_1) :: SEC_SIGN_CUR
    type(array_reference_1) :: SEC_SIGN_START
    type(array_reference_1) :: POINT_STATE
  end type plate_state_record

  type, bind(c) :: solanaelem_record
    integer(c_int32_t) :: NPT_THICK = 0
    type(array_reference_1) :: ELEM_POS
    type(array_reference_1) :: PLATE_OF_ELEM
    type(array_reference_1) :: SOLID_POS
    type(array_reference_1) :: MEMBER_REC
    type(array_reference_1) :: MEMBER_FORCES
    type(array_reference_1) :: SPRING_NL_REC
    type(array_reference_1) :: HINGE_REC
    type(array_reference_1) :: PLATE_RECORDS
    type(array_reference_1) :: PLATE_STATE
    type(array_reference_1) :: SOLID_REC
    type(array_reference_1) :: SOLID_NL_REC
    integer(c_int32_t) :: EP_INC_FROM_CUR = 0
    real(c_double) :: LOAD_STEP = 0
    type(array_reference_1) :: ALT_STATE
  end type solanaelem_record

  type, bind(c) :: plateelem_record
    integer(c_int32_t) :: ELEM_INDEX = 0
    integer(c_int32_t) :: ELEM_KIND = 0
    integer(c_int32_t) :: MAT_BEHAV = 0
    integer(c_int32_t) :: ACTIVE_PARTS = 0
    real(c_double) :: THICKNESS = 0
    real(c_double) :: YIELD_STRESS = 0
    real(c_double) :: E1 = 0
    real(c_double) :: E2 = 0
    real(c_double) :: TANGENT_MOD = 0
    real(c_double) :: NU1 = 0
    real(c_double) :: NU2 = 0
    real(c_double) :: G12 = 0
    real(c_double) :: G13 = 0
    real(c_double) :: G23 = 0
    real(c_double) :: ALPHA1 = 0
    real(c_double) :: ALPHA2 = 0
    real(c_double) :: MOD_MEMBRANE(3) = 0
    real(c_double) :: MOD_BENDING(3) = 0
    real(c_double) :: MOD_SHEAR(2) = 0
    real(c_float) :: ORTHO_ANGLE = 0
    real(c_double) :: D_MEMBRANE_TOTAL(3, 3) = 0
    real(c_double) :: D_MEMBRANE_NORMAL(3, 3) = 0
    real(c_double) :: D_MEMBRANE_SHEAR(3, 3) = 0
    real(c_double) :: D_BENDING(3, 3) = 0
    real(c_double) :: D_SHEAR(2, 2) = 0
    real(c_double) :: AXES(3, 3) = 0
    real(c_double) :: THERMAL_M1 = 0
    real(c_double) :: THERMAL_M2 = 0
    real(c_double) :: THERMAL_B1 = 0
    real(c_double) :: THERMAL_B2 = 0
    real(c_double) :: LOCAL_XYZ(3, 3) = 0
    real(c_double) :: LOCAL_XYZ_QUAD(3, 4) = 0
    real(c_double) :: A_DELTA(48) = 0
    real(c_double) :: SIDE_C(4) = 0
    real(c_double) :: SIDE_S(4) = 0
    real(c_double) :: SIDE_DET(4) = 0
    real(c_double) :: SIDE_LPHI(4) = 0
    real(c_double) :: SIDE_PHI(4) = 0
    real(c_double) :: D8(8, 8) = 0
    real(c_double) :: P8(8, 8) = 0
    real(c_double) :: Q8(8, 8) = 0
    real(c_double) :: QINV8(8, 8) = 0
    real(c_double) :: LAM8(8, 8) = 0
    real(c_double) :: CLT_FACTOR_1 = 0
    real(c_double) :: CLT_FACTOR_2 = 0
  end type plateelem_record

  type, bind(c) :: solana_record
    integer(c_int32_t) :: STIFF_LIST_COUNT = 0
    type(array_reference_1) :: STIFF_LIST
    type(array_reference_2) :: STIFF_FACTORS
    real(c_double) :: LOAD_FACTOR = 0
    real(c_double) :: RIGID_K_TRANS = 0
    real(c_double) :: RIGID_K_ROT = 0
    real(c_double) :: MIN_K_ROT = 0
    type(array_reference_1) :: STIFF_REDUCTION
  end type solana_record

  type, bind(c) :: solparam_record
    integer(c_int32_t) :: HINGE_FORCE_MODE = 0
    integer(c_int32_t) :: LUMPED_MASS = 0
    real(c_float) :: REMOVE_RATIO = 0
    integer(c_int32_t) :: STIFF_REDUCTION_ON = 0
    integer(c_int32_t) :: OTHER_WORDS(93) = 0
  end type solparam_record

  type, bind(c) :: material_record
    integer(c_int32_t) :: mtype = 0
    real(c_float) :: E1 = 0
    real(c_float) :: E2 = 0
    real(c_float) :: HARDENING = 0
    real(c_float) :: G12 = 0
    real(c_float) :: G13 = 0
    real(c_float) :: G23 = 0
    real(c_float) :: NU1 = 0
    real(c_float) :: NU2 = 0
    real(c_float) :: ALPHA1 = 0
    real(c_float) :: ALPHA2 = 0
    integer(c_int32_t) :: ortho = 0
  end type material_record

  type, bind(c) :: clt_section_record
    real(c_float) :: E1 = 0
    real(c_float) :: E2 = 0
    real(c_float) :: NU1 = 0
    real(c_float) :: NU2 = 0
    real(c_float) :: G12 = 0
    real(c_float) :: G13 = 0
    real(c_float) :: G23 = 0
    real(c_float) :: ALPHA1 = 0
    real(c_float) :: ALPHA2 = 0
    real(c_float) :: UNIT_WEIGHT = 0
    real(c_float) :: CLT_FACTOR_1 = 0
    real(c_float) :: CLT_FACTOR_2 = 0
  end type clt_section_record

  type(solanaelem_record), bind(c, name="SOLANAELEM") :: SOLANAELEM
  type(plateelem_record), bind(c, name="PLATEELEM") :: PLATEELEM
  type(solana_record), bind(c, name="SOLANA") :: SOLANA

  ! -------------------------------------------------------------------------------- plain calls of elements.h

  interface

    function finites_text(status) result(answer) bind(c, name="finites_text")
      import
      integer(c_int32_t), value :: status
      type(c_ptr) :: answer
    end function finites_text

    function finites_version() result(answer) bind(c, name="finites_version")
      import
      type(c_ptr) :: answer
    end function finites_version

    subroutine finites_plate_init(plate) bind(c, name="finites_plate_init")
      import
      type(finites_plate_t), intent(inout) :: plate
    end subroutine finites_plate_init

    function finites_plate_stiffness(plate, K) result(answer) bind(c, name="finites_plate_stiffness")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(inout) :: K(*)
      integer(c_int32_t) :: answer
    end function finites_plate_stiffness

    function finites_plate_mass(plate, M) result(answer) bind(c, name="finites_plate_mass")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(inout) :: M(*)
      integer(c_int32_t) :: answer
    end function finites_plate_mass

    function finites_plate_geometric(plate, u, KG) result(answer) bind(c, name="finites_plate_geometric")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: KG(*)
      integer(c_int32_t) :: answer
    end function finites_plate_geometric

    function finites_plate_geometric_of_forces(plate, forces, KG) result(answer) bind(c, &
        name="finites_plate_geometric_of_forces")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(in) :: forces(6, 4)
      real(c_double), intent(inout) :: KG(*)
      integer(c_int32_t) :: answer
    end function finites_plate_geometric_of_forces

    function finites_plate_forces(plate, u, F) result(answer) bind(c, name="finites_plate_forces")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_plate_forces

    function finites_plate_surface_load(plate, global, local, F) result(answer) bind(c, &
        name="finites_plate_surface_load")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(in), optional :: global(3)
      real(c_double), intent(in), optional :: local(3)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_plate_surface_load

    function finites_plate_body_load(plate, load, F) result(answer) bind(c, name="finites_plate_body_load")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(in) :: load(3)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_plate_body_load

    function finites_plate_temperature_load(plate, change, difference, F) result(answer) bind(c, &
        name="finites_plate_temperature_load")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), value :: change
      real(c_double), value :: difference
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_plate_temperature_load

    function finites_plate_point_load(plate, point, global, local, F) result(answer) bind(c, &
        name="finites_plate_point_load")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(in) :: point(3)
      real(c_double), intent(in), optional :: global(3)
      real(c_double), intent(in), optional :: local(3)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_plate_point_load

    function finites_plate_measure(plate, measures) result(answer) bind(c, name="finites_plate_measure")
      import
      type(finites_plate_t), intent(in) :: plate
      type(finites_plate_measures_t), intent(inout) :: measures
      integer(c_int32_t) :: answer
    end function finites_plate_measure

    function finites_plate_locate(plate, point, location) result(answer) bind(c, name="finites_plate_locate")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(in) :: point(3)
      type(finites_location_t), intent(inout) :: location
      integer(c_int32_t) :: answer
    end function finites_plate_locate

    function finites_plate_result(plate, u, temperature, results) result(answer) bind(c, &
        name="finites_plate_result")
      import
      type(finites_plate_t), intent(in) :: plate
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(in), optional :: temperature(2)
      type(finites_plate_results_t), intent(inout) :: results
      integer(c_int32_t) :: answer
    end function finites_plate_result

    function finites_plate_state_create(plate, plastic, state) result(answer) bind(c, &
        name="finites_plate_state_create")
      import
      type(finites_plate_t), intent(in) :: plate
      type(finites_plastic_t), intent(in) :: plastic
      type(c_ptr), intent(inout) :: state
      integer(c_int32_t) :: answer
    end function finites_plate_state_create

    function finites_plate_state_copy(state, copy) result(answer) bind(c, name="finites_plate_state_copy")
      import
      type(c_ptr), value :: state
      type(c_ptr), intent(inout) :: copy
      integer(c_int32_t) :: answer
    end function finites_plate_state_copy

    subroutine finites_plate_state_free(state) bind(c, name="finites_plate_state_free")
      import
      type(c_ptr), value :: state
    end subroutine finites_plate_state_free

    function finites_plate_state_try(state, u, F, K) result(answer) bind(c, name="finites_plate_state_try")
      import
      type(c_ptr), value :: state
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout), optional :: F(*)
      real(c_double), intent(inout), optional :: K(*)
      integer(c_int32_t) :: answer
    end function finites_plate_state_try

    function finites_plate_state_commit(state, u) result(answer) bind(c, name="finites_plate_state_commit")
      import
      type(c_ptr), value :: state
      real(c_double), intent(in) :: u(*)
      integer(c_int32_t) :: answer
    end function finites_plate_state_commit

    function finites_plate_state_accept(state) result(answer) bind(c, name="finites_plate_state_accept")
      import
      type(c_ptr), value :: state
      integer(c_int32_t) :: answer
    end function finites_plate_state_accept

    function finites_plate_state_forces(state, F, K) result(answer) bind(c, name="finites_plate_state_forces")
      import
      type(c_ptr), value :: state
      real(c_double), intent(inout), optional :: F(*)
      real(c_double), intent(inout), optional :: K(*)
      integer(c_int32_t) :: answer
    end function finites_plate_state_forces

    function finites_plate_state_result(state, results) result(answer) bind(c, name="finites_plate_state_result")
      import
      type(c_ptr), value :: state
      type(finites_plate_results_t), intent(inout) :: results
      integer(c_int32_t) :: answer
    end function finites_plate_state_result

    function finites_section_value(section, force, equivalent, excess, mixed) result(answer) bind(c, &
        name="finites_section_value")
      import
      type(finites_section_t), intent(in) :: section
      real(c_double), intent(in) :: force(8)
      real(c_double), value :: equivalent
      real(c_double), intent(inout), optional :: excess
      real(c_double), intent(inout), optional :: mixed
      integer(c_int32_t) :: answer
    end function finites_section_value

    function finites_section_return(section, D, trial, equivalent, side, corner) result(answer) bind(c, &
        name="finites_section_return")
      import
      type(finites_section_t), intent(in) :: section
      real(c_double), intent(in) :: D(64)
      real(c_double), intent(in) :: trial(8)
      real(c_double), value :: equivalent
      integer(c_int32_t), intent(inout) :: side
      type(finites_section_corner_t), intent(inout), optional :: corner
      integer(c_int32_t) :: answer
    end function finites_section_return

    subroutine finites_beam_init(beam) bind(c, name="finites_beam_init")
      import
      type(finites_beam_t), intent(inout) :: beam
    end subroutine finites_beam_init

    function finites_beam_stiffness(beam, K) result(answer) bind(c, name="finites_beam_stiffness")
      import
      type(finites_beam_t), intent(in) :: beam
      real(c_double), intent(inout) :: K(*)
      integer(c_int32_t) :: answer
    end function finites_beam_stiffness

    function finites_beam_mass(beam, lumped, M) result(answer) bind(c, name="finites_beam_mass")
      import
      type(finites_beam_t), intent(in) :: beam
      integer(c_int32_t), value :: lumped
      real(c_double), intent(inout) :: M(*)
      integer(c_int32_t) :: answer
    end function finites_beam_mass

    function finites_beam_geometric(beam, u, KG) result(answer) bind(c, name="finites_beam_geometric")
      import
      type(finites_beam_t), intent(in) :: beam
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: KG(*)
      integer(c_int32_t) :: answer
    end function finites_beam_geometric

    function finites_beam_geometric_of_force(beam, axial, KG) result(answer) bind(c, &
        name="finites_beam_geometric_of_force")
      import
      type(finites_beam_t), intent(in) :: beam
      real(c_double), value :: axial
      real(c_double), intent(inout) :: KG(*)
      integer(c_int32_t) :: answer
    end function finites_beam_geometric_of_force

    function finites_beam_loads(beam, load, F) result(answer) bind(c, name="finites_beam_loads")
      import
      type(finites_beam_t), intent(in) :: beam
      type(finites_beam_load_t), intent(in) :: load
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_beam_loads

    function finites_beam_forces(beam, u, F) result(answer) bind(c, name="finites_beam_forces")
      import
      type(finites_beam_t), intent(in) :: beam
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_beam_forces

    function finites_beam_sections(beam, u, load, count, x, sections) result(answer) bind(c, &
        name="finites_beam_sections")
      import
      type(finites_beam_t), intent(in) :: beam
      real(c_double), intent(in) :: u(*)
      type(finites_beam_load_t), intent(in), optional :: load
      integer(c_int32_t), value :: count
      real(c_double), intent(in) :: x(*)
      type(finites_beam_section_t), intent(inout) :: sections(*)
      integer(c_int32_t) :: answer
    end function finites_beam_sections

    function finites_beam_measure(beam, measures) result(answer) bind(c, name="finites_beam_measure")
      import
      type(finites_beam_t), intent(in) :: beam
      type(finites_member_measures_t), intent(inout) :: measures
      integer(c_int32_t) :: answer
    end function finites_beam_measure

    function finites_yield_equations(yield, force, count, segment, value, gradient) result(answer) bind(c, &
        name="finites_yield_equations")
      import
      type(finites_yield_t), intent(in) :: yield
      real(c_double), intent(in) :: force(3)
      integer(c_int32_t), intent(inout) :: count
      integer(c_int32_t), intent(inout), optional :: segment(4)
      real(c_double), intent(inout), optional :: value(4)
      real(c_double), intent(inout), optional :: gradient(3, 4)
      integer(c_int32_t) :: answer
    end function finites_yield_equations

    function finites_yield_value(yield, force, value) result(answer) bind(c, name="finites_yield_value")
      import
      type(finites_yield_t), intent(in) :: yield
      real(c_double), intent(in) :: force(3)
      real(c_double), intent(inout) :: value
      integer(c_int32_t) :: answer
    end function finites_yield_value

    function finites_beam_state_create(beam, yield, ends, state) result(answer) bind(c, &
        name="finites_beam_state_create")
      import
      type(finites_beam_t), intent(in) :: beam
      type(finites_yield_t), intent(in) :: yield
      integer(c_int32_t), value :: ends
      type(c_ptr), intent(inout) :: state
      integer(c_int32_t) :: answer
    end function finites_beam_state_create

    function finites_beam_state_copy(state, copy) result(answer) bind(c, name="finites_beam_state_copy")
      import
      type(c_ptr), value :: state
      type(c_ptr), intent(inout) :: copy
      integer(c_int32_t) :: answer
    end function finites_beam_state_copy

    subroutine finites_beam_state_free(state) bind(c, name="finites_beam_state_free")
      import
      type(c_ptr), value :: state
    end subroutine finites_beam_state_free

    function finites_beam_state_try(state, u, F, K) result(answer) bind(c, name="finites_beam_state_try")
      import
      type(c_ptr), value :: state
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout), optional :: F(*)
      real(c_double), intent(inout), optional :: K(*)
      integer(c_int32_t) :: answer
    end function finites_beam_state_try

    function finites_beam_state_commit(state, u) result(answer) bind(c, name="finites_beam_state_commit")
      import
      type(c_ptr), value :: state
      real(c_double), intent(in) :: u(*)
      integer(c_int32_t) :: answer
    end function finites_beam_state_commit

    function finites_beam_state_accept(state) result(answer) bind(c, name="finites_beam_state_accept")
      import
      type(c_ptr), value :: state
      integer(c_int32_t) :: answer
    end function finites_beam_state_accept

    function finites_beam_state_forces(state, F, K) result(answer) bind(c, name="finites_beam_state_forces")
      import
      type(c_ptr), value :: state
      real(c_double), intent(inout), optional :: F(*)
      real(c_double), intent(inout), optional :: K(*)
      integer(c_int32_t) :: answer
    end function finites_beam_state_forces

    function finites_beam_state_hinges(state, hinge) result(answer) bind(c, name="finites_beam_state_hinges")
      import
      type(c_ptr), value :: state
      type(finites_hinge_t), intent(inout) :: hinge(2)
      integer(c_int32_t) :: answer
    end function finites_beam_state_hinges

    subroutine finites_truss_init(truss) bind(c, name="finites_truss_init")
      import
      type(finites_truss_t), intent(inout) :: truss
    end subroutine finites_truss_init

    function finites_truss_stiffness(truss, K) result(answer) bind(c, name="finites_truss_stiffness")
      import
      type(finites_truss_t), intent(in) :: truss
      real(c_double), intent(inout) :: K(*)
      integer(c_int32_t) :: answer
    end function finites_truss_stiffness

    function finites_truss_mass(truss, lumped, M) result(answer) bind(c, name="finites_truss_mass")
      import
      type(finites_truss_t), intent(in) :: truss
      integer(c_int32_t), value :: lumped
      real(c_double), intent(inout) :: M(*)
      integer(c_int32_t) :: answer
    end function finites_truss_mass

    function finites_truss_geometric(truss, u, KG) result(answer) bind(c, name="finites_truss_geometric")
      import
      type(finites_truss_t), intent(in) :: truss
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: KG(*)
      integer(c_int32_t) :: answer
    end function finites_truss_geometric

    function finites_truss_geometric_of_force(truss, axial, KG) result(answer) bind(c, &
        name="finites_truss_geometric_of_force")
      import
      type(finites_truss_t), intent(in) :: truss
      real(c_double), value :: axial
      real(c_double), intent(inout) :: KG(*)
      integer(c_int32_t) :: answer
    end function finites_truss_geometric_of_force

    function finites_truss_forces(truss, u, F) result(answer) bind(c, name="finites_truss_forces")
      import
      type(finites_truss_t), intent(in) :: truss
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_truss_forces

    function finites_truss_loads(truss, line, temperature, F) result(answer) bind(c, name="finites_truss_loads")
      import
      type(finites_truss_t), intent(in) :: truss
      real(c_double), intent(in), optional :: line(3)
      real(c_double), value :: temperature
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_truss_loads

    function finites_truss_axial_force(truss, u, temperature, axial) result(answer) bind(c, &
        name="finites_truss_axial_force")
      import
      type(finites_truss_t), intent(in) :: truss
      real(c_double), intent(in) :: u(*)
      real(c_double), value :: temperature
      real(c_double), intent(inout) :: axial
      integer(c_int32_t) :: answer
    end function finites_truss_axial_force

    function finites_truss_measure(truss, measures) result(answer) bind(c, name="finites_truss_measure")
      import
      type(finites_truss_t), intent(in) :: truss
      type(finites_member_measures_t), intent(inout) :: measures
      integer(c_int32_t) :: answer
    end function finites_truss_measure

    subroutine finites_cable_init(cable) bind(c, name="finites_cable_init")
      import
      type(finites_cable_t), intent(inout) :: cable
    end subroutine finites_cable_init

    function finites_cable_forces(cable, F, tension) result(answer) bind(c, name="finites_cable_forces")
      import
      type(finites_cable_t), intent(in) :: cable
      real(c_double), intent(inout) :: F(*)
      real(c_double), intent(inout), optional :: tension(2)
      integer(c_int32_t) :: answer
    end function finites_cable_forces

    function finites_cable_stiffness(cable, K) result(answer) bind(c, name="finites_cable_stiffness")
      import
      type(finites_cable_t), intent(in) :: cable
      real(c_double), intent(inout) :: K(*)
      integer(c_int32_t) :: answer
    end function finites_cable_stiffness

    function finites_cable_shape(cable, count, s, xyz, tension) result(answer) bind(c, name="finites_cable_shape")
      import
      type(finites_cable_t), intent(in) :: cable
      integer(c_int32_t), value :: count
      real(c_double), intent(in) :: s(*)
      real(c_double), intent(inout) :: xyz(3, *)
      real(c_double), intent(inout), optional :: tension(*)
      integer(c_int32_t) :: answer
    end function finites_cable_shape

    subroutine finites_link_init(link) bind(c, name="finites_link_init")
      import
      type(finites_link_t), intent(inout) :: link
    end subroutine finites_link_init

    subroutine finites_spring_init(spring) bind(c, name="finites_spring_init")
      import
      type(finites_spring_t), intent(inout) :: spring
    end subroutine finites_spring_init

    function finites_link_stiffness(link, K) result(answer) bind(c, name="finites_link_stiffness")
      import
      type(finites_link_t), intent(in) :: link
      real(c_double), intent(inout) :: K(*)
      integer(c_int32_t) :: answer
    end function finites_link_stiffness

    function finites_link_forces(link, u, F) result(answer) bind(c, name="finites_link_forces")
      import
      type(finites_link_t), intent(in) :: link
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_link_forces

    function finites_spring_stiffness(spring, K) result(answer) bind(c, name="finites_spring_stiffness")
      import
      type(finites_spring_t), intent(in) :: spring
      real(c_double), intent(inout) :: K(*)
      integer(c_int32_t) :: answer
    end function finites_spring_stiffness

    function finites_spring_forces(spring, u, F) result(answer) bind(c, name="finites_spring_forces")
      import
      type(finites_spring_t), intent(in) :: spring
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_spring_forces

    subroutine finites_solid_init(solid) bind(c, name="finites_solid_init")
      import
      type(finites_solid_t), intent(inout) :: solid
    end subroutine finites_solid_init

    function finites_solid_stiffness(solid, K) result(answer) bind(c, name="finites_solid_stiffness")
      import
      type(finites_solid_t), intent(in) :: solid
      real(c_double), intent(inout) :: K(*)
      integer(c_int32_t) :: answer
    end function finites_solid_stiffness

    function finites_solid_mass(solid, M) result(answer) bind(c, name="finites_solid_mass")
      import
      type(finites_solid_t), intent(in) :: solid
      real(c_double), intent(inout) :: M(*)
      integer(c_int32_t) :: answer
    end function finites_solid_mass

    function finites_solid_geometric(solid, u, KG) result(answer) bind(c, name="finites_solid_geometric")
      import
      type(finites_solid_t), intent(in) :: solid
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: KG(*)
      integer(c_int32_t) :: answer
    end function finites_solid_geometric

    function finites_solid_geometric_of_stresses(solid, stress, KG) result(answer) bind(c, &
        name="finites_solid_geometric_of_stresses")
      import
      type(finites_solid_t), intent(in) :: solid
      real(c_double), intent(in) :: stress(6, *)
      real(c_double), intent(inout) :: KG(*)
      integer(c_int32_t) :: answer
    end function finites_solid_geometric_of_stresses

    function finites_solid_forces(solid, u, F) result(answer) bind(c, name="finites_solid_forces")
      import
      type(finites_solid_t), intent(in) :: solid
      real(c_double), intent(in) :: u(*)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_solid_forces

    function finites_solid_body_load(solid, load, F) result(answer) bind(c, name="finites_solid_body_load")
      import
      type(finites_solid_t), intent(in) :: solid
      real(c_double), intent(in) :: load(3)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_solid_body_load

    function finites_solid_temperature_load(solid, change, F) result(answer) bind(c, &
        name="finites_solid_temperature_load")
      import
      type(finites_solid_t), intent(in) :: solid
      real(c_double), value :: change
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_solid_temperature_load

    function finites_solid_face_load(solid, face, traction, pressure, F) result(answer) bind(c, &
        name="finites_solid_face_load")
      import
      type(finites_solid_t), intent(in) :: solid
      integer(c_int32_t), value :: face
      real(c_double), intent(in), optional :: traction(3)
      real(c_double), value :: pressure
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t) :: answer
    end function finites_solid_face_load

    function finites_solid_measure(solid, measures) result(answer) bind(c, name="finites_solid_measure")
      import
      type(finites_solid_t), intent(in) :: solid
      type(finites_solid_measures_t), intent(inout) :: measures
      integer(c_int32_t) :: answer
    end function finites_solid_measure

    function finites_solid_result(solid, u, temperature, results) result(answer) bind(c, &
        name="finites_solid_result")
      import
      type(finites_solid_t), intent(in) :: solid
      real(c_double), intent(in) :: u(*)
      real(c_double), value :: temperature
      type(finites_solid_results_t), intent(inout) :: results
      integer(c_int32_t) :: answer
    end function finites_solid_result

    function finites_plates_stiffness(plates, begin, end, K, stride, failed) result(answer) bind(c, &
        name="finites_plates_stiffness")
      import
      type(finites_plates_t), intent(in) :: plates
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      real(c_double), intent(inout) :: K(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_plates_stiffness

    function finites_plates_mass(plates, begin, end, M, stride, failed) result(answer) bind(c, &
        name="finites_plates_mass")
      import
      type(finites_plates_t), intent(in) :: plates
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      real(c_double), intent(inout) :: M(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_plates_mass

    function finites_plates_geometric(plates, begin, end, u, KG, stride, failed) result(answer) bind(c, &
        name="finites_plates_geometric")
      import
      type(finites_plates_t), intent(in) :: plates
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: u
      real(c_double), intent(inout) :: KG(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_plates_geometric

    function finites_plates_forces(plates, begin, end, u, F, stride, failed) result(answer) bind(c, &
        name="finites_plates_forces")
      import
      type(finites_plates_t), intent(in) :: plates
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: u
      real(c_double), intent(inout) :: F(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_plates_forces

    function finites_plates_surface_load(plates, begin, end, global, local, F, stride, failed) result(answer) &
        bind(c, name="finites_plates_surface_load")
      import
      type(finites_plates_t), intent(in) :: plates
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: global
      type(finites_reals_t), value :: local
      real(c_double), intent(inout) :: F(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_plates_surface_load

    function finites_plates_body_load(plates, begin, end, load, F, stride, failed) result(answer) bind(c, &
        name="finites_plates_body_load")
      import
      type(finites_plates_t), intent(in) :: plates
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: load
      real(c_double), intent(inout) :: F(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_plates_body_load

    function finites_plates_temperature_load(plates, begin, end, temperature, F, stride, failed) result(answer) &
        bind(c, name="finites_plates_temperature_load")
      import
      type(finites_plates_t), intent(in) :: plates
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: temperature
      real(c_double), intent(inout) :: F(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_plates_temperature_load

    function finites_plates_measure(plates, begin, end, measures, failed) result(answer) bind(c, &
        name="finites_plates_measure")
      import
      type(finites_plates_t), intent(in) :: plates
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_plate_measures_t), intent(inout) :: measures(*)
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_plates_measure

    function finites_plates_result(plates, begin, end, u, temperature, results, failed) result(answer) bind(c, &
        name="finites_plates_result")
      import
      type(finites_plates_t), intent(in) :: plates
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: u
      type(finites_reals_t), value :: temperature
      type(finites_plate_results_t), intent(inout) :: results(*)
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_plates_result

    function finites_beams_stiffness(beams, begin, end, K, stride, failed) result(answer) bind(c, &
        name="finites_beams_stiffness")
      import
      type(finites_beams_t), intent(in) :: beams
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      real(c_double), intent(inout) :: K(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_beams_stiffness

    function finites_beams_mass(beams, begin, end, lumped, M, stride, failed) result(answer) bind(c, &
        name="finites_beams_mass")
      import
      type(finites_beams_t), intent(in) :: beams
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      integer(c_int32_t), value :: lumped
      real(c_double), intent(inout) :: M(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_beams_mass

    function finites_beams_geometric_of_force(beams, begin, end, axial, KG, stride, failed) result(answer) bind(c, &
        name="finites_beams_geometric_of_force")
      import
      type(finites_beams_t), intent(in) :: beams
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: axial
      real(c_double), intent(inout) :: KG(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_beams_geometric_of_force

    function finites_beams_geometric(beams, begin, end, u, KG, stride, failed) result(answer) bind(c, &
        name="finites_beams_geometric")
      import
      type(finites_beams_t), intent(in) :: beams
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: u
      real(c_double), intent(inout) :: KG(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_beams_geometric

    function finites_beams_forces(beams, begin, end, u, F, stride, failed) result(answer) bind(c, &
        name="finites_beams_forces")
      import
      type(finites_beams_t), intent(in) :: beams
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: u
      real(c_double), intent(inout) :: F(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_beams_forces

    function finites_trusses_stiffness(trusses, begin, end, K, stride, failed) result(answer) bind(c, &
        name="finites_trusses_stiffness")
      import
      type(finites_trusses_t), intent(in) :: trusses
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      real(c_double), intent(inout) :: K(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_trusses_stiffness

    function finites_trusses_mass(trusses, begin, end, lumped, M, stride, failed) result(answer) bind(c, &
        name="finites_trusses_mass")
      import
      type(finites_trusses_t), intent(in) :: trusses
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      integer(c_int32_t), value :: lumped
      real(c_double), intent(inout) :: M(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_trusses_mass

    function finites_trusses_geometric_of_force(trusses, begin, end, axial, KG, stride, failed) result(answer) &
        bind(c, name="finites_trusses_geometric_of_force")
      import
      type(finites_trusses_t), intent(in) :: trusses
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: axial
      real(c_double), intent(inout) :: KG(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_trusses_geometric_of_force

    function finites_trusses_forces(trusses, begin, end, u, F, stride, failed) result(answer) bind(c, &
        name="finites_trusses_forces")
      import
      type(finites_trusses_t), intent(in) :: trusses
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: u
      real(c_double), intent(inout) :: F(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_trusses_forces

    function finites_solids_stiffness(solids, begin, end, K, stride, failed) result(answer) bind(c, &
        name="finites_solids_stiffness")
      import
      type(finites_solids_t), intent(in) :: solids
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      real(c_double), intent(inout) :: K(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_solids_stiffness

    function finites_solids_mass(solids, begin, end, M, stride, failed) result(answer) bind(c, &
        name="finites_solids_mass")
      import
      type(finites_solids_t), intent(in) :: solids
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      real(c_double), intent(inout) :: M(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_solids_mass

    function finites_solids_geometric(solids, begin, end, u, KG, stride, failed) result(answer) bind(c, &
        name="finites_solids_geometric")
      import
      type(finites_solids_t), intent(in) :: solids
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: u
      real(c_double), intent(inout) :: KG(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_solids_geometric

    function finites_solids_forces(solids, begin, end, u, F, stride, failed) result(answer) bind(c, &
        name="finites_solids_forces")
      import
      type(finites_solids_t), intent(in) :: solids
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: u
      real(c_double), intent(inout) :: F(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_solids_forces

    function finites_solids_body_load(solids, begin, end, load, F, stride, failed) result(answer) bind(c, &
        name="finites_solids_body_load")
      import
      type(finites_solids_t), intent(in) :: solids
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: load
      real(c_double), intent(inout) :: F(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_solids_body_load

    function finites_solids_temperature_load(solids, begin, end, change, F, stride, failed) result(answer) bind(c, &
        name="finites_solids_temperature_load")
      import
      type(finites_solids_t), intent(in) :: solids
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: change
      real(c_double), intent(inout) :: F(*)
      integer(c_int64_t), value :: stride
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_solids_temperature_load

    function finites_solids_result(solids, begin, end, u, temperature, results, failed) result(answer) bind(c, &
        name="finites_solids_result")
      import
      type(finites_solids_t), intent(in) :: solids
      integer(c_int64_t), value :: begin
      integer(c_int64_t), value :: end
      type(finites_reals_t), value :: u
      real(c_double), value :: temperature
      type(finites_solid_results_t), intent(inout) :: results(*)
      integer(c_int64_t), intent(inout), optional :: failed
      integer(c_int32_t) :: answer
    end function finites_solids_result

    function finites_lanes() result(answer) bind(c, name="finites_lanes")
      import
      integer(c_int32_t) :: answer
    end function finites_lanes

  end interface

  ! -------------------------------------------------------------------------------- plain calls of checks.h

  interface

    function finites_check_plate(elem, k, A, n, findings, capacity) result(answer) bind(c, &
        name="finites_check_plate")
      import
      integer(c_int32_t), value :: elem
      integer(c_int32_t), value :: k
      real(c_double), intent(in) :: A(*)
      integer(c_int64_t), value :: n
      type(finites_finding_t), intent(inout), optional :: findings(*)
      integer(c_int32_t), value :: capacity
      integer(c_int32_t) :: answer
    end function finites_check_plate

    function finites_check_member(kind, elem, entry, A, n, findings, capacity) result(answer) bind(c, &
        name="finites_check_member")
      import
      integer(c_int32_t), value :: kind
      integer(c_int32_t), value :: elem
      integer(c_int32_t), value :: entry
      real(c_double), intent(in) :: A(*)
      integer(c_int64_t), value :: n
      type(finites_finding_t), intent(inout), optional :: findings(*)
      integer(c_int32_t), value :: capacity
      integer(c_int32_t) :: answer
    end function finites_check_member

    function finites_check_solid(elem, A, n, findings, capacity) result(answer) bind(c, name="finites_check_solid")
      import
      integer(c_int32_t), value :: elem
      real(c_double), intent(in) :: A(*)
      integer(c_int64_t), value :: n
      type(finites_finding_t), intent(inout), optional :: findings(*)
      integer(c_int32_t), value :: capacity
      integer(c_int32_t) :: answer
    end function finites_check_solid

    function finites_check_model(kinds, count, A, n, findings, capacity) result(answer) bind(c, &
        name="finites_check_model")
      import
      integer(c_int32_t), intent(in), optional :: kinds(*)
      integer(c_int32_t), value :: count
      real(c_double), intent(in) :: A(*)
      integer(c_int64_t), value :: n
      type(finites_finding_t), intent(inout), optional :: findings(*)
      integer(c_int32_t), value :: capacity
      integer(c_int32_t) :: answer
    end function finites_check_model

  end interface

  ! -------------------------------------------------------------------------------- plain calls of builders.h

  interface

    subroutine finites_fill_header(A, exchange, entry_start, entry_stride) bind(c, name="finites_fill_header")
      import
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), value :: exchange
      integer(c_int32_t), value :: entry_start
      integer(c_int32_t), value :: entry_stride
    end subroutine finites_fill_header

    subroutine finites_fill_node_block(A, ptr, x, y, z) bind(c, name="finites_fill_node_block")
      import
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), value :: ptr
      real(c_double), value :: x
      real(c_double), value :: y
      real(c_double), value :: z
    end subroutine finites_fill_node_block

    subroutine finites_fill_plate_block(A, k, number, nodes, formulation) bind(c, name="finites_fill_plate_block")
      import
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), value :: k
      integer(c_int32_t), value :: number
      integer(c_int32_t), value :: nodes
      integer(c_int32_t), value :: formulation
    end subroutine finites_fill_plate_block

    subroutine finites_fill_section_of_plate(A, sec, number, thickness) bind(c, &
        name="finites_fill_section_of_plate")
      import
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), value :: sec
      integer(c_int32_t), value :: number
      real(c_double), value :: thickness
    end subroutine finites_fill_section_of_plate

    subroutine finites_fill_material_of_plate(A, mat, number, E, nu, unit_weight) bind(c, &
        name="finites_fill_material_of_plate")
      import
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), value :: mat
      integer(c_int32_t), value :: number
      real(c_double), value :: E
      real(c_double), value :: nu
      real(c_double), value :: unit_weight
    end subroutine finites_fill_material_of_plate

    subroutine finites_fill_plate_record(record, sec, mat, nodes, node_ptr) bind(c, &
        name="finites_fill_plate_record")
      import
      type(plate_record), intent(inout) :: record
      integer(c_int32_t), value :: sec
      integer(c_int32_t), value :: mat
      integer(c_int32_t), value :: nodes
      integer(c_int32_t), intent(in) :: node_ptr(*)
    end subroutine finites_fill_plate_record

    subroutine finites_fill_section_state(state, memory) bind(c, name="finites_fill_section_state")
      import
      type(plate_state_record), intent(inout) :: state
      real(c_double), intent(inout) :: memory(*)
    end subroutine finites_fill_section_state

    subroutine finites_fill_layered_state(state, points, layers, memory) bind(c, name="finites_fill_layered_state")
      import
      type(plate_state_record), intent(inout) :: state
      type(point_state_record), intent(inout) :: points(4)
      integer(c_int32_t), value :: layers
      real(c_double), intent(inout) :: memory(*)
    end subroutine finites_fill_layered_state

    subroutine finites_accept_plate_state(state) bind(c, name="finites_accept_plate_state")
      import
      type(plate_state_record), intent(inout) :: state
    end subroutine finites_accept_plate_state

    subroutine finites_fill_member_block(A, entry, number, section, material, node_1, node_2) bind(c, &
        name="finites_fill_member_block")
      import
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), value :: entry
      integer(c_int32_t), value :: number
      integer(c_int32_t), value :: section
      integer(c_int32_t), value :: material
      integer(c_int32_t), value :: node_1
      integer(c_int32_t), value :: node_2
    end subroutine finites_fill_member_block

    subroutine finites_fill_section_of_member(A, section, area, Iz, Iy, J) bind(c, &
        name="finites_fill_section_of_member")
      import
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), value :: section
      real(c_double), value :: area
      real(c_double), value :: Iz
      real(c_double), value :: Iy
      real(c_double), value :: J
    end subroutine finites_fill_section_of_member

    subroutine finites_fill_material_of_member(A, material, E, nu, G) bind(c, &
        name="finites_fill_material_of_member")
      import
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), value :: material
      real(c_double), value :: E
      real(c_double), value :: nu
      real(c_double), value :: G
    end subroutine finites_fill_material_of_member

    subroutine finites_fill_member_record(record, length) bind(c, name="finites_fill_member_record")
      import
      type(member_record), intent(inout) :: record
      real(c_double), value :: length
    end subroutine finites_fill_member_record

    function finites_fill_rotation(T, first, second, up) result(answer) bind(c, name="finites_fill_rotation")
      import
      real(c_double), intent(inout) :: T(*)
      real(c_double), intent(in) :: first(3)
      real(c_double), intent(in) :: second(3)
      real(c_double), intent(in) :: up(3)
      real(c_double) :: answer
    end function finites_fill_rotation

    subroutine finites_fill_property_address(A, entry, property) bind(c, name="finites_fill_property_address")
      import
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), value :: entry
      type(c_ptr), value :: property
    end subroutine finites_fill_property_address

    subroutine finites_fill_solid_record(record, number, mat, nodes, node_ptr) bind(c, &
        name="finites_fill_solid_record")
      import
      type(solid_record), intent(inout) :: record
      integer(c_int32_t), value :: number
      integer(c_int32_t), value :: mat
      integer(c_int32_t), value :: nodes
      integer(c_int32_t), intent(in) :: node_ptr(*)
    end subroutine finites_fill_solid_record

  end interface

  ! -------------------------------------------------------------------------------- exported routines of finites.h

  interface

    subroutine FINITES(op, elem, k, A, n, data, forces, matrix) bind(c, name="FINITES")
      import
      integer(c_int32_t), intent(inout) :: op
      integer(c_int32_t), intent(in) :: elem
      integer(c_int32_t), intent(in) :: k
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), intent(in) :: n
      real(c_double), intent(inout) :: data(*)
      real(c_double), intent(inout) :: forces(*)
      real(c_double), intent(inout) :: matrix(*)
    end subroutine FINITES

    subroutine INFO_FINITES(elem, A, n, kind, behav, parts) bind(c, name="INFO_FINITES")
      import
      integer(c_int32_t), intent(in) :: elem
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: n
      integer(c_int32_t), intent(inout) :: kind
      integer(c_int32_t), intent(inout) :: behav
      integer(c_int32_t), intent(inout) :: parts
    end subroutine INFO_FINITES

    subroutine GAUSS_INT_2D(rule, point, nodes, xyz, xi, eta, detj, weight, j11, j12, j21, j22, g11, g12, g21, g22) &
        bind(c, name="GAUSS_INT_2D")
      import
      integer(c_int32_t), intent(in) :: rule
      integer(c_int32_t), intent(in) :: point
      integer(c_int32_t), intent(in) :: nodes
      real(c_double), intent(in) :: xyz(*)
      real(c_double), intent(inout) :: xi
      real(c_double), intent(inout) :: eta
      real(c_double), intent(inout) :: detj
      real(c_double), intent(inout) :: weight
      real(c_double), intent(inout) :: j11
      real(c_double), intent(inout) :: j12
      real(c_double), intent(inout) :: j21
      real(c_double), intent(inout) :: j22
      real(c_double), intent(inout) :: g11
      real(c_double), intent(inout) :: g12
      real(c_double), intent(inout) :: g21
      real(c_double), intent(inout) :: g22
    end subroutine GAUSS_INT_2D

    subroutine UPDATE_PRINCIPAUX_RES100_PLA(res) bind(c, name="UPDATE_PRINCIPAUX_RES100_PLA")
      import
      real(c_float), intent(inout) :: res(*)
    end subroutine UPDATE_PRINCIPAUX_RES100_PLA

    subroutine UPDATE_PRINCIPAUX_RES100_PLA_DBL(res) bind(c, name="UPDATE_PRINCIPAUX_RES100_PLA_DBL")
      import
      real(c_double), intent(inout) :: res(*)
    end subroutine UPDATE_PRINCIPAUX_RES100_PLA_DBL

    subroutine KSTIFB(MODE, IELEM, IOFF, A, NDIM, T, NT2, T2, K, KG) bind(c, name="KSTIFB")
      import
      integer(c_int32_t), intent(in) :: MODE
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(in) :: IOFF
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(in) :: T(*)
      integer(c_int32_t), intent(in) :: NT2
      real(c_double), intent(in) :: T2(*)
      real(c_double), intent(inout) :: K(*)
      real(c_double), intent(inout) :: KG(*)
    end subroutine KSTIFB

    subroutine RELEASE_DOF(IDOF, K, N) bind(c, name="RELEASE_DOF")
      import
      integer(c_int32_t), intent(in) :: IDOF
      real(c_double), intent(inout) :: K(*)
      integer(c_int32_t), intent(in) :: N
    end subroutine RELEASE_DOF

    subroutine GET_N_CONVERG_TOM(RMIN, RATIO, NSTEP) bind(c, name="GET_N_CONVERG_TOM")
      import
      real(c_double), intent(in) :: RMIN
      real(c_double), intent(inout) :: RATIO
      integer(c_int32_t), intent(inout) :: NSTEP
    end subroutine GET_N_CONVERG_TOM

    subroutine GET_COEF_REMOVE(STEP, RMIN, COEF) bind(c, name="GET_COEF_REMOVE")
      import
      integer(c_int32_t), intent(in) :: STEP
      real(c_double), intent(in) :: RMIN
      real(c_double), intent(inout) :: COEF
    end subroutine GET_COEF_REMOVE

    subroutine KSTIFB_GEOM(P, L, E1, E2, I1, I2, SEMIY, SEMIZ, RELY, RELZ, A1, B1, A2, B2, KG) bind(c, &
        name="KSTIFB_GEOM")
      import
      real(c_double), intent(in) :: P
      real(c_double), intent(in) :: L
      real(c_double), intent(in) :: E1
      real(c_double), intent(in) :: E2
      real(c_double), intent(in) :: I1
      real(c_double), intent(in) :: I2
      integer(c_int32_t), intent(in) :: SEMIY
      integer(c_int32_t), intent(in) :: SEMIZ
      integer(c_int32_t), intent(in) :: RELY
      integer(c_int32_t), intent(in) :: RELZ
      real(c_double), intent(in) :: A1
      real(c_double), intent(in) :: B1
      real(c_double), intent(in) :: A2
      real(c_double), intent(in) :: B2
      real(c_double), intent(inout) :: KG(*)
    end subroutine KSTIFB_GEOM

    subroutine KSTIFB_MASS(IELEM, IOFF, A, NDIM, T, NT2, T2, M) bind(c, name="KSTIFB_MASS")
      import
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(in) :: IOFF
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(in) :: T(*)
      integer(c_int32_t), intent(in) :: NT2
      real(c_double), intent(in) :: T2(*)
      real(c_double), intent(inout) :: M(*)
    end subroutine KSTIFB_MASS

    subroutine RELEASE_DOF_MAS(IDOF, M) bind(c, name="RELEASE_DOF_MAS")
      import
      integer(c_int32_t), intent(in) :: IDOF
      real(c_double), intent(inout) :: M(*)
    end subroutine RELEASE_DOF_MAS

    subroutine KSTIFT(MODE, IELEM, IOFF, A, NDIM, T, K, KG) bind(c, name="KSTIFT")
      import
      integer(c_int32_t), intent(in) :: MODE
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(in) :: IOFF
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(in) :: T(*)
      real(c_double), intent(inout) :: K(*)
      real(c_double), intent(inout) :: KG(*)
    end subroutine KSTIFT

    subroutine KSTIFT_PLAST(IELEM, K) bind(c, name="KSTIFT_PLAST")
      import
      integer(c_int32_t), intent(in) :: IELEM
      real(c_double), intent(inout) :: K(*)
    end subroutine KSTIFT_PLAST

    subroutine KSTIFT_MASS(IOFF, A, NDIM, T, M) bind(c, name="KSTIFT_MASS")
      import
      integer(c_int32_t), intent(in) :: IOFF
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(in) :: T(*)
      real(c_double), intent(inout) :: M(*)
    end subroutine KSTIFT_MASS

    subroutine KSTIFT_CATENARY(MODE, IELEM, IOFF, ILOAD, A, NDIM, T, K, KG, IERR, MSG) bind(c, &
        name="KSTIFT_CATENARY")
      import
      integer(c_int32_t), intent(in) :: MODE
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(in) :: IOFF
      integer(c_int32_t), intent(in) :: ILOAD
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(in) :: T(*)
      real(c_double), intent(inout) :: K(*)
      real(c_double), intent(inout) :: KG(*)
      integer(c_int32_t), intent(inout) :: IERR
      character(kind=c_char), intent(inout) :: MSG(*)
    end subroutine KSTIFT_CATENARY

    subroutine KSTIF_LINK(MODE, IELEM, IOFF, A, NDIM, T, K, KG) bind(c, name="KSTIF_LINK")
      import
      integer(c_int32_t), intent(in) :: MODE
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(in) :: IOFF
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(in) :: T(*)
      real(c_double), intent(inout) :: K(*)
      real(c_double), intent(inout) :: KG(*)
    end subroutine KSTIF_LINK

    subroutine KSTIF_SPR(MODE, IELEM, IOFF, A, NDIM, T, K, KG) bind(c, name="KSTIF_SPR")
      import
      integer(c_int32_t), intent(in) :: MODE
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(in) :: IOFF
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(in) :: T(*)
      real(c_double), intent(inout) :: K(*)
      real(c_double), intent(inout) :: KG(*)
    end subroutine KSTIF_SPR

    subroutine GET_COEF_REMOVE_SPRING(STEP, RMIN, NLIDX, KIND, COEF) bind(c, name="GET_COEF_REMOVE_SPRING")
      import
      integer(c_int32_t), intent(in) :: STEP
      real(c_double), intent(in) :: RMIN
      integer(c_int32_t), intent(in) :: NLIDX
      integer(c_int32_t), intent(in) :: KIND
      real(c_double), intent(inout) :: COEF
    end subroutine GET_COEF_REMOVE_SPRING

    subroutine PHI_ORBISON(CP, CMY, CMZ, FS, P, MY, MZ, PHI) bind(c, name="PHI_ORBISON")
      import
      real(c_double), intent(in) :: CP
      real(c_double), intent(in) :: CMY
      real(c_double), intent(in) :: CMZ
      integer(c_int32_t), intent(in) :: FS
      real(c_double), intent(in) :: P
      real(c_double), intent(in) :: MY
      real(c_double), intent(in) :: MZ
      real(c_double), intent(inout) :: PHI
    end subroutine PHI_ORBISON

    subroutine ORBISON_CURVE_GRADIENT(FS, CP, CMY, CMZ, P, MY, MZ, DP, DMY, DMZ) bind(c, &
        name="ORBISON_CURVE_GRADIENT")
      import
      integer(c_int32_t), intent(in) :: FS
      real(c_double), intent(in) :: CP
      real(c_double), intent(in) :: CMY
      real(c_double), intent(in) :: CMZ
      real(c_double), intent(in) :: P
      real(c_double), intent(in) :: MY
      real(c_double), intent(in) :: MZ
      real(c_double), intent(inout) :: DP
      real(c_double), intent(inout) :: DMY
      real(c_double), intent(inout) :: DMZ
    end subroutine ORBISON_CURVE_GRADIENT

    subroutine SINGLE_FORCES_SEGMENT_EQUATION(CP, CMY, CMZ, FS, P, MY, MZ, NEQ, SEG) bind(c, &
        name="SINGLE_FORCES_SEGMENT_EQUATION")
      import
      real(c_double), intent(in) :: CP
      real(c_double), intent(in) :: CMY
      real(c_double), intent(in) :: CMZ
      integer(c_int32_t), intent(in) :: FS
      real(c_double), intent(in) :: P
      real(c_double), intent(in) :: MY
      real(c_double), intent(in) :: MZ
      integer(c_int32_t), intent(inout) :: NEQ
      integer(c_int32_t), intent(inout) :: SEG(*)
    end subroutine SINGLE_FORCES_SEGMENT_EQUATION

    subroutine PHI_SINGLE_FORCES(SEG, CP, CMY, CMZ, FS, P, MY, MZ, PHI) bind(c, name="PHI_SINGLE_FORCES")
      import
      integer(c_int32_t), intent(in) :: SEG(*)
      real(c_double), intent(in) :: CP
      real(c_double), intent(in) :: CMY
      real(c_double), intent(in) :: CMZ
      integer(c_int32_t), intent(in) :: FS
      real(c_double), intent(in) :: P
      real(c_double), intent(in) :: MY
      real(c_double), intent(in) :: MZ
      real(c_double), intent(inout) :: PHI
    end subroutine PHI_SINGLE_FORCES

    subroutine SINGLE_FORCES_CURVE_GRADIENT(S, FS, CP, CMY, CMZ, P, MY, MZ, DP, DMY, DMZ) bind(c, &
        name="SINGLE_FORCES_CURVE_GRADIENT")
      import
      integer(c_int32_t), intent(in) :: S
      integer(c_int32_t), intent(in) :: FS
      real(c_double), intent(in) :: CP
      real(c_double), intent(in) :: CMY
      real(c_double), intent(in) :: CMZ
      real(c_double), intent(in) :: P
      real(c_double), intent(in) :: MY
      real(c_double), intent(in) :: MZ
      real(c_double), intent(inout) :: DP
      real(c_double), intent(inout) :: DMY
      real(c_double), intent(inout) :: DMZ
    end subroutine SINGLE_FORCES_CURVE_GRADIENT

    subroutine LINEAR_SEGMENT_EQUATION(CP, CMY, CMZ, FS, P, MY, MZ, NEQ, SEG) bind(c, &
        name="LINEAR_SEGMENT_EQUATION")
      import
      real(c_double), intent(in) :: CP
      real(c_double), intent(in) :: CMY
      real(c_double), intent(in) :: CMZ
      integer(c_int32_t), intent(in) :: FS
      real(c_double), intent(in) :: P
      real(c_double), intent(in) :: MY
      real(c_double), intent(in) :: MZ
      integer(c_int32_t), intent(inout) :: NEQ
      integer(c_int32_t), intent(inout) :: SEG(*)
    end subroutine LINEAR_SEGMENT_EQUATION

    subroutine PHI_LINEAR_SEGMENT(SEG, CP, CMY, CMZ, FS, P, MY, MZ, PHI) bind(c, name="PHI_LINEAR_SEGMENT")
      import
      integer(c_int32_t), intent(in) :: SEG(*)
      real(c_double), intent(in) :: CP
      real(c_double), intent(in) :: CMY
      real(c_double), intent(in) :: CMZ
      integer(c_int32_t), intent(in) :: FS
      real(c_double), intent(in) :: P
      real(c_double), intent(in) :: MY
      real(c_double), intent(in) :: MZ
      real(c_double), intent(inout) :: PHI(*)
    end subroutine PHI_LINEAR_SEGMENT

    subroutine LINEAR_SEGMENT_GRADIENT(FS, S, CP, CMY, CMZ, P, MY, MZ, DP, DMY, DMZ) bind(c, &
        name="LINEAR_SEGMENT_GRADIENT")
      import
      integer(c_int32_t), intent(in) :: FS
      integer(c_int32_t), intent(in) :: S
      real(c_double), intent(in) :: CP
      real(c_double), intent(in) :: CMY
      real(c_double), intent(in) :: CMZ
      real(c_double), intent(in) :: P
      real(c_double), intent(in) :: MY
      real(c_double), intent(in) :: MZ
      real(c_double), intent(inout) :: DP
      real(c_double), intent(inout) :: DMY
      real(c_double), intent(inout) :: DMZ
    end subroutine LINEAR_SEGMENT_GRADIENT

    subroutine GET_YIELD_CURVE_EQ_COUNT(IELEM, A, NDIM, FMODE, NTOT, N1, N2, SEG1, SEG2) bind(c, &
        name="GET_YIELD_CURVE_EQ_COUNT")
      import
      integer(c_int32_t), intent(in) :: IELEM
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      integer(c_int32_t), intent(in) :: FMODE
      integer(c_int32_t), intent(inout) :: NTOT
      integer(c_int32_t), intent(inout) :: N1
      integer(c_int32_t), intent(inout) :: N2
      integer(c_int32_t), intent(inout) :: SEG1(*)
      integer(c_int32_t), intent(inout) :: SEG2(*)
    end subroutine GET_YIELD_CURVE_EQ_COUNT

    subroutine GET_YIELD_CURVE_DERIVATIVES(IELEM, A, NDIM, FMODE, NMAT, NTOT, N1, N2, SEG1, SEG2) bind(c, &
        name="GET_YIELD_CURVE_DERIVATIVES")
      import
      integer(c_int32_t), intent(in) :: IELEM
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      integer(c_int32_t), intent(in) :: FMODE
      real(c_double), intent(inout) :: NMAT(*)
      integer(c_int32_t), intent(in) :: NTOT
      integer(c_int32_t), intent(in) :: N1
      integer(c_int32_t), intent(in) :: N2
      integer(c_int32_t), intent(in) :: SEG1(*)
      integer(c_int32_t), intent(in) :: SEG2(*)
    end subroutine GET_YIELD_CURVE_DERIVATIVES

    subroutine GET_HINGE_FORCES(IELEM, A, NDIM, POS, FMODE, END, SET, P, MY, MZ, LP, LMY, LMZ) bind(c, &
        name="GET_HINGE_FORCES")
      import
      integer(c_int32_t), intent(in) :: IELEM
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      integer(c_int32_t), intent(in) :: POS
      integer(c_int32_t), intent(in) :: FMODE
      integer(c_int32_t), intent(in) :: END
      integer(c_int32_t), intent(in) :: SET
      real(c_double), intent(inout) :: P
      real(c_double), intent(inout) :: MY
      real(c_double), intent(inout) :: MZ
      real(c_double), intent(inout) :: LP
      real(c_double), intent(inout) :: LMY
      real(c_double), intent(inout) :: LMZ
    end subroutine GET_HINGE_FORCES

    subroutine KSTIFB_PLAST(ELNO, A, NDIM, IELEM, K, KP) bind(c, name="KSTIFB_PLAST")
      import
      integer(c_int32_t), intent(in) :: ELNO
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      integer(c_int32_t), intent(in) :: IELEM
      real(c_double), intent(inout) :: K(*)
      real(c_double), intent(inout) :: KP(*)
    end subroutine KSTIFB_PLAST

    subroutine DECOMPOSE_KSTIF(K, K11, K12, K21, K22) bind(c, name="DECOMPOSE_KSTIF")
      import
      real(c_double), intent(in) :: K(*)
      real(c_double), intent(inout) :: K11(*)
      real(c_double), intent(inout) :: K12(*)
      real(c_double), intent(inout) :: K21(*)
      real(c_double), intent(inout) :: K22(*)
    end subroutine DECOMPOSE_KSTIF

    subroutine CALCULATE_MAT_BETA_INVERSE(KB, N, NEQ, BETA, IERR) bind(c, name="CALCULATE_MAT_BETA_INVERSE")
      import
      real(c_double), intent(in) :: KB(*)
      real(c_double), intent(in) :: N(*)
      integer(c_int32_t), intent(in) :: NEQ
      real(c_double), intent(inout) :: BETA(*)
      integer(c_int32_t), intent(inout) :: IERR
    end subroutine CALCULATE_MAT_BETA_INVERSE

    subroutine MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(K, N, NTOT, G, IERR) bind(c, &
        name="MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES")
      import
      real(c_double), intent(in) :: K(*)
      real(c_double), intent(in) :: N(*)
      integer(c_int32_t), intent(in) :: NTOT
      real(c_double), intent(inout) :: G(*)
      integer(c_int32_t), intent(inout) :: IERR
    end subroutine MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES

    subroutine MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE(K1, K2, N, NEQ, BETA, D1, D2, OUT) bind(c, &
        name="MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE")
      import
      real(c_double), intent(in) :: K1(*)
      real(c_double), intent(in) :: K2(*)
      real(c_double), intent(in) :: N(*)
      integer(c_int32_t), intent(in) :: NEQ
      real(c_double), intent(in) :: BETA(*)
      real(c_double), intent(in) :: D1(*)
      real(c_double), intent(in) :: D2(*)
      real(c_double), intent(inout) :: OUT(*)
    end subroutine MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE

    subroutine FINITES_SOLID_3D(OP, IELEM, IOFF, A, NDIM, G, F, NN, K, IERR, MSG) bind(c, name="FINITES_SOLID_3D")
      import
      integer(c_int32_t), intent(in) :: OP
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(in) :: IOFF
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(in) :: G(*)
      real(c_double), intent(inout) :: F(*)
      integer(c_int32_t), intent(in) :: NN
      real(c_double), intent(inout) :: K(*)
      integer(c_int32_t), intent(inout) :: IERR
      character(kind=c_char), intent(inout) :: MSG(*)
    end subroutine FINITES_SOLID_3D

    subroutine GET_ELEM3D(IELEM, IOFF, ISPARE, A, NDIM, NN, RES, S, U, FG, IERR, MSG) bind(c, name="GET_ELEM3D")
      import
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(in) :: IOFF
      integer(c_int32_t), intent(in) :: ISPARE
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      integer(c_int32_t), intent(in) :: NN
      real(c_double), intent(inout) :: RES(*)
      real(c_double), intent(inout) :: S(*)
      real(c_double), intent(in) :: U(*)
      real(c_double), intent(inout) :: FG(*)
      integer(c_int32_t), intent(inout) :: IERR
      character(kind=c_char), intent(inout) :: MSG(*)
    end subroutine GET_ELEM3D

    subroutine UPDATE_PRINCIPAUX_RES50_SOLID(R) bind(c, name="UPDATE_PRINCIPAUX_RES50_SOLID")
      import
      real(c_float), intent(inout) :: R(*)
    end subroutine UPDATE_PRINCIPAUX_RES50_SOLID

    subroutine UPDATE_PRINCIPAUX_RES50_SOLID_DBL(R) bind(c, name="UPDATE_PRINCIPAUX_RES50_SOLID_DBL")
      import
      real(c_double), intent(inout) :: R(*)
    end subroutine UPDATE_PRINCIPAUX_RES50_SOLID_DBL

    subroutine TRFA_3DSOLID(IELEM, NN, A, NDIM, AXES) bind(c, name="TRFA_3DSOLID")
      import
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(inout) :: NN
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(inout) :: AXES(*)
    end subroutine TRFA_3DSOLID

    subroutine RAMSR_SOLID(ILOAD, NDIM, A, NN, ID, F) bind(c, name="RAMSR_SOLID")
      import
      integer(c_int32_t), intent(in) :: ILOAD
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(inout) :: A(*)
      integer(c_int32_t), intent(in) :: NN
      integer(c_int32_t), intent(in) :: ID(*)
      real(c_double), intent(in) :: F(*)
    end subroutine RAMSR_SOLID

    subroutine GET_NONLIN_UGLO_SOLIDELEM_RAM(IELEM, NN, IOFF, A, NDIM, UG, NUG) bind(c, &
        name="GET_NONLIN_UGLO_SOLIDELEM_RAM")
      import
      integer(c_int32_t), intent(in) :: IELEM
      integer(c_int32_t), intent(inout) :: NN
      integer(c_int32_t), intent(in) :: IOFF
      real(c_double), intent(in) :: A(*)
      integer(c_int32_t), intent(in) :: NDIM
      real(c_double), intent(in) :: UG(*)
      integer(c_int32_t), intent(in) :: NUG
    end subroutine GET_NONLIN_UGLO_SOLIDELEM_RAM

  end interface

  ! -------------------------------------------------------------------------------- what a solver calls in Tarnix

  interface

    subroutine TARNIX_STORE_MATERIAL(number, rec) bind(c, name="TARNIX_STORE_MATERIAL")
      import
      integer(c_int32_t), intent(in) :: number
      type(material_record), intent(in) :: rec
    end subroutine TARNIX_STORE_MATERIAL

    subroutine TARNIX_STORE_SECTION_CLT(number, rec) bind(c, name="TARNIX_STORE_SECTION_CLT")
      import
      integer(c_int32_t), intent(in) :: number
      type(clt_section_record), intent(in) :: rec
    end subroutine TARNIX_STORE_SECTION_CLT

    subroutine TARNIX_STORE_SOLPARAM(rec) bind(c, name="TARNIX_STORE_SOLPARAM")
      import
      type(solparam_record), intent(in) :: rec
    end subroutine TARNIX_STORE_SOLPARAM

    subroutine TARNIX_STORE_KNLMATERIAL_PLATE(code) bind(c, name="TARNIX_STORE_KNLMATERIAL_PLATE")
      import
      integer(c_int32_t), intent(in) :: code
    end subroutine TARNIX_STORE_KNLMATERIAL_PLATE

    subroutine TARNIX_STORE_KNLMATERIAL_MEMBER(flag) bind(c, name="TARNIX_STORE_KNLMATERIAL_MEMBER")
      import
      integer(c_int32_t), intent(in) :: flag
    end subroutine TARNIX_STORE_KNLMATERIAL_MEMBER

    subroutine TARNIX_STORE_KCOLDFORM(type, flag) bind(c, name="TARNIX_STORE_KCOLDFORM")
      import
      integer(c_int32_t), intent(in) :: type
      integer(c_int32_t), intent(in) :: flag
    end subroutine TARNIX_STORE_KCOLDFORM

    subroutine TARNIX_CLEAR() bind(c, name="TARNIX_CLEAR")
      import
    end subroutine TARNIX_CLEAR

    subroutine TARNIX_SET_ASSERT_STOPS(stops) bind(c, name="TARNIX_SET_ASSERT_STOPS")
      import
      integer(c_int32_t), intent(in) :: stops
    end subroutine TARNIX_SET_ASSERT_STOPS

    subroutine TARNIX_SET_ASSERT_QUIET(quiet) bind(c, name="TARNIX_SET_ASSERT_QUIET")
      import
      integer(c_int32_t), intent(in) :: quiet
    end subroutine TARNIX_SET_ASSERT_QUIET

    subroutine TARNIX_GET_ASSERT_COUNT(count) bind(c, name="TARNIX_GET_ASSERT_COUNT")
      import
      integer(c_int32_t), intent(inout) :: count
    end subroutine TARNIX_GET_ASSERT_COUNT

    subroutine TARNIX_SET_EXCHANGE_AREA(area) bind(c, name="TARNIX_SET_EXCHANGE_AREA")
      import
      type(c_ptr), value :: area
    end subroutine TARNIX_SET_EXCHANGE_AREA

    subroutine TARNIX_RECORD_LAYOUT(record, record_length, field, field_length, offset, size) bind(c, &
        name="TARNIX_RECORD_LAYOUT")
      import
      character(kind=c_char), intent(in) :: record(*)
      integer(c_int32_t), intent(in) :: record_length
      character(kind=c_char), intent(in) :: field(*)
      integer(c_int32_t), intent(in) :: field_length
      integer(c_int64_t), intent(inout) :: offset
      integer(c_int64_t), intent(inout) :: size
    end subroutine TARNIX_RECORD_LAYOUT

  end interface

  ! refer_to(reference, c_loc(array), bytes of an element, extents ...): the reference of a record to a contiguous array
  ! that is numbered from 1. The array is a target and outlives the record.
  interface refer_to
    module procedure refer_to_1, refer_to_2, refer_to_3
  end interface refer_to
  private :: refer_to_1, refer_to_2, refer_to_3

  interface
    pure function c_length(text) result(length) bind(c, name="strlen")
      import
      type(c_ptr), value :: text
      integer(c_size_t) :: length
    end function c_length
  end interface
  private :: c_length

contains

  ! The sentence about a status.
  function finites_message(status) result(text)
    integer(c_int32_t), intent(in) :: status
    character(:), allocatable :: text
    text = text_of(finites_text(status))
  end function finites_message

  function text_of(address) result(text)
    type(c_ptr), intent(in) :: address
    character(:), allocatable :: text
    character(kind=c_char), pointer :: letters(:)
    integer :: i
    call c_f_pointer(address, letters, [c_length(address)])
    allocate (character(size(letters)) :: text)
    do i = 1, size(letters)
      text(i:i) = letters(i)
    end do
  end function text_of

  ! An array of a batch: the values of element e (from 0) start at first(1 + e * stride). The array is a target.
  function finites_reals_of(first, stride) result(reals)
    real(c_double), intent(in), target :: first(*)
    integer, intent(in) :: stride
    type(finites_reals_t) :: reals
    reals%first = c_loc(first(1))
    reals%stride = stride
  end function finites_reals_of

  subroutine refer_to_1(reference, base, bytes, n1)
    type(array_reference_1), intent(out) :: reference
    type(c_ptr), intent(in) :: base
    integer(c_size_t), intent(in) :: bytes
    integer, intent(in) :: n1
    reference%base = base
    reference%element_length = bytes
    reference%allocated_flag = 1
    reference%dimension(1) = array_dimension(n1, bytes, 1)
  end subroutine refer_to_1

  subroutine refer_to_2(reference, base, bytes, n1, n2)
    type(array_reference_2), intent(out) :: reference
    type(c_ptr), intent(in) :: base
    integer(c_size_t), intent(in) :: bytes
    integer, intent(in) :: n1, n2
    reference%base = base
    reference%element_length = bytes
    reference%allocated_flag = 1
    reference%dimension(1) = array_dimension(n1, bytes, 1)
    reference%dimension(2) = array_dimension(n2, bytes * n1, 1)
  end subroutine refer_to_2

  subroutine refer_to_3(reference, base, bytes, n1, n2, n3)
    type(array_reference_3), intent(out) :: reference
    type(c_ptr), intent(in) :: base
    integer(c_size_t), intent(in) :: bytes
    integer, intent(in) :: n1, n2, n3
    reference%base = base
    reference%element_length = bytes
    reference%allocated_flag = 1
    reference%dimension(1) = array_dimension(n1, bytes, 1)
    reference%dimension(2) = array_dimension(n2, bytes * n1, 1)
    reference%dimension(3) = array_dimension(n3, bytes * n1 * n2, 1)
  end subroutine refer_to_3

end module finites_library
