! fortran_caller.f90: a Fortran program that calls the exported routines through iso_c_binding. The answers are worked
! out by hand. Silent when all is well; it stops with status 1 otherwise.
program fortran_caller
  use, intrinsic :: iso_c_binding, only: c_int32_t, c_double, c_float, c_char, c_ptr, c_f_pointer
  implicit none

  interface
    subroutine finites(op, elem, k, a, n, data, forces, matrix) bind(c, name="FINITES")
      import :: c_int32_t, c_double
      integer(c_int32_t), intent(inout) :: op
      integer(c_int32_t), intent(in) :: elem, k, n
      real(c_double), intent(inout) :: a(*), data(*)
      real(c_double), intent(inout) :: forces(24), matrix(24, 24)
    end subroutine finites

    subroutine info_finites(elem, a, n, kind, behav, parts) bind(c, name="INFO_FINITES")
      import :: c_int32_t, c_double
      integer(c_int32_t), intent(in) :: elem, n
      real(c_double), intent(in) :: a(*)
      integer(c_int32_t), intent(out) :: kind, behav, parts
    end subroutine info_finites

    subroutine gauss_int_2d(rule, point, nodes, xyz, xi, eta, detj, weight, j11, j12, j21, j22, g11, g12, g21, g22) &
        bind(c, name="GAUSS_INT_2D")
      import :: c_int32_t, c_double
      integer(c_int32_t), intent(in) :: rule, point, nodes
      real(c_double), intent(in) :: xyz(3, *)
      real(c_double), intent(out) :: xi, eta, detj, weight, j11, j12, j21, j22, g11, g12, g21, g22
    end subroutine gauss_int_2d

    subroutine update_principaux_dbl(res) bind(c, name="UPDATE_PRINCIPAUX_RES100_PLA_DBL")
      import :: c_double
      real(c_double), intent(inout) :: res(*)
    end subroutine update_principaux_dbl

    subroutine update_principaux(res) bind(c, name="UPDATE_PRINCIPAUX_RES100_PLA")
      import :: c_float
      real(c_float), intent(inout) :: res(*)
    end subroutine update_principaux

    subroutine finites_solid_3d(op, ielem, ioff, a, ndim, g, f, nn, k, ierr, msg) bind(c, name="FINITES_SOLID_3D")
      import :: c_int32_t, c_double, c_char
      integer(c_int32_t), intent(in) :: op, ielem, ioff, ndim, nn
      real(c_double), intent(in) :: a(*), g(3)
      real(c_double), intent(inout) :: f(3, *), k(24, 24)
      integer(c_int32_t), intent(out) :: ierr
      character(kind=c_char), intent(inout) :: msg(500)
    end subroutine finites_solid_3d

    subroutine boundary_model_open_solid(a, n, ioff) bind(c)
      import :: c_ptr, c_int32_t
      type(c_ptr), intent(out) :: a
      integer(c_int32_t), intent(out) :: n, ioff
    end subroutine boundary_model_open_solid

    subroutine boundary_model_open(a, n) bind(c)
      import :: c_ptr, c_int32_t
      type(c_ptr), intent(out) :: a
      integer(c_int32_t), intent(out) :: n
    end subroutine boundary_model_open

    subroutine boundary_model_close() bind(c)
    end subroutine boundary_model_close
  end interface

  type(c_ptr) :: address
  integer(c_int32_t) :: n, entry
  real(c_double), pointer :: a(:)
  integer :: failures

  failures = 0
  call boundary_model_open(address, n)
  call c_f_pointer(address, a, [n])
  call classify()
  call surface_load()
  call integration_points()
  call principal_stresses()
  call boundary_model_open_solid(address, n, entry)
  call c_f_pointer(address, a, [n])
  call solid()
  call boundary_model_close()
  if (failures > 0) stop 1

contains

  subroutine expect(what, actual, expected, tolerance)
    character(*), intent(in) :: what
    real(c_double), intent(in) :: actual, expected, tolerance
    if (abs(actual - expected) <= tolerance) return
    print '(a, ": actual ", es25.17, ", expected ", es25.17)', what, actual, expected
    failures = failures + 1
  end subroutine expect

  subroutine classify()
    integer(c_int32_t) :: kind, behav, parts
    call info_finites(1_c_int32_t, a, n, kind, behav, parts)
    call expect("kind of the shell", real(kind, c_double), 10d0, 0d0)
    call expect("behaviour of the shell", real(behav, c_double), 0d0, 0d0)
    call expect("parts of the shell", real(parts, c_double), 3d0, 0d0)
    call info_finites(2_c_int32_t, a, n, kind, behav, parts)
    call expect("kind of the membrane", real(kind, c_double), 12d0, 0d0)
    call expect("parts of the membrane", real(parts, c_double), 1d0, 0d0)
  end subroutine classify

  ! A load of (0.5, -1, 2) on the area of 3: the nodal forces add up to (1.5, -3, 6).
  subroutine surface_load()
    integer(c_int32_t) :: op, k
    real(c_double) :: data(12), forces(24), matrix(24, 24)
    op = 4
    k = int(a(100), c_int32_t)
    data = 0d0
    data(1:3) = [0.5d0, -1d0, 2d0]
    call finites(op, 1_c_int32_t, k, a, n, data, forces, matrix)
    call expect("sum of the forces, x", sum(forces(1::6)), 1.5d0, 1d-12)
    call expect("sum of the forces, y", sum(forces(2::6)), -3d0, 1d-12)
    call expect("sum of the forces, z", sum(forces(3::6)), 6d0, 1d-12)
  end subroutine surface_load

  ! The weights of the 2 by 2 rule times the determinants add up to the area of the trapezoid, (4 + 2) / 2 * 3.
  subroutine integration_points()
    real(c_double) :: xyz(3, 4), area, xi, eta, detj, weight, j11, j12, j21, j22, g11, g12, g21, g22
    integer(c_int32_t) :: point
    xyz = reshape([0d0, 0d0, 0d0, 4d0, 0d0, 0d0, 3d0, 3d0, 0d0, 1d0, 3d0, 0d0], [3, 4])
    area = 0d0
    do point = 1, 4
      call gauss_int_2d(1_c_int32_t, point, 4_c_int32_t, xyz, xi, eta, detj, weight, j11, j12, j21, j22, &
        g11, g12, g21, g22)
      area = area + weight * detj
      call expect("Jacobian times its inverse", g11 * j11 + g12 * j21, 1d0, 1d-15)
    end do
    call expect("area", area, 9d0, 1d-13)
  end subroutine integration_points

  ! Bottom: pure shear of 7: principal stresses 7 and -7, largest shear 7.
  subroutine principal_stresses()
    real(c_double) :: wide(100)
    real(c_float) :: narrow(100)
    wide = 0d0
    wide(32) = 7d0
    narrow = real(wide, c_float)
    call update_principaux_dbl(wide)
    call update_principaux(narrow)
    call expect("first principal stress", wide(43), 7d0, 1d-14)
    call expect("second principal stress", wide(44), -7d0, 1d-14)
    call expect("largest shear", wide(45), 7d0, 1d-14)
    call expect("first principal stress, single", real(narrow(43), c_double), 7d0, 1d-6)
  end subroutine principal_stresses

  ! A box of volume 30: its weight adds up, a stiffness column of a rigid motion is zero, and five nodes are no solid.
  subroutine solid()
    real(c_double) :: f(3, 8), k(24, 24)
    character(kind=c_char) :: msg(500)
    integer(c_int32_t) :: ierr
    integer :: i
    msg = "~"
    call finites_solid_3d(41_c_int32_t, 1_c_int32_t, entry, a, n, [0d0, 0d0, -2d0], f, 8_c_int32_t, k, ierr, msg)
    call expect("status of the load", real(ierr, c_double), 0d0, 0d0)
    call expect("load on the solid", sum(f(3, :)), -60d0, 1d-12)
    call finites_solid_3d(1_c_int32_t, 1_c_int32_t, entry, a, n, [0d0, 0d0, 0d0], f, 8_c_int32_t, k, ierr, msg)
    do i = 1, 3
      call expect("forces of a rigid motion", maxval(abs(sum(k(:, i::3), dim=2))), 0d0, 1d-9)
    end do
    call expect("symmetry", maxval(abs(k - transpose(k))), 0d0, 1d-12)
    call expect("message after success", real(count(msg /= "~"), c_double), 0d0, 0d0)
    call finites_solid_3d(1_c_int32_t, 1_c_int32_t, entry, a, n, [0d0, 0d0, 0d0], f, 5_c_int32_t, k, ierr, msg)
    call expect("status of five nodes", real(ierr, c_double), 1228d0, 0d0)
    call expect("the message is filled", real(count(msg == "~"), c_double), 0d0, 0d0)
  end subroutine solid

end program fortran_caller
