#!/usr/bin/env python3
"""Shows Doxygen the comments of the public headers: doxygen_filter.py HEADER.

The headers are written to be read as they are, in columns. A block of comment becomes documentation in its own layout;
each declaration that follows it without an empty line gets it, so that all stay in the order of the header. A comment at
the end of a line belongs to all names of that line. A block before an empty line is about a part of the header: it goes
to the page of the file.
"""
import re
import sys


def block(lines):
    """A comment as documentation: its first sentence as the brief text, all of it as it is laid out."""
    body = [re.sub(r"^(/\*\*?|//| \*/?| \*)( |$)", "", line).replace("*/", "").rstrip() for line in lines]
    body = [line for line in body if not re.match(r"-{20,}", line)]
    text = "\n".join(body).strip("\n").replace("endverbatim", "")
    if not text:
        return []
    brief = re.match(r"(.+?)(?:[.](?=\s)|$)", re.sub(r"\s+", " ", text)).group(1)
    brief = re.sub(r"([\\\\@<>&#%*_`|\"])", r"\\\1", brief)
    return [f"\\brief {brief.rstrip(chr(46))}.", "\\verbatim", *text.split("\n"), "\\endverbatim */"]


def trailing(lines, i):
    """Line i of code, and how many lines it takes: a comment behind it, which may go on in the next ones, documents each
    of its names."""
    if not is_code(lines[i]):
        return lines[i], 1
    opened = re.match(r"(\s*)(.*\S)\s+/\* (.+)$", lines[i])
    if not opened or "*/" in opened[2]:
        line = re.sub(r"^(\s+)// (?=\S)", r"\1/// ", lines[i])  # of a member of a class, above it
        return re.sub(r"(;\s+)// ", r"\1///< ", line, count=1), 1
    end = i
    while "*/" not in lines[end]:
        end += 1
    text = " ".join([opened[3], *(line.strip() for line in lines[i + 1:end + 1])])
    names = re.fullmatch(r"((?:const )?\w+) (\w+(?:\[\w+\])*(?:, \w+(?:\[\w+\])*)+);", opened[2])
    each = [f"{names[1]} {name};" for name in names[2].split(", ")] if names else [opened[2]]
    return opened[1] + " ".join(f"{code} /**< {text}" for code in each), end + 1 - i


def is_code(line):
    return bool(line.strip()) and not line.startswith(("/*", "//", "#", " *", "}"))


def comment_at(lines, i):
    """The lines of the comment that starts at line i, in the first column."""
    if lines[i].startswith("//"):
        end = i
        while end + 1 < len(lines) and lines[end + 1].startswith("//"):
            end += 1
        return lines[i:end + 1]
    end = i
    while "*/" not in lines[end]:
        end += 1
    return lines[i:end + 1]


def filtered(lines, grouped):
    """The header for Doxygen. Grouped: declarations share the comment above them; one of C++ has its own."""
    i, first = 0, True
    while i < len(lines):
        line = lines[i]
        if line.startswith(("/*", "//")):
            comment = comment_at(lines, i)
            i += len(comment)
            if first:
                first = False
                yield "/** \\file"
                yield from block(comment)
                continue
            text = block(comment)
            if i < len(lines) and is_code(lines[i]):
                while i < len(lines) and lines[i].strip() and not lines[i].startswith(("/*", "//")):
                    if text and is_code(lines[i]) and not lines[i].startswith(" "):
                        yield "/**"
                        yield from text
                        text = text if grouped else []
                    code, taken = trailing(lines, i)
                    yield code
                    i += taken
            elif text:
                title = re.search(r"-{20,} *(.*?)[ */]*$", comment[0])
                yield "/** \\file"
                if title:
                    yield f"<b>{title.group(1).capitalize()}</b>"
                yield from text[1:]
            continue
        code, taken = trailing(lines, i)
        yield code
        i += taken


source = open(sys.argv[1], encoding="utf-8").read().split("\n")
print("\n".join(filtered(source, not sys.argv[1].endswith(".hpp"))))
