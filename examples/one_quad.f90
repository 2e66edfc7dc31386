! one_quad.f90: the stiffness of a thick quadrilateral by a plain call from Fortran.
program one_quad
  use finites_library
  implicit none
  type(finites_plate_t) :: plate
  real(c_double) :: K(24, 24)
  integer(c_int32_t) :: status

  call finites_plate_init(plate)  ! a thick quadrilateral
  plate%xyz = reshape([0d0, 0d0, 0d0,   2d0, 0d0, 0d0,   2d0, 1d0, 0d0,   0d0, 1d0, 0d0], [3, 4])
  plate%thickness = 0.02d0
  plate%E = 210d9
  plate%nu = 0.3d0
  status = finites_plate_stiffness(plate, K)
  if (status /= FINITES_OK) error stop finites_message(status)
  print '(a, es14.7)', 'force along x of a unit displacement of node 1 along x:', K(1, 1)
end program one_quad
