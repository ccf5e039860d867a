"""What a track asks of a decoder, as ffprobe and the bytes of its codec data tell it. Profiles and
levels are numbers of the public class CodecProfileLevel."""

import json
import re
import subprocess
from dataclasses import dataclass, field
from fractions import Fraction


@dataclass
class Facts:
    kind: str = ''
    width: int = 0  # 0 = not known, and so on
    height: int = 0
    frame_rates: tuple = ()  # the average, the base
    bit_rate: int = 0
    sample_rate: int = 0
    channels: int = 0
    profile: object = None  # None = not known; NO_NUMBER = no list can hold it
    level: object = None
    high_tier: bool = False
    stream: dict = field(default_factory=dict, repr=False)  # ffprobe's own


NO_NUMBER = -1
VARIABLE = 104857200  # of MPEG-1: 0x3FFFF units of 400 bits a second, ISO/IEC 11172-2 2.4.3.2
# RFC 4867 5.3: an octet before each frame and bits behind it, 12,800 for 12,200 a second. Decoders
# name the codec's own rates.
STORED_WITH_HEADS = 'amr_nb', 'amr_wb'

AVC_PROFILES = {
    'Baseline': 1, 'Main': 2, 'Extended': 4, 'High': 8, 'High 10': 0x10, 'High 10 Intra': 0x10,
    'High 4:2:2': 0x20, 'High 4:2:2 Intra': 0x20, 'High 4:4:4 Predictive': 0x40,
    'High 4:4:4 Intra': 0x40, 'Constrained Baseline': 0x10000}
AVC_LEVELS = [10, 9, 11, 12, 13, 20, 21, 22, 30, 31, 32, 40, 41, 42, 50, 51, 52, 60, 61, 62]
HEVC_PROFILES = {'Main': 1, 'Main 10': 2, 'Main Still Picture': 4}
HEVC_LEVELS = [30, 60, 63, 90, 93, 120, 123, 150, 153, 156, 180, 183, 186]
SIMPLE_LEVELS = {8: 1, 9: 2, 1: 4, 2: 8, 3: 0x10, 4: 0x40, 5: 0x80, 6: 0x100}
ADVANCED_SIMPLE_LEVELS = {0: 1, 1: 4, 2: 8, 3: 0x10, 4: 0x20, 5: 0x80, 7: 0x18}
MPEG2_PROFILES = {'Simple': 0, 'Main': 1, '4:2:2': 2, 'SNR Scalable': 3, 'Spatially Scalable': 4,
                  'High': 5}
MPEG2_LEVELS = {10: 0, 8: 1, 6: 2, 4: 3}
MPEG2_422_LEVELS = {5: 1, 2: 3}  # ISO/IEC 13818-2 table 8-4
VP9_LEVELS = [10, 11, 20, 21, 30, 31, 40, 41, 50, 51, 52, 60, 61, 62]
AAC_PROFILES = {'Main': 1, 'LC': 2, 'SSR': 3, 'LTP': 4, 'HE-AAC': 5, 'LD': 23, 'HE-AACv2': 29,
                'ELD': 39}


def extradata(stream):
    """From ffprobe's hex dump."""
    rows = re.findall(r'^[0-9a-f]{8}: ((?:[0-9a-f]{2,4} )+)', stream.get('extradata', ''), re.M)
    return bytes.fromhex(''.join(rows))


def parameter_set(data, is_wanted):
    """The bytes behind the start code of the first NAL unit wanted, unescaped."""
    for unit in re.split(b'\0\0\1', data)[1:]:
        if is_wanted(unit): return unit.replace(b'\0\0\3', b'\0\0')
    return b''


def avc(stream, facts):
    data = extradata(stream)
    sps = data if data[:1] == b'\1' else parameter_set(data, lambda unit: unit[0] & 31 == 7)
    facts.profile = AVC_PROFILES.get(stream.get('profile'), NO_NUMBER)
    level = stream['level']
    # ITU-T H.264 7.4.2.1.1: constraint_set3_flag, below High
    if level == 11 and len(sps) > 3 and sps[2] & 0x10 and sps[1] in (66, 77, 88): level = 9
    facts.level = 1 << AVC_LEVELS.index(level) if level in AVC_LEVELS else NO_NUMBER


def hevc(stream, facts):
    data = extradata(stream)
    if data[:1] == b'\1': tier = data[1:2]
    else: tier = parameter_set(data, lambda unit: unit[0] >> 1 == 33)[3:4]
    facts.high_tier = bool(tier and tier[0] & 0x20)
    facts.profile = HEVC_PROFILES.get(stream.get('profile'), NO_NUMBER)
    if stream['level'] in HEVC_LEVELS:
        facts.level = 1 << 2 * HEVC_LEVELS.index(stream['level']) + facts.high_tier


def mpeg4(stream, facts):
    advanced = stream.get('profile') == 'Advanced Simple Profile'
    facts.profile = {'Simple Profile': 1, 'Advanced Simple Profile': 0x8000}.get(
        stream.get('profile'))
    facts.level = (ADVANCED_SIMPLE_LEVELS if advanced else SIMPLE_LEVELS).get(stream['level'])


def mpeg2(stream, facts):
    facts.profile = MPEG2_PROFILES.get(stream.get('profile'))
    levels = MPEG2_422_LEVELS if facts.profile == 2 else MPEG2_LEVELS
    facts.level = levels.get(stream['level'])


def vp9(stream, facts):
    facts.profile = {f'Profile {i}': 1 << i for i in range(4)}.get(stream.get('profile'))
    if stream.get('vpcc'): facts.level = 1 << VP9_LEVELS.index(stream['vpcc'][1])


def av1(stream, facts):
    ten = '10' in stream.get('pix_fmt', '')
    facts.profile = (2 if ten else 1) if stream.get('profile') == 'Main' else NO_NUMBER
    data = extradata(stream)
    if len(data) > 1: facts.level = 1 << (data[1] & 31)  # av1C: seq_level_idx_0
    elif stream['level'] >= 0: facts.level = 1 << stream['level']


def aac(stream, facts):
    facts.profile = AAC_PROFILES.get(stream.get('profile'))
    # ISO/IEC 14496-3 1.6.2.1: the sync extension, and whether SBR is there
    if re.search(b'^..\x56\xe5[\x80-\xff]', extradata(stream), re.S): facts.profile = 5


CODECS = {'h264': avc, 'hevc': hevc, 'mpeg4': mpeg4, 'mpeg2video': mpeg2, 'vp9': vp9, 'av1': av1,
          'aac': aac, 'aac_latm': aac}


def number(stream, key):
    text = stream.get(key, '0')
    return int(text) if str(text).isdigit() else 0


def facts_of(stream):
    facts = Facts(stream.get('codec_type', ''), number(stream, 'width'), number(stream, 'height'))
    rates = [stream.get(key, '0/0') for key in ('avg_frame_rate', 'r_frame_rate')]
    if facts.kind == 'video':
        facts.frame_rates = tuple(Fraction(rate) for rate in rates
                                  if not re.search(r'^0/|/0$', rate))
    facts.bit_rate = number(stream, 'bit_rate')
    if stream.get('codec_name') == 'mpeg1video' and facts.bit_rate == VARIABLE: facts.bit_rate = 0
    if stream.get('codec_name') in STORED_WITH_HEADS: facts.bit_rate = 0
    stream['bit_rate'], facts.stream = facts.bit_rate, stream
    facts.sample_rate, facts.channels = number(stream, 'sample_rate'), number(stream, 'channels')
    if stream.get('codec_name') in CODECS: CODECS[stream['codec_name']](stream, facts)
    return facts


def vpcc(path):
    """Profile and level in ISO BMFF's vpcC, which ffprobe does not show."""
    content = path.read_bytes()
    at = content.find(b'vpcC\1\0\0\0')
    return (content[at + 8], content[at + 9]) if at >= 0 else None


def probe(path):
    """Facts by the stream's index."""
    done = subprocess.run(['ffprobe', '-v', 'error', '-of', 'json', '-show_streams', '-show_data',
                           str(path)], capture_output=True, check=False)
    streams = json.loads(done.stdout or '{}').get('streams', [])
    for stream in streams:
        if stream.get('codec_name') == 'vp9': stream['vpcc'] = vpcc(path)
    return {stream['index']: facts_of(stream) for stream in streams}
