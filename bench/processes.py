#!/usr/bin/env python3
"""Whole processes: time from process start to the end of a first frame, of the command line and of the effect
against the bench's reference; frames of a sequence against frames that a render thread draws by itself; the
most memory that a frame size takes. Writes JSON.

usage: processes.py BUILD OUT.json [--quick]
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
TURNS = 3
OUTPUTS = {"nowhere": "/dev/null", "PNG": "frame.####.png", "EXR": "frame.####.exr"}


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


def render(flumo, folder, size, frames="0", depth=8, output="frame.####.exr"):
    name = os.path.join(folder, output)  # an absolute path is kept
    return [flumo, "render", "--size", size, "--depth", str(depth), "--frames", frames, "-o", name]


def median(runs, key):
    return statistics.median(run[key] for run in runs)


def summary(runs):
    return {"wall_ms": 1e3 * median(runs, "wall"), "least_ms": 1e3 * min(run["wall"] for run in runs),
            "cpu_ms": 1e3 * median(runs, "cpu")}


def start_times(flumo, folder):
    """A whole process that renders one tiny frame: start, context, programs, draw, a small file, end."""
    cache = os.path.join(folder, "cache")
    warm_environment = dict(os.environ, MESA_SHADER_CACHE_DIR=cache)
    cold_environment = dict(os.environ, MESA_SHADER_CACHE_DISABLE="true")
    command = render(flumo, folder, TINY, output="frame.png")
    run(command, warm_environment)
    warm, cold, idle = [], [], []
    for _ in range(REPEATS):
        warm.append(run(command, warm_environment))
        cold.append(run(command, cold_environment))
        idle.append(run([flumo, "--version"]))
    return {name: summary(runs) for name, runs in (("warm", warm), ("cold", cold), ("no_frame", idle))}


def first_frames(bench, quick):
    """A process that draws one frame of the default look without the driver's program cache: the effect, and the
    same GL work with the reference instead of its image program. Both take turns."""
    environment = dict(os.environ, MESA_SHADER_CACHE_DISABLE="true")
    rows = []
    for size in [TINY] if quick else [TINY, "1920x1080"]:
        runs = {"effect": [], "reference": []}
        for _ in range(REPEATS):
            for whose, measured in runs.items():
                measured.append(run([bench, f"--first-frame={whose}", f"--size={size}"], environment))
        ratios = [r["cpu"] / e["cpu"] for e, r in zip(runs["effect"], runs["reference"])]
        rows.append({"size": size, "ratio_cpu": statistics.median(ratios),
                     **{whose: summary(measured) for whose, measured in runs.items()}})
    return rows


def alone(bench, folder, size):
    """Seconds per frame on a render thread whose frames are discarded."""
    out = os.path.join(folder, "alone.json")
    if run([bench, f"--benchmark_filter=^alone/{size}/", f"--benchmark_out={out}", "--benchmark_out_format=json"]) is None:
        raise SystemExit(f"processes.py: {bench} failed")
    with open(out, encoding="utf-8") as file:
        case = json.load(file)["benchmarks"][0]
    return {"wall": 1 / case["frames_per_second"], "cpu": case["frame_cpu"] / 1e3}


def sequence(flumo, folder, size, count, output):
    """Seconds per frame of a sequence: a long one less one of a single frame, which removes the start."""
    one = run(render(flumo, folder, size, "0", output=output))
    many = run(render(flumo, folder, size, f"0-{count}", output=output))
    return {key: (many[key] - one[key]) / count for key in ("wall", "cpu")}


def throughput(flumo, bench, folder, size, count):
    """All kinds take turns, so that other load of the machine affects all; the least of the turns counts."""
    times = {"alone": [], **{name: [] for name in OUTPUTS}}
    for _ in range(TURNS):
        times["alone"].append(alone(bench, folder, size))
        for name, output in OUTPUTS.items():
            times[name].append(sequence(flumo, folder, size, count, output))
    return {"size": size, "frames": count,
            "seconds": {name: {key: min(t[key] for t in turns) for key in ("wall", "cpu")}
                        for name, turns in times.items()}}


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
    build, out = sys.argv[1:3]
    flumo, bench = os.path.join(build, "flumo"), os.path.join(build, "flumo_bench")
    quick = "--quick" in sys.argv
    shots = [("640x360", 12)] if quick else [("640x360", 12), ("1920x1080", 6)]
    with tempfile.TemporaryDirectory() as folder:
        result = {
            "start": start_times(flumo, folder),
            "first": first_frames(bench, quick),
            "throughput": [throughput(flumo, bench, folder, *shot) for shot in shots],
            "memory": memory(flumo, folder, quick),
            "load": os.getloadavg()[0],
        }
    with open(out, "w", encoding="utf-8") as file:
        json.dump(result, file, indent=1)


if __name__ == "__main__":
    main()
