"""The broken files: what is done to a good one, and the verdict that the result must get, judged by
hand. Whoever disagrees has to say why here."""

import random
import struct
from dataclasses import dataclass, field

UNREADABLE = 'unreadable',
NO_PARSER = 'no-parser',
DOES_NOT_PLAY = 'does-not-play',
PLAYS = 'plays',
IN_PART = 'plays-in-part',
BROKEN = 'codec-data-broken',
NOTHING = 'nothing-readable',
NOT_SUPPORTED = 'not-supported',


@dataclass(frozen=True)
class Broken:
    name: str
    source: str  # a good file; empty for none
    damage: object  # bytes to bytes
    file: tuple  # its verdicts that are right
    tracks: dict = field(default_factory=dict)  # by index; the verdicts that are right


# Boxes that hold boxes, behind this many bytes of their own.
HOLDERS = {b'moov': 0, b'trak': 0, b'mdia': 0, b'minf': 0, b'stbl': 0, b'stsd': 8, b'avc1': 78,
           b'hvc1': 78, b'hev1': 78, b'mp4a': 28}


def boxes(content, begin=0, end=None):
    """Name, begin and end with the header; ISO/IEC 14496-12 4.2."""
    end = len(content) if end is None else end
    while begin + 8 <= end:
        size, name = struct.unpack_from('>I4s', content, begin)
        yield name, begin, begin + size
        if name in HOLDERS: yield from boxes(content, begin + 8 + HOLDERS[name], begin + size)
        begin += size


def place(content, fourcc):
    return next(begin for name, begin, _ in boxes(content) if name == fourcc)


def box(content, fourcc):
    """The begin and the end of what is in the box."""
    return next((begin + 8, end) for name, begin, end in boxes(content) if name == fourcc)


def put(content, at, data):
    return content[:at] + data + content[at + len(data):]


def renamed(*names):
    def damage(content):
        for old, new in zip(names[::2], names[1::2]):
            content = put(content, place(content, old) + 4, new)
        return content
    return damage


def cut_behind(fourcc, share):
    def damage(content):
        begin, end = box(content, fourcc)
        return content[:begin + int((end - begin) * share)]
    return damage


def cut_before(fourcc):
    return lambda content: content[:place(content, fourcc)]


def in_box(fourcc, at, data):
    return lambda content: put(content, box(content, fourcc)[0] + at, data)


def with_record(build):
    """An avcC of the same size, zeros behind what is built from the old one's SPS and PPS
    (ISO/IEC 14496-15 5.3.3.1.2)."""
    def damage(content):
        begin, end = box(content, b'avcC')
        old = content[begin:end]
        sps_end = 8 + struct.unpack_from('>H', old, 6)[0]
        sps, pps = old[6:sps_end], old[sps_end + 1:]
        pps = pps[:2 + struct.unpack_from('>H', pps)[0]]
        return put(content, begin, build(old[:5], sps, pps).ljust(end - begin, b'\0'))
    return damage


def no_sps(head, sps, pps):
    return head + b'\xe0\x01' + pps


def no_pps(head, sps, pps):
    return head + b'\xe1' + sps + b'\0'


def nonsense_sps(head, sps, pps):
    return head + b'\xe1' + sps[:3] + b'\xff' * (len(sps) - 3) + b'\x01' + pps


def sps_too_long(head, sps, pps):
    return head + b'\xe1\xff\xff' + sps[2:] + b'\x01' + pps


def nal_lengths(content):
    """Each NAL unit's length of the first sample and what follows it becomes 4 GiB."""
    begin, end = box(content, b'mdat')
    return put(content, begin, b'\xff\xff\xff\xff' * ((end - begin) // 4))


def noise_behind(count):
    return lambda content: content[:count] + random.Random(7).randbytes(50000)


def replaced(old, new, count=1):
    def damage(content):
        assert content.count(old) == count, (old, content.count(old))
        return content.replace(old, new)
    return damage


def is_all(content):
    return lambda _: content


# ISO/IEC 15948: one grey pixel.
PNG = bytes.fromhex('89504e470d0a1a0a0000000d4948445200000001000000010800000000'
                    '3a7e9b550000000a49444154789c6368000000820081dd436af400000000'
                    '49454e44ae426082')
TEXT = b'Dear all,\n\nthe film is on the other disk.\n' * 40
PLAYLIST = b'#EXTM3U\n#EXT-X-TARGETDURATION:5\n#EXTINF:5,\nfirst.ts\n#EXT-X-ENDLIST\n'

AVC, AAC, MKV = 'avc_high_40.mp4', 'aac_lc.m4a', 'avc_main_30.mkv'
ONE_AVC = 'avc_portrait.mp4'

BROKEN_FILES = [
    # no file of any kind
    Broken('empty.mp4', '', is_all(b''), UNREADABLE),
    Broken('text.mp4', '', is_all(TEXT), UNREADABLE),
    Broken('zeros.mp4', '', is_all(bytes(100000)), UNREADABLE),
    Broken('noise.bin', '', noise_behind(0), UNREADABLE),
    Broken('playlist.m3u8', '', is_all(PLAYLIST), UNREADABLE + NO_PARSER),
    Broken('picture.png', '', is_all(PNG), UNREADABLE + NO_PARSER),
    # the container
    Broken('header_cut.mp4', AVC, lambda content: content[:20], UNREADABLE),
    Broken('noise_behind_header.mp4', AVC, noise_behind(32), UNREADABLE),
    Broken('moov_missing.mp4', AVC, cut_before(b'moov'), UNREADABLE),
    Broken('moov_cut.mp4', AVC, cut_behind(b'moov', .5),
           UNREADABLE + DOES_NOT_PLAY + IN_PART),
    Broken('mdat_cut.mp4', 'avc_faststart.mp4', cut_behind(b'mdat', .5), PLAYS + IN_PART,
           {0: PLAYS}),
    Broken('mdat_missing.mp4', 'avc_faststart.mp4', cut_before(b'mdat'), DOES_NOT_PLAY,
           {0: NOTHING}),
    Broken('no_fragments.mp4', 'avc_fragmented.mp4', cut_before(b'moof'), DOES_NOT_PLAY,
           {0: NOTHING, 1: NOTHING}),
    Broken('stts_empty.mp4', ONE_AVC, in_box(b'stts', 4, bytes(4)), DOES_NOT_PLAY, {0: NOTHING}),
    Broken('stts_huge.mp4', ONE_AVC, in_box(b'stts', 4, b'\x7f\xff\xff\xff'),
           DOES_NOT_PLAY + UNREADABLE, {0: NOTHING}),
    Broken('stsz_zero.mp4', ONE_AVC, in_box(b'stsz', 8, bytes(4)), DOES_NOT_PLAY + UNREADABLE,
           {0: NOTHING}),
    Broken('header_cut.mkv', MKV, lambda content: content[:24], UNREADABLE),
    Broken('header_cut.flac', 'flac.flac', lambda content: content[:6], UNREADABLE),
    # the codec
    Broken('unknown_fourcc.mp4', ONE_AVC, renamed(b'avc1', b'zzz1'), DOES_NOT_PLAY,
           {0: NOT_SUPPORTED}),
    Broken('unknown_codec_id.mkv', MKV, replaced(b'V_MPEG4/ISO/AVC', b'V_MPEG9/ISO/AVC'),
           DOES_NOT_PLAY, {0: NOT_SUPPORTED}),
    Broken('avcc_missing.mp4', ONE_AVC, renamed(b'avcC', b'free'), DOES_NOT_PLAY, {0: BROKEN}),
    Broken('avcc_version.mp4', ONE_AVC, in_box(b'avcC', 0, b'\x07'), DOES_NOT_PLAY, {0: BROKEN}),
    Broken('avcc_no_sps.mp4', ONE_AVC, with_record(no_sps), DOES_NOT_PLAY, {0: BROKEN}),
    Broken('avcc_no_pps.mp4', ONE_AVC, with_record(no_pps), DOES_NOT_PLAY, {0: BROKEN}),
    Broken('avcc_nonsense.mp4', ONE_AVC, with_record(nonsense_sps), DOES_NOT_PLAY, {0: BROKEN}),
    Broken('avcc_sps_too_long.mp4', ONE_AVC, with_record(sps_too_long), DOES_NOT_PLAY,
           {0: BROKEN}),
    Broken('avcc_zeros.mp4', ONE_AVC, in_box(b'avcC', 0, bytes(36)), DOES_NOT_PLAY, {0: BROKEN}),
    Broken('hvc1_with_avcc.mp4', ONE_AVC, renamed(b'avc1', b'hvc1', b'avcC', b'hvcC'),
           DOES_NOT_PLAY, {0: BROKEN}),
    Broken('hvcc_missing.mp4', 'hevc_main_hev1.mp4', renamed(b'hvcC', b'free'), DOES_NOT_PLAY,
           {0: BROKEN}),
    Broken('nal_lengths.mp4', ONE_AVC, nal_lengths, DOES_NOT_PLAY, {0: BROKEN + NOTHING}),
    Broken('esds_missing.m4a', AAC, renamed(b'esds', b'free'), DOES_NOT_PLAY, {0: BROKEN}),
    Broken('avc_in_part.mp4', AVC, renamed(b'avcC', b'free'), IN_PART, {0: BROKEN, 1: ('plays', 'plays-in-software')}),
    # RFC 7845 5.1: the words are what it is known by
    Broken('opus_head.mkv', 'vp9_0.webm', replaced(b'OpusHead', b'SnufHead'), IN_PART,
           {0: PLAYS, 1: BROKEN}),
    # RIFF WAVE: the rate, and channels and block size
    Broken('rate_0.wav', 'pcm_16.wav', lambda content: put(content, 24, bytes(4)),
           DOES_NOT_PLAY + UNREADABLE, {0: BROKEN + NOTHING}),
    Broken('channels_0.wav', 'pcm_16.wav', lambda content: put(content, 22, bytes(2)),
           DOES_NOT_PLAY + UNREADABLE, {0: BROKEN + NOTHING}),
    Broken('no_samples.wav', 'pcm_16.wav',
           lambda content: content[:content.index(b'data') + 4] + bytes(4),
           DOES_NOT_PLAY + UNREADABLE,
           {0: NOTHING}),
]


def write_all(out):
    for row in BROKEN_FILES:
        content = (out / row.source).read_bytes() if row.source else b''
        (out / ('broken_' + row.name)).write_bytes(row.damage(content))
