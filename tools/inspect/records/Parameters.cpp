// The structures that components receive.

#include <algorithm>
#include <array>

#include "inspect/records/Annotator.h"
#include "inspect/records/StandardNames.h"
#include "platform/Omx.h"

namespace inspect {
namespace {

struct Structure {
    uint32_t index;
    std::string_view name;
    std::span<const Field> fields;
    std::string_view clause = {};  // see Record
};

// clang-format off
constexpr const char* kDirections[] = {"input", "output"};
constexpr const char* kDomains[] = {"audio", "video", "image", "other"};
constexpr const char* kEncodings[] = {"unused", "any", "PCM"};
constexpr const char* kSigns[] = {"signed", "unsigned"};
constexpr const char* kEndians[] = {"big", "little"};
constexpr const char* kPcmModes[] = {"linear", "A-law", "mu-law"};
constexpr const char* kSpeakers[] = {"none", "front left", "front right", "centre", "left side",
                                     "right side", "LFE", "back centre", "rear left", "rear right"};
constexpr const char* kAacFormats[] = {"MPEG-2 ADTS", "ADTS", "LOAS", "LATM", "ADIF", "MP4"};
constexpr const char* kG726Modes[] = {"unused", "16 kb/s", "24 kb/s", "32 kb/s", "40 kb/s"};
constexpr const char* kPieces[] = {"", "arbitrary pieces", "", "one whole frame"};

// Those of OpenMAX IL 1.1.2, where pointers are as wide as the machine's, and the decoder makers'.
// A last field that has [] is there as often as there is room.
constexpr Field kPortDefinition[] = {
    {"nSize"}, {"nVersion"}, {"nPortIndex"},
    {"eDir", 32, kDirections},
    {"nBufferCountActual"}, {"nBufferCountMin"}, {"nBufferSize"},
    {"bEnabled"}, {"bPopulated"},
    {"eDomain", 32, kDomains},
    {"cMIMEType", 64}, {"pNativeRender", 64},
    {"bFlagErrorConcealment"},
    {"eEncoding", 32, kEncodings},
    {"for video ports", 320},
    {"bBuffersContiguous"}, {"nBufferAlignment"},
};
constexpr Field kPcm[] = {
    {"nSize"}, {"nVersion"}, {"nPortIndex"},
    {"nChannels"},
    {"eNumData", 32, kSigns},
    {"eEndian", 32, kEndians},
    {"bInterleaved"}, {"nBitPerSample"}, {"nSamplingRate"},
    {"ePCMMode", 32, kPcmModes},
    {"eChannelMapping[]", 32, kSpeakers},
};
constexpr Field kAac[] = {
    {"nSize"}, {"nVersion"}, {"nPortIndex"},
    {"nChannels"}, {"nSampleRate"}, {"nBitRate"}, {"nAudioBandWidth"}, {"nFrameLength"},
    {"nAACtools"}, {"nAACERtools"}, {"eAACProfile"},
    {"eAACStreamFormat", 32, kAacFormats},
    {"eChannelMode"},
};
constexpr Field kAacPresentation[] = {
    {"nSize"}, {"nVersion"},
    {"nMaxOutputChannels"}, {"nDrcCut"}, {"nDrcBoost"}, {"nHeavyCompression"},
    {"nTargetReferenceLevel"}, {"nEncodedTargetLevel"}, {"nPCMLimiterEnable"},
};
constexpr Field kG726[] = {
    {"nSize"}, {"nVersion"}, {"nPortIndex"},
    {"nChannels"},
    {"eG726Mode", 32, kG726Modes},
};
constexpr Field kWma[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"channel count", 16}, {"component's own", 16},
    {"bit rate"}, {"component's own", 64}, {"sample rate"},
    {"block align", 16}, {"encode options", 16}, {"advanced encode options 1", 16},
    {"component's own", 16}, {"advanced encode options 2"},
    {"format tag", 16}, {"bits per sample", 16}, {"component's own", 32},
    {"voice encode options 1"}, {"voice encode options 2_0"}, {"voice encode options 2_1"},
};
constexpr Field kRealAudio[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"channel count"}, {"sample rate"}, {"actual rate"},
    {"bits per sample", 16}, {"audio quality", 16}, {"flavor index", 16}, {"component's own", 16},
    {"bits per frame"}, {"granularity"}, {"four-character code"},
};
constexpr Field kAlac[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"channel count"}, {"sample rate"}, {"component's own", 192},
};
constexpr Field kDivxVersion[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"format code"}, {"profile"},
};
constexpr Field kFramePacking[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"not used", 64},
    {"mode", 32, kPieces},
};
constexpr Field kReordering[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"enable"},
};
constexpr Field kSwitch[] = {{"enable"}};

constexpr std::string_view kOpenMax = "OpenMAX IL 1.1.2";
constexpr auto kStructures = std::to_array<Structure>({
    {OMX_IndexParamPortDefinition,             "OMX_IndexParamPortDefinition",             kPortDefinition, kOpenMax},
    {OMX_IndexParamAudioPcm,                   "OMX_IndexParamAudioPcm",                   kPcm, kOpenMax},
    {OMX_IndexParamAudioAac,                   "OMX_IndexParamAudioAac",                   kAac, kOpenMax},
    {OMX_IndexParamAudioAndroidAacPresentation, "OMX_IndexParamAudioAndroidAacPresentation", kAacPresentation},
    {OMX_IndexParamAudioG726,                  "OMX_IndexParamAudioG726",                  kG726, kOpenMax},
    {OMX_IndexParamAudioWma,                   "OMX_IndexParamAudioWma",                   kWma},
    {OMX_IndexParamAudioRa,                    "OMX_IndexParamAudioRa",                    kRealAudio},
    {0x7FA30C07,                               "ALAC",                                     kAlac},
    {0x7F00000B,                               "DivX version",                             kDivxVersion},
    {0x7F000002,                               "frame packing",                            kFramePacking},
    {0x7F00001B,                               "timestamp reordering",                     kReordering},
    {0x7F000020,                               "user extra data",                          kSwitch},
});
// clang-format on

void readField(Annotator& out, const Field& field) {
    const uint64_t value = out.little(field.name, field.bits, field.words);
    if (field.bits == 32) out.say(signedText<int32_t>(value));
}

}  // namespace

Record readParameter(uint32_t index, const std::string& name, Bytes parameter) {
    const auto* found = std::ranges::find(kStructures, index, &Structure::index);
    const Structure structure =
            found != kStructures.end() ? *found : Structure{index, name, kSwitch};
    Annotator out(parameter);
    for (const Field& field : structure.fields) readField(out, field);
    const Field& last = structure.fields.back();
    while (last.name.ends_with("[]") && out.remaining() > 0) readField(out, last);
    std::string digits;
    for (int shift = 28; shift >= 0; shift -= 4) digits += "0123456789abcdef"[index >> shift & 0xF];
    Record record = out.finish();
    record.clause = structure.clause;
    record.key = std::string(structure.name) + " (0x" + digits + ")";
    return record;
}

}  // namespace inspect
