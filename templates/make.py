#!/usr/bin/env python3
"""Writes the template documents that are delivered with the program. Run it by hand after changing a form."""

import sys
from pathlib import Path

sys.dont_write_bytecode = True

import itns283
import rtfform

ROOT = Path(__file__).resolve().parent.parent

if __name__ == "__main__":
    rtfform.write(itns283.form(), ROOT / "Data" / "FBTChallan.doc")
