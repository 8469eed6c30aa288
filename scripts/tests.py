#!/usr/bin/env python3
"""Finds tests by name and runs them, down to single cases.

usage: tests.py unique              fails if two tests have one name
       tests.py where REGEX         prints the builds that may have matching tests: linux, fuzz, windows
       tests.py run BUILD REGEX     builds what the matching tests of a build folder need, and runs them;
                                    exit status 3 if nothing matches

The name of a case is the one that GoogleTest prints, Suite.Case; REGEX is Python's and may match any part of it. A test
that is not a GoogleTest program has the name that ctest lists. The build folder says in test_programs.txt what the
programs are made of, so that only those with a matching case are built."""
import collections
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
CASE = re.compile(r"^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\)", re.MULTILINE)
NOTHING_MATCHES = 3
SKIPPED_STATUS = 77


def cases_of(source):
    """The cases of a source, and whether some have further ones that only the program can list."""
    text = source.read_text()
    return [f"{suite}.{case}" for suite, case in CASE.findall(text)], "INSTANTIATE_TEST_SUITE_P" in text


def may_match(source, regex):
    names, open_ended = cases_of(source)
    return any(regex.search(name) for name in names) or (open_ended and regex.search(source.read_text()) is not None)


def unique():
    places = collections.defaultdict(list)
    for source in sorted((ROOT / "tests").rglob("*.cpp")):
        for name in cases_of(source)[0]:
            places[name].append(str(source.relative_to(ROOT)))
    twice = {name: sources for name, sources in places.items() if len(sources) > 1}
    for name, sources in twice.items():
        print(f"{name} is the name of tests in {' and '.join(sources)}")
    return 1 if twice else 0


def fuzz_targets():
    return re.findall(r"^flumo_fuzz\((\w+)", (ROOT / "tests/fuzz/CMakeLists.txt").read_text(), re.MULTILINE)


def where(regex):
    windows = list((ROOT / "tests/windows").glob("*_test.cpp"))
    if any(may_match(source, regex) for source in windows):
        print("windows")
    if any(regex.search(name) for name in fuzz_targets()):
        print("fuzz")
    others = (source for source in (ROOT / "tests").rglob("*.cpp") if source not in windows)
    declared = re.compile(r"NAME (\S+)|^flumo_test\((\S+)", re.MULTILINE)
    lists = "\n".join(path.read_text() for path in (ROOT / "tests").rglob("CMakeLists.txt")
                      if path.parent.name not in ("fuzz", "windows"))
    names = [script or program for script, program in declared.findall(lists)]
    # A name with a variable in it is known after configuring only.
    if any(may_match(source, regex) for source in others) or any("$" in name or regex.search(name) for name in names):
        print("linux")
    return 0


def build_targets(build, regex):
    """The targets that the matching tests need, and the names of all GoogleTest programs."""
    targets, programs = set(), set()
    for line in (build / "test_programs.txt").read_text().splitlines():
        kind, name, *rest = line.split()
        if kind == "program":
            programs.add(name)
            if regex.search(name) or any(may_match(pathlib.Path(source), regex) for source in rest):
                targets.add(name)
        elif regex.search(name):
            targets.update(rest)
    return sorted(targets), programs


def listed_cases(command, environment):
    text = subprocess.run([*command, "--gtest_list_tests"], env=environment, capture_output=True, text=True,
                          check=True).stdout
    suite = ""
    for line in text.splitlines():
        if not line.startswith(" "):
            suite = line.split()[0] if line.endswith(".") or "#" in line else ""
        elif suite:
            yield suite + line.split()[0]


def environment_of(test):
    properties = {entry["name"]: entry["value"] for entry in test.get("properties", [])}
    environment = dict(os.environ)
    environment.update(setting.split("=", 1) for setting in properties.get("ENVIRONMENT", []) if setting)
    return environment, properties


def selected(build, regex, programs):
    """Names, commands and environments of what matches. The cases of a program that ctest runs as a whole share a
    process; the others have one each."""
    listing = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"], capture_output=True, text=True,
                             check=True).stdout
    for test in json.loads(listing)["tests"]:
        name, command = test["name"], test.get("command")
        if not command or not pathlib.Path(command[0]).exists():
            continue
        environment, properties = environment_of(test)
        if regex.search(name):
            yield name, command, environment, properties
        elif name in programs:
            matching = [case for case in listed_cases(command, environment) if regex.search(case)]
            if matching:
                chosen = [*command, "--gtest_filter=" + ":".join(matching)]
                yield " ".join(matching), chosen, environment, properties


def run_one(test):
    name, command, environment, properties = test
    start = time.monotonic()
    try:
        done = subprocess.run(command, env=environment, cwd=properties.get("WORKING_DIRECTORY"), text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, errors="replace",
                              timeout=properties.get("TIMEOUT"))
        status, output = done.returncode, done.stdout
    except subprocess.TimeoutExpired as late:
        status, output = -1, f"{late.output or ''}\nstopped after {properties['TIMEOUT']} seconds\n"
    skipped = status == SKIPPED_STATUS and "SKIP_RETURN_CODE" in properties
    word = "skipped" if skipped else "passed " if status == 0 else "FAILED "
    print(f"{word} {time.monotonic() - start:6.1f} s  {name}", flush=True)
    if status != 0:
        print(output, flush=True)
    return status == 0 or skipped


def run(build, regex):
    build_folder = ["cmake", "--build", str(build), "--target"]
    # Configures anew where a list of sources has changed.
    subprocess.run([*build_folder, "build.ninja"], stdout=subprocess.DEVNULL, check=True)
    targets, programs = build_targets(build, regex)
    if targets:
        subprocess.run([*build_folder, *targets], check=True)
    tests = list(selected(build, regex, programs))
    if not tests:
        return NOTHING_MATCHES
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        good = list(pool.map(run_one, tests))
    return 0 if all(good) else 1


def main():
    arguments = sys.argv[1:]
    try:
        if arguments == ["unique"]:
            return unique()
        if len(arguments) == 2 and arguments[0] == "where":
            return where(re.compile(arguments[1]))
        if len(arguments) == 3 and arguments[0] == "run":
            return run(pathlib.Path(arguments[1]).resolve(), re.compile(arguments[2]))
    except re.error as error:
        print(f"tests: '{arguments[-1]}' is not a regular expression: {error}", file=sys.stderr)
        return 2
    except subprocess.CalledProcessError as error:
        return error.returncode
    print(__doc__, file=sys.stderr)
    return 2


if __name__ == "__main__":
    sys.exit(main())
