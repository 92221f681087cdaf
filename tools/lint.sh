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

# Which folders a folder may include, besides itself, the interfaces and the standard library.
git grep -E '^#include' -- src | awk -F'[:<>"]' '
  function folder(path) { match(path, /^(platform\/)?[^\/]+\//); return substr(path, 1, RLENGTH - 1) }
  BEGIN {
    logic = " platform store physical_key protection engine shell platform/simulated "
    noToolkit = logic "platform/foundation platform/linux platform/x11 "
    may["physical_key"] = may["platform/simulated"] = may["platform/linux"] = "platform/foundation"
    may["protection"] = "store platform/foundation"
    may["engine"] = "store physical_key protection"
    may["shell"] = "engine protection"
    may["platform/desktop"] = "platform/foundation platform/linux platform/x11"
    may["ui"] = "engine store protection shell platform/foundation platform/desktop"
  }
  {
    from = folder(substr($1, 5)); self = " " from " "; name = $3
    if (name ~ /\.moc$/) next # the toolkit makes it of the file itself
    if ($0 ~ /"/) {
      to = folder(name)
      isForeign = from != "app" && !index(self "platform " may[from] " ", " " to " ")
    } else if (name ~ /^Q/) isForeign = index(noToolkit, self)
    else isForeign = name !~ /^[a-z0-9_]+$/ && index(logic, self)
    if (isForeign) { print "lint: " $1 " may not include " name; found = 1 }
  }
  END { exit found }' >&2

# Tests are left out: what their framework's macros make breaks rules of ours. QML has its own lint.
sed -n 's/^ *"file": "\(.*\)",*$/\1/p' build/compile_commands.json |
  grep -E "^$PWD/(src|tools|bench)/" |
  xargs -P "$(nproc)" -n 2 clang-tidy -p build --quiet 2>/dev/null
cmake --build build --target lunevra_ui_qmllint lunevra_daytime_qmllint
