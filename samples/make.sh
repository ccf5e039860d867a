#!/bin/sh
# Makes the sample files next to this script from ffmpeg's test sources, tags with python3-mutagen.
# The same versions make the same bytes.
set -eu
cd "$(dirname "$0")"

run() {
    ffmpeg -hide_banner -loglevel error -y -fflags +bitexact "$@"
}
picture="testsrc2=size=160x90:rate=25:duration=1"
tone="sine=frequency=440:sample_rate=44100:duration=1"
exact="-flags:v +bitexact -flags:a +bitexact -fflags +bitexact -map_metadata -1 -threads 1"
x264="-c:v libx264 -preset veryfast -crf 36 -pix_fmt yuv420p -x264-params threads=1"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
subtitles="$scratch/subtitles.srt"
printf '1\n00:00:00,000 --> 00:00:00,900\nHello\n' > "$subtitles"

# H.264 and AAC
run -f lavfi -i "$picture" -f lavfi -i "$tone" $x264 -c:a aac -b:a 32k $exact video.mp4
# H.264, Opus in French, SubRip in English
run -f lavfi -i "$picture" -f lavfi -i "$tone" -f srt -i "$subtitles" \
    -map 0 -map 1 -map 2 $x264 -c:a libopus -b:a 24k -c:s srt $exact \
    -metadata:s:a language=fre -metadata:s:s language=eng video.mkv
# H.264 of 10 bits, which phones do not decode, and AAC
run -f lavfi -i "$picture" -f lavfi -i "$tone" -c:v libx264 -preset veryfast -crf 40 \
    -pix_fmt yuv420p10le -x264-params threads=1 -c:a aac -b:a 32k $exact video-10bit.mp4
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
# Big-endian PCM of 24 bits
run -f lavfi -i "$tone" -t 0.05 -c:a pcm_s24be $exact audio.aiff
# MP3 and Ogg Vorbis with tags
run -f lavfi -i "$tone" -t 0.1 -c:a libmp3lame -b:a 32k $exact -id3v2_version 0 -write_xing 0 \
    audio.mp3
run -f lavfi -i "$tone" -t 0.1 -c:a libvorbis -q:a 0 $exact audio.ogg
square="testsrc2=size=48x48:rate=1:duration=1"
run -f lavfi -i "$square" -frames:v 1 -q:v 20 $exact -f mjpeg "$scratch/cover.jpg"
run -f lavfi -i "$square" -frames:v 1 $exact "$scratch/cover.png"
/usr/bin/python3 - "$scratch" <<'PYTHON'
import base64, pathlib, sys
from mutagen import flac, id3, oggvorbis

scratch = pathlib.Path(sys.argv[1])
LATIN1, UTF16, FRONT_COVER = 0, 1, 3
gapless = " 00000000 00000840 000001CA 00000000004A5EA6"
tag = id3.ID3()
tag.add(id3.TIT2(encoding=UTF16, text="Pr\u00fcfton \u2116 1"))
tag.add(id3.TPE1(encoding=LATIN1, text="J\u00f6rg"))
tag.add(id3.TALB(encoding=LATIN1, text="Samples"))
tag.add(id3.TDRC(encoding=LATIN1, text="2024"))
tag.add(id3.COMM(encoding=LATIN1, lang="eng", desc="iTunSMPB", text=gapless))
tag.add(id3.APIC(encoding=LATIN1, mime="image/jpeg", type=FRONT_COVER, desc="",
                 data=(scratch / "cover.jpg").read_bytes()))
tag.save("audio.mp3", v2_version=4, padding=lambda info: 0)

picture = flac.Picture()
picture.type, picture.mime, picture.width, picture.height, picture.depth = (
    FRONT_COVER, "image/png", 48, 48, 24)
picture.data = (scratch / "cover.png").read_bytes()
ogg = oggvorbis.OggVorbis("audio.ogg")
ogg["title"] = "Pr\u00fcfton \u2116 2"
ogg["date"] = "2024"
ogg["metadata_block_picture"] = base64.b64encode(picture.write()).decode()
ogg.save(padding=lambda info: 0)
PYTHON
