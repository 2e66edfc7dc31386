"""The declarations of the public headers, read by the few forms in which those are written: for script/abi.py and
script/fortran_module.py, which must not miss a line that is added there. What has another form is an error.

    script/headers.py functions NAME.h ...    the names of the functions of headers of include/finites, sorted
    script/headers.py silent FILE ...         the functions of headers that no comment describes: none above them, nor
                                              above those before them without an empty line between, nor beside them
"""
import pathlib
import re
import sys
from typing import NamedTuple

CONTRACT = pathlib.Path(__file__).resolve().parent.parent / "include/finites"
PLAIN = [name for name in ("elements.h", "checks.h", "builders.h") if (CONTRACT / name).exists()]


class Item(NamedTuple):
    """A field or an argument: double (*xyz)[3] is of type double, with stars 1 and extents (None, 3); None is an extent
    that the declaration does not tell. Extents are in the order of C, the last running fastest."""

    type: str
    name: str
    stars: int = 0
    extents: tuple = ()
    constant: bool = False


class Struct(NamedTuple):
    name: str
    fields: list


class Function(NamedTuple):
    result: str
    name: str
    arguments: list


def text_of(path):
    """A header without comments, with its own macros put in, such as FINITES_BATCH, and its own codes as extents."""
    text = re.sub(r"/\*.*?\*/|//[^\n]*", " ", path.read_text(), flags=re.DOTALL)
    text = text.replace("\\\n", " ")
    for name, value in re.findall(r"^#define (\w+) ([a-zA-Z][^\n]*)$", text, re.MULTILINE):
        text = re.sub(rf"(?<!#define ){name}\b", value, text)
    text = re.sub(r"^\s*#.*$", "", text, flags=re.MULTILINE)
    text = re.sub(r"\s+\[", "[", text)
    for name in set(re.findall(r"\[([A-Za-z]\w*)\]", text)):
        value = re.search(rf"\b{name} = (\d+)", text).group(1)
        text = text.replace(f"[{name}]", f"[{value}]")
    return text.replace('extern "C" {', "")


def extents_of(text):
    return tuple(int(n) if n else None for n in re.findall(r"\[(\d*)\]", text))


ITEM = re.compile(r"(const )?\s*(\w+)\s*(\**)\s*(?:\(\*\s*(\w+)\)|(\w+))((?:\[\d*\])*)$")


def item_of(text):
    found = ITEM.match(text.strip())
    if not found:
        raise SystemExit(f"script/headers.py: not understood: {text!r}")
    constant, kind, stars, pointed, name, extents = found.groups()
    extents = extents_of(extents)
    if pointed:
        return Item(kind, pointed, len(stars) + 1, (None, *extents), bool(constant))
    return Item(kind, name, len(stars), extents, bool(constant))


def fields_of(body):
    """Several of one type may stand in one declaration: double E, nu;"""
    for declaration in filter(None, (part.strip() for part in body.split(";"))):
        first, *others = declaration.split(",")
        first = item_of(first)
        yield first
        for other in others:
            yield item_of(f"{first.type} {other.strip()}")


# FINITES_VECTOR(double, 12, F_END) of records.h; FINITES_ARRAY(double, 2, SIG) has the type of a reference.
def record_field(kind, arguments):
    *arguments, name = [part.strip() for part in arguments.split(",")]
    if kind == "ARRAY":
        return Item(f"ARRAY_REFERENCE_{arguments[1]}", name)
    return Item(arguments[0], name, 0, tuple(int(n) for n in reversed(arguments[1:])))


def structs(path):
    found = []
    for body, name in re.findall(r"typedef struct (?:\w+ )?\{([^{}]*)\} (\w+);", text_of(path)):
        fields = []
        for part in filter(None, (piece.strip() for piece in body.split(";"))):
            macro = re.match(r"FINITES_(VECTOR|MATRIX|ARRAY)\((.*)\)$", part)
            fields += [record_field(*macro.groups())] if macro else fields_of(part)
        found.append(Struct(name, fields))
    return found


def functions(path):
    text = re.sub(r"\{[^{}]*\}", "", text_of(path))
    text = re.sub(r"\bFINITES_(CALL|EXPORT)\b", "", text)
    found = []
    for constant, result, stars, name, arguments in re.findall(
            r"^\s*(const )?(\w+)(\*?) (\w+)\(([^;]*)\);", text, re.MULTILINE):
        parts = re.split(r",\s*", re.sub(r"\s+", " ", arguments).strip())
        arguments = [] if parts == ["void"] else [item_of(part) for part in parts]
        found.append(Function(f"{constant}{result}{stars}", name, arguments))
    if len(found) != len(re.findall(r"\b\w+\([^;{}]*\);", text)):
        raise SystemExit(f"script/headers.py: {path.name} has a function of a form that is not understood")
    return found


DECLARED = re.compile(r"^(?!typedef)[A-Za-z][\w ]*[ *](\w+)\([^;{]*\)[^;{]*[;{][^\n]*", re.MULTILINE)


def silent(path):
    """Declarations that no comment describes. The title of a part, in lines of dashes, describes none of them."""
    for block in re.split(r"\n[ \t]*\n", path.read_text()):
        first = DECLARED.search(block)
        if first and not re.search(r"(//|/\*)(?! -{4})", block[:first.end()]):
            yield first.group(1)


def codes(path):
    """Names of numbers: the members of enums, and FINITES_CODE and FINITES_NUMBER of fields.h."""
    text = text_of(path)
    found = []
    for body in re.findall(r"enum \w*\s*\{([^{}]*)\}", text):
        for part in filter(None, (member.strip() for member in body.split(","))):
            member = re.fullmatch(r"(\w+) = (-?\d+)", part)
            if not member:
                raise SystemExit(f"script/headers.py: {path.name} has a code without its number: {part}")
            found.append(member.groups())
    return found + re.findall(r"^FINITES_(?:CODE|NUMBER)\((\w+), ([^)]+)\);", text, re.MULTILINE)


def layout_program(includes, names):
    """A program in C that lists the size of types and the offset and size of their fields; names: a list of structs and
    what each is called in the list."""
    yield from (f"#include <finites/{name}>" for name in includes)
    yield "#include <stddef.h>"
    yield "#include <stdio.h>"
    yield "int main(void) {"
    for struct, name in names:
        yield f'  printf("{name} %d\\n", (int)sizeof({struct.name}));'
        for field in struct.fields:
            yield (f'  printf("{name}%%{field.name} %d %d\\n", (int)offsetof({struct.name}, {field.name}), '
                   f"(int)sizeof((({struct.name}*)0)->{field.name}));")
    yield "  return 0;"
    yield "}"


def main():
    if len(sys.argv) < 3 or sys.argv[1] not in ("functions", "silent"):
        raise SystemExit(__doc__)
    if sys.argv[1] == "silent":
        found = [f"{path}: no comment describes {name}" for path in sys.argv[2:] for name in silent(pathlib.Path(path))]
        raise SystemExit("\n".join(found) or 0)
    print("\n".join(sorted(function.name for name in sys.argv[2:] for function in functions(CONTRACT / name))))


if __name__ == "__main__":
    main()
