#!/usr/bin/env python3
"""No crash loop on the desktop: the runner over a real folder tree when files and stored state go bad.

1. A picture opened and made a favourite is deleted by another program while the program runs: it
   leaves both lists, in memory and in the preferences file. One deleted while the program is not
   running: the next start shows home, twice in a row. One line each on standard error and in the log.
2. A preferences file that is garbage: home shows, the garbage is kept beside it, the window says where.
3. A recent list with a record the program cannot decode is set aside alone; favourites whose files
   are gone leave; nimbrel-plutil prints and mends the kept list.
Standard output carries protocol answers only: every line read from it must parse as one.

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

from desktop_library import Runner, desktop_env, open_album, open_albums, open_first_picture


class LoggedRunner(Runner):
    def __init__(self, program, env, stderr_path):
        self.stderr_file = open(stderr_path, "w")
        self.process = subprocess.Popen([program, "--desktop"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=self.stderr_file, env=env, text=True)

    def close(self):
        self.process.stdin.close()
        rest, status = self.process.stdout.read(), self.process.wait(timeout=30)
        self.stderr_file.close()
        assert rest == "" and status == 0, f"ended with {status}, after the answers: {rest!r}"

    def log(self, prefix):
        return [line for line in self.ok({"op": "log"})["lines"] if line.startswith(prefix)]


def start_to_home(headless, env, stderr_path):
    runner = LoggedRunner(headless, env, stderr_path)
    runner.ok({"op": "advance", "seconds": 5.5})
    tree = runner.ok({"op": "tree"})
    assert [s["id"] for s in tree["screens"]][:2] == ["SplashVC", "HomeViewController"], tree["screens"]
    return runner, tree


def open_picture_of(runner, album, expect_prompt):
    open_album(runner, open_albums(runner, expect_prompt), album)
    if expect_prompt:
        runner.ok({"op": "longPress", "collection": "albumsCollectionView", "row": 0})
        runner.ok({"op": "action", "selector": "onFavBtn:"})
    return open_first_picture(runner)[0]["url"]


def remove_all(folder):
    for name in os.listdir(folder):
        os.remove(os.path.join(folder, name))


def read(path):
    with open(path, "rb") as f:
        return f.read()


def record(url, kind="docs"):
    return {"url": {"relative": url}, "openingDate": datetime.datetime(2026, 1, 1), **({"filetype": kind} if kind else {})}


def main():
    headless, demo_maker, plutil = sys.argv[1:4]
    with tempfile.TemporaryDirectory(prefix="nimbrel-desktop-hardening-") as home:
        subprocess.run([demo_maker, home], check=True, stdout=subprocess.DEVNULL)
        env = desktop_env(home, NIMBREL_ADS="none")
        err, prefs = os.path.join(home, "stderr.txt"), os.path.join(home, ".config", "nimbrel", "preferences.plist")
        log_file = os.path.join(home, ".local", "state", "nimbrel", "nimbrel.log")

        # 1. Deleted while running, then deleted while not running.
        runner = LoggedRunner(headless, env, err)
        address = open_picture_of(runner, "Rome 2023", expect_prompt=True)
        favourites = runner.ok({"op": "state"})["FavouriteFiles"]
        assert [f["url"] for f in favourites] == [address], favourites
        remove_all(os.path.join(home, "Pictures", "Rome 2023"))
        deadline = time.monotonic() + 20
        while runner.ok({"op": "idle"}) and runner.ok({"op": "state"})["recentFiles"]:
            assert time.monotonic() < deadline, "the lists kept a deleted picture"
            time.sleep(0.05)
        state, values = runner.ok({"op": "state"}), runner.ok({"op": "prefs"})["values"]
        assert state["FavouriteFiles"] == [] and values["recentFiles"]["$files"] == values["favFiles"]["$files"] == [], \
            (state, values)
        removed = runner.log("Removed " + address)
        assert len(removed) == 2, removed
        runner.close()

        runner = LoggedRunner(headless, env, err)
        address = open_picture_of(runner, "Tokyo", expect_prompt=False)
        runner.close()
        remove_all(os.path.join(home, "Pictures", "Tokyo"))
        for expected in ([address], []):
            runner, tree = start_to_home(headless, env, err)
            state = runner.ok({"op": "state"})
            assert state["recentFiles"] == [] and tree["notice"] is None, (state, tree["notice"])
            removed = runner.log("Removed ")
            runner.close()
            assert [line.split()[1] for line in removed] == expected, removed
            on_stderr = [line for line in read(err).decode().splitlines() if line.startswith("Removed ")]
            assert on_stderr == removed, (on_stderr, removed)
        assert "Removed " + address in read(log_file).decode()

        # 2. Garbage in the preferences file.
        with open(prefs, "wb") as f:
            f.write(b"garbage, not a property list")
        runner, tree = start_to_home(headless, env, err)
        kept = glob.glob(prefs + ".unreadable-*")
        assert len(kept) == 1 and read(kept[0]) == b"garbage, not a property list", kept
        assert kept[0] in tree["notice"] and runner.log("Preferences at " + prefs), tree["notice"]
        runner.ok({"op": "notice", "dismiss": True})
        assert runner.ok({"op": "tree"})["notice"] is None
        runner.close()
        assert "kept as " + kept[0] in read(err).decode() and "kept as " + kept[0] in read(log_file).decode(), kept
        os.remove(kept[0])

        # 3. A recent list the program cannot decode; favourites whose files are gone.
        document = os.path.join(home, "notes.pdf")
        open(document, "wb").close()
        recents = plistlib.dumps([record("file://" + document), record("file:///x.pdf", kind=None)],
                                 fmt=plistlib.FMT_BINARY)
        # The song's id is longer than any persistent id, so that no song of the library contains it.
        favourites = [record("file://" + document), record("file:///nowhere/gone.pdf"),
                      record("ipod-library://item/item.mp3?id=123456789012345678901234", "music")]
        with open(prefs, "wb") as f:
            f.write(plistlib.dumps({"isFirstTime": True, "recentFiles": recents,
                                    "favFiles": plistlib.dumps(favourites, fmt=plistlib.FMT_BINARY)},
                                   fmt=plistlib.FMT_BINARY))
        for removals in (2, 0):
            runner, tree = start_to_home(headless, env, err)
            values = runner.ok({"op": "prefs"})["values"]
            removed = runner.log("Removed ")
            assert len(removed) == removals, removed
            runner.close()
            assert "recentFiles" not in values, values
            assert [f["url"] for f in values["favFiles"]["$files"]] == ["file://" + document], values
        kept = glob.glob(prefs + ".unreadable-*")
        assert len(kept) == 1 and plistlib.loads(read(kept[0])) == {"recentFiles": recents}, kept
        shown = subprocess.run([plutil, "-lists", kept[0]], capture_output=True, text=True)
        assert '"recentFiles" => 2 records, 1 unreadable' in shown.stdout, shown
        mended = subprocess.run([plutil, "-mend", "-o", os.path.join(home, "mended"), kept[0]], capture_output=True,
                                text=True)
        assert mended.stderr == "recentFiles: 1 records kept, 1 dropped\n", mended
        lists = plistlib.loads(read(os.path.join(home, "mended")))
        assert [r["url"]["relative"] for r in plistlib.loads(lists["recentFiles"])] == ["file://" + document]
    print("desktop hardening: deleted files, a garbage preferences file and an undecodable list survived")


if __name__ == "__main__":
    try:
        main()
    except AssertionError as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        sys.exit(1)
