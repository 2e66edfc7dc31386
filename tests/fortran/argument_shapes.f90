! argument_shapes.f90: calls of every exported routine, and plain calls with optional arguments left out, with numbers
! where the headers describe one number and arrays where they describe arrays. It is not run: that it compiles shows
! that the interfaces of the module take such arguments. What a routine only reads is a literal.
module argument_shapes
  use finites_library
  implicit none
  private
  public :: call_plates, call_members, call_hinges, call_solids, call_plain

  real(c_double), save :: A(100) = 0, res(100) = 0, forces(24) = 0, matrix(24, 24) = 0, xyz(3, 4) = 0
  real(c_double), save :: T(12, 12) = 0, T2(12, 12) = 0, K(12, 12) = 0, KG(12, 12) = 0, K6(6, 6) = 0
  real(c_double), save :: N(12, 8) = 0, beta(8, 8) = 0, gradients(8, 12) = 0, phi(4) = 0
  real(c_double), save :: x = 0, y = 0, z = 0, xx = 0, yy = 0, zz = 0
  real(c_float), save :: short(100) = 0
  integer(c_int32_t), save :: segments(4) = 0, count = 0, first = 0, second = 0, error = 0
  character(kind=c_char), save :: message(500) = ' '

contains

  subroutine call_plates()
    integer(c_int32_t), save :: op = 1
    real(c_double), save :: data(12) = 0, j(8) = 0
    call FINITES(op, 1, 100, A, 100, data, forces, matrix)
    call INFO_FINITES(1, A, 100, count, first, second)
    call GAUSS_INT_2D(1, 1, 4, xyz, x, y, z, xx, j(1), j(2), j(3), j(4), j(5), j(6), j(7), j(8))
    call UPDATE_PRINCIPAUX_RES100_PLA(short)
    call UPDATE_PRINCIPAUX_RES100_PLA_DBL(res)
  end subroutine call_plates

  subroutine call_members()
    call KSTIFB(0, 1, 100, A, 100, T, 0, T2, K, KG)
    call RELEASE_DOF(5, K, 12)
    call GET_N_CONVERG_TOM(0.1_c_double, x, count)
    call GET_COEF_REMOVE(3, 0.1_c_double, x)
    call KSTIFB_GEOM(1._c_double, 2._c_double, 3._c_double, 3._c_double, 4._c_double, 4._c_double, 0, 0, 0, 0, &
                     1._c_double, 1._c_double, 1._c_double, 1._c_double, KG)
    call KSTIFB_MASS(1, 100, A, 100, T, 0, T2, K)
    call RELEASE_DOF_MAS(5, K)
    call KSTIFT(0, 1, 100, A, 100, K6, K6, K6)
    call KSTIFT_PLAST(1, K6)
    call KSTIFT_MASS(100, A, 100, K6, K6)
    call KSTIFT_CATENARY(0, 1, 100, 0, A, 100, K6, K6, K6, error, message)
    call KSTIF_LINK(0, 1, 100, A, 100, T, K, KG)
    call KSTIF_SPR(0, 1, 100, A, 100, T, K, KG)
    call GET_COEF_REMOVE_SPRING(3, 0.1_c_double, 1, 8, x)
  end subroutine call_members

  subroutine call_hinges()
    real(c_double), parameter :: p = 0.1_c_double, my = 0.2_c_double, mz = 0.3_c_double, one = 1
    call PHI_ORBISON(one, one, one, 7, p, my, mz, x)
    call ORBISON_CURVE_GRADIENT(7, one, one, one, p, my, mz, x, y, z)
    call SINGLE_FORCES_SEGMENT_EQUATION(one, one, one, 1, p, my, mz, count, segments)
    call PHI_SINGLE_FORCES(segments, one, one, one, 1, p, my, mz, x)
    call SINGLE_FORCES_CURVE_GRADIENT(1, 1, one, one, one, p, my, mz, x, y, z)
    call LINEAR_SEGMENT_EQUATION(one, one, one, 7, p, my, mz, count, segments)
    call PHI_LINEAR_SEGMENT(segments, one, one, one, 7, p, my, mz, phi)
    call LINEAR_SEGMENT_GRADIENT(7, 1, one, one, one, p, my, mz, x, y, z)
    call GET_YIELD_CURVE_EQ_COUNT(1, A, 100, 0, count, first, second, segments, segments)
    call GET_YIELD_CURVE_DERIVATIVES(1, A, 100, 0, N, 2, 1, 1, segments, segments)
    call GET_HINGE_FORCES(1, A, 100, 1, 0, 1, 1, x, y, z, xx, yy, zz)
    call KSTIFB_PLAST(1, A, 100, 1, K, KG)
    call DECOMPOSE_KSTIF(K, K6, K6, K6, K6)
    call CALCULATE_MAT_BETA_INVERSE(K6, N, 1, beta, error)
    call MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(K, N, 2, gradients, error)
    call MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE(K6, K6, N, 1, beta, forces, forces, phi)
  end subroutine call_hinges

  subroutine call_solids()
    integer(c_int32_t), save :: nodes = 8, joints(8) = 0
    call FINITES_SOLID_3D(1, 1, 100, A, 100, forces, matrix, 8, matrix, error, message)
    call GET_ELEM3D(1, 100, 0, A, 100, 8, res, matrix, forces, forces, error, message)
    call UPDATE_PRINCIPAUX_RES50_SOLID(short)
    call UPDATE_PRINCIPAUX_RES50_SOLID_DBL(res)
    call TRFA_3DSOLID(1, nodes, A, 100, xyz)
    call RAMSR_SOLID(1, 100, A, 8, joints, forces)
    call GET_NONLIN_UGLO_SOLIDELEM_RAM(1, nodes, 100, A, 100, res, 100)
  end subroutine call_solids

  subroutine call_plain(plate, truss, plate_state, beam_state, findings, plate_record_of, solid_record_of)
    type(finites_plate_t), intent(in) :: plate
    type(finites_truss_t), intent(in) :: truss
    type(c_ptr), intent(in) :: plate_state, beam_state
    type(finites_finding_t), intent(inout) :: findings(10)
    type(plate_record), intent(inout) :: plate_record_of
    type(solid_record), intent(inout) :: solid_record_of
    error = finites_plate_surface_load(plate, global=forces, F=forces)
    error = finites_plate_point_load(plate, xyz(:, 1), local=forces, F=forces)
    error = finites_plate_state_try(plate_state, forces, K=matrix)
    error = finites_plate_state_forces(plate_state, K=matrix)
    error = finites_beam_state_try(beam_state, forces, K=K)
    error = finites_beam_state_forces(beam_state, F=forces)
    error = finites_beam_state_forces(beam_state, K=K)
    error = finites_truss_loads(truss, temperature=1._c_double, F=forces)
    error = finites_check_plate(1, 100, A, 100_c_int64_t, findings, 10)
    error = finites_check_model(count=1, A=A, n=100_c_int64_t, findings=findings, capacity=10)
    error = finites_check_model(segments, 4, A, 100_c_int64_t, findings, 10)
    call finites_fill_plate_record(plate_record_of, 1, 1, 4, segments)
    call finites_fill_solid_record(solid_record_of, 1, 1, 4, segments)
  end subroutine call_plain

end module argument_shapes
