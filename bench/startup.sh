#!/bin/bash
# Start-up and memory: process start to the first frame of the menu against a plain window of the toolkit; to the first page
# painted, and the memory of all processes together (PSS), against a window with nothing but a page engine; frames and timer
# wake-ups of the resting menu.
set -euo pipefail
build=$(readlink -f "$1")
root=$(dirname "$(dirname "$(readlink -f "$0")")")
targets=(bench-our-start bench-plain-window bench-page-window vistrel-demo-site resources)
[ -z "${BENCH_INSTALLED:-}" ] || targets+=(vistrel)
cmake --build "$build" --target "${targets[@]}" >/dev/null
if [ -z "${BENCH_ON_DISPLAY:-}" ]; then
    exec env BENCH_ON_DISPLAY=1 "$root/tests/journeys/in-display" bash "$0" "$build"
fi

work=$(mktemp -d)
exec {answers}< <(exec "$build/vistrel-demo-site" --exit-with-parent </dev/null)
server=$!
trap 'kill $server 2>/dev/null || true; rm -rf "$work"' EXIT
read -r -t 30 -u "$answers" site
page=$site/partner/1/
bin=$build
program=$bin/bench-our-start
if [ -n "${BENCH_INSTALLED:-}" ]; then
    # Beside the installed program, it finds the installed modules and resources as that does.
    cmake --install "$build" --prefix "$work/usr" >/dev/null
    cp "$program" "$work/usr/bin"
    program=$work/usr/bin/bench-our-start
fi

descendants() {
    local child
    echo "$1"
    for child in $(cat "/proc/$1/task/$1/children" 2>/dev/null); do descendants "$child"; done
}

# measure MEMORY COMMAND...: milliseconds from the start to "shown", and, where MEMORY is yes, the PSS of the process and all
# below it one second later, in KiB.
measure() {
    local memory=$1 start line pid pss=0
    shift
    start=$(date +%s%N)
    exec {out}< <(exec "$@" 2>/dev/null)
    pid=$!
    while read -r -t 60 -u "$out" line && [ "$line" != shown ]; do said=$line; done
    elapsed=$((($(date +%s%N) - start) / 1000))
    if [ "$line" != shown ]; then
        echo "startup: $1 has failed" >&2
        exit 1
    fi
    if [ "$memory" = yes ]; then
        sleep 1
        for process in $(descendants "$pid"); do
            pss=$((pss + $(awk '/^Pss:/ { sum += $2 } END { print sum + 0 }' "/proc/$process/smaps_rollup" 2>/dev/null || echo 0)))
        done
    fi
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
    exec {out}<&-
    measured_time=$elapsed measured_memory=$pss
}

median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# compare NAME BOUND UNIT: reads ours and the peer's figures from two files. The ratio is the median of the rounds', because a
# machine's pace changes from one to the next.
compare() {
    local ours peer ratio spread
    ours=$(median <"$work/ours") peer=$(median <"$work/peer")
    ratio=$(paste "$work/ours" "$work/peer" | awk '{ print $1 / $2 }' | median)
    spread=$(sort -n "$work/peer" | awk 'NR == 1 { low = $1 } { high = $1 } END { print (high / low - 1) * 100 }')
    awk -v n="$1" -v b="$2" -v u="$3" -v o="$ours" -v p="$peer" -v r="$ratio" -v s="$spread" 'BEGIN {
        holds = r <= b
        printf "%s: %.1f %.1f %s %.2fx %.2fx %s, spread %.0f %%\n", n, o / 1000, p / 1000, u, r, b, holds ? "ok" : "short", s
        exit !holds }'
}

status=0
rounds=11
# compare_start NAME [AD SERVER]
compare_start() {
    local name=$1
    shift
    measure no "$program" menu "$work/device" "$@"
    measure no "$bin/bench-plain-window"
    for _ in $(seq $rounds); do
        measure no "$program" menu "$work/device" "$@"; echo "$measured_time" >>"$work/ours"
        measure no "$bin/bench-plain-window"; echo "$measured_time" >>"$work/peer"
    done
    compare "$name" 1.4 ms || status=1
    rm -f "$work"/ours "$work"/peer
}
compare_start "start to the menu's first frame"
compare_start "the same with a banner" "$site"

measure no "$program" page "$work/device" "$page"
measure no "$bin/bench-page-window" "$page"
for _ in $(seq $rounds); do
    measure yes "$program" page "$work/device" "$page"
    echo "$measured_time" >>"$work/ours"; echo "$measured_memory" >>"$work/ours-memory"
    measure yes "$bin/bench-page-window" "$page"
    echo "$measured_time" >>"$work/peer"; echo "$measured_memory" >>"$work/peer-memory"
done
compare "start to the first page painted" 1.2 ms || status=1
mv "$work/ours-memory" "$work/ours"; mv "$work/peer-memory" "$work/peer"
compare "memory of all processes with that page (PSS)" 1.2 MB || status=1

# count_frames NAME [AD SERVER]
count_frames() {
    local name=$1 frames
    shift
    said=
    measure no "$program" idle "$work/device" "$@"
    frames=${said#idle }
    printf '%s: %s 0 frames - 0 %s\n' "$name" "$frames" "$([ "$frames" = 0 ] && echo ok || echo short)"
    [ "$frames" = 0 ] || status=1
}
count_frames "frames of the resting menu in five seconds"
count_frames "the same with a still banner" "$site"
exit $status
