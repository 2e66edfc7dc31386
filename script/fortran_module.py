#!/usr/bin/env python3
"""Writes bindings/fortran/finites.f90, the Fortran module, from the public headers.

    script/fortran_module.py --write          writes it
    script/fortran_module.py --check          exit status 1 where it is not what would be written
    script/fortran_module.py --layout c       prints a program that lists size of every type and place of every field as
    script/fortran_module.py --layout f90     that compiler has them; the two lists must be the same
    script/fortran_module.py --prototypes F   exit status 1 where the prototypes F, which `gfortran -fc-prototypes` makes
                                              of the module, are not those of the headers

A C declaration does not say whether a pointer is one number or an array, nor whether it may be null: what the comments
of the headers say about that stands in the tables here.
"""
import argparse
import difflib
import pathlib
import re
import sys
import textwrap

import headers

ROOT = pathlib.Path(__file__).resolve().parent.parent
MODULE = ROOT / "bindings/fortran/finites.f90"
TARNIX = ROOT / "companions/tarnix/tarnix.h"
KINDS = {"double": "real(c_double)", "float": "real(c_float)", "int32_t": "integer(c_int32_t)",
         "int64_t": "integer(c_int64_t)", "char": "character(kind=c_char)"}
STATUS = "integer(c_int32_t)"

# Arguments of the exported routines and of Tarnix that are arrays; all other pointers are to one value.
REAL_ARRAYS = set("A data forces matrix xyz res T T2 K KG M KP K11 K12 K21 K22 KB N BETA G K1 K2 D1 D2 OUT NMAT RES S U "
                  "FG R AXES F UG".split())
INTEGER_ARRAYS = {"SEG", "SEG1", "SEG2", "ID"}
ARRAYS_OF_ONE_ROUTINE = {("PHI_LINEAR_SEGMENT", "PHI")}

# Pointers of plain calls to one real, to an array of something else, and those that may be null.
ONE_NUMBER = {"value", "axial", "excess", "mixed"}
ARRAYS = {"sections", "findings", "node_ptr", "kinds"}
OPTIONAL = {
    "finites_plate_surface_load": {"global", "local"}, "finites_plate_point_load": {"global", "local"},
    "finites_plate_result": {"temperature"}, "finites_plate_state_try": {"F", "K"},
    "finites_plate_state_forces": {"F", "K"}, "finites_beam_state_try": {"F", "K"},
    "finites_beam_state_forces": {"F", "K"}, "finites_beam_sections": {"load"},
    "finites_yield_equations": {"segment", "value", "gradient"}, "finites_truss_loads": {"line"},
    "finites_cable_forces": {"tension"}, "finites_cable_shape": {"tension"}, "finites_solid_face_load": {"traction"},
    "finites_section_value": {"excess", "mixed"}, "finites_section_return": {"corner"},
    "finites_check_plate": {"findings"}, "finites_check_member": {"findings"}, "finites_check_solid": {"findings"},
    "finites_check_model": {"kinds", "findings"},
}


def is_batch(function):
    return any(argument.name == "failed" for argument in function.arguments)


class Types:
    """The structs of the headers: those of plain calls get the suffix _t, for a type and a code must not differ in
    their capitals alone (finites_yield, FINITES_YIELD)."""

    def __init__(self):
        self.records = [s for s in headers.structs(headers.CONTRACT / "records.h") if s.name != "ARRAY_DIMENSION"]
        self.plain = [s for name in headers.PLAIN for s in headers.structs(headers.CONTRACT / name)]
        self.names = {s.name: s.name.lower() for s in self.records}
        self.names |= {s.name: f"{s.name}_t" for s in self.plain}
        self.names |= {f"ARRAY_REFERENCE_{rank}": f"array_reference_{rank}" for rank in (1, 2, 3)}

    def of(self, kind):
        if kind in KINDS:
            return KINDS[kind]
        return f"type({self.names[kind]})" if kind in self.names else None


def shape(extents):
    return f"({', '.join('*' if n is None else str(n) for n in reversed(extents))})" if extents else ""


def wrapped(line, indent):
    """A statement in lines of at most 120 columns."""
    parts = textwrap.wrap(line, 116 - indent, break_long_words=False, break_on_hyphens=False)
    return [" " * (indent if i == 0 else indent + 4) + part + (" &" if i + 1 < len(parts) else "")
            for i, part in enumerate(parts)]


# ------------------------------------------------------------------------------------------ codes and types


def code_lines(path):
    for name, value in headers.codes(path):
        if "." in value:
            yield f"  real(c_double), parameter :: {name} = {value}_c_double"
        else:
            yield f"  integer(c_int32_t), parameter :: {name} = {value}"


def field_line(field, types):
    if field.stars:
        return f"    type(c_ptr) :: {field.name} = c_null_ptr"
    kind = types.of(field.type)
    start = "" if kind.startswith("type(") else " = c_null_char" if field.type == "char" else " = 0"
    return f"    {kind} :: {field.name}{shape(field.extents)}{start}"


def type_lines(struct, types):
    name = types.names[struct.name]
    yield f"  type, bind(c) :: {name}"
    for field in struct.fields:
        yield field_line(field, types)
    yield f"  end type {name}"
    yield ""


def reference_lines():
    for rank in (1, 2, 3):
        yield f"  type, bind(c) :: array_reference_{rank}"
        yield "    type(c_ptr) :: base = c_null_ptr"
        yield "    integer(c_int64_t) :: element_length = 0"
        yield "    integer(c_int32_t) :: allocated_flag = 0"
        yield f"    type(array_dimension) :: dimension({rank})"
        yield f"  end type array_reference_{rank}"
        yield ""


# ------------------------------------------------------------------------------------------ arguments


def intent(argument):
    return "intent(in)" if argument.constant else "intent(inout)"


def plain_argument(function, argument, types):
    kind = types.of(argument.type)
    if argument.type == "finites_status":
        kind = STATUS
    if argument.stars == 0 and not argument.extents:
        return f"{kind}, value :: {argument.name}"
    if kind is None:
        return f"type(c_ptr), {'value' if argument.stars == 1 else 'intent(inout)'} :: {argument.name}"
    extents = argument.extents
    many = argument.type in ("double", "char") or argument.name in ARRAYS
    many |= is_batch(function) and argument.name in ("results", "measures")
    if not extents and many and (argument.name not in ONE_NUMBER):
        extents = (None,)
    optional = argument.name in OPTIONAL.get(function.name, ()) or argument.name == "failed"
    return f"{kind}, {intent(argument)}{', optional' if optional else ''} :: {argument.name}{shape(extents)}"


def protocol_argument(function, argument, types):
    if function.name == "TARNIX_SET_EXCHANGE_AREA":
        return f"type(c_ptr), value :: {argument.name}"
    many = argument.type == "char" or (function.name, argument.name) in ARRAYS_OF_ONE_ROUTINE
    many |= argument.type in ("double", "float") and argument.name in REAL_ARRAYS
    many |= argument.type == "int32_t" and argument.name in INTEGER_ARRAYS
    return f"{types.of(argument.type)}, {intent(argument)} :: {argument.name}{'(*)' if many else ''}"


def interface_lines(function, types, argument_line):
    name = function.name
    word = "subroutine" if function.result == "void" else "function"
    result = "" if word == "subroutine" else " result(answer)"
    names = ", ".join(argument.name for argument in function.arguments)
    yield from wrapped(f'{word} {name}({names}){result} bind(c, name="{function.name}")', 4)
    yield "      import"
    for argument in function.arguments:
        yield from wrapped(argument_line(function, argument, types), 6)
    if word == "function":
        kind = "type(c_ptr)" if function.result.endswith("*") else KINDS.get(function.result, STATUS)
        yield f"      {kind} :: answer"
    yield f"    end {word} {name}"
    yield ""


# ------------------------------------------------------------------------------------------ the module

HEAD = """\
! finites.f90: finites_library, the Fortran module over the library: interfaces of the plain calls (elements.h), of the
! checks and builders of the protocol (checks.h, builders.h) and of the exported routines (finites.h), types of their
! structs and records, names of all codes.
!
! Written by script/fortran_module.py from the headers; changes belong there. The headers describe every call, and what
! they say holds here with these differences:
!
!   - a struct finites_x is the type finites_x_t. All its fields start at 0; finites_x_init fills the rest
!   - extents are turned round: double xyz[4][3] is xyz(3, 4). Matrices are plain Fortran arrays, K(24, 24)
!   - what may be null is optional; a state is a type(c_ptr)
!   - batches count elements from 0 as in C: begin 0 and end n are all n of them, and failed is 0 for the first. An
!     array of a batch is a target: xyz%first = c_loc(x), or finites_reals_t(c_loc(u), 12) as an argument
!
! The module is not called finites: Fortran takes the name of a routine, FINITES, and that of a module for one.
!
! Fortran 2018 (optional arguments of procedures that bind to C); gfortran 9 and later have it. Compile this file with
! your program, or link the target finites::fortran of the CMake package.
module finites_library
  use, intrinsic :: iso_c_binding
  implicit none
  public
"""

TAIL = """\
  ! refer_to(reference, c_loc(array), bytes of an element, extents ...): the reference of a record to a contiguous array
  ! that is numbered from 1. The array is a target and outlives the record.
  interface refer_to
    module procedure refer_to_1, refer_to_2, refer_to_3
  end interface refer_to
  private :: refer_to_1, refer_to_2, refer_to_3

  interface
    pure function c_length(text) result(length) bind(c, name="strlen")
      import
      type(c_ptr), value :: text
      integer(c_size_t) :: length
    end function c_length
  end interface
  private :: c_length

contains

  ! The sentence about a status.
  function finites_message(status) result(text)
    integer(c_int32_t), intent(in) :: status
    character(:), allocatable :: text
    text = text_of(finites_text(status))
  end function finites_message

  function text_of(address) result(text)
    type(c_ptr), intent(in) :: address
    character(:), allocatable :: text
    character(kind=c_char), pointer :: letters(:)
    integer :: i
    call c_f_pointer(address, letters, [c_length(address)])
    allocate (character(size(letters)) :: text)
    do i = 1, size(letters)
      text(i:i) = letters(i)
    end do
  end function text_of

  ! An array of a batch: the values of element e (from 0) start at first(1 + e * stride). The array is a target.
  function finites_reals_of(first, stride) result(reals)
    real(c_double), intent(in), target :: first(*)
    integer, intent(in) :: stride
    type(finites_reals_t) :: reals
    reals%first = c_loc(first(1))
    reals%stride = stride
  end function finites_reals_of

  subroutine refer_to_1(reference, base, bytes, n1)
    type(array_reference_1), intent(out) :: reference
    type(c_ptr), intent(in) :: base
    integer(c_size_t), intent(in) :: bytes
    integer, intent(in) :: n1
    reference%base = base
    reference%element_length = bytes
    reference%allocated_flag = 1
    reference%dimension(1) = array_dimension(n1, bytes, 1)
  end subroutine refer_to_1

  subroutine refer_to_2(reference, base, bytes, n1, n2)
    type(array_reference_2), intent(out) :: reference
    type(c_ptr), intent(in) :: base
    integer(c_size_t), intent(in) :: bytes
    integer, intent(in) :: n1, n2
    reference%base = base
    reference%element_length = bytes
    reference%allocated_flag = 1
    reference%dimension(1) = array_dimension(n1, bytes, 1)
    reference%dimension(2) = array_dimension(n2, bytes * n1, 1)
  end subroutine refer_to_2

  subroutine refer_to_3(reference, base, bytes, n1, n2, n3)
    type(array_reference_3), intent(out) :: reference
    type(c_ptr), intent(in) :: base
    integer(c_size_t), intent(in) :: bytes
    integer, intent(in) :: n1, n2, n3
    reference%base = base
    reference%element_length = bytes
    reference%allocated_flag = 1
    reference%dimension(1) = array_dimension(n1, bytes, 1)
    reference%dimension(2) = array_dimension(n2, bytes * n1, 1)
    reference%dimension(3) = array_dimension(n3, bytes * n1 * n2, 1)
  end subroutine refer_to_3

end module finites_library
"""


def titled(title):
    return ["", f"  ! {'-' * 80} {title}", ""]


def interfaces(functions, types, argument_line):
    yield "  interface"
    yield ""
    for function in functions:
        yield from interface_lines(function, types, argument_line)
    yield "  end interface"


def module_lines():
    types = Types()
    yield from HEAD.splitlines()
    for name in [*headers.PLAIN, "fields.h"]:
        lines = list(code_lines(headers.CONTRACT / name))
        yield from [*titled(f"codes of {name}"), *lines] if lines else []
    yield from titled("structs of the plain calls")
    for struct in types.plain:
        yield from type_lines(struct, types)
    yield from titled("records of records.h")
    dimension = headers.Struct("ARRAY_DIMENSION", [headers.Item("int64_t", n) for n in ("EXTENT", "STRIDE", "LOWER")])
    types.names["ARRAY_DIMENSION"] = "array_dimension"
    yield from type_lines(dimension, types)
    yield from reference_lines()
    for struct in types.records:
        yield from type_lines(struct, types)
    for name in ("SOLANAELEM", "PLATEELEM", "SOLANA"):
        yield f'  type({name.lower()}_record), bind(c, name="{name}") :: {name}'
    for name in headers.PLAIN:
        yield from titled(f"plain calls of {name}")
        yield from interfaces(headers.functions(headers.CONTRACT / name), types, plain_argument)
    yield from titled("exported routines of finites.h")
    yield from interfaces(headers.functions(headers.CONTRACT / "finites.h"), types, protocol_argument)
    yield from titled("what a solver calls in Tarnix")
    yield from interfaces(headers.functions(TARNIX), types, protocol_argument)
    yield ""
    yield from TAIL.splitlines()


# ------------------------------------------------------------------------------------------ the layout test


def c_layout():
    types = Types()
    names = [(struct, types.names[struct.name]) for struct in [*types.plain, *types.records]]
    return headers.layout_program(["records.h", *headers.PLAIN], names)


def fortran_layout():
    types = Types()
    all_types = [(struct, types.names[struct.name]) for struct in [*types.plain, *types.records]]
    yield "program layout"
    yield "  use finites_library"
    yield "  implicit none"
    for _, name in all_types:
        yield f"  call layout_of_{name}()"
    yield "contains"
    yield "  integer(c_intptr_t) function place(address)"
    yield "    type(c_ptr), intent(in) :: address"
    yield "    place = transfer(address, place)"
    yield "  end function place"
    for struct, name in all_types:
        yield f"  subroutine layout_of_{name}()"
        yield f"    type({name}), target, save :: x"
        yield f"    print '(a, 1x, i0)', '{name}', c_sizeof(x)"
        for field in struct.fields:
            size = f"c_sizeof(x%{field.name})" if field.type in KINDS else f"storage_size(x%{field.name}) / 8"
            if field.extents and field.type not in KINDS:
                size += f" * size(x%{field.name})"
            yield (f"    print '(a, 2(1x, i0))', '{name}%{field.name}', place(c_loc(x%{field.name})) - place(c_loc(x)), "
                   f"&\n      {size}")
        yield f"  end subroutine layout_of_{name}"
    yield "end program layout"


# ------------------------------------------------------------------------------------------ the test of prototypes

LONG = {"int32_t": "int", "int64_t": "long", "finites_status": "int"}


def expected_prototype(function, types):
    """What a compiler of Fortran must have read: types, pointers, and what goes in alone (const)."""
    def as_read(kind, stars, constant):
        if stars and (types.of(kind) is None or function.name == "TARNIX_SET_EXCHANGE_AREA"):
            return "void*"  # type(c_ptr), by value or not: the compiler writes both alike
        name = types.names.get(kind, LONG.get(kind, kind))
        return f"{'const ' if constant and stars else ''}{name}{'*' * stars}"

    arguments = [as_read(a.type, max(a.stars, 1 if a.extents else 0), a.constant) for a in function.arguments]
    result = "void*" if function.result.endswith("*") else as_read(function.result, 0, False)
    return result, arguments


def read_prototypes(text):
    """result name (arguments); of every line, without the names of the arguments."""
    found = {}
    for result, stars, name, arguments in re.findall(r"^(\w+) (\**)(\w+) \((.*)\);$", text, re.MULTILINE):
        kinds = [re.sub(r"\s*(\**)\w+$", r"\1", part.strip()) for part in arguments.split(",") if part.strip()]
        found[name] = (result + stars, kinds)
    return found


def check_prototypes(path):
    types = Types()
    read = read_prototypes(path.read_text())
    functions = [f for name in [*headers.PLAIN, "finites.h"] for f in headers.functions(headers.CONTRACT / name)]
    wrong = 0
    for function in functions + headers.functions(TARNIX):
        wanted = expected_prototype(function, types)
        if read.get(function.name) != wanted:
            print(f"{function.name}: the headers have {wanted}, the module {read.get(function.name)}")
            wrong += 1
    return 1 if wrong or not functions else 0


def check(text):
    kept = MODULE.read_text()
    if kept == text:
        return 0
    print("".join(difflib.unified_diff(kept.splitlines(True), text.splitlines(True), str(MODULE), "headers", n=0)))
    print("script/fortran_module.py --write takes the headers over")
    return 1


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    choice = parser.add_mutually_exclusive_group(required=True)
    choice.add_argument("--check", action="store_true")
    choice.add_argument("--write", action="store_true")
    choice.add_argument("--layout", choices=("c", "f90"))
    choice.add_argument("--prototypes", type=pathlib.Path, metavar="F")
    arguments = parser.parse_args()
    if arguments.layout:
        print("\n".join(c_layout() if arguments.layout == "c" else fortran_layout()))
        return 0
    if arguments.prototypes:
        return check_prototypes(arguments.prototypes)
    text = "\n".join(line.rstrip() for line in module_lines()) + "\n"
    if arguments.check:
        return check(text)
    MODULE.write_text(text)
    return 0


if __name__ == "__main__":
    sys.exit(main())
