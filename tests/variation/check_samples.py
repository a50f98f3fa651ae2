#!/usr/bin/env python3
"""Samples of all methods against SciPy, which shares no code with them: the distributions, cut to their ranges, and how
evenly they are filled."""
import json
import os
import subprocess
import sys
import tempfile

try:
    import numpy as np
    from scipy import stats
    from scipy.stats import qmc
except ImportError:
    print("SciPy is not installed")
    sys.exit(77)

COUNT = 4096
PARAMETERS = {
    "Seat": {"decimals": 6, "distribution": {"name": "normal", "expectedValue": 30, "variance": 16}},
    "/sce/Scenario/Weather/visibility": {
        "range": ["50", "5000"], "decimals": 6,
        "distribution": {"name": "log-normal", "expectedValue": 6, "variance": 1}},
    "/sce/Scenario/duration": {"range": [0, 100], "decimals": 6},
    "/sce/Scenario/Weather/hour": {
        "range": [0, 24], "decimals": 6,
        "distribution": {"name": "histogram", "bins": [{"range": [0, 6], "weight": 1}, {"range": [6, 24], "weight": 3}]}},
    "/sce/Scenario/randomSeed": {"range": [0, 100], "distribution": {"name": "poisson", "expectedValue": 30}},
    "/sce/Scenario/Vehicle[id/@ScenarioTreeValue=0]/mass": {"range": [1000, 1999]},
}


def sample(command, sample_file, method, folder):
    path = os.path.join(folder, "plan.json")
    with open(path, "w", encoding="utf-8") as file:
        json.dump({"format": "tavrel-plan/1", "scenario": "orientation/First minutes.sce", "configuration": "City",
                   "seed": 42, "method": {"name": method, "count": COUNT}, "parameters": PARAMETERS}, file)
    lines = subprocess.run([command, "vary", "list", path, "--format", "jsonl", "--config", sample_file],
                           stdout=subprocess.PIPE, encoding="utf-8", check=True).stdout.splitlines()
    rows = [[float(text.split()[0]) for text in json.loads(line)["values"].values()] for line in lines]
    return np.array(rows).T


def main():
    faults = []

    def demand(holds, sentence):
        if not holds:
            faults.append(sentence)

    with tempfile.TemporaryDirectory() as folder:
        for method in ("random", "latin-hypercube", "sobol"):
            seat, sight, duration, hour, poisson, mass = sample(*sys.argv[1:], method, folder)
            cut = stats.norm(6, 1).cdf
            units = np.stack([
                stats.truncnorm.cdf(seat, (25 - 30) / 4, (40 - 30) / 4, 30, 4),
                (cut(np.log(sight)) - cut(np.log(50))) / (cut(np.log(5000)) - cut(np.log(50))),
                duration / 100,
                np.where(hour < 6, hour / 6 * 0.25, 0.25 + (hour - 6) / 18 * 0.75)], axis=1)
            for i in range(units.shape[1]):
                demand(stats.kstest(units[:, i], "uniform").pvalue > 1e-4, f"{method}: distribution {i}")
                strata = len(set(np.floor(np.clip(units[:, i], 0, 1 - 1e-12) * COUNT)))
                # The rounding of a value may carry it over a border.
                demand(strata < 0.7 * COUNT if method == "random" else strata > 0.99 * COUNT,
                       f"{method}: {strata} strata of {i}")
            known = stats.poisson(30)
            expected = known.pmf(np.arange(101)) / known.cdf(100) * COUNT
            usual = expected > 5
            counts = np.bincount(poisson.astype(int), minlength=101)
            demand(stats.chisquare(np.append(counts[usual], counts[~usual].sum()),
                                   np.append(expected[usual], COUNT - expected[usual].sum())).pvalue > 1e-4,
                   f"{method}: poisson")
            demand(stats.chisquare(np.bincount(((mass - 1000) // 50).astype(int), minlength=20)).pvalue > 1e-4,
                   f"{method}: whole numbers")
            discrepancy = qmc.discrepancy(np.clip(units[:1024], 0, 1))
            demand(discrepancy < 1e-4 if method == "sobol" else discrepancy > 1e-4, f"{method}: discrepancy {discrepancy}")
            demand(np.abs(np.corrcoef(units.T) - np.eye(4)).max() < 0.08, f"{method}: correlation")
    print("\n".join(faults) if faults else "all as SciPy has it")
    sys.exit(1 if faults else 0)


main()
