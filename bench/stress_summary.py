#!/usr/bin/env python3
"""Summary of what scripts/stress.sh measured. Exit status 1 where a process crashed or a frame was wrong.

usage: stress_summary.py OUT
"""
import json
import os
import statistics
import sys


def processes(path):
    """One dictionary for each process: its last line, and its exit status."""
    found, last = [], {}
    with open(path, encoding="utf-8") as file:
        for line in map(json.loads, file):
            if "status" in line:
                found.append({**last, **line})
                last = {}
            else:
                last = line
    return found


def report(name, runs):
    """Prints the failures of these processes. Returns whether there were none."""
    crashed = sum(run["status"] >= 128 for run in runs)
    different, failed = (sum(run.get(key, 0) for run in runs) for key in ("different", "failed"))
    print(f"{name}: {len(runs)} processes, {crashed} crashed; {different} frames different, {failed} failed")
    return all(run["status"] == 0 for run in runs)


def compare(many, one):
    """Time of many threads over that of one thread with the same frames, by process time and by the clock."""
    for key, clock in (("cpu_ms", "CPU time"), ("wall_ms", "wall time")):
        ratios = [m[key] / o[key] for m, o in zip(many, one) if key in m and key in o]
        if not ratios:
            continue
        total = sum(m[key] for m in many if key in m), sum(o[key] for o in one if key in o)
        print(f"{many[0].get('threads')} threads over one, {clock}: median {statistics.median(ratios):.3f}, "
              f"{min(ratios):.3f} to {max(ratios):.3f}; seconds in all {total[0] / 1e3:.1f} and {total[1] / 1e3:.1f}")


def memory(path):
    with open(path, encoding="utf-8") as file:
        for line in map(json.loads, file):
            if "looks" in line:
                print(f"resident after {line['looks']:4d} looks: {line['resident_kib'] / 1024:.1f} MiB")
            if "resident_kib_after_setdown" in line:
                print(f"resident after the set-down: {line['resident_kib_after_setdown'] / 1024:.1f} MiB")


def main():
    many, one, looks = (os.path.join(sys.argv[1], name + ".jsonl") for name in ("many", "one", "looks"))
    right = [report("many threads", processes(many)), report("one thread", processes(one))]
    compare(processes(many), processes(one))
    right.append(report("many looks", processes(looks)))
    memory(looks)
    sys.exit(0 if all(right) else 1)


if __name__ == "__main__":
    main()
