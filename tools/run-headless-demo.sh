#!/usr/bin/env bash
# Starts the program on the simulated platform with the demo fixture and prints what a person
# would see: the screen tree at launch, then after the splash has handed over to the home screen.
set -euo pipefail
cd "$(dirname "$0")/.."
runner=build/default/tools/headless/nimbrel-headless
fixture=${1:-fixtures/demo.json}
printf '%s\n' '{"op":"tree"}' '{"op":"advance","seconds":5.0}' '{"op":"ad","dismiss":true}' '{"op":"tree"}' \
  | "$runner" --fixture "$fixture" 2>/dev/null \
  | python3 -c '
import json, sys
lines = [json.loads(l) for l in sys.stdin]
for title, tree in (("At launch", lines[0]), ("After the splash (t = 5 s)", lines[3])):
    print("== " + title + ": " + " > ".join(s["id"] for s in tree["screens"]))
    print(json.dumps(tree, indent=2, ensure_ascii=False))
'
