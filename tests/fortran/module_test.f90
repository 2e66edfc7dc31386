! module_test.f90: plain calls and routines through the module finites_library. The numbers are formulas of mechanics.
! Silent when all is well; it stops with status 1 otherwise.
program module_test
  use, intrinsic :: ieee_arithmetic, only: ieee_value, ieee_quiet_nan
  use support
  implicit none

  call texts()
  call refused_plates()
  call plates()
  call loads_without_an_argument()
  call members()
  call yield_surface()
  call solids()
  call routines()
  if (failures > 0) error stop 1

contains

  subroutine texts()
    if (finites_message(FINITES_OK) /= 'success') then
      print '(2a)', 'text of FINITES_OK: ', finites_message(FINITES_OK)
      failures = failures + 1
    end if
    if (index(finites_message(FINITES_THICKNESS), 'thickness') == 0) failures = failures + 1
    if (index(text_of(finites_version()), '.') == 0) failures = failures + 1
  end subroutine texts

  ! A plate of which one number is wrong: the status of that number, its sentence, and a matrix as it was.
  subroutine refused_plates()
    type(finites_plate_t) :: plate

    plate = square()
    plate%thickness = 0
    call refused(plate, FINITES_THICKNESS, 'thickness must be above 0')
    plate = square()
    plate%E = -1
    call refused(plate, FINITES_MODULUS, 'a modulus')
    plate = square()
    plate%nu = 0.6d0
    call refused(plate, FINITES_POISSON, "Poisson's ratio")
    plate = square()
    plate%density = -1
    call refused(plate, FINITES_DENSITY, 'density is negative')
    plate = square()
    plate%bending_factor = -1
    call refused(plate, FINITES_FACTOR, 'a factor is negative')
    plate = square()
    plate%nodes = 5
    call refused(plate, FINITES_NODES, 'nodes')
    plate = square()
    plate%theory = 7
    call refused(plate, FINITES_BAD_CODE, 'theory')
    plate = square()
    plate%xyz(:, 2) = plate%xyz(:, 1)
    call refused(plate, FINITES_COINCIDENT, 'two nodes coincide')
    plate = square()
    plate%xyz(:, 2) = [2d0, 0d0, 0d0]
    plate%xyz(:, 3) = [1d0, 0d0, 0d0]
    call refused(plate, FINITES_DEGENERATE, 'degenerate')
    plate = square()
    plate%E = 1d31
    call refused(plate, FINITES_RANGE, '1e30')
    plate = square()
    plate%xyz(2, 3) = ieee_value(0d0, ieee_quiet_nan)
    call refused(plate, FINITES_NAN, 'NaN')
  end subroutine refused_plates

  type(finites_plate_t) function square() result(plate)
    call finites_plate_init(plate)
    plate%xyz = reshape([0d0, 0d0, 0d0, 1d0, 0d0, 0d0, 1d0, 1d0, 0d0, 0d0, 1d0, 0d0], [3, 4])
    plate%thickness = 0.1d0
    plate%E = 1d9
    plate%nu = 0.3d0
  end function square

  subroutine refused(plate, status, words)
    type(finites_plate_t), intent(in) :: plate
    integer(c_int32_t), intent(in) :: status
    character(*), intent(in) :: words
    real(c_double) :: K(24, 24)
    character(:), allocatable :: text
    integer(c_int32_t) :: answer

    K = -7
    answer = finites_plate_stiffness(plate, K)
    text = finites_message(answer)
    if (answer == status .and. index(text, words) > 0 .and. all(abs(K + 7) <= 0)) return
    print '(a, i0, a, i0, 2a)', 'status ', answer, ' in place of ', status, ': ', text
    failures = failures + 1
  end subroutine refused

  subroutine plates()
    type(finites_plate_t) :: plate
    type(finites_plate_results_t) :: results
    type(finites_plate_measures_t) :: measures
    real(c_double) :: K(24, 24), F(6, 4)
    plate = rectangle()
    call succeeds('stiffness', finites_plate_stiffness(plate, K))
    call expect('K(1, 1)', K(1, 1), thick * young * (1 / (6 * (1 - poisson**2)) + 1 / (4 * (1 + poisson))), 1d-3)
    call expect('symmetry', maxval(abs(K - transpose(K))), 0d0, 0d0)
    call succeeds('forces', finites_plate_forces(plate, stretched(1d-3), F))
    call expect('pull', F(1, 2), young * 1d-3 * thick * high / 2, 1d-3)
    call succeeds('results', finites_plate_result(plate, stretched(1d-3), results=results))
    call expect('stress at the top of point 3', results%point(3)%top%stress(1), young * 1d-3, 1d-1)
    call expect('force of node 4', results%node(4)%force(1), young * 1d-3 * thick, 1d-2)
    call succeeds('measures', finites_plate_measure(plate, measures))
    call expect('area', measures%area, wide * high, 1d-12)

    plate%thickness = 0
    K(1, 1) = -1
    call expect('status', real(finites_plate_stiffness(plate, K), c_double), real(FINITES_THICKNESS, c_double), 0d0)
    call expect('nothing is written', K(1, 1), -1d0, 0d0)
  end subroutine plates

  ! Arguments that are null in C are left out.
  subroutine loads_without_an_argument()
    real(c_double) :: F(6, 4)
    call succeeds('load in element axes', finites_plate_surface_load(rectangle(), local=[0d0, 0d0, 3d0], F=F))
    call expect('sum of the load', sum(F(3, :)), 3 * wide * high, 1d-12)
    call succeeds('point load', finites_plate_point_load(rectangle(), [1d0, 0.5d0, 0d0], global=[0d0, 0d0, -2d0], F=F))
    call expect('sum of the point load', sum(F(3, :)), -2d0, 1d-12)
  end subroutine loads_without_an_argument

  subroutine members()
    type(finites_truss_t) :: truss
    type(finites_cable_t) :: cable
    type(finites_spring_t) :: spring
    type(finites_link_t) :: link
    type(finites_beam_load_t) :: load
    type(finites_beam_point_load_t), target :: points(1)
    type(finites_beam_section_t) :: sections(2)
    real(c_double) :: K(12, 12), F(12), K6(6, 6), F6(6), axial, xyz(3, 3)
    call succeeds('beam', finites_beam_stiffness(cantilever(), K))
    call expect('12 E I / L^3', K(3, 3), 12 * young * 8d-6 / 64, 1d-6)
    points(1)%x = 1
    points(1)%force(3) = -8
    load%line(3) = -10
    load%points = c_loc(points)
    load%point_count = 1
    call succeeds('beam loads', finites_beam_loads(cantilever(), load, F))
    call expect('sum of the loads', F(3) + F(9), -48d0, 1d-12)
    F = 0
    F(7) = 1d-3
    call succeeds('sections', finites_beam_sections(cantilever(), F, count=2_c_int32_t, x=[0d0, 2d0], &
      sections=sections))
    call expect('axial force', sections(2)%force(1), young * 0.01d0 * 1d-3 / 4, 1d-6)

    call finites_truss_init(truss)
    truss%xyz(3, 2) = 5
    truss%E = young
    truss%area = 1d-3
    call succeeds('truss', finites_truss_stiffness(truss, K6))
    call expect('E A / L', K6(3, 3), young * 1d-3 / 5, 1d-6)
    call succeeds('axial', finites_truss_axial_force(truss, [0d0, 0d0, 0d0, 0d0, 0d0, 1d-3], 0d0, axial))
    call expect('axial force of the truss', axial, young * 1d-6 / 5, 1d-6)

    call finites_cable_init(cable)
    cable%xyz(1, 2) = 10
    cable%E = young
    cable%area = 1d-4
    cable%length = 10.5d0
    cable%load(3) = -8
    call succeeds('cable', finites_cable_forces(cable, F6))
    call expect('the nodes carry the cable', F6(3) + F6(6), 84d0, 1d-6)
    call succeeds('shape', finites_cable_shape(cable, 3_c_int32_t, [0d0, 5.25d0, 10.5d0], xyz))
    call expect('middle of the cable', xyz(1, 2), 5d0, 1d-9)

    call finites_spring_init(spring)
    spring%k(6) = 7
    call succeeds('spring', finites_spring_stiffness(spring, K))
    call expect('rotation of the spring', K(12, 6), -7d0, 0d0)
    call finites_link_init(link)
    link%xyz(1, 2) = 2
    link%k(1) = 5
    call succeeds('link', finites_link_stiffness(link, K))
    call expect('link along x', K(7, 7), 5d0, 1d-12)
  end subroutine members

  subroutine yield_surface()
    type(finites_yield_t) :: surface
    real(c_double) :: value
    integer(c_int32_t) :: count
    surface%curve = FINITES_SEGMENTS
    surface%forces = 7
    surface%capacity = [2d6, 3d4, 8d4]
    call succeeds('yield', finites_yield_value(surface, [1d6, 0d0, 4d4], value))
    call expect('p + 8/9 m', value, 0.5d0 + 8d0 / 9d0 * 0.5d0, 1d-8)  ! 8/9 is of single precision
    call succeeds('equations', finites_yield_equations(surface, [1d6, 1d3, 4d4], count))
    call expect('active equations', real(count, c_double), 1d0, 0d0)
  end subroutine yield_surface

  subroutine solids()
    type(finites_solid_t) :: solid
    type(finites_solid_results_t) :: results
    real(c_double) :: u(3, 8), KG(24, 24), stress(6, 8), F(3, 8)
    call finites_solid_init(solid)
    solid%xyz = reshape([0d0, 0d0, 0d0, 1d0, 0d0, 0d0, 1d0, 1d0, 0d0, 0d0, 1d0, 0d0, &
      0d0, 0d0, 1d0, 1d0, 0d0, 1d0, 1d0, 1d0, 1d0, 0d0, 1d0, 1d0], [3, 8])
    solid%E = young
    solid%nu = poisson
    u = 0
    u(1, :) = 1d-3 * solid%xyz(1, :)
    call succeeds('results', finites_solid_result(solid, u, 0d0, results))
    call expect('uniaxial strain', results%point(1)%stress(1), &
      young * 1d-3 * (1 - poisson) / ((1 + poisson) * (1 - 2 * poisson)), 1d2)
    stress = 0
    call succeeds('geometric', finites_solid_geometric_of_stresses(solid, stress, KG))
    call expect('without stress', maxval(abs(KG)), 0d0, 0d0)
    call succeeds('face', finites_solid_face_load(solid, 2_c_int32_t, pressure=8d0, F=F))
    call expect('pressure on the upper face', sum(F(3, :)), -8d0, 1d-12)
  end subroutine solids

  ! Routines of finites.h and of Tarnix.
  subroutine routines()
    real(c_double) :: record(100), xi, eta, detj, weight, j(4), g(4)
    integer(c_int64_t) :: offset, bytes
    record = 0
    record(32) = 7
    call UPDATE_PRINCIPAUX_RES100_PLA_DBL(record)
    call expect('first principal stress', record(RES100_PRINCIPAL_BOTTOM + 1), 7d0, 1d-14)
    call GAUSS_INT_2D(RULE_FULL, 1_c_int32_t, 3_c_int32_t, [1d0, 1d0, 0d0, 5d0, 1d0, 0d0, 1d0, 4d0, 0d0], xi, eta, &
      detj, weight, j(1), j(2), j(3), j(4), g(1), g(2), g(3), g(4))
    call expect('twice the area', detj, 12d0, 0d0)
    call TARNIX_RECORD_LAYOUT('PLATE_RECORD', 12_c_int32_t, 'AREA', 4_c_int32_t, offset, bytes)
    call expect('place of AREA', real(offset, c_double), 28d0, 0d0)
  end subroutine routines

end program module_test
