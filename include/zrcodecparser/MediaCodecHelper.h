/// @file
/// What decoder glue calls.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Buffer.h"
#include "platform/Errors.h"
#include "platform/Message.h"
#include "platform/MetaData.h"
#include "platform/OmxNode.h"
#include "platform/RefBase.h"
#include "zrcodecparser/Export.h"

namespace android {

/// Hands a track's format to a decoder component, for decoder glue.
///
/// How it is used: the format arrives as an AMessage, or as MetaData from older parsers; the
/// operation for the track's codec hands the component its parameters. A message has the format's
/// entries under the same keys: numbers of the same width, texts, and bytes as an ABuffer. On a
/// device the platform makes it of a format; on a desktop a program does, by a walk with
/// host::formatEntries (platform/Host.h). The texts in quotes below are keys of the message; in
/// metadata the values stand under their codes (MetaKeys.h). Numbers
/// have 32 bits, and are cut to their low bits where the component's field is narrower. A number of
/// another type is as good as missing.
///
/// How it fails: operations that set up a component return 0, a status of the component's, or one
/// of the negative codes named at each. A true encoder flag gives -1 at once, with nothing read:
/// nothing here is for encoders. Fatal, in this order: a key that the codec cannot do without,
/// looked for in the order in which the keys are named; a component that does not tell or take what
/// every component must. Messages go to the system log under the tag "MediaCodecHelper".
///
/// Ownership and threads: all operations are static and keep no state, so any thread may call
/// anything, as long as no two use the same object at a time. Objects and bytes belong to the
/// caller and are only used during the call; whatever a store takes is its own copy. Formats,
/// metadata, nodes and texts must not be null. The forms that take MetaData make a message of them,
/// as ZRCodeConvertMetaDataToMessage does, and go on as the others; it is gone before anything is
/// fatal.
///
/// Parameters are those of OpenMAX IL 1.1.2, or the decoder makers' own, little-endian. An audio
/// component first tells its values, then receives them with those changed that are named; video
/// parameters, and the AAC presentation, are sent as they are.
class ZR_EXPORT MediaCodecHelper {
public:
    // --- Stores ---

    /// The key in a message for a code in metadata (MetaKeys.h), the first where there are two;
    /// "unknown" for any other code. The text is constant.
    static const char* getMsgKey(int metaKey);

    /// @{
    /// Copy every entry that has a known key from one store to the other, and return 0. The key
    /// table says of what type a value must be: a number of 32 or of 64 bits, a text, or data. What
    /// is absent, or of another type, is passed over. Data are what stands there under any type but
    /// those of numbers and texts, of any size, also 0.
    ///
    /// Into a message: data become a buffer of just their size. Codec data all go under "csd-0",
    /// with 1 under "csd" and 0 under "timeUs" in the buffer's own message, those of a later row in
    /// place of those of an earlier one: AAC, raw, VC-1, FLAC, ADPCM, Theora, ALAC, RealVideo,
    /// RealAudio. A null message is made; entries with other keys stay.
    ///
    /// Into metadata: the buffers' ranges become data of the type 'none'. Codec data are
    /// deliberately taken from the keys that getMsgKey gives, never from "csd-0". Of two keys with
    /// one code the later counts ("is-adts", not "aac-format-adts"). Fatal: null arguments.
    static status_t ZRCodeConvertMetaDataToMessage(const sp<MetaData>& meta, sp<AMessage>* msg);
    static status_t ZRCodeConvertMetaDataBaseToMessage(const MetaDataBase* meta, sp<AMessage>* msg);
    static status_t ZRCodeConvertMessageToMetaData(const sp<AMessage>& msg,
                                                   const sp<MetaData>& meta);
    /// @}

    /// @{
    /// The first codec data there are: of VC-1, FLAC, ADPCM, Theora, RealAudio, RealVideo, ALAC, in
    /// this order, under the codes and keys of their own, never "csd-0"; data of 0 bytes count. The
    /// metadata's form returns 0, and the bytes, which stay the metadata's; or -1, and writes
    /// nothing. The message's form returns null when there are none.
    static status_t ZRgetCodecSpecificData(const sp<MetaData>& meta, const void*& data,
                                           size_t& size);
    static sp<ABuffer> ZRgetCodecSpecificData(const sp<AMessage>& msg);
    /// @}

    /// Turns an HEVC decoder configuration record (ISO/IEC 14496-15 8.3.3.1.2) into the stream of
    /// its VPS, SPS and PPS units and stores that under the key 'hcsd' with the type 'hvcc'. Each
    /// unit stands behind as many bytes as the record's NAL unit lengths have: 00 00 00 01 for 4,
    /// 00 00 01 for 3, zeros for 1 and 2. Where the record ends too early, its bytes read as zero.
    ///
    /// @return 0; -1 when there is no such unit; -1007 when the record is shorter than 23 bytes,
    /// its version is not 1, or the stream would exceed 1024 bytes. Nothing is stored but on 0.
    static status_t parseHEVCCodecSpecificData(const sp<MetaData>& meta, const void* data,
                                               size_t size);

    // --- Audio components: port 0 takes the coded data, port 1 gives PCM ---

    /// @{
    /// PCM of 16 bits, signed and interleaved, on a port: "channel-count" (1 to 8), "sample-rate"
    /// in Hz, both mandatory. The channels stand as getOMXChannelMapping says, by their number
    /// alone: a track's own order is not asked for. The byte order stays the component's.
    ///
    /// @return the status of the last parameter.
    ///
    /// Fatal: a missing key; then a component without port definition or PCM mode, or that does not
    /// take the port definition; then, with the port definition set, any other number of channels.
    static status_t setRawAudioFormat(const sp<AMessage>& format, uint32_t portIndex,
                                      const sp<IOMXNode>& node, bool encoder);
    static status_t setRawAudioFormat(const sp<MetaData>& format, uint32_t portIndex,
                                      const sp<IOMXNode>& node, bool encoder);
    /// @}

    /// The places of 1 to 8 channels, in the order of the samples, as OMX_AUDIO_CHANNELTYPE; the
    /// map has room for as many.
    ///
    /// @return 0, or -22 for any other number, with the map as it was.
    /// @code{.unparsed}
    ///   1  CF                       5  LF RF CF LR RR
    ///   2  LF RF                    6  LF RF CF LFE LR RR
    ///   3  LF RF CF                 7  LF RF CF LFE LR RR CS
    ///   4  LF RF LR RR              8  LF RF CF LFE LR RR LS RS
    /// @endcode
    static status_t getOMXChannelMapping(size_t channels, int map[]);

    /// @{
    /// As setRawAudioFormat on the port.
    static status_t setG711Format(const sp<AMessage>& format, uint32_t portIndex,
                                  const sp<IOMXNode>& node, bool encoder);
    static status_t setG711Format(const sp<MetaData>& format, uint32_t portIndex,
                                  const sp<IOMXNode>& node, bool encoder);
    /// @}

    /// @{
    /// G.726, mono at 8000 Hz: the mode on port 0 for a "bitrate" of 16000, 24000 or 40000 bit/s,
    /// and that of 32000 for any other; PCM on port 1.
    ///
    /// @return -38 (logged) without one, else the status of the last parameter.
    ///
    /// Fatal: a component that does not tell or take the mode, or does not tell its PCM mode.
    static status_t setG726Format(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                  bool encoder);
    static status_t setG726Format(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                  bool encoder);
    /// @}

    /// @{
    /// AAC with an ADIF header, whatever the port.
    ///
    /// @return -38 without "channel-count" or "sample-rate"; -1 for any other AAC, which the
    /// platform sets up itself: where "aac-format-adif" is missing or 0; then as setRawAudioFormat
    /// on port 1, then the status of the AAC profile on port 0 (a refusal of it is logged). How to
    /// mix and limit the output is passed on last, and whether the component takes that ignored:
    /// "aac-max-output-channel_count", "aac-drc-cut-level", "aac-drc-boost-level",
    /// "aac-drc-heavy-compression", "aac-target-ref-level", "aac-encoded-target-level". These have
    /// no code, so that only messages bring them; -1, for what is missing, leaves it to the
    /// decoder.
    static status_t setAACFormat(const sp<AMessage>& format, uint32_t portIndex,
                                 const sp<IOMXNode>& node, bool encoder);
    static status_t setAACFormat(const sp<MetaData>& format, uint32_t portIndex,
                                 const sp<IOMXNode>& node, bool encoder);
    /// @}

    /// @{
    /// ALAC: "channel-count", "sample-rate" in Hz, both mandatory, in the layout of the device's
    /// decoders, 44 bytes, on port 0.
    ///
    /// @return -1 for port 1, else the status of the parameter.
    ///
    /// Fatal: a missing key; then a component that does not tell its values.
    static status_t setAlacFormat(const sp<AMessage>& format, uint32_t portIndex,
                                  const sp<IOMXNode>& node, bool encoder);
    static status_t setAlacFormat(const sp<MetaData>& format, uint32_t portIndex,
                                  const sp<IOMXNode>& node, bool encoder);
    /// @}

    /// @{
    /// WMA of up to two channels, in the layout of the device's decoders, 64 bytes, on port 0.
    ///
    /// It asks for "wma-version" and then, by version, for
    /// @code{.unparsed}
    ///   1, 2  "wma-adv-enc-opt1", "wma-adv-enc-opt2", "wma-vir-pkt-size"
    ///   3     "wma-adv-enc-opt1", "wma-voice-enc-opt1", "wma-voice-enc-opt2_0",
    ///         "wma-voice-enc-opt2_1", "wma-vir-pkt-size"
    ///   all   "channel-count", "sample-rate" in Hz, "bitrate" in bit/s, "wma-encode-opt",
    ///         "wma-block-align" in bytes, "wma-bits-per-sample", "wma-format-tag"
    /// @endcode
    /// Fatal: each of these that is missing, "wma-vir-pkt-size" too, which is sent nowhere.
    ///
    /// The parameter, under OMX_IndexParamAudioWma, little-endian; what is not named is the
    /// component's own:
    /// @code{.unparsed}
    ///   offset, bytes
    ///    0  4  64, the size              34  2  "wma-encode-opt"
    ///    4  4  the version, 1            36  2  "wma-adv-enc-opt1", versions 1 to 3
    ///    8  4  0, the port               40  4  "wma-adv-enc-opt2", versions 1 and 2
    ///   12  2  "channel-count"           44  2  "wma-format-tag"
    ///   16  4  "bitrate"                 46  2  "wma-bits-per-sample"
    ///   28  4  "sample-rate"             52  4  "wma-voice-enc-opt1", version 3
    ///   32  2  "wma-block-align"         56  4  "wma-voice-enc-opt2_0", version 3
    ///                                    60  4  "wma-voice-enc-opt2_1", version 3
    /// @endcode
    ///
    /// @return -1 (logged) without "wma-version"; -1010 for more than two channels, before the keys
    /// behind "channel-count" are looked for; 0, with nothing sent, for a version that is none of 0
    /// to 3; else the component's: the status of its telling its values, which version 3 ignores,
    /// then that of its taking them.
    static status_t setWMAFormat(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                 bool encoder);
    static status_t setWMAFormat(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                 bool encoder);
    /// @}

    /// @{
    /// RealAudio, in the layout of the device's decoders, 44 bytes, on port 0.
    ///
    /// @return -1 for port 1, else the status of the parameter. Mandatory, each fatal where it is
    /// missing: "channel-count", "sample-rate" in Hz, "ra-actual-rate", "bits-per-sample",
    /// "ra-audio-quality", "ra-flavor-index", "ra-bits-per-frame", "ra-granularity", "ra-fourcc".
    ///
    /// Fatal, too: a component that does not tell its values.
    static status_t setRAFormat(const sp<AMessage>& format, uint32_t portIndex,
                                const sp<IOMXNode>& node, bool encoder);
    static status_t setRAFormat(const sp<MetaData>& format, uint32_t portIndex,
                                const sp<IOMXNode>& node, bool encoder);
    /// @}

    /// @{
    /// @return -1: no component of this family is set up here. Nothing is looked at.
    static status_t setVOCodecFormat(const sp<AMessage>& format, const char* componentName,
                                     const sp<IOMXNode>& node, bool encoder);
    static status_t setVOCodecFormat(const sp<MetaData>& format, const char* componentName,
                                     const sp<IOMXNode>& node, bool encoder);
    /// @}

    /// Has a Dolby decoder reconfigure when the endpoint changes, through its extension
    /// "omx.index.dolby.reconfig_on_endp_change".
    ///
    /// @return the component's status, of the name or of the parameter. Format and port are not
    /// looked at; metadata have no form.
    static status_t setDolbyFormat(const sp<AMessage>& format, uint32_t portIndex,
                                   const sp<IOMXNode>& node, bool encoder);

    // --- Video components ---

    /// @{
    /// The DivX version on port 1: "divx-version" 0 to 3, sent as 2, 4, 8 and 16, any other as 1; a
    /// missing one counts as version 1, and is logged.
    ///
    /// @return the component's status. Only the metadata's form looks at the encoder flag.
    static status_t setDivxFormat(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                  bool encoder);
    static status_t setDivxFormat(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                  bool encoder);
    /// @}

    /// @{
    /// Whether input buffers hold arbitrary pieces of the stream ("use-arbitrary-mode" other than
    /// 0) or one whole frame each. Sent under the index 0x7F000002 are 24 bytes: zeros, size and
    /// version too, and at offset 20 the number 1 for pieces, 3 for frames. A component that
    /// refuses is logged.
    static void configureFramePackingFormat(const sp<AMessage>& format, const sp<IOMXNode>& node);
    static void configureFramePackingFormat(const sp<MetaData>& format, const sp<IOMXNode>& node);
    /// @}

    /// A Qualcomm decoder: frame packing as above; timestamps put in order, for VC-1 and MPEG-4
    /// components and AVI files, whose "file-format" begins with "video/avi"
    /// (ZRE_MEDIA_MIMETYPE_CONTAINER_AVI; the parser stores it, setTrackMeta does not); decoding of
    /// sync frames only, for the bit 0x400 of flags (thumbnails); user data, for 1 under
    /// "enable-extradata-user". A component that refuses is logged, and the rest set all the same,
    /// but for thumbnails, where the call ends. The component's name must not be null: it is
    /// compared by its beginning, and logged.
    static void configureQCOMVideoDecoder(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                          uint32_t flags, const char* componentName);
};

}  // namespace android
