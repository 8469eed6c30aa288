#!/usr/bin/env python3
"""Other generators of procedural pictures on this machine at 1920x1080, each with its usual command. Writes JSON.
A tool that is not installed is skipped, with the reason.

usage: peers.py FLUMO OUT.json
"""
import json
import os
import re
import shutil
import statistics
import sys
import tempfile

from processes import run

SIZE = "1920x1080"
WIDTH, HEIGHT = SIZE.split("x")
FEW, MANY = 1, 4
REPEATS = 3


def ffmpeg(source):
    """Frames of a lavfi source, discarded."""
    return lambda count: ["ffmpeg", "-v", "error", "-f", "lavfi", "-i", source, "-frames:v", str(count), "-f", "null", "-"]


def geq(count):
    wave = "128+60*sin(X/90+T)+60*cos(Y/70+sin(X/50))"
    return ffmpeg(f"nullsrc=s={SIZE}:r=25,format=gbrp,geq=r='{wave}':g='{wave}':b='255-({wave})'")(count)


def vips(kind):
    # One picture per process.
    return lambda count: ["sh", "-c", " && ".join([f"vips {kind} x.v {WIDTH} {HEIGHT} --cell-size 256 --seed {n}" for n in range(count)])]


def imagemagick(count):
    program = shutil.which("convert-im6.q16") or "magick"
    pictures = []
    for seed in range(count):
        pictures += ["-seed", str(seed), "plasma:fractal"]
    return [program, "-size", SIZE, *pictures, "null:"]


def gmic(count):
    return ["gmic", "-v", "-1", *sum((["-input", f"{WIDTH},{HEIGHT},1,3", "-plasma[-1]", "1,1,8", "-remove[-1]"] for _ in range(count)), [])]


VERTEX = """#version 330
in vec4 a_position;
in vec2 a_texcoord;
out vec2 out_uvs;
void main() {
    gl_Position = a_position;
    out_uvs = a_texcoord;
}
"""

# Uniforms of the default look that are not 0; as initial values they stay uniforms to the compiler.
DEFAULT_LOOK = {
    "multiplier16bit": "1.0", "noiseType": "1", "noiseContrast": "100.0", "complexity": "4", "fluidSpeed": "0.01",
    "scale": "vec2(1.0)", "layer1Mult": "1.0", "layer2Mult": "1.0", "alphaThreshold": "0.05", "noiseVisible": "1",
    "noiseBottomCroppingEnabled": "1", "noiseBottomCroppingThreshold": "-0.01", "noiseTopCroppingThreshold": "0.99",
    "colorizeMode": "1", "noiseGradientScale": "1.0",
}


def effect_fragment():
    """The effect's main program with the default look as initial values, without comments."""
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "effect", "shaders", "main.frag")
    with open(path, encoding="utf-8") as file:
        text = re.sub(r"//[^\n]*", "", file.read())
    for name, value in DEFAULT_LOOK.items():
        text = re.sub(rf"(uniform \w+ {name});", rf"\1 = {value};", text)
    return text


def glshader(count):
    """The same fragment program as the effect's, at the effect's double size."""
    size = f"width={2 * int(WIDTH)},height={2 * int(HEIGHT)}"
    return ["env", "GST_GL_WINDOW=egl-device", "GST_GL_PLATFORM=egl", "gst-launch-1.0", "-q",
            "gltestsrc", f"num-buffers={count}", "pattern=black", "!",
            f"video/x-raw(memory:GLMemory),{size},format=RGBA", "!",
            "glshader", f'vertex="{VERTEX}"', f'fragment="{effect_fragment()}"', "!", "fakesink"]


def flumo_default(flumo):
    return lambda count: [flumo, "render", "--size", SIZE, "--frames", f"0-{count - 1}" if count > 1 else "0",
                          "-o", "frame.####.exr"]


def peers(flumo):
    """Name, program that must be installed, command for a number of frames."""
    return [
        ("flumo, default look", flumo, flumo_default(flumo)),
        ("ffmpeg gradients", "ffmpeg", ffmpeg(f"gradients=s={SIZE}:r=25:n=4")),
        ("ffmpeg geq, two sines and a cosine", "ffmpeg", geq),
        ("frei0r plasma through ffmpeg", "ffmpeg", ffmpeg(f"frei0r_src=size={SIZE}:framerate=25:filter_name=plasma:filter_params=0.5")),
        ("ImageMagick plasma", "convert-im6.q16", imagemagick),
        ("libvips worley", "vips", vips("worley")),
        ("libvips perlin", "vips", vips("perlin")),
        ("G'MIC plasma", "gmic", gmic),
        ("GStreamer glshader, the default look's program at 3840x2160", "gst-launch-1.0", glshader),
    ]


def measure(command):
    """Per frame, without the start of the process: the difference of a long and a short run."""
    few, many = [], []
    for _ in range(REPEATS):
        few.append(run(command(FEW)))
        many.append(run(command(MANY)))
        if few[-1] is None or many[-1] is None:
            return {"skipped": "the command failed here"}
    per_frame = {key: (min(r[key] for r in many) - min(r[key] for r in few)) / (MANY - FEW) for key in ("wall", "cpu")}
    return {
        "wall_ms": 1e3 * per_frame["wall"], "cpu_ms": 1e3 * per_frame["cpu"],
        "start_ms": 1e3 * (statistics.median(r["wall"] for r in few) - per_frame["wall"]),
        "mib": max(r["mib"] for r in many),
    }


def main():
    flumo, out = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    rows = []
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        for name, program, command in peers(flumo):
            found = shutil.which(program)
            row = measure(command) if found else {"skipped": f"{program} is not installed"}
            rows.append({"name": name, **row})
            print(json.dumps(rows[-1]), file=sys.stderr)
    with open(out, "w", encoding="utf-8") as file:
        json.dump(rows, file, indent=1)


if __name__ == "__main__":
    main()
