#!/usr/bin/env bash
# make demo: writes a sample library (pictures, movies, songs, documents, all made here) under
# build/demo/home, points the XDG folders there, indexes it and starts the program on it, with the
# labelled demo ads unless NIMBREL_ADS says otherwise: the Qt shell when it is built, else the
# headless runner printing what the first screens show.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=build/default/tools
demo="$PWD/build/demo/home"
rm -rf "$demo"
mkdir -p "$demo"
"$bin/library/nimbrel-demo-library" "$demo"

export HOME="$demo"
export XDG_DATA_HOME="$demo/.local/share" XDG_CONFIG_HOME="$demo/.config" XDG_CACHE_HOME="$demo/.cache"
export XDG_STATE_HOME="$demo/.local/state" NIMBREL_HOME="$demo/.local/share/nimbrel"
unset XDG_PICTURES_DIR XDG_VIDEOS_DIR XDG_MUSIC_DIR NIMBREL_PICTURES NIMBREL_VIDEOS NIMBREL_MUSIC
# The demo shows where the placements are, with the local network's labelled placeholders.
export NIMBREL_ADS="${NIMBREL_ADS:-demo}"
"$bin/library/nimbrel-library" scan
"$bin/library/nimbrel-library" thumbnails

shell=build/default/src/shell/nimbrel
if [ -x "$shell" ]; then
  echo "Starting $shell on the demo home (the first visit to the albums asks for access)."
  exec "$shell"
fi

echo
echo "Note: the Qt shell (src/shell) is not built here; showing the headless runner on the desktop platform."
"$bin/library/nimbrel-library" permissions allow photos >/dev/null
"$bin/library/nimbrel-library" permissions allow music >/dev/null
printf '%s\n' '{"op":"tree"}' '{"op":"advance","seconds":5.0}' '{"op":"ad","dismiss":true}' '{"op":"tree"}' '{"op":"paths"}' \
  | "$bin/headless/nimbrel-headless" --desktop 2>/dev/null \
  | python3 -c '
import json, sys
lines = [json.loads(l) for l in sys.stdin]
for title, tree in (("At launch", lines[0]), ("After the splash (t = 5 s)", lines[3])):
    print("== " + title + ": " + " > ".join(s["id"] for s in tree["screens"]))
    print(json.dumps(tree, indent=2, ensure_ascii=False)[:6000])
print("== Paths:", json.dumps(lines[4], ensure_ascii=False))
'
