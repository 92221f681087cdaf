#!/bin/sh
# Runs the tests of a build with gcc's --coverage, writes index.html into its folder and prints how many
# lines of each folder of the logic were run.
set -eu
build=$1
find "$build" -name '*.gcda' -delete
# But for what is measured by the clock: counting every line takes many times as long.
ctest --test-dir "$build" --output-on-failure -j"$(nproc)" -E '^soak$|InNoTime$'
gcovr --root . --filter 'src/(engine|store|physical_key|protection|shell|ui)/' \
  --html-details "$build/index.html" --csv "$build/lines.csv" "$build"

# A line of the table: file, lines, lines run, ...
awk -F, 'NR > 1 { split($1, path, "/"); all[path[2]] += $2; run[path[2]] += $3 }
         END { for (folder in all)
                 printf "%-14s %5d of %5d  %5.1f %%\n", folder, run[folder], all[folder],
                        100 * run[folder] / all[folder] }' "$build/lines.csv" | sort
echo "$build/index.html"
