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
    head = ["stream", "ours: core", "ours: public", "FFmpeg", "GStreamer", "memchr for 01", "memchr",
            "memcpy", "core to faster peer", "public to faster peer"]
    rows = []
    context = json.loads((results / "walk-64KiB.json").read_text())["context"]
    for stream in sorted(streams, key=lambda s: (s.split("/")[1] != "64KiB", s)):
        time = streams[stream]
        peer = min(time["ffmpeg"], time["gstreamer"])
        rows.append([f"{stream}: {context[stream]}"]
                    + [duration(time[n]) for n in
                       ("core", "public", "ffmpeg", "gstreamer", "memchr01", "memchr",
                        "memcpy")]
                    + [f"{peer / time['core']:.2f}", f"{peer / time['public']:.2f}"])
        for ours in ("core", "public"):
            goal(f"walk {stream}, {ours}, times the faster peer", peer / time[ours],
                 {"small/64KiB": 2.5, "large/64KiB": 4}.get(stream, 2), most=False)
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


def meta_keys():
    time = {run: entry[0] / entry[2].get("codes", 1)
            for run, entry in medians("metakeys.json").items()}
    goal("metadata into a message, of its platform calls",
         time["convert/ours"] / time["convert/platform"], 1.2, most=True)
    print("Metadata keys (median CPU time):\n")
    runs = ("key/ours", "key/hash", "convert/ours", "convert/platform")
    table(["getMsgKey", "hash table", "20 entries into a message", "its platform calls"],
          [[duration(time[run]) for run in runs]])


def tags():
    found = {run: entry[0] for run, entry in medians("tags.json").items()}
    sizes = json.loads((results / "tags.json").read_text())["context"]
    columns = ("ours", "texts", "libid3tag", "taglib", "gstreamer", "ffmpeg", "format", "copies")
    rows = []
    for kind in (f"v2.{v} {k}" for v in (3, 4) for k in ("picture", "texts", "unsynchronised")):
        time = {n: found[f"{kind}/{n}"] for n in columns if f"{kind}/{n}" in found}
        rows.append([kind, sizes[kind]] + [duration(time[n]) if n in time else "–" for n in columns])
        peer = min(time[n] for n in columns[2:6] if n in time)
        if kind.endswith("unsynchronised"):
            goal(f"{kind} into a format, times the fastest peer", peer / time["format"], 4, most=False)
        else:
            goal(f"{kind}, of the fastest peer", time["ours"] / peer,
                 0.25 if kind.endswith("texts") else 0.75, most=True)
        if kind.endswith("picture"):
            goal(f"{kind} into a format, of two copies", time["format"] / time["copies"], 1.3,
                 most=True)
    print("ID3 tags (median CPU time):\n")
    table(["tag", "bytes", "ours", "ours, all texts", "libid3tag", "TagLib", "GStreamer", "FFmpeg",
           "ours into a format", "two copies"], rows)

    small = {size: found[f"small/{size}"] for size in (1, 2, 4, 5)}
    goal("small frames, time per byte of 5 MiB, of that of 1 MiB", small[5] / 5 / small[1], 1.5,
         most=True)
    goal("small frames, 5 MiB", small[5] / 1e6, 20, most=True, unit=" ms")
    print("ID3v2.4, frames of 16 bytes, each with a byte to remove (median CPU time):\n")
    table(["tag", "time", "per MiB"],
          [[f"{n} MiB", duration(t), duration(t / n)] for n, t in small.items()])

    peers = {n: found[f"comment/{n}"] for n in ("taglib", "gstreamer", "ffmpeg")}
    goal("picture comment, times the fastest peer", min(peers.values()) / found["comment/ours"], 3,
         most=False)
    goal("base64, times OpenSSL", found["base64/openssl"] / found["base64/ours"], 1.5, most=False)
    goal("text comment", found["text/ours"] / 1e3, 0.4, most=True, unit=" µs")
    print(f"Vorbis comments, with a picture of {sizes['base64']} characters (median CPU time):\n")
    table(["operation", "ours", "TagLib", "GStreamer", "FFmpeg", "OpenSSL", "memcpy"],
          [["two comments into a format", duration(found["comment/ours"])]
           + [duration(t) for t in peers.values()] + ["–", "–"],
           ["base64", duration(found["base64/ours"]), "–", "–", "–",
            duration(found["base64/openssl"]), duration(found["base64/memcpy"])],
           ["text comment", duration(found["text/ours"])] + 5 * ["–"]])


def worst_of(text, values, bound, most, unit=""):
    """A goal for all, by the one that is farthest from it."""
    name = (max if most else min)(values, key=values.get)
    goal(f"{text}, worst: {name}", values[name], bound, most, unit)


# Conversion -> for 64 KiB, memcpy's time and the fastest peer's through ours.
PCM = {"8 unsigned to 16": (0.7, 5), "8 signed to 16": (0.7, 5), "24 to 16": (0.85, 5),
       "24 big-endian to 16": (0.85, 5), "32 to 16": (0.95, 0.9), "32 to 24": (0.75, 7),
       "32 to 24 big-endian": (0.75, 7), "float to 24": (0.45, 5), "24 to float": (0.6, 7),
       "32 to float": (0.85, 0.95), "32 big-endian to float": (0.75, 4.5), "24 to 32": (0.75, 6),
       "24 big-endian to 32": (0.75, 6), "swap 16": (0.95, 0.9), "swap 24": (0.75, 4),
       "swap 32": (0.95, 0.9)}


def pcm():
    found = medians("pcm-small.json") | medians("pcm-large.json")
    time = {run: entry[0] for run, entry in found.items()}
    columns = ("ours", "memcpy", "loop", "ffmpeg", "sndfile", "gstreamer", "sdl", "volk")
    shares = {}
    for size in ("4KiB", "64KiB", "64MiB"):
        limit = "loop" if size == "64MiB" else "memcpy"
        rows = []
        for name, (share, times) in PCM.items():
            run = {c: time.get(f"{name}/{size}/{c}") for c in columns}
            ratios = [run[limit] / run["ours"],
                      min(filter(None, (run[c] for c in columns[3:]))) / run["ours"]]
            rows.append([name] + [duration(t) if t else "–" for t in run.values()]
                        + [f"{r:.2f}" for r in ratios])
            shares[name] = ratios[0]
            if size == "64KiB":
                goal(f"{name}, memcpy through ours", ratios[0], share, most=False)
                goal(f"{name}, times the fastest peer", ratios[1], times, most=False)
        print(f"PCM, {size[:-3]} {size[-3:]} of source (median CPU time):\n")
        table(["conversion", "ours", "memcpy", "loop", "FFmpeg", "libsndfile", "GStreamer", "SDL",
               "VOLK", f"{limit} / ours", "fastest peer / ours"], rows)
    worst_of("PCM, 64 MiB, copy loop through ours", shares, 0.9, most=False)
    per_sample = lambda run: time[run] / found[run][2]["samples"]
    worst_of("PCM, time a sample in 4 KiB, of that in 64 KiB",
             {n: per_sample(f"{n}/4KiB/ours") / per_sample(f"{n}/64KiB/ours") for n in PCM},
             1.1, most=True)
    worst_of("PCM, a single sample", {n: time[f"{n}/1/ours"] for n in PCM}, 20, most=True, unit=" ns")

    lines = (results / "count-pcm.txt").read_text().splitlines()
    counts = {line.split()[0]: float(line.split()[1]) for line in lines}
    print("PCM on AArch64, instructions a sample:\n")
    table(["conversion", "instructions"], [[n, f"{count:.2f}"] for n, count in counts.items()])
    for text, isFloat, bound in (("float to 24", True, 2), ("the others", False, 1.2)):
        worst_of(f"PCM on AArch64, instructions a sample, {text}",
                 {n: c for n, c in counts.items() if n.startswith("Float") == isFloat}, bound,
                 most=True)


def cycles():
    """The table of bench/count/model-cycles: three columns a processor after the loop and its size."""
    lines = (results / "cycles.txt").read_text().splitlines()
    print("Loops on models of AArch64 processors, everything in the first cache:\n")
    print("\n".join(lines) + "\n")
    head, _, *rows = ([cell.strip() for cell in line.split("|")[1:-1]] for line in lines)
    for column in range(4, len(head), 3):
        processor = head[column - 2].split(":")[0]
        worst_of(f"cycles on {processor}, of the bound",
                 {row[0]: float(row[column]) for row in rows}, 1.5, most=True)


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
meta_keys()
tags()
pcm()
cycles()
load()
count = (results / "count.txt").read_text().strip()
print(f"AArch64, large units: {count}\n")
goal("AArch64 instructions a byte, large units", float(count.split()[0]), 0.8, most=True)
table(["goal", "measured", "asked for", ""], goals)
noisiest = max(((spread, run) for run, (_, spread, _) in walks().items()))
print(f"Largest spread of the repetitions (standard deviation / mean): {noisiest[0]:.2f}, {noisiest[1]}")
