#!/usr/bin/env python3
"""Holds ARCHITECTURE.md against the sources: each line that it promises stands in the file that it names, and each folder
and page that it or CONTRIBUTING.md names is there."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
faults = []
promised = 0
for page in ("ARCHITECTURE.md", "CONTRIBUTING.md"):
    text = (ROOT / page).read_text(encoding="utf-8")
    for path in re.findall(r"`((?:core|environment|checking|simulation|variation|processes|tools|docs|scripts|tests|fuzz)"
                           r"/[^` ]*)`|\]\(([^)]+)\)", text):
        name = path[0] or path[1]
        if not (ROOT / name).exists():
            faults.append(f"{page} names {name}, which is not there")
    for file, line in re.findall(r"^\| [^|]+ \| `([^`]+\.(?:cpp|h))` \| `(.+)` \|$", text, re.M):
        promised += 1
        if line not in (ROOT / file).read_text(encoding="utf-8"):
            faults.append(f"{page}: no line of {file} holds: {line}")
if promised < 10:
    faults.append("the table of lines cannot be read")
print("\n".join(faults) if faults else f"{promised} lines found")
sys.exit(1 if faults else 0)
