"""The rooms of the library, and the programs of its own tests."""
import re

# By the paths of files; the first that matches counts.
ROOMS = (
    ("video", r"Avc|Hevc|Nal|KeyFrame|Vc1|VideoCodec|PictureSize"),
    ("tags", r"ParserLibrary|Tags|/vorbis/"),
    ("pcm", r"/pcm/|Sample|wavdump"),
    ("components", r"MediaCodecHelper|/omx/"),
    ("selection", r"Support|DecoderQuery|LegacyBridge|vocabulary|TrackMeta"),
    ("base", r"/base/"),
    ("audio", r""),
)
PROGRAMS = r"^(replay_\w+|(?:unit|model|tag_failure|wavdump)_tests|at_exit|sweeps): phony"


def room_of(file):
    return next(name for name, pattern in ROOMS if re.search(pattern, file))
