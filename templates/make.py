#!/usr/bin/env python3
"""Writes the template documents that are delivered with the program. Run it by hand after changing a form."""

import sys
from pathlib import Path

sys.dont_write_bytecode = True

import itns283
import itr8
import rtfform
import seal

ROOT = Path(__file__).resolve().parent.parent

if __name__ == "__main__":
    rtfform.write(itns283.form(), ROOT / "Data" / "FBTChallan.doc")
    seal.write(ROOT / "Data" / "GOI.bmp")
    for year in itr8.YEARS:
        for name, page in itr8.DOCUMENTS.items():
            rtfform.write(page(year), ROOT / ("ITR8Fls%d" % year) / (name + ".doc"))
