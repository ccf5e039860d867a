#!/usr/bin/python3
"""Writes the good files with ffmpeg and the broken ones made from them into a folder. Files of an
earlier run stay if nothing of the recipes has changed."""

import argparse
import hashlib
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import broken_files
import good_files

HERE = Path(__file__).parent
RECIPES = 'make_files.py', 'good_files.py', 'broken_files.py'


def recipe_hash():
    return hashlib.sha256(b''.join((HERE / name).read_bytes() for name in RECIPES)).hexdigest()


def make_all(out, jobs=2):
    """The problems met; empty when every file is there."""
    stamp = out / '.recipes'
    if stamp.exists() and stamp.read_text() == recipe_hash(): return []
    out.mkdir(parents=True, exist_ok=True)
    good_files.write_extras(out)
    with ThreadPoolExecutor(jobs) as pool:
        problems = list(pool.map(lambda row: good_files.write(row, out), good_files.FFMPEG_FILES))
    problems += [good_files.write_changed(*row, out) for row in good_files.CHANGED_FILES]
    problems = [problem for problem in problems if problem]
    if not problems:
        broken_files.write_all(out)
        stamp.write_text(recipe_hash())
    return problems


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('out', type=Path, help='folder')
    parser.add_argument('--jobs', type=int, default=2, help='encoders at a time')
    options = parser.parse_args()
    start = time.monotonic()
    problems = make_all(options.out, options.jobs)
    print(*problems, sep='\n', file=sys.stderr, end='\n' if problems else '')
    print(f'{len(good_files.GOOD_FILES)} good and {len(broken_files.BROKEN_FILES)} broken files '
          f'in {time.monotonic() - start:.1f} s')
    return 1 if problems else 0


if __name__ == '__main__':
    sys.exit(main())
