// What decoder glue calls between a track's format and the decoder component.
//
// How it is used: the format arrives as an AMessage, or as MetaData from older parsers; the
// operation for the track's codec hands the component its parameters.
//
// How it fails: operations that set up a component return 0, a status of the component's, or one of
// the negative codes named at each. A true encoder flag gives -1 at once: nothing here is for
// encoders. Fatal, in this order of reading: a key that the codec cannot do without, and a
// component that does not tell or take what every component must. Messages go to the system log
// under the tag "MediaCodecHelper".
//
// Ownership: all operations are static and keep no state. Objects and bytes belong to the caller
// and are only used during the call; whatever a store takes is its own copy. The forms that take
// MetaData make a message of them, as ZRCodeConvertMetaDataToMessage does, and go on as the others.
//
// Parameters are those of OpenMAX IL 1.1.2, or the decoder makers' own, little-endian. An audio
// component first tells its values, then receives them with those changed that are named; video
// parameters, and the AAC presentation, are sent as they are.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Buffer.h"
#include "platform/Errors.h"
#include "platform/Message.h"
#include "platform/MetaData.h"
#include "platform/OmxNode.h"
#include "zrcodecparser/Export.h"

namespace android {

class ZR_EXPORT MediaCodecHelper {
public:
    // --- Stores ---

    // The key in a message for a code in metadata (MetaKeys.h), the first where there are two;
    // "unknown" for any other code. The text is constant.
    static const char* getMsgKey(int metaKey);

    // Copy every entry that has a known key from one store to the other; what is absent, or of
    // another type, is passed over, whatever types the metadata's findData answers for. A null
    // message is made. Return 0. Codec data go into the message under "csd-0", with 1
    // under "csd" and 0 under "timeUs" in the buffer's own message, those of a later key in place
    // of those of an earlier one; from the message they are deliberately taken by their own keys,
    // and of two keys with one code the later counts. Fatal, for the last: null arguments.
    static status_t ZRCodeConvertMetaDataToMessage(const sp<MetaData>& meta, sp<AMessage>* msg);
    static status_t ZRCodeConvertMetaDataBaseToMessage(const MetaDataBase* meta, sp<AMessage>* msg);
    static status_t ZRCodeConvertMessageToMetaData(const sp<AMessage>& msg,
                                                   const sp<MetaData>& meta);

    // The first codec data there are: of VC-1, FLAC, ADPCM, Theora, RealAudio, RealVideo, ALAC, in
    // this order, under their own keys. The metadata's form returns 0, and the bytes, which stay
    // the metadata's; or -1, and writes nothing. The message's form returns null when there are
    // none.
    static status_t ZRgetCodecSpecificData(const sp<MetaData>& meta, const void*& data,
                                           size_t& size);
    static sp<ABuffer> ZRgetCodecSpecificData(const sp<AMessage>& msg);

    // Turns an HEVC decoder configuration record (ISO/IEC 14496-15 8.3.3.1.2) into the stream of
    // its VPS, SPS and PPS units and stores that under the key 'hcsd' with the type 'hvcc'. Each
    // unit stands behind as many bytes as the record's NAL unit lengths have: 00 00 00 01 for 4, 00
    // 00 01 for 3, zeros for 1 and 2. Where the record ends too early, its bytes read as zero.
    //
    // Returns 0; -1 when there is no such unit; -1007 when the record is shorter than 23 bytes, its
    // version is not 1, or the stream would exceed 1024 bytes. Nothing is stored but on 0.
    static status_t parseHEVCCodecSpecificData(const sp<MetaData>& meta, const void* data,
                                               size_t size);

    // --- Audio components: port 0 takes the coded data, port 1 gives PCM ---

    // PCM of 16 bits, signed and interleaved, on a port: "channel-count" (1 to 8), "sample-rate" in
    // Hz. Returns the status of the last parameter. Fatal: a missing key; then a component without
    // port definition or PCM mode, or that does not take the port definition; then, with the port
    // definition set, any other number of channels.
    static status_t setRawAudioFormat(const sp<AMessage>& format, uint32_t portIndex,
                                      const sp<IOMXNode>& node, bool encoder);
    static status_t setRawAudioFormat(const sp<MetaData>& format, uint32_t portIndex,
                                      const sp<IOMXNode>& node, bool encoder);

    // The places of 1 to 8 channels, in the order of the samples, as OMX_AUDIO_CHANNELTYPE. Returns
    // 0, or -22 for any other number, with the map as it was.
    static status_t getOMXChannelMapping(size_t channels, int map[]);

    // As setRawAudioFormat on the port.
    static status_t setG711Format(const sp<AMessage>& format, uint32_t portIndex,
                                  const sp<IOMXNode>& node, bool encoder);
    static status_t setG711Format(const sp<MetaData>& format, uint32_t portIndex,
                                  const sp<IOMXNode>& node, bool encoder);

    // G.726, mono at 8000 Hz: the mode for a "bitrate" of 16000, 24000 or 40000 bit/s, and that of
    // 32000 for any other. Returns -38 (logged) without one, else the status of the last parameter.
    // Fatal: a component that does not tell or take the mode, or does not tell its PCM mode.
    static status_t setG726Format(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                  bool encoder);
    static status_t setG726Format(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                  bool encoder);

    // AAC with an ADIF header. Returns -38 without "channel-count" or "sample-rate"; -1 for any
    // other AAC, which the platform sets up itself: where "aac-format-adif" is missing or 0; then
    // as setRawAudioFormat on port 1, then the status of the AAC profile. How to mix and limit the
    // output ("aac-max-output-channel_count", "aac-encoded-target-level", "aac-drc-..",
    // "aac-target-ref-level") is passed on, from messages only, and whether the component takes
    // that ignored.
    static status_t setAACFormat(const sp<AMessage>& format, uint32_t portIndex,
                                 const sp<IOMXNode>& node, bool encoder);
    static status_t setAACFormat(const sp<MetaData>& format, uint32_t portIndex,
                                 const sp<IOMXNode>& node, bool encoder);

    // ALAC: "channel-count", "sample-rate" on port 0; -1 for port 1. Returns the status of the
    // parameter. Fatal: a missing key; a component that does not tell its values.
    static status_t setAlacFormat(const sp<AMessage>& format, uint32_t portIndex,
                                  const sp<IOMXNode>& node, bool encoder);
    static status_t setAlacFormat(const sp<MetaData>& format, uint32_t portIndex,
                                  const sp<IOMXNode>& node, bool encoder);

    // WMA of up to two channels, in the layout of the device's decoders, 64 bytes. Returns -1
    // (logged) without "wma-version"; -1010 for more than two channels; 0, with nothing sent, for a
    // version that is none of 0 to 3; else the status of the component, but for version 3 (voice)
    // without asking whether it has told its values. Fatal: a key that is missing where the version
    // needs it, "wma-vir-pkt-size" among them, which is sent nowhere.
    static status_t setWMAFormat(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                 bool encoder);
    static status_t setWMAFormat(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                 bool encoder);

    // RealAudio, in the layout of the device's decoders, 44 bytes. Returns -1 for port 1, else the
    // status of the parameter. Fatal: a missing key; a component that does not tell its values.
    static status_t setRAFormat(const sp<AMessage>& format, uint32_t portIndex,
                                const sp<IOMXNode>& node, bool encoder);
    static status_t setRAFormat(const sp<MetaData>& format, uint32_t portIndex,
                                const sp<IOMXNode>& node, bool encoder);

    // Returns -1: no component of this family is set up here.
    static status_t setVOCodecFormat(const sp<AMessage>& format, const char* componentName,
                                     const sp<IOMXNode>& node, bool encoder);
    static status_t setVOCodecFormat(const sp<MetaData>& format, const char* componentName,
                                     const sp<IOMXNode>& node, bool encoder);

    // Has a Dolby decoder reconfigure when the endpoint changes. Returns the component's status.
    static status_t setDolbyFormat(const sp<AMessage>& format, uint32_t portIndex,
                                   const sp<IOMXNode>& node, bool encoder);

    // --- Video components ---

    // The DivX version ("divx-version", else 1, which is logged). Returns the component's status;
    // only the metadata's form looks at the encoder flag.
    static status_t setDivxFormat(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                  bool encoder);
    static status_t setDivxFormat(const sp<MetaData>& format, const sp<IOMXNode>& node,
                                  bool encoder);

    // Whether input buffers hold arbitrary pieces of the stream ("use-arbitrary-mode" other than 0)
    // or one whole frame each. A component that refuses is logged.
    static void configureFramePackingFormat(const sp<AMessage>& format, const sp<IOMXNode>& node);
    static void configureFramePackingFormat(const sp<MetaData>& format, const sp<IOMXNode>& node);

    // A Qualcomm decoder: frame packing as above; timestamps put in order, for VC-1 and MPEG-4
    // components and AVI files ("file-format"); decoding of sync frames only, for the bit 0x400 of
    // flags (thumbnails); user data, for 1 under "enable-extradata-user". A component that refuses
    // is logged, and the rest set all the same, but for thumbnails, where the call ends.
    static void configureQCOMVideoDecoder(const sp<AMessage>& format, const sp<IOMXNode>& node,
                                          uint32_t flags, const char* componentName);
};

}  // namespace android
