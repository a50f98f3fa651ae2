#!/usr/bin/env python3
"""check_forms COMMAND EXAMPLES NPM: holds the forms of check for machines against those who read them: SARIF against its
schema, JUnit against a reader of it, and both against what the JSON form tells of the same files. Without the schema in
the folder NPM (scripts/fetch-schemas puts it there) all but the schema is looked at, and the test counts as skipped."""
import collections
import glob
import json
import os
import subprocess
import sys
import tarfile
import tempfile
import urllib.parse

try:
    import jsonschema
    import junitparser
except ImportError:
    print("the readers of JSON schemas and of JUnit are not installed")
    sys.exit(77)

SCHEMA = "package/lib/schemas/sarif-2.1.0-rtm.5.json"
SKIPPED = 77

command, examples, npm = sys.argv[1:]


def check(*arguments):
    """What the command writes, and its status."""
    result = subprocess.run([command, "check", examples, *arguments], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return result.stdout.decode(), result.returncode


def schema():
    for archive in glob.glob(os.path.join(npm, "*.tgz")):
        with tarfile.open(archive) as package:
            return json.load(package.extractfile(SCHEMA))
    return None


def path_of(run, artifact):
    uri = artifact["uri"]
    if "uriBaseId" in artifact:
        assert not uri.startswith(("/", "file:")), uri
        uri = run["originalUriBaseIds"][artifact["uriBaseId"]]["uri"] + uri
    assert uri == urllib.parse.quote(urllib.parse.unquote(uri), safe="/:~"), uri
    return urllib.parse.unquote(uri[len("file://"):])


def look_at_sarif(text, findings, form):
    log = json.loads(text)
    if form:
        jsonschema.Draft7Validator(form).validate(log)
    (run,) = log["runs"]
    assert run["columnKind"] == "unicodeCodePoints"
    rules = run["tool"]["driver"]["rules"]
    listed = json.loads(subprocess.check_output([command, "explain", "--format", "json"]))
    assert [rule["id"] for rule in rules] == [rule["rule"] for rule in listed]
    for rule in rules:
        assert rule["shortDescription"]["text"] and rule["fullDescription"]["text"] and rule["help"]["text"]
        assert rule["defaultConfiguration"]["level"] in ("error", "warning", "note")
    assert len(run["results"]) == len(findings)
    for result, finding in zip(run["results"], findings):
        assert result["ruleId"] == rules[result["ruleIndex"]]["id"] == finding["rule"]
        assert result["level"] == finding["severity"]
        (location,) = result["locations"]
        place = location["physicalLocation"]
        assert path_of(run, place["artifactLocation"]) == finding["file"]
        region = [place["region"][name] for name in ("startLine", "startColumn", "endLine", "endColumn")]
        assert region == [finding[name] for name in ("row", "column", "endRow", "endColumn")]
        ways = [logical.get("fullyQualifiedName") for logical in location.get("logicalLocations", [])]
        assert not finding["place"] or finding["place"] in ways
        assert result["partialFingerprints"]["primaryLocationLineHash"] == finding["fingerprint"]
        assert len(result.get("fixes", [])) == len(finding["fixes"])
        assert len(result.get("relatedLocations", [])) == len(finding["related"])
    (invocation,) = run["invocations"]
    told = [path_of(run, note["locations"][0]["physicalLocation"]["artifactLocation"])
            for note in invocation.get("toolExecutionNotifications", []) if note["level"] == "error"]
    assert invocation["executionSuccessful"] == (not told)
    return run, told


def look_at_junit(text, findings):
    with tempfile.NamedTemporaryFile("w", suffix=".xml", encoding="utf-8") as file:
        file.write(text)
        file.flush()
        suites = list(junitparser.JUnitXml.fromfile(file.name))
    failing = collections.Counter((f["file"], f["rule"]) for f in findings if f["severity"] == "error")
    files = {suite.name for suite in suites}
    assert files >= {finding["file"] for finding in findings} and len(files) == len(suites)
    failed = set()
    for suite in suites:
        assert suite.tests == len(list(suite))
        for case in suite:
            assert len(case.result) <= 1, case.name
            for result in case.result:
                if isinstance(result, junitparser.Failure):
                    failed.add((suite.name, case.name.split()[0]))
    unlooked = {suite.name for suite in suites if suite.errors}
    assert failed == {key for key in failing if key[0] not in unlooked}
    return unlooked


def main():
    form = schema()
    text, status = check("--format", "json")
    findings = json.loads(text)
    assert status == 3 and len(findings) > 80
    text, _ = check("--format", "sarif")
    run, told = look_at_sarif(text, findings, form)
    assert told and not any("suppressions" in result for result in run["results"])
    text, _ = check("--format", "junit")
    assert look_at_junit(text, findings) == set(told)

    with tempfile.TemporaryDirectory() as folder:
        baseline = os.path.join(folder, "baseline.json")
        check("--write-baseline", baseline)
        text, _ = check("--format", "sarif", "--baseline", baseline)
        log = json.loads(text)
        if form:
            jsonschema.Draft7Validator(form).validate(log)
        held = [bool(result["suppressions"]) for result in log["runs"][0]["results"]]
        assert all(held) or held.count(False) == len(told), held.count(False)
    return 0 if form else SKIPPED


sys.exit(main())
