#!/usr/bin/env python3
"""Sharing on the desktop platform as a user would: three pictures of an album saved into a folder
that already holds files of the same names. Nothing there may be overwritten; the copies take
" (2)" names, and one message tells the count.

usage: desktop_share.py NIMBREL_HEADLESS NIMBREL_DEMO_LIBRARY
"""
import os
import subprocess
import sys
import tempfile

from desktop_library import Runner, cells, open_albums, texts, top


def main():
    headless, demo_maker = sys.argv[1], sys.argv[2]
    with tempfile.TemporaryDirectory(prefix="nimbrel-share-e2e-") as home:
        subprocess.run([demo_maker, home], check=True, stdout=subprocess.DEVNULL)
        env = dict(os.environ)
        for key in ("XDG_PICTURES_DIR", "XDG_VIDEOS_DIR", "XDG_MUSIC_DIR", "NIMBREL_PICTURES", "NIMBREL_VIDEOS",
                    "NIMBREL_MUSIC", "NIMBREL_ADS", "PATH"):
            env.pop(key, None)
        os.makedirs(f"{home}/run", mode=0o700)
        env.update(HOME=home, XDG_DATA_HOME=f"{home}/.local/share", XDG_CONFIG_HOME=f"{home}/.config",
                   XDG_CACHE_HOME=f"{home}/.cache", XDG_STATE_HOME=f"{home}/.local/state",
                   NIMBREL_HOME=f"{home}/.local/share/nimbrel", XDG_RUNTIME_DIR=f"{home}/run", PATH="/nonexistent")
        target = os.path.join(home, "Saved")
        os.makedirs(target)
        for name in ("IMG_2001.jpg", "IMG_2002.jpg", "IMG_2003.jpg"):
            with open(os.path.join(target, name), "w") as f:
                f.write("mine: " + name)

        runner = Runner(headless, env)
        tree = open_albums(runner, expect_prompt=True)
        row = next(i for i, c in enumerate(cells(tree)) if any("Rome 2023" in t for t in texts(c)))
        runner.ok({"op": "tap", "collection": "albumsCollectionView", "row": row})
        runner.until("the Rome album", lambda t: len(cells(t)) == 3 and
                     top(t)["outlets"]["lbSubFolderName"]["text"] == "Rome 2023")
        runner.ok({"op": "longPress", "collection": "albumsCollectionView", "row": 0})
        runner.ok({"op": "tap", "collection": "albumsCollectionView", "row": 1})
        runner.ok({"op": "tap", "collection": "albumsCollectionView", "row": 2})
        runner.ok({"op": "action", "selector": "onShareBtn:", "sender": "btnShare"})
        tree = runner.until("the share sheet", lambda t: t.get("sheet") is not None)
        sheet = tree["sheet"]
        assert len(sheet["items"]) == 3, sheet
        # Headless: no clipboard to copy to, and no xdg-email on this PATH.
        assert sheet["activities"] == ["Save to…", "Open with…", "Show in folder"], sheet

        refused = runner.send({"op": "sheet", "activity": "Email"})
        assert not refused["ok"], refused
        runner.ok({"op": "sheet", "activity": "Save to…", "folder": target})
        tree = runner.until("the count message", lambda t: t.get("notice") is not None)
        assert tree["sheet"] is None, tree["sheet"]
        assert tree["notice"] == f"Saved 3 items to {target}.", tree["notice"]
        runner.close()

        names = sorted(os.listdir(target))
        assert names == ["IMG_2001 (2).jpg", "IMG_2001.jpg", "IMG_2002 (2).jpg", "IMG_2002.jpg",
                         "IMG_2003 (2).jpg", "IMG_2003.jpg"], names
        for name in ("IMG_2001.jpg", "IMG_2002.jpg", "IMG_2003.jpg"):
            with open(os.path.join(target, name)) as f:
                assert f.read() == "mine: " + name, f"{name} was overwritten"
            with open(os.path.join(target, name.replace(".jpg", " (2).jpg")), "rb") as f:
                assert f.read(3) == b"\xff\xd8\xff", f"{name} (2) is no JPEG"
    print("desktop share: three pictures saved beside their namesakes, nothing overwritten, one message")


if __name__ == "__main__":
    try:
        main()
    except AssertionError as failure:
        print(f"FAILED: {failure}", file=sys.stderr)
        sys.exit(1)
