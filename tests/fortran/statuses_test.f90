! statuses_test.f90: what is wrong with an element, through the module: each call answers with the status for it, and
! writes nothing. Silent when all is well; it stops with status 1 otherwise.
program statuses_test
  use, intrinsic :: ieee_arithmetic, only: ieee_value, ieee_quiet_nan
  use support
  implicit none
  call plates()
  call beams()
  call cables()
  call others()
  if (failures > 0) error stop 1

contains

  subroutine refused(what, actual, expected)
    character(*), intent(in) :: what
    integer(c_int32_t), intent(in) :: actual, expected
    if (actual == expected) return
    print '(5a)', what, ': actual "', finites_message(actual), '", expected "', finites_message(expected)//'"'
    failures = failures + 1
  end subroutine refused

  subroutine of_plate(what, plate, expected)
    character(*), intent(in) :: what
    type(finites_plate_t), intent(in) :: plate
    integer(c_int32_t), intent(in) :: expected
    real(c_double) :: K(24, 24)
    K = -1
    call refused(what, finites_plate_stiffness(plate, K), expected)
    call expect(what//' writes nothing', maxval(abs(K + 1)), 0d0, 0d0)
  end subroutine of_plate

  subroutine plates()
    type(finites_plate_t) :: plate
    plate = rectangle()
    plate%E = ieee_value(1d0, ieee_quiet_nan)
    call of_plate('NaN', plate, FINITES_NAN)
    plate = rectangle()
    plate%thickness = 2d30
    call of_plate('a large number', plate, FINITES_RANGE)
    plate = rectangle()
    plate%nodes = 5
    call of_plate('five nodes', plate, FINITES_NODES)
    plate = rectangle()
    plate%theory = 7
    call of_plate('an unknown theory', plate, FINITES_BAD_CODE)
    plate = rectangle()
    plate%xyz(:, 2) = plate%xyz(:, 1)
    call of_plate('two nodes in one place', plate, FINITES_COINCIDENT)
    plate = rectangle()
    plate%xyz(1:2, 3) = 0.1d0
    call of_plate('a re-entrant corner', plate, FINITES_DEGENERATE)
    plate = rectangle()
    plate%thickness = 0
    call of_plate('no thickness', plate, FINITES_THICKNESS)
    plate = rectangle()
    plate%E = -1
    call of_plate('a negative modulus', plate, FINITES_MODULUS)
    plate = rectangle()
    plate%nu = 0.6d0
    call of_plate('a large ratio', plate, FINITES_POISSON)
    plate = rectangle()
    plate%bending_factor = -1
    call of_plate('a negative factor', plate, FINITES_FACTOR)
    plate = rectangle()
    plate%density = -1
    call of_plate('a negative density', plate, FINITES_DENSITY)
  end subroutine plates

  subroutine beams()
    type(finites_beam_t) :: beam
    type(finites_beam_load_t) :: load
    real(c_double) :: K(12, 12), F(12)
    beam = cantilever()
    beam%up = [1d0, 0d0, 0d0]
    call refused('up along the beam', finites_beam_stiffness(beam, K), FINITES_ORIENTATION)
    beam = cantilever()
    beam%J = 0
    call refused('no torsion constant', finites_beam_stiffness(beam, K), FINITES_SECTION)
    beam = cantilever()
    beam%fixity_z(2) = 1.5d0
    call refused('a fixity above 1', finites_beam_stiffness(beam, K), FINITES_FIXITY)
    beam = cantilever()
    beam%release_y = 3
    call refused('an unknown release', finites_beam_stiffness(beam, K), FINITES_RELEASE)
    beam = cantilever()
    beam%fixity_z = 0
    beam%release_y = 1
    load%line_local(2) = 1
    call refused('a load on a mechanism', finites_beam_loads(beam, load, F), FINITES_MECHANISM)
  end subroutine beams

  function hanging() result(cable)
    type(finites_cable_t) :: cable
    call finites_cable_init(cable)
    cable%xyz(1, 2) = 10
    cable%E = young
    cable%area = 1d-4
    cable%length = 10.5d0
    cable%load(3) = -8
  end function hanging

  subroutine cables()
    type(finites_cable_t) :: cable
    real(c_double) :: F(6)
    cable = hanging()
    call succeeds('cable', finites_cable_forces(cable, F))
    cable%length = 0
    call refused('no length', finites_cable_forces(cable, F), FINITES_LENGTH)
    cable = hanging()
    cable%load = 0
    call refused('slack without load', finites_cable_forces(cable, F), FINITES_SLACK)
    cable = hanging()
    cable%E = 1d30
    cable%area = 1d30
    cable%length = 1d-300
    call refused('no equilibrium', finites_cable_forces(cable, F), FINITES_NO_CONVERGENCE)
    cable = hanging()
    cable%E = 1d-200
    cable%area = 1d-200
    call refused('an answer beyond all numbers', finites_cable_forces(cable, F), FINITES_RESULT)
  end subroutine cables

  subroutine others()
    type(finites_plate_t) :: membrane
    type(finites_plastic_t) :: plastic
    type(finites_link_t) :: link
    type(c_ptr) :: state
    real(c_double) :: K(12, 12)
    call finites_link_init(link)
    link%xyz(1, 2) = 2
    link%k(2) = -1
    call refused('a negative stiffness', finites_link_stiffness(link, K), FINITES_STIFFNESS)
    plastic%model = FINITES_LAYERED
    plastic%layers = 5
    call refused('no yield stress', finites_plate_state_create(rectangle(), plastic, state), FINITES_YIELD)
    plastic%yield_stress = 235d6
    plastic%hardening = young
    call refused('hardening as stiff as E', finites_plate_state_create(rectangle(), plastic, state), FINITES_HARDENING)
    plastic%hardening = 0
    plastic%layers = 4
    call refused('four layers', finites_plate_state_create(rectangle(), plastic, state), FINITES_LAYERS)
    plastic%layers = 5
    membrane = rectangle()
    membrane%theory = FINITES_MEMBRANE
    call refused('a membrane', finites_plate_state_create(membrane, plastic, state), FINITES_STATE)
    call refused('no state', finites_plate_state_accept(c_null_ptr), FINITES_NULL)
  end subroutine others
end program statuses_test
