#!/usr/bin/python3
"""Asks a database that zrinspect made of files by ffmpeg what docs/collections.md asks, and compares
with ffprobe and --json. Kills runs, lets two share a database and one run out of room."""

import argparse
import json
import os
import random
import re
import resource
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PAGE = Path(__file__).resolve().parents[2] / 'docs/collections.md'
DEVICES = ['--device', 'phone', '--device', 'phone-2016']
X265 = '-c:v libx265 -preset ultrafast -x265-params log-level=none'
TONE = '-f lavfi -i sine=d=1'
TAGS = '-metadata title=Tone -metadata artist=A'
FILES = {
    'uhd.mkv': f'-f lavfi -i color=s=3840x2160:r=30:d=0.07 {X265}',
    'hd.mp4': f'-f lavfi -i color=s=1280x720:r=30:d=0.1 {TONE} {X265} -c:a aac -t 1',
    'small\nsd.mkv': '-f lavfi -i testsrc=s=320x240:d=0.5 -c:v mpeg4',
    'deep/prores.mov': '-f lavfi -i testsrc=s=320x240:d=0.2 -c:v prores',
    'deep/film.wmv': f'-f lavfi -i testsrc=s=320x240:d=0.5 {TONE} -c:v wmv2 -c:a wmav2 -t 0.5',
    'tone.flac': f'{TONE} {TAGS}',
    'tone.mp3': f'{TONE} {TAGS}',
    'untitled.mp3': f'{TONE} -metadata artist=A',
    'deep/bare.ogg': f'{TONE} -c:a libvorbis',
}


def make_files(folder):
    (folder / 'deep').mkdir(parents=True)
    for name, options in FILES.items():
        subprocess.run(['ffmpeg', '-v', 'error', '-nostdin', *options.split(), folder / name],
                       check=True)
    (folder / 'cut.mp4').write_bytes((folder / 'hd.mp4').read_bytes()[:1000])
    (folder / 'notes.txt').write_text('no media\n')
    os.rename(folder / 'tone.mp3', os.fsencode(folder) + b'/t\xf6ne.mp3')


def probe(path):
    done = subprocess.run(['ffprobe', '-v', 'quiet', '-of', 'json', '-show_streams', '-show_format',
                           path], capture_output=True, check=False)
    return json.loads(done.stdout)


class Test:
    def __init__(self, program, folder):
        self.program, self.folder, self.problems = program.resolve(), folder, []
        self.files = folder / 'files'
        make_files(self.files)

    def command(self, database, *more):
        return [self.program, '--quiet', '--db', self.folder / database, *DEVICES, *more]

    def run(self, database, *more, **how):
        return subprocess.run(self.command(database, *more), cwd=self.files, check=False,
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, **how)

    def ask(self, database, sql):
        connection = sqlite3.connect(self.folder / database)
        try:
            connection.text_factory = os.fsdecode
            return [tuple(os.fsdecode(each) if isinstance(each, bytes) else each for each in row)
                    for row in connection.execute(sql)]
        finally:
            connection.close()

    def expect(self, what, found, wanted):
        if found != wanted: self.problems.append(f'{what}: {found}\n    instead of {wanted}')

    def content(self, database):
        """All that is kept, without the numbers of rows."""
        return [self.ask(database, f'SELECT path, {columns} ORDER BY 1, 2, 3, 4, 5') for columns in (
            'size_bytes, modified_ns, is_media, error, fault, format, files.mime, duration_us FROM files',
            'track, kind, codec, width, height, frame_rate, sample_rate, bit_rate FROM files '
            'JOIN tracks ON file_id = files.id',
            'track, device, verdict, plays, reason, decoder FROM files JOIN verdicts '
            'ON file_id = files.id',
            'kind, name, value, 0 FROM files JOIN tags ON file_id = files.id')]

    def check_whole(self, database):
        self.expect('integrity', self.ask(database, 'PRAGMA integrity_check'), [('ok',)])
        self.expect('foreign keys', self.ask(database, 'PRAGMA foreign_key_check'), [])
        torn = self.ask(database, '''
            SELECT path FROM files WHERE is_media AND (SELECT count(*) FROM verdicts
                WHERE file_id = files.id) <> 2 * (1 + (SELECT count(*) FROM tracks
                WHERE file_id = files.id AND kind <> 'other'))''')
        self.expect('files with all their verdicts', torn, [])

    # What the page asks.

    def check_page(self):
        self.run('page.db', '.')
        queries = re.findall(r'```sql\n(.*?)```', PAGE.read_text(), re.S)
        self.expect('questions', len(queries), 10)
        answers = [self.ask('page.db', query) for query in queries]
        if not all(answers[:8]): self.problems.append(f'nothing found: {answers}')
        paths = [path for path, in self.ask('page.db', 'SELECT path FROM files WHERE is_media')]
        known = {path: probe(self.files / path) for path in paths}
        streams = [(path, stream) for path, each in known.items()
                   for stream in each.get('streams', [])]
        self.check_against_ffprobe(answers, known, streams)
        self.check_against_json(answers, paths)

    def check_against_ffprobe(self, answers, known, streams):
        large = [(path, each['width'], each['height'], 'beyond-decoder') for path, each in streams
                 if each['codec_name'] == 'hevc' and min(each['width'], each['height']) > 1080]
        self.expect('large HEVC', answers[0], large)
        wanted = {'title', 'artist'}

        def tags(each):
            own = each['format'].get('tags', {}) | each['streams'][0].get('tags', {})
            return {name.lower() for name in own}
        self.expect('untagged', {row[0] for row in answers[3]}, {
            path for path, each in known.items()
            if each.get('format', {}).get('format_name') in ('mp3', 'flac', 'ogg')
            and not wanted <= tags(each)})
        codecs = {}
        for _, each in streams: codecs.setdefault(each['codec_name'], []).append(each)
        self.expect('codecs', {row[1]: row[2] for row in answers[7]},
                    {codec: len(each) for codec, each in codecs.items()})
        self.expect('twice', [(row[:3], sorted(row[3].split(' | '))) for row in answers[9]],
                    [(('a', 'tone', 2), ['./tone.flac', './t\udcf6ne.mp3'])])

    def check_against_json(self, answers, paths):
        done = subprocess.run([self.program, '--json', *DEVICES, '--', *paths], cwd=self.files,
                              capture_output=True, check=False)
        files = json.loads(done.stdout)['files']
        tracks = [(file['path'], track) for file in files for track in file.get('tracks', [])]
        lost = {}
        for path, track in tracks:
            for row in track['devices']:
                if not row['plays']: lost.setdefault((row['name'], row['verdict']), set()).add(path)
        self.expect('reasons', {row[:2]: row[2] for row in answers[1]},
                    {key: len(each) for key, each in lost.items()})
        playing = {track['codec'] for _, track in tracks if any(
            row['plays'] for row in track['devices'])}
        self.expect('codecs that nothing plays', {codec for codec, _ in answers[2]},
                    {track['codec'] for _, track in tracks} - playing)
        bad = sorted((file for file in files if not file['devices'][1]['plays']),
                     key=lambda file: -file['sizeBytes'])
        self.expect('biggest lost', [row[0] for row in answers[4]], [file['path'] for file in bad])
        self.expect('here, not there', [row[0] for row in answers[5]], sorted(
            file['path'] for file in bad if file['devices'][0]['plays']))
        self.expect('errors', {row[0]: row[1] for row in answers[6]},
                    {file['error']: 1 for file in files if file['error']})

    # What becomes of it.

    def make_many(self, copies):
        """Links, so that a run takes long enough to be killed in it."""
        many = self.folder / 'many'
        for number in range(copies):
            for source in self.files.rglob('*'):
                if source.is_dir(): continue
                target = many / str(number) / source.relative_to(self.files)
                target.parent.mkdir(parents=True, exist_ok=True)
                os.link(source, target)
        return many

    def check_kills(self, many, times):
        start = time.monotonic()
        self.run('whole.db', many)
        seconds = time.monotonic() - start
        chance, sizes = random.Random(7), []
        for _ in range(times):
            running = subprocess.Popen(self.command('killed.db', many), stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL)
            time.sleep(chance.uniform(0, 1.2 * seconds))
            running.kill()
            ended = running.wait() != -signal.SIGKILL
            if (self.folder / 'killed.db').exists():
                if self.ask('killed.db', "SELECT 1 FROM sqlite_schema WHERE name = 'files'"):
                    self.check_whole('killed.db')
                    sizes += self.ask('killed.db', 'SELECT count(*) FROM files')
            if ended: self.remove('killed.db')
        self.run('killed.db', many)
        self.check_whole('killed.db')
        self.expect('after kills', self.content('killed.db'), self.content('whole.db'))
        whole = self.ask('whole.db', 'SELECT count(*) FROM files')[0]
        return f'{times} kills at {len(set(sizes) - {whole})} other sizes than {whole[0]} files'

    def remove(self, database):
        for path in self.folder.glob(database + '*'): path.unlink()

    def check_sharing(self, many):
        runs = [subprocess.Popen(self.command('shared.db', many), stdout=subprocess.DEVNULL,
                                 stderr=subprocess.PIPE, text=True) for _ in range(2)]
        complaints = [running.communicate()[1] for running in runs]
        self.expect('locks', [each for each in complaints if 'shared.db' in each], [])
        self.check_whole('shared.db')
        self.expect('after sharing', self.content('shared.db'), self.content('whole.db'))

    def check_room(self, many):
        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (100_000, 100_000))
        done = self.run('full.db', many, preexec_fn=limit)
        self.expect('status without room', done.returncode, 1)
        self.expect('complaint', done.stderr.splitlines()[-1:],
                    [f'zrinspect: {self.folder}/full.db: disk I/O error'])
        self.check_whole('full.db')
        self.run('full.db', many)
        self.expect('with room', self.content('full.db'), self.content('whole.db'))

    def check_changes(self, many):
        shutil.rmtree(many / '0')
        (many / '1/notes.txt').unlink()
        self.run('whole.db', many)
        self.expect('gone', self.ask('whole.db', f"SELECT path FROM files WHERE path LIKE "
                                     f"'{many}/0/%' OR path = '{many}/1/notes.txt'"), [])
        self.run('fresh.db', many)
        self.expect('after changes', self.content('whole.db'), self.content('fresh.db'))
        # A folder that is not there is not known to be empty.
        many.rename(self.folder / 'elsewhere')
        self.run('whole.db', many)
        self.expect('without the folder', *(
            self.ask(database, f"SELECT count(*) FROM files WHERE path <> '{many}'")
            for database in ('whole.db', 'fresh.db')))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('zrinspect', type=Path)
    parser.add_argument('--kills', type=int, default=50)
    parser.add_argument('--copies', type=int, default=100, help='of each file, to be killed among')
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        test = Test(options.zrinspect, Path(folder))
        test.check_page()
        many = test.make_many(options.copies)
        print(test.check_kills(many, options.kills))
        test.check_sharing(many)
        test.check_room(many)
        test.check_changes(many)
    print(*test.problems, sep='\n', end='\n' if test.problems else '')
    print(f'{len(test.problems)} problems')
    return 1 if test.problems else 0


if __name__ == '__main__':
    sys.exit(main())
