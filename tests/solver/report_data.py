"""Reads the data of a report page as solver/report_page/README.md says, by the standard library."""
import base64
import json
import re
import struct
import zlib

WIDTH = {"f32": 4, "i32": 4, "u8": 1}
CODE = {"f32": "f", "i32": "i", "u8": "B"}
BUFFER = re.compile(r'<script type="text/plain" class="finites-buffer">([^<]*)</script>')
DATA = re.compile(r'<script type="application/json" id="finites-report">(.*?)</script>', re.DOTALL)


class Page:
    def __init__(self, path):
        with open(path, "rb") as file:
            self.text = file.read().decode("utf-8")  # the page must be UTF-8 whatever the deck is
        found = DATA.findall(self.text)
        assert len(found) == 1, f"{path}: {len(found)} elements of data"
        assert "<" not in found[0], "a '<' in the data could end their element"
        self.data = json.loads(found[0], parse_constant=self.no_number)
        self.buffers = BUFFER.findall(self.text)

    @staticmethod
    def no_number(name):
        raise AssertionError(f"{name} in the data: what is not finite must be null")

    def __getitem__(self, name):
        return self.data[name]

    def array(self, reference):
        """The numbers of an array; items of several components as tuples."""
        width, count = WIDTH[reference["t"]], reference["n"] * reference["c"]
        planes = zlib.decompress(base64.b64decode(self.buffers[reference["b"]], validate=True))
        assert len(planes) == width * count, f"buffer {reference}: {len(planes)} bytes"
        whole = bytearray(width * count)
        for plane in range(width):
            whole[plane::width] = planes[plane * count : (plane + 1) * count]
        numbers = struct.unpack(f"<{count}{CODE[reference['t']]}", bytes(whole))
        c = reference["c"]
        return list(numbers) if c == 1 else [numbers[i : i + c] for i in range(0, count, c)]

    def references(self, data=None):
        """Every reference to a buffer."""
        data = self.data if data is None else data
        if isinstance(data, dict):
            if set(data) == {"b", "t", "n", "c"}:
                yield data
                return
            data = data.values()
        if isinstance(data, (list, type({}.values()))):
            for each in data:
                if isinstance(each, (dict, list)):
                    yield from self.references(each)
