"""The faults that scripts/mutate makes of a C++ source, token by token."""
import re

# A fault is never there while constants are worked out.
SWITCH = """
#include <type_traits>
extern "C" int zr_fault;
extern "C" void zr_reached();
namespace zr {
constexpr bool on(int number) {
    if (std::is_constant_evaluated() || zr_fault != number) return false;
    zr_reached();
    return true;
}
}
"""
CHOICE = """
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
extern "C" { int zr_fault; }
extern "C" void zr_reached() {
    static const bool noted = close(creat("reached", 0600)) == 0;
    (void)noted;
}
[[gnu::constructor(101)]] static void choose() {
    if (const char* number = std::getenv("ZR_FAULT")) zr_fault = std::atoi(number);
}
"""
TOKEN = re.compile(r"""(?P<skip>//[^\n]*|/\*.*?\*/|^[ ]*\#(?:[^\n]*\\\n)*[^\n]*|\s+)
    |(?P<text>"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])*')
    |(?P<number>\b(?:0[xX][0-9A-Fa-f']+|\d[\d']*)(?![\w.])|\b\d[\dA-Fx.]*(?:p-?\d+)?f\b)
    |(?P<word>[A-Za-z_]\w*)
    |(?P<sign><=>|<<=|>>=|->|::|\+\+|--|[-+*/%&|^<>=!]=|&&|\|\||<<|>>|.)""", re.X | re.M | re.S)
BINARY = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",),
          "!=": ("==",), "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",), "%": ("*",), "&&": ("||",),
          "||": ("&&",), "<<": (">>",), ">>": ("<<",), "&": ("|",), "|": ("&",), "^": ("|",),
          "+=": ("-=",), "-=": ("+=",), "|=": ("=",), "&=": ("=",), "<<=": (">>=",), ">>=": ("<<=",)}
UNARY = {"!": "", "~": "", "true": "false", "false": "true"}
ROW = re.compile(r"^( *\{+)([^,{}\n]+)(,.*)$")
OWN_LINE = re.compile(r" *(static_assert|template|using|namespace|constexpr \w+ \w+\(.*\);)")


def without_other_processors(text):
    """The text with blanks for what is compiled for another processor."""
    kept, hidden = [], False
    for line in text.splitlines(keepends=True):
        if re.match(r"#(el)?if", line):
            hidden = "__aarch64__" in line
        elif re.match(r"#(else|endif)", line):
            hidden = False
        kept.append(" " * (len(line) - 1) + "\n" if hidden else line)
    return "".join(kept)


def spans(tokens):
    """(kind, first, last) of the statements, and of the conditions of if, while and for."""
    first, opened = None, []
    for i, (_, token, _) in enumerate(tokens):
        if token in "([":
            opened.append(i)
        elif token in ")]" and opened:
            begun = opened.pop()
            if not opened and tokens[begun - 1][1] in ("if", "for", "while", "constexpr"):
                parts = [begun] + [k for k in range(begun, i) if tokens[k][1] == ";"] + [i]
                if len(parts) == 4:
                    yield "value", parts[1] + 1, parts[2]
                    yield "effect", parts[2] + 1, i
                elif len(parts) == 2 and tokens[begun - 1][1] in ("if", "while"):
                    declared = [k for k in range(begun, i) if tokens[k][1] == "="]
                    yield "value", (declared or [begun])[0] + 1, i
                first = i + 1
                continue
        if opened:
            continue
        if token == ";" and first is not None and first < i:
            words = tokens[first:i]
            if words[0][1] == "return":
                yield "return", first, i
            elif any(a[0] == b[0] == "word" for a, b in zip(words, words[1:])):
                equals = next((k for k in range(first, i) if tokens[k][1] == "="), None)
                if equals and not {"constexpr", "static", "using", "operator"} & {w[1] for w in words}:
                    yield "value", equals + 1, i
            elif words[-1][1] == ")" or any(w[1][-1] == "=" or w[1] in ("++", "--") for w in words):
                yield "statement", first, i
        if token in "{};:" or token == "else":
            first = i + 1


def tokens_of(text):
    text = without_other_processors(text)
    return [(m.lastgroup, m[0], m.start()) for m in TOKEN.finditer(text) if m.lastgroup != "skip"]


def places(text):
    """(begin, end, replacement) of every fault."""
    tokens = tokens_of(text)
    for i, (kind, token, at) in enumerate(tokens):
        line = text[text.rfind("\n", 0, at) + 1:text.find("\n", at)]
        end = at + len(token)
        if OWN_LINE.match(line):
            continue
        if kind == "number":
            if token.endswith("f"):
                yield at, end, f"({token} * 2)"
                continue
            value = int(token.replace("'", ""), 16 if token[:2] in ("0x", "0X") else 10)
            shown = "0x{:X}" if token[:2] == "0x" else "{}"
            yield at, end, shown.format(value + 1)
            if value > 0:
                yield at, end, shown.format(value - 1)
        elif kind == "text" and len(token) > 2 and "extern" not in line:
            last = token[-2]
            yield at, end, token[:-2] + (chr(ord(last) ^ 1) if last.isalnum() else "?") + token[-1]
        elif token in UNARY:
            yield at, end, UNARY[token]
        elif token in BINARY and text[at - 1] in " \n" and text[end] in " \n":
            for other in BINARY[token]:
                yield at, end, other
        if token == "if" and tokens[i + 1][1] == "(":
            start, level = tokens[i + 1][2], 0
            for end in range(start, len(text)):
                level += (text[end] == "(") - (text[end] == ")")
                if level == 0:
                    break
            condition = text[start + 1:end]
            # What the row above did not turn round already.
            if not re.search(r";|^!|[=!]=| [<>] ", condition) or re.search(r"&&|\|\|", condition):
                yield start + 1, end, f"!({condition})"
    for kind, first, last in spans(tokens):
        if kind == "return":
            yield tokens[first][2], tokens[last][2], "return {}" if last > first + 1 else ""
        elif kind == "statement":
            yield tokens[first][2], tokens[last][2], ""
    lines, at = text.split("\n"), 0
    for here, below in zip(lines, lines[1:]):
        a, b = ROW.match(here), ROW.match(below)
        if a and b and a[2] != b[2]:
            yield at, at + len(here) + 1 + len(below), "\n".join(
                (a[1] + b[2] + a[3], b[1] + a[2] + b[3]))
        at += len(here) + 1


def faults(file, text):
    """Each fault: what it is called, the text with it, and its place."""
    for begin, end, new in places(text):
        old = text[begin:end]
        shown = text[text.rfind("\n", 0, begin) + 1:begin] + f"[{old} -> {new}]"
        shown = " ".join((shown + text[end:text.find("\n", end)]).split())
        yield {"id": f"{file}:{text.count(chr(10), 0, begin) + 1}: {shown}", "file": file,
               "text": text[:begin] + new + text[end:], "place": (begin, end, new)}


def all_in_one(text, numbered, without):
    """The text with all the faults that can be chosen when it runs, and the numbers of those."""
    tokens, chosen, shift = tokens_of(text), {}, 0

    def plain(part):
        return " ".join(m[0] for m in TOKEN.finditer(part) if m.lastgroup != "skip")
    for kind, first, last in list(spans(tokens)):
        begin, end = tokens[first + (kind == "return")][2], tokens[last][2]
        old, row = text[begin + shift:end + shift], text.count("\n", 0, begin + shift)
        inside = [(n, f["place"]) for n, f in numbered if begin <= f["place"][0] and f["place"][1] <= end]
        if not inside or row in without or "#" in old or old.lstrip()[:1] in ("{", ""):
            continue
        cast = "(void)" if kind in ("statement", "effect") else ""
        new = "("
        for number, (at, to, other) in inside:
            changed = old[:at - begin] + other + old[to - begin:]
            new += f"zr::on({number}) ? {cast}({plain(changed) or '0'}) : "
            chosen[number] = row
        new += f"{cast}({plain(old)}))" + "\n" * old.count("\n")
        text = text[:begin + shift] + new + text[end + shift:]
        shift += len(new) - len(old)
    return text, chosen
