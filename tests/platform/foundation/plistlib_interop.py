#!/usr/bin/env python3
"""Python's plistlib on the other side of the binary property list tests.

  check PLIST MANIFEST   plistlib reads PLIST; every value must equal the manifest's
  write MANIFEST PLIST   plistlib writes the manifest's values to PLIST (binary)

The manifest is one token per line, containers first with their size:
  d N (then N pairs of key and value), a N, s HEX-UTF8, i DECIMAL, r HEX-BITS,
  t HEX-BITS (seconds since 2001), b 0|1, x HEX-BYTES.
"""
import datetime
import plistlib
import struct
import sys

EPOCH = datetime.datetime(2001, 1, 1)


def date_of(seconds):
    # The rounding plistlib applies when it reads a date.
    return EPOCH + datetime.timedelta(seconds=seconds)


def parse(lines):
    it = iter(lines)

    def value():
        tag, _, arg = next(it).partition(" ")
        if tag == "d":
            items = []
            for _ in range(int(arg)):
                key = value()
                items.append((key, value()))
            return dict(items)
        if tag == "a":
            return [value() for _ in range(int(arg))]
        if tag == "s":
            return bytes.fromhex(arg).decode("utf-8")
        if tag == "i":
            return int(arg)
        if tag == "r":
            return struct.unpack(">d", bytes.fromhex(arg))[0]
        if tag == "t":
            return date_of(struct.unpack(">d", bytes.fromhex(arg))[0])
        if tag == "b":
            return arg == "1"
        if tag == "x":
            return bytes.fromhex(arg)
        raise ValueError("bad manifest token " + tag)

    return value()


def compare(got, want, path):
    if type(got) is not type(want):
        return f"{path}: {type(got).__name__} vs {type(want).__name__}"
    if isinstance(want, float):
        if struct.pack(">d", got) != struct.pack(">d", want):
            return f"{path}: {got!r} vs {want!r}"
    elif isinstance(want, dict):
        if list(got) != list(want):
            return f"{path}: keys {list(got)[:5]} vs {list(want)[:5]}"
        for k in want:
            err = compare(got[k], want[k], f"{path}.{k}")
            if err:
                return err
    elif isinstance(want, list):
        if len(got) != len(want):
            return f"{path}: {len(got)} items vs {len(want)}"
        for i, (g, w) in enumerate(zip(got, want)):
            err = compare(g, w, f"{path}[{i}]")
            if err:
                return err
    elif got != want:
        return f"{path}: {got!r} vs {want!r}"
    return None


def main(argv):
    if len(argv) != 4 or argv[1] not in ("check", "write"):
        print(__doc__, file=sys.stderr)
        return 2
    if argv[1] == "check":
        with open(argv[2], "rb") as f:
            got = plistlib.load(f)
        with open(argv[3], encoding="ascii") as f:
            want = parse(f.read().splitlines())
        err = compare(got, want, "root")
        if err:
            print("mismatch at " + err, file=sys.stderr)
            return 1
        return 0
    with open(argv[2], encoding="ascii") as f:
        value = parse(f.read().splitlines())
    with open(argv[3], "wb") as f:
        plistlib.dump(value, f, fmt=plistlib.FMT_BINARY, sort_keys=False)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
