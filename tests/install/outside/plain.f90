! plain.f90: plain calls from Fortran, by the installed module and libraries alone.
program plain
  use finites_library
  implicit none
  real(c_double), parameter :: shear = 210d9 / 2.6d0, direct = 210d9 / 0.91d0
  type(finites_plate_t) :: plate
  type(finites_truss_t) :: truss
  real(c_double) :: K(24, 24), of_truss(6, 6)

  call finites_plate_init(plate)
  plate%xyz = reshape([0d0, 0d0, 0d0, 2d0, 0d0, 0d0, 2d0, 1d0, 0d0, 0d0, 1d0, 0d0], [3, 4])
  plate%thickness = 0.02d0
  plate%E = 210d9
  plate%nu = 0.3d0
  call expect('status of the stiffness', real(finites_plate_stiffness(plate, K), c_double), real(FINITES_OK, c_double))
  call expect('K(1, 1) of the plate', K(1, 1), 0.02d0 * (direct / 6 + shear / 2))

  K(1, 1) = -1
  plate%thickness = 0
  call expect('status without thickness', real(finites_plate_stiffness(plate, K), c_double), &
    real(FINITES_THICKNESS, c_double))
  call expect('nothing is written', K(1, 1), -1d0)

  call finites_truss_init(truss)
  truss%xyz(2, 2) = 5
  truss%E = 210d9
  truss%area = 1d-3
  call expect('status of the truss', real(finites_truss_stiffness(truss, of_truss), c_double), &
    real(FINITES_OK, c_double))
  call expect('K(2, 2) of the truss', of_truss(2, 2), 210d9 * 1d-3 / 5)

contains

  subroutine expect(what, actual, expected)
    character(*), intent(in) :: what
    real(c_double), intent(in) :: actual, expected
    if (abs(actual - expected) <= 1d-12 * abs(expected)) return
    print *, what, ': actual', actual, ', expected', expected
    error stop 1
  end subroutine expect
end program plain
