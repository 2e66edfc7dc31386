! batches_test.f90: batches through the module: structs by value, arrays by their address. Silent when all is well; it
! stops with status 1 otherwise.
program batches_test
  use support
  implicit none

  call batch_of_plates()
  if (failures > 0) error stop 1

contains

  subroutine batch_of_plates()
    type(finites_plates_t) :: batch
    real(c_double), target :: xyz(3, 4, 2), h(2), u(6, 4)
    real(c_double) :: K(24, 24, 2), one(24, 24), F(6, 4, 2)
    integer(c_int64_t) :: failed
    batch%common = rectangle()
    batch%count = 2
    xyz(:, :, 1) = batch%common%xyz
    xyz(:, :, 2) = 2 * batch%common%xyz
    h = [thick, 2 * thick]
    batch%xyz = finites_reals_of(xyz, 12)
    batch%thickness = finites_reals_of(h, 1)
    call succeeds('batch', finites_plates_stiffness(batch, 0_c_int64_t, 2_c_int64_t, K, 576_c_int64_t))
    call succeeds('single', finites_plate_stiffness(rectangle(), one))
    call expect('first of the batch', maxval(abs(K(:, :, 1) - one)), 0d0, 0d0)
    call expect('second of the batch', K(1, 1, 2), 2 * one(1, 1), 1d-3)
    u = stretched(1d-3)
    call succeeds('forces', finites_plates_forces(batch, 0_c_int64_t, 2_c_int64_t, finites_reals_of(u, 0), F, &
      24_c_int64_t))
    call expect('pull of the first', F(1, 2, 1), young * 1d-3 * thick * high / 2, 1d-3)
    h(2) = -1
    call expect('status', real(finites_plates_stiffness(batch, 0_c_int64_t, 2_c_int64_t, K, 576_c_int64_t, failed), &
      c_double), real(FINITES_THICKNESS, c_double), 0d0)
    call expect('element at fault', real(failed, c_double), 1d0, 0d0)
  end subroutine batch_of_plates

end program batches_test
