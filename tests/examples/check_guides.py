#!/usr/bin/python3
"""Every C++ block of a guide stands in a source of the examples, line by line.
usage: check_guides.py EXAMPLES GUIDE..."""

import re
import sys
from pathlib import Path


def main():
    examples, *guides = map(Path, sys.argv[1:])
    sources = ['\n' + path.read_text() for path in sorted(examples.rglob('*'))
               if path.suffix in ('.h', '.cpp')]
    stale = []
    for guide in guides:
        blocks = re.findall(r'^```cpp\n(.*?)^```$', guide.read_text(), re.M | re.S)
        if not blocks: stale.append(f'{guide}: no block')
        stale += [f'{guide}: in no source of the examples:\n{block}' for block in blocks
                  if not any('\n' + block in source for source in sources)]
    print(*stale, sep='\n')
    return 1 if stale else 0


sys.exit(main())
