#!/usr/bin/env python3
"""Writes the fuzzer's seed corpus: small valid binary property lists of every kind."""
import datetime
import os
import plistlib
import sys

out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "corpus", "plist")
os.makedirs(out, exist_ok=True)

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
    with open(os.path.join(out, name + ".plist"), "wb") as f:
        f.write(plistlib.dumps(value, fmt=plistlib.FMT_BINARY, sort_keys=False))
