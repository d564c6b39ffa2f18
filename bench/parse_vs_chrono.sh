#!/bin/bash
# kelo-core parse against chrono-node (the common JavaScript natural-language date parser) on the
# same 20,000 quick-add lines, in one run: both read the lines from a file, parse each with the
# same clock reading and write one JSON line per input line. Prints the wall-clock and CPU times
# of both (median of 5 runs, each a whole process including its start-up) and the ratios. chrono-node is installed
# from the npm registry into a scratch folder, which is removed at the end. Not part of the tests.
#
# Usage: bench/parse_vs_chrono.sh [build folder]   (default: build beside this folder)
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../build}
kelo_core=$build/tools/kelo-core/kelo-core
[[ -x $kelo_core ]] || { echo "missing $kelo_core: build kelo-core first" >&2; exit 2; }
command -v node >/dev/null && command -v npm >/dev/null ||
    { echo "node and npm are needed (apt-get install nodejs npm)" >&2; exit 2; }

scratch=$(mktemp -d /tmp/kelo-chrono-XXXXXX)
trap 'rm -rf "$scratch"' EXIT
(cd "$scratch" && npm install --silent --no-audit --no-fund chrono-node@2 >/dev/null)

# The lines of the parser benchmark, as people type them, repeated to 20,000.
node - "$scratch/lines" <<'JS'
const lines = ["dentist fri 3pm", "taxes apr 30", "pay rent in 3 days",
  "call mom tomorrow morning", "dinner tonight 7pm", "buy milk", "meeting at 3", "standup @9:30",
  "review pull request by fri.", "party this weekend", "plan next week",
  "renew passport on 5th mar", "water the plants", "book flights to Lisbon in 2 weeks",
  "Zahnarzt Termin vereinbaren", "gym 7 am", "call bob, fri", "lunch with Ana noon",
  "reply to the landlord about the heating tmrw 5p", "x 13pm"];
const out = [];
for (let i = 0; i < 20000; ++i) out.push(JSON.stringify(lines[i % lines.length]));
require("fs").writeFileSync(process.argv[2], out.join("\n") + "\n");
JS

cat >"$scratch/chrono.js" <<'JS'
// One answer per line, as kelo-core parse gives it: the text before the date, the day, the minute.
const chrono = require("chrono-node");
const now = new Date("2025-03-06T10:00:00+01:00");
const input = require("fs").readFileSync(0, "utf8").split("\n").filter((l) => l.length > 0);
const out = [];
for (const line of input) {
  const text = JSON.parse(line);
  const found = chrono.parse(text, now)[0];
  const when = found ? found.start.date() : null;
  out.push(JSON.stringify({
    title: found ? text.slice(0, found.index).trim() : text,
    day: when ? when.toISOString().slice(0, 10) : null,
    minute: when && found.start.isCertain("hour") ? when.getHours() * 60 + when.getMinutes() : null,
  }));
}
process.stdout.write(out.join("\n") + "\n");
JS

# Wall-clock and CPU (user + system) milliseconds of one whole run, each the median of five, as
# bash's own `time` gives them (to the millisecond). On a busy machine the wall clock also
# counts waiting for a core; the CPU time does not.
median_ms() {
    local wall=() cpu=() TIMEFORMAT='%3R %3U %3S'
    for _ in 1 2 3 4 5; do
        local figures
        figures=$({ time "$@" <"$scratch/lines" >"$scratch/out" 2>/dev/null; } 2>&1)
        read -r elapsed user system <<<"$figures"
        wall+=("$(awk -v e="$elapsed" 'BEGIN { printf "%d", e * 1000 }')")
        cpu+=("$(awk -v u="$user" -v s="$system" 'BEGIN { printf "%d", (u + s) * 1000 }')")
    done
    echo "$(printf '%s\n' "${wall[@]}" | sort -n | sed -n 3p)" \
        "$(printf '%s\n' "${cpu[@]}" | sort -n | sed -n 3p)"
}

read -r kelo_wall kelo_cpu < <(median_ms "$kelo_core" parse --now 2025-03-06T10:00:00+01:00 \
    --tz Europe/Berlin)
[[ $(wc -l <"$scratch/out") -eq 20000 ]] || { echo "kelo-core gave a wrong count" >&2; exit 1; }
read -r chrono_wall chrono_cpu < <(TZ=Europe/Berlin median_ms node "$scratch/chrono.js")
[[ $(wc -l <"$scratch/out") -eq 20000 ]] || { echo "chrono-node gave a wrong count" >&2; exit 1; }

ratio() { awk -v k="$1" -v c="$2" 'BEGIN { printf "%.1fx", c / (k > 0 ? k : 1) }'; }
echo "20,000 lines, median of 5 whole runs each"
echo "                 wall clock   CPU"
printf 'kelo-core parse  %7s ms %6s ms\n' "$kelo_wall" "$kelo_cpu"
printf 'chrono-node      %7s ms %6s ms\n' "$chrono_wall" "$chrono_cpu"
printf 'ratio            %10s %9s\n' "$(ratio "$kelo_wall" "$chrono_wall")" \
    "$(ratio "$kelo_cpu" "$chrono_cpu")"
