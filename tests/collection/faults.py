#!/usr/bin/python3
"""Runs zrinspect over folders in which everything goes wrong that can: no file is lost, and each
fault ends in its own file's line.

usage: faults.py ZRINSPECT TROUBLE SAMPLES
"""

import json
import os
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

ZRINSPECT, TROUBLE, SAMPLES = sys.argv[1], sys.argv[2], Path(sys.argv[3])
GOOD = SAMPLES / 'audio.mp3'


def run(*arguments, **options):
    return subprocess.run([ZRINSPECT, *map(os.fspath, arguments)], capture_output=True,
                          timeout=120, **options)


def lines_of(result):
    return [json.loads(line) for line in result.stdout.splitlines()]


def errors_of(result):
    """By the file's name."""
    return {os.path.basename(line['path']): line['error'] for line in lines_of(result)}


class Faults(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix='zr_faults'))
        self.addCleanup(shutil.rmtree, self.folder)
        self.media = self.folder / 'media'
        self.media.mkdir()

    def put(self, *names):
        for name in names: shutil.copy(GOOD, self.media / name)

    def test_demuxer_in_trouble(self):
        """A crash, a hang, a runaway, a changing file: each in its line, and the others whole."""
        expected = {
            'crash.mp3': 'the demuxer crashed (SIGSEGV)',
            'leave.mp3': 'the demuxer ended the process with status 7',
            'hang.mp3': 'took longer than 1.5 s',
            'hungry.mp3': 'needs more memory than there is',
            'change.mp3': 'changed while it was read',
            'vanish.mp3': 'changed while it was read',
            'drops.mp3': 'took longer than 1.5 s',
            'outlaw.mp3': 'the process that read it was killed, twice',
            'boast.mp3': 'the process that read it was killed, twice',
            'kill.mp3': None,
        }
        expected |= {f'{place}{n}.mp3': None for place in 'az' for n in range(20)}
        self.put(*expected)
        environment = os.environ | {'LD_PRELOAD': TROUBLE}
        result = run('-j', '2', '--timeout', '1.5', '--max-memory', '300', '--jsonl', self.media,
                     env=environment,
                     preexec_fn=lambda: signal.signal(signal.SIGCHLD, signal.SIG_IGN))
        self.assertEqual(errors_of(result), expected)
        self.assertEqual([line['path'] for line in lines_of(result)],
                         sorted(str(self.media / name) for name in expected))
        self.assertEqual(result.returncode, 1)
        self.assertIn(b'crash.mp3: the demuxer crashed', result.stderr)
        good = run('--jsonl', GOOD).stdout.replace(os.fsencode(GOOD), b'')
        for line in result.stdout.splitlines():
            if b'a1.mp3' not in line: continue
            same = line.replace(os.fsencode(self.media / 'a1.mp3'), b'')
            keys = json.loads(same), json.loads(good)
            for each in keys: del each['modifiedNs']
            self.assertEqual(*keys)

    def test_odd_files(self):
        names = [b'a b.mp3', b'new\nline.mp3', b'not \xe9 utf8.mp3', '\u00e9.mp3'.encode()]
        for name in names: shutil.copy(GOOD, os.fsencode(self.media) + b'/' + name)
        for name in 'empty.mp4', 'empty.txt': (self.media / name).touch()
        (self.media / 'noise.mp4').write_bytes(bytes(range(7, 250)) * 40)
        (self.media / 'notes.txt').write_text('no media\n' * 100)
        os.mkfifo(self.media / 'fifo.mp3')
        (self.media / 'device.mp3').symlink_to('/dev/zero')
        (self.media / 'ring.mp3').symlink_to(self.media / 'ring2.mp3')
        (self.media / 'ring2.mp3').symlink_to(self.media / 'ring.mp3')
        (self.media / 'deep').mkdir()
        (self.media / 'deep' / 'up').symlink_to(self.media)
        (self.media / 'nowhere.mp3').symlink_to('missing')
        result = run('--jsonl', self.media)
        self.assertEqual(
            {os.fsencode(name): error for name, error in errors_of(result).items()},
            {os.fsencode(os.fsdecode(name).replace('\udce9', '\u00e9')): None for name in names} |
            {b'empty.mp4': 'is empty', b'noise.mp4': 'is not a media file',
             b'ring.mp3': 'Too many levels of symbolic links',
             b'ring2.mp3': 'Too many levels of symbolic links',
             b'nowhere.mp3': 'No such file or directory'})
        raw = [bytes.fromhex(line['pathBytes']) for line in lines_of(result) if 'pathBytes' in line]
        self.assertEqual(raw, [os.fsencode(self.media) + b'/' + names[2]])
        self.assertIn(b'other files, which are no media: 4', result.stderr)

        # Named one by one, nothing is passed over, and nobody waits for a pipe.
        named = ['fifo.mp3', 'device.mp3', 'notes.txt', 'missing.mp3']
        listed = '\0'.join(str(self.media / name) for name in named).encode()
        self.assertEqual(errors_of(run('--jsonl', '-0', '--files-from', '-', input=listed)), {
            'fifo.mp3': 'is a pipe, for which nobody waits among many files',
            'device.mp3': 'is not a regular file',
            'notes.txt': 'is not a media file: text',
            'missing.mp3': 'No such file or directory'})
        result = run('--files-from', '-', input=listed)
        self.assertIn(b'-: has names that end with zero bytes', result.stderr)

    def test_denied(self):
        self.put('closed.mp3', 'open.mp3')
        (self.media / 'closed').mkdir()
        for path in self.folder, self.media: path.chmod(0o755)
        (self.media / 'open.mp3').chmod(0o644)
        for name in 'closed.mp3', 'closed': (self.media / name).chmod(0)
        other = {'user': 65534, 'group': 65534, 'extra_groups': []} if os.getuid() == 0 else {}
        # The build may stand where others do not get.
        program = Path(self.folder / 'zrinspect')
        shutil.copy(ZRINSPECT, program)
        environment = os.environ | {'LD_LIBRARY_PATH': str(self.folder)}
        build = Path(ZRINSPECT).resolve().parents[2]
        for library in *build.glob('*.so.?'), *build.glob('platform/*.so.?'):
            shutil.copy(library, self.folder / library.name)
        result = subprocess.run([program, '--jsonl', self.media], capture_output=True,
                                env=environment, **other)
        self.assertEqual(errors_of(result), {'closed': 'Permission denied', 'open.mp3': None,
                                             'closed.mp3': 'Permission denied'}, result.stderr)

    def test_full_disks(self):
        self.put(*(f'{n}.mp3' for n in range(30)))
        with open('/dev/full', 'wb') as full:
            result = subprocess.run([ZRINSPECT, '--jsonl', self.media], stdout=full,
                                    stderr=subprocess.PIPE)
        self.assertEqual(result.returncode, 1)
        self.assertIn(b'standard output: No space left on device', result.stderr)
        database = self.folder / 'db'
        limited = 'ulimit -f 40; exec "$@"'  # in KiB
        result = subprocess.run(['bash', '-c', limited, '-', ZRINSPECT, '--db', database,
                                 self.media], capture_output=True)
        self.assertEqual(result.returncode, 1)
        self.assertIn(os.fsencode(database) + b': ', result.stderr)
        self.assertEqual(run('--db', database, self.media).returncode, 0)

    def test_interrupted(self):
        """What is printed is a whole run's beginning, and the rest is what --skip says."""
        self.put(*(f'{n:03}.mp3' for n in range(400)))
        whole = run('--jsonl', '-j', '2', self.media).stdout
        output = self.folder / 'out'
        with open(output, 'wb') as out:
            process = subprocess.Popen([ZRINSPECT, '--jsonl', '-j', '2', self.media], stdout=out,
                                       stderr=subprocess.PIPE)
            while output.stat().st_size == 0: time.sleep(0.001)
            process.send_signal(signal.SIGINT)
            errors = process.communicate()[1]
        self.assertEqual(process.returncode, -signal.SIGINT)
        begun = output.read_bytes()
        self.assertTrue(begun.endswith(b'\n') and whole.startswith(begun))
        skip = errors.split(b'--skip ')[1].split()[0]
        self.assertEqual(int(skip), begun.count(b'\n'))
        self.assertLess(int(skip), 400)
        self.assertEqual(begun + run('--jsonl', '--skip', skip, self.media).stdout, whole)
        output.write_bytes(whole)  # what is left out has not gone
        self.assertNotIn(b'gone', run('--against', output, '--skip', skip, self.media).stdout)

    def test_list_through_a_pipe_on_a_terminal(self):
        """Its names are not lost to who counts them for the bar."""
        self.put('hang.mp3', 'good.mp3')
        names = ['hang.mp3'] + ['good.mp3'] * 300
        listed = ''.join(f'{self.media / name}\n' for name in names).encode()
        terminal, end = os.openpty()
        result = subprocess.run(
            [ZRINSPECT, '--jsonl', '-q', '-j', '1', '--timeout', '1', '--files-from', '/dev/stdin'],
            input=listed, stdout=subprocess.PIPE, stderr=end, env=os.environ | {
                'LD_PRELOAD': TROUBLE})
        for each in terminal, end: os.close(each)
        self.assertEqual(len(lines_of(result)), len(names))

    def test_stopped(self):
        """Nobody blames a file for the time in which the user has stopped the program."""
        self.put('hang.mp3')
        process = subprocess.Popen([ZRINSPECT, '--jsonl', '--timeout', '2', self.media],
                                   env=os.environ | {'LD_PRELOAD': TROUBLE}, process_group=0,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        begun = time.monotonic()
        for pause, each in (0.3, signal.SIGSTOP), (3, signal.SIGCONT):
            time.sleep(pause)
            os.killpg(process.pid, each)
        errors = [json.loads(line)['error'] for line in process.communicate()[0].splitlines()]
        self.assertEqual(errors, ['took longer than 2 s'])
        self.assertGreater(time.monotonic() - begun, 4.1)

    def test_few_descriptors(self):
        self.put(*(f'{n}.mp3' for n in range(30)))
        result = subprocess.run(['bash', '-c', 'ulimit -n 20; exec "$@"', '-', ZRINSPECT, '-j',
                                 '64', '--jsonl', self.media], capture_output=True, timeout=60)
        self.assertEqual(set(errors_of(result).values()), {None})

    def test_known_faults(self):
        """Of a file that is not looked at again they count as they did."""
        (self.media / 'cut.avi').write_bytes((SAMPLES / 'video.avi').read_bytes()[:20000])
        database = self.folder / 'db'
        for verify in [], [], ['--verify'], ['--verify']:
            self.assertEqual(run(*verify, '--db', database, self.media).returncode, 1)
        with sqlite3.connect(database) as connection:
            [(fault,)] = connection.execute('SELECT fault FROM files')
        self.assertIn('is truncated: ', fault)
        self.assertIn('; track 1: ', fault)

    def test_two_runs_on_one_database(self):
        self.put(*(f'{n:03}.mp3' for n in range(300)))
        database = self.folder / 'db'
        runs = [subprocess.Popen([ZRINSPECT, '-q', '--db', database, self.media],
                                 stderr=subprocess.PIPE) for _ in range(2)]
        self.assertEqual([(each.communicate()[1], each.returncode) for each in runs],
                         [(b'', 0), (b'', 0)])
        result = run('--db', database, self.media)
        self.assertIn(b'not changed since an earlier run: 300', result.stdout)

    def test_long_lists_begin_at_once(self):
        """A million names; the first line comes long before the last name is read."""
        names = self.folder / 'names'
        names.write_text(f'{GOOD}\n' * 1_000_000)
        with subprocess.Popen([ZRINSPECT, '--jsonl', '--files-from', names],
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as process:
            start = time.monotonic()
            self.assertTrue(process.stdout.readline())
            self.assertLess(time.monotonic() - start, 5)
            process.kill()


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1])
