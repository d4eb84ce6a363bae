#!/bin/bash
# Takes the pictures of the help from the running program: plays pictures.fbt and puts them into HTMLHelp/pictures.
# Build first. Look at them before they are committed.
set -euo pipefail
cd "$(dirname "$0")/.."
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/app" HTMLHelp/pictures
script=$PWD/templates/pictures.fbt
driver=$PWD/build/release/bin/fbt-drive
target=$PWD/HTMLHelp/pictures
# The display of the screens' own size.
cat >"$scratch/display.json" <<END
{"synchronousWindowSystemEvents": false, "windowFrameMargins": false, "screens": [{"name": "display",
 "x": 0, "y": 0, "width": 1024, "height": 768, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]}
END
export QT_QPA_PLATFORM=offscreen:configfile=$scratch/display.json
(cd "$scratch" && "$driver" --data "$scratch/db" --app "$scratch/app" "$script" >/dev/null)
mv "$scratch"/*.png "$target"
