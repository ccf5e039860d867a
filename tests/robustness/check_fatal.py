"""Every fatal check in the sources of the library stands in the table of Fatal.cpp.
usage: check_fatal.py SOURCE_DIR"""

import pathlib
import re
import sys

SITE = re.compile(r'\b(?:checked\w+(?:<\w+>)?|checkOk|require|fatal\w*|ZR_CHECK)\(.*')
root = pathlib.Path(sys.argv[1])
table = (root / 'tests/robustness/Fatal.cpp').read_text()
rows = [(json, int(count or 1)) for json, count in
        re.findall(r'^ +\{R"\((.*?)(?:  //.*)?\)"(?:, nullptr, \w+, (\d+))?', table, re.M)]
# What is more exact comes first.
names = sorted((name for name, count in rows for _ in range(count)), key=len, reverse=True)
total, faults = len(names), []
for path in sorted(p for f in ('Helper', 'ParserLibrary') for p in (root / f).rglob('*.*')):
    lines = [] if path.parent.name == 'base' else path.read_text().splitlines()
    for line in (x for x in lines if not x.startswith(('inline ', '//'))):
        for text in (line[m.start():] for m in re.finditer(SITE.pattern[:-2], line)):
            name = next((n for n in names if text.startswith(n)), None)
            names.remove(name) if name else faults.append(f'{path}: not in the table: {text}')
faults += [f'no longer there: {name}' for name in names]
print(*faults, f'| fatal checks | {total} |', sep='\n')
sys.exit(bool(faults))
