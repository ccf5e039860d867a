#!/usr/bin/python3
"""Writes a collection as people keep them: the files of tests/verdicts under other titles, in other
containers, shorter, longer and cut off, in folders, with names that hold whatever a file system
takes, among files that are no media. Names are the same in each run, and so are contents but for
the random numbers that ffmpeg writes into Matroska, Ogg and encrypted originals. Files of an earlier
run stay if nothing of the recipes has changed."""

import argparse
import hashlib
import os
import shutil
import subprocess
import sys
import time
import zipfile
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from itertools import count
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / 'verdicts'))
import broken_files
import good_files
import make_files

ARTISTS = ['Anna Blume', 'Søren Åkær', 'Χορός', '合唱団', 'Архив', 'The "Quoted" Ones', 'x' * 120]
ALBUMS = ['Live (disc 1)', 'Été & après', "It's home", '2019-07', 'Größte Töne']
TITLES = ['Intro', 'Das Lied', 'Ночь', '夜の海', 'Holiday 🎬', 'Untitled', 'Café au lait']
# Every so many names is one of these; UTF-8 is not asked for by file systems.
ODD_NAMES = [b'two\nlines', b'caf\xe9 in Latin-1', b'\xff\xfe', b'a\ttab', b'red \x1b[31mtext',
             b'-n', b'100 %d', b'back\\slash', b' blank ', 'nruter \u202e return'.encode(),
             b'$HOME `id`', b'long ' + b'y' * 200]
ODD_EVERY = 40

# Other containers for a file; those that do not take its codecs leave it out.
OTHER_CONTAINERS = {
    '.mp4': ('.mkv', '.mov', '.ts'), '.mov': ('.mkv', '.mp4'), '.3gp': ('.mp4', '.mkv'),
    '.mkv': ('.mp4', '.ts'), '.webm': ('.mkv', '.mp4'), '.ts': ('.mp4', '.mkv'),
    '.m4a': ('.mka', '.mp4', '.aac'), '.mka': ('.mp4', '.wav'), '.ogg': ('.mka',),
    '.opus': ('.mka', '.webm'), '.ogv': ('.mkv',), '.avi': ('.mkv',), '.flv': ('.mp4',),
    '.wav': ('.mka', '.avi'), '.mp3': ('.mka', '.mp4'), '.flac': ('.mka', '.ogg'),
    '.asf': ('.mkv',), '.wmv': ('.mkv',), '.wma': ('.mka',), '.mpg': ('.ts', '.mkv'),
    '.vob': ('.mpg',), '.m2ts': ('.mkv',), '.ac3': ('.mka', '.mp4'), '.aiff': ('.mka',),
}
# What is repeated, up to this many MB.
LONG = [('avc_noisy.mp4', 48), ('avc_main_30.mkv', 40), ('pcm_24.wav', 35), ('dv.avi', 30),
        ('mpeg2.vob', 28), ('hevc.ts', 25), ('mpeg2_1080.ts', 25), ('avc.avi', 22),
        ('avc.flv', 20), ('flac.flac', 18), ('mp3.mp3', 15), ('vp9_0.webm', 15), ('vp8.webm', 12),
        ('theora.ogv', 12), ('wmv8.wmv', 12), ('aac_lc.m4a', 10), ('vorbis.ogg', 8),
        ('avc_high_40.mp4', 8), ('opus.opus', 6), ('alac.m4a', 6), ('mpeg1.mpg', 5),
        ('two_audio.mkv', 5), ('mp2.mp2', 4), ('avc.m2ts', 3), ('subtitles.mkv', 3)]
NOT_COPIED = {'dsd.dsf', 'encrypted.mp4'}  # ffmpeg writes no such file, or not without the key
SHARES = .03, .3, .7, .97  # of a file that was cut off
LENGTHS = 9, .2, .3, 9, .1  # seconds of a copy


class Names:
    """A path for each file, the same in each run."""

    def __init__(self, out):
        self.out = os.fsencode(out)
        self.numbers = count()

    def next(self, suffix):
        i = next(self.numbers)
        odd, which = i % ODD_EVERY == 7, i // ODD_EVERY % len(ODD_NAMES)
        title = ODD_NAMES[which] if odd else TITLES[i % len(TITLES)].encode()
        folder = os.path.join(self.out, ARTISTS[i // 60 % len(ARTISTS)].encode(),
                              f'{i // 60:02} {ALBUMS[i // 12 % len(ALBUMS)]}'.encode())
        if i % 5 == 0: folder = os.path.join(folder, b'bonus', b'scans and clips')
        os.makedirs(folder, exist_ok=True)
        number = b'' if odd and which % 2 else f' {i:04}'.encode()
        return os.path.join(folder, title + number + suffix.encode())


def copied(source, outputs, before=()):
    """Whether ffmpeg wrote all the outputs: paths with the options of each."""
    command = ['ffmpeg', '-v', 'error', '-nostdin', '-y', *before, '-i', source]
    for path, options in outputs:
        command += ['-map', '0', '-c', 'copy', '-fflags', '+bitexact', *options,
                    b'file:' + path]
    done = subprocess.run(command, capture_output=True, check=False)
    if done.returncode:
        for path, _ in outputs: Path(os.fsdecode(path)).unlink(missing_ok=True)
    return done.returncode == 0


def tagged(i, *more):
    return ['-metadata', f'title={TITLES[i % len(TITLES)]} {i}', '-metadata',
            f'artist={ARTISTS[i % len(ARTISTS)]}', '-metadata', f'track={i % 20 + 1}', *more]


class Collection:
    def __init__(self, out, jobs):
        self.out, self.made = out, Counter()
        self.originals = out / 'originals'
        self.names = Names(out)
        self.pool = ThreadPoolExecutor(jobs)
        self.good = [row.name for row in good_files.GOOD_FILES if row.name not in NOT_COPIED]

    def write(self, kind, suffix, content):
        Path(os.fsdecode(self.names.next(suffix))).write_bytes(content)
        self.made[kind] += 1

    def content(self, name):
        return (self.originals / name).read_bytes()

    def copy_all(self, kind, tasks):
        """Tasks: name of the source, outputs, options before it."""
        run = lambda task: copied(self.originals / task[0], *task[1:])
        for (name, outputs, *_), done in zip(tasks, self.pool.map(run, tasks)):
            self.made[kind if done else 'refused by ffmpeg: ' + kind] += len(outputs)
            if not done and kind != 'remuxed': raise RuntimeError(f'{name} was not {kind}')

    def remuxed(self):
        self.copy_all('remuxed', [
            (name, [(self.names.next(suffix), tagged(i))])
            for i, name in enumerate(self.good)
            for suffix in OTHER_CONTAINERS.get(Path(name).suffix, ())])

    def long(self):
        self.copy_all('long', [
            (name, [(self.names.next(Path(name).suffix),
                     tagged(i, '-fs', f'{size}M', '-t', '36000'))],
             ('-stream_loop', '-1'))
            for i, (name, size) in enumerate(LONG)])

    def cut(self):
        for i, name in enumerate(self.good):
            content = self.content(name)
            share = SHARES[i % len(SHARES)]
            self.write('cut off', Path(name).suffix, content[:int(len(content) * share)])

    def broken(self):
        for row in broken_files.BROKEN_FILES * 2:
            self.write('broken', ' ' + row.name, self.content('broken_' + row.name))

    def no_media(self):
        cover = self.content('broken_picture.png')
        for i in range(12):
            self.write('no media', '.txt', f'Notes on disc {i}.\n'.encode() * (i * i + 1))
            self.write('no media', '.png', cover)
            self.write('no media', '.nfo', bytes(range(256)) * (i + 1))
            with zipfile.ZipFile(os.fsdecode(self.names.next('.zip')), 'w') as archive:
                archive.writestr(zipfile.ZipInfo('cover.png'), cover)
            self.made['no media'] += 1

    def retagged(self, wanted):
        each = -(-max(wanted, 0) // len(self.good))
        def outputs(name):
            return [(self.names.next(Path(name).suffix),
                     tagged(i, '-t', str(LENGTHS[i % len(LENGTHS)]))) for i in range(each)]
        self.copy_all('retagged', [(name, outputs(name)) for name in self.good if each])

    def special(self):
        """What a walk over folders meets besides files."""
        folder = self.out / 'special'
        folder.mkdir()
        (folder / 'link to a file.mp4').symlink_to('../originals/avc_high_40.mp4')
        (folder / 'link to nothing.mp4').symlink_to('gone.mp4')
        (folder / 'round').symlink_to('../special')
        (folder / 'round and round').symlink_to('.')
        (folder / 'empty.mkv').touch()
        shutil.copy(self.originals / 'mp3.mp3', folder / 'unreadable.mp3')
        (folder / 'unreadable.mp3').chmod(0)
        os.mkfifo(folder / 'fifo.mp4')
        self.made['special'] += 7

    def make(self, wanted):
        problems = make_files.make_all(self.originals)
        if problems: raise RuntimeError('\n'.join(problems))
        (self.originals / '.recipes').unlink()
        self.made['originals'] = sum(1 for path in self.originals.iterdir())
        for step in (self.remuxed, self.long, self.cut, self.broken, self.no_media): step()
        refused = sum(n for kind, n in self.made.items() if kind.startswith('refused'))
        self.retagged(wanted - self.made.total() + refused)
        self.special()


def recipe_hash(options):
    content = Path(__file__).read_bytes() + make_files.recipe_hash().encode()
    return hashlib.sha256(content + str(options.count).encode()).hexdigest()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('out', type=Path, help='folder')
    parser.add_argument('--count', type=int, default=2000, help='files at least, else %(default)s')
    parser.add_argument('--jobs', type=int, default=2, help='processes at a time')
    options = parser.parse_args()
    start = time.monotonic()
    stamp = options.out.with_name(options.out.name + '.made')  # beside, not a part of it
    if stamp.exists() and stamp.read_text().startswith(recipe_hash(options)):
        print(stamp.read_text().split('\n', 1)[1], end='')
        return
    if options.out.exists() and not stamp.exists():
        sys.exit(f'{options.out} is there and was not written by {Path(__file__).name}')
    stamp.write_text('unfinished')
    shutil.rmtree(options.out, ignore_errors=True)
    collection = Collection(options.out.resolve(), options.jobs)
    collection.make(options.count)
    files = [path for path in options.out.rglob('*') if path.is_file() and not path.is_symlink()]
    size = sum(path.stat().st_size for path in files)
    said = f'{len(files)} files, {size / 1e6:.0f} MB\n'
    said += ''.join(f'{number:6} {kind}\n' for kind, number in collection.made.items())
    print(f'{said}in {time.monotonic() - start:.1f} s')
    stamp.write_text(f'{recipe_hash(options)}\n{said}')


if __name__ == '__main__':
    main()
