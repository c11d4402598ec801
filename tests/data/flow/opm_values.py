"""Prints every array of Eclipse files (binary or formatted) as OPM's reader
sees them, with numbers as 32-bit floats.

For each file named on the command line a line "== name", then one line per
array: name|type|count|hex, where hex is the big-endian bytes
of each value converted to a 32-bit float (INTE and DOUB rounded to the
nearest float, LOGI true 1 and false 0), 8 hex digits a value, and empty for
CHAR and MESS arrays. Used by the simulator file reader's tests as an
independent check of every value they read.
"""
import sys

import numpy as np
from opm.io.ecl import EclFile


def dump(name, out):
    ecl = EclFile(name)
    out.write("== " + name + "\n")
    for i, (array, kind, count) in enumerate(ecl.arrays):
        kind = str(kind).split(".")[-1]
        values = ""
        if kind in ("INTE", "REAL", "DOUB", "LOGI"):
            with np.errstate(over="ignore"):
                values = np.asarray(ecl[i]).astype(">f4").tobytes().hex()
        out.write("|".join([array, kind, str(count), values]) + "\n")


if __name__ == "__main__":
    for name in sys.argv[1:]:
        dump(name, sys.stdout)
