"""Reads what a device says of its decoders: a folder of XML lists, one such list, or what its
service prints."""

import re
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass, field
from pathlib import Path

TRUE = 'true', 'yes', '1'
ROOT_FILES = 'media_codecs.xml', 'media_codecs_c2.xml', 'media_codecs_performance*.xml'


@dataclass
class Decoder:
    name: str
    type: str
    counts: bool = True  # for an ordinary file
    software: bool = False
    swaps: bool = False
    # By name: (from, to), for size two of them, for sample rates a list; None is without end.
    limits: dict = field(default_factory=dict)
    pairs: list = field(default_factory=list)  # of profile and level


def pair(text):  # "16x16"
    return tuple(int(number) for number in text.split('x'))


def span(text):  # "1-60" or "60"
    first, _, last = text.partition('-')
    return int(first), int(last or first)


def size_limit(low, high):
    return tuple(zip(pair(low), pair(high))) if low else tuple((1, side) for side in pair(high))


def spans(text):
    return [span(part.strip()) for part in text.split(',') if part.strip()]


# --- XML ---

def xml_limit(element):
    """Name and value of one that judges a file; else None."""
    name, get = element.get('name'), element.get
    if name == 'size': return name, size_limit(get('min'), get('max'))
    if name in ('alignment', 'block-size'): return name, pair(get('value'))
    if name == 'sample-rate': return name, spans(get('ranges') or get('range'))
    if name not in ('block-count', 'blocks-per-second', 'frame-rate', 'bitrate', 'channel-count'):
        return None
    if get('range'): return name, span(get('range'))
    return name, (int(get('min', 0)), int(get('max')))


def is_on(feature):
    return feature.get('value', 'true') in TRUE


def take_children(decoder, element):
    for child in element:
        name = child.get('name', '')
        if child.tag == 'Limit':
            limit = xml_limit(child)
            if limit: decoder.limits[limit[0]] = limit[1]
        elif child.tag == 'Feature' and name == 'can-swap-width-height':
            decoder.swaps = is_on(child)
        elif child.tag == 'Feature' and name in ('secure-playback', 'tunneled-playback'):
            if child.get('required') in TRUE: decoder.counts = False
        elif child.tag == 'Attribute' and name == 'software-codec':
            decoder.software = True


def types_of(element):
    """Each type with the elements that speak of it."""
    if element.get('type'): yield element.get('type'), [element]
    for child in element.findall('Type'):
        yield child.get('name'), [element, child]


class XmlList:
    def __init__(self, path):
        self.decoders, self.domains, self.missing, self.read = [], {}, [], set()
        files = [path] if path.is_file() else [
            file for pattern in ROOT_FILES for file in sorted(path.glob(pattern))]
        for file in files:
            if file.resolve() not in self.read: self.take_file(file, False)
        for decoder, domain in self.decoders:
            if domain and not self.domains.get(domain, False): decoder.counts = False

    def take_file(self, file, among_decoders):
        self.read.add(file.resolve())
        root = ElementTree.fromstring(file.read_bytes())
        self.take_section(root, file, among_decoders)

    def take_section(self, section, file, among_decoders):
        for element in section:
            if element.tag == 'Include':
                included = file.parent / element.get('href')
                if included.exists(): self.take_file(included, among_decoders)
                else: self.missing.append(element.get('href'))
            elif element.tag == 'Decoders': self.take_section(element, file, True)
            elif element.tag == 'Settings': self.take_settings(element)
            elif element.tag == 'MediaCodec' and among_decoders: self.take_codec(element)

    def take_settings(self, settings):
        for domain in settings.findall('Domain'):
            self.domains[domain.get('name')] = domain.get('enabled', 'true') in TRUE

    def take_codec(self, element):
        for kind, parts in types_of(element):
            if element.get('update') in TRUE: self.update(element.get('name'), kind, parts)
            else: self.add(element, kind, parts)

    def add(self, element, kind, parts):
        decoder = Decoder(element.get('name'), kind)
        decoder.counts = element.get('enabled', 'true') in TRUE
        for part in parts: take_children(decoder, part)
        self.decoders.append((decoder, element.get('domain')))

    def update(self, name, kind, parts):
        for decoder, _ in self.decoders:
            if (decoder.name, decoder.type) == (name, kind):
                for part in parts: take_children(decoder, part)


# --- what the service prints ---

DETAILS = {
    'size-range': ('size', lambda text: size_limit(*text.split('-'))),
    'alignment': ('alignment', pair), 'block-size': ('block-size', pair),
    'block-count-range': ('block-count', span),
    'blocks-per-second-range': ('blocks-per-second', span),
    'frame-rate-range': ('frame-rate', span), 'bitrate-range': ('bitrate', span),
    'max-channel-count': ('channel-count', lambda text: (0, int(text))),
    'sample-rate-ranges': ('sample-rate', spans),
}


def dumped_decoder(kind, name, block):
    decoder = Decoder(name, kind, software=bool(re.search(r'software-only:\s*1', block)))
    profiles = re.search(r'profile/levels\s*:\s*\[(.*?)\]', block, re.S)
    if profiles:
        numbers = re.sub(r'\([^)]*\)', '', profiles[1])  # the words in brackets have some too
        decoder.pairs = [(int(p), int(l)) for p, l in re.findall(r'(\d+)/(\d+)', numbers)]
    for key, value in re.findall(r'(?:string|int32_t)\s+([\w-]+)\s*=\s*"?([^"\n]*)"?', block):
        if key in DETAILS:
            limit, read = DETAILS[key]
            decoder.limits[limit] = read(value)
        elif key == 'feature-can-swap-width-height': decoder.swaps = value == '1'
        elif key in ('feature-secure-playback', 'feature-tunneled-playback') and value == '1':
            decoder.counts = False
    return decoder


def dumped_decoders(text):
    heads = re.compile(r"Media type '([^']+)'|(Decoder|Encoder) \"([^\"]+)\" supports")
    found = list(heads.finditer(text))
    kind, decoders = None, []
    for head, following in zip(found, found[1:] + [None]):
        end = following.start() if following else len(text)
        if head[1]: kind = head[1]
        elif head[2] == 'Decoder':
            decoders.append(dumped_decoder(kind, head[3], text[head.end():end]))
    return decoders


def read_device(path):
    path = Path(path)
    if path.is_file() and b'Media type' in path.read_bytes():
        return dumped_decoders(path.read_text())
    return [decoder for decoder, _ in XmlList(path).decoders]
