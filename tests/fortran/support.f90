! support.f90: what the tests of the module share: comparison of numbers, and the elements that they try.
module support
  use finites_library
  implicit none
  real(c_double), parameter :: young = 210d9, poisson = 0.3d0, wide = 2, high = 1, thick = 0.02d0
  integer :: failures = 0

contains

  subroutine expect(what, actual, expected, tolerance)
    character(*), intent(in) :: what
    real(c_double), intent(in) :: actual, expected, tolerance
    if (abs(actual - expected) <= tolerance) return
    print '(a, ": actual ", es25.17, ", expected ", es25.17)', what, actual, expected
    failures = failures + 1
  end subroutine expect

  subroutine succeeds(what, status)
    character(*), intent(in) :: what
    integer(c_int32_t), intent(in) :: status
    if (status == FINITES_OK) return
    print '(4a)', what, ': ', finites_message(status)
    failures = failures + 1
  end subroutine succeeds

  function rectangle() result(plate)
    type(finites_plate_t) :: plate
    call finites_plate_init(plate)
    plate%xyz = reshape([0d0, 0d0, 0d0, wide, 0d0, 0d0, wide, high, 0d0, 0d0, high, 0d0], [3, 4])
    plate%thickness = thick
    plate%E = young
    plate%nu = poisson
  end function rectangle

  ! Displacements of a pull along x.
  function stretched(strain) result(u)
    real(c_double), intent(in) :: strain
    real(c_double) :: u(6, 4)
    u = 0
    u(1, 2:3) = strain * wide
    u(2, 3:4) = -poisson * strain * high
  end function stretched

  function cantilever() result(beam)
    type(finites_beam_t) :: beam
    call finites_beam_init(beam)
    beam%xyz(1, 2) = 4
    beam%E = young
    beam%G = young / 2.6d0
    beam%area = 0.01d0
    beam%Iz = 8d-6
    beam%Iy = 3d-6
    beam%J = 1d-6
  end function cantilever

end module support
