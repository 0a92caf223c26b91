#!/usr/bin/env python3
"""Drives the Qt program (offscreen) and the headless runner through the same steps from launch:
splash, home, the images screen, an album, a long press, the menu, storage analysis, settings.
Each `tree` of the Qt program must match the headless runner's (screens, their outlets, the
overlays; `now` aside). Screenshots of every scene are kept under the artifacts folder, and any Qt
or QML warning in the program's log fails the run.

usage: shell_e2e.py NIMBREL NIMBREL_HEADLESS FIXTURE ARTIFACTS_DIR {phone|pad}
"""
import json
import os
import subprocess
import sys
import tempfile

# Values the shell measures with its own font: present and positive on both sides, not equal.
MEASURED = {"subVFolderNameWidthConstant"}

STEPS = [
    ("advance", {"op": "advance", "seconds": 1.2}),
    ("shot", "splash"),
    ("advance", {"op": "advance", "seconds": 4.6}),
    ("tree", "home"),
    ("shot", "home"),
    ("send", {"op": "action", "selector": "onImagesBtn:", "sender": "btnImages"}),
    ("advance", {"op": "advance", "seconds": 1.2}),
    ("tree", "images"),
    ("shot", "images"),
    ("send", {"op": "tap", "collection": "albumsCollectionView", "row": 2}),
    ("advance", {"op": "advance", "seconds": 0.8}),
    ("tree", "album"),
    ("shot", "album"),
    ("send", {"op": "longPress", "collection": "albumsCollectionView", "row": 1}),
    ("advance", {"op": "advance", "seconds": 0.4}),
    ("tree", "selection"),
    ("shot", "selection"),
    ("send", {"op": "action", "selector": "onMenuBtn:", "sender": "btnMrnu"}),
    ("advance", {"op": "advance", "seconds": 0.3}),
    ("tree", "menu"),
    ("shot", "menu"),
    ("send", {"op": "menu", "index": 1}),
    ("advance", {"op": "advance", "seconds": 2.8}),
    ("tree", "storage"),
    ("shot", "storage"),
    ("send", {"op": "action", "selector": "onMenuBtn:", "sender": "btnMenu"}),
    ("advance", {"op": "advance", "seconds": 0.2}),
    ("send", {"op": "menu", "index": 0}),
    ("advance", {"op": "advance", "seconds": 1.2}),
    ("tree", "settings"),
    ("shot", "settings"),
]


class Program:
    def __init__(self, argv, env):
        self.proc = subprocess.Popen(argv, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                     stderr=subprocess.PIPE, text=True, env=env)

    def ask(self, request):
        self.proc.stdin.write(json.dumps(request) + "\n")
        self.proc.stdin.flush()
        line = self.proc.stdout.readline()
        if not line:
            raise RuntimeError("the program ended early: " + self.proc.stderr.read()[-3000:])
        return json.loads(line)

    def close(self):
        self.proc.stdin.close()
        out = self.proc.stdout.read()
        err = self.proc.stderr.read()
        status = self.proc.wait(timeout=60)
        return status, out, err


def strip_measured(node, path, problems):
    """Replaces measured constants by a marker after checking them."""
    if isinstance(node, dict):
        out = {}
        for key, value in node.items():
            if key in MEASURED and isinstance(value, dict) and "constant" in value:
                if not (isinstance(value["constant"], (int, float)) and value["constant"] > 0):
                    problems.append(f"{path}/{key}: measured width {value['constant']!r} is not positive")
                out[key] = dict(value, constant="<measured>")
            else:
                out[key] = strip_measured(value, f"{path}/{key}", problems)
        return out
    if isinstance(node, list):
        return [strip_measured(v, f"{path}/{i}", problems) for i, v in enumerate(node)]
    return node


def differences(a, b, path=""):
    if type(a) is not type(b):
        return [f"{path}: {json.dumps(a)[:160]} != {json.dumps(b)[:160]}"]
    if isinstance(a, dict):
        out = []
        for key in sorted(set(a) | set(b)):
            if key not in a or key not in b:
                out.append(f"{path}/{key}: only in {'qt' if key in a else 'headless'}")
            else:
                out += differences(a[key], b[key], f"{path}/{key}")
        return out
    if isinstance(a, list):
        if len(a) != len(b):
            return [f"{path}: {len(a)} entries != {len(b)}"]
        out = []
        for i, (x, y) in enumerate(zip(a, b)):
            out += differences(x, y, f"{path}/{i}")
        return out
    return [] if a == b else [f"{path}: {json.dumps(a)[:160]} != {json.dumps(b)[:160]}"]


def main():
    nimbrel, headless, fixture_path, artifacts, form = sys.argv[1:6]
    os.makedirs(artifacts, exist_ok=True)
    with tempfile.TemporaryDirectory() as scratch:
        with open(fixture_path, encoding="utf-8") as f:
            fixture = json.load(f)
        if form == "pad":
            fixture["device"] = {"idiom": "pad", "systemVersion": "17.0",
                                 "screen": {"width": 1024, "height": 1366, "scale": 2}}
        fixture_file = os.path.join(scratch, "fixture.json")
        with open(fixture_file, "w", encoding="utf-8") as f:
            json.dump(fixture, f)
        runtime = os.path.join(scratch, "runtime")
        os.mkdir(runtime, 0o700)
        env = dict(os.environ, TMPDIR=scratch, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software",
                   XDG_RUNTIME_DIR=runtime)
        qt = Program([nimbrel, "--automation", "--fixture", fixture_file], env)
        sim = Program([headless, "--fixture", fixture_file], env)
        failures = []
        try:
            for kind, what in STEPS:
                if kind == "shot":
                    path = os.path.join(artifacts, f"{what}-{form}.png")
                    answer = qt.ask({"op": "screenshot", "path": path})
                    if not answer.get("ok") or not os.path.getsize(path):
                        failures.append(f"screenshot {what}: {answer}")
                    continue
                request = {"op": "tree"} if kind == "tree" else what
                a, b = qt.ask(request), sim.ask(request)
                if a.get("ok") != b.get("ok"):
                    failures.append(f"{json.dumps(request)}: qt {a} / headless {b}")
                if kind == "tree":
                    for tree in (a, b):
                        tree.pop("now", None)
                    problems = []
                    a = strip_measured(a, "", problems)
                    b = strip_measured(b, "", problems)
                    failures += [f"[{what}] {p}" for p in problems]
                    failures += [f"[{what}] {d}" for d in differences(a, b)]
                    ids = [s["id"] for s in a.get("screens", [])]
                    print(f"{what}: {' > '.join(ids)}")
        finally:
            status, _, err = qt.close()
            sim.close()
        warnings = [line for line in err.splitlines()
                    if line.startswith(("qt-warning", "qt-critical", "qt-fatal"))]
        with open(os.path.join(artifacts, f"log-{form}.txt"), "w", encoding="utf-8") as f:
            f.write(err)
        failures += [f"Qt said: {w}" for w in warnings]
        if status != 0:
            failures.append(f"the program ended with status {status}")
    for failure in failures:
        print("FAIL", failure)
    print(f"{'passed' if not failures else 'failed'}: {len(failures)} problems")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
