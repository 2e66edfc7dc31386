#!/usr/bin/env python3
"""The brace rule: a body on the line of its if, for, while or else needs none; every other body has braces.

braces.py [--mend] files...: names the breaches, or mends them."""
import re
import sys

TOKEN = re.compile(
    r'''(?P<skip>//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)'''
    r'''|(?P<str>R"\((?:.*?)\)"|"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)*')'''
    r'''|(?P<word>[A-Za-z_0-9]+(?:'[0-9]+)*)|(?P<op>\S)''', re.S | re.M)
PAIRS = {"(": ")", "{": "}", "[": "]"}


class File:
    def __init__(self, text):
        self.text = text
        self.tokens = [(m.group(), m.start(), m.end()) for m in TOKEN.finditer(text) if m.lastgroup != "skip"]
        self.found = []  # (place after the condition, place after the body)

    def line(self, place):
        return self.text.count("\n", 0, place) + 1

    def closing(self, i):
        depth = 0
        while True:
            t = self.tokens[i][0]
            depth += t in PAIRS
            depth -= t in PAIRS.values()
            if depth == 0:
                return i
            i += 1

    def body(self, i, before):
        """The statement at i, body of a condition or else that ends with the token `before`; the index behind it."""
        end = self.statement(i)
        if self.tokens[i][0] != "{":
            from_line, to_line = self.line(self.tokens[before][1]), self.line(self.tokens[end - 1][1])
            if from_line != to_line:
                self.found.append((self.tokens[before][2], self.tokens[end - 1][2]))
        return end

    def statement(self, i):
        t = self.tokens[i][0]
        if t == "{":
            end = self.closing(i)
            self.walk(i + 1, end)
            return end + 1
        if t in ("if", "for", "while", "switch"):
            j = i + 1
            while self.tokens[j][0] != "(":
                j += 1
            close = self.closing(j)
            self.walk(j + 1, close)
            end = self.body(close + 1, close)
            if t == "if" and end < len(self.tokens) and self.tokens[end][0] == "else":
                following = end + 1
                end = self.statement(following) if self.tokens[following][0] == "if" else self.body(following, end)
            return end
        if t == "do":
            end = self.body(i + 1, i)
            return self.closing(end + 1) + 2
        if t == "try":
            end = self.statement(i + 1)
            while self.tokens[end][0] == "catch":
                end = self.statement(self.closing(end + 1) + 1)
            return end
        while self.tokens[i][0] != ";":
            if self.tokens[i][0] in PAIRS:
                end = self.closing(i)
                self.walk(i + 1, end)
                i = end
            i += 1
        return i + 1

    def walk(self, i, end):
        """Finds the statements with bodies between two tokens."""
        while i < end:
            t = self.tokens[i][0]
            if t in ("if", "for", "while", "do") and (i == 0 or self.tokens[i - 1][0] != "#"):
                i = self.statement(i)
            else:
                i += 1

    def mended(self):
        places = []
        for start, stop in self.found:
            places += [(start, 1, " {"), (stop, 0, "\n}")]
        text = self.text
        for place, _, what in sorted(places, key=lambda p: -p[0]):
            if what == "\n}":  # behind a comment on the line of the last statement
                newline = text.find("\n", place)
                rest = text[place:newline]
                if rest.strip().startswith("//"):
                    place = newline
            elif text[place:text.find("\n", place)].strip().startswith("//"):
                pass
            text = text[:place] + what + text[place:]
        return text


def main():
    mend = "--mend" in sys.argv
    count = 0
    names = [a for a in sys.argv[1:] if not a.startswith("--")]
    if not names:
        sys.exit("script/braces.py: name the files to look at")
    for name in names:
        with open(name) as stream:
            f = File(stream.read())
        f.walk(0, len(f.tokens))
        f.found = sorted(set(f.found))
        count += len(f.found)
        if mend and f.found:
            with open(name, "w") as stream:
                stream.write(f.mended())
        elif f.found:
            for start, _ in f.found:
                print(f"{name}:{f.line(start)}: this body needs braces")
    return 1 if count and not mend else 0


if __name__ == "__main__":
    sys.exit(main())
