#!/usr/bin/env python3
"""The Debian package as a user gets it: built by CPack, unpacked into a scratch root with
`dpkg -x`, then its programs run from there: the headless runner on the installed demo fixture
reaches the home screen, every program answers --version and --help, the desktop entry's Exec
names an installed program, and nothing points back into the build tree.

usage: deb_check.py CPACK BINARY_DIR VERSION
"""
import glob
import json
import os
import re
import subprocess
import sys
import tempfile

APP_ID = "app.nimbrel.Nimbrel"
PROGRAMS = ("nimbrel", "nimbrel-library", "nimbrel-plutil", "nimbrel-headless")


def run(argv, **kwargs):
    return subprocess.run(argv, capture_output=True, text=True, timeout=kwargs.pop("timeout", 120), **kwargs)


def desktop_exec(path):
    with open(path, encoding="utf-8") as f:
        for line in f:
            if line.startswith("Exec="):
                return line[len("Exec="):].split()[0]
    return None


def check(cpack, binary, version, scratch):
    failures = []
    made = run([cpack, "-G", "DEB", "-B", os.path.join(scratch, "out"), "--config",
                os.path.join(binary, "CPackConfig.cmake")], cwd=binary, timeout=600)
    debs = glob.glob(os.path.join(scratch, "out", "*.deb"))
    if made.returncode != 0 or len(debs) != 1:
        return [f"cpack: {made.returncode} {debs} {made.stdout[-2000:]} {made.stderr[-2000:]}"]
    deb = debs[0]
    if not re.fullmatch(rf"nimbrel_{re.escape(version)}_[a-z0-9]+\.deb", os.path.basename(deb)):
        failures.append(f"package file named {os.path.basename(deb)}")

    fields = run(["dpkg-deb", "-f", deb, "Package", "Version", "Depends"]).stdout
    depends = re.search(r"^Depends: (.*)$", fields, re.M)
    depends = [d.strip().split()[0] for d in depends.group(1).split(",")] if depends else []
    # From dpkg-shlibdeps (libraries the programs link) and from the list of QML modules.
    for needed in ("libc6", "libqt6quick6", "libsqlite3-0", "qml6-module-qtquick"):
        if needed not in depends:
            failures.append(f"Depends lacks {needed}: {depends}")

    root = os.path.join(scratch, "root")
    unpacked = run(["dpkg", "-x", deb, root])
    if unpacked.returncode != 0:
        return failures + [f"dpkg -x: {unpacked.stderr}"]
    usr = os.path.join(root, "usr")
    expected = [f"bin/{p}" for p in PROGRAMS] + [f"share/man/man1/{p}.1.gz" for p in PROGRAMS] + [
        f"share/applications/{APP_ID}.desktop", f"share/icons/hicolor/scalable/apps/{APP_ID}.svg",
        f"share/metainfo/{APP_ID}.metainfo.xml", "share/nimbrel/fixtures/demo.json"]
    failures += [f"not installed: /usr/{p}" for p in expected if not os.path.exists(os.path.join(usr, p))]
    if not glob.glob(os.path.join(usr, "lib", "**", "Nimbrel", "Shell", "qmldir"), recursive=True):
        failures.append("the QML module's qmldir is not installed")

    entry = os.path.join(usr, "share", "applications", APP_ID + ".desktop")
    if os.path.exists(entry):
        program = desktop_exec(entry)
        installed = os.path.join(usr, "bin", program or "")
        if not program or "/" in program or not os.access(installed, os.X_OK):
            failures.append(f"the desktop entry's Exec {program!r} is no installed program")
        validated = run(["desktop-file-validate", entry])
        if validated.returncode != 0 or validated.stdout.strip():
            failures.append(f"installed entry: {validated.stdout.strip()}")

    for program in PROGRAMS:
        path = os.path.join(usr, "bin", program)
        if not os.path.exists(path):
            continue
        dynamic = run(["readelf", "-d", path]).stdout
        if binary in dynamic:
            failures.append(f"{program} still points into the build tree")
        shown = run([path, "--version"], env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))
        if shown.returncode != 0 or shown.stdout.strip() != f"{program} {version}":
            failures.append(f"{program} --version: {shown.returncode} {shown.stdout!r} {shown.stderr[-500:]!r}")
        helped = run([path, "--help"], env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))
        if helped.returncode != 0 or not helped.stdout.startswith(f"usage: {program}"):
            failures.append(f"{program} --help: {helped.returncode} {helped.stdout[:200]!r}")

    # Under --automation standard output is the protocol's alone.
    quiet = run([os.path.join(usr, "bin", "nimbrel"), "--automation", "--version"])
    if quiet.stdout or quiet.stderr.strip() != f"nimbrel {version}":
        failures.append(f"nimbrel --automation --version wrote {quiet.stdout!r} to standard output")

    headless = os.path.join(usr, "bin", "nimbrel-headless")
    fixture = os.path.join(usr, "share", "nimbrel", "fixtures", "demo.json")
    if os.path.exists(headless) and os.path.exists(fixture):
        requests = [{"op": "advance", "seconds": 5.5}, {"op": "tree"}]
        driven = run([headless, "--fixture", fixture], input="".join(json.dumps(r) + "\n" for r in requests),
                     env=dict(os.environ, TMPDIR=scratch))
        answers = [json.loads(line) for line in driven.stdout.splitlines()]
        screens = [s["id"] for s in answers[-1].get("screens", [])] if len(answers) == 2 else []
        if driven.returncode != 0 or not all(a.get("ok") for a in answers) or screens[-1:] != ["HomeViewController"]:
            failures.append(f"installed nimbrel-headless: {driven.returncode} {screens} {driven.stdout[-500:]}"
                            f" {driven.stderr[-500:]}")
    return failures


def main():
    cpack, binary, version = sys.argv[1:4]
    with tempfile.TemporaryDirectory(prefix="nimbrel-deb-") as scratch:
        failures = check(cpack, os.path.abspath(binary), version, scratch)
    for failure in failures:
        print("FAIL", failure)
    print(f"{'passed' if not failures else 'failed'}: {len(failures)} problems")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
