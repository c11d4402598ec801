"""Prints every array of an Eclipse binary file as OPM's reader sees it.

One line per array: name|type|count|values..., with REAL and DOUB values as
the hex of their big-endian IEEE bytes (so the comparison is bit for bit),
INTE in decimal, LOGI as T/F and CHAR as the names OPM gives back. A MESS
record has no values. Used by the record file tests as an independent check
of the simulator-format layout.
"""
import struct
import sys

from opm.io.ecl import EclFile


def values(kind, data):
    if kind == "INTE":
        return [str(int(v)) for v in data]
    if kind == "REAL":
        return [struct.pack(">f", float(v)).hex() for v in data]
    if kind == "DOUB":
        return [struct.pack(">d", float(v)).hex() for v in data]
    if kind == "LOGI":
        return ["T" if v else "F" for v in data]
    if kind == "CHAR":
        return [str(v) for v in data]
    return []


def main(name):
    ecl = EclFile(name)
    for i, (array, kind, count) in enumerate(ecl.arrays):
        kind = str(kind).split(".")[-1]
        fields = [array, kind, str(count)]
        if kind != "MESS":
            fields += values(kind, ecl[i])
        print("|".join(fields))


if __name__ == "__main__":
    main(sys.argv[1])
