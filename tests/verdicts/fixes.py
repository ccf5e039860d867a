"""Runs the commands that zrinspect proposes for files that do not play, and looks whether what
comes out plays on the devices for which they were proposed."""

import os
import shlex
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

TIMEOUT = 120  # seconds
# Proposals that are known to fail, and must: whoever mends one takes it out.
KNOWN_TO_FAIL = {
    # The bit rate that nobody knew in Ogg is below the decoder's range once MP4 tells it.
    ('theora.ogv', 'flagship'),
    # Two frames are too short a time for the encoder to come down to the rate.
    ('dv.avi', 'midrange'),
}


def proposals(report, devices):
    """By command: the file's name, and the devices for which it is meant."""
    found = {}
    for file in report['files']:
        for device, row in zip(devices, file.get('devices', [])):
            for command in (row.get('fix') or {'commands': []})['commands']:
                found.setdefault(command, (file['path'], []))[1].append(device)
    return found


def run_command(command, folder):
    """The file that it writes, or what was wrong."""
    words = shlex.split(command)
    if words[0] != 'ffmpeg': return None, 'no command of ffmpeg'
    words[1:1] = ['-v', 'error', '-nostdin', '-threads', '1']
    done = subprocess.run(words, cwd=folder, capture_output=True, text=True, timeout=TIMEOUT,
                          check=False)
    if done.returncode != 0: return None, done.stderr.strip()[-300:]
    return folder / words[-1].removeprefix('file:'), ''


def prove(inspect, files, command, source, devices):
    with tempfile.TemporaryDirectory() as folder:
        os.symlink(files / source, Path(folder) / source)
        result, problem = run_command(command, Path(folder))
        if problem: return [f'{source}: {command}: {problem}']
        rows = inspect(devices, [result])['files'][0]['devices']
        wrong = []
        for device, row in zip(devices, rows):
            is_known = (source, device.stem) in KNOWN_TO_FAIL
            if (row['verdict'] == 'plays') == is_known:
                wrong.append(f"{source} on {device.stem}: {command}: {row['verdict']}: "
                             f"{'known to fail' if is_known else row['reason']}")
        return wrong


def prove_fixes(inspect, names, devices, files):
    """What is wrong with the proposals for these files, how many there are, and the report that
    has them."""
    report = inspect(devices, names, '--fix')
    found = proposals(report, devices)
    with ThreadPoolExecutor(2) as pool:
        problems = pool.map(lambda each: prove(inspect, files, each[0], *each[1]), found.items())
        return sum(problems, []), len(found), report
