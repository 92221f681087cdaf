#!/bin/sh
# virtual_displays.sh FOLDER WIDTHxHEIGHT...
# Runs an X server of its own with one display of each size, side by side, until it is killed. Once
# they are there, FOLDER/display holds what to put into DISPLAY.
set -eu
folder=$1
shift

{
  printf 'Section "Device"\n Identifier "device"\n Driver "dummy"\n VideoRam 256000\nEndSection\n'
  printf 'Section "Monitor"\n Identifier "monitor"\n HorizSync 5-1000\n VertRefresh 5-200\n'
  printf 'EndSection\nSection "Screen"\n Identifier "screen"\n Device "device"\n'
  printf ' Monitor "monitor"\n DefaultDepth 24\n SubSection "Display"\n  Depth 24\n'
  printf '  Virtual 8192 4096\n EndSubSection\nEndSection\n'
} >"$folder/xorg.conf"

Xorg -displayfd 3 -config "$folder/xorg.conf" -logfile "$folder/xorg.log" -noreset -nolisten tcp \
  3>"$folder/number" 2>"$folder/xorg.err" &
server=$!
trap 'kill "$server"; wait "$server"; exit' INT TERM
until [ -s "$folder/number" ]; do
  kill -0 "$server" || exit 1
  sleep 0.1
done
DISPLAY=:$(cat "$folder/number")
export DISPLAY

output=0
for size in "$@"; do
  xrandr --newmode "$size" 100 "${size%x*}" "$((${size%x*} + 48))" "$((${size%x*} + 80))" \
    "$((${size%x*} + 160))" "${size#*x}" "$((${size#*x} + 3))" "$((${size#*x} + 9))" \
    "$((${size#*x} + 30))" 2>/dev/null || true # a size that the server knows already
  xrandr --addmode "DUMMY$output" "$size"
  if [ "$output" -eq 0 ]; then
    xrandr --output DUMMY0 --mode "$size" --pos 0x0 --primary
  else
    xrandr --output "DUMMY$output" --mode "$size" --right-of "DUMMY$((output - 1))"
  fi
  output=$((output + 1))
done
xsetroot -solid '#35506b'
echo "$DISPLAY" >"$folder/display"
wait "$server"
