#!/usr/bin/env python3
"""The desktop's media controls against the Qt program (offscreen) on a private session bus: with
no song open the player is stopped and calls change nothing; a song opened from the music screen
answers PlayPause, Play, Pause, Seek and SetPosition as the screen's own buttons and slider would,
its metadata, status and position read back as the screen shows them, and the changes of status
and the jumps are signalled.

usage: dbus-run-session -- shell_mpris.py NIMBREL FIXTURE
"""
import json
import os
import re
import subprocess
import sys
import tempfile

from shell_e2e import Program

NAME = "org.mpris.MediaPlayer2.nimbrel"
PATH = "/org/mpris/MediaPlayer2"
PLAYER = "org.mpris.MediaPlayer2.Player"
TRACK = "/org/nimbrel/track/1311234567890123"


def bus(method, *args, interface=PLAYER):
    out = subprocess.run(["dbus-send", "--session", "--print-reply", "--reply-timeout=5000", "--dest=" + NAME,
                          PATH, f"{interface}.{method}", *args], capture_output=True, text=True, timeout=20)
    if out.returncode != 0:
        raise RuntimeError(f"{method}: {out.stderr.strip()}")
    return out.stdout


# A value as dbus-send prints it: a string, an object path, a number, a boolean, a list of strings.
VALUE = r'(?:string|object path) "([^"]*)"|int64 (-?\d+)|boolean (\w+)|array \[\s*string "([^"]*)"'


def read(match):
    if not match:
        return None
    text, number, boolean, first = match.groups()[-4:]
    return text if text is not None else int(number) if number else (boolean == "true") if boolean else [first]


def prop(name):
    reply = bus("Get", "string:" + PLAYER, "string:" + name, interface="org.freedesktop.DBus.Properties")
    return read(re.search(r"variant\s+(?:" + VALUE + ")", reply))


def metadata():
    reply = bus("Get", "string:" + PLAYER, "string:Metadata", interface="org.freedesktop.DBus.Properties")
    return {key: read(re.search(re.escape(f'string "{key}"') + r"\s+variant\s+(?:" + VALUE + ")", reply))
            for key in ("mpris:trackid", "mpris:length", "mpris:artUrl", "xesam:title", "xesam:artist", "xesam:album")}


def ask(program, request):
    answer = program.ask(request)
    if not answer.get("ok"):
        raise RuntimeError(f"{request}: {answer}")
    return answer


def call(program, method, *args):
    """A call on the bus, then a moment for the program to act on it."""
    bus(method, *args)
    ask(program, {"op": "advance", "seconds": 0.2})


def top(program):
    return ask(program, {"op": "tree"})["screens"][-1]


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
        signals = open(os.path.join(scratch, "signals.txt"), "w+")
        monitor = subprocess.Popen(["dbus-monitor", "--session", f"type='signal',path='{PATH}'"],
                                   stdout=signals, stderr=subprocess.DEVNULL)
        qt = Program([nimbrel, "--automation", "--fixture", fixture], env)
        try:
            ask(qt, {"op": "advance", "seconds": 5.8})
            check("status with no player", prop("PlaybackStatus"), "Stopped")
            bus("PlayPause")
            check("status after a call with no player", prop("PlaybackStatus"), "Stopped")

            ask(qt, {"op": "action", "selector": "onAudioBtn:", "sender": "btnAudio"})
            ask(qt, {"op": "advance", "seconds": 1.2})
            ask(qt, {"op": "tap", "collection": "albumsCollectionView", "row": 0})
            ask(qt, {"op": "advance", "seconds": 0.8})
            ask(qt, {"op": "tap", "collection": "albumsCollectionView", "row": 0})
            ask(qt, {"op": "advance", "seconds": 1.5})
            screen = top(qt)
            check("screen", screen["id"], "MusicPlayerVC")

            meta = metadata()
            for key, expected in {"xesam:title": "Blue", "xesam:artist": ["Ana"], "xesam:album": "Sea",
                                  "mpris:length": 205 * 1000000, "mpris:trackid": TRACK}.items():
                check(key, meta.get(key), expected)
            art = meta.get("mpris:artUrl") or ""
            if not art.startswith("file://") or not os.path.getsize(art[len("file://"):]):
                failures.append(f"art: {art!r} is no file")
            check("status", prop("PlaybackStatus"), "Playing")
            check("can seek", prop("CanSeek"), True)

            call(qt, "Pause")
            check("button after Pause", top(qt)["outlets"]["btnPlayOutlet"]["image"], "play")
            check("status after Pause", prop("PlaybackStatus"), "Paused")
            check("players after Pause", [p["playing"] for p in ask(qt, {"op": "players"})["players"]], [False])
            call(qt, "Pause")  # a second Pause is no press: a press would play again
            check("status after a second Pause", prop("PlaybackStatus"), "Paused")

            paused_at = prop("Position")
            call(qt, "Seek", "int64:5000000")
            check("position after Seek ahead", prop("Position"), paused_at + 15 * 1000000)
            screen = top(qt)
            seconds = (paused_at + 15 * 1000000) // 1000000
            check("time label after Seek ahead", screen["outlets"]["lblTime"]["text"], f"{seconds // 60:02d}:{seconds % 60:02d}")
            check("slider after Seek ahead", screen["outlets"]["sliderOutlet"]["value"], seconds)
            check("status after a jump while paused", prop("PlaybackStatus"), "Paused")
            call(qt, "Seek", "int64:-1")
            check("position after Seek back", prop("Position"), paused_at)

            call(qt, "SetPosition", "objpath:" + TRACK, "int64:100000000")
            check("slider after SetPosition", top(qt)["outlets"]["sliderOutlet"]["value"], 100)
            check("position after SetPosition", prop("Position"), 100 * 1000000)

            call(qt, "Play")
            check("button after Play", top(qt)["outlets"]["btnPlayOutlet"]["image"], "pause")
            check("status after Play", prop("PlaybackStatus"), "Playing")
            call(qt, "PlayPause")
            check("status after PlayPause", prop("PlaybackStatus"), "Paused")

            ask(qt, {"op": "action", "selector": "btnClose:", "sender": "btnClose"})
            ask(qt, {"op": "advance", "seconds": 0.8})
            check("status once closed", prop("PlaybackStatus"), "Stopped")
        except Exception as e:  # noqa: BLE001 - any failure ends the run with what is known
            failures.append(f"stopped: {e}")
        finally:
            status, _, err = qt.close()
            monitor.terminate()
            monitor.wait(timeout=10)
        # What the desktop heard without asking: each change of status, and the jumps.
        signals.seek(0)
        heard = signals.read()
        told = re.findall(r'string "PlaybackStatus"\s+variant\s+string "(\w+)"', heard)
        # The first "Stopped" may come before the monitor listens.
        told = told[told.index("Playing"):] if "Playing" in told else told
        check("statuses told", told, ["Playing", "Paused", "Playing", "Paused", "Stopped"])
        if heard.count("member=Seeked") < 3:
            failures.append(f"Seeked told {heard.count('member=Seeked')} times, expected a jump ahead, back and a slider move")
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
