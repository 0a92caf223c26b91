#!/usr/bin/env python3
"""The Debian package built by CPack, unpacked with `dpkg -x` into a scratch root and run from there.

usage: package_check.py CPACK BINARY_DIR VERSION
"""
import glob
import json
import os
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

APP = "app.nimbrel.Nimbrel"
PROGRAMS = ("nimbrel", "nimbrel-library", "nimbrel-plutil", "nimbrel-headless")


def run(*argv, **kw):
    return subprocess.run(argv, capture_output=True, text=True, timeout=600, **kw)


def shell_shots():
    sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "shell"))
    import shell_e2e
    return {step[1] for name, steps in vars(shell_e2e).items() if name.endswith("STEPS")
            for step in shell_e2e.expanded(steps) if step[0] == "shot"}


def check(cpack, binary, version, scratch):
    made = run(cpack, "-B", f"{scratch}/out", "--config", f"{binary}/CPackConfig.cmake", cwd=binary)
    debs = glob.glob(f"{scratch}/out/nimbrel_{version}_*.deb")
    if made.returncode or len(debs) != 1:
        return [f"cpack: {made.stdout[-1500:]} {made.stderr[-1500:]}"]
    failures = []
    depends = run("dpkg-deb", "-f", debs[0], "Depends").stdout
    # From dpkg-shlibdeps, and the QML modules named by hand.
    failures += [f"Depends lacks {d}" for d in ("libc6", "libqt6quick6", "libsqlite3-0", "qml6-module-qtquick")
                 if not re.search(rf"(^|, ){d}( |,|$)", depends.strip())]
    run("dpkg", "-x", debs[0], f"{scratch}/root")
    usr, env = f"{scratch}/root/usr", dict(os.environ, QT_QPA_PLATFORM="offscreen", TMPDIR=scratch)
    share = f"{usr}/share"
    expected = [f"{usr}/bin/{p}" for p in PROGRAMS] + [f"{share}/man/man1/{p}.1.gz" for p in PROGRAMS] + [
        f"{share}/icons/hicolor/scalable/apps/{APP}.svg", f"{share}/nimbrel/fixtures/demo.json",
        f"{usr}/lib/nimbrel/qml/Nimbrel/Shell/qmldir"]
    failures += [f"not installed: {p}" for p in expected if not os.path.exists(p)]

    entry, metainfo = f"{share}/applications/{APP}.desktop", f"{share}/metainfo/{APP}.metainfo.xml"
    for argv in (["desktop-file-validate", entry], ["appstreamcli", "validate", "--no-net", "--strict", metainfo]):
        said = run(*argv)
        if said.returncode or (argv[0] == "desktop-file-validate" and said.stdout.strip()):
            failures.append(f"{argv[0]}: {said.stdout.strip()} {said.stderr.strip()}")
    program = re.search(r"^Exec=(\S+)", open(entry).read(), re.M).group(1)
    if "/" in program or not os.access(f"{usr}/bin/{program}", os.X_OK):
        failures.append(f"the desktop entry runs {program!r}, no installed program")
    for url in (i.text for i in ET.parse(metainfo).getroot().iter("image")):
        shot = re.fullmatch(r"https://[^/]+/screenshots/(.+)-(phone|pad)\.png", url)
        if not shot or shot.group(1) not in shell_shots():
            failures.append(f"screenshot {url} is none the shell takes")

    for p in PROGRAMS:
        page = run("sh", "-c", f"zcat {share}/man/man1/{p}.1.gz | groff -man -Tutf8 -ww -z")
        if page.returncode or page.stderr:
            failures.append(f"{p}.1: {page.stderr}")
        shown, helped = run(f"{usr}/bin/{p}", "--version", env=env), run(f"{usr}/bin/{p}", "--help", env=env)
        if shown.stdout != f"{p} {version}\n" or helped.returncode or not helped.stdout.startswith(f"usage: {p}"):
            failures.append(f"{p}: --version {shown.stdout!r} {shown.stderr[-300:]!r}, --help {helped.returncode}")
    # Under --automation standard output is the protocol's alone.
    if run(f"{usr}/bin/nimbrel", "--automation", "--version", env=env).stdout:
        failures.append("nimbrel --automation --version wrote to standard output")

    # A scan with a file to read loads the codec module from the installed libexec folder.
    pictures = os.path.join(scratch, "Pictures")
    os.makedirs(pictures)
    open(os.path.join(pictures, "broken.jpg"), "w").write("not a picture")
    own = {k: f"{scratch}/{k.lower()}" for k in ("NIMBREL_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_CONFIG_HOME")}
    scanned = run(f"{usr}/bin/nimbrel-library", "scan", "--pictures", pictures, env=dict(env, **own))
    if scanned.returncode or "1 read" not in scanned.stdout:
        failures.append(f"installed nimbrel-library scan: {scanned.stdout[-300:]} {scanned.stderr[-300:]}")

    requests = "".join(json.dumps(r) + "\n" for r in ({"op": "advance", "seconds": 5.5}, {"op": "tree"}))
    driven = run(f"{usr}/bin/nimbrel-headless", "--fixture", f"{share}/nimbrel/fixtures/demo.json",
                 input=requests, env=env)
    answers = [json.loads(line) for line in driven.stdout.splitlines()]
    if len(answers) != 2 or answers[1]["screens"][-1]["id"] != "HomeViewController":
        failures.append(f"installed nimbrel-headless: {driven.stdout[-500:]} {driven.stderr[-500:]}")
    return failures


def main():
    with tempfile.TemporaryDirectory(prefix="nimbrel-deb-") as scratch:
        failures = check(sys.argv[1], os.path.abspath(sys.argv[2]), sys.argv[3], scratch)
    print("\n".join(f"FAIL {f}" for f in failures) or "passed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
