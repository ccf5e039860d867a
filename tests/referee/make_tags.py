#!/usr/bin/python3
"""Has other people's programs write tags into files here. NAME.expected is what a format has to
hold then: as mutagen reads it, in texts with the consent of TagLib."""

import base64, ctypes, random, shutil, subprocess
from pathlib import Path

import taglib
from mutagen import File, flac, id3

LATIN1, UTF16, UTF16BE, UTF8 = range(4)
KEYS, TAGLIB, FRAMES = map(str.split, """\
album artist albumartist composer genre title year author cdtracknum discnum compilation
ALBUM ARTIST ALBUMARTIST COMPOSER GENRE TITLE DATE LYRICIST TRACKNUMBER DISCNUMBER COMPILATION
TALB TPE1 TPE2 TCOM TCON TIT2 TYER TEXT TRCK TPOS TCMP""".splitlines())
FIELDS = {key.upper(): key for key in KEYS + ['date', 'lyricist']} | {
    'ALBUM ARTIST': 'albumartist', 'TRACKNUMBER': 'cdtracknum', 'DISCNUMBER': 'discnum',
    'DESCRIPTION': 'user-message', 'UNSYNCEDLYRICS': 'unsynced-lyrics', 'LVRM': 'key-rec-mode'}
GAPLESS = ['encoder-delay', 'encoder-padding']

def picture(size):  # has all that unsynchronisation changes, and nothing that compresses
    return (bytes.fromhex('ffd8ffe0ff00ffff0000ff00') + random.Random(7).randbytes(size))[:size]

def mutagen(name, version, encoding, picture_size, v1=0):
    title, year = 'Tïtle ÿ' if encoding == LATIN1 else 'Титул 𝄞', '1999' * (version < 4)
    texts = 'ÿÿþÿ\xa0', ['Artïst', 'B'], 'Bänd' * 9, 'C', 'Jazz', title, year, 'Lyr', '3', '1', '1'
    tag = id3.ID3()
    for frame, text in zip(FRAMES, texts):
        tag.add(getattr(id3, frame)(encoding, text))
    tag.add(id3.COMM(encoding, 'eng', '', 'no gapless data'))
    tag.add(id3.COMM(encoding, 'eng', 'iTunSMPB', ' 00000000 00000840 000001CA 00000000004A5EA6'))
    tag.add(id3.APIC(encoding, 'image/jpeg', 3, 'Cöver', picture(picture_size)))
    tag.save(name, v2_version=max(version, 3), v1=v1)
    return tag

def mutagen_v2_2(name, encoding, flags):  # behind headers of our own: no packaged program has them
    names = {kind.__base__.__name__: name.encode() for name, kind in id3.Frames_2_2.items()}
    body = b''
    for frame in mutagen(name, 2, encoding, 5000).values():
        data = frame._writeData(id3._tags.ID3SaveConfig()).replace(b'image/jpeg\0', b'JPG')
        body += names[frame.FrameID] + len(data).to_bytes(3, 'big') + data
    body = id3._util.unsynch.encode(body) if flags else body
    Path(name).write_bytes(b'ID3\2\0%c' % flags + id3._util.BitPaddedInt.to_str(len(body)) + body)

def id3lib(name, encoding, unsynchronise, extend):  # writes mutagen's tag anew
    mutagen(name, 3, encoding, 70000)
    library = ctypes.CDLL('libid3-3.8.so.3')
    library.ID3Tag_New.restype = ctypes.c_void_p
    tag = ctypes.c_void_p(library.ID3Tag_New())
    library.ID3Tag_Link(tag, name.encode())
    library.ID3Tag_SetUnsync(tag, unsynchronise)
    library.ID3Tag_SetExtendedHeader(tag, extend)
    library.ID3Tag_UpdateByTagType(tag, 2)

def libid3tag(name, encoding, picture_size, options):  # writes mutagen's tag anew
    mutagen(name, 4, encoding, picture_size)
    library = ctypes.CDLL('libid3tag.so.0')
    library.id3_file_open.restype = library.id3_file_tag.restype = ctypes.c_void_p
    file = ctypes.c_void_p(library.id3_file_open(name.encode(), 1))
    library.id3_tag_options(ctypes.c_void_p(library.id3_file_tag(file)), 7, options)
    library.id3_file_update(file)
    library.id3_file_close(file)

def block(kind, mime, size):  # for METADATA_BLOCK_PICTURE
    block = flac.Picture()
    block.type, block.mime, block.data = kind, mime, picture(size)
    return base64.b64encode(block.write()).decode()

def fields(name, program, field, values):
    file = program(name)
    file.tags[field] = values
    file.save()

def shell(name, command):
    command = f'exec </dev/null >&2; export LC_ALL=C.UTF-8; {command} {name}'
    subprocess.run(command, shell=True, check=True)

def of_comments(tag, theirs):
    for field, value in tag:
        if key := FIELDS.get(field.upper()):
            yield key, b'string(%s)' % theirs[field.upper()][-1].encode()
        elif field == 'METADATA_BLOCK_PICTURE':
            block = flac.Picture(base64.b64decode(value))
            if block.type == 3 and block.mime != '-->':
                yield 'albumart', b'data(%s)' % block.data.hex().encode()
        yield 'mixed-encoding-type', b'int32(0)'

def of_id3(tag, theirs, odd):
    for found in tag.getall('COMM:iTunSMPB'):
        for key, number in zip(GAPLESS, found.text[0].split()[1:]):
            yield key, b'int32(%d)' % int(number, 16)
    yield 'mixed-encoding-type', b'int32(%d)' % sum(
        1 << i for i in range(6) if FRAMES[i] in tag and tag[FRAMES[i]].encoding == LATIN1)
    for frame, key, name in zip(FRAMES, KEYS, TAGLIB):
        if found := tag.get('TDRC' if frame == 'TYER' and tag.version < (2,) else frame):
            text = str(found.text[0])
            assert odd in ('all', name) or text == theirs[name][0], (name, text, theirs)
            # UTF-16 becomes Latin-1 where it can; a second text brings a second byte-order mark.
            narrow = found.encoding == UTF16 and max(text) < 'Ā' and len(found.text) == 1
            latin1 = narrow or found.encoding == LATIN1
            yield key, b'string(%s)' % text.encode('latin1' if latin1 else 'utf8')
    for found in tag.getall('APIC'):
        yield 'albumart', b'data(%s)' % found.data.hex().encode()

def row(name, head, encoding, writer, *arguments, odd='', unset=()):
    """Version and flags of an ID3v2 tag and the encoding of its title must be as given. A text, or
    all, may be odd in TagLib; keys, or all, that the library is not meant to set are unset."""
    shutil.copy('base' + Path(name).suffix, name)
    writer(name, *arguments)
    theirs = taglib.File(name).tags
    tag = id3.ID3(name, translate=False) if name.endswith('.mp3') else File(name).tags
    if isinstance(tag, list):
        values = dict(of_comments(tag, theirs))
        Path(name + '.fields').write_text(''.join(f'{field}={value}\n' for field, value in tag))
    else:
        values = {} if unset == 'all' else dict(of_id3(tag, theirs, odd))
        mark = b'ID3%c\0%c' % divmod(head, 256) if head else b'TAG'
        assert mark in Path(name).read_bytes() and tag['TIT2'].encoding == encoding, name
    Path(name + '.expected').write_bytes(b', '.join(
        b'%s: %s' % (key.encode(), value) for key, value in values.items() if key not in unset))
    print(name)

Path('comments').write_text("""Title=Титул 𝄞\nartist=First\nALBUM ARTIST=Bänd\nALBUM=a = b
GENRE=Jazz\nCOMPOSER=Comp\nAUTHOR=Auth\nTRACKNUMBER=3/4\nDISCNUMBER=1/2\nDATE=1999-12-31\nYEAR=1998
TITLEX=x\nCOMPILATION=1\nDESCRIPTION=A\nUNSYNCEDLYRICS=U\nlvrm=4\nARTIST=Last\nLYRICIST=L""")
shell('base.mp3', """ffmpeg -y -v error -f lavfi -i sine=d=0.3 base.wav base.flac base.aiff \
    -c:a libvorbis base.ogg -write_xing 0 -id3v2_version 0""")
shell('cover.png', 'ffmpeg -y -v error -f lavfi -i testsrc=size=160x120 -frames:v 1')
FFMPEG = 'ffmpeg -v error -y -i base.wav -i cover.png -map 0 ' + ' '.join(
    f'-metadata {text}' for text in 'title=Титул artist=Artïst genre=Jazz date=1999'.split())
EYED3 = """eyeD3 -Q --no-config -t Титул -a Artïst -n 3 -b Bänd -d 1 --text-frame TEXT:Лир \
    --add-image cover.png:FRONT_COVER --add-comment ' 0 840 1CA 0:iTunSMPB' --encoding """
LAME = '--quiet --ta Artïst --tl Al --ty 1999 --tn 3/4 --tg Jazz --tt Tïtle base.wav'
ID3V2 = 'id3v2 -a Artïst -A Al -y 1999 -g 8 -t thirty_characters_of_the_title '
row('Mutagen23.mp3', 0x300, LATIN1, mutagen, 3, LATIN1, 300000)
# The description of a comment is not recognised in UTF-16.
row('Mutagen23Utf16.mp3', 0x300, UTF16, mutagen, 3, UTF16, 200000, unset=GAPLESS)
row('Mutagen24Utf8AndV1.mp3', 0x400, UTF8, mutagen, 4, UTF8, 3000000, 2)
row('Mutagen24TooLarge.mp3', 0x400, UTF8, mutagen, 4, UTF8, 7400000, unset='all')  # for 0x700000
# Nobody's program writes sizes in v2.4 as iTunes did.
row('ITunesSizes.mp3', 0x400, LATIN1, shell, "LC_ALL=C sed '1s/ID3./ID3\\x04/' Mutagen23.mp3 >")
# TagLib takes TXT for TOLY, extended headers of v2.3 for such of v2.4, and names genre numbers.
row('V22Latin1.mp3', 0x200, LATIN1, mutagen_v2_2, LATIN1, 0, odd='LYRICIST')
row('V22Utf16.mp3', 0x280, UTF16, mutagen_v2_2, UTF16, 128, odd='LYRICIST', unset=GAPLESS)
row('Id3libUnsync.mp3', 0x380, UTF16, id3lib, UTF16, 1, 0, unset=GAPLESS)
row('Id3libExtended.mp3', 0x340, LATIN1, id3lib, LATIN1, 0, 1, odd='all')
row('Libid3tagUnsync.mp3', 0x480, LATIN1, libid3tag, LATIN1, 1000000, 1)
row('Libid3tagUnsyncExtended.mp3', 0x4C0, UTF16, libid3tag, UTF16, 40000, 5, unset=GAPLESS)
# Frames have data length indicators; the two that it makes smaller are compressed.
row('Libid3tagLengths.mp3', 0x400, UTF8, libid3tag, UTF8, 1, 2, unset=GAPLESS + ['albumartist'])
row('Id3v2.mp3', 0x300, LATIN1, shell, ID3V2 + "-2 -c 'iTunSMPB: 0 840 1CA 0:eng'", odd='GENRE')
row('Id3v2V1.mp3', 0, LATIN1, shell, ID3V2 + "-1 -c 'twenty-nine_character_of_text '", odd='GENRE')
row('LameV1Track.mp3', 0, LATIN1, shell, 'lame --id3v1-only ' + LAME, odd='GENRE')
# Its gapless data are in the Info frame, not in the tag.
row('Lame23.mp3', 0x300, LATIN1, shell, 'lame --id3v2-latin1 --id3v2-only --ti cover.png ' + LAME)
row('EyeD323.mp3', 0x300, UTF16, shell, EYED3 + 'utf16 --to-v2.3', unset=GAPLESS)
row('EyeD324.mp3', 0x400, UTF16BE, shell, EYED3 + 'utf16-be --to-v2.4', unset=GAPLESS)
row('Ffmpeg23.mp3', 0x300, UTF16, shell, FFMPEG + ' -map 1 -id3v2_version 3')
row('Ffmpeg24.mp3', 0x400, UTF8, shell, FFMPEG + ' -map 1 -id3v2_version 4')
row('Ffmpeg.aiff', 0x400, UTF8, shell, FFMPEG + ' -write_id3v2 1')
row('TagLib.mp3', 0x400, UTF8, fields, taglib.File, 'TITLE', ['Титул'])
row('Vorbiscomment.ogg', 0, 0, shell, 'vorbiscomment -w -R -c comments')
row('Metaflac.flac', 0, 0, shell, 'metaflac --no-utf8-convert --import-tags-from=comments')
row('Ffmpeg.ogg', 0, 0, shell, FFMPEG + ' -c:a libvorbis')
row('Mutagen.ogg', 0, 0, fields, File, 'METADATA_BLOCK_PICTURE',
    [block(3, '', 1500001), block(4, '', 9), block(3, '-->', 9)])
