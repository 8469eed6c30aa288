#!/usr/bin/env python3
"""Whole runs of the command line: time from process start to the end of a first frame, frames per second
against the sum of the parts, and the most memory that a frame size takes. Writes JSON.

usage: processes.py FLUMO OUT.json [--quick]
"""
import json
import os
import statistics
import subprocess
import sys
import tempfile
import time

TINY = "64x36"
REPEATS = 9


def run(arguments, environment=None):
    """Wall seconds, CPU seconds and peak memory in MiB of one process; None when it fails."""
    start = time.monotonic()
    process = subprocess.Popen(arguments, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=environment)
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.monotonic() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        return None
    return {"wall": wall, "cpu": usage.ru_utime + usage.ru_stime, "mib": usage.ru_maxrss / 1024}


def render(flumo, folder, size, frames="0", depth=8, suffix="exr"):
    name = os.path.join(folder, "frame.####." + suffix)
    return [flumo, "render", "--size", size, "--depth", str(depth), "--frames", frames, "-o", name]


def median(runs, key):
    return statistics.median(run[key] for run in runs)


def start_times(flumo, folder):
    """A whole process that renders one tiny frame: start, context, programs, draw, a small file, end."""
    cache = os.path.join(folder, "cache")
    warm_environment = dict(os.environ, MESA_SHADER_CACHE_DIR=cache)
    cold_environment = dict(os.environ, MESA_SHADER_CACHE_DISABLE="true")
    command = render(flumo, folder, TINY, suffix="png")
    run(command, warm_environment)
    warm, cold, idle = [], [], []
    for _ in range(REPEATS):
        warm.append(run(command, warm_environment))
        cold.append(run(command, cold_environment))
        idle.append(run([flumo, "--version"]))
    return {
        name: {"wall_ms": 1e3 * median(runs, "wall"), "least_ms": 1e3 * min(r["wall"] for r in runs),
               "cpu_ms": 1e3 * median(runs, "cpu")}
        for name, runs in (("warm", warm), ("cold", cold), ("no_frame", idle))
    }


def throughput(flumo, folder, size, count):
    """Frames of one process against its parts: a start, and each frame by itself."""
    result = {}
    for suffix in ("exr", "png"):
        one, many = [], []
        for _ in range(3):
            one.append(run(render(flumo, folder, size, "0", suffix=suffix)))
            many.append(run(render(flumo, folder, size, f"0-{count - 1}", suffix=suffix)))
        start = run(render(flumo, folder, TINY, suffix=suffix))
        each = min(r["cpu"] for r in one) - start["cpu"]
        result[suffix] = {
            "size": size, "frames": count,
            "frames_per_second": count / min(r["wall"] for r in many),
            "cpu_s": min(r["cpu"] for r in many),
            "parts_cpu_s": start["cpu"] + count * each,
            "wall_s": min(r["wall"] for r in many),
            "parts_wall_s": start["wall"] + count * (min(r["wall"] for r in one) - start["wall"]),
        }
    return result


def memory(flumo, folder, quick):
    sizes = ["64x36", "640x360", "1280x720", "1920x1080"]
    if not quick:
        sizes += ["2560x1440", "3840x2160"]
    rows = []
    for size in sizes:
        for depth in (8, 32):
            peak = run(render(flumo, folder, size, depth=depth))
            rows.append({"size": size, "depth": depth, "mib": peak["mib"] if peak else None})
    return rows


def main():
    flumo, out = sys.argv[1:3]
    quick = "--quick" in sys.argv
    with tempfile.TemporaryDirectory() as folder:
        result = {
            "start": start_times(flumo, folder),
            "throughput": throughput(flumo, folder, "640x360", 6 if quick else 12),
            "memory": memory(flumo, folder, quick),
            "load": os.getloadavg()[0],
        }
    with open(out, "w", encoding="utf-8") as file:
        json.dump(result, file, indent=1)


if __name__ == "__main__":
    main()
