#!/usr/bin/python3
"""Which decoder of a device takes a track: a second mind on the rules, for comparison."""

import argparse
from pathlib import Path

import device_lists
import facts as track_facts

AVC_BASELINE, AVC_MAIN, AVC_HIGH = 1, 2, 8
# By type: the profile, and those whose decoders take it too.
CONTAINED = {
    'video/avc': {0x10000: (AVC_BASELINE, AVC_MAIN, AVC_HIGH), 0x80000: (AVC_HIGH,)},
    'video/hevc': {4: (1, 2), 1: (2,)},
    'video/mp4v-es': {1: (0x8000,)},
    'audio/mp4a-latm': {2: (5, 29), 5: (29,)},
}
# Decoded by software that comes with the library.
LIBRARYS_OWN = {f'audio/x-zr-{name}' for name in ('qcelp', 'evrc', 'flac', 'alac', 'aac', 'mpeg')}
HIGH_TIER_LEVELS = 0x2AAAAAA


# By the library's code: the types that it asks the device for. What it never offers, it asks for in
# vain.
ASKED = {
    101: 'video/mpeg2', 102: 'video/mp4v-es', 103: 'video/3gpp', 104: 'video/avc',
    105: 'video/x-ms-wmv', 106: 'video/x-ms-wmv7', 107: 'video/x-ms-wmv8', 108: 'video/x-ms-wmv',
    109: 'video/x-ms-wmv', 110: 'video/x-ms-wmv', 114: 'video/mjpg', 117: 'video/x-vnd.on2.vp8',
    118: 'video/divx311', 119: 'video/mpeg2', 120: 'video/mp4v-es', 121: 'video/theora',
    123: 'video/divx', 124: 'video/divx', 125: 'video/divx', 126: 'video/mp4v-es',
    127: 'video/x-pn-realvideo', 128: 'video/x-vnd.on2.vp9', 129: 'video/hevc', 130: 'video/av01',
    131: 'video/dolby-vision',
    201: 'audio/mp4a-latm', 202: 'audio/mpeg', 203: 'audio/ac3', 204: 'audio/eac3',
    205: 'audio/dts', 206: 'audio/raw', 207: 'audio/flac', 208: 'audio/vorbis',
    210: 'audio/x-zr-ms-wma', 211: 'audio/x-zr-ms-wma', 212: 'audio/x-zr-ms-wma',
    213: 'audio/x-zr-ms-wma', 214: 'audio/zr-wma-voice', 215: 'audio/3gpp',
    216: 'audio/evrc audio/x-zr-evrc', 217: 'audio/qcelp audio/x-zr-qcelp', 218: 'audio/adpcm',
    219: 'audio/mpeg audio/mpeg-l2', 220: 'audio/g711-alaw', 221: 'audio/g711-mlaw',
    222: 'audio/g726', 223: 'audio/x-pn-realaudio', 224: 'audio/amr-wb', 225: 'audio/dts-lbr',
    226: 'audio/mp4a-latm audio/aac-adts', 227: 'audio/mpeg-l1', 228: 'audio/opus',
    229: 'audio/alac audio/x-zr-alac', 233: 'audio/mha1', 234: 'audio/mhm1',
}
OFFERED_ANYWAY = 101, 204, 233, 234
NOT_SUPPORTED = 'audio/notsupport', 'video/notsupport'


def up(value, unit):
    return -(-value // unit)


def takers(kind, profile):
    """Profiles whose decoders take this one; containing goes on from each."""
    found, queue = set(), [profile]
    while queue:
        each = queue.pop()
        if each not in found: queue += CONTAINED.get(kind.lower(), {}).get(each, ())
        found.add(each)
    return found


def outside(span, value):
    return value < span[0] or (span[1] is not None and value > span[1])


def level_fits(kind, facts, level):
    if facts.level is None or kind.lower().startswith('audio/'): return True
    if facts.level < 0: return False
    if kind.lower() == 'video/hevc' and facts.high_tier and not level & HIGH_TIER_LEVELS:
        return False
    return facts.level <= level


def profile_misses(decoder, facts):
    if not decoder.pairs or facts.profile is None: return
    good = takers(decoder.type, facts.profile)
    levels = [level for profile, level in decoder.pairs if profile in good]
    if not levels: yield f'profile {facts.profile:#x} not in {decoder.pairs}'
    elif not any(level_fits(decoder.type, facts, level) for level in levels):
        yield f'level {facts.level:#x} above {max(levels):#x}'


def size_misses(decoder, width, height):
    limit = decoder.limits.get('size')
    if not limit: return
    turns = [(width, height), (height, width)] if decoder.swaps else [(width, height)]
    if all(outside(limit[0], w) or outside(limit[1], h) for w, h in turns):
        yield f'{width}x{height} outside {limit}'


def rate_misses(name, limit, values):
    if limit and values and all(outside(limit, value) for value in values):
        yield f'{name} {[round(float(value), 3) for value in values]} outside {limit}'


def block_misses(decoder, width, height, rates):
    if 'block-size' not in decoder.limits: return
    size = decoder.limits['block-size']
    blocks = up(width, size[0]) * up(height, size[1])
    yield from rate_misses('blocks', decoder.limits.get('block-count'), [blocks])
    yield from rate_misses('blocks per second', decoder.limits.get('blocks-per-second'),
                           [blocks * rate for rate in rates])


def picture_misses(decoder, facts):
    if not facts.width or not facts.height: return
    alignment = decoder.limits.get('alignment', (1, 1))
    width = up(facts.width, alignment[0]) * alignment[0]
    height = up(facts.height, alignment[1]) * alignment[1]
    yield from size_misses(decoder, width, height)
    yield from block_misses(decoder, width, height, facts.frame_rates)


def misses(decoder, facts):
    """Why the decoder does not take the track."""
    yield from profile_misses(decoder, facts)
    yield from picture_misses(decoder, facts)
    limits = decoder.limits
    yield from rate_misses('frame rate', limits.get('frame-rate'), facts.frame_rates)
    for name, limit, value in (('bit rate', 'bitrate', facts.bit_rate),
                               ('channels', 'channel-count', facts.channels)):
        yield from rate_misses(name, limits.get(limit), [value] if value else [])
    rates = limits.get('sample-rate')
    if rates and facts.sample_rate and all(outside(span, facts.sample_rate) for span in rates):
        yield f'sample rate {facts.sample_rate} outside {rates}'


def counting(decoders, types):
    return [each for each in decoders if each.counts and each.type.lower() in types]


def judge(decoders, code, mime, facts):
    """Verdict, decoder's name, why not. The MIME type is the one that the library stored for a
    device of these decoders; with the codec data it may come back to a track without a decoder."""
    if facts.kind == 'subtitle':
        return ('not-supported' if mime in NOT_SUPPORTED else 'plays'), None, ''
    if code not in ASKED: return 'not-supported', None, ''
    helpful = counting(decoders, ASKED[code].split())
    if not helpful and code not in OFFERED_ANYWAY: return 'no-decoder', None, ''
    if mime in NOT_SUPPORTED: return f'another, as there is {helpful[0].name}', None, ''
    own = counting(decoders, [mime.lower()])
    reasons = []
    for decoder in own:
        problems = list(misses(decoder, facts))
        if not problems:
            in_software = decoder.software or mime in LIBRARYS_OWN
            return ('plays-in-software' if in_software else 'plays'), decoder.name, ''
        reasons.append(f'{decoder.name}: ' + ', '.join(problems))
    return ('beyond-decoder' if own else 'offered-without-decoder'), None, '; '.join(reasons)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('device', help='folder or file')
    parser.add_argument('file', nargs='?', type=Path, help='media file')
    parser.add_argument('mime', nargs='*', help='of each track')
    options = parser.parse_args()
    decoders = device_lists.read_device(options.device)
    if not options.file: print(*decoders, sep='\n')
    else:
        for mime, facts in zip(options.mime, track_facts.probe(options.file).values()):
            print(facts, judge(decoders, 0, mime, facts), sep='\n    ')


if __name__ == '__main__':
    main()
