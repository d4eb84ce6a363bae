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
(cd "$scratch" && "$driver" --data "$scratch/db" --app "$scratch/app" "$script" >/dev/null)
mv "$scratch"/*.png "$target"
