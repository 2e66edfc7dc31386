! states_test.f90: plates that yield and beams with hinges through the module. Silent when all is well;
! it stops with status 1 otherwise.
program states_test
  use support
  implicit none

  call plate_that_yields()
  call beam_with_hinges()
  if (failures > 0) error stop 1

contains

  subroutine plate_that_yields()
    type(finites_plastic_t) :: plastic
    type(c_ptr) :: state, copy
    real(c_double) :: F(6, 4), elastic(6, 4), K(24, 24)
    plastic%model = FINITES_LAYERED
    plastic%layers = 5
    plastic%yield_stress = 235d6
    call succeeds('create', finites_plate_state_create(rectangle(), plastic, state))
    call succeeds('try', finites_plate_state_try(state, stretched(1d-4), F))
    call succeeds('elastic forces', finites_plate_forces(rectangle(), stretched(1d-4), elastic))
    call expect('below yield it is elastic', maxval(abs(F - elastic)), 0d0, 1d-6 * maxval(elastic))
    call succeeds('copy', finites_plate_state_copy(state, copy))
    call succeeds('commit', finites_plate_state_commit(copy, stretched(5d-3)))
    call succeeds('accept', finites_plate_state_accept(copy))
    call succeeds('forces of the copy', finites_plate_state_forces(copy, F, K))
    if (F(1, 2) <= elastic(1, 2)) failures = failures + 1
    call succeeds('forces of the state', finites_plate_state_forces(state, F))
    call expect('the copy is a state of its own', maxval(abs(F)), 0d0, 0d0)
    call finites_plate_state_free(copy)
    call finites_plate_state_free(state)
  end subroutine plate_that_yields

  subroutine beam_with_hinges()
    type(finites_yield_t) :: surface
    type(finites_hinge_t) :: ends(2)
    type(c_ptr) :: state
    real(c_double) :: F(12), u(12)
    surface%curve = FINITES_SEGMENTS
    surface%forces = 7
    surface%capacity = [2d6, 3d4, 8d4]
    call succeeds('create', finites_beam_state_create(cantilever(), surface, 3_c_int32_t, state))
    u = 0
    u(9) = 1d-3
    call succeeds('try', finites_beam_state_try(state, u, F))
    call expect('elastic', F(9), 12 * young * 8d-6 / 64 * 1d-3, 1d-6)
    call succeeds('hinges', finites_beam_state_hinges(state, ends))
    call expect('no hinge', real(ends(1)%yields + ends(2)%yields, c_double), 0d0, 0d0)
    call finites_beam_state_free(state)
  end subroutine beam_with_hinges

end program states_test
