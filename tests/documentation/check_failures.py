#!/usr/bin/env python3
"""Holds docs/failures.md against the sources: each text that the library can fail with has a row, with its code and form,
and no row tells of a text that is gone. What varies in a text stands as "…". `--list` prints what the sources say."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LITERAL = re.compile(r'"((?:\\.|[^"\\])*)"')
CODES = {"Generic": "-1", "InvalidIndex": "4", "DirectoryAccess": "16", "ScenarioRead": "20", "ScenarioLoad": "24",
         "ParameterType": "32"}
SEVERITIES = {"Information": "1", "Progress": "2", "Warning": "3", "Error": "4"}


def without_comments(source):
    pattern = re.compile(r'("(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\')|//[^\n]*|/\*.*?\*/', re.S)
    return pattern.sub(lambda match: match.group(1) or " ", source)


def end_of(source, at):
    """After the bracket that closes the one at `at`."""
    depth = 0
    while at < len(source):
        literal = LITERAL.match(source, at)
        if literal:
            at = literal.end()
            continue
        if source.startswith(("'(", "')", "'{", "'}"), at):
            at += 3
            continue
        depth += {"(": 1, "{": 1, "[": 1, ")": -1, "}": -1, "]": -1}.get(source[at], 0)
        at += 1
        if depth == 0:
            return at
    raise ValueError("a bracket without its end")


def split(source, sign):
    """At each `sign` outside of brackets and literals."""
    pieces, begin, at = [], 0, 0
    while at < len(source):
        literal = LITERAL.match(source, at)
        if literal:
            at = literal.end()
        elif source[at] in "({[":
            at = end_of(source, at)
        elif source[at] == sign and not (sign == ":" and ":" in (source[at - 1], source[at + 1:at + 2])):
            pieces.append(source[begin:at])
            at += 1
            begin = at
        else:
            at += 1
    return [piece.strip() for piece in pieces + [source[begin:]]]


def variants(expression):
    """The expression once per branch of its conditional operators."""
    outer = split(expression, "?")
    if len(outer) > 1:
        left, right = split("?".join(outer[1:]), ":")[:2]
        return variants(left) + variants(right)
    for inner in re.finditer(r"\(", expression):
        body = expression[inner.end():end_of(expression, inner.start()) - 1]
        if '"' in body and len(split(body, "?")) > 1:
            rest = expression[end_of(expression, inner.start()):]
            return [text for branch in variants(body) for text in variants(expression[:inner.start()] + branch + rest)]
    return [expression]


def text_of(expression):
    pieces, at = [], 0
    for literal in LITERAL.finditer(expression):
        pieces += [gap(expression[at:literal.start()]), literal.group(1)]
        at = literal.end()
    pieces.append(gap(expression[at:]))
    text = re.sub("…+", "…", "".join(pieces))
    return re.sub(r'\\"', '"', text)


def gap(code):
    code = re.sub(r"\bstd::string(_view)?\b|\bmessage\b|<<", "", code)
    return "…" if re.search(r"\w", code) else ""


def texts(expression):
    return [text for text in map(text_of, variants(expression)) if re.search(r"[A-Za-z]{2}", text)]


def calls(source, name):
    """The arguments of each call of `name`."""
    for match in re.finditer(r"(?<![\w:~])" + name + r"\s*[({]", source):
        yield match.start(), split(source[match.end():end_of(source, match.end() - 1) - 1], ",")


def streamed(source, at):
    """What the function has put into `message` before `at`."""
    begin = max(source.rfind("std::ostringstream message;", 0, at), source.rfind("std::string message = ", 0, at))
    pieces = re.findall(r"message (?:<<|\+=|=)(.*?);", source[begin:at], re.S)
    return " + ".join(pieces)


def sources_of(folder):
    for path in sorted((ROOT / folder).rglob("*")):
        if path.suffix in (".cpp", ".h"):
            yield path, without_comments(path.read_text(encoding="utf-8"))


# What the model and the environment throw: the first goes through to hosts, the second is followed below by its reason,
# the third is caught and logged, the fourth has no text of ours, and the last one's stands in the fault that it holds.
THROWN_BELOW = r"boost::bad_lexical_cast\(|ConfigurationError\(shownPath|std::runtime_error\(|std::bad_alloc\(|Unwritable\{"


def unknown_throws():
    for folder in ("core", "environment", "ScenarioTemplateDb"):
        for path, source in sources_of(folder):
            for match in re.finditer(r"\bthrow\s*([^;]+);", source):
                if not re.match(THROWN_BELOW, match.group(1)):
                    yield f"{path.name}: {match.group(0)}"


def driver_failures():
    for path, source in sources_of("TavrelScenarioTemplateDb"):
        for _, arguments in calls(source, "converted<[^>]*>"):
            for text in texts(arguments[1]):
                yield text, "", "std::out_of_range"
        for match in re.finditer(r"\bthrow\b(\s+new)?\s*", source):
            rest = source[match.end():]
            if rest.startswith((";", "std::out_of_range(outOfRange)")):
                continue
            # For hosts that want one form: mostly the text of another failure.
            if rest.startswith("ScenarioFailure("):
                for text in texts(split(rest[len("ScenarioFailure("):end_of(rest, len("ScenarioFailure")) - 1], ",")[0]):
                    yield text, "-1", "std::exception"
                continue
            made = re.match(r"(?:ScenarioTemplateDb::)?Exception\(", rest)
            if not made:
                sys.exit(f"{path.name}: a throw of something else than Exception: {rest[:60]}")
            arguments = split(rest[made.end():end_of(rest, made.end() - 1) - 1], ",")
            expression = arguments[0]
            if "message" in expression:
                expression = streamed(source, match.start()) + " + " + expression.replace("message.str()", "")
            if "kMessage" in expression:
                expression = re.search(r"kMessage = (.*?);", source).group(1)
            code = CODES[re.search(r"ExceptionCode(\w+)", arguments[1]).group(1)]
            form = "pointer" if match.group(1) else "value"
            # The text of another failure alone has its row where that one arises.
            for text in texts(expression):
                yield text, code, form


def model_failures():
    for path, source in sources_of("core"):
        for at, arguments in calls(source, "LogMessage"):
            severity = re.match(r"LogSeverity::(\w+)$", arguments[0])
            if severity:
                if arguments[1] == "text":
                    arguments[1] = source[source.rfind("std::string text = ", 0, at):at].split(";")[0].split(" = ")[1]
                for text in texts(arguments[1]):
                    yield text, SEVERITIES[severity.group(1)], "log"
        for _, arguments in calls(source, "Refuse"):
            for text in texts(" + ".join(arguments)):
                yield text, "", "diagnosis"
        for name in ("TellUnreadableFile", "TellLoadWarning", "KeepRefusalCause"):
            for _, arguments in calls(source, name):
                for text in texts(arguments[0]):
                    yield text, "", "diagnosis"
        for _, arguments in calls(source, "AssertionFailed"):
            for text in texts(arguments[2]) if len(arguments) > 2 and '"' in arguments[2] else []:
                yield text, "", "diagnosis"
        for _, arguments in calls(source, "throw std::runtime_error"):
            for text in texts(arguments[0]):
                yield text, "1", "log"
        if path.name == "Explain.cpp":
            for match in re.finditer(r"\breturn ([^;]*\"[^;]*);", source):
                for text in texts(match.group(1)):
                    if not text.startswith(("…, did", ", did", "the text…", "… (")) and text != "the text":
                        yield text, "", "diagnosis"


def environment_failures():
    for path, source in sources_of("environment"):
        if path.name in ("Files.cpp", "Xml.cpp"):
            for match in re.finditer(r"\breturn ([^;{]*\"[^;]*);", source):
                for text in texts(match.group(1)):
                    if " " in text or text.startswith("not"):
                        yield text, "", "reason"
        for match in re.finditer(r"\breason = ([^;]*\"[^;]*);", source):
            for text in texts(match.group(1)):
                yield text, "", "reason"
        for name in ("XmlFault", "At", "Refuse"):
            for _, arguments in calls(source, name):
                if len(arguments) in (2, 3):
                    for text in texts(arguments[1]):
                        yield text, "", "reason"
        # A text that two sources use stands in a header.
        for match in re.finditer(r"\binline constexpr const char\* k\w+ToSave = ([^;]*);", source):
            for text in texts(match.group(1)):
                yield text, "", "reason"
        for match in re.finditer(r"fault->reason = ([^;]*);", source):
            for text in texts(match.group(1)):
                yield text, "", "reason"


def assertions():
    for line in (ROOT / "fuzz/assertions.txt").read_text(encoding="utf-8").splitlines():
        site = line.split("#")[0].strip()
        if site:
            yield site, "", "assertion"


def told_by_sources():
    found = set(driver_failures()) | set(model_failures()) | set(environment_failures()) | set(assertions())
    return {row for row in found if row[0].strip("… :-")}


def told_by_page(page):
    """The rows: text, code, form, cause, what to do."""
    for line in page.read_text(encoding="utf-8").splitlines():
        cells = [cell.strip() for cell in line.strip().strip("|").split(" | ")]
        if line.startswith("| `") and len(cells) == 5:
            if not all(cells[2:]):
                sys.exit(f"a row without form, cause or advice: {line}")
            yield cells[0].strip("`"), cells[1], cells[2]


def main():
    for throw in unknown_throws():
        sys.exit(f"a throw that this test does not know: {throw}")
    sources = told_by_sources()
    if len(sources) < 100:
        sys.exit(f"only {len(sources)} failures found in the sources: the scan is broken")
    if "--list" in sys.argv:
        for text, code, form in sorted(sources, key=lambda row: (row[2], row[1], row[0])):
            print(f"| `{text}` | {code} | {form} |  |  |")
        return
    page = set(told_by_page(ROOT / "docs/failures.md"))
    for row in sorted(sources - page):
        print("no row in docs/failures.md for:", row)
    for row in sorted(page - sources):
        print("docs/failures.md tells of what no source says:", row)
    if sources != page:
        sys.exit(1)
    print(f"{len(page)} failures, each with its row")


main()
