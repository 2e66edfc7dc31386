! calls_test.f90: the plain calls that module_test.f90 leaves out, each with all its arguments, and every argument that
! may be left out left out. Silent when all is well; it stops with status 1 otherwise.
program calls_test
  use support
  implicit none

  call statuses()
  call plates()
  call states()
  call sections()
  call beams()
  call trusses()
  call cables_links_springs()
  call solids()
  call surfaces()
  call batches()
  call checks()
  if (failures > 0) error stop 1

contains

  subroutine same(what, a, b, size)
    character(*), intent(in) :: what
    real(c_double), intent(in) :: a(:), b(:), size
    call expect(what, maxval(abs(a - b)), 0d0, 1d-9 * size)
  end subroutine same

  subroutine says(status, word)
    integer(c_int32_t), intent(in) :: status
    character(*), intent(in) :: word
    if (index(finites_message(status), word) > 0) return
    print '(i0, 4a)', status, ' says "', finites_message(status), '" and not ', word
    failures = failures + 1
  end subroutine says

  ! Every status has its sentence, and a number that is none has one of its own.
  subroutine statuses()
    integer(c_int32_t) :: i, j
    call says(FINITES_NULL, 'null')
    call says(FINITES_NAN, 'NaN')
    call says(FINITES_NODES, 'nodes')
    call says(FINITES_COINCIDENT, 'coincide')
    call says(FINITES_DEGENERATE, 'degenerate')
    call says(FINITES_ORIENTATION, 'parallel')
    call says(FINITES_THICKNESS, 'thickness')
    call says(FINITES_MODULUS, 'modulus')
    call says(FINITES_POISSON, 'Poisson')
    call says(FINITES_FACTOR, 'factor')
    call says(FINITES_DENSITY, 'density')
    call says(FINITES_SECTION, 'area')
    call says(FINITES_FIXITY, 'fixity')
    call says(FINITES_RELEASE, 'release')
    call says(FINITES_LENGTH, 'length')
    call says(FINITES_STIFFNESS, 'stiffness of a link')
    call says(FINITES_SLACK, 'slack')
    call says(FINITES_NO_CONVERGENCE, 'equilibrium')
    call says(FINITES_YIELD, 'yield stress')
    call says(FINITES_HARDENING, 'hardening')
    call says(FINITES_LAYERS, 'layers')
    call says(FINITES_RETURN, 'return')
    call says(FINITES_MECHANISM, 'mechanism')
    call says(FINITES_MEMORY, 'memory')
    call says(FINITES_STATE, 'plastic state')
    do i = FINITES_OK, FINITES_RESULT + 1
      do j = FINITES_OK, i - 1
        if (finites_message(i) == finites_message(j)) call says(i, 'a sentence of its own')
      end do
    end do
  end subroutine statuses

  ! A mass moved along x has m; KG of no displacement is none; a load has its sum.
  subroutine plates()
    type(finites_plate_t) :: plate
    type(finites_location_t) :: location
    type(finites_plate_results_t) :: cold, warm
    real(c_double) :: M(24, 24), KG(24, 24), K(24, 24), F(6, 4), u(6, 4), forces(6, 4)
    plate = rectangle()
    plate%density = 5
    plate%expansion = 1d-5
    call succeeds('mass', finites_plate_mass(plate, M))
    call expect('mass', sum(M(1::6, 1::6)), 5 * wide * high * thick, 1d-12)
    u = 0
    u(3, 2:3) = 0.01d0 * wide
    u(5, :) = -0.01d0
    forces = 0
    forces(1, :) = 100
    call succeeds('geometric of forces', finites_plate_geometric_of_forces(plate, forces, KG))
    call expect('N slope^2 A', dot_product(reshape(u, [24]), matmul(KG, reshape(u, [24]))), 1d-2 * wide * high, 1d-9)
    call succeeds('geometric', finites_plate_geometric(plate, stretched(1d-3), KG))
    call expect('the same of the displacements', dot_product(reshape(u, [24]), matmul(KG, reshape(u, [24]))), &
      1d-4 * young * 1d-3 * thick * wide * high, 1d-3)
    call succeeds('body', finites_plate_body_load(plate, [1d0, 2d0, 3d0], F))
    call expect('weight', sum(F(3, :)), 3 * wide * high * thick, 1d-12)
    call succeeds('temperature', finites_plate_temperature_load(plate, 20d0, 0d0, F))
    call succeeds('stiffness', finites_plate_stiffness(plate, K))
    u = 0
    u(1, 2:3) = 1d-5 * 20 * wide
    u(2, 3:4) = 1d-5 * 20 * high
    call same('free expansion', reshape(F, [24]), matmul(K, reshape(u, [24])), maxval(abs(F)))
    call succeeds('results', finites_plate_result(plate, u, results=cold))
    call succeeds('warm results', finites_plate_result(plate, u, [20d0, 0d0], warm))
    call expect('cold', cold%point(1)%force(1), young / (1 - poisson) * 2d-4 * thick, 1d0)
    call expect('warm', warm%point(1)%force(1), 0d0, 1d-3)
    call succeeds('surface load', finites_plate_surface_load(plate, [0d0, 0d0, 1d0], F=F))
    call expect('in global axes alone', sum(F(3, :)), wide * high, 1d-12)
    call succeeds('surface loads', finites_plate_surface_load(plate, [0d0, 0d0, 1d0], [0d0, 0d0, 2d0], F))
    call expect('in both axes', sum(F(3, :)), 3 * wide * high, 1d-12)
    call succeeds('point load', finites_plate_point_load(plate, [1d0, 0.5d0, 0d0], local=[0d0, 0d0, 4d0], F=F))
    call expect('point load in element axes', sum(F(3, :)), 4d0, 1d-12)
    call succeeds('where', finites_plate_locate(plate, [1d0, 0.5d0, 0.5d0], location))
    call expect('distance', location%distance, 0.5d0, 1d-12)
    call expect('above', real(location%above, c_double), 1d0, 0d0)
  end subroutine plates

  subroutine states()
    type(finites_plastic_t) :: plastic
    type(finites_plate_results_t) :: results
    type(finites_yield_t) :: surface
    type(c_ptr) :: state, copy
    real(c_double) :: K(24, 24), F(6, 4), KB(12, 12), elastic(12, 12), FB(12), u(12)
    plastic%model = FINITES_WHOLE_SECTION
    plastic%yield_stress = 235d6
    call succeeds('create', finites_plate_state_create(rectangle(), plastic, state))
    call succeeds('try K', finites_plate_state_try(state, stretched(1d-4), K=K))
    call succeeds('commit', finites_plate_state_commit(state, stretched(1d-4)))
    call succeeds('F', finites_plate_state_forces(state, F=F))
    call expect('pull', F(1, 2), young * 1d-4 * thick * high / 2, 1d-3)
    call succeeds('results', finites_plate_state_result(state, results))
    call expect('stored force', results%point(2)%force(1), young * 1d-4 * thick, 1d-2)
    call succeeds('K', finites_plate_state_forces(state, K=K))
    call finites_plate_state_free(state)

    surface%curve = FINITES_SINGLE
    surface%forces = 3
    surface%capacity = [1d0, 1d0, 1d9]
    u = 0
    call succeeds('create', finites_beam_state_create(cantilever(), surface, 3_c_int32_t, state))
    call succeeds('try K', finites_beam_state_try(state, u, K=KB))
    call succeeds('stiffness', finites_beam_stiffness(cantilever(), elastic))
    call same('elastic tangent', reshape(KB, [144]), reshape(elastic, [144]), maxval(elastic))
    u(9) = 1d-3
    call succeeds('copy', finites_beam_state_copy(state, copy))
    call succeeds('commit', finites_beam_state_commit(copy, u))
    call succeeds('accept', finites_beam_state_accept(copy))
    call succeeds('F', finites_beam_state_forces(copy, F=FB))
    call same('committed forces', FB, matmul(elastic, u), maxval(elastic) * 1d-3)
    call succeeds('K', finites_beam_state_forces(state, K=KB))
    call succeeds('F', finites_beam_state_forces(state, FB))
    call expect('the first state has none', maxval(abs(FB)), 0d0, 0d0)
    call finites_beam_state_free(copy)
    call finites_beam_state_free(state)
  end subroutine states

  ! A membrane force N below k = N_y: F = (N / N_y)^2 - 1.
  subroutine sections()
    type(finites_section_t) :: section
    type(finites_section_corner_t) :: corner
    real(c_double) :: D(64), excess, mixed, force(8)
    integer(c_int32_t) :: side
    integer :: i
    section%thickness = 0.1d0
    section%yield_stress = 200
    force = 0
    force(1) = 10
    call succeeds('value', finites_section_value(section, force, 0d0, excess, mixed))
    call expect('half of the force of yield', excess, -0.75d0, 1d-12)
    call expect('no moment', mixed, 0d0, 0d0)
    call succeeds('value', finites_section_value(section, force, 0d0, mixed=mixed))
    call succeeds('value', finites_section_value(section, force, 0d0, excess))
    D = 0
    do i = 1, 8
      D(9 * i - 8) = 1d4
    end do
    call succeeds('return', finites_section_return(section, D, force, 0d0, side))
    call succeeds('return', finites_section_return(section, D, force, 0d0, side, corner))
  end subroutine sections

  subroutine beams()
    type(finites_beam_t) :: beam
    type(finites_member_measures_t) :: measures
    type(finites_beam_load_t) :: load
    type(finites_beam_section_t) :: places(2)
    real(c_double) :: M(12, 12), KG(12, 12), F(12), K(12, 12), u(12)
    beam = cantilever()
    beam%density = 7
    call succeeds('mass', finites_beam_mass(beam, 1_c_int32_t, M))
    call expect('half the mass', M(7, 7), 7 * 0.01d0 * 4 / 2, 1d-12)
    call succeeds('mass', finites_beam_mass(beam, 0_c_int32_t, M))
    call expect('a third of it', M(7, 7), 7 * 0.01d0 * 4 / 3, 1d-12)
    call succeeds('KG', finites_beam_geometric_of_force(beam, 100d0, KG))
    call expect('6/5 N / L', KG(3, 3), 1.2d0 * 100 / 4, 1d-3)
    u = 0
    u(7) = 1d-3
    call succeeds('KG', finites_beam_geometric(beam, u, K))
    call expect('6/5 N / L', K(3, 3), 1.2d0 * young * 0.01d0 * 1d-3 / 4 / 4, 1d0)
    call succeeds('forces', finites_beam_forces(beam, u, F))
    call expect('E A / L', F(7), young * 0.01d0 * 1d-3 / 4, 1d-6)
    call succeeds('measures', finites_beam_measure(beam, measures))
    call expect('mass', measures%mass, 7 * 0.01d0 * 4, 1d-12)
    call expect('x', measures%axes(1, 1), 1d0, 1d-12)
    call expect('y', measures%axes(3, 2), 1d0, 1d-12)
    load%line(3) = -6
    u = 0
    call succeeds('sections', finites_beam_sections(beam, u, load, 2_c_int32_t, [0d0, 4d0], places))
    ! Up on the left end, the part beyond the first place hangs on it: q L / 2 downwards.
    call expect('shear', places(1)%force(2), -12d0, 1d-9)
    call expect('shear at the other end', places(2)%force(2), 12d0, 1d-9)
  end subroutine beams

  subroutine trusses()
    type(finites_truss_t) :: truss
    type(finites_member_measures_t) :: measures
    real(c_double) :: M(6, 6), KG(6, 6), F(6), u(6)
    call finites_truss_init(truss)
    truss%xyz(1, 2) = 2
    truss%E = young
    truss%area = 1d-3
    truss%density = 9
    truss%expansion = 1d-5
    call succeeds('mass', finites_truss_mass(truss, 1_c_int32_t, M))
    call expect('half', M(1, 1), 9d-3, 1d-15)
    call succeeds('KG', finites_truss_geometric_of_force(truss, 30d0, KG))
    call expect('N / L', KG(2, 2), 15d0, 1d-12)
    u = 0
    u(4) = 1d-3
    call succeeds('KG', finites_truss_geometric(truss, u, KG))
    call expect('N / L', KG(3, 3), young * 1d-3 * 1d-3 / 2 / 2, 1d-6)
    call succeeds('forces', finites_truss_forces(truss, u, F))
    call expect('E A / L', F(4), young * 1d-3 * 1d-3 / 2, 1d-6)
    call succeeds('loads', finites_truss_loads(truss, temperature=10d0, F=F))
    call expect('E A alpha T', F(4), young * 1d-3 * 1d-4, 1d-6)
    call succeeds('loads', finites_truss_loads(truss, [0d0, 0d0, 4d0], 0d0, F))
    call expect('q L / 2', F(6), 4d0, 1d-12)
    call succeeds('measures', finites_truss_measure(truss, measures))
    call expect('center', measures%center(1), 1d0, 1d-12)
  end subroutine trusses

  subroutine cables_links_springs()
    type(finites_cable_t) :: cable
    type(finites_spring_t) :: spring
    type(finites_link_t) :: link
    real(c_double) :: K(6, 6), F(6), tension(2), along(3), xyz(3, 3), F12(12), u(12)
    call finites_cable_init(cable)
    cable%xyz(1, 2) = 10
    cable%E = young
    cable%area = 1d-4
    cable%length = 10.5d0
    cable%load(3) = -8
    call succeeds('forces', finites_cable_forces(cable, F, tension))
    call expect('tension', tension(2), norm2(F(4:6)), 1d-6)
    call succeeds('K', finites_cable_stiffness(cable, K))
    call expect('a cable moves as a whole', maxval(abs(sum(K(:, 1::3), 2))), 0d0, 1d-6 * maxval(K))
    call succeeds('shape', finites_cable_shape(cable, 3_c_int32_t, [0d0, 5.25d0, 10.5d0], xyz, along))
    call expect('pull', along(2), F(4), 1d-6)
    call finites_spring_init(spring)
    spring%k(2) = 7
    u = 0
    u(8) = 2
    call succeeds('spring', finites_spring_forces(spring, u, F12))
    call expect('spring', F12(2), -14d0, 0d0)
    call finites_link_init(link)
    link%xyz(2, 2) = 2
    link%k(1) = 5
    call succeeds('link', finites_link_forces(link, u, F12))
    call expect('link', F12(8), 10d0, 1d-12)
  end subroutine cables_links_springs

  subroutine solids()
    type(finites_solid_t) :: cube
    type(finites_solid_measures_t) :: measures
    real(c_double) :: K(24, 24), F(24), u(3, 8)
    cube = unit_cube()
    call succeeds('K', finites_solid_stiffness(cube, K))
    u = 0
    u(1, :) = 1d-3 * cube%xyz(1, :)
    call succeeds('F', finites_solid_forces(cube, u, F))
    call same('K u', F, matmul(K, reshape(u, [24])), maxval(abs(F)))
    call succeeds('M', finites_solid_mass(cube, K))
    call expect('mass', sum(K(1::3, 1::3)), 3d0, 1d-12)
    call succeeds('KG', finites_solid_geometric(cube, u, K))
    call expect('stress along x', dot_product(reshape(u, [24]), matmul(K, reshape(u, [24]))), &
      1d-9 * young * (1 - poisson) / ((1 + poisson) * (1 - 2 * poisson)), 1d-5)
    call succeeds('body', finites_solid_body_load(cube, [1d0, 2d0, 3d0], F))
    call expect('body', sum(F(2::3)), 2d0, 1d-12)
    cube%expansion = 1d-5
    call succeeds('warm', finites_solid_temperature_load(cube, 10d0, F))
    call expect('warm', sum(F(1::3) * cube%xyz(1, :)), young * 1d-4 / (1 - 2 * poisson), 1d-3)
    call succeeds('face', finites_solid_face_load(cube, 2_c_int32_t, [5d0, 0d0, 0d0], 0d0, F))
    call expect('traction', sum(F(1::3)), 5d0, 1d-12)
    call succeeds('measures', finites_solid_measure(cube, measures))
    call expect('volume', measures%volume, 1d0, 1d-12)
  end subroutine solids

  function unit_cube() result(cube)
    type(finites_solid_t) :: cube
    call finites_solid_init(cube)
    cube%xyz = reshape([0d0, 0d0, 0d0, 1d0, 0d0, 0d0, 1d0, 1d0, 0d0, 0d0, 1d0, 0d0, &
      0d0, 0d0, 1d0, 1d0, 0d0, 1d0, 1d0, 1d0, 1d0, 0d0, 1d0, 1d0], [3, 8])
    cube%E = young
    cube%nu = poisson
    cube%density = 3
  end function unit_cube

  subroutine surfaces()
    type(finites_yield_t) :: surface
    integer(c_int32_t) :: count, segment(4)
    real(c_double) :: value(4), gradient(3, 4)
    surface%curve = FINITES_SEGMENTS
    surface%forces = 7
    surface%capacity = [2d6, 3d4, 8d4]
    call succeeds('equations', finites_yield_equations(surface, [1d6, 0d0, 4d4], count, segment, value, gradient))
    call expect('value', value(1), 0.5d0 + 4d0 / 9d0, 1d-7)
    call expect('gradient by P', gradient(1, 1), 1 / 2d6, 1d-14)
    call expect('gradient by Mz', gradient(3, 1), 8d0 / 9d0 / 8d4, 1d-12)
  end subroutine surfaces

  ! A batch of one has the answers of the single call.
  subroutine batches()
    type(finites_plates_t) :: plates
    type(finites_beams_t) :: beams
    type(finites_solids_t) :: solids
    real(c_double), target :: t(2), load(3), axial(1), u(24)
    real(c_double) :: one(24, 24), all(24, 24), F(24), FB(24), KB(12, 12), K1(12, 12)
    integer(c_int64_t) :: failed
    integer(c_int64_t), parameter :: none = 0, last = 1
    plates%common = rectangle()
    plates%common%expansion = 1d-5
    plates%count = 1
    t = [20d0, 0d0]
    load = [1d0, 2d0, 3d0]
    call succeeds('temperature', finites_plates_temperature_load(plates, none, last, finites_reals_of(t, 2), F, &
      24_c_int64_t))
    call succeeds('temperature', finites_plate_temperature_load(plates%common, 20d0, 0d0, FB))
    call expect('temperature', maxval(abs(F - FB)), 0d0, 0d0)
    call succeeds('surface', finites_plates_surface_load(plates, none, last, finites_reals_of(load, 3), &
      finites_reals_t(c_null_ptr, 0_c_int64_t), F, 24_c_int64_t, failed))
    call expect('surface', sum(F(3::6)), 3 * wide * high, 1d-12)
    call expect('none failed', real(failed, c_double), -1d0, 0d0)
    beams%common = cantilever()
    beams%count = 1
    axial = 50
    call succeeds('KG', finites_beams_geometric_of_force(beams, none, last, finites_reals_of(axial, 1), KB, &
      144_c_int64_t))
    call succeeds('KG', finites_beam_geometric_of_force(beams%common, 50d0, K1))
    call expect('KG', maxval(abs(KB - K1)), 0d0, 0d0)
    call succeeds('mass', finites_beams_mass(beams, none, last, 1_c_int32_t, KB, 144_c_int64_t))
    solids%common = unit_cube()
    solids%count = 1
    u = 0
    u(1) = 1d-3
    call succeeds('KG', finites_solids_geometric(solids, none, last, finites_reals_of(u, 24), all, 576_c_int64_t))
    call succeeds('KG', finites_solid_geometric(solids%common, u, one))
    call expect('KG', maxval(abs(all - one)), 0d0, 0d0)
    call expect('lanes', real(iand(finites_lanes(), 14_c_int32_t), c_double), real(finites_lanes(), c_double), 0d0)
  end subroutine batches

  ! An array shorter than its header has no data of a model.
  subroutine checks()
    type(finites_finding_t) :: found(4)
    real(c_double) :: A(1)
    A = 0
    call expect('check', real(finites_check_model(count=0_c_int32_t, A=A, n=1_c_int64_t, capacity=0_c_int32_t), &
      c_double), 1d0, 0d0)
    call expect('check', real(finites_check_model([1_c_int32_t], 1_c_int32_t, A, 1_c_int64_t, found, 4_c_int32_t), &
      c_double), 1d0, 0d0)
    call expect('code', real(found(1)%code, c_double), real(FINITES_FOUND_NO_MODEL_DATA, c_double), 0d0)
    call expect('check', real(finites_check_plate(1_c_int32_t, 0_c_int32_t, A, 1_c_int64_t, capacity=0_c_int32_t), &
      c_double), 1d0, 0d0)
    call expect('check', real(finites_check_member(1_c_int32_t, 1_c_int32_t, 1_c_int32_t, A, 1_c_int64_t, &
      capacity=0_c_int32_t), c_double), 1d0, 0d0)
    call expect('check', real(finites_check_solid(1_c_int32_t, A, 1_c_int64_t, capacity=0_c_int32_t), &
      c_double), 1d0, 0d0)
  end subroutine checks

end program calls_test
