#!/usr/bin/env python3
"""Times the window's start as a person meets it, whole process, over a library of many pictures.

Makes a home whose Pictures folder holds COUNT pictures in 40 folders (links to one sample JPEG of
the demo library), indexes it once with nimbrel-library, then starts nimbrel RUNS times with
NIMBREL_TRACE_START set and reads, from its standard error, when the first frame (the splash) and
the first frame with the home screen on top were shown. The home screen follows the splash's own
five seconds. Prints the median and the spread of each, in milliseconds from launch.

usage: window_start.py BUILD_DIR [COUNT] [RUNS]
"""
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time


def make_home(build, home, count):
    subprocess.run([f"{build}/tools/library/nimbrel-demo-library", home], check=True, stdout=subprocess.DEVNULL)
    sample = next(os.path.join(d, f) for d, _, files in os.walk(f"{home}/Pictures") for f in sorted(files)
                  if f.lower().endswith(".jpg"))
    shutil.copy(sample, f"{home}/sample.jpg")
    for folder in ("Pictures", "Videos", "Music"):
        shutil.rmtree(f"{home}/{folder}")
    for i in range(count):
        folder = f"{home}/Pictures/Folder {i % 40:02d}"
        os.makedirs(folder, exist_ok=True)
        os.link(f"{home}/sample.jpg", f"{folder}/IMG_{i:05d}.jpg")


def environment(home):
    env = dict(os.environ, HOME=home, XDG_DATA_HOME=f"{home}/.local/share", XDG_CONFIG_HOME=f"{home}/.config",
               XDG_CACHE_HOME=f"{home}/.cache", XDG_STATE_HOME=f"{home}/.local/state", NIMBREL_TRACE_START="1")
    for name in ("NIMBREL_HOME", "NIMBREL_PICTURES", "NIMBREL_VIDEOS", "NIMBREL_MUSIC", "XDG_PICTURES_DIR",
                 "NIMBREL_ADS"):
        env.pop(name, None)
    if not env.get("DISPLAY") and not env.get("WAYLAND_DISPLAY"):
        env.setdefault("QT_QPA_PLATFORM", "offscreen")
    return env


def one_start(build, env):
    start = time.monotonic()
    process = subprocess.Popen([f"{build}/src/shell/nimbrel"], stderr=subprocess.PIPE, stdout=subprocess.DEVNULL,
                               env=env, text=True)
    seen = {}
    try:
        for line in process.stderr:
            if line.startswith("nimbrel: first frame"):
                seen["first frame"] = (time.monotonic() - start) * 1000
            elif line.startswith("nimbrel: home frame"):
                seen["home frame"] = (time.monotonic() - start) * 1000
                break
            if time.monotonic() - start > 60:
                break
    finally:
        process.kill()
        process.wait()
    if len(seen) != 2:
        raise SystemExit(f"the window did not show both frames: {seen}")
    return seen


def main():
    if len(sys.argv) < 2:
        raise SystemExit(__doc__)
    build = os.path.abspath(sys.argv[1])
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 20000
    runs = int(sys.argv[3]) if len(sys.argv) > 3 else 5
    with tempfile.TemporaryDirectory() as work:
        home = f"{work}/home"
        make_home(build, home, count)
        env = environment(home)
        began = time.monotonic()
        subprocess.run([f"{build}/tools/library/nimbrel-library", "scan"], env=env, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        print(f"window start over {count} pictures ({env.get('QT_QPA_PLATFORM', 'display')}): "
              f"first index {(time.monotonic() - began) * 1000:.0f} ms")
        starts = [one_start(build, env) for _ in range(runs)]
        for what in ("first frame", "home frame"):
            values = [s[what] for s in starts]
            print(f"  {what:<12} median {statistics.median(values):7.0f} ms   min {min(values):7.0f}   "
                  f"max {max(values):7.0f}   ({runs} starts)")


if __name__ == "__main__":
    main()
