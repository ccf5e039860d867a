#!/usr/bin/env python3
"""Prints the tables of one run of scripts/bench from the results in its build folder."""

import json
import subprocess
import sys
from pathlib import Path

results = Path(sys.argv[1])
goals = []


def medians(name, time="cpu_time"):
    """Benchmark name -> (nanoseconds, spread, the whole entry)."""
    entries = json.loads((results / name).read_text())["benchmarks"]
    of = lambda kind: {e["run_name"].split("/iterations")[0]: e
                       for e in entries if e.get("aggregate_name") == kind}
    spread = {run: e[time] for run, e in of("cv").items()}
    return {run: (e[time], spread[run], e) for run, e in of("median").items()}


def goal(text, value, bound, most, unit=""):
    met = value <= bound if most else value >= bound
    sign = "at most" if most else "at least"
    goals.append((text, f"{value:.3g}{unit}", f"{sign} {bound:g}{unit}", "met" if met else "not met"))


def table(head, rows):
    print("| " + " | ".join(head) + " |")
    print("|" + "---|" * len(head))
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print()


def duration(nanoseconds):
    for unit, size in (("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def walks():
    return medians("walk-64KiB.json") | medians("walk-64MiB.json")


def walk():
    found = walks()
    streams = {}
    for run in found:
        stream, row = run.rsplit("/", 1)
        streams.setdefault(stream, {})[row] = found[run][0]
    head = ["stream", "ours: core", "ours: public", "FFmpeg", "GStreamer", "memchr", "memcpy",
            "core to faster peer", "public to faster peer"]
    rows = []
    context = json.loads((results / "walk-64KiB.json").read_text())["context"]
    for stream in sorted(streams, key=lambda s: (s.split("/")[1] != "64KiB", s)):
        time = streams[stream]
        peer = min(time["ffmpeg"], time["gstreamer"])
        rows.append([f"{stream}: {context[stream]}"]
                    + [duration(time[n]) for n in
                       ("core", "public", "ffmpeg", "gstreamer", "memchr", "memcpy")]
                    + [f"{peer / time['core']:.2f}", f"{peer / time['public']:.2f}"])
        for ours in ("core", "public"):
            goal(f"walk {stream}, {ours}, times the faster peer", peer / time[ours],
                 4 if "KiB" in stream else 2, most=False)
    print("Walking all NAL units (median CPU time of one pass):\n")
    table(head, rows)


def config():
    found = medians("config.json")
    rows = []
    for stream in ("small", "large"):
        time = {n: found[f"{stream}/{n}"][0]
                for n in ("sps", "record", "gstreamer", "operation", "platform")}
        rows.append([stream] + [duration(time[n]) for n in time]
                    + [f"{time['sps'] / time['gstreamer']:.3f}",
                       f"{time['record'] / time['gstreamer']:.3f}",
                       f"{time['operation'] / time['platform']:.2f}"])
        goal(f"SPS of {stream} to picture size, of gst_h264_parse_sps",
             time["sps"] / time["gstreamer"], 0.3, most=True)
        goal(f"avcC core of {stream}, of gst_h264_parse_sps",
             time["record"] / time["gstreamer"], 0.3, most=True)
        goal(f"setAVCCSeqHeader of {stream}, of its platform calls",
             time["operation"] / time["platform"], 2, most=True)
    print("H.264 parameter sets (median CPU time):\n")
    table(["stream", "SPS to size", "avcC core", "gst_h264_parse_sps", "setAVCCSeqHeader",
           "its platform calls", "SPS / GStreamer", "avcC / GStreamer", "operation / platform"], rows)


def hevc():
    found = medians("hevc.json")
    time = {n: found[f"hevc/{n}"][0] for n in ("sps", "record", "gstreamer")}
    for row, text in (("sps", "SPS of H.265 to picture size"), ("record", "hvcC core")):
        goal(f"{text}, of gst_h265_parse_sps", time[row] / time["gstreamer"], 0.3, most=True)
    print("H.265 parameter sets (median CPU time):\n")
    table(["SPS to size", "hvcC core", "gst_h265_parse_sps", "SPS / GStreamer", "hvcC / GStreamer"],
          [[duration(t) for t in time.values()]
           + [f"{time[n] / time['gstreamer']:.3f}" for n in ("sps", "record")]])


def key_frames():
    found = medians("keyframe.json")
    rows = []
    for stream in ("small", "large"):
        time = {n: found[f"{stream}/{n}"][0] for n in ("avc", "mpeg4", "walk", "memmem")}
        rows.append([stream] + [duration(t) for t in time.values()])
        for row, text in (("avc", "H.264 without IDR"), ("mpeg4", "MPEG-4 without VOP")):
            goal(f"isKeyFrame, {text}, {stream}, times memmem", time["memmem"] / time[row], 3,
                 most=False)
            goal(f"isKeyFrame, {text}, {stream}, times our walk", time["walk"] / time[row], 0.8,
                 most=False)
    print("isKeyFrame over 64 KiB without a key frame, nothing allocated (median CPU time):\n")
    table(["stream", "H.264", "MPEG-4", "our walk over units", "memmem for 00 00 01"], rows)


def load():
    found = medians("load.json", time="real_time")
    rows = []
    for run, (time, _, entry) in found.items():
        rows.append([run.split("/")[0], duration(time), f"{entry['objects']:.0f}",
                     f"{entry['dirty'] / 1024:.0f} KiB"])
    ours = next(found[run] for run in found if run.startswith("ours"))
    goal("load: time", ours[0] / 1e3, 150, most=True, unit=" µs")
    goal("load: new objects", ours[2]["objects"], 2, most=True)
    goal("load: dirty memory", ours[2]["dirty"] / 1024, 64, most=True, unit=" KiB")
    print("Loading the shared library (median, a process each):\n")
    table(["library", "dlopen", "new objects", "dirty memory"], rows)


def machine():
    model = next(line.split(":")[1].strip() for line in open("/proc/cpuinfo")
                 if line.startswith("model name"))
    version = lambda tool: subprocess.run([tool, "--version"], capture_output=True,
                                          text=True).stdout.splitlines()[0]
    print(f"Machine: {model}; {version('g++')}; {version('aarch64-linux-gnu-g++')}; "
          f"{version('qemu-aarch64')}\n")


machine()
walk()
config()
hevc()
key_frames()
load()
count = (results / "count.txt").read_text().strip()
print(f"AArch64, large units: {count}\n")
goal("AArch64 instructions a byte, large units", float(count.split()[0]), 0.8, most=True)
table(["goal", "measured", "asked for", ""], goals)
noisiest = max(((spread, run) for run, (_, spread, _) in walks().items()))
print(f"Largest spread of the repetitions (standard deviation / mean): {noisiest[0]:.2f}, {noisiest[1]}")
