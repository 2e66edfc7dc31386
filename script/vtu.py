"""Numbers of an array of a VTU file, in either form in which finites-solve writes them: text, or the bytes of the
numbers in base 64 behind their count."""

import base64

import numpy as np

TYPES = {"Float64": "<f8", "Int32": "<i4", "Int16": "<i2", "Int8": "i1", "UInt8": "u1"}


def numbers(array):
    if array.get("format") == "ascii":
        return np.array(array.text.split(), dtype=float)
    content = base64.b64decode(array.text)
    kind = np.dtype(TYPES[array.get("type")])
    count = int.from_bytes(content[:4], "little") // kind.itemsize
    return np.frombuffer(content, kind, count, offset=4).astype(float)
