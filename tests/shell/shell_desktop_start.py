#!/usr/bin/env python3
"""A first start of the window over a fresh home on the desktop platform, as `make run` does: from
launch past the splash to the home screen there is no prompt (no tracking question), no full-screen
ad, no "Loading Ads..." and no native ad; then, with NIMBREL_ADS=demo, the labelled demo network's
interstitial does show, so the first half cannot pass for want of ads at all.

usage: shell_desktop_start.py NIMBREL ARTIFACTS
"""
import os
import sys
import tempfile

from shell_e2e import Program


def fresh_env(home):
    env = {k: v for k, v in os.environ.items()
           if not k.startswith(("XDG_", "NIMBREL_")) and k != "DBUS_SESSION_BUS_ADDRESS"}
    runtime = os.path.join(home, "runtime")
    os.makedirs(runtime, 0o700)
    for folder in ("Pictures", "Videos", "Music"):
        os.makedirs(os.path.join(home, folder))
    env.update(HOME=home, XDG_RUNTIME_DIR=runtime, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software")
    return env


def watch_start(nimbrel, env, shot=None):
    """Trees every 0.25 s of real time until the home screen has stood for a second."""
    program = Program([nimbrel, "--automation"], env)
    trees = []
    try:
        for _ in range(40):
            tree = program.ask({"op": "tree"})
            trees.append(tree)
            if sum(t["screens"][-1]["id"] == "HomeViewController" for t in trees) >= 4:
                break
            program.ask({"op": "advance", "seconds": 0.25})
        if shot:
            program.ask({"op": "screenshot", "path": shot})
    finally:
        status, _, err = program.close()
    return trees, status, err


def main():
    nimbrel, artifacts = sys.argv[1:3]
    os.makedirs(artifacts, exist_ok=True)
    failures = []
    with tempfile.TemporaryDirectory(prefix="nimbrel-start-") as home:
        trees, status, err = watch_start(nimbrel, fresh_env(home), os.path.join(artifacts, "desktop-start-phone.png"))
        if trees[-1]["screens"][-1]["id"] != "HomeViewController":
            failures.append(f"never reached the home screen: {[s['id'] for s in trees[-1]['screens']]}")
        for tree in trees:
            when = f"t={tree.get('now')}"
            if tree.get("alert"):
                failures.append(f"{when}: a prompt: {tree['alert']}")
            if tree.get("ad"):
                failures.append(f"{when}: a full-screen ad: {tree['ad']}")
            if (tree.get("hud") or {}).get("status") == "Loading Ads...":
                failures.append(f"{when}: the HUD says Loading Ads...")
            for screen in tree["screens"]:
                if screen.get("nativeAds"):
                    failures.append(f"{when}: native ads on {screen['id']}: {screen['nativeAds']}")
        failures += [f"Qt said: {line}" for line in err.splitlines() if line.startswith(("qt-warning", "qt-critical"))]
        if status != 0:
            failures.append(f"the program ended with status {status}")

    with tempfile.TemporaryDirectory(prefix="nimbrel-start-demo-") as home:
        env = dict(fresh_env(home), NIMBREL_ADS="demo")
        trees, _, _ = watch_start(nimbrel, env)
        if not any(t.get("ad") for t in trees):
            failures.append("NIMBREL_ADS=demo showed no interstitial at the start")

    for failure in failures:
        print("FAIL", failure)
    print(f"{'passed' if not failures else 'failed'}: {len(failures)} problems")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
