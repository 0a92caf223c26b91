#!/usr/bin/env python3
"""The files that tell a desktop about Nimbrel, as the desktop's own validators read them: the
desktop entry (desktop-file-validate), the AppStream metainfo (appstreamcli, strict), the man pages
(groff, every warning on), the icon; the metainfo's screenshots must be shots the shell's
end-to-end test takes, and its id, launchable and release must agree with the entry and the build.

usage: metadata_check.py SOURCE_DIR BINARY_DIR VERSION
"""
import glob
import os
import re
import subprocess
import sys
import xml.etree.ElementTree as ET

APP_ID = "app.nimbrel.Nimbrel"
PROGRAMS = ("nimbrel", "nimbrel-library", "nimbrel-plutil", "nimbrel-headless")


def run(argv):
    done = subprocess.run(argv, capture_output=True, text=True, timeout=60)
    return done.returncode, (done.stdout + done.stderr).strip()


def shell_shots(source):
    """The step names of every ("shot", name) in the shell's end-to-end steps."""
    sys.path.insert(0, os.path.join(source, "tests", "shell"))
    import shell_e2e
    return {what for name, steps in vars(shell_e2e).items() if name.endswith("STEPS")
            for kind, what in steps if kind == "shot"}


def check(source, binary, version):
    failures = []
    entry = os.path.join(source, "packaging", APP_ID + ".desktop")
    status, said = run(["desktop-file-validate", entry])
    if status != 0 or said:
        failures.append(f"desktop-file-validate: {said or status}")

    metainfo = os.path.join(binary, "packaging", APP_ID + ".metainfo.xml")
    status, said = run(["appstreamcli", "validate", "--no-net", "--strict", metainfo])
    if status != 0:
        failures.append(f"appstreamcli validate: {said}")
    root = ET.parse(metainfo).getroot()
    if root.findtext("id") != APP_ID:
        failures.append(f"metainfo id {root.findtext('id')!r}")
    if root.findtext("launchable") != os.path.basename(entry):
        failures.append(f"metainfo launchable {root.findtext('launchable')!r}")
    releases = [r.get("version") for r in root.iter("release")]
    if not releases or releases[0] != version:
        failures.append(f"newest release {releases[:1]}, the build is {version}")

    shots = shell_shots(source)
    images = [i.text for i in root.iter("image")]
    if not images:
        failures.append("no screenshots")
    for url in images:
        match = re.fullmatch(r"https://[^/]+/screenshots/(.+)-(phone|pad)\.png", url or "")
        if not match or match.group(1) not in shots:
            failures.append(f"screenshot {url} is not one the shell takes ({sorted(shots)})")

    icon = ET.parse(os.path.join(source, "packaging", APP_ID + ".svg")).getroot()
    if icon.tag != "{http://www.w3.org/2000/svg}svg" or icon.get("viewBox") != "0 0 128 128":
        failures.append(f"the icon is no square SVG: {icon.tag} {icon.get('viewBox')}")

    for program in PROGRAMS:
        page = os.path.join(binary, "packaging", "man", program + ".1")
        status, said = run(["groff", "-man", "-Tutf8", "-ww", "-z", page])
        if status != 0 or said:
            failures.append(f"{program}.1: {said or status}")
        with open(page, encoding="utf-8") as f:
            text = f.read()
        if f"Nimbrel {version}" not in text or "\\-\\-version" not in text:
            failures.append(f"{program}.1 names neither the version {version} nor --version")
    if not glob.glob(os.path.join(binary, "packaging", "man", "*.1.gz")):
        failures.append("no compressed man pages")
    return failures


def main():
    failures = check(*sys.argv[1:4])
    for failure in failures:
        print("FAIL", failure)
    print(f"{'passed' if not failures else 'failed'}: {len(failures)} problems")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
