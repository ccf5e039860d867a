#!/usr/bin/python3
"""The page about many files says what --jsonl says of them. usage: page.py ZRINSPECT SAMPLES"""
import json
import os
import shutil
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path
from xml.etree import ElementTree

PROGRAM, SAMPLES = (Path(each).resolve() for each in sys.argv[1:])
COMMAND = [PROGRAM, '-q', '--device=phone', '--device=phone-2016']
NAMES = (b'"><img src=x onerror=alert(1)>.mp4', b'two\nlines.mp4', b't\xf6ne.mp4', b'{{{title}}}.mp4',
         b"<!--rows-->'.mp4", b'cut.mp4')


def run(*arguments): return subprocess.run([*COMMAND, *arguments], check=False, capture_output=True)
def text_of(element): return ''.join(element.itertext()).strip()


def row_on_page(path, phone, older, why, codecs, duration, size):
    return path.text, phone.text, older.text, text_of(why), codecs.text, duration.text, size.text


def row_of(line):
    phone, older = line['devices']
    reasons = dict.fromkeys(each['reason'] for each in (phone, older) if each['reason'])
    why = [*reasons] if len(reasons) == 1 else [f'phone: {phone["reason"]}', f'phone-2016: {older["reason"]}']
    verdicts = (each['verdict'].replace('-', ' ') for each in (phone, older))
    codecs = ' + '.join(track['codec'] for track in line.get('tracks', ()))
    duration = line.get('durationUs')
    return (line['path'], *verdicts, ''.join(why) if reasons else '', codecs or None,
            duration and f'{duration / 1e6:.3f} s', f'{line["sizeBytes"]:,}')


def check(page, lines):
    root = ElementTree.parse(page).getroot()
    rows = [row_on_page(*row) for row in root.findall('.//section[@id="files"]//tbody/tr')]
    wanted = [row_of(line) for line in lines]
    assert sorted(rows, key=str) == sorted(wanted, key=str), {*rows} ^ {*wanted}
    for index, figure in enumerate(root.iter('figure'), 1):
        counts = {item[0].tail.strip(): int(item.find('b').text) for item in figure.iter('li')}
        assert counts == Counter(row[index] for row in wanted), counts
    assert not root.findall('.//img') and len(root.findall('.//script')) == 1


with tempfile.TemporaryDirectory() as folder:
    os.chdir(folder)
    shutil.copytree(SAMPLES, 'files')
    for name in NAMES: shutil.copy(SAMPLES / 'video-10bit.mp4', b'files/' + name)
    os.truncate('files/cut.mp4', 999)
    lines = [json.loads(line) for line in run('--jsonl', 'files').stdout.splitlines()]
    for more in ([], ['--db=db'], ['--db=db'], ['--jsonl', '--fix', '--db=db']):
        run(*more, '--html=page.html', '--force', 'files')
        check('page.html', lines)
    assert b'is there already' in run('--html=page.html', 'files').stderr
    assert run('--html=files/cut.mp4', '--force', 'files').returncode == 1
    assert os.path.getsize('files/cut.mp4') == 999
    Path('list').write_text('files/audio.m4a\n' * 9999)
    with subprocess.Popen([PROGRAM, '--html=none.html', '--files-from=list'], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE) as process:
        process.stdout.readline()
        process.terminate()
        assert b'interrupted' in process.communicate()[1] and not Path('none.html').exists()
