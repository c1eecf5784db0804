#!/bin/bash
# A film of 1280 × 720 at 30 frames, shown 720 × 405: processor seconds of 20 s of steady playing and peak memory against
# two players that show it in the same size on the same display, in turns; the share of frames shown, also beside a process
# that keeps one core busy, and of a film of 1920 × 1080; and the time to the first moving picture, from a file and over
# HTTP: here from the request to play, with the library on the screen, there from the start of the process.
set -euo pipefail
build=$(readlink -f "$1")
root=$(dirname "$(dirname "$(readlink -f "$0")")")
cmake --build "$build" --target bench-our-film bench-serve-file vistrel-media resources >/dev/null
if [ -z "${BENCH_ON_DISPLAY:-}" ]; then
    exec env BENCH_ON_DISPLAY=1 "$root/tests/journeys/in-display" bash "$0" "$build"
fi

seconds=20
rounds=${BENCH_ROUNDS:-3}
work=$(mktemp -d)
trap 'kill "${server:-}" "${busy:-}" 2>/dev/null || true; rm -rf "$work"' EXIT
film=$work/device/film.mp4
mkdir "$work/device"
encode() { # SIZE BITRATE FILE
    ffmpeg -nostdin -loglevel error -f lavfi -i "testsrc2=s=$1:r=30:d=40,noise=alls=6:allf=t" -f lavfi -i "sine=440:d=40" \
        -c:v libx264 -preset veryfast -pix_fmt yuv420p -g 60 -b:v "$2" -c:a aac -movflags +faststart "$3"
}
encode 1280x720 3M "$film"
encode 1920x1080 6M "$work/device/large.mp4"

# measure NAME COMMAND...: appends "hundredths of a second, KiB" to the contender's file.
measure() {
    local name=$1 pid before after peak
    shift
    "$@" >"$work/$name.out" 2>/dev/null &
    pid=$!
    sleep 6
    before=$(awk '{ print $14 + $15 }' "/proc/$pid/stat")
    sleep "$seconds"
    after=$(awk '{ print $14 + $15 }' "/proc/$pid/stat")
    sleep 1
    peak=$(awk '/VmHWM/ { print $2 }' "/proc/$pid/status")
    kill "$pid"
    wait "$pid" 2>/dev/null || true
    echo "$((after - before)) $peak" >>"$work/$name"
}

gst_play=(gst-play-1.0 --audiosink="fakesink sync=true"
    --videosink="videoscale ! video/x-raw,width=720,height=405 ! ximagesink")

# first NAME FILM: milliseconds until the first moving picture, appended to the contenders' files of that name. The peer draws
# the first picture once while it is still paused.
first() {
    timeout 5 "$build/bench-our-film" "$work/device" "${2#"$work/device"}" 1 2>/dev/null |
        awk '/^first/ { print $2 }' >>"$work/ours-$1" || true
    GST_DEBUG_NO_COLOR=1 GST_DEBUG=ximagesink:6 timeout 5 "${gst_play[@]}" "$2" 2>&1 >/dev/null |
        awk '/PutImage on/ && ++count == 2 { split($1, time, ":"); print time[3] * 1000 }' >>"$work/gst-play-$1" || true
}

exec {answers}< <(exec "$build/bench-serve-file" "$film")
server=$!
read -r -t 30 -u "$answers" address
for ((round = 0; round < rounds; ++round)); do
    first file "$film"
    first http "$address"
    measure ours "$build/bench-our-film" "$work/device" /film.mp4 "$seconds"
    cat "$work/ours.out" >>"$work/frames"
    measure gst-play "${gst_play[@]}" "$film"
    measure mpv mpv --no-config --vo=x11 --ao=null --osc=no --no-border --geometry=720x405 "$film"
done
while :; do :; done &
busy=$!
measure ours-beside-work "$build/bench-our-film" "$work/device" /film.mp4 "$seconds"
kill "$busy"
measure ours-large "$build/bench-our-film" "$work/device" /large.mp4 "$seconds"

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
figure "first moving picture, file" "$(best "$work/ours-file")" "$(best "$work/gst-play-file")" ms 1.20 1
figure "first moving picture, HTTP" "$(best "$work/ours-http")" "$(best "$work/gst-play-http")" ms 1.20 1
for peer in gst-play mpv gst-play-file gst-play-http; do
    echo "spread of $peer over $rounds rounds: $(spread "$work/$peer") %"
done
# shown NAME FILE LEAST: the share of frames, in percent, of the file's best run.
shown() {
    awk -v seconds="$seconds" -v name="$1" -v least="$3" '/^frames/ { if ($2 > most) most = $2 } END {
        share = most / seconds / 30 * 100
        holds = share >= least
        printf "frames shown%s: %.1f %%, at least %d %% %s\n", name, share, least, holds ? "ok" : "short"
        exit !holds }' "$2" || status=1
}
shown "" "$work/frames" 99
shown " with one core busy" "$work/ours-beside-work.out" 95
shown " of 1920 × 1080" "$work/ours-large.out" 99
exit $status
