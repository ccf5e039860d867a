"""The good files: what ffmpeg is told to write. A row is a name, the sources, the options and
what else there is to know."""

import shlex
import struct
import subprocess
from dataclasses import dataclass

KEY = '76a6c65c5ea762046bd749a2e632ccbb'
SRT = '1\n00:00:00,000 --> 00:00:00,900\nOne line\n\n'


@dataclass(frozen=True)
class Good:
    name: str
    sources: tuple
    options: str
    has_parser: bool = True  # of the library, for the container
    encrypted: tuple = ()  # tracks


def v(size='320x240', rate=25, frames=8, kind='testsrc2'):
    return f'-f lavfi -i {kind}=s={size}:r={rate}:d={frames / rate:.6f}'


def blank(size, rate=30, frames=2):  # quick to encode
    return v(size, rate, frames, 'color')


def a(rate=44100, channels=2, seconds=0.5):
    sums = '|'.join(f'sin({440 + 110 * i}*2*PI*t)/4' for i in range(channels))
    return f"-f lavfi -i aevalsrc='{sums}':s={rate}:d={seconds}"


def f(name):  # one written by extras() or an earlier row
    return f'-i {{out}}/{name}'


# What makes the fastest preset use the profile.
AVC_TOOLS = {'main': '-coder 1', 'high': '-x264-params 8x8dct=1'}


def avc(profile='high', level='', more=''):
    return (f'-c:v libx264 -preset ultrafast -threads 2 -profile:v {profile} '
            f'{AVC_TOOLS.get(profile, "")} {"-level " + level if level else ""} {more}')


def hevc(params='', more='-pix_fmt yuv420p'):
    return (f'-c:v libx265 -preset ultrafast {more} '
            f'-x265-params log-level=none{":" + params if params else ""}')


VP8 = '-c:v libvpx -deadline realtime -cpu-used 16'
VP9 = '-c:v libvpx-vp9 -deadline realtime -cpu-used 8'
AV1 = '-c:v libaom-av1 -usage realtime -cpu-used 8 -row-mt 1'
CENC = f'-encryption_scheme cenc-aes-ctr -encryption_key {KEY} -encryption_kid {KEY}'

AVC_FILES = [
    Good('avc_baseline_1.mp4', (v('176x144', 15),), avc('baseline', '1')),
    Good('avc_baseline_1b.mp4', (v('176x144', 15),), avc('baseline', '1b')),
    Good('avc_high_1b.mp4', (v('176x144', 15),), avc('high', '1b')),
    Good('avc_baseline_31.3gp', (v('1280x720', 30, 4),), avc('baseline', '3.1')),
    Good('avc_main_30.mkv', (v('720x576'),), avc('main', '3', '-bf 2')),
    Good('avc_main_interlaced.ts', (v('720x576'),), avc('main', '3', '-flags +ilme+ildct')),
    Good('avc_high_40.mp4', (v('1920x1080', 30, 4), a()), avc('high', '4')),
    Good('avc_high_41_1088.mp4', (v('1920x1088', 30, 3),), avc('high', '4.1')),
    Good('avc_high_42_60.mp4', (v('1920x1080', 60, 4),), avc('high', '4.2')),
    Good('avc_high_40_60.mp4', (blank('1920x1080', 60, 4),), avc('high', '4')),
    Good('avc_portrait.mp4', (v('1080x1920', 30, 4),), avc('high', '4')),
    Good('avc_2700x2400.mp4', (blank('2700x2400', 30, 3),), avc('high', '5.1')),
    Good('avc_120fps.mp4', (v('1280x720', 120, 12),), avc('high', '4.2')),
    Good('avc_2398.mov', (v('1280x720', 24, 4),), avc('main', '3.1', '-r 24000/1001')),
    Good('avc_variable.mp4', (v('640x360', 120, 40),),  # 30 a second but for one frame
         avc('main', '3.1', '-vf "select=\'not(mod(n,4))+eq(n,1)\'" -vsync vfr')),
    Good('avc_4k_51.mp4', (blank('3840x2160'),), avc('high', '5.1')),
    Good('avc_8k_62.mp4', (blank('7680x4320'),), avc('high', '6.2')),
    Good('avc_high10.mp4', (v(),), avc('high10', '3', '-pix_fmt yuv420p10le')),
    Good('avc_high10_intra.mp4', (v(),), avc('high10', '3', '-pix_fmt yuv420p10le -g 1')),
    Good('avc_high422.mkv', (v(),), avc('high422', '3', '-pix_fmt yuv422p10le')),
    Good('avc_high444.mp4', (v(),), avc('high444', '3', '-pix_fmt yuv444p')),
    Good('avc_odd.mp4', (v('322x182'),),
         avc('high444', '', '-vf crop=321:181:exact=1 -pix_fmt yuv444p')),
    Good('avc_tiny.mp4', (v('32x32'),), avc('baseline', '1')),
    Good('avc_noisy.mp4', (v('1280x720', 30, 6),),
         avc('high', '5.1', '-vf noise=alls=100:allf=t -qp 4')),
    Good('avc.avi', (v(), a()), avc('main', '3') + ' -c:a libmp3lame'),
    Good('avc.flv', (v(), a()), avc('main', '3') + ' -c:a aac'),
    Good('avc.m2ts', (v(), a(48000)), avc('high', '4') + ' -c:a ac3'),
    Good('avc.h264', (v(),), avc('main', '3'), False),
    Good('avc_rotated.mp4', (v('640x360'), a()), avc('main', '3', '-metadata:s:v rotate=90')),
    Good('avc_fragmented.mp4', (v('640x360'), a()),
         avc('main', '3', '-movflags frag_keyframe+empty_moov')),
    Good('avc_faststart.mp4', (v('640x360'),), avc('main', '3', '-movflags +faststart')),
    Good('encrypted.mp4', (v(), a()), avc('main', '3', CENC), True, (0, 1)),
    Good('two_audio.mkv', (v('640x360'), a(), a(48000, 6)),
         avc('main', '3', '-map 0 -map 1 -map 2 -c:a:0 aac -c:a:1 ac3')),
    Good('subtitles.mkv', (v('640x360'), a(), f('sub.srt')), avc('main', '3', '-c:s srt')),
    Good('subtitles_ass.mkv', (v('640x360'), f('sub.srt')), avc('main', '3', '-c:s ass')),
    Good('subtitles.mp4', (v('640x360'), f('sub.srt')), avc('main', '3', '-c:s mov_text')),
]

HEVC_FILES = [
    Good('hevc_main.mp4', (v('640x360'), a()), hevc() + ' -tag:v hvc1'),
    Good('hevc_main_hev1.mp4', (v('1920x1080', 30, 3),), hevc() + ' -tag:v hev1'),
    Good('hevc_still.mp4', (v('640x360', 25, 1),), 
         hevc('total-frames=1:keyint=1', '-profile:v mainstillpicture -pix_fmt yuv420p')),
    Good('hevc_main10.mkv', (v('640x360'),), hevc('', '-pix_fmt yuv420p10le')),
    Good('hevc_main10_pq.mp4', (v('640x360'),),
         hevc('colorprim=bt2020:transfer=smpte2084:colormatrix=bt2020nc', '-pix_fmt yuv420p10le')),
    Good('hevc_main12.mp4', (v('640x360'),), hevc('', '-pix_fmt yuv420p12le')),
    Good('hevc_422_10.mp4', (v('640x360'),), hevc('', '-pix_fmt yuv422p10le')),
    Good('hevc_444.mkv', (v('640x360'),), hevc('', '-pix_fmt yuv444p')),
    Good('hevc_high_tier.mp4', (blank('1920x1080'),),
         hevc('high-tier=1:level-idc=5.1:vbv-maxrate=100000:vbv-bufsize=100000')),
    Good('hevc_high_tier_40.mp4', (v('640x360'),),
         hevc('high-tier=1:level-idc=4:vbv-maxrate=30000:vbv-bufsize=30000')),
    Good('hevc_main_tier_40.mp4', (v('640x360'),), hevc('high-tier=0:level-idc=4')),
    Good('hevc_main_tier_51.mp4', (blank('3840x2160'),), hevc('high-tier=0:level-idc=5.1')),
    Good('hevc_8k.mp4', (blank('7680x4320', 60, 1),), hevc()),
    Good('hevc.ts', (v('640x360'), a()), hevc() + ' -c:a aac'),
    Good('hevc.hevc', (v(),), hevc(), False),
]

VIDEO_FILES = [
    Good('vp8.webm', (v(), a(48000)), VP8 + ' -c:a libvorbis'),
    Good('vp8_1080.mkv', (v('1920x1080', 30, 3),), VP8),
    Good('vp9_0.webm', (v('640x360'), a(48000)), VP9 + ' -c:a libopus'),
    Good('vp9_0.mp4', (v('1280x720', 30, 4),), VP9),
    Good('vp9_1.webm', (v(),), VP9 + ' -pix_fmt yuv444p'),
    Good('vp9_2.mp4', (v(),), VP9 + ' -pix_fmt yuv420p10le'),
    Good('vp9_square.webm', (v('1000x1000', 25, 2),), VP9),
    Good('vp9_4k.webm', (blank('3840x2160'),), VP9),
    Good('av1_8.mp4', (v('640x360', 25, 3),), AV1),
    Good('av1_10.mkv', (v('640x360', 25, 3),), AV1 + ' -pix_fmt yuv420p10le'),
    Good('av1_444.mp4', (v('320x240', 25, 3),), AV1 + ' -pix_fmt yuv444p'),
    Good('av1_8k.mp4', (blank('7680x4320', 60, 1),), AV1),
    Good('mpeg1.mpg', (v('352x288'), a()), '-c:v mpeg1video -c:a mp2'),
    Good('mpeg2.vob', (v('720x576'), a(48000)), '-c:v mpeg2video -b:v 4M -c:a ac3'),
    Good('mpeg2_interlaced.ts', (v('720x576'), a(48000)),
         '-c:v mpeg2video -flags +ilme+ildct -b:v 4M -c:a mp2'),
    Good('mpeg2_1080.ts', (v('1920x1080', 25, 4),), '-c:v mpeg2video -b:v 8M'),
    Good('mpeg2_422.ts', (v('720x576'),), '-c:v mpeg2video -pix_fmt yuv422p -b:v 8M'),
    Good('mpeg4_simple.mp4', (v('352x288'), a()), '-c:v mpeg4'),
    Good('mpeg4_simple_5.mp4', (v('720x576'),), '-c:v mpeg4 -profile:v 0 -level 5'),
    Good('mpeg4_asp.mp4', (v('640x480'),), '-c:v mpeg4 -bf 2 -flags +qpel'),
    Good('mpeg4_asp_720.mkv', (v('1280x720'),), '-c:v mpeg4 -bf 2 -profile:v 15 -level 5'),
    Good('xvid.avi', (v('640x480'), a()), '-c:v libxvid -c:a libmp3lame'),
    Good('divx5.avi', (v(),), '-c:v mpeg4 -vtag DX50'),
    Good('div3.avi', (v(),), '-c:v msmpeg4 -vtag DIV3'),
    Good('mp43.avi', (v(),), '-c:v msmpeg4 -vtag MP43'),
    Good('mp42.avi', (v(),), '-c:v msmpeg4v2'),
    Good('h263.3gp', (v('176x144', 15), f('nb.amr')), '-c:v h263 -c:a copy'),
    Good('h263_cif.avi', (v('352x288', 25),), '-c:v h263'),
    Good('mjpeg.avi', (v(), a(22050, 1)), '-c:v mjpeg -pix_fmt yuvj420p -c:a pcm_u8'),
    Good('mjpeg.mov', (v('1920x1080', 25, 2),), '-c:v mjpeg -pix_fmt yuvj420p'),
    Good('theora.ogv', (v(), a()), '-c:v libtheora -c:a libvorbis'),
    Good('dv.avi', (v('720x576', 25, 2), a(48000)),
         '-c:v dvvideo -pix_fmt yuv420p -c:a pcm_s16le'),
    Good('prores.mov', (v(),), '-c:v prores_ks -pix_fmt yuv422p10le'),
    Good('wmv7.asf', (v(), a()), '-c:v wmv1 -c:a wmav1'),
    Good('wmv8.wmv', (v('640x480'), a()), '-c:v wmv2 -c:a wmav2'),
    Good('flv1.flv', (v(), a(44100, 1)), '-c:v flv1 -c:a libmp3lame'),
    Good('rv10.rm', (v('176x144'), a(8000, 1)), '-c:v rv10 -c:a real_144'),
    Good('rv20.rm', (v('352x288'),), '-c:v rv20'),
    Good('avif.avif', (v('320x240', 25, 1),), AV1 + ' -still-picture 1'),
    Good('huffyuv.mkv', (v(),), '-c:v huffyuv'),
]

AUDIO_FILES = [
    Good('aac_lc.m4a', (a(),), '-c:a aac'),
    Good('aac_lc_96k_51.m4a', (a(96000, 6),), '-c:a aac'),
    Good('aac_71.mkv', (a(48000, 8),), '-c:a aac'),
    Good('aac.aac', (a(8000, 1),), '-c:a aac'),
    Good('aac_latm.ts', (a(),), '-c:a aac -mpegts_flags latm'),
    Good('mp3.mp3', (a(),), '-c:a libmp3lame -b:a 320k'),
    Good('mp3_8k.mp3', (a(8000, 1),), '-c:a libmp3lame -b:a 8k'),
    Good('mp3_picture.mp3', (a(), v('64x64', 25, 1)),
         '-c:a libmp3lame -c:v mjpeg -pix_fmt yuvj420p -disposition:v attached_pic -map 0 -map 1'),
    Good('mp2.mp2', (a(),), '-c:a mp2'),
    Good('ac3.ac3', (a(48000, 6),), '-c:a ac3'),
    Good('eac3.mp4', (a(48000, 6),), '-c:a eac3'),
    Good('eac3.eac3', (a(48000, 2),), '-c:a eac3'),
    Good('dts.mka', (a(48000, 6),), '-c:a dca -strict -2'),
    Good('flac.flac', (a(),), '-c:a flac'),
    Good('flac_192k_24.mkv', (a(192000, 2, .2),),
         '-c:a flac -sample_fmt s32 -bits_per_raw_sample 24'),
    Good('flac.ogg', (a(),), '-c:a flac'),
    Good('opus.opus', (a(48000),), '-c:a libopus'),
    Good('opus_51.mp4', (a(48000, 6),), '-c:a libopus -strict -2 -mapping_family 1'),
    Good('vorbis.ogg', (a(),), '-c:a libvorbis'),
    Good('vorbis_96k.mka', (a(96000, 2),), '-c:a libvorbis'),
    Good('alac.m4a', (a(),), '-c:a alac'),
    Good('alac.caf', (a(),), '-c:a alac', False),
    Good('pcm_u8.wav', (a(8000, 1),), '-c:a pcm_u8'),
    Good('pcm_16.wav', (a(),), '-c:a pcm_s16le'),
    Good('pcm_24.wav', (a(96000),), '-c:a pcm_s24le'),
    Good('pcm_32.wav', (a(192000, 2, .1),), '-c:a pcm_s32le'),
    Good('pcm_float.wav', (a(48000),), '-c:a pcm_f32le'),
    Good('pcm_384k.wav', (a(384000, 2, .1),), '-c:a pcm_s16le'),
    Good('pcm_71.wav', (a(48000, 8),), '-c:a pcm_s16le'),
    Good('pcm_10ch.wav', (a(48000, 10),), '-c:a pcm_s16le'),
    Good('pcm_be.aiff', (a(),), '-c:a pcm_s16be'),
    Good('pcm.caf', (a(),), '-c:a pcm_s16be', False),
    Good('pcm.mov', (a(48000),), '-c:a pcm_s24be'),
    Good('alaw.wav', (a(8000, 1),), '-c:a pcm_alaw'),
    Good('mulaw.wav', (a(8000, 1),), '-c:a pcm_mulaw'),
    Good('adpcm_ms.wav', (a(),), '-c:a adpcm_ms'),
    Good('adpcm_ima.wav', (a(),), '-c:a adpcm_ima_wav'),
    Good('g726.wav', (a(8000, 1),), '-c:a g726'),
    Good('wma1.wma', (a(),), '-c:a wmav1'),
    Good('wma2.wma', (a(),), '-c:a wmav2'),
    Good('amr_nb.3gp', (f('nb.amr'),), '-c:a copy'),
    Good('amr_wb.3gp', (f('wb.amr'),), '-c:a copy'),
    Good('tta.mka', (a(),), '-c:a tta'),
]

FFMPEG_FILES = AVC_FILES + HEVC_FILES + VIDEO_FILES + AUDIO_FILES
# Written byte by byte.
OTHER_FILES = [Good('nb.amr', (), ''), Good('wb.amr', (), ''), Good('dsd.dsf', (), '')]
# ISO/IEC 14496-3 1.6.2.1: the sync extension's SBR flag set, 44,100 Hz from 22,050.
CHANGED_FILES = [
    (Good('lc.m4a', (a(22050, 2),), '-c:a aac'), 'aac_he.m4a', b'\x56\xe5\x00', b'\x56\xe5\xa0'),
    (Good('hvc1.mp4', (v('640x360'),), hevc() + ' -tag:v hvc1'), 'dolby_vision.mp4', b'hvc1',
     b'dvh1'),
]
GOOD_FILES = FFMPEG_FILES + OTHER_FILES + [Good(row[1], (), '') for row in CHANGED_FILES]


def write(row, out):
    sources = ' '.join(row.sources).format(out=out)
    command = f'ffmpeg -v error -nostdin -y -fflags +bitexact {sources} {row.options}'
    done = subprocess.run(shlex.split(command) + [str(out / row.name)], capture_output=True,
                          text=True, check=False)
    return '' if done.returncode == 0 else f'{row.name}: {done.stderr.strip()[-300:]}'


def dsf():  # one bit, 2.8224 MHz, stereo, a block for each channel
    size = 2 * 4096
    layout = struct.pack('<4sQIIIIIIQII', b'fmt ', 52, 1, 0, 2, 2, 2822400, 1, 4096 * 8, 4096, 0)
    data = struct.pack('<4sQ', b'data', 12 + size) + b'\x69' * size
    return struct.pack('<4sQQQ', b'DSD ', 28, 28 + len(layout + data), 0) + layout + data


def write_extras(out):
    """What the rows read, and what ffmpeg has no encoder for."""
    (out / 'sub.srt').write_text(SRT)
    (out / 'nb.amr').write_bytes(b'#!AMR\n' + (b'\x3c' + bytes(31)) * 25)  # RFC 4867 5: 12.2 kbit/s
    (out / 'wb.amr').write_bytes(b'#!AMR-WB\n' + (b'\x44' + bytes(60)) * 25)  # 23.85 kbit/s
    (out / 'dsd.dsf').write_bytes(dsf())


def write_changed(row, name, old, new, out):
    """What ffmpeg writes, with four bytes or so changed under another name."""
    problem = write(row, out)
    if problem: return problem
    content = (out / row.name).read_bytes()
    if content.count(old) != 1: return f'{name}: {content.count(old)} places to change'
    (out / name).write_bytes(content.replace(old, new))
    (out / row.name).unlink()
    return ''
