#!/usr/bin/env python3
"""A first start over a fresh home, as `make run` does, shows no prompt and no ad until the home
screen; with NIMBREL_ADS=demo the interstitial shows, so the check cannot pass for want of ads.

usage: shell_desktop_start.py NIMBREL ARTIFACTS
"""
import os
import sys
import tempfile

from shell_e2e import Program


def start(nimbrel, home, shot=None, **extra):
    env = {k: v for k, v in os.environ.items() if not k.startswith(("XDG_", "NIMBREL_", "DBUS_"))}
    env.update(extra, HOME=home, XDG_RUNTIME_DIR=home, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software")
    program, trees = Program([nimbrel, "--automation"], env), []
    # Every quarter second of real time until the home screen has stood for a second.
    while len(trees) < 40 and sum(t["screens"][-1]["id"] == "HomeViewController" for t in trees) < 4:
        trees.append(program.ask({"op": "tree"}))
        program.ask({"op": "advance", "seconds": 0.25})
    if shot:
        program.ask({"op": "screenshot", "path": shot})
    status, _, err = program.close()
    return trees, status, [line for line in err.splitlines() if line.startswith(("qt-warning", "qt-critical"))]


def main():
    nimbrel, artifacts = sys.argv[1:3]
    with tempfile.TemporaryDirectory() as home:
        trees, status, warnings = start(nimbrel, home, os.path.join(artifacts, "desktop-start-phone.png"))
    failures = [f"status {status}"] if status else []
    failures += [f"Qt said: {w}" for w in warnings]
    if trees[-1]["screens"][-1]["id"] != "HomeViewController":
        failures.append(f"never reached the home screen: {trees[-1]['screens']}")
    for t in trees:
        shown = {"prompt": t.get("alert"), "ad": t.get("ad"),
                 "hud": (t.get("hud") or {}).get("status") == "Loading Ads...",
                 "native ads": [s["id"] for s in t["screens"] if s.get("nativeAds")]}
        failures += [f"t={t['now']}: {what}: {value}" for what, value in shown.items() if value]
    with tempfile.TemporaryDirectory() as home:
        if not any(t.get("ad") for t in start(nimbrel, home, NIMBREL_ADS="demo")[0]):
            failures.append("NIMBREL_ADS=demo showed no interstitial")
    print("\n".join(f"FAIL {f}" for f in failures) or "passed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
