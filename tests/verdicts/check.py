#!/usr/bin/python3
"""Compares the verdicts of zrinspect on files of every kind and devices of both forms with those
that evaluate.py computes from ffprobe's facts, and on broken files with those written by hand."""

import argparse
import json
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import broken_files
import device_lists
import evaluate
import facts
import fixes
import good_files
import make_files
import table

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / 'inspect'))
import schema  # noqa: E402

# The first decodes what the broken files hold.
DEVICES = [HERE / 'devices' / name for name in (
    'flagship.txt', 'lowend.txt', 'midrange', 'modern', 'old', 'halved')]
PLAYING = 'plays', 'plays-in-software'


class Inspector:
    def __init__(self, program, folder):
        self.program, self.folder = program.resolve(), folder

    def __call__(self, devices, files, *options):
        command = [self.program, '--json', *options]
        for device in devices: command += ['--device', device]
        done = subprocess.run(command + files, cwd=self.folder, capture_output=True, text=True,
                              check=False)
        if done.returncode not in (0, 1) or not done.stdout:
            sys.exit(f'zrinspect ends with {done.returncode}: {done.stderr[:400]}')
        report = json.loads(done.stdout)
        problems = schema.problems(report)
        if problems: sys.exit('\n'.join(problems))
        return report


def tracks_of(file):
    return [track for track in file.get('tracks', []) if track['kind'] != 'other']


def check_row(row, admitted, decoder):
    """What is wrong with one device's row; None as decoder = any."""
    if row is None: return ['no row for the device']
    wrong = []
    if row['verdict'] not in admitted:
        wrong.append(f"{row['verdict']}, not {' or '.join(admitted)}")
    elif decoder and row.get('decoder') != decoder:
        wrong.append(f"decoder {row.get('decoder')}, not {decoder}")
    if row['verdict'] not in PLAYING + ('plays-in-part',):
        if row.get('plays'): wrong.append(f"\"plays\" beside {row['verdict']}")
        if not row.get('reason'): wrong.append(f"no reason for {row['verdict']}")
    elif row['verdict'] in PLAYING and not row.get('plays'): wrong.append('"plays" is false')
    return wrong


def row_at(item, index):
    rows = item.get('devices') or []
    return rows[index] if index < len(rows) else None


def file_verdicts(row, verdicts):
    """Those that are right for a file whose tracks have these verdicts, by kind. Whether subtitles
    make a film play in part is left open."""
    if not row.has_parser: return ('no-parser',)

    def of(plays):
        return 'plays' if all(plays) else 'plays-in-part' if any(plays) else 'does-not-play'
    plays = [(kind, verdict in PLAYING) for kind, verdict in verdicts]
    sets = [[good for _, good in plays], [good for kind, good in plays if kind != 'text']]
    return tuple(dict.fromkeys(of(each) for each in sets if each))


class Check:
    def __init__(self, inspector, devices):
        self.inspector, self.devices = inspector, devices
        self.lists = [device_lists.read_device(device) for device in devices]
        self.wrong, self.rows = [], 0

    def blame(self, path, index, where, problems, numbers=''):
        for problem in problems:
            self.wrong.append(f'{path} {where} on {self.devices[index].stem}: {problem}'
                              + (f'\n    {numbers}' if numbers else ''))

    def check_track(self, row, index, track, alone, known):
        """The verdict expected. Alone: the track's report with this device only, whose MIME type
        counts."""
        verdict, decoder, why = evaluate.judge(self.lists[index], alone.get('codecType'),
                                               alone['mime'] or '', known)
        admitted = verdict,
        if track['index'] in row.encrypted:
            admitted, decoder = ('encrypted',) + admitted * (verdict == 'no-decoder'), None
        found = row_at(track, index)
        problems = check_row(found, admitted, decoder)
        if row_at(alone, 0) != found: problems.append(f'alone it says {row_at(alone, 0)}')
        elif found and alone['verdict'] != found['verdict']:
            problems.append(f"the track itself says {alone['verdict']}")
        self.rows += 1
        numbers = f"{alone['mime']} {why or decoder}\n    {known}\n    zrinspect: {found}"
        self.blame(row.name, index, f"track {track['index']}", problems, numbers)
        return admitted[0], decoder

    def check_good(self, row, file, alone, known):
        if set(known) != {track['index'] for track in file.get('tracks', [])}:
            self.wrong.append(f'{row.name}: other tracks than ffprobe\'s')
            return
        self.wrong += schema.differences(file, [known[index].stream for index in sorted(known)])
        for index in range(len(self.devices)):
            verdicts = []
            for track, own in zip(tracks_of(file), tracks_of(alone[index])):
                cell = self.check_track(row, index, track, own, known[track['index']])
                verdicts.append((track['kind'], cell[0]))
            self.blame(row.name, index, 'file',
                       check_row(row_at(file, index), file_verdicts(row, verdicts), None))

    def check_broken(self, row, file):
        name = 'broken_' + row.name
        self.blame(name, 0, 'file', check_row(row_at(file, 0) or file, row.file, None),
                   file.get('error') or '')
        if file.get('error'): return
        tracks = {track['index']: track for track in tracks_of(file)}
        for number, admitted in row.tracks.items():
            found = row_at(tracks.get(number, {}), 0)
            self.blame(name, 0, f'track {number}', check_row(found, admitted, None), found)
            if set(admitted) & set(PLAYING): continue
            for index in range(1, len(self.devices)):
                other = row_at(tracks.get(number, {}), index)
                if other and other['plays']: self.blame(name, index, f'track {number}', ['plays'])

    def run(self):
        good, broken = good_files.GOOD_FILES, broken_files.BROKEN_FILES
        files = [row.name for row in good] + ['broken_' + row.name for row in broken]
        report = self.inspector(self.devices, files)['files']
        alone = [self.inspector([device], [row.name for row in good])['files']
                 for device in self.devices]
        with ThreadPoolExecutor(2) as pool:
            known = list(pool.map(lambda row: facts.probe(self.inspector.folder / row.name), good))
        for number, row in enumerate(good):
            self.check_good(row, report[number], [each[number] for each in alone], known[number])
        for row, file in zip(broken, report[len(good):]): self.check_broken(row, file)
        return report


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('zrinspect', type=Path)
    parser.add_argument('--files', type=Path, required=True, help='folder for the files')
    parser.add_argument('--table', type=Path, help='write all verdicts and proposals as Markdown')
    parser.add_argument('--fix', action='store_true', help='run the proposed commands too')
    options = parser.parse_args()
    folder = options.files.resolve()
    problems = make_files.make_all(folder)
    if problems: sys.exit('\n'.join(problems))
    check = Check(Inspector(options.zrinspect, folder), DEVICES)
    report = check.run()
    if options.fix:
        names = [file['path'] for file in report]
        wrong, count, fixed = fixes.prove_fixes(check.inspector, names, DEVICES, folder)
        check.wrong += wrong
        report = fixed['files']
        print(f'{count} proposals tried')
    if options.table: table.write_table(options.table, report, [each.stem for each in DEVICES])
    print(*check.wrong, sep='\n', end='\n' if check.wrong else '')
    print(f'{check.rows} verdicts on {len(good_files.GOOD_FILES)} good files, '
          f'{len(broken_files.BROKEN_FILES)} broken files: {len(check.wrong)} disagreements')
    return 1 if check.wrong else 0


if __name__ == '__main__':
    sys.exit(main())
