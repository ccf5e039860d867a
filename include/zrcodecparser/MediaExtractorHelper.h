/// @file
/// What a container parser calls.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/BitReader.h"
#include "platform/Buffer.h"
#include "platform/Errors.h"
#include "platform/MediaFormat.h"
#include "platform/MetaData.h"
#include "platform/RefBase.h"
#include "platform/SampleBuffer.h"
#include "zrcodecparser/Export.h"
#include "zrcodecparser/ID3Wrapper.h"

namespace android {

/// Describes a file and its tracks to players, for a container parser.
///
/// How it is used: one object for each open file, held by an sp<>.
/// @code{.unparsed}
///   setFileMeta      once, with the kind of file;
///   setTrackMeta     for each track: geometry or rates, language, and the MIME type;
///   setAudioConfig,  for each track that has codec private data: stores it in the form in which
///   setVideoConfig   decoders take it;
///   isKeyFrame       for a sample, where the container does not say;
///   parseID3...,     with the file's tag, for the texts and the picture that people see.
///   parseVorbisComment
/// @endcode
///
/// @code
/// sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
/// TrackInfo info{};
/// info.trackType = kTrackTypeVideo;
/// info.codecType = kCodecTypeVp9;
/// info.video.width = 640;
/// info.video.height = 360;
/// AMediaFormat* format = AMediaFormat_new();
/// helper->setTrackMeta(&info, format, false);
/// AMediaFormat_delete(format);
/// @endcode
///
/// How it fails: operations that return a status return 0 or one of the negative codes named at
/// each of them. That a track cannot be played is no failure but a MIME type: "video/notsupport" or
/// "audio/notsupport". Sizes that overflow their type end the process. Messages go to the system
/// log under the tag "MediaExtractorHelper"; about ID3 tags, "ZRID3" and "ID3Wrapper".
///
/// The content of a file can end the process in setVideoConfig and the operations that it uses: by
/// AVC data of 1 to 3 bytes, and by an AVC or HEVC SPS whose cropping is larger than its picture,
/// whose picture has a side of 2^31 or more, or, of HEVC, that is shorter than its header. A parser
/// looks at the size before the call; against the others it runs in a process of its own, as on a
/// device. On a desktop the handler of host::setFatalHandler (platform/Host.h) may also throw or
/// jump out of the call: nothing is held there that needs to be released.
///
/// Ownership: formats, records and bytes belong to the caller and are only used during the call;
/// whatever a format stores is its own copy. Input bytes come from files and may hold anything:
/// what is missing at the end of codec data reads as zero, and tags that are cut short are refused.
/// The object keeps no state between calls, so any thread may call anything, as long as no two use
/// the same format at a time.
class ZR_EXPORT MediaExtractorHelper : public RefBase {
public:
    /// Asks nothing of the device.
    MediaExtractorHelper();
    /// Called when the last reference goes; never by hand.
    ~MediaExtractorHelper() override;

    // --- Codec selection ---

    /// Chooses the MIME type for a codec and stores it under AMEDIAFORMAT_KEY_MIME, with the int32
    /// keys that belong to the codec: "divx-version", "use-arbitrary-mode", "Layer-info",
    /// "wma-version", "wma-format-tag" (FormatKeys.h).
    ///
    /// The device's codec list is asked for a decoder of the codec's type: docs/supported.md has
    /// the type of each. DivX 4, 5 and 6 (123 to 125; "DX50" in AVI is DivX 5) ask for
    /// "video/divx"; MPEG-1 asks for "video/mpeg2", Xvid and MPEG-4 ASP for "video/mp4v-es". Some
    /// codecs have an alternative type, which is asked for first and taken when it has a decoder:
    /// @code{.unparsed}
    ///   EVRC, QCELP, ALAC  "audio/x-zr-evrc", "audio/x-zr-qcelp", "audio/x-zr-alac"
    ///   AAC behind ADTS    "audio/mp4a-latm", before "audio/aac-adts"
    ///   MP2                "audio/mpeg", before "audio/mpeg-L2"; stored is "audio/mpeg" for both
    ///   AAC, MP3           their own type, which is asked for twice
    /// @endcode
    /// The type that is stored is the one that was found, but for WMV 8: a decoder of
    /// "video/x-ms-wmv8" is looked for, and "video/x-ms-wmv7" stored.
    ///
    /// A codec without a decoder on the device gets "video/notsupport" (codes 100 to 131) or
    /// "audio/notsupport" (200 to 234), but for MPEG-2, E-AC-3 and MPEG-H, which are offered all
    /// the same, and DivX 4 to 6, which become MPEG-4 where the device has that feature. A code
    /// outside both ranges gets "video/notsupport", also next to the audio codes.
    ///
    /// Never offered, whatever the device has, are WMA of an unknown version (209), DoP (230), DSD
    /// (231) and AC-4 (232), and of video MS MPEG-4 1 to 3 (111 to 113), VP6 and VP7 (115, 116) and
    /// Sorenson H.263 (122). With a decoder all of these get "audio/notsupport", deliberately the
    /// video codecs too; without one, that of their kind.
    ///
    /// useArbitraryMode says that the container cuts video samples without regard to frames.
    ///
    /// When the media server or the codec list cannot be reached, that is logged and nothing is
    /// stored: a caller must be ready for a format without a MIME type. Blocks on calls to the
    /// media server. Fatal: a codec list that finds a decoder but has no information about it.
    ///
    /// @return 1, always.
    int32_t SupportCodecEx(int codecType, AMediaFormat* format, bool useArbitraryMode);

    /// The audio CodecType for the format's MIME type, the lowest where several share it; 200 for
    /// any other MIME type, those of video included; 0x7FFFFFFF when the format has none.
    int32_t getCodecType(AMediaFormat* format);

    /// Looks for a decoder of the codec's alternative MIME type.
    ///
    /// @return 0, with isSoftware set to true when there is one, and as it was when there is none
    /// or the codec has no alternative; -1, with isSoftware as it was, when the media server or the
    /// list cannot be reached.
    int32_t checkIsZRSWCodec(int codecType, bool& isSoftware);

    /// Whether the media player service answers and hands out its codec list.
    bool checkIsMediaserver();

    // --- Files and tracks ---

    /// Describes a track: stores the keys for its kind and ends in SupportCodecEx (video and audio)
    /// or stores the MIME type of its subtitles (text). trackInfo points to a TrackInfo;
    /// useArbitraryMode counts for video only. All numbers are int32, stored in this order:
    /// @code{.unparsed}
    ///   any    AMEDIAFORMAT_KEY_MAX_INPUT_SIZE, bytes: 1880064 for video, 1048576 for the others,
    ///          whatever the track; a parser whose samples can be larger replaces it after this
    ///          call
    ///   video  AMEDIAFORMAT_KEY_WIDTH, _HEIGHT: pixels; _STRIDE and _SLICE_HEIGHT: the same
    ///          again; _BIT_RATE: bits per second; "exist-sync-frame": 1, if the container marks
    ///          key frames; _FRAME_RATE: frames per second, if known
    ///   audio  "real-sample-rate": Hz; "real-sample-bits": bits, 0 = unknown;
    ///          AMEDIAFORMAT_KEY_SAMPLE_RATE: Hz; _CHANNEL_COUNT; _BIT_RATE: bits per second;
    ///          _CSD_0: for G.726, the bit rate's 4 bytes as in memory; if bitsPerSample is not 0,
    ///          _BITS_PER_SAMPLE and "Sample-Bits": bits, _PCM_ENCODING: 3 for PCM of 8 bits, else
    ///          2, 16-bit, for any other codec too; for every codec "wma-bits-per-sample": bits in
    ///          whole bytes, "wma-block-align" and "wma-vir-pkt-size": bytes; for Opus, _CSD_1 and
    ///          _CSD_2: codecDelay and seekPreRoll as they are; _LANGUAGE: text, "und" for null
    ///   text   AMEDIAFORMAT_KEY_LANGUAGE: textLanguage of SubRip, SSA and ASS, bitmapLanguage of
    ///          pictures if it is not null; AMEDIAFORMAT_KEY_MIME
    /// @endcode
    /// A track that cannot be played has all of these keys, but for those of SupportCodecEx, which
    /// come with a type: WMA without a decoder has no "wma-version" and no "wma-format-tag", and
    /// MediaCodecHelper::setWMAFormat refuses it.
    ///
    /// @return 0, always: a track kind that is none of the three is logged and gets
    /// "audio/notsupport" and no other key; subtitles that cannot be shown get it too.
    int32_t setTrackMeta(void* trackInfo, AMediaFormat* format, bool useArbitraryMode);

    /// Stores the container's MIME type for a FileKind. The parser of any other container stores
    /// one itself, under AMEDIAFORMAT_KEY_MIME (ZRE_MEDIA_MIMETYPE_CONTAINER_..., MediaDefs.h).
    ///
    /// The MIME type for QCP files is that of the stream in them.
    ///
    /// @return 0, or -10000, with the format as it was, for any other kind.
    int32_t setFileMeta(int fileType, AMediaFormat* format);

    /// The largest sample in bytes, as stored under AMEDIAFORMAT_KEY_MAX_INPUT_SIZE; 0 when absent.
    int32_t getMaxInputBuffer(AMediaFormat* format);

    /// @{
    /// Store a time in microseconds: of the whole track, of a sample, and of a subtitle's end
    /// ("end-of-text").
    ///
    /// @return 0.
    status_t setDuration(int64_t durationUs, AMediaFormat* format);
    status_t setCurrentTime(int64_t timeUs, AMediaFormat* format);
    status_t setEndTime(int64_t timeUs, AMediaFormat* format);
    /// @}

    // --- NAL units ---

    /// Takes the next unit off an Annex B stream (ITU-T H.264 Annex B) and moves `*data` and
    /// `*size` on to the start code after it. `*nalStart` points into the stream, behind the start
    /// code; `*nalSize` counts neither start codes nor trailing zero bytes, except that a unit
    /// keeps its first byte. startCodeFollows counts the end of the data as the end of a unit.
    ///
    /// @return 0 for a unit, possibly of size 0 when the stream ends in a start code; -1 when there
    /// is nothing more: no data, only zeros, or a last unit without a start code behind it while
    /// startCodeFollows is false; -1007 when the data do not open with 00 00 01. On -1 and -1007
    /// `*nalStart` is null, `*nalSize` 0, and the stream is not moved. After a unit that is
    /// followed by less than two bytes behind its next start code, `*data` is null and `*size` 0: a
    /// last unit of one byte is deliberately not delivered.
    ///
    /// @code
    /// sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    /// const uint8_t stream[] = {0, 0, 1, 0x67, 0x42, 0, 0, 1, 0x68, 0xCE};
    /// const uint8_t* data = stream;
    /// size_t size = sizeof(stream);
    /// const uint8_t* unit = nullptr;
    /// size_t length = 0;
    /// while (helper->getNextNALUnit(&data, &size, &unit, &length, true) == OK) {
    ///     std::printf("type %d, %zu bytes\n", length > 0 ? unit[0] & 0x1F : -1, length);
    /// }
    /// @endcode
    status_t getNextNALUnit(const uint8_t** data, size_t* size, const uint8_t** nalStart,
                            size_t* nalSize, bool startCodeFollows);

    /// @{
    /// A copy of the first unit with this nal_unit_type (ITU-T H.264 Table 7-1; H.265 Table 7-1),
    /// or null when there is none before the end or before something that is no unit. stopOffset is
    /// never written.
    sp<ABuffer> FindNAL(const uint8_t* data, size_t size, unsigned nalType, size_t* stopOffset);
    sp<ABuffer> FindHEVCNAL(const uint8_t* data, size_t size, unsigned nalType, size_t* stopOffset);
    /// @}

    /// ue(v), ITU-T H.264 clause 9.1, in unsigned 32-bit arithmetic. More than 32 leading zero bits
    /// yield 0.
    unsigned parseUE(ABitReader* reader);

    // --- AVC ---

    /// Stores AVC codec data under AMEDIAFORMAT_KEY_CSD_AVC. The data are one of
    ///   - an Annex B stream with an SPS and a PPS,
    ///   - one SPS and one PPS, each behind a 16-bit big-endian length: trusted once the SPS fits
    ///     and begins with 67,
    ///   - anything else, which counts as a finished configuration record and is stored as it is.
    /// Of the first two a record is made (ISO/IEC 14496-15 5.3.3.1.2, with 2-byte NAL unit
    /// lengths), and width, height, stride and slice height are stored as the SPS gives them.
    ///
    /// @return 0; -1 for no data (logged), for a stream with an SPS but no PPS, and for a parameter
    /// set of more than 65535 bytes: nothing is stored then.
    ///
    /// Fatal: cropping larger than the picture, a side of 2^31 or more, data of 1 to 3 bytes. size
    /// is not changed, trackInfo not used.
    status_t setAVCCSeqHeader(const uint8_t* data, size_t& size, void* trackInfo,
                              AMediaFormat* format);

    /// The picture size in luma samples, after cropping, from an SPS that begins with its NAL unit
    /// header (ITU-T H.264 7.3.2.1.1). Departs from the standard on purpose: emulation prevention
    /// bytes stay in, chroma fields are not read for profiles 118 and 128, and delta_scale is read
    /// as ue(v). What is missing at the end reads as zero. A seq_scaling_matrix_present_flag of 1
    /// is logged as a warning, "seq_scaling_matrix_present_flag != 0u".
    ///
    /// sps must not be null. Fatal: a side of 2^31 or more, with nothing written; cropping larger
    /// than the picture, with the size before cropping written.
    void FindAVCDimensions(const sp<ABuffer>& sps, int32_t* width, int32_t* height);

    // --- HEVC ---

    /// Makes a configuration record (ISO/IEC 14496-15 8.3.3.1.2, with 4-byte NAL unit lengths) of
    /// an Annex B stream with an SPS, a PPS and perhaps a VPS, and stores it under
    /// AMEDIAFORMAT_KEY_CSD_HEVC, with the MIME type and the width and height as the SPS gives
    /// them. Chroma format and bit depths in it are always those of 8-bit 4:2:0.
    ///
    /// @return 0, or -1: for no data, nothing stored; for a stream without an SPS, which is logged
    /// and the data stored unchanged under AMEDIAFORMAT_KEY_CSD_HEVC all the same; for one without
    /// a PPS, which is logged with the same words, and for a parameter set of more than 65535
    /// bytes, nothing stored.
    ///
    /// A finished record, as MP4 and Matroska have it, is such data without an SPS behind a start
    /// code: it is stored, and the -1 is no reason to drop the track. The MIME type that is stored
    /// beside a record made of a stream replaces "video/notsupport" too: what codec selection has
    /// said is to be read before this call.
    ///
    /// Fatal: a conformance window larger than the picture, a side of 2^31 or more, an SPS shorter
    /// than its 2-byte header.
    status_t MakeHEVCCodecSpecificData(const uint8_t* data, size_t size, AMediaFormat* format);

    /// The picture size in luma samples from an SPS that begins with its NAL unit header (ITU-T
    /// H.265 7.3.2.2.1). Nothing is written for an SPS of 2 bytes. Departs from the standard on
    /// purpose: the conformance window counts in luma samples whatever the chroma format, and the
    /// last two bytes of the unit read as zero. What is missing reads as zero too. Nothing is
    /// logged.
    ///
    /// sps must not be null. Fatal: fewer than 2 bytes; a side of 2^31 or more, with nothing
    /// written; a conformance window larger than the picture, with the size before it written.
    void FindHEVCDimensions(const sp<ABuffer>& sps, int32_t* width, int32_t* height);

    /// "Main Profile", "Main 10 profile", "Main Still Picture profile" for a general_profile_idc of
    /// 1, 2, 3 (ITU-T H.265 A.3); "Unknown" for any other.
    const char* HEVCProfileToString(uint8_t profile);

    // --- Audio codec data ---

    /// Stores an audio track's codec private data, of `*size` bytes, in the form for its CodecType.
    /// data may be a buffer of format itself; `*size` is not changed.
    ///
    /// The data begin behind what the container itself puts in front of them:
    /// @code{.unparsed}
    ///   WAV, AVI, ASF  behind the 18 bytes of the WAVEFORMATEX; its last field says how many
    ///   MP4            of an "esds" box the content of the DecoderSpecificInfo; of "dfLa" what
    ///                  stands behind version and flags, "fLaC" put in front of it
    ///   Matroska       the whole CodecPrivate; with "A_MS/ACM" that is a WAVEFORMATEX
    ///   Ogg            of Vorbis the three header packets, laced as Matroska does; of Opus the
    ///                  first packet; of FLAC the first one from "fLaC" on
    /// @endcode
    /// MP3, AC-3, ADTS and others that say everything in each frame have none: nothing is called.
    ///
    /// What is stored:
    /// @code{.unparsed}
    ///   201 AAC       an AudioSpecificConfig of any length, as setESDS for audio
    ///   207 FLAC      the whole data: "flac-codec-specific-data". If they are 26 bytes or more and
    ///                 begin with "fLaC" in any case of letters, the numbers of the STREAMINFO
    ///                 (RFC 9639 8.2) taken to stand behind the next 4 bytes, big-endian:
    ///                 "min-block-size", "max-block-size", "min-frame-size", "max-frame-size"
    ///   208 Vorbis    as setVorbisCodecSpecificData, whose failure is logged and not returned
    ///   210 WMA 1     "wma-encode-opt": 16 bits at byte 2. Less than 4 bytes: an error
    ///   211 WMA 2     "wma-encode-opt": 16 bits at byte 4. Less than 6 bytes: an error
    ///   212 WMA Pro, 213 WMA lossless
    ///                 "wma-channel-mask", "wma-adv-enc-opt1", "wma-adv-enc-opt2": 32 bits at bytes
    ///                 2, 6, 10; "wma-encode-opt": 16 bits at byte 14
    ///   214 WMA voice "wma-channel-mask": 32 bits at byte 2; "wma-encode-opt", "wma-adv-enc-opt1":
    ///                 16 bits at bytes 14, 16; "wma-voice-enc-opt1", "wma-voice-enc-opt2_0",
    ///                 "wma-voice-enc-opt2_1": 32 bits at bytes 18, 22, 26
    ///   218 ADPCM     all the data that are given, not looked at: "adpcm-codec-specific-data";
    ///                 zrinspect takes them for what stands behind a WAVEFORMATEX (wSamplesPerBlock
    ///                 and, of MS ADPCM, the coefficients)
    ///   228 Opus      the whole data: AMEDIAFORMAT_KEY_CSD_0
    /// @endcode
    /// Any other code stores nothing, 209 (WMA of an unknown version) and 226 (AAC behind ADTS
    /// headers) among them; data and size are not looked at then and may be null. WMA fields are
    /// little-endian; those of 32 bits are stored as the int32 of the same bits. Of 212 to 214,
    /// data of less than 18 bytes are logged and all their fields are 0; in longer data a field's
    /// bytes past the end read as 0.
    ///
    /// @return 0, or -1 for too short data of 210 and 211 (logged, nothing stored).
    status_t setAudioConfig(uint32_t codecType, const uint8_t* data, size_t* size,
                            AMediaFormat* format);

    /// Stores an elementary stream descriptor (ISO/IEC 14496-1 7.2.6.5) around the decoder-specific
    /// data of `*size` bytes under AMEDIAFORMAT_KEY_ESDS: objectTypeIndication 0x40 (MPEG-4 audio)
    /// or 0x20 (MPEG-4 Visual), all other numbers 0, streamType too; no SLConfigDescriptor. `*size`
    /// is not changed.
    ///
    /// @return 0.
    status_t setESDS(const uint8_t* data, size_t* size, AMediaFormat* format, bool isAudio);

    /// Writes an MPEG-4 Visual descriptor with one-byte sizes, of which data of more than 107 bytes
    /// deserve longer ones: only their low 8 bits are kept. Requires room for `*size` + 22 bytes at
    /// out. `*size` is not changed.
    void makeESDS(const uint8_t* data, size_t* size, uint8_t* out);

    /// Writes the descriptor for the two bytes of an AudioSpecificConfig (ISO/IEC 14496-3 1.6.2.1)
    /// to out, which has room for 24 bytes. Sets `*outSize` to 24 and returns true.
    bool MakeAACCodecSpecificData(const uint8_t* config, size_t* outSize, uint8_t* out);

    /// Stores that descriptor under AMEDIAFORMAT_KEY_CSD_0. Sets `*outSize` to 24 and returns 0.
    status_t setAACCodecSpecificData(const uint8_t* config, size_t* outSize, AMediaFormat* format);

    /// @{
    /// The expandable size field (ISO/IEC 14496-1 8.3.3): its length for a value, 1 to 4 bytes; and
    /// the field itself, written at out + offset, which moves on past it. Values of 2^28 and above
    /// lose their top bits. An offset that would leave its type is fatal, before anything is
    /// written.
    size_t bytesForSize(size_t value);
    void storeSize(uint8_t* out, size_t& offset, size_t value);
    /// @}

    /// Splits the three Vorbis headers out of a block with Xiph lacing, of `*size` bytes, and
    /// stores the identification header under AMEDIAFORMAT_KEY_CSD_0 and the setup header under
    /// AMEDIAFORMAT_KEY_CSD_1. data may be a buffer of format itself; `*size` is not changed.
    ///
    /// @return 0; -1007 when the block is empty or malformed or its first packet no identification
    /// header, with nothing stored; -10001 when the second or third packet is of a wrong type, with
    /// AMEDIAFORMAT_KEY_CSD_0 stored all the same.
    status_t setVorbisCodecSpecificData(const uint8_t* data, size_t* size, AMediaFormat* format);

    // --- Video codec data ---

    /// Stores a video track's codec private data, of size bytes, in the form for the codecType of
    /// the TrackInfo at trackInfo:
    /// @code{.unparsed}
    ///   MPEG-1, -2, -4 and -4 ASP,    as setESDS for video
    ///   Xvid, DivX 4 to 6
    ///   AVC                           as setAVCCSeqHeader, with its status
    ///   WMV, VC-1                     as setVC1SeqHeader
    ///   Theora                        the whole data: "theora-codec-specific-data"
    ///   HEVC                          as MakeHEVCCodecSpecificData, with its status
    /// @endcode
    /// Any other code stores nothing, and its data are not looked at.
    ///
    /// The data begin behind what the container itself puts in front of them; where there are
    /// none, they stand in the stream:
    /// @code{.unparsed}
    ///   AVI, ASF       behind the 40 bytes of the BITMAPINFOHEADER
    ///   MP4            the content of "avcC", "hvcC"; of "esds" that of the DecoderSpecificInfo
    ///   Matroska       the whole CodecPrivate; with "V_MS/VFW/FOURCC" that is a BITMAPINFOHEADER
    ///   in the stream  AVC, HEVC: a sample, with start codes, that has the parameter sets;
    ///                  MPEG-1, -2, -4: what stands in front of the first picture
    /// @endcode
    /// Without any data it is not called: MPEG-4 would get a descriptor with nothing in it.
    ///
    /// @return 0 but for AVC and HEVC. size is not changed.
    ///
    /// Fatal where the operation named is.
    status_t setVideoConfig(void* trackInfo, const uint8_t* data, size_t& size,
                            AMediaFormat* format);

    /// Stores a WMV or VC-1 sequence header under "vc1-sequence-header" and 0 under
    /// "use-arbitrary-mode". Behind the `*size` bytes given stand the width and height of the
    /// TrackInfo at trackInfo, 32-bit little-endian, and a profile byte: 0 simple, 1 main, 2
    /// advanced or unknown; for WMV 7 and 8 the profile byte alone. Stores nothing for other
    /// codecs.
    ///
    /// @return 0.
    status_t setVC1SeqHeader(const void* data, size_t* size, void* trackInfo, AMediaFormat* format);

    // --- Samples ---

    /// Whether one whole sample of a track can be decoded on its own, for containers that do not
    /// mark such samples: by the first VOP in MPEG-4, MPEG-4 ASP, Xvid and DivX 4 to 6 (ISO/IEC
    /// 14496-2 6.2.5), the picture header in H.263 (ITU-T H.263 5.1), an IDR slice in Annex B H.264
    /// (ITU-T H.264 7.3.1). False for any other codec, HEVC included, and for no data, null or of
    /// size 0. A start code counts only with two bytes or more behind it. An H.263 picture that is
    /// not INTRA is logged.
    ///
    /// @return true for a key frame; false for a sample that is none and also where nobody can
    /// tell: the codec says which of the two it is. What is said of H.264 with lengths in place of
    /// start codes means nothing.
    bool isKeyFrame(const uint8_t* data, size_t size, int codecType);

    // --- Tags ---

    /// @{
    /// The operations of ID3Wrapper of these names: texts and picture of an ID3 tag in memory or in
    /// a file, encoder delay and padding from its gapless comment. Of a source they ask only
    /// flags() of the object, all else of the record under it.
    status_t parseID3v2MetaData(const uint8_t* data, size_t size, bool ignoreV1,
                                AMediaFormat* meta);
    status_t parseID3v2MetaData(DataSourceHelper* source, bool ignoreV1, off64_t offset,
                                AMediaFormat* meta);
    status_t parseID3GaplessInfo(DataSourceHelper* source, bool ignoreV1, off64_t offset,
                                 AMediaFormat* meta);
    /// @}

    /// Stores one comment of a Vorbis comment header (Xiph, Vorbis I, section 5), NAME=value with a
    /// NUL behind it, where the name, in any case, is one that has a key: text, the front cover out
    /// of METADATA_BLOCK_PICTURE (base64 of a picture block of RFC 9639 8.8), ANDROID_LOOP=true,
    /// the count in ANDROID_HAPTIC. Stores 0 under ZREAMEDIAFORMAT_KEY_MIXEDENCODINGTYPE whatever
    /// the comment says. Malformed base64 and a haptic count that is out of range are logged; a
    /// picture that is a link, of another type than front cover, or cut short is passed over in
    /// silence.
    ///
    /// commentLength, the comment's length in bytes without the NUL, bounds the memory for a
    /// picture, and nothing else: where it is too small, a picture that does not fit into three
    /// bytes for each four characters of the value which it covers is logged as malformed base64.
    /// Fatal: a picture comment with a commentLength that does not cover its name and the =.
    void parseVorbisComment(AMediaFormat* fileMeta, const char* comment, size_t commentLength);

    // --- For older parsers, which keep metadata under four-character codes ---

    /// As SupportCodecEx for a format, but stores kZreKeyMime, and offers fewer codecs: MPEG-1, -2
    /// and -4, AVC, HEVC; AAC, MP2, MP3, AC-3, E-AC-3, DTS, PCM, DTS-LBR, AC-4. Any other gets
    /// "video/notsupport" or "audio/notsupport", of its kind, as does one without a decoder
    /// (logged), but for MPEG-2 and E-AC-3. MPEG-4 also gets 0 under kZreKeyUseArbitraryMode; DivX
    /// never becomes MPEG-4, and the information about a decoder is not asked for.
    ///
    /// @return 0; -2147483648 with a "notsupport" type (logged) when the media server or the codec
    /// list cannot be reached.
    int32_t SupportCodecEx(int codecType, MetaDataBase& meta);

    /// @{
    /// Copies what older parsers need of a format, and nothing else, under the codes that
    /// MetaKeys.h lists for them: MIME type, width and height, HEVC codec data, tag texts, encoding
    /// type, picture. kZreKeyDSDSampleRate deliberately receives the encoding type, or 0, where the
    /// format has a DSD sample rate. What the format lacks stays as it was in meta.
    ///
    /// @return 0.
    int32_t convertZRAMediaFormatToMeta(AMediaFormat* format, MetaDataBase* meta);
    int32_t convertZRAMediaFormatToMeta(AMediaFormat* format, sp<MetaData>& meta);
    /// @}

    /// The media_status_t for a status of the framework's: -10000 for -2147483648, -10006 for -1011
    /// (end of stream), -10001 for -1007, -10007 for -1004 (I/O), -10005 for -38. Any other is
    /// returned as it is.
    int32_t convertZRErrorToAMediaError(int status);

    // --- PCM: sample formats ---

    /// Converts samples to destinationBits by the operation below that does; 32 means float. What
    /// follows holds for all operations on PCM.
    ///
    /// Widths are in bits: 8, 16, 24 (three bytes a sample) or 32. 16-bit results, integers of 32
    /// bits and floats (IEEE single, full scale 1.0) are in the machine's order, little-endian.
    /// bigEndian says in which order the source stands; of 8-bit sources it says that they are
    /// signed instead of offset binary. A width that a converter does not know is logged and gives
    /// -38, with nothing changed.
    ///
    /// The operations on a buffer work in place on its range, of `length` bytes from `offset` on,
    /// and then set the range to (offset, offset + bytes written): deliberately the end and not the
    /// length, which is the same when the offset is 0. A sample that is cut off at the end of the
    /// range is dropped. But where it is said otherwise nothing looks at the capacity of a buffer:
    /// the caller provides the room that is stated. Fatal: a capacity below the offset, where the
    /// capacity is looked at; sizes that overflow.
    ///
    /// The operations on arrays want room for all of their output, which may begin where the source
    /// begins, but not for ConvertXto32. They write nothing, and return 0, for 16 bits to 16, for a
    /// number of samples of 0, and where that number is signed, for a negative one. Fatal: a number
    /// of samples whose bytes overflow a size, or 2^31 - 1 where it has 32 bits.
    ///
    /// @return its status; 0, and leaves the buffer alone, when the samples are in that format
    /// already; -1010 (logged) for a pair that nothing converts: 16, 24, 32 to 8 and 8, 16 to 24;
    /// -38 (logged) for any other.
    status_t ConvertXtoX(MediaBufferHelper* buffer, int32_t sourceBits, int32_t destinationBits,
                         bool sourceIsFloat, bool bigEndian);

    /// @{
    /// 8, 24 or 32 bits to 16; 16 bits stay as they are. Low bits are cut off, not rounded. 32-bit
    /// samples are integers in little-endian order whatever bigEndian says. For 8 bits the buffer
    /// needs room for 2 * length bytes at the offset, else the result is -1009 and nothing is
    /// changed. The array form takes only the low 32 bits of a number of 8-bit samples, as a signed
    /// number, of which -2^31 is fatal.
    status_t ConvertXto16(MediaBufferHelper* buffer, int32_t sourceBits, bool bigEndian);
    status_t ConvertXto16(const uint8_t* source, uint8_t* destination, int32_t sourceBits,
                          size_t samples, bool bigEndian);
    /// @}

    /// @{
    /// 32 bits to 24; 24 bits stay as they are. Floats are clipped at -1.0 and at 1 - 2^-23 and
    /// rounded half away from zero; NaN gives 0. Here bigEndian says how to write the result, and
    /// picks the bytes deliberately so:
    /// @code{.unparsed}
    ///   integers  little-endian: the upper 24 bits; big-endian: the lower 24 bits
    ///   floats    little-endian: the 24 bits; big-endian: the sign byte and the upper 16 of them
    /// @endcode
    /// In a buffer the samples are read from data + 4 * offset on and written from data + offset
    /// on, so for an offset other than 0 the caller provides length bytes there.
    status_t ConvertXto24packed(MediaBufferHelper* buffer, int32_t sourceBits, bool sourceIsFloat,
                                bool bigEndian);
    status_t ConvertXto24packed(const uint32_t* source, uint8_t* destination, int32_t samples,
                                bool bigEndian);
    status_t ConvertXto24packed(const float* source, uint8_t* destination, int32_t samples,
                                bool bigEndian);
    /// @}

    /// @{
    /// 24- or 32-bit integers to float. In a buffer, 24 bits need room for 4 bytes a sample at the
    /// offset, which is not checked; big-endian 32 bits are put in order at data + 4 * offset,
    /// where the caller provides length bytes, and converted at data + offset. When less than half
    /// of these have room behind the offset, nothing is done and the result is 0. The array form
    /// takes little-endian samples only.
    status_t ConvertXtoFloat(MediaBufferHelper* buffer, int32_t sourceBits, bool bigEndian);
    status_t ConvertXtoFloat(const uint8_t* source, uint8_t* destination, int32_t sourceBits,
                             size_t samples, bool unused);
    /// @}

    /// @{
    /// 24 bits to the upper 24 of 32, for an array. In a buffer, deliberately, the 4 bytes a sample
    /// that the caller has provided at the offset come out as zeros: the writes overtake the reads.
    /// Of 32 bits, which a buffer leaves alone unless they are floats, 0 gives 0.0f, any other
    /// number 2147483648.0f, and one with the sign bit set is fatal: those before it have been
    /// written by then. For 24 bits the output of the array form must not overlap the source: it
    /// would overtake the reads like that of a buffer.
    status_t ConvertXto32(MediaBufferHelper* buffer, int32_t sourceBits, bool sourceIsFloat,
                          bool unused);
    status_t ConvertXto32(const uint8_t* source, uint8_t* destination, int32_t sourceBits,
                          size_t samples, bool bigEndian);
    /// @}

    // --- PCM: byte order ---

    /// Reverses the bytes of each sample in the buffer's range, which stays as it is; a sample that
    /// is cut off at its end is left alone.
    ///
    /// The result for 16 and 32 bits is written at data + 2 * offset and data + 4 * offset, where
    /// the caller provides length bytes. Fatal for these: a capacity below the offset.
    ///
    /// @return 0, also for 8 bits, where there is nothing to do, and deliberately for an unknown
    /// width, which is only logged; -1009, and nothing changed, when the room behind the offset is
    /// less than the 16-bit samples, or half of the 32-bit samples.
    status_t ConvertEndian(MediaBufferHelper* buffer, int32_t sampleBits);

private:
    sp<ID3Wrapper> mID3Wrapper;
};

}  // namespace android
