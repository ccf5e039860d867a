#!/usr/bin/python3
"""Runs zrinspect --json with all its options over the samples: every document must fit
docs/zrinspect.schema.json, and its facts be ffprobe's. So must fit the documents that other tests have
collected in a file.

usage: schema.py ZRINSPECT DOCUMENTS
"""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from fractions import Fraction
from pathlib import Path

import jsonschema

PROJECT = Path(__file__).resolve().parent.parent.parent
SAMPLES = sorted(path for path in (PROJECT / 'samples').iterdir() if path.suffix != '.sh')
VALIDATOR = jsonschema.Draft202012Validator(
    json.loads((PROJECT / 'docs/zrinspect.schema.json').read_text()))
REPORTS = '--fix --explain --frames --verify --component --legacy --device phone --device bare'.split()
ALL = '--force --pictures .'.split() + REPORTS


def problems(document):
    """Where it does not fit the schema."""
    return [f'{each.json_path}: {each.message[:300]}' for each in VALIDATOR.iter_errors(document)]


def expected_facts(stream, duration):
    """Those of a track that ffprobe tells, by the report's key."""
    def number(key): return int(stream[key]) if stream.get(key) else None
    own = number('duration_ts') and Fraction(stream['time_base']) * stream['duration_ts']
    facts = {'default': bool(stream['disposition']['default']),
             'durationUs': int(own * 10**6 + Fraction(1, 2)) if own else duration,
             'language': stream.get('tags', {}).get('language', 'und')}
    if facts['language'] == 'und': facts['language'] = None
    if stream['codec_type'] in ('video', 'audio'): facts['bitRate'] = number('bit_rate')
    if stream['codec_type'] == 'video':
        rate = stream['avg_frame_rate']
        rotation = [each['rotation'] for each in stream.get('side_data_list', [])
                    if 'rotation' in each]  # counterclockwise
        facts |= {'width': number('width'), 'height': number('height'),
                  'rotation': -sum(rotation) % 360,
                  'frameRate': None if rate.endswith('/0') else float(Fraction(rate)) or None}
    elif stream['codec_type'] == 'audio':
        facts |= {'channels': number('channels'), 'sampleRate': number('sample_rate')}
    bits = number('bits_per_raw_sample')
    if re.match(r'pcm_[fsu]\d', stream.get('codec_name', '')): bits = stream['bits_per_sample']
    if bits: facts['bitDepth'] = bits
    return facts


def differences(file, streams):
    """Between a file's report and ffprobe's streams."""
    return [f"{file['path']}, track {track['index']}: {key} is {track.get(key)}, not {value}"
            for track, stream in zip(file['tracks'], streams) if track['kind'] != 'other'
            for key, value in expected_facts(stream, file['durationUs']).items()
            if track.get(key) != value]


def rotated(content):
    """ISO/IEC 14496-12 8.3.2: the matrix of the first track's header turned by 90 degrees."""
    at = content.index(b'tkhd') + 44
    turned = b''.join(number.to_bytes(4, 'big', signed=True)
                      for number in (0, 1 << 16, 0, -1 << 16, 0, 0, 0, 0, 1 << 30))
    return content[:at] + turned + content[at + len(turned):]


def check_samples(inspect, folder):
    """In a folder that files may be written to."""
    files = [os.fsencode(path) for path in SAMPLES] + [b'rotated.mp4', b'\xff.mp3', b'missing']
    shutil.copy(PROJECT / 'samples/audio.mp3', os.fsencode(folder) + b'/\xff.mp3')
    video = (PROJECT / 'samples/video.mp4').read_bytes()
    Path(folder, 'rotated.mp4').write_bytes(rotated(video))
    report = inspect(folder, *ALL, *files)
    wrong = problems(report) + problems(
        inspect(folder, '--force', '--dump-wav', b'\xff.wav', PROJECT / 'samples/audio.aiff'))
    for path, file in zip(files, report['files']):
        if file['error']: continue
        done = subprocess.run(['ffprobe', '-v', 'error', '-of', 'json', '-show_streams', path],
                              cwd=folder, capture_output=True, check=True)
        wrong += differences(file, json.loads(done.stdout)['streams'])
    return wrong


def check_collected(text):
    """Documents one behind the other."""
    wrong, at, decoder = [], 0, json.JSONDecoder()
    while at < len(text):
        document, at = decoder.raw_decode(text, at)
        wrong += problems(document)
        at += 1  # the line's end
    return wrong


def check_lines(program):
    """Each line of --jsonl is a file of the document that --json prints, and names the schema."""
    samples = list(map(str, SAMPLES)) + ['/missing']
    lines = [json.loads(line) for line in subprocess.run(
        [program, '--jsonl', *REPORTS, *samples], capture_output=True,
        check=False).stdout.splitlines()]
    document = json.loads(subprocess.run([program, '--json', *REPORTS, *samples],
                                         capture_output=True, check=False).stdout)
    version = {'schemaVersion': document['schemaVersion']}
    wrong = problems(document | {'files': lines})
    if lines != [version | file for file in document['files']]: wrong.append('--jsonl: other lines')
    return wrong


def main():
    program, documents = Path(sys.argv[1]).resolve(), Path(sys.argv[2])

    def inspect(folder, *arguments):
        done = subprocess.run([program, '--json', *arguments], cwd=folder, capture_output=True,
                              check=False)
        return json.loads(done.stdout)
    with tempfile.TemporaryDirectory() as folder: wrong = check_samples(inspect, folder)
    wrong += check_lines(program)
    wrong += check_collected(documents.read_text())
    documents.unlink()  # it would grow with every run
    print(*wrong, sep='\n', end='\n' if wrong else '')
    return 1 if wrong else 0


if __name__ == '__main__':
    sys.exit(main())
