#!/usr/bin/env python3
"""Lists of plans against digests of their bytes: they are the same with every compiler, with and without optimization."""
import hashlib
import json
import os
import subprocess
import sys
import tempfile

EXAMPLES = {
    "braking-boundary.json": "b3b4d6919b9e92ad11c972a95979fd6640e167193f113b53fafb931925bca274",
    "fog-sobol.json": "51b29ac9cc7a342bcc31f0a3e8365aeb67ade9d8b019c90bc8f47021ece834ed",
    "overtaking-cover.json": "bd3f670fb3413bf14d9c5c8db5865ee01e9a3f29f9d729b5a74ea0423fd8d216",
}

# As many decimals as there may be, so that a last digit that differs shows.
FINE = {
    "Seat": {"decimals": 12, "distribution": {"name": "normal", "expectedValue": 30, "variance": 16}},
    "/sce/Scenario/Weather/visibility": {
        "range": ["50", "5000"], "decimals": 10,
        "distribution": {"name": "log-normal", "expectedValue": 6, "variance": 1}},
    "/sce/Scenario/duration": {"range": [0, 100], "decimals": 12},
    "/sce/Scenario/Weather/hour": {
        "range": [0, 24], "decimals": 12,
        "distribution": {"name": "histogram", "bins": [{"range": [0, 6], "weight": 1}, {"range": [6, 24], "weight": 3}]}},
    "/sce/Scenario/randomSeed": {"range": [0, 100], "distribution": {"name": "poisson", "expectedValue": 30}},
}
FINE_DIGESTS = {
    "random": "a66a8fc0e0421427c022dadd3c5e17f0e4f92071b374691505d077724281f010",
    "latin-hypercube": "5a967dceaf5b5f3e573c3812a668bf6647d4d22c0808f628ffe6176c35aaf10d",
    "sobol": "afb9530bd2dc61cca5a803cf718b16d4cda0a224b8dc0df541aa55f8a9d467bc",
}


def digest(command, installation, plan):
    listed = subprocess.run([command, "vary", "list", plan, "--format", "jsonl", "--config", installation],
                            stdout=subprocess.PIPE, check=True).stdout
    return hashlib.sha256(listed).hexdigest()


def main():
    command, installation, plans = sys.argv[1:]
    found = {name: (digest(command, installation, os.path.join(plans, name)), known) for name, known in EXAMPLES.items()}
    with tempfile.TemporaryDirectory() as folder:
        for method, known in FINE_DIGESTS.items():
            path = os.path.join(folder, "plan.json")
            with open(path, "w", encoding="utf-8") as file:
                json.dump({"format": "tavrel-plan/1", "scenario": "orientation/First minutes.sce", "configuration": "City",
                           "seed": 42, "method": {"name": method, "count": 4096}, "parameters": FINE}, file)
            found[method] = (digest(command, installation, path), known)
    differ = [f"{name}: {now}, not {known}" for name, (now, known) in found.items() if now != known]
    print("\n".join(differ) if differ else f"{len(found)} lists are what they were")
    sys.exit(1 if differ else 0)


main()
