"""Runs the commands that zrinspect proposes for files that do not play, and looks whether what
comes out plays."""

import os
import shlex
import subprocess
import tempfile
from pathlib import Path


def run_command(command, folder):
    words = shlex.split(command)
    if not words or words[0] != 'ffmpeg': return f'no command of ffmpeg: {command}'
    words[1:1] = ['-v', 'error', '-nostdin', '-y']
    done = subprocess.run(words, cwd=folder, capture_output=True, text=True, timeout=120,
                          check=False)
    return '' if done.returncode == 0 else f'{command}: {done.stderr.strip()[-300:]}'


def result_of(commands, source, folder):
    """The file that the commands write, or what was wrong. They know the source as IN or by its
    name."""
    for name in {'IN', source.name}:
        os.symlink(source.resolve(), folder / name)
    before = set(folder.iterdir())
    for command in commands:
        problem = run_command(command, folder)
        if problem: return None, problem
    written = sorted(set(folder.iterdir()) - before, key=lambda path: path.stat().st_mtime_ns)
    return (written[-1], '') if written else (None, 'nothing was written')


def prove_fix(inspect, source, device, fix):
    with tempfile.TemporaryDirectory() as folder:
        result, problem = result_of(fix['commands'], source, Path(folder))
        if problem: return problem
        row = inspect([device], [result])['files'][0]['devices'][0]
        return '' if row['verdict'] == 'plays' else f"{row['verdict']}: {row['reason']}"


def prove_fixes(inspect, report, devices, folder):
    """What is wrong with the proposals of a report about files in the folder, and their number;
    inspect(devices, files) gives a report."""
    problems, count = [], 0
    for file in report['files']:
        for device, row in zip(devices, file.get('devices', [])):
            fix = row.get('fix')
            if not fix: continue
            count += 1
            problem = prove_fix(inspect, folder / file['path'], device, fix)
            if problem: problems.append(f"{file['path']} on {device.stem}: fix: {problem}")
    return problems, count
