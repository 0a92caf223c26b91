#!/usr/bin/env python3
"""The program over a real folder tree: the headless runner on the desktop platform.

Makes the sample library in a temporary home, then drives the runner as a user would: starts
without a tracking prompt or an ad, answers the platform's prompts, browses the albums the folders
make, deletes a picture (the platform asks first) and checks that the file went to the freedesktop
trash with its .trashinfo. A second run on the same home must not ask again and must show the same
identifiers.

usage: desktop_library.py NIMBREL_HEADLESS NIMBREL_DEMO_LIBRARY
"""
import json
import os
import subprocess
import sys
import tempfile
import time


class Runner:
    def __init__(self, program, env):
        self.process = subprocess.Popen([program, "--desktop"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, env=env, text=True)

    def send(self, request):
        self.process.stdin.write(json.dumps(request) + "\n")
        self.process.stdin.flush()
        line = self.process.stdout.readline()
        if not line:
            raise AssertionError(f"the runner ended at {request}")
        return json.loads(line)

    def ok(self, request):
        answer = self.send(request)
        if not answer.get("ok"):
            raise AssertionError(f"{request} failed: {answer.get('error')}")
        return answer

    def until(self, what, check, seconds=20):
        """The library's worker runs in real time: look again (bounded) until `check` holds."""
        deadline = time.monotonic() + seconds
        while True:
            self.ok({"op": "idle"})
            tree = self.ok({"op": "tree"})
            if check(tree):
                return tree
            if time.monotonic() > deadline:
                raise AssertionError(f"never saw {what}; last tree: {json.dumps(tree)[:2000]}")
            time.sleep(0.05)

    def close(self):
        self.process.stdin.close()
        self.process.wait(timeout=30)


def top(tree):
    return tree["screens"][-1]


def cells(tree):
    return top(tree).get("outlets", {}).get("albumsCollectionView", {}).get("cells", [])


def texts(cell):
    return [o.get("text") for o in cell.get("outlets", {}).values() if isinstance(o, dict) and o.get("text")]


def desktop_env(home, **extra):
    """A user whose folders are all under `home`, with none of the caller's XDG or NIMBREL settings."""
    env = {k: v for k, v in os.environ.items() if not k.startswith(("XDG_", "NIMBREL_"))}
    env.update(HOME=home, XDG_DATA_HOME=f"{home}/.local/share", XDG_CONFIG_HOME=f"{home}/.config",
               XDG_CACHE_HOME=f"{home}/.cache", XDG_STATE_HOME=f"{home}/.local/state",
               NIMBREL_HOME=f"{home}/.local/share/nimbrel", **extra)
    return env


def open_album(runner, tree, album, count=None):
    """Taps the album whose cell names `album` and waits for its pictures (`count` of them if given)."""
    row = next(i for i, c in enumerate(cells(tree)) if any(album in t for t in texts(c)))
    runner.ok({"op": "tap", "collection": "albumsCollectionView", "row": row})
    return runner.until(album, lambda t: top(t)["outlets"]["lbSubFolderName"]["text"] == album and cells(t) and
                        (count is None or len(cells(t)) == count))


def open_first_picture(runner):
    runner.ok({"op": "tap", "collection": "albumsCollectionView", "row": 0})
    runner.until("the viewer", lambda t: top(t)["id"] in ("PreviewViewController", "LivePreviewViewController"))
    return runner.ok({"op": "state"})["recentFiles"]


def open_albums(runner, expect_prompt):
    runner.ok({"op": "advance", "seconds": 6})
    tree = runner.ok({"op": "tree"})
    assert tree.get("alert") is None and tree.get("ad") is None, (tree.get("alert"), tree.get("ad"))
    runner.ok({"op": "action", "selector": "onImagesBtn:"})
    runner.ok({"op": "advance", "seconds": 1})
    if expect_prompt:
        tree = runner.ok({"op": "tree"})
        assert "Access Your Photos" in (tree.get("alert") or {}).get("title", ""), tree.get("alert")
        runner.ok({"op": "alert", "action": "Allow"})
    return runner.until("the albums", lambda t: top(t)["id"] == "ImagesVC" and len(cells(t)) >= 3)


def main():
    headless, demo_maker = sys.argv[1], sys.argv[2]
    with tempfile.TemporaryDirectory(prefix="nimbrel-desktop-e2e-") as home:
        subprocess.run([demo_maker, home], check=True, stdout=subprocess.DEVNULL)
        env = desktop_env(home)
        runner = Runner(headless, env)
        tree = open_albums(runner, expect_prompt=True)
        names = [t for c in cells(tree) for t in texts(c)]
        for folder in ("Rome 2023", "Tokyo", "Family"):
            assert any(folder in n for n in names), f"no album for the folder {folder}: {names}"

        # Into the Rome album: its three pictures, newest first.
        open_album(runner, tree, "Rome 2023", 3)

        # Delete the first picture: the platform asks, and the answer decides.
        runner.ok({"op": "longPress", "collection": "albumsCollectionView", "row": 0})
        runner.ok({"op": "action", "selector": "onDeletBtn:", "sender": "btnDelete"})
        tree = runner.until("the delete confirmation", lambda t: (t.get("alert") or {}).get("actions") ==
                            ["Don't Allow", "Delete"])
        runner.ok({"op": "alert", "action": "Delete"})
        rome = os.path.join(home, "Pictures", "Rome 2023")
        runner.until("the picture gone", lambda t: len(os.listdir(rome)) == 2)
        gone = ({"IMG_2001.JPG", "IMG_2002.JPG", "IMG_2003.JPG"} - set(os.listdir(rome))).pop()
        trash = os.path.join(home, ".local", "share", "Trash")
        assert os.path.exists(os.path.join(trash, "files", gone)), os.listdir(os.path.join(trash, "files"))
        with open(os.path.join(trash, "info", gone + ".trashinfo")) as info:
            text = info.read()
        assert text.startswith("[Trash Info]\nPath="), text
        assert "Rome%202023/" + gone in text, text

        # The screen goes back to the albums after a delete; opening a picture of what is left records it
        # by its local identifier.
        tree = runner.until("the albums after the delete", lambda t: any("Tokyo" in x for c in cells(t) for x in texts(c)))
        open_album(runner, tree, "Rome 2023", 2)
        first = open_first_picture(runner)
        assert len(first) == 1 and first[0]["url"].startswith("assets-library://asset/asset.JPG?id="), first
        runner.close()

        # A second start: no prompt again, the same identifiers for what is left.
        runner = Runner(headless, env)
        open_album(runner, open_albums(runner, expect_prompt=False), "Rome 2023", 2)
        again = open_first_picture(runner)
        runner.close()
        assert again[0]["url"] == first[0]["url"], f"the identifier moved: {first} then {again}"
    print("desktop library: prompts, albums, delete to the trash and a second start checked")


if __name__ == "__main__":
    try:
        main()
    except AssertionError as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        sys.exit(1)
