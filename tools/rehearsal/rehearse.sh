#!/bin/sh
# Plays one night with real windows in under a minute, on $DISPLAY or on a virtual X server with two
# displays of different size, and leaves pictures of it in build/rehearsal/.
set -eu
cd "$(dirname "$0")/../.."
pictures=build/rehearsal
rm -rf "$pictures"
mkdir -p "$pictures"

play() {
  build/bin/lunevra-rehearsal --show --speed 1200 --pictures "$pictures" \
    tools/rehearsal/first_night.night
  echo "Pictures: $pictures"
}

if [ -n "${DISPLAY:-}" ]; then
  play
  exit
fi

workplace=$(mktemp -d)
tools/virtual_displays.sh "$workplace" 1280x800 1024x768 &
server=$!
trap 'kill "$server" 2>/dev/null || true; wait "$server" 2>/dev/null || true; rm -rf "$workplace"' EXIT
deadline=$(($(date +%s) + 20))
until [ -s "$workplace/display" ]; do
  if ! kill -0 "$server" 2>/dev/null || [ "$(date +%s)" -ge "$deadline" ]; then
    echo 'The virtual X server did not start.' >&2
    exit 1
  fi
  sleep 0.1
done
DISPLAY=$(cat "$workplace/display")
export DISPLAY
play
