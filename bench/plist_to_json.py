#!/usr/bin/env python3
"""The reference for nimbrel-plutil -convert json: plistlib.load + json.dump of the same file.

usage: plist_to_json.py IN.plist OUT.json
Dates become {"$date": seconds since 2001-01-01 UTC} and data {"$data": base64}, as in ours.
"""
import base64
import datetime
import json
import plistlib
import sys

EPOCH = datetime.datetime(2001, 1, 1)


def tagged(value):
    if isinstance(value, datetime.datetime):
        return {"$date": (value - EPOCH).total_seconds()}
    if isinstance(value, bytes):
        return {"$data": base64.b64encode(value).decode()}
    raise TypeError(f"{type(value).__name__} has no JSON form")


with open(sys.argv[1], "rb") as f:
    value = plistlib.load(f)
with open(sys.argv[2], "w") as f:
    json.dump(value, f, indent=2, ensure_ascii=False, default=tagged)
    f.write("\n")
