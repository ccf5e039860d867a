#!/usr/bin/python3
"""Whatever a file makes of zrinspect, and whatever it refers to: only the file itself is read.

usage: sandbox.py ZRINSPECT TROUBLE SAMPLES
"""

import json
import os
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ZRINSPECT, TROUBLE, SAMPLES = sys.argv[1], sys.argv[2], Path(sys.argv[3])
ATTEMPTS = 'read', 'ask', 'write', 'connect', 'fork', 'execute', 'signals', 'load', 'inherit'


def box(kind, *parts):
    """ISO/IEC 14496-12 4.2"""
    return struct.pack('>I4s', 8 + sum(map(len, parts)), kind) + b''.join(parts)


def referring(folder, url):
    """Files that name another one."""
    subprocess.run(['ffmpeg', '-v', 'error', '-i', SAMPLES / 'audio.m4a', '-c', 'copy', '-f', 'mov',
                    folder / 'whole.mov'], check=True)
    film, name = (folder / 'whole.mov').read_bytes(), url.encode()
    at = film.index(b'dref') - 4
    end = at + struct.unpack_from('>I', film, at)[0]
    # The samples are elsewhere (ISO/IEC 14496-12 8.7.2; QuickTime File Format, alias records).
    alias = bytes(130) + struct.pack('>HH16xHH', 1, 1, 2, len(name)) + name + b'\xFF' * 4
    for kind, text in (b'url ', name), (b'alis', alias):
        reference = box(b'dref', bytes(7), b'\1', box(kind, bytes(4), text))
        moved = bytearray(film[:at] + reference + film[end:])
        for outer in b'moov', b'trak', b'mdia', b'minf', b'dinf':
            place = film.index(outer) - 4
            size = struct.unpack_from('>I', film, place)[0]
            struct.pack_into('>I', moved, place, size + len(moved) - len(film))
        (folder / f'{kind.decode().strip()}.mov').write_bytes(moved)
    data = struct.pack('>I4sI', 0, b'url ', len(name)) + name
    (folder / 'rdrf.mov').write_bytes(box(b'moov', box(b'rmra', box(b'rmda', box(b'rdrf', data)))))
    for each, text in {
            'list.m3u8': f'#EXTM3U\n#EXT-X-TARGETDURATION:9\n#EXTINF:9,\n{url}.ts\n',
            'list.ffconcat': f'ffconcat version 1.0\nfile {url}\n',
            'list.mpd': '<MPD xmlns="urn:mpeg:dash:schema:mpd:2011" type="static"><Period>'
                        '<AdaptationSet mimeType="audio/mp4"><Representation id="1"><BaseURL>'
                        f'{url}</BaseURL></Representation></AdaptationSet></Period></MPD>',
            'live.sdp': 'v=0\nc=IN IP4 127.0.0.1\nt=0 0\nm=audio 5004 RTP/AVP 0\n',
            'film.idx': '# VobSub index file, v7 (do not modify this line!)\nid: en, index: 0\n'
                        'timestamp: 00:00:01:000, filepos: 000000000\n'}.items():
        (folder / each).write_text(text)


class Sandbox(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix='zr_sandbox'))
        self.addCleanup(shutil.rmtree, self.folder)
        self.server = socket.create_server(('127.0.0.1', 0))
        self.addCleanup(self.server.close)
        self.port = self.server.getsockname()[1]

    def is_connected(self):
        self.server.settimeout(0)
        try: self.server.accept()[0].close()
        except BlockingIOError: return False
        return True

    def run_in_trouble(self, *arguments, has_sandbox=True, **environment):
        free = {} if has_sandbox else {'ZR_FREE': '1'}
        return subprocess.run([ZRINSPECT, *arguments], capture_output=True, cwd=self.folder,
                              timeout=20, env=os.environ | free | environment | {
                                  'LD_PRELOAD': TROUBLE, 'ZR_PORT': str(self.port)})

    def test_attempts(self):
        for name in ATTEMPTS: shutil.copy(SAMPLES / 'audio.mp3', self.folder / f'{name}.mp3')
        for has_sandbox in True, False:
            result = self.run_in_trouble('--jsonl', '--db', f'{has_sandbox}.db', '.',
                                         has_sandbox=has_sandbox)
            errors = [json.loads(line)['error'] for line in result.stdout.splitlines()]
            self.assertEqual(errors.count(None), len(ATTEMPTS) if has_sandbox else 1, errors)
            self.assertEqual(self.is_connected(), not has_sandbox)
            self.assertEqual(b'no sandbox' in result.stderr, not has_sandbox)
            for name, status in ('connect', 99), ('execute', 1):
                result = self.run_in_trouble('read.mp3', has_sandbox=has_sandbox, ZR_ALONE=name)
                self.assertEqual(result.returncode, 0 if has_sandbox else status)

    def test_references(self):
        """Nothing is different when the other file is there, even where nothing else guards it."""
        web = f'http:/127.0.0.1:{self.port}'
        for place, url in ('other', 'film.sub'), (web, f'http://127.0.0.1:{self.port}/film.sub'):
            (self.folder / place).mkdir(parents=True)
            referring(self.folder / place, url)
        files = [os.path.join(place, name) for place in ('other', web)
                 for name in os.listdir(self.folder / place)]
        def outputs(): return [self.run_in_trouble(how, *files, has_sandbox=False).stdout
                               for how in ('--json', '--jsonl')]
        alone = outputs()
        subprocess.run(['ffmpeg', '-v', 'error', '-i', SAMPLES / 'audio.mp3', '-f', 'vob',
                        self.folder / 'other/film.sub'], check=True)
        self.assertEqual(outputs(), alone)
        self.assertFalse(self.is_connected())


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1])
