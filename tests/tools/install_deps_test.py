#!/usr/bin/env python3
"""tools/install-deps.sh on a machine where packages are missing and the user is not root: without
sudo it stops with a sentence saying what to do and runs no apt-get; with sudo it installs through it.
The machine is faked on PATH (dpkg-query finds nothing, id says a user's number).

usage: install_deps_test.py INSTALL_DEPS_SH
"""
import os
import subprocess
import sys
import tempfile

RECORDER = '#!/bin/sh\necho "$(basename "$0") $*" >> "{log}"\n'


def machine(folder, log, with_sudo):
    bin_dir = os.path.join(folder, "bin")
    os.makedirs(bin_dir)
    scripts = {"dpkg-query": "#!/bin/sh\nexit 1\n", "id": "#!/bin/sh\necho 1000\n",
               "apt-get": RECORDER.format(log=log)}
    if with_sudo:
        scripts["sudo"] = RECORDER.format(log=log) + 'exec "$@"\n'
    for name, text in scripts.items():
        with open(os.path.join(bin_dir, name), "w") as f:
            f.write(text)
        os.chmod(os.path.join(bin_dir, name), 0o755)
    for tool in ("grep", "basename"):
        os.symlink(subprocess.check_output(["which", tool], text=True).strip(), os.path.join(bin_dir, tool))
    return bin_dir


def attempt(script, with_sudo):
    with tempfile.TemporaryDirectory() as folder:
        log = os.path.join(folder, "calls")
        path = machine(folder, log, with_sudo)
        done = subprocess.run(["/bin/bash", script], capture_output=True, text=True, timeout=60,
                              env={"PATH": path, "HOME": folder})
        calls = open(log).read().splitlines() if os.path.exists(log) else []
    return done, calls


def main():
    script = sys.argv[1]
    failures = []
    done, calls = attempt(script, with_sudo=False)
    if done.returncode != 1 or "sudo is not installed" not in done.stderr or "libgtest-dev" not in done.stderr:
        failures.append(f"without sudo: status {done.returncode}, said {done.stderr!r}")
    if calls:
        failures.append(f"without sudo it still ran {calls}")
    done, calls = attempt(script, with_sudo=True)
    if done.returncode != 0 or calls[:2] != ["sudo apt-get update -qq", "apt-get update -qq"]:
        failures.append(f"with sudo: status {done.returncode}, calls {calls}, said {done.stderr!r}")
    for failure in failures:
        print("FAIL", failure)
    print(f"{'passed' if not failures else 'failed'}: {len(failures)} problems")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
