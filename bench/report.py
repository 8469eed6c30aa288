#!/usr/bin/env python3
"""From the benches' JSON to tables and plots. Tables go between the marks in the document, plots into the
folder of the same name beside it.

usage: report.py RESULTS DOCUMENT.md
RESULTS holds frames*.json of flumo_bench and, where they were run, processes.json and peers.json.
"""
import glob
import json
import os
import re
import statistics
import sys

import svg

# A render command over its bare GL work, where that takes this long; else the milliseconds that it may take more.
LIMIT = 1.03
LIMIT_HOLDS_FROM_MS = 500
LIMIT_MORE_MS = 8
# What the reference's image has to cost at least, in images of the effect's, on a software driver.
TARGETS = {"default": 8, "worley": 4.5, "smoke": 3.8, "voronoi": 3.2, "three layers": 4, "4 lines": 10, "40 lines": 25}


def load(folder, name):
    path = os.path.join(folder, name)
    if not os.path.exists(path):
        return None
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def plain_name(bench):
    """Without what Google Benchmark adds."""
    return re.sub(r"/(iterations|repeats|manual_time|real_time).*", "", bench["name"])


def cases(run, subject):
    """Benches of a subject by name, repetitions in a list; failed ones and aggregates left out."""
    found = {}
    for bench in run["benchmarks"]:
        name = plain_name(bench)
        if name.startswith(subject + "/") and bench["run_type"] == "iteration" and "error_message" not in bench:
            found.setdefault(name[len(subject) + 1:], []).append(bench)
    return found


def first_with(runs, subject):
    return next((run for run in runs if cases(run, subject)), None)


def all_of(runs, subject):
    """The first repetition of each case of the first run that has the subject."""
    run = first_with(runs, subject)
    return {name: benches[0] for name, benches in cases(run, subject).items()} if run is not None else {}


def failed(run, subject):
    return {plain_name(b)[len(subject) + 1:]: b["error_message"] for b in run["benchmarks"]
            if "error_message" in b and plain_name(b).startswith(subject + "/")}


def machine(run):
    context = run["context"]
    driver = re.search(r"Renderer: (.*)", context["driver"]).group(1)
    load = context["load_avg"][0] if context.get("load_avg") else 0
    return (f"{context['date'][:10]}, {context['num_cpus']} cores at {context['mhz_per_cpu']} MHz, {driver}, "
            f"frames of {context['size']}, load at the start {load:.1f}")


def estimate(bench):
    """Whole over bare, estimated from the serial time of the calling thread, as the driver draws the same."""
    return 1 + (bench["whole_own"] - bench["bare_own"]) / bench["bare_least"]


def scenes(run):
    """Scene, depth and bench of each measured frame."""
    for name, (bench, *_) in cases(run, "frame").items():
        yield *name.rsplit("/", 1), bench


def size(bench):
    return f"{bench['width']:.0f}x{bench['height']:.0f}"


def target(scene):
    return next((least for name, least in TARGETS.items() if re.match(name + r"\b", scene)), None)


def with_machine(runs, head, rows_of):
    """One table for each run that measured frames."""
    return "\n\n".join(f"Machine: {machine(run)}\n\n" + table(head, rows) for run in runs if (rows := rows_of(run)))


def image_rows(run):
    return [[scene, size(bench), depth, f"{bench['turns']:.0f}", f"{bench['reference_cpu']:.0f}",
             f"{bench['main_cpu']:.0f}", f"{bench['image_ratio']:.2f}",
             f"{bench['image_ratio_least']:.2f} to {bench['image_ratio_most']:.2f}",
             f"{bench['reference_least'] / bench['main_least']:.2f}", f"{target(scene) or ''}",
             "yes" if bench["differing_pixels"] == 0 else f"no, {bench['differing_pixels']:.0f} pixels"]
            for scene, depth, bench in scenes(run)]


def images(runs):
    head = ["Scene", "Frame", "Bits", "Turns", "Reference, CPU ms", "Ours, CPU ms", "Reference / ours (CPU)", "Of all turns",
            "Reference / ours (wall)", "At least", "Same picture"]
    return with_machine(runs, head, image_rows)


def verdict(bench):
    """Which of the two limits applies to this frame, and whether it is met."""
    if bench["bare_least"] >= LIMIT_HOLDS_FROM_MS:
        return f"{LIMIT}: " + ("kept" if estimate(bench) <= LIMIT else "not kept")
    kept = bench["whole_own"] - bench["bare_own"] <= LIMIT_MORE_MS
    return f"{LIMIT_MORE_MS} ms: " + ("kept" if kept else "not kept")


def frame_rows(run):
    return [[scene, size(bench), depth, f"{bench['turns']:.0f}", f"{bench['main_least']:.0f}", f"{bench['bare_least']:.0f}",
             f"{bench['whole_least']:.0f}", f"{bench['whole_cpu'] / bench['bare_cpu']:.3f}",
             f"{bench['whole_own'] - bench['bare_own']:.1f}", f"{estimate(bench):.4f}", verdict(bench),
             f"{bench['whole_cpu'] / bench['main_cpu']:.3f}", f"{bench['whole_least'] / bench['bare_least']:.3f}"]
            for scene, depth, bench in scenes(run)]


def frames(runs):
    head = ["Scene", "Frame", "Bits", "Turns", "Image ms", "Bare GL ms", "Whole ms", "Whole / bare (CPU)", "Own ms more",
            "Whole / bare (own)", "Limit", "Whole / image (CPU)", "Whole / bare (wall)"]
    return with_machine(runs, head, frame_rows)


def times(benches):
    return statistics.median(b["real_time"] for b in benches), min(b["real_time"] for b in benches)


def parts(run):
    rows = []
    for subject in ("start", "read-back", "host's share"):
        for name, benches in cases(run, subject).items():
            middle, least = times(benches)
            label = f"{subject}, {name} bits" if name.isdigit() else name
            rows.append([label, f"{middle:.3f}", f"{least:.3f}"])
    return table(["What", "Median ms", "Least ms"], rows)


def sizes(run):
    rows = [[name, f"{b['megapixels']:.2f}", f"{b['real_time']:.0f}", f"{b['cpu']:.0f}",
             f"{b['cpu'] / b['megapixels']:.0f}"] for name, (b, *_) in cases(run, "size").items()]
    rows += [[name, "", message, "", ""] for name, message in failed(run, "size").items()]
    return table(["Frame", "Megapixels", "Wall ms", "CPU ms", "CPU ms per megapixel"], rows)


def lines(run):
    rows = [[name, f"{b['real_time']:.0f}", f"{b['cpu']:.0f}"] for name, (b, *_) in cases(run, "lines").items()]
    return table(["LinesCount", "Wall ms", "CPU ms"], rows)


def threads(run):
    rows = [[name, f"{max(b['frames_per_second'] for b in benches):.2f}"]
            for name, benches in cases(run, "threads").items()]
    return table(["Threads", "Frames per second"], rows)


def processes(result):
    start = result["start"]
    words = {"warm": "one 64x36 frame, program cache warm", "cold": "one 64x36 frame, no program cache",
             "no_frame": "`flumo --version`"}
    rows = [[words[key], f"{v['wall_ms']:.0f}", f"{v['least_ms']:.0f}", f"{v['cpu_ms']:.0f}"] for key, v in start.items()]
    tables = [table(["Whole process", "Median ms", "Least ms", "CPU ms"], rows)]
    rows = [[row["size"], *(f"{row[whose][key]:.0f}" for whose in ("reference", "effect") for key in ("wall_ms", "cpu_ms")),
             f"{row['ratio_cpu']:.2f}"] for row in result["first"]]
    tables.append(table(["First frame, no program cache", "Reference ms", "Reference, CPU ms", "Ours ms", "Ours, CPU ms",
                         "Reference / ours (CPU)"], rows))
    rows = []
    for shot in result["throughput"]:
        alone = shot["seconds"]["alone"]
        for name, seconds in shot["seconds"].items():
            rows.append([name, shot["size"], f"{1 / seconds['wall']:.2f}", f"{1e3 * seconds['cpu']:.0f}",
                         f"{alone['wall'] / seconds['wall']:.3f}", f"{alone['cpu'] / seconds['cpu']:.3f}"])
    tables.append(table(["Frames go to", "Size", "Frames per second", "CPU ms a frame", "Throughput over alone",
                         "The same by CPU time"], rows))
    rows = [[r["size"], str(r["depth"]), f"{r['mib']:.0f}" if r["mib"] else "failed"] for r in result["memory"]]
    tables.append(table(["Frame", "Bits", "Most memory, MiB"], rows))
    return "\n\n".join(tables)


def peers(rows):
    cells = [[r["name"], r["skipped"], "", "", ""] if "skipped" in r else
             [r["name"], f"{r['wall_ms']:.0f}", f"{r['cpu_ms']:.0f}", f"{max(r['start_ms'], 0):.0f}", f"{r['mib']:.0f}"]
             for r in rows]
    return table(["Generator", "Wall ms a frame", "CPU ms a frame", "Start ms", "Most memory, MiB"], cells)


def plots(runs):
    """File name and text of each plot that the results allow."""
    whole, image = {}, {}
    for run in runs:
        for scene, depth, bench in scenes(run):
            for ratios, ratio in ((whole, bench["whole_cpu"] / bench["bare_cpu"]), (image, bench["image_ratio"])):
                rows = ratios.setdefault(run["context"]["size"], {}).setdefault(scene, {})
                rows[depth + " bits"] = ratio
    for run_size, rows in whole.items():
        yield f"ratios-{run_size}.svg", svg.dots(f"Render command over its bare GL work, {run_size}",
                                                 "CPU time, ratio; the dashed line is the limit", rows,
                                                 dict.fromkeys(rows, LIMIT))
    for run_size, rows in image.items():
        yield f"image-{run_size}.svg", svg.dots(f"Image pass, reference over ours, {run_size}",
                                                "CPU time, ratio; the dashed lines are what it has to be at least", rows,
                                                {scene: target(scene) for scene in rows if target(scene)}, logarithmic=True)
    points = [(b["megapixels"], b["cpu"] / 1e3) for b in all_of(runs, "size").values()]
    if len(points) > 1:
        yield "sizes.svg", svg.chart("Cost of a frame, default look", "megapixels", "CPU seconds",
                                     {"default": points}, logarithmic=True)
    points = [(int(name), b["cpu"] / 1e3) for name, b in all_of(runs, "lines").items()]
    if len(points) > 1:
        yield "lines.svg", svg.chart("Cost of a frame with lines, 640x360", "LinesCount", "CPU seconds", {"lines": points})


def put(document, name, body):
    begin, end = f"<!-- begin {name} -->", f"<!-- end {name} -->"
    pattern = re.compile(re.escape(begin) + ".*?" + re.escape(end), re.S)
    if not pattern.search(document):
        raise SystemExit(f"report.py: the document has no place for {name}")
    return pattern.sub(lambda _: f"{begin}\n{body}\n{end}", document)


def studio(result):
    rows = [[row["noise"], f"{row['coarse_median_ms']:.0f}, {row['coarse_95_ms']:.0f}",
             f"{row['fine_median_ms']:.0f}, {row['fine_95_ms']:.0f}",
             f"{row['longest_stall_ms']:.1f}, {row['longest_own_ms']:.1f}", f"{row['pictures_per_second']:.0f}"]
            for row in result["generators"]]
    return (f"Two cores, load at the start {result['load']:.1f}.\n\n"
            + table(["Noise", "Coarse ms: median, 95 %", "Finished ms: median, 95 %", "Longest stall ms: wall, own CPU",
                     "Pictures a second while dragged"], rows))


def main():
    folder, path = sys.argv[1:3]
    runs = [load(folder, os.path.basename(p)) for p in sorted(glob.glob(os.path.join(folder, "frames*.json")))]
    # The run with the largest frames comes first.
    runs.sort(key=lambda run: -int(run["context"]["size"].split("x")[0]))
    bodies = {"frames": frames(runs), "image": images(runs)}
    for name, subject, write in (("parts", "start", parts), ("sizes", "size", sizes), ("lines", "lines", lines),
                                 ("threads", "threads", threads)):
        if (run := first_with(runs, subject)) is not None:
            bodies[name] = write(run)
    if (result := load(folder, "processes.json")) is not None:
        bodies["processes"] = processes(result)
    if (result := load(folder, "studio.json")) is not None:
        bodies["studio"] = studio(result)
    if (result := load(folder, "peers.json")) is not None:
        bodies["peers"] = peers(result)
    with open(path, encoding="utf-8") as file:
        document = file.read()
    for name, body in bodies.items():
        document = put(document, name, body)
    with open(path, "w", encoding="utf-8") as file:
        file.write(document)
    pictures = os.path.splitext(path)[0]
    os.makedirs(pictures, exist_ok=True)
    for name, content in plots(runs):
        with open(os.path.join(pictures, name), "w", encoding="utf-8") as file:
            file.write(content)


if __name__ == "__main__":
    main()
