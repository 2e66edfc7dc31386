! protocol.f90: FINITES from Fortran, by the installed module and libraries alone. A thin triangle under a load: its
! nodal forces add up to load times area.
program protocol
  use finites_library
  implicit none
  integer(c_int32_t), parameter :: nodes = 1001, section = 1101, material = 1201, element = 1301, length = 1400
  real(c_double) :: A(length), data(12), forces(24), matrix(24, 24)
  type(plate_record), target :: plates(1)
  integer(c_int32_t) :: op, n

  A = 0
  A(RES_BASE) = 201
  A(ENTRY_START) = element
  A(ENTRY_STRIDE) = 70
  A(section + SECTION_TYPE) = HOMOGENEOUS_SECTION
  A(section + SECTION_THICKNESS) = 10
  A(material + MATERIAL_YOUNG) = 210d3
  A(nodes + 10 + NODE_X) = 4
  A(nodes + 20 + NODE_X + 1) = 3
  A(element + FORMULATION) = FORMULATION_THIN
  A([MODIFIER_MEMBRANE, MODIFIER_BENDING, MODIFIER_SHEAR] + element) = 1

  plates(1)%SECTION_PTR = section
  plates(1)%MATERIAL_PTR = material
  plates(1)%NODE_COUNT = 3
  plates(1)%NODE_PTR(1:3) = [(nodes + 10 * n, n = 0, 2)]
  call refer_to(SOLANAELEM%PLATE_RECORDS, c_loc(plates), c_sizeof(plates(1)), 1)

  op = OP_LOADS
  data = 0
  data(3) = -5
  call FINITES(op, 1_c_int32_t, element, A, length, data, forces, matrix)
  if (abs(sum(forces(3:18:6)) + 30) > 1d-12) then
    print *, 'sum of the forces: actual', sum(forces(3:18:6)), ', expected -30'
    error stop 1
  end if
end program protocol
