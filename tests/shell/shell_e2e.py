#!/usr/bin/env python3
"""Drives the Qt program (offscreen) and the headless runner through the same steps, from four
launches (images, videos, documents, music). Each `tree` of the Qt program must match the headless
runner's (screens, their outlets, the overlays; `now` and each program's own library folder aside),
and a few must show what the steps were for. The Qt program takes a gesture as a person's clicks on
its window, the runner hands it to the recogniser. Screenshots of every scene are kept under the
artifacts folder, and any Qt or QML warning in the program's log fails the run.

usage: shell_e2e.py NIMBREL NIMBREL_HEADLESS FIXTURE ARTIFACTS_DIR {phone|pad}
"""
import json
import os
import subprocess
import sys
import tempfile

ABSENT = object()

# Values the shell measures with its own font: present and positive on both sides, not equal.
MEASURED = {"subVFolderNameWidthConstant"}

# Rows in the album the steps open (newest first): the live photo, then a still.
LIVE_ROW = 0
STILL_ROW = 1

STEPS = [
    ("advance", 1.2),
    ("shot", "splash"),
    ("advance", 4.6),
    ("look", "home"),
    ("send", {"op": "action", "selector": "onImagesBtn:", "sender": "btnImages"}, 1.2),
    ("look", "images"),
    ("send", {"op": "tap", "collection": "albumsCollectionView", "row": 2}, 0.8),
    ("look", "album"),
    # The photo viewer: a double tap zooms around the point, another zooms out, a single tap
    # (after the platform's wait for a second one) leaves full screen and brings the bar.
    ("send", {"op": "tap", "collection": "albumsCollectionView", "row": STILL_ROW}, 0.8),
    ("look", "viewer"),
    ("send", {"op": "gesture", "recognizer": "doubleTapRecognizer", "x": 120, "y": 300}, 0.6),
    ("look", "viewer-zoomed"),
    ("send", {"op": "gesture", "recognizer": "doubleTapRecognizer", "x": 120, "y": 300}, 0.6),
    ("send", {"op": "gesture", "recognizer": "singleTapRecognizer", "x": 200, "y": 420}, 0.2),
    ("tree", "viewer-waiting"),
    ("advance", 0.6),
    ("look", "viewer-bar"),
    ("send", {"op": "action", "selector": "onBackBtn:", "screen": "ImagesVC"}, 0.6),
    # The live photo.
    ("send", {"op": "tap", "collection": "albumsCollectionView", "row": LIVE_ROW}, 0.8),
    ("look", "live"),
    ("send", {"op": "action", "selector": "onBackBtn:", "screen": "ImagesVC"}, 0.6),
    ("send", {"op": "longPress", "collection": "albumsCollectionView", "row": 1}, 0.4),
    ("look", "selection"),
    # The info panel for the one selected item, then for two.
    ("send", {"op": "action", "selector": "onInfoBtn:", "sender": "btnInfo"}, 0.8),
    ("look", "info-one"),
    ("send", {"op": "action", "selector": "onExitBtn:", "sender": "btnExit"}, 0.5),
    ("send", {"op": "tap", "collection": "albumsCollectionView", "row": 2}),
    ("send", {"op": "action", "selector": "onInfoBtn:", "sender": "btnInfo"}, 1.0),
    ("look", "info-several"),
    ("send", {"op": "action", "selector": "onDoneBtn:", "sender": "btnDone"}, 0.5),
    ("tree", "selection-after-info"),
    ("send", {"op": "action", "selector": "onMenuBtn:", "sender": "btnMrnu"}, 0.3),
    ("look", "menu"),
    ("send", {"op": "menu", "index": 1}, 2.8),
    ("look", "storage"),
    ("send", {"op": "action", "selector": "onMenuBtn:", "sender": "btnMenu"}, 0.2),
    ("send", {"op": "menu", "index": 0}, 1.2),
    ("look", "settings"),
]

# What a few trees must show, on both sides, so that two programs doing nothing alike would not
# pass: JSON pointers into the tree and the values expected there.
CHECKS = {
    "viewer": {"/screens/-1/id": "PreviewViewController", "/screens/-1/navigationBarHidden": True,
               "/screens/-1/outlets/imageView/image": "pixels:4032x3024"},
    "viewer-zoomed": {"/screens/-1/outlets/scrollView/zoomScale": 2.0, "/screens/-1/statusBarHidden": True},
    # Zoomed out again; the single tap is still waiting for a second one.
    "viewer-waiting": {"/screens/-1/outlets/scrollView/zoomScale": ABSENT, "/screens/-1/statusBarHidden": True},
    "viewer-bar": {"/screens/-1/navigationBarHidden": False, "/screens/-1/statusBarHidden": ABSENT},
    "live": {"/screens/-1/id": "LivePreviewViewController", "/screens/-1/outlets/imageView/hidden": True,
             "/screens/-1/outlets/badgeView/hidden": False},
    "info-one": {"/screens/-1/id": "InfoVC", "/screens/-1/outlets/lblFileName/text": "IMG_0007.JPG",
                 "/screens/-1/outlets/lblFilePath/text": "file://<home>/PhotoLibrary/IMG_0007.JPG"},
    "info-several": {"/screens/-1/id": "PhotosInfoVC", "/screens/-1/outlets/lblContain/text": "2 files"},
    "selection-after-info": {"/screens/-1/id": "ImagesVC"},
    "system-player": {"/screens/-1/id": "AVPlayerViewController", "/screens/-1/presentation": "modal"},
    "audio": {"/screens/-1/id": "AudioVC"},
    "music-player": {"/screens/-1/id": "MusicPlayerVC", "/screens/-1/outlets/lblSongTitle/text": "Blue",
                     "/screens/-1/outlets/btnPlayOutlet/image": "play"},
}

# From a second launch: the videos screen, a video in the system player.
VIDEO_STEPS = [
    ("advance", 5.8),
    ("send", {"op": "action", "selector": "onVideoBtn:", "sender": "btnVideo"}, 1.2),
    ("tree", "videos"),
    ("send", {"op": "tap", "collection": "albumsCollectionView", "row": 0}, 0.8),
    ("look", "video-album"),
    ("send", {"op": "tap", "collection": "albumsCollectionView", "row": 0}, 1.0),
    ("look", "system-player"),
    ("players", "system-player"),
]

# From a third launch: the music screen, an album's songs, a song in the music player, paused at
# once so that both programs' counters stand at the same second.
MUSIC_STEPS = [
    ("advance", 5.8),
    ("send", {"op": "action", "selector": "onAudioBtn:", "sender": "btnAudio"}, 1.2),
    ("look", "audio"),
    ("send", {"op": "tap", "collection": "albumsCollectionView", "row": 0}, 0.8),
    ("look", "audio-album"),
    ("send", {"op": "tap", "collection": "albumsCollectionView", "row": 0}, 0.3),
    ("send", {"op": "action", "selector": "btnPlay:", "sender": "btnPlayOutlet"}, 0.5),
    ("look", "music-player"),
    ("players", "music-player"),
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


def at_pointer(node, pointer):
    for part in pointer.lstrip("/").split("/"):
        if isinstance(node, list) and part.lstrip("-").isdigit() and -len(node) <= int(part) < len(node):
            node = node[int(part)]
        elif isinstance(node, dict) and part in node:
            node = node[part]
        else:
            return ABSENT
    return node


def with_home(node, home):
    """Each program keeps its library in a folder of its own: the folder becomes "<home>"."""
    if isinstance(node, dict):
        return {k: with_home(v, home) for k, v in node.items()}
    if isinstance(node, list):
        return [with_home(v, home) for v in node]
    if isinstance(node, str) and home:
        return node.replace(home, "<home>")
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


# From a third launch: the documents screen, and the preview of a real PDF, of text and of a file
# the program cannot show.
DOCUMENT_STEPS = [
    ("advance", 5.8),
    ("send", {"op": "action", "selector": "onDocumentBtn:", "sender": "btnDocument"}, 1.2),
    ("look", "documents"),
    ("send", {"op": "action", "selector": "onOpenDocumentOicker:", "sender": "btnImport"}, 0.6),
    ("tree", "document-picker"),
    ("send", {"op": "picker", "pick": "imported.txt"}, 0.6),
    ("tree", "documents-imported"),
    ("tapNamed", "a-page.pdf", 2.0),
    ("look", "preview-pdf"),
    ("send", {"op": "action", "selector": "backButtonPressed:", "sender": "backButton"}, 0.6),
    ("tapNamed", "imported.txt", 0.8),
    ("shot", "preview-text"),
    ("send", {"op": "action", "selector": "backButtonPressed:", "sender": "backButton"}, 0.6),
    ("tapNamed", "archive.bin", 0.8),
    ("shot", "preview-other"),
]

CHECKS.update({
    "documents": {"/screens/-1/id": "DocumentsVC", "/screens/-1/outlets/albumsCollectionView/count": 3},
    "document-picker": {"/picker/mode": 0, "/screens/-1/id": "DocumentsVC"},
    "documents-imported": {"/picker": None, "/screens/-1/outlets/albumsCollectionView/count": 4},
    "preview-pdf": {"/screens/-1/id": "QLPreviewController",
                    "/screens/-1/previewItem": "file://<home>/Documents/Nimbrel/importedFiles/a-page.pdf"},
})


def one_page_pdf():
    """A small, valid PDF with one page of text, offsets and all."""
    stream = b"BT /F1 28 Tf 60 700 Td (Nimbrel preview) Tj ET\n0.98 0.71 0.17 rg 60 600 300 40 re f\n"
    objects = [
        b"<< /Type /Catalog /Pages 2 0 R >>",
        b"<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents 4 0 R "
        b"/Resources << /Font << /F1 5 0 R >> >> >>",
        b"<< /Length %d >>\nstream\n" % len(stream) + stream + b"endstream",
        b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
    ]
    out = b"%PDF-1.4\n"
    offsets = []
    for number, body in enumerate(objects, 1):
        offsets.append(len(out))
        out += b"%d 0 obj\n" % number + body + b"\nendobj\n"
    xref = len(out)
    out += b"xref\n0 %d\n0000000000 65535 f \n" % (len(objects) + 1)
    out += b"".join(b"%010d 00000 n \n" % o for o in offsets)
    out += b"trailer\n<< /Size %d /Root 1 0 R >>\nstartxref\n%d\n%%%%EOF\n" % (len(objects) + 1, xref)
    return out.decode("ascii")


def with_documents(fixture):
    fixture = dict(fixture)
    fixture["documents"] = [
        {"name": "a-page.pdf", "contents": one_page_pdf(), "created": "2026-02-02T08:00:00Z"},
        {"name": "notes.txt", "contents": "Shopping\n- bread\n- olives\n\nCa\u00e7a \u00e0 tarde.\n"},
        {"name": "archive.bin", "size": 4096},
    ]
    fixture["picker"] = [{"name": "imported.txt", "contents": "brought in through the picker\n"}]
    return fixture


def expanded(steps):
    """A step's third element is the seconds to advance after it; "look" is a tree and a screenshot."""
    for kind, what, *after in steps:
        yield from ((("tree", what), ("shot", what)) if kind == "look" else
                    [("advance", {"op": "advance", "seconds": what}) if kind == "advance" else (kind, what)])
        yield from (("advance", {"op": "advance", "seconds": s}) for s in after)


def run_steps(steps, qt, sim, artifacts, form, failures, seen):
    homes = [p.ask({"op": "paths"}).get("home") for p in (qt, sim)]
    for kind, what in expanded(steps):
        if kind == "shot":
            path = os.path.join(artifacts, f"{what}-{form}.png")
            answer = qt.ask({"op": "screenshot", "path": path})
            if not answer.get("ok") or not os.path.getsize(path):
                failures.append(f"screenshot {what}: {answer}")
            continue
        if kind == "players":
            # Positions follow each program's own clock; which items play must agree.
            a, b = (with_home(p.ask({"op": "players"}), home) for p, home in zip((qt, sim), homes))
            playing = [[(p["url"], p["playing"]) for p in r.get("players", [])] for r in (a, b)]
            if playing[0] != playing[1] or not playing[0]:
                failures.append(f"[{what}] players: qt {a} / headless {b}")
            continue
        if kind == "tapNamed":
            # The documents folder lists in the file system's order: find the file's row first.
            cells = at_pointer(sim.ask({"op": "tree"}), "/screens/-1/outlets/albumsCollectionView/cells")
            rows = [c["row"] for c in (cells if isinstance(cells, list) else [])
                    if c.get("outlets", {}).get("lblAlbumName", {}).get("text") == what]
            if not rows:
                failures.append(f"no row named {what}")
                continue
            kind, what = "send", {"op": "tap", "collection": "albumsCollectionView", "row": rows[0]}
        request = {"op": "tree"} if kind == "tree" else what
        a, b = qt.ask(request), sim.ask(request)
        if a.get("ok") != b.get("ok") or (kind == "send" and not a.get("ok")):
            failures.append(f"{json.dumps(request)}: qt {a} / headless {b}")
        if kind == "tree":
            seen.add(what)
            for tree in (a, b):
                tree.pop("now", None)
            a, b = with_home(a, homes[0]), with_home(b, homes[1])
            for pointer, expected in CHECKS.get(what, {}).items():
                found = at_pointer(b, pointer)
                if found is not expected and found != expected:
                    shown = "absent" if found is ABSENT else json.dumps(found)
                    failures.append(f"[{what}] {pointer}: {shown}, expected "
                                    f"{'absent' if expected is ABSENT else json.dumps(expected)}")
            problems = []
            a = strip_measured(a, "", problems)
            b = strip_measured(b, "", problems)
            failures += [f"[{what}] {p}" for p in problems]
            failures += [f"[{what}] {d}" for d in differences(a, b)]
            ids = [s["id"] for s in a.get("screens", [])]
            print(f"{what}: {' > '.join(ids)}")


def main():
    nimbrel, headless, fixture_path, artifacts, form = sys.argv[1:6]
    os.makedirs(artifacts, exist_ok=True)
    with tempfile.TemporaryDirectory() as scratch:
        with open(fixture_path, encoding="utf-8") as f:
            fixture = json.load(f)
        if form == "pad":
            fixture["device"] = {"idiom": "pad", "systemVersion": "17.0",
                                 "screen": {"width": 1024, "height": 1366, "scale": 2}}
        fixture_file, documents_file = (os.path.join(scratch, name) for name in ("fixture.json", "documents.json"))
        for path, content in ((fixture_file, fixture), (documents_file, with_documents(fixture))):
            with open(path, "w", encoding="utf-8") as f:
                json.dump(content, f)
        runtime = os.path.join(scratch, "runtime")
        os.mkdir(runtime, 0o700)
        env = dict(os.environ, TMPDIR=scratch, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software",
                   XDG_RUNTIME_DIR=runtime)
        failures = []
        logs = []
        seen = set()
        for steps, file in ((STEPS, fixture_file), (VIDEO_STEPS, fixture_file), (DOCUMENT_STEPS, documents_file),
                            (MUSIC_STEPS, fixture_file)):
            qt = Program([nimbrel, "--automation", "--fixture", file], env)
            sim = Program([headless, "--fixture", file], env)
            try:
                run_steps(steps, qt, sim, artifacts, form, failures, seen)
            finally:
                status, _, err = qt.close()
                sim.close()
            logs.append(err)
            warnings = [line for line in err.splitlines()
                        if line.startswith(("qt-warning", "qt-critical", "qt-fatal"))]
            failures += [f"Qt said: {w}" for w in warnings]
            if status != 0:
                failures.append(f"the program ended with status {status}")
        failures += [f"no tree named {name!r} to check" for name in sorted(set(CHECKS) - seen)]
        with open(os.path.join(artifacts, f"log-{form}.txt"), "w", encoding="utf-8") as f:
            f.write("\n".join(logs))
    for failure in failures:
        print("FAIL", failure)
    print(f"{'passed' if not failures else 'failed'}: {len(failures)} problems")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
