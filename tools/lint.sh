#!/bin/sh
# Formatting, scripts, static analysis, QML and the borders between folders; silent where all is well.
set -eu
cd "$(dirname "$0")/.."

sources=$(git ls-files '*.h' '*.cpp')
# shellcheck disable=SC2086 # file names of this project have no blanks
clang-format --dry-run -Werror $sources

# Whatever starts as a shell script is one, whatever its name.
# shellcheck disable=SC2046
shellcheck $(git grep -lE '^#!.*\b(ba|da)?sh\b')

# The logic sees no toolkit and no operating system; platform/ itself only declares.
foreign='#include[[:space:]]*<(Q[A-Z]|sys/|unistd|fcntl|X11/|xcb/|sqlite3|systemd/|lib(udev|mount|secret))'
logic='src/engine src/store src/physical_key src/protection src/shell src/platform/*.h'
# shellcheck disable=SC2086
if git grep -nE "$foreign" -- $logic; then
  echo 'lint: a header of a toolkit or an operating system inside the logic' >&2
  exit 1
fi

# Everything that needs no toolkit is analysed; QML has its own lint, in the build.
analysis=build/lint
cmake --preset release -B "$analysis" -DCMAKE_CXX_COMPILER=clang++ -DLUNEVRA_DESKTOP=OFF \
  -DLUNEVRA_TESTS=OFF >/dev/null
sed -n 's/^ *"file": "\(.*\)",*$/\1/p' "$analysis/compile_commands.json" |
  xargs -P "$(nproc)" -n 2 clang-tidy -p "$analysis" --quiet 2>/dev/null
cmake --build build --target lunevra_ui_qmllint lunevra_daytime_qmllint
