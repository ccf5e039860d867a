"""Writes docs/verdicts.md: what zrinspect says of each file on each device, and what it proposes."""

import re

HEAD = '''# Verdicts

What `zrinspect` says of the files that `tests/verdicts/make_files.py` writes, on the devices in
`tests/verdicts/devices/`. The test `verdicts` holds every verdict on a whole file against a second
evaluation of the limits, over ffprobe's facts and with readers of its own, those on broken files
against what was written down by hand, and runs every command that `--fix` proposes: what comes of
it plays, but for the two that `tests/verdicts/fixes.py` names as known to fail. This page is written by

    tests/verdicts/check.py build/release/tools/inspect/zrinspect --files FOLDER --fix --table docs/verdicts.md

| device | form |
|---|---|
'''
FORMS = {'flagship': 'output of `dumpsys media.player`: 8K, HEVC, AV1, profiles and levels',
         'lowend': 'output of `dumpsys media.player`: AVC up to 1080p, mostly software',
         'midrange': 'folder of XML lists with includes and measured rates',
         'modern': 'folder of XML lists in two families, with domains and variants',
         'old': 'XML list without any limits', 'halved': 'XML list whose included file is missing'}
PLAYS = {'plays': 'plays', 'plays-in-software': 'software'}


def cell(row):
    return PLAYS.get(row['verdict'], f"**{row['verdict']}**")


def line(cells):
    return '| ' + ' | '.join(str(each).replace('|', '\\|') for each in cells) + ' |'


def verdict_rows(files):
    for file in files:
        if file.get('error'):
            yield line([file['path'], '', ''] + [f"**{file['verdict']}**"] * len(file['devices']))
        for track in file.get('tracks', []):
            if track['kind'] == 'other': continue
            yield line([file['path'], f"{track['index']} {track['codec']}", track['mime']]
                       + [cell(row) for row in track['devices']])


def fix_rows(files, names):
    for file in files:
        outcomes = {}
        for name, row in zip(names, file['devices']):
            fix = row.get('fix')
            if not fix or row['verdict'] == 'plays': continue
            command = ' '.join(f'`{each}`' for each in fix['commands'])
            outcomes.setdefault((fix['sentence'], command), []).append(name)
        for (sentence, command), devices in outcomes.items():
            yield line([file['path'], ', '.join(devices), sentence, command])


def write_table(path, files, names):
    heads = ['file', 'track', 'MIME type'] + names
    parts = [HEAD + '\n'.join(line([name, FORMS[name]]) for name in names), '## Every track',
             '\n'.join([line(heads), '|' + '---|' * len(heads), *verdict_rows(files)]),
             '## What `--fix` makes of what does not play',
             '\n'.join([line(['file', 'devices', 'what', 'command']), '|---|---|---|---|',
                        *fix_rows(files, names)])]
    path.write_text(re.sub(r'[ \t]+\n', '\n', '\n\n'.join(parts) + '\n'))
