#!/usr/bin/env python3
"""Every member, method and distribution of the plan's schema stands in the page of the plan file, and no other does."""
import json
import re
import sys


def words(schema, found):
    if isinstance(schema, list):
        for part in schema:
            words(part, found)
    if not isinstance(schema, dict):
        return
    for name, member in schema.get("properties", {}).items():
        found.add(name)
        if name == "name":
            found.update(member.get("enum", [member.get("const")]))
    for part in schema.values():
        words(part, found)


with open(sys.argv[1], encoding="utf-8") as file:
    needed = set()
    words(json.load(file), needed)
with open(sys.argv[2], encoding="utf-8") as file:
    page = file.read()
written = set(re.findall(r"`([a-zA-Z-]+)`", page)) | set(re.findall(r'"([a-zA-Z-]+)":', page))
listed = set(re.findall(r"^\| `([a-zA-Z-]+)` \|", page, re.MULTILINE))
for word in sorted(needed - written):
    print(f"the page lacks {word}")
for word in sorted(listed - needed):
    print(f"the schema lacks {word}")
sys.exit(1 if needed - written or listed - needed else 0)
