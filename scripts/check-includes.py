#!/usr/bin/env python3
"""Includes run one way: each folder may include itself and what is listed for it, nothing else of ours. Files do not
include each other in a circle either; a source and the header of the same name count as one."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

EFFECT_BASE = ["effect_api", "effect/suites"]
GRADIENT = ["effect/gradient/value", "effect/gradient/editor"]
HOST_BASE = ["effect_api", "host/module", "host/values"]
HOST = HOST_BASE + ["host"]
JOB = HOST + ["base", "scene", "scene/gradient", "media", "media/picture"]
# A folder stands for the files directly in it; with "/**" also for those in the folders below.
STUDIO = JOB + ["job", "studio/theme"]
RULES = {
    "effect_api": [],
    "effect/identity": ["effect_api"],
    "effect/suites": ["effect_api"],
    "effect/licence": ["effect_api"],
    "effect/gradient/value": EFFECT_BASE,
    "effect/gradient/editor": EFFECT_BASE + ["effect/gradient/value"],
    "effect/gradient/callbacks": EFFECT_BASE + GRADIENT,
    "effect/params": EFFECT_BASE + ["effect/identity", "effect/gradient/value", "effect/gradient/callbacks"],
    "effect/shaders": [],
    "effect/gpu/gl": ["effect_api"],
    "effect/gpu": ["effect_api", "effect/identity", "effect/shaders", "effect/gpu/gl"],
    "effect/render": EFFECT_BASE
    + ["effect/identity", "effect/licence", "effect/gradient/value", "effect/params", "effect/gpu", "effect/gpu/gl"],
    "effect/entry": ["effect_api", "effect/**"],
    "host/module": ["effect_api"],
    "host/values": ["effect_api", "host/module"],
    "host": HOST_BASE,
    "host/callbacks": HOST_BASE + ["host"],
    "host/panel": HOST_BASE + ["host", "host/callbacks"],
    "judge/engine": HOST + ["host/panel"],
    "judge/windows_module": HOST + ["judge/engine"],
    "judge/cases": HOST + ["host/panel", "judge/engine", "judge/windows_module"],
    "judge": HOST + ["judge/engine", "judge/cases", "judge/windows_module"],
    "base": ["host/values/frame_rate.h"],
    "scene/gradient": ["base"],
    "scene": HOST + ["base", "scene/gradient", "effect/params/control_table.h"],
    "media/picture": ["base", "host/values"],
    "media": HOST + ["base", "media/picture"],
    "job": JOB,
    "frei0r": JOB + ["job", "effect/entry/effect_main.h", "effect/gpu/version_lines.h"],
    "frei0r/kdenlive": JOB + ["job", "frei0r"],
    "cli/files": JOB,
    "frei0r/shotcut": JOB + ["job", "frei0r"],
    "cli/terminal": JOB + ["job"],
    "cli/options": JOB + ["host/panel", "job", "cli/terminal"],
    "cli/commands": JOB + ["host/panel", "judge", "judge/engine", "judge/cases", "job", "cli/files", "cli/options",
                           "cli/terminal", "effect/params/control_table.h"],
    "studio/theme": [],
    "studio/document": JOB + ["job"],
    "studio/preview": STUDIO + ["studio/document"],
    "studio/controls/editors": STUDIO + ["host/panel"],
    "studio/controls": STUDIO + ["studio/document", "studio/controls/editors"],
    "studio/timeline": STUDIO + ["studio/document", "studio/preview"],
    "studio/looks": STUDIO + ["studio/document", "studio/preview"],
    "studio/export": STUDIO + ["studio/document"],
    "studio/pictures": STUDIO + ["studio/controls", "studio/window"],
    "studio/window": STUDIO + ["studio/document", "studio/preview", "studio/controls", "studio/timeline",
                               "studio/looks", "studio/export"],
    "cli": JOB + ["job", "cli/commands", "cli/options", "cli/terminal"],
}
# A header of the host that its own callbacks implement.
EXTRA = {"host/host.cpp": ["host/callbacks/tables.h"], "host/render.cpp": ["host/callbacks/tables.h"]}
INCLUDE = re.compile(r'^#include "([^"]+)"')
MOST_SOURCES = 25


def includes(path):
    for number, line in enumerate((ROOT / path).read_text().splitlines(), 1):
        found = INCLUDE.match(line)
        if found:
            yield number, found[1]


def may_include(path, included):
    folder = str(pathlib.PurePath(path).parent)
    target = str(pathlib.PurePath(included).parent)
    if target == "." or target == folder:  # generated headers have no folder in their name
        return True
    allowed = RULES[folder] + EXTRA.get(path, [])
    return any(target == place or included == place
               or (place.endswith("/**") and included.startswith(place[:-2])) for place in allowed)


def circle_from(start, graph, done):
    """A circle of units that is reached from `start`, or an empty list."""
    path, position, stack = [], {}, [(start, iter(sorted(graph.get(start, ()))))]
    path.append(start)
    position[start] = 0
    while stack:
        unit, rest = stack[-1]
        following = next(rest, None)
        if following is None:
            stack.pop()
            path.pop()
            del position[unit]
            done.add(unit)
        elif following in position:
            return path[position[following]:] + [following]
        elif following not in done:
            position[following] = len(path)
            path.append(following)
            stack.append((following, iter(sorted(graph.get(following, ())))))
    return []


def main():
    problems = []
    graph = {}
    per_folder = {}
    for top in sorted({folder.split("/")[0] for folder in RULES}):
        for path in sorted((ROOT / top).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            name = str(path.relative_to(ROOT))
            folder = str(pathlib.PurePath(name).parent)
            per_folder[folder] = per_folder.get(folder, 0) + 1
            if folder not in RULES:
                problems.append(f"{name}: scripts/check-includes.py has no rule for {folder}")
                continue
            unit = name.rsplit(".", 1)[0]
            for line, included in includes(name):
                if not may_include(name, included):
                    problems.append(f"{name}:{line}: {folder} may not include {included}")
                target = included.rsplit(".", 1)[0]
                if target != unit and (ROOT / included).exists():
                    graph.setdefault(unit, set()).add(target)
    for folder, count in per_folder.items():
        if count > MOST_SOURCES:
            problems.append(f"{folder}: {count} sources; at most {MOST_SOURCES} lie in one folder")
    done = set()
    for unit in sorted(graph):
        if unit in done:
            continue
        circle = circle_from(unit, graph, done)
        if circle:
            problems.append("files include each other: " + " -> ".join(circle))
            break
    print("\n".join(problems), end="\n" if problems else "")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
