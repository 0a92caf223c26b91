#!/usr/bin/env python3
"""The desktop's media controls against the Qt program (offscreen) on a private session bus: with
no song open the player is stopped and calls change nothing; a song opened from the music screen
answers PlayPause, Play, Pause, Seek and SetPosition as the screen's own buttons and slider would,
and its metadata, status and position read back as the screen shows them.

usage: dbus-run-session -- shell_mpris.py NIMBREL FIXTURE
"""
import json
import os
import re
import subprocess
import sys
import tempfile

NAME = "org.mpris.MediaPlayer2.nimbrel"
PATH = "/org/mpris/MediaPlayer2"
PLAYER = "org.mpris.MediaPlayer2.Player"

TOKEN = re.compile(r'\s*(array \[|\]|dict entry\(|\)|variant|string "((?:[^"\\]|\\.)*)"|object path "([^"]*)"'
                   r'|(?:int|uint)(?:16|32|64) (-?\d+)|double (\S+)|boolean (true|false)|byte (\d+))')


def parse_reply(text):
    """The values of a `dbus-send --print-reply` answer, as Python values."""
    body = text.split("\n", 1)[1] if "\n" in text else ""
    tokens, at = [], 0
    while at < len(body):
        m = TOKEN.match(body, at)
        if not m:
            if body[at:].strip():
                raise ValueError("cannot read: " + body[at:at + 60])
            break
        tokens.append(m)
        at = m.end()
    pos = 0

    def value():
        nonlocal pos
        m = tokens[pos]
        pos += 1
        head = m.group(1)
        if head == "variant":
            return value()
        if head == "array [":
            items = []
            while tokens[pos].group(1) != "]":
                if tokens[pos].group(1) == "dict entry(":
                    pos += 1
                    key = value()
                    items.append((key, value()))
                    pos += 1  # ")"
                else:
                    items.append(value())
            pos += 1
            return dict(items) if items and all(isinstance(i, tuple) for i in items) else items
        if m.group(2) is not None:
            return m.group(2)
        if m.group(3) is not None:
            return m.group(3)
        if m.group(4) is not None:
            return int(m.group(4))
        if m.group(5) is not None:
            return float(m.group(5))
        if m.group(6) is not None:
            return m.group(6) == "true"
        return int(m.group(7))

    values = []
    while pos < len(tokens):
        values.append(value())
    return values


def bus(method, *args, interface=PLAYER):
    out = subprocess.run(["dbus-send", "--session", "--print-reply", "--reply-timeout=5000", "--dest=" + NAME,
                          PATH, f"{interface}.{method}", *args], capture_output=True, text=True, timeout=20)
    if out.returncode != 0:
        raise RuntimeError(f"{method}: {out.stderr.strip()}")
    return parse_reply(out.stdout)


def prop(name):
    return bus("Get", "string:" + PLAYER, "string:" + name, interface="org.freedesktop.DBus.Properties")[0]


class Program:
    def __init__(self, argv, env):
        self.proc = subprocess.Popen(argv, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                     stderr=subprocess.PIPE, text=True, env=env)

    def ask(self, request):
        self.proc.stdin.write(json.dumps(request) + "\n")
        self.proc.stdin.flush()
        line = self.proc.stdout.readline()
        if not line:
            raise RuntimeError("the program ended early: " + self.proc.stderr.read()[-3000:])
        answer = json.loads(line)
        if not answer.get("ok"):
            raise RuntimeError(f"{request}: {answer}")
        return answer

    def settle(self):
        self.ask({"op": "advance", "seconds": 0.2})

    def top(self):
        return self.ask({"op": "tree"})["screens"][-1]

    def close(self):
        self.proc.stdin.close()
        err = self.proc.stderr.read()
        return self.proc.wait(timeout=60), err


def main():
    nimbrel, fixture = sys.argv[1:3]
    if not os.environ.get("DBUS_SESSION_BUS_ADDRESS"):
        print("no session bus: run under dbus-run-session")
        return 1
    failures = []

    def check(what, found, expected):
        if found != expected:
            failures.append(f"{what}: {found!r}, expected {expected!r}")

    with tempfile.TemporaryDirectory() as scratch:
        runtime = os.path.join(scratch, "runtime")
        os.mkdir(runtime, 0o700)
        env = dict(os.environ, TMPDIR=scratch, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software",
                   XDG_RUNTIME_DIR=runtime)
        qt = Program([nimbrel, "--automation", "--fixture", fixture], env)
        try:
            qt.ask({"op": "advance", "seconds": 5.8})
            check("status with no player", prop("PlaybackStatus"), "Stopped")
            bus("PlayPause")
            check("status after a call with no player", prop("PlaybackStatus"), "Stopped")
            check("can play with no player", prop("CanPlay"), False)

            qt.ask({"op": "action", "selector": "onAudioBtn:", "sender": "btnAudio"})
            qt.ask({"op": "advance", "seconds": 1.2})
            qt.ask({"op": "tap", "collection": "albumsCollectionView", "row": 0})
            qt.ask({"op": "advance", "seconds": 0.8})
            qt.ask({"op": "tap", "collection": "albumsCollectionView", "row": 0})
            qt.ask({"op": "advance", "seconds": 1.5})
            screen = qt.top()
            check("screen", screen["id"], "MusicPlayerVC")

            meta = prop("Metadata")
            check("title", meta.get("xesam:title"), "Blue")
            check("artist", meta.get("xesam:artist"), ["Ana"])
            check("album", meta.get("xesam:album"), "Sea")
            check("length", meta.get("mpris:length"), 205 * 1000000)
            check("track id", meta.get("mpris:trackid"), "/org/nimbrel/track/1311234567890123")
            art = meta.get("mpris:artUrl", "")
            if not art.startswith("file://") or not os.path.getsize(art[len("file://"):]):
                failures.append(f"art: {art!r} is no file")
            check("status", prop("PlaybackStatus"), "Playing")
            check("can seek", prop("CanSeek"), True)

            bus("Pause")
            qt.settle()
            check("button after Pause", qt.top()["outlets"]["btnPlayOutlet"]["image"], "play")
            check("status after Pause", prop("PlaybackStatus"), "Paused")
            check("players after Pause", [p["playing"] for p in qt.ask({"op": "players"})["players"]], [False])
            bus("Pause")  # a second Pause is no press: a press would play again
            qt.settle()
            check("status after a second Pause", prop("PlaybackStatus"), "Paused")

            paused_at = prop("Position")
            bus("Seek", "int64:5000000")
            qt.settle()
            check("position after Seek ahead", prop("Position"), paused_at + 15 * 1000000)
            screen = qt.top()
            seconds = (paused_at + 15 * 1000000) // 1000000
            check("time label after Seek ahead", screen["outlets"]["lblTime"]["text"], f"{seconds // 60:02d}:{seconds % 60:02d}")
            check("slider after Seek ahead", screen["outlets"]["sliderOutlet"]["value"], seconds)
            check("status after a jump while paused", prop("PlaybackStatus"), "Paused")
            bus("Seek", "int64:-1")
            qt.settle()
            check("position after Seek back", prop("Position"), paused_at)

            bus("SetPosition", "objpath:/org/nimbrel/track/1311234567890123", "int64:100000000")
            qt.settle()
            check("slider after SetPosition", qt.top()["outlets"]["sliderOutlet"]["value"], 100)
            check("position after SetPosition", prop("Position"), 100 * 1000000)

            bus("Play")
            qt.settle()
            check("button after Play", qt.top()["outlets"]["btnPlayOutlet"]["image"], "pause")
            check("status after Play", prop("PlaybackStatus"), "Playing")
            bus("PlayPause")
            qt.settle()
            check("status after PlayPause", prop("PlaybackStatus"), "Paused")

            qt.ask({"op": "action", "selector": "btnClose:", "sender": "btnClose"})
            qt.ask({"op": "advance", "seconds": 0.8})
            check("status once closed", prop("PlaybackStatus"), "Stopped")
        except Exception as e:  # noqa: BLE001 - any failure ends the run with what is known
            failures.append(f"stopped: {e}")
        finally:
            status, err = qt.close()
        if "MPRIS is off" in err:
            failures.append("the program found no bus: " + err[-500:])
        failures += [f"Qt said: {line}" for line in err.splitlines() if line.startswith(("qt-warning", "qt-critical"))]
        if status != 0:
            failures.append(f"the program ended with status {status}")
    for failure in failures:
        print("FAIL", failure)
    print(f"{'passed' if not failures else 'failed'}: {len(failures)} problems")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
