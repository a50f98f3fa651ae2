#!/usr/bin/env python3
"""check_report.py TAVREL INSTALLATION-FILE: the report of a campaign in a real browser, with 10 and with 10,000 runs.

Sorts, filters and clicks as a person would, and runs the command that the page gives. Ends with 77 where there is no
Chromium.
"""
import html
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
ROWS = '[...document.querySelectorAll("#runs tbody tr")].filter(row => !row.hidden)'
NUMBERS = ROWS + ".map(row => Number(row.cells[0].textContent))"
WORK = """<script>addEventListener("load", () => {
const told = {}, heads = document.querySelectorAll("#runs th button"), search = document.querySelector("#filter");
const box = document.querySelector(".tools input[value=passed]"), type = text => {
  search.value = text; search.dispatchEvent(new Event("input")) };
told.shown = %(numbers)s; heads[3].click(); told.up = %(numbers)s; heads[3].click(); told.down = %(numbers)s;
heads[0].click(); box.click(); told.notPassed = %(numbers)s; box.click(); type(%(filter)s); told.filtered = %(numbers)s;
type(""); %(rows)s[%(row)d].click(); told.command = document.querySelector("#command").textContent;
told.width = document.documentElement.scrollWidth <= innerWidth; told.plots = document.querySelectorAll("svg").length;
document.title = JSON.stringify(told) })</script></body>"""


def tell(page, filter_text, row, folder, browser):
    work = WORK % {"numbers": NUMBERS, "rows": ROWS, "row": row, "filter": json.dumps(filter_text)}
    path = os.path.join(folder, "page.html")
    with open(path, "w", encoding="utf-8") as file:
        file.write(page.replace("</body>", work))
    dom = subprocess.run(
        [browser, "--headless=new", "--no-sandbox", "--disable-gpu", "--window-size=1240,1000",
         "--user-data-dir=" + folder + "/profile", "--dump-dom", "file://" + path],
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=240, check=True).stdout.decode()
    return json.loads(html.unescape(re.search("<title>(.*?)</title>", dom, re.S).group(1)))


def check(name, holds):
    if not holds:
        sys.exit("report.html: " + name)


def records(folder):
    names = sorted(os.listdir(folder + "/runs"))
    return [json.load(open(folder + "/runs/" + name, encoding="utf-8")) for name in names]


def main():
    tavrel, installation = sys.argv[1:]
    browser = shutil.which("chromium")
    if not browser:
        print("no chromium is installed, so no browser has seen the report")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        environment = dict(os.environ, TAVREL_CONFIG=installation,
                           PATH=os.path.dirname(tavrel) + ":" + os.environ["PATH"])

        def run(*arguments):
            return subprocess.run([tavrel, "campaign", *arguments], cwd=folder, env=environment,
                                  stdout=subprocess.DEVNULL, check=False).returncode

        for count in (10, 10000):
            plan = {"format": "tavrel-plan/1", "scenario": "motorway/Emergency braking.sce", "configuration": "Highway",
                    "run": {"until": 20}, "seed": 3, "method": {"name": "latin-hypercube", "count": count},
                    "parameters": {"Gap": {"decimals": 6}, "Deceleration": {}},
                    "criteria": ["always variable(\"Shortest headway\") >= 1.3"]}
            with open(folder + "/plan.json", "w", encoding="utf-8") as file:
                json.dump(plan, file)
            campaign = "of-%d" % count
            check("the campaign", run("init", "plan.json", "--output", campaign) == 0)
            if count == 10:
                check("the runs", run("run", campaign) == 1)
                kept = records(folder + "/" + campaign)
            else:  # the same again and again, with values of their own
                listed = subprocess.run([tavrel, "vary", "list", "plan.json", "--format", "jsonl"], cwd=folder,
                                        env=environment, stdout=subprocess.PIPE, check=True).stdout
                for number, variant in enumerate(map(json.loads, listed.splitlines())):
                    record = dict(kept[number % len(kept)], number=number, values=variant["values"])
                    with open("%s/%s/runs/%06d.json" % (folder, campaign, number), "w", encoding="utf-8") as file:
                        file.write(json.dumps(record, separators=(",", ":")) + "\n")
                kept = records(folder + "/" + campaign)
            gap = next(iter(kept[0]["values"]))
            check("merge", run("merge", campaign) == 1)
            with open(folder + "/" + campaign + "/report.html", encoding="utf-8") as file:
                page = file.read()
            check("it asks for something", not re.search(r"https?:|<link|src=|@import|url\(", page))
            chosen = next(i for i, record in enumerate(kept) if record["verdict"] == "failed")
            wanted = kept[-1]["values"][gap]
            told = tell(page, wanted, chosen, folder, browser)
            by_gap = [record["number"] for record in sorted(kept, key=lambda record: float(record["values"][gap]))]
            check("all rows", told["shown"] == list(range(count)))
            check("rows by a value", told["up"] == by_gap and told["down"] == by_gap[::-1])
            check("the boxes", told["notPassed"] == [r["number"] for r in kept if r["verdict"] != "passed"])
            check("the filter", kept[-1]["number"] in told["filtered"] and len(told["filtered"]) < count)
            check("plots of margins and of the pair", told["plots"] == 3)
            check("it is wider than its window", told["width"])
            if count == 10:
                status = subprocess.run(["sh", "-c", told["command"] + " --quiet"], env=environment, check=False,
                                        stdout=subprocess.DEVNULL).returncode
                check("the command repeats the run: " + told["command"], status == 1)
    return 0


if __name__ == "__main__":
    sys.exit(main())
