#!/usr/bin/env python3
"""usage: openjd_test.py FLUMO EXAMPLES: runs examples/openjd as a farm would, on this machine.

Fills in the parameters, runs the tasks of each step in the order of its dependencies, and looks at what they leave."""
import json
import os
import re
import subprocess
import sys
import tempfile

flumo, examples = sys.argv[1:]
with open(f"{examples}/openjd/flumo.template.json", encoding="utf-8") as file:
    template = json.load(file)


def fill_in(text, values):
    def value_of(match):
        return str(values[match.group(1)])  # an unknown name ends the test

    return re.sub(r"{{\s*([\w.]+)\s*}}", value_of, text)


def tasks_of(step, values):
    """The values of each task: of no parameter one task, of an integer one as many as its range has."""
    definitions = step.get("parameterSpace", {}).get("taskParameterDefinitions", [])
    if not definitions:
        return [values]
    (definition,) = definitions
    first, last = map(int, fill_in(definition["range"], values).split("-"))
    return [values | {f"Task.Param.{definition['name']}": number} for number in range(first, last + 1)]


def run_steps(values):
    done, output = set(), ""
    for step in template["steps"]:
        assert {need["dependsOn"] for need in step.get("dependencies", [])} <= done, step["name"]
        action = step["script"]["actions"]["onRun"]
        for task in tasks_of(step, values):
            command = [fill_in(word, task) for word in [action["command"], *action["args"]]]
            output += subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
        done.add(step["name"])
    return output


with tempfile.TemporaryDirectory() as folder:
    given = {"Scene": f"{folder}/shot.json", "Frames": "11-23x2", "Chunks": "1-3", "ChunkCount": 3,
             "Folder": f"{folder}/shot", "Rate": "30", "Flumo": flumo}
    with open(given["Scene"], "w", encoding="utf-8") as file:
        json.dump({"size": "64x36", "controls": {"Evolution": [{"frame": 0, "value": 0}, {"frame": 50, "value": 90}]}}, file)
    values = {f"Param.{each['name']}": each.get("default") for each in template["parameterDefinitions"]}
    assert {f"Param.{name}" for name in given} <= values.keys()
    values |= {f"Param.{name}": value for name, value in given.items()}

    told = run_steps(values)
    assert told.count("openjd_progress: 100.0") == 3, told
    assert sorted(os.listdir(f"{folder}/shot/frames")) == [f"{number:06d}.png" for number in range(1, 8)]
    probe = subprocess.run(["ffprobe", "-v", "error", "-count_frames", "-show_entries", "stream=nb_read_frames,r_frame_rate",
                            "-of", "csv=p=0", f"{folder}/shot/shot.mp4"], check=True, stdout=subprocess.PIPE, text=True)
    assert probe.stdout.strip() == "30/1,7", probe.stdout
    # A task may be run again: what is there stays.
    assert "were there" in run_steps(values)
