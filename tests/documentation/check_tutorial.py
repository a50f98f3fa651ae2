#!/usr/bin/env python3
"""Runs the console blocks of a page, one after the other in one folder, and compares what they print with the page.

A line "$ COMMAND" is run, lines "> TEXT" behind it continue it, and the others are what it prints; "..." stands for any
further lines of it.
"""
import os
import subprocess
import sys
import tempfile


def blocks(page):
    lines = None
    for line in page.splitlines():
        if line == "```console":
            lines = []
        elif line == "```" and lines is not None:
            yield lines
            lines = None
        elif lines is not None:
            lines.append(line)


def steps(lines):
    step = None
    for line in lines:
        if line.startswith("$ "):
            if step:
                yield step
            step = [line[2:], []]
        elif line.startswith("> ") and not step[1]:
            step[0] += "\n" + line[2:]
        else:
            step[1].append(line)
    if step:
        yield step


def same(expected, printed):
    if "..." not in expected:
        return expected == printed
    at = expected.index("...")
    return printed[:at] == expected[:at] and printed[len(printed) - len(expected) + at + 1:] == expected[at + 1:]


def main():
    command, path = sys.argv[1:]
    environment = dict(os.environ, PATH=os.path.dirname(command) + ":" + os.environ["PATH"])
    environment.pop("TAVREL_CONFIG", None)
    with open(path, encoding="utf-8") as file:
        page = file.read()
    count = wrong = 0
    with tempfile.TemporaryDirectory() as folder:
        for block in blocks(page):
            for text, expected in steps(block):
                done = subprocess.run(["sh", "-c", text], cwd=folder, env=environment, stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, encoding="utf-8", check=False)
                printed = done.stdout.rstrip("\n").splitlines()
                count += 1
                if not same(expected, [line.rstrip() for line in printed]):
                    wrong += 1
                    print(f"{path}: $ {text}\nprints\n{done.stdout}instead of\n" + "\n".join(expected) + "\n")
    print(f"{count} commands, {wrong} of them print something else")
    sys.exit(1 if wrong or not count else 0)


main()
