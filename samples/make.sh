#!/bin/sh
# Makes the sample files next to this script from ffmpeg's test sources. The same ffmpeg makes the
# same bytes.
set -eu
cd "$(dirname "$0")"

run() {
    ffmpeg -hide_banner -loglevel error -y -fflags +bitexact "$@"
}
picture="testsrc2=size=160x90:rate=25:duration=1"
tone="sine=frequency=440:sample_rate=44100:duration=1"
exact="-flags:v +bitexact -flags:a +bitexact -fflags +bitexact -map_metadata -1 -threads 1"
x264="-c:v libx264 -preset veryfast -crf 36 -pix_fmt yuv420p -x264-params threads=1"

subtitles=$(mktemp)
trap 'rm -f "$subtitles"' EXIT
printf '1\n00:00:00,000 --> 00:00:00,900\nHello\n' > "$subtitles"

# H.264 and AAC
run -f lavfi -i "$picture" -f lavfi -i "$tone" $x264 -c:a aac -b:a 32k $exact video.mp4
# H.264, Opus in French, SubRip in English
run -f lavfi -i "$picture" -f lavfi -i "$tone" -f srt -i "$subtitles" \
    -map 0 -map 1 -map 2 $x264 -c:a libopus -b:a 24k -c:s srt $exact \
    -metadata:s:a language=fre -metadata:s:s language=eng video.mkv
# DivX 5 and MP3
run -f lavfi -i "$picture" -f lavfi -i "$tone" -c:v mpeg4 -q:v 20 -vtag DX50 \
    -c:a libmp3lame -b:a 32k $exact video.avi
# H.264 with start codes and no container
run -f lavfi -i "$picture" $x264 -frames:v 5 $exact video.h264
# 10-bit H.265 with start codes and no container
run -f lavfi -i "$picture" -c:v libx265 -preset veryfast -crf 40 -pix_fmt yuv420p10le \
    -x265-params log-level=none:pools=none:frame-threads=1 -frames:v 5 $exact video.hevc
# AAC behind ADTS headers, Apple Lossless
run -f lavfi -i "$tone" -t 0.2 -c:a aac -b:a 32k $exact audio.aac
run -f lavfi -i "$tone" -t 0.05 -c:a alac $exact audio.m4a
