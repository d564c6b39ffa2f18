#!/bin/bash
# Whole-process figures of the real kelo on a private Xvfb with openbox:
#   first frame  milliseconds from exec until the closed island is drawn (median of 5 runs)
#   idle RSS     resident memory 5 s after start, with 1,000 tasks in the data file
#   idle CPU     CPU time and wake-ups (context switches of all threads) over 60 s of idling
# for the software scene graph (Kelo's default) and Qt's default renderer (RHI on OpenGL).
# Figures are printed, never checked: compare them with the aims by eye.
#
# Usage: bench/desktop.sh [build folder]   (default: build beside this folder)
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../build}
kelo=$build/shell/kelo
first_frame=$build/bench/first_frame
idle_seconds=${KELO_BENCH_IDLE:-60}
for program in "$kelo" "$first_frame"; do
    [[ -x $program ]] || { echo "missing $program: build kelo and first_frame first" >&2; exit 2; }
done

scratch=$(mktemp -d /tmp/kelo-bench-XXXXXX)
pids=()
cleanup() {
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do
        kill "${pids[i]}" 2>/dev/null || true
        wait "${pids[i]}" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
trap cleanup EXIT

# A white root, so that the island's black shows when it is drawn.
exec 3> "$scratch/display"
Xvfb -displayfd 3 -screen 0 1440x900x24 -nolisten tcp -noreset -wr 2>/dev/null &
pids+=($!)
exec 3>&-
for _ in $(seq 200); do [[ -s $scratch/display ]] && break; sleep 0.05; done
export DISPLAY=:$(cat "$scratch/display")
openbox --sm-disable >/dev/null 2>&1 &
pids+=($!)
for _ in $(seq 200); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q "window id" && break
    sleep 0.05
done

mkdir -p "$scratch/home" "$scratch/config" "$scratch/data" "$scratch/runtime"
chmod 700 "$scratch/runtime"
export HOME=$scratch/home XDG_CONFIG_HOME=$scratch/config XDG_DATA_HOME=$scratch/data
export XDG_RUNTIME_DIR=$scratch/runtime TZ=UTC
unset WAYLAND_DISPLAY QT_QPA_PLATFORM QT_QUICK_BACKEND QSG_RHI_BACKEND

# The same 1,000 tasks as the island's figures: 300 today, 400 upcoming, 300 in the backlog.
python3 - "$here" "$scratch/tasks.json" <<'PY'
import json, sys
sys.dont_write_bytecode = True
sys.path.insert(0, sys.argv[1])
import island_figures
with open(sys.argv[2], "w", encoding="utf-8") as f:
    json.dump(island_figures.tasks(), f)
PY

cpu_ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }
switches() {
    cat /proc/"$1"/task/*/status 2>/dev/null |
        awk '/^(voluntary|nonvoluntary)_ctxt_switches/ { n += $2 } END { print n }'
}
stop() { kill "$1" 2>/dev/null || true; wait "$1" 2>/dev/null || true; }

measure() {
    local label=$1; shift
    local frames=() run result pid
    for run in 1 2 3 4 5; do
        rm -f "$scratch/empty.json"*
        result=$(env "$@" KELO_DATA="$scratch/empty.json" "$first_frame" 720 12 "$kelo")
        pid=${result#* }
        frames+=("${result%% *}")
        stop "$pid"
        sleep 0.3
    done
    local median
    median=$(printf '%s\n' "${frames[@]}" | sort -n | sed -n 3p)

    env "$@" KELO_DATA="$scratch/tasks.json" "$kelo" 2>/dev/null &
    pid=$!
    sleep 5
    local rss ticks0 switches0 ticks1 switches1 hz
    rss=$(awk '/^VmRSS/ { print $2 }' "/proc/$pid/status")
    ticks0=$(cpu_ticks "$pid"); switches0=$(switches "$pid")
    sleep "$idle_seconds"
    ticks1=$(cpu_ticks "$pid"); switches1=$(switches "$pid")
    stop "$pid"
    hz=$(getconf CLK_TCK)

    printf '%-10s first frame %6.1f ms (runs: %s)\n' "$label" "$median" "${frames[*]}"
    awk -v label="$label" -v rss="$rss" -v ticks=$((ticks1 - ticks0)) -v hz="$hz" \
        -v wakeups=$((switches1 - switches0)) -v seconds="$idle_seconds" 'BEGIN {
        printf "%-10s idle RSS    %6.1f MB (1,000 tasks, 5 s after start)\n", label, rss / 1024
        printf "%-10s idle CPU    %6.2f s over %d s, %d wake-ups (%.2f per s)\n",
               label, ticks / hz, seconds, wakeups, wakeups / seconds
    }'
}

measure software
measure rhi QT_QUICK_BACKEND=rhi
