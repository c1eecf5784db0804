#!/bin/bash
# A film of 1280 × 720 at 30 frames, shown 720 × 405: processor seconds of 20 s of steady playing and peak memory against
# two players that show it in the same size on the same display, in turns; and the share of frames shown.
set -euo pipefail
build=$(readlink -f "$1")
root=$(dirname "$(dirname "$(readlink -f "$0")")")
cmake --build "$build" --target bench-our-film vistrel-media resources >/dev/null
if [ -z "${BENCH_ON_DISPLAY:-}" ]; then
    exec env BENCH_ON_DISPLAY=1 "$root/tests/journeys/in-display" bash "$0" "$build"
fi

seconds=20
rounds=${BENCH_ROUNDS:-3}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
film=$work/device/film.mp4
mkdir "$work/device"
ffmpeg -nostdin -loglevel error -f lavfi -i "testsrc2=s=1280x720:r=30:d=40,noise=alls=6:allf=t" \
    -f lavfi -i "sine=440:d=40" -c:v libx264 -preset veryfast -pix_fmt yuv420p -g 60 -b:v 3M -c:a aac "$film"

# measure NAME COMMAND...: appends "hundredths of a second, KiB" to the contender's file.
measure() {
    local name=$1 pid before after peak
    shift
    "$@" >"$work/$name.out" 2>/dev/null &
    pid=$!
    sleep 4
    before=$(awk '{ print $14 + $15 }' "/proc/$pid/stat")
    sleep "$seconds"
    after=$(awk '{ print $14 + $15 }' "/proc/$pid/stat")
    sleep 1
    peak=$(awk '/VmHWM/ { print $2 }' "/proc/$pid/status")
    kill "$pid"
    wait "$pid" 2>/dev/null || true
    echo "$((after - before)) $peak" >>"$work/$name"
}

for ((round = 0; round < rounds; ++round)); do
    measure ours "$build/bench-our-film" "$work/device" /film.mp4 "$seconds"
    awk '/^frames/ { print $2 }' "$work/ours.out" >>"$work/frames"
    measure gst-play gst-play-1.0 --audiosink="fakesink sync=true" \
        --videosink="videoscale ! video/x-raw,width=720,height=405 ! ximagesink" "$film"
    measure mpv mpv --no-config --vo=x11 --ao=null --osc=no --no-border --geometry=720x405 "$film"
done

status=0
best() { sort -n "$1" | head -1 | cut -d' ' -f1; }
peak() { cut -d' ' -f2 "$1" | sort -n | tail -1; }
spread() { cut -d' ' -f1 "$1" | sort -n | awk 'NR == 1 { low = $1 } { high = $1 } END { printf "%.0f", (high / low - 1) * 100 }'; }
# figure NAME OURS PEER UNIT BOUND SCALE: at most so many times the peer's.
figure() {
    awk -v name="$1" -v ours="$2" -v peer="$3" -v unit="$4" -v bound="$5" -v scale="$6" 'BEGIN {
        holds = ours / peer <= bound
        printf "%s: %.2f %.2f %s %.2fx %.2fx %s\n", name, ours / scale, peer / scale, unit, ours / peer, bound,
               holds ? "ok" : "short"
        exit !holds }' || status=1
}
figure "processor, gst-play" "$(best "$work/ours")" "$(best "$work/gst-play")" s 1.25 100
figure "processor, mpv" "$(best "$work/ours")" "$(best "$work/mpv")" s 1.00 100
figure "peak memory, gst-play" "$(peak "$work/ours")" "$(peak "$work/gst-play")" MiB 1.30 1024
echo "spread of the peers over $rounds rounds: $(spread "$work/gst-play") % and $(spread "$work/mpv") %"
awk -v seconds="$seconds" '{ if ($1 > most) most = $1 } END {
    share = most / seconds / 30 * 100
    holds = share >= 99
    printf "frames shown: %.1f %%, at least 99 %% %s\n", share, holds ? "ok" : "short"
    exit !holds }' "$work/frames" || status=1
exit $status
