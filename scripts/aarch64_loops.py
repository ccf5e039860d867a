"""The innermost loops of functions compiled for AArch64, from the listing of a disassembler."""
import collections
import re
import subprocess

OBJDUMP = "aarch64-linux-gnu-objdump"
BLOCK = 32  # samples, kBlockSamples of Helper/pcm/Samples.h

Instruction = collections.namedtuple("Instruction", "at mnemonic operands target")


def functions(library, objdump=OBJDUMP):
    """The instructions of each function in a static or unstripped shared library, by its name."""
    command = [objdump, "-d", "-C", "--no-show-raw-insn", library]
    listing = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    for part in re.split(r"\n(?=[0-9a-f]+ <)", listing):
        head = re.match(r"[0-9a-f]+ <(.*)>:\n", part)
        if not head:
            continue
        code = []
        for at, mnemonic, operands in re.findall(r"^ *([0-9a-f]+):\t(\S+)(?:\t(.*))?", part, re.M):
            operands = re.split(r"\s+(?://|<)", operands)[0]
            jumps = re.match(r"b$|b\.|cbn?z|tbn?z", mnemonic)
            target = int(re.split(r"[ ,]+", operands)[-1], 16) if jumps else None
            code.append(Instruction(int(at, 16), mnemonic, operands, target))
        yield head.group(1), code


def vectors_read(loop):
    """How many vectors are read from memory."""
    return sum(len(re.findall(r"\b[qv]\d+", i.operands)) for i in loop
               if re.match(r"ldu?[rp]?\d?$", i.mnemonic))


def shortest_way_round(code, start):
    """The fewest instructions from one back to itself, or none."""
    place = {line.at: i for i, line in enumerate(code)}
    came_from, reached = {}, collections.deque([place[start]])
    while reached:
        here = reached.popleft()
        line = code[here]
        ways = [place.get(line.target)] if line.target is not None else []
        if line.mnemonic not in ("b", "ret") and here + 1 < len(code):
            ways.append(here + 1)
        for way in ways:
            if way is None or way in came_from:
                continue
            came_from[way] = here
            reached.append(way)
            if code[way].at == start:
                loop = [code[here]]
                while loop[0].at != start:
                    here = came_from[here]
                    loop.insert(0, code[here])
                return loop
    return []


def loops_of(code):
    """What runs again and again, taken the shortest way round, by how many vectors it reads."""
    starts = {line.target for line in code if line.target is not None and line.target <= line.at}
    loops = [shortest_way_round(code, start) for start in sorted(starts)
             if any(line.at == start for line in code)]
    return sorted(loops, key=vectors_read)


def conversions(library, names, objdump=OBJDUMP):
    """The loop over blocks of samples of each conversion, by its name in Helper/pcm/Convert.h, and
    the samples of a pass, which reads one block or several."""
    sizes = dict(re.findall(r"^ *\{k(\w+), +k\w+, +k\w+, +(\d), \d,",
                            names.with_name("Samples.h").read_text(), re.M))
    enumerators = re.search(r"enum class Conversion \{(.*?)\}", names.read_text(), re.S).group(1)
    order = re.findall(r"^ *k(\w+),", enumerators, re.M)
    found = {}
    for function, code in functions(library, objdump):
        number = re.search(r"android::pcm::convertBlocks<.*Conversion\)(\d+)>", function)
        if number:
            name, loop = order[int(number.group(1))], (loops_of(code) or [[]])[-1]
            found[name] = loop, max(16 * vectors_read(loop) // int(sizes[name]), BLOCK)
    return {name: found.get(name, ([], BLOCK)) for name in order}
