#!/usr/bin/env python3
"""Three pictures of an album shared into a folder that holds their namesakes, as a user would:
nothing overwritten, " (2)" names, one message with the count. usage: desktop_share.py HEADLESS DEMO_MAKER"""
import os
import subprocess
import sys
import tempfile

from desktop_library import Runner, desktop_env, open_album, open_albums

NAMES = ["IMG_2001.jpg", "IMG_2002.jpg", "IMG_2003.jpg"]


def main():
    headless, demo_maker = sys.argv[1], sys.argv[2]
    with tempfile.TemporaryDirectory(prefix="nimbrel-share-e2e-") as home:
        subprocess.run([demo_maker, home], check=True, stdout=subprocess.DEVNULL)
        os.makedirs(f"{home}/run", mode=0o700)
        env = desktop_env(home, XDG_RUNTIME_DIR=f"{home}/run", PATH="/nonexistent")  # no xdg-email
        target = os.path.join(home, "Saved")
        os.makedirs(target)
        for name in NAMES:
            open(os.path.join(target, name), "w").write("mine")

        runner = Runner(headless, env)
        open_album(runner, open_albums(runner, expect_prompt=True), "Rome 2023", 3)
        runner.ok({"op": "longPress", "collection": "albumsCollectionView", "row": 0})
        for row in (1, 2):
            runner.ok({"op": "tap", "collection": "albumsCollectionView", "row": row})
        runner.ok({"op": "action", "selector": "onShareBtn:", "sender": "btnShare"})
        sheet = runner.until("the share sheet", lambda t: t.get("sheet") is not None)["sheet"]
        assert len(sheet["items"]) == 3 and sheet["activities"] == ["Save to…", "Open with…", "Show in folder"], sheet
        runner.ok({"op": "sheet", "activity": "Save to…", "folder": target})
        tree = runner.until("the count message", lambda t: t.get("notice") is not None)
        assert tree["sheet"] is None and tree["notice"] == f"Saved 3 items to {target}.", tree["notice"]
        runner.close()

        copies = [n.replace(".jpg", " (2).jpg") for n in NAMES]
        assert sorted(os.listdir(target)) == sorted(NAMES + copies), os.listdir(target)
        for name, copy in zip(NAMES, copies):
            with open(os.path.join(target, name)) as mine, open(os.path.join(target, copy), "rb") as shared:
                assert mine.read() == "mine" and shared.read(3) == b"\xff\xd8\xff", (name, copy)
    print("desktop share: three pictures saved beside their namesakes, nothing overwritten, one message")


if __name__ == "__main__":
    main()
