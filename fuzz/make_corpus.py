#!/usr/bin/env python3
"""Writes the fuzzers' seed corpora and dictionaries under fuzz/.

  plist/     small valid binary property lists of every kind
  url/       addresses the product makes and reads ("reference\\nbase" pairs)
  fixture/   the demo fixture and every end-to-end scenario's fixture
  protocol/  every end-to-end scenario's requests, one a line
  media/     small pictures, movies and songs from the project's sample writers (media_seeds)

usage: make_corpus.py [MEDIA_SEEDS_BINARY]   (default build/fuzz/fuzz/media_seeds)
"""
import datetime
import glob
import json
import os
import plistlib
import re
import subprocess
import sys

here = os.path.dirname(os.path.abspath(__file__))
root = os.path.dirname(here)


def folder(name):
    path = os.path.join(here, "corpus", name)
    os.makedirs(path, exist_ok=True)
    return path


def write(name, file, data):
    with open(os.path.join(folder(name), file), "wb") as f:
        f.write(data if isinstance(data, bytes) else data.encode())


def plists():
    record = {
        "url": {"relative": "file:///home/u/Documents/Nimbrel/importedFiles/report%2012.pdf"},
        "openingDate": datetime.datetime(2026, 3, 1, 9, 30, 0, 123456),
        "filetype": "docs",
    }
    photo = {
        "url": {"relative": "assets-library://asset/asset.JPG?id=5D1C0A3E-1111-2222-3333-444455556666&ext=JPG"},
        "openingDate": datetime.datetime(2025, 12, 24, 18, 0, 0),
        "filetype": "photo",
    }
    seeds = {
        "records": [record, photo, dict(record, filetype="music")],
        "scalars": [True, False, 0, 255, 256, 65536, 2**32, -1, -2**63, 2**63 - 1, 0.5, -0.0, 1e300],
        "strings": ["", "ascii", "Grüße", "写真", "😀 party", "x" * 20],
        "data": {"empty": b"", "bytes": bytes(range(20))},
        "nested": {"a": [[[], {}], {"b": [1, [2, [3]]]}]},
        "wide": list(range(300)),
        "keys": {f"key{i}": i for i in range(20)},
        "root_string": "just a string",
    }
    for name, value in seeds.items():
        write("plist", name + ".plist", plistlib.dumps(value, fmt=plistlib.FMT_BINARY, sort_keys=False))


def urls():
    seeds = [
        "file:///home/u/.local/share/nimbrel/Documents/Nimbrel/importedFiles/report%2012.pdf",
        "assets-library://asset/asset.JPG?id=5D1C0A3E-1111-2222-3333-444455556666&ext=JPG",
        "ipod-library://item/item.mp3?id=1311234567890123",
        "https://user:pw@[2001:db8::1]:8080/a/b/../c/./d.txt?q=1&r=%20#frag",
        "../up/file.mov\nfile:///home/u/Videos/Trips/",
        "?only=query\nhttp://example.org/a/b",
        "mailto:someone@example.org",
        "file:///",
        "/tmp/relative path/ü.txt",
    ]
    for i, text in enumerate(seeds):
        write("url", f"seed{i}.txt", text)


def scenarios():
    for path in sorted(glob.glob(os.path.join(root, "tests", "e2e", "scenarios", "*.json"))):
        name = os.path.splitext(os.path.basename(path))[0]
        scenario = json.load(open(path))
        if "fixture" in scenario:
            write("fixture", name + ".json", json.dumps(scenario["fixture"]))
        lines = [json.dumps(step["send"], separators=(",", ":")) for step in scenario.get("steps", []) if "send" in step]
        write("protocol", name + ".jsonl", "\n".join(lines) + "\n")
    with open(os.path.join(root, "fixtures", "demo.json")) as f:
        write("fixture", "demo.json", f.read())


def protocol_dictionary():
    """Every operation, field, selector and outlet name the product knows, quoted as JSON."""
    words = set()
    for path in glob.glob(os.path.join(root, "tests", "e2e", "scenarios", "*.json")):
        text = open(path).read()
        words.update(re.findall(r'"([A-Za-z_$][A-Za-z0-9_:$]*)"', text))
    for path in glob.glob(os.path.join(root, "src", "app", "storyboard", "*.cpp")):
        words.update(re.findall(r'"([A-Za-z_][A-Za-z0-9_]*:?)"', open(path).read()))
    with open(os.path.join(here, "protocol.dict"), "w") as f:
        for w in sorted(words):
            f.write(f'"\\"{w}\\""\n')
        for token in ["null", "true", "false", "-1", "1e308", "0.5", "{}", "[]"]:
            f.write(f'"{token}"\n')


def media(binary):
    if not os.path.exists(binary):
        sys.exit(f"{binary} is missing: build the fuzz preset first")
    subprocess.run([binary, folder("media")], check=True)


plists()
urls()
scenarios()
protocol_dictionary()
media(sys.argv[1] if len(sys.argv) > 1 else os.path.join(root, "build", "fuzz", "fuzz", "media_seeds"))
