#!/usr/bin/env python3
"""No crash loop on the desktop: the runner over a real folder tree when files and stored state go bad.

1. A picture opened and marked as a favourite is deleted by another program while the program runs:
   it leaves both lists, in memory and in the preferences file. One deleted while the program is not
   running: the next start shows the home screen, twice in a row, without it. Each removal is one
   line on standard error and in the log.
2. A preferences file that is garbage: home shows, the garbage is kept beside it, the window says where.
3. A stored recent list that cannot be decoded: set aside on its own, the favourites kept;
   nimbrel-plutil prints and mends the kept file.
Standard output carries protocol answers only: every line read from it must be one.

usage: desktop_hardening.py NIMBREL_HEADLESS NIMBREL_DEMO_LIBRARY NIMBREL_PLUTIL
"""
import datetime
import glob
import os
import plistlib
import subprocess
import sys
import tempfile
import time

from desktop_library import Runner, cells, open_albums, texts, top


class LoggedRunner(Runner):
    """The runner with its standard error kept in a file, and the rest of its output checked at the end."""

    def __init__(self, program, env, stderr_path):
        self.stderr_file = open(stderr_path, "w")
        self.process = subprocess.Popen([program, "--desktop"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=self.stderr_file, env=env, text=True)

    def close(self):
        self.process.stdin.close()
        rest = self.process.stdout.read()
        status = self.process.wait(timeout=30)
        self.stderr_file.close()
        assert rest == "", f"standard output carried more than answers: {rest!r}"
        assert status == 0, f"the runner ended with {status}"


def start_to_home(headless, env, stderr_path):
    runner = LoggedRunner(headless, env, stderr_path)
    runner.ok({"op": "advance", "seconds": 5.5})
    tree = runner.ok({"op": "tree"})
    assert [s["id"] for s in tree["screens"]][:2] == ["SplashVC", "HomeViewController"], tree["screens"]
    return runner, tree


def open_album(runner, name, expect_prompt):
    tree = open_albums(runner, expect_prompt)
    row = next(i for i, c in enumerate(cells(tree)) if any(name in t for t in texts(c)))
    runner.ok({"op": "tap", "collection": "albumsCollectionView", "row": row})
    runner.until(f"the album {name}", lambda t: top(t)["outlets"]["lbSubFolderName"]["text"] == name and cells(t))


def open_first_picture(runner):
    """Opens the album's first picture; its address as the recent list now has it."""
    runner.ok({"op": "tap", "collection": "albumsCollectionView", "row": 0})
    runner.until("the viewer", lambda t: top(t)["id"] in ("PreviewViewController", "LivePreviewViewController"))
    recents = runner.ok({"op": "state"})["recentFiles"]
    assert len(recents) == 1, recents
    return recents[0]["url"]


def remove_all(folder):
    for name in os.listdir(folder):
        os.remove(os.path.join(folder, name))


def prefs_path(home):
    return os.path.join(home, ".config", "nimbrel", "preferences.plist")


def kept_beside(home):
    return sorted(glob.glob(prefs_path(home) + ".unreadable-*"))


def read(path):
    with open(path, "rb") as f:
        return f.read()


def main():
    headless, demo_maker, plutil = sys.argv[1:4]
    with tempfile.TemporaryDirectory(prefix="nimbrel-desktop-hardening-") as home:
        subprocess.run([demo_maker, home], check=True, stdout=subprocess.DEVNULL)
        env = {k: v for k, v in os.environ.items() if not k.startswith(("XDG_", "NIMBREL_"))}
        env.update(HOME=home, XDG_DATA_HOME=f"{home}/.local/share", XDG_CONFIG_HOME=f"{home}/.config",
                   XDG_CACHE_HOME=f"{home}/.cache", XDG_STATE_HOME=f"{home}/.local/state",
                   NIMBREL_HOME=f"{home}/.local/share/nimbrel", NIMBREL_ADS="none")
        err = os.path.join(home, "stderr.txt")

        # 1. A picture opened and made a favourite, then deleted by another program while the program runs.
        runner = LoggedRunner(headless, env, err)
        open_album(runner, "Rome 2023", expect_prompt=True)
        runner.ok({"op": "longPress", "collection": "albumsCollectionView", "row": 0})
        runner.ok({"op": "action", "selector": "onFavBtn:"})
        address = open_first_picture(runner)
        assert runner.ok({"op": "state"})["FavouriteFiles"][0]["url"] == address
        remove_all(os.path.join(home, "Pictures", "Rome 2023"))
        deadline = time.monotonic() + 20
        while True:
            runner.ok({"op": "idle"})
            state = runner.ok({"op": "state"})
            if state["recentFiles"] == [] and state["FavouriteFiles"] == []:
                break
            assert time.monotonic() < deadline, f"the lists kept a deleted picture: {state}"
            time.sleep(0.05)
        values = runner.ok({"op": "prefs"})["values"]
        assert values["recentFiles"]["$files"] == [] and values["favFiles"]["$files"] == [], values
        removed = [l for l in runner.ok({"op": "log"})["lines"] if l.startswith("Removed " + address)]
        assert len(removed) == 2, removed
        runner.close()

        # ... and one deleted while the program is not running: the next start shows home, twice.
        runner = LoggedRunner(headless, env, err)
        open_album(runner, "Tokyo", expect_prompt=False)
        address = open_first_picture(runner)
        runner.close()
        remove_all(os.path.join(home, "Pictures", "Tokyo"))
        for attempt in (1, 2):
            runner, tree = start_to_home(headless, env, err)
            state = runner.ok({"op": "state"})
            assert state["recentFiles"] == [], f"start {attempt}: {state}"
            values = runner.ok({"op": "prefs"})["values"]
            assert values["recentFiles"]["$files"] == [], values
            removed = [l for l in runner.ok({"op": "log"})["lines"] if l.startswith("Removed " + address)]
            runner.close()
            assert len(removed) == (1 if attempt == 1 else 0), f"start {attempt}: {removed}"
            on_stderr = [l for l in read(err).decode().splitlines() if l.startswith("Removed " + address)]
            assert on_stderr == removed, f"start {attempt}: standard error has {on_stderr}"
            assert tree["notice"] is None, tree["notice"]

        # 2. Garbage in the preferences file.
        with open(prefs_path(home), "wb") as f:
            f.write(b"garbage, not a property list")
        runner, tree = start_to_home(headless, env, err)
        kept = kept_beside(home)
        assert len(kept) == 1 and read(kept[0]) == b"garbage, not a property list", kept
        assert tree["notice"] and kept[0] in tree["notice"], tree["notice"]
        assert any("kept as " + kept[0] in l for l in runner.ok({"op": "log"})["lines"])
        runner.ok({"op": "notice", "dismiss": True})
        assert runner.ok({"op": "tree"})["notice"] is None
        runner.close()
        assert "kept as " + kept[0] in read(err).decode()
        os.remove(kept[0])

        # 3. A recent list that cannot be decoded, beside favourites that can.
        document = os.path.join(home, "notes.pdf")
        with open(document, "wb") as f:
            f.write(b"%PDF-1.4\n")
        favourites = plistlib.dumps([{"url": {"relative": "file://" + document}, "filetype": "docs",
                                      "openingDate": datetime.datetime(2026, 1, 1)}],
                                    fmt=plistlib.FMT_BINARY)
        with open(prefs_path(home), "wb") as f:
            f.write(plistlib.dumps({"isFirstTime": True, "recentFiles": b"\x00junk", "favFiles": favourites},
                                   fmt=plistlib.FMT_BINARY))
        for attempt in (1, 2):
            runner, tree = start_to_home(headless, env, err)
            values = runner.ok({"op": "prefs"})["values"]
            runner.close()
            assert "recentFiles" not in values, values
            assert [f["url"] for f in values["favFiles"]["$files"]] == ["file://" + document], values
        kept = kept_beside(home)
        assert len(kept) == 1, kept
        with open(kept[0], "rb") as f:
            assert plistlib.load(f) == {"recentFiles": b"\x00junk"}
        shown = subprocess.run([plutil, "-lists", kept[0]], capture_output=True, text=True)
        assert shown.returncode == 0 and '"recentFiles" => not a property list' in shown.stdout, shown
        mended = subprocess.run([plutil, "-mend", kept[0]], capture_output=True, text=True)
        assert mended.returncode == 0 and "recentFiles: nothing the program reads; removed" in mended.stderr, mended
    print("desktop hardening: deleted files, a garbage preferences file and an undecodable list survived")


if __name__ == "__main__":
    try:
        main()
    except AssertionError as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        sys.exit(1)
