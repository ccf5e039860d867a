#!/usr/bin/python3
"""Checks every code block of Markdown pages, and the C++ examples in headers.

usage: check_blocks.py [--program ZRINSPECT | --folder FOLDER] --compiler CXX FILE...

What becomes of a block follows from its language:
  none   each line that begins with "$ " is run, and its output compared with the lines below it
  cpp    stands in a source of examples/, line by line, or compiles against the public headers; without
         a main() it is the inside of a function
  json   is JSON
  sh, cmake, text  nothing
  sql    nothing here: tests/collection/database.py asks a real database
Any other is an error. A file's name behind the language has the block written to that file. "..." in
an output stands for anything, alone on a line for any lines. The blocks of a page are run in their
order in one folder: the one that is named, or one that looks like the project's with scripts/inspect
built.
"""
import argparse
import json
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent.parent
HEADERS = sorted((PROJECT / 'include/zrcodecparser').glob('*.h'))
PRELUDE = ''.join(f'#include "zrcodecparser/{header.name}"\n' for header in HEADERS) + (
    '#include "platform/Host.h"\n#include <cstdio>\n#include <cstring>\n#include <string>\n'
    'using namespace android;\n')
EXAMPLES = ['\n' + path.read_text() for path in sorted((PROJECT / 'examples').rglob('*'))
            if path.suffix in ('.h', '.cpp')]
SHOWN = ('sh', 'cmake', 'text')


def blocks_of(page):
    """The number of the first line, the language, a file's name and the text of each block."""
    text = page.read_text()
    if page.suffix == '.h':
        text = re.sub(r'^ */// ?', '', text, flags=re.M)
        found = re.finditer(r'^@code()()\n((?:.*\n)*?)@endcode', text, re.M)
    else:
        found = re.finditer(r'^```(\S*) ?(.*)\n((?:.*\n)*?)```$', text, re.M)
    for block in found:
        language = 'cpp' if page.suffix == '.h' else block[1]
        yield text.count('\n', 0, block.start()) + 2, language, block[2], block[3]


def is_whole(command):
    """Whether a command ends with this line."""
    try:
        shlex.split(command)
    except ValueError:
        return False
    return not command.endswith(('|', '\\'))


def commands_of(text):
    """Each command of a block with the output expected of it."""
    found = []
    for line in text.splitlines():
        if found and not is_whole(found[-1][0]):
            found[-1][0] += '\n' + line
        elif line.startswith('$ '):
            found.append([line[2:], ''])
        elif found:
            found[-1][1] += line + '\n'
        else:
            return None
    return found


def matches(expected, output):
    pattern = re.escape(expected)
    pattern = re.sub(r'^(?:\\ )*\\\.\\\.\\\.\\\n', r'(?:.*\\n)*', pattern, flags=re.M)
    return re.fullmatch(pattern.replace(r'\.\.\.', '.*'), output) is not None


def run(text, folder):
    """What is wrong with the output of a block's commands."""
    commands = commands_of(text)
    if commands is None: return 'does not begin with a command, and has no language'
    for command, expected in commands:
        done = subprocess.run(['bash', '-c', command], cwd=folder, capture_output=True, text=True,
                              check=False, stdin=subprocess.DEVNULL, timeout=300)
        if not matches(expected, done.stdout):
            return f'{command}\nprints\n{done.stdout}{done.stderr[-2000:]}'
    return None


def compile_(text, compiler):
    if any('\n' + text in source for source in EXAMPLES): return None
    if 'main(' not in text:
        text = f'{PRELUDE}[[maybe_unused]] static void example() {{\n{text}}}\n'
    done = subprocess.run(
        [compiler, '-std=c++20', '-fsyntax-only', '-Wall', '-Wextra', '-Werror', '-x', 'c++', '-',
         f'-I{PROJECT}/include', f'-I{PROJECT}/platform/include'],
        input=text, capture_output=True, text=True, check=False)
    return done.stderr or None


def check_json(text):
    try:
        json.loads(text)
    except ValueError as error:
        return str(error)
    return None


def make_folder(folder, program):
    """Links to what the project has, but for what commands write to or what has to be built."""
    for entry in PROJECT.iterdir():
        if entry.name not in ('build', 'samples', 'scripts') and not entry.name.startswith('.git'):
            (folder / entry.name).symlink_to(entry)
    shutil.copytree(PROJECT / 'samples', folder / 'samples')
    (folder / 'scripts').mkdir()
    for entry in (PROJECT / 'scripts').iterdir():
        if entry.name != 'inspect': (folder / 'scripts' / entry.name).symlink_to(entry)
    (folder / 'scripts/inspect').symlink_to(program)


def check_page(page, options):
    """The complaints about a page's blocks."""
    with tempfile.TemporaryDirectory() as name:
        folder = options.folder or Path(name)
        if not options.folder: make_folder(folder, options.program)
        for line, language, file, text in blocks_of(page):
            where = f'{page.relative_to(PROJECT)}:{line}'
            if file: (folder / file).write_text(text)
            if language == 'sql': continue
            if language in SHOWN and not file: print(f'{where}: {language}: not checked')
            checks = {'': lambda: run(text, folder), 'cpp': lambda: compile_(text, options.compiler),
                      'json': lambda: check_json(text)} | dict.fromkeys(SHOWN, lambda: None)
            wrong = checks.get(language, lambda: f'unknown language {language}')()
            if wrong: yield f'{where}: {wrong}'


def main():
    parser = argparse.ArgumentParser()
    where = parser.add_mutually_exclusive_group(required=True)
    where.add_argument('--program', type=lambda path: Path(path).resolve())
    where.add_argument('--folder', type=lambda path: Path(path).resolve())
    parser.add_argument('--compiler', required=True)
    parser.add_argument('pages', type=lambda path: Path(path).resolve(), nargs='+')
    options = parser.parse_args()
    wrong = [complaint for page in options.pages
             for complaint in check_page(page, options)]
    print(*wrong, sep='\n')
    return 1 if wrong else 0


if __name__ == '__main__':
    sys.exit(main())
