#!/usr/bin/python3
"""Compares what the examples print of AVI files with what ffprobe and ffmpeg say of them, and runs
the examples on damaged files."""

import random
import re
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

NO_VIDEO, NO_AUDIO = 'video/notsupport', 'audio/notsupport'
# Encoders, MIME types on a typical phone, the key of the video's codec data, and whether the library
# knows its key frames.
FILES = [
    ('mpeg4 -g 10', 'libmp3lame', 'video/mp4v-es', 'audio/mpeg', 'esds', True),
    ('libx264 -g 10', 'pcm_s24le -ac 2', 'video/avc', 'audio/raw', 'csd-avc', True),
    ('mjpeg -pix_fmt yuvj420p', 'pcm_u8', NO_VIDEO, 'audio/raw', None, False),
    ('wmv2 -g 10', 'wmav2', NO_VIDEO, NO_AUDIO, 'vc1-sequence-header', False),
    ('msmpeg4 -g 10', 'ac3', NO_VIDEO, NO_AUDIO, None, False),
]
DAMAGED_PER_FILE = 24
PARSER, GLUE, FFMPEG, FFPROBE = sys.argv[1:]


def run(*command):
    return subprocess.run(command, capture_output=True, timeout=120, check=False)


def tool(*command):
    done = run(*command)
    if done.returncode: sys.exit(done.stderr.decode())
    return done.stdout


def equal(what, got, wanted):
    if got != wanted: sys.exit(f'{what}: {got!r}, not {wanted!r}')


def make(path, video, audio):
    tool(FFMPEG, '-v', 'error', '-y', '-f', 'lavfi', '-i', 'testsrc2=s=160x90:r=25:d=1', '-f',
         'lavfi', '-i', 'sine=d=1', *f'-c:v {video} -c:a {audio}'.split(), path)


def probe(path, entries):
    text = tool(FFPROBE, '-v', 'error', '-of', 'default=nk=0', '-show_data', '-show_entries',
                entries, path).decode()
    return [dict(re.findall(r'^(\w+)=(.*(?:\n[0-9a-f]{8}: .*)*)', part, re.M))
            for part in text.split('[/')[:-1]]


def parse(path, *options):
    """Of each track the lines under it, by their first words; and the exit status."""
    done = run(PARSER, *options, path)
    tracks = re.split(r'^track \d+: ', done.stdout.decode(), flags=re.M)[1:]
    return [dict([('mime', track.split('\n')[0])] + re.findall(r'^  (\w+(?: \w+)?) +(.+)$', track,
                                                               re.M))
            for track in tracks], done.returncode


def extra_data(path, kind):
    dump = probe(path, 'stream=codec_type,extradata')['va'.index(kind)]['extradata']
    return bytes.fromhex(''.join(re.findall(r': ((?:[0-9a-f]{2,4} )+)', dump)))


def check_codec_data(key, stored, extra):
    """FFmpeg's own, of Annex B streams the SPS and the PPS, stand in what is stored."""
    data = bytes.fromhex(re.search(rf'{key}: data\((\w+)\)', stored)[1])
    for unit in re.split(rb'\0\0\0?\x01(?=[\x67\x68])', extra):
        if unit.rstrip(b'\0') not in data: sys.exit(f'{key}: {data.hex()} without {unit.hex()}')


def check_good(path, row):
    _, audio, *mimes, data_key, library_knows = row
    pcm = path.with_suffix('.pcm')
    tracks, status = parse(path, '--pcm', pcm)
    equal('status', status, 0)
    equal('MIME types', [track['mime'] for track in tracks], mimes)
    packets = probe(path, 'packet=stream_index,size,flags')
    streams = probe(path, 'stream=width,height,sample_rate,channels')
    for index, (track, stream) in enumerate(zip(tracks, streams, strict=True)):
        sizes = [int(each['size']) for each in packets if each['stream_index'] == str(index)]
        keys = sum(each['stream_index'] == str(index) and 'K' in each['flags'] for each in packets)
        equal('samples', int(track['samples']), len(sizes))
        equal('bytes', int(track['bytes']), sum(sizes))
        equal('marked', track['key frames'], f'{keys} in the index')
        if index == 0: equal('found', track['and'], f'{library_knows * keys} by the library')
        for name, value in stream.items():
            key = {'sample_rate': 'sample-rate', 'channels': 'channel-count'}.get(name, name)
            if f'{key}: int32({value})' not in track['stored']: sys.exit(f'{path}: no {key} {value}')
    if data_key: check_codec_data(data_key, tracks[0]['stored'], extra_data(path, 'v'))
    if audio.startswith('pcm'):
        wanted = tool(FFMPEG, '-v', 'error', '-i', path, '-map', '0:a', '-c:a', 'pcm_s16le', '-f',
                      's16le', '-')
        equal('PCM', pcm.read_bytes() == wanted, True)
        equal('PCM bytes', tracks[1]['converted'], f'{len(wanted)} bytes of 16-bit samples')
    return tracks


def check_indexes(path, tracks):
    """There may be no index, for example where a file is cut; offsets in it may count from the file's
    begin; and its samples may overlap."""
    data = bytearray(path.read_bytes())
    movie, index = data.find(b'movi'), data.rfind(b'idx1')
    path.write_bytes(data[:index] + b'JUNK' + data[index + 4:])
    for got, wanted in zip(parse(path)[0], tracks, strict=True):
        equal('without an index', (got['samples'], got['bytes'], got.get('and')),
              (wanted['samples'], wanted['bytes'], wanted.get('and')))
    path.write_bytes(data[:index - 3])
    got, status = parse(path)
    equal('cut', (sum(int(track['samples']) for track in got) + 1, status),
          (sum(int(track['samples']) for track in tracks), 1))
    for entry in range(index + 8, len(data) - 15, 16):
        offset, = struct.unpack_from('<I', data, entry + 8)
        struct.pack_into('<I', data, entry + 8, offset + movie)
    path.write_bytes(data)
    equal('absolute offsets', parse(path), (tracks, 0))
    for entry in range(index + 8, len(data) - 15, 16):
        struct.pack_into('<II', data, entry + 8, 4, len(data) // 3)
    path.write_bytes(data)
    got, status = parse(path)
    equal('overlaps', (sum(int(track['samples']) for track in got), status), (3, 1))


def check_windows_media(path):
    """The words of the components against ffprobe's facts."""
    audio = probe(path, 'stream=channels,sample_rate,bit_rate')[1]
    block = [each for each in probe(path, 'packet=stream_index,size') if each['stream_index'] == '1']
    option, = struct.unpack_from('<H', extra_data(path, 'a'), 4)
    text = tool(GLUE, path).decode()
    words = [{int(at): int(word, 16) for at, word in re.findall(r'^ +(\d+)  (\w{8})', part, re.M)}
             for part in text.split('parameter')[1:]]
    equal('frame packing', words[0], {20: 3})
    equal('first input', re.search('bytes: (.*)', text)[1], (extra_data(path, 'v') + b'\2').hex(' '))
    equal('WMA', words[1], {
        0: 64, 4: 1, 12: int(audio['channels']), 16: int(audio['bit_rate']),
        28: int(audio['sample_rate']), 32: option << 16 | int(block[0]['size']),
        44: 16 << 16 | 0x161})


def check_fatal(path, data):
    """An SPS (ITU-T H.264 7.3.2.1.1) that crops 200 of 16 columns, and a PPS; codec data of 3 bytes."""
    sets = bytes.fromhex('00000001 6742000addd032f4 00000001 68ce')
    at = data.find(b'movi') + 12
    path.write_bytes(data[:at] + sets + data[at + len(sets):])
    for program in PARSER, GLUE:
        done = run(program, path)
        equal('stopped', (done.returncode, b'stopped by the library: ' in done.stderr), (1, True))
    short = data.find(b'00dc', data.rfind(b'idx1')) + 12
    path.write_bytes(data[:short] + b'\3' + bytes(3) + data[short + 4:])
    tracks, status = parse(path)
    equal('3 bytes', (tracks[0]['codec data'], status), ('refused: status -1007', 1))


def check_channels(path, data, channels):
    """The glue looks at them first: the library would stop, or send what no decoder takes."""
    at = data.rfind(b'strf') + 10
    path.write_bytes(data[:at] + struct.pack('<H', channels) + data[at + 2:])
    done = run(GLUE, path)
    equal('channels', re.findall(rb'status +(-?\d+)', done.stdout)[1:], [b'-1010'])


def damaged(data, rand):
    for _ in range(DAMAGED_PER_FILE // 3):
        yield data[:rand.randrange(len(data))]
    # Numbers stand in the headers, in the index, and at the begin of the first sample.
    first = data.find(b'movi') + 12
    places = [at for at in range(first + 60) if data[at]] + list(range(data.rfind(b'idx1'),
                                                                       len(data)))
    for _ in range(DAMAGED_PER_FILE - DAMAGED_PER_FILE // 3):
        copy = bytearray(data)
        for _ in range(rand.choice([1, 4, 20])): copy[rand.choice(places)] ^= 1 << rand.randrange(8)
        yield bytes(copy)


def check_damaged(path, rand):
    for number, data in enumerate(damaged(path.read_bytes(), rand)):
        path.write_bytes(data)
        for program in PARSER, GLUE:
            done = run(program, path)
            said = done.stdout + done.stderr
            bad = done.returncode not in (0, 1) or b'Sanitizer' in said or b'runtime error' in said
            if bad or not said: sys.exit(f'{program}, damage {number}: {done}')
            if program == PARSER and done.returncode == 1 and b'avi_parser: ' not in done.stderr:
                sys.exit(f'no reason given for damage {number}: {done}')


def main():
    rand = random.Random(1)
    with tempfile.TemporaryDirectory() as folder:
        for row in FILES:
            path = Path(folder) / (row[0].split()[0] + '.avi')
            make(path, *row[:2])
            data = path.read_bytes()
            tracks = check_good(path, row)
            if row[0].startswith('wmv2'): check_windows_media(path)
            if row[0].startswith('libx264'): check_fatal(path, data)
            if 'pcm' in row[1]: check_channels(path, data, 9)
            if 'wma' in row[1]: check_channels(path, data, 0)
            path.write_bytes(data)
            check_indexes(path, tracks)
            path.write_bytes(data)
            check_damaged(path, rand)


main()
