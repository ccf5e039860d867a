#include "inspect/records/Parameters.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "platform/Omx.h"

namespace inspect {
namespace {

using WordList = std::span<const std::string_view>;

struct Field {
    const char* name;
    size_t sizeBytes = 4;     // above 8: no number
    WordList words = {};      // for the values from 0 on; empty ones say nothing
    bool isRepeated = false;  // to the end
};

struct Structure {
    uint32_t index;
    std::string_view name;
    std::span<const Field> fields;
};

template <size_t N>
using WordRow = std::array<std::string_view, N>;

// clang-format off
constexpr WordRow<2> kDirections = {"input", "output"};
constexpr WordRow<4> kDomains = {"audio", "video", "image", "other"};
constexpr WordRow<3> kEncodings = {"unused", "any", "PCM"};
constexpr WordRow<2> kSigns = {"signed", "unsigned"};
constexpr WordRow<2> kEndians = {"big", "little"};
constexpr WordRow<3> kPcmModes = {"linear", "A-law", "mu-law"};
constexpr WordRow<10> kSpeakers = {"none", "front left", "front right", "centre", "left side",
                                  "right side", "LFE", "back centre", "rear left", "rear right"};
constexpr WordRow<6> kAacFormats = {"MPEG-2 ADTS", "ADTS", "LOAS", "LATM", "ADIF", "MP4"};
constexpr WordRow<5> kG726Modes = {"unused", "16 kb/s", "24 kb/s", "32 kb/s", "40 kb/s"};
constexpr WordRow<4> kPieces = {"", "arbitrary pieces", "", "one whole frame"};

// Those of OpenMAX IL 1.1.2, where pointers are as wide as the machine's, and the decoder makers'.
constexpr Field kPortDefinition[] = {
    {"nSize"}, {"nVersion"}, {"nPortIndex"},
    {"eDir", 4, kDirections},
    {"nBufferCountActual"}, {"nBufferCountMin"}, {"nBufferSize"},
    {"bEnabled"}, {"bPopulated"},
    {"eDomain", 4, kDomains},
    {"cMIMEType", 8}, {"pNativeRender", 8},
    {"bFlagErrorConcealment"},
    {"eEncoding", 4, kEncodings},
    {"for video ports", 40},
    {"bBuffersContiguous"}, {"nBufferAlignment"},
};
constexpr Field kPcm[] = {
    {"nSize"}, {"nVersion"}, {"nPortIndex"},
    {"nChannels"},
    {"eNumData", 4, kSigns},
    {"eEndian", 4, kEndians},
    {"bInterleaved"}, {"nBitPerSample"}, {"nSamplingRate"},
    {"ePCMMode", 4, kPcmModes},
    {"eChannelMapping[]", 4, kSpeakers, true},
};
constexpr Field kAac[] = {
    {"nSize"}, {"nVersion"}, {"nPortIndex"},
    {"nChannels"}, {"nSampleRate"}, {"nBitRate"}, {"nAudioBandWidth"}, {"nFrameLength"},
    {"nAACtools"}, {"nAACERtools"}, {"eAACProfile"},
    {"eAACStreamFormat", 4, kAacFormats},
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
    {"eG726Mode", 4, kG726Modes},
};
constexpr Field kWma[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"channel count", 2}, {"component's own", 2},
    {"bit rate"}, {"component's own", 8}, {"sample rate"},
    {"block align", 2}, {"encode options", 2}, {"advanced encode options 1", 2},
    {"component's own", 2}, {"advanced encode options 2"},
    {"format tag", 2}, {"bits per sample", 2}, {"component's own", 4},
    {"voice encode options 1"}, {"voice encode options 2_0"}, {"voice encode options 2_1"},
};
constexpr Field kRealAudio[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"channel count"}, {"sample rate"}, {"actual rate"},
    {"bits per sample", 2}, {"audio quality", 2}, {"flavor index", 2}, {"component's own", 2},
    {"bits per frame"}, {"granularity"}, {"four-character code"},
};
constexpr Field kAlac[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"channel count"}, {"sample rate"}, {"component's own", 24},
};
constexpr Field kDivxVersion[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"format code"}, {"profile"},
};
constexpr Field kFramePacking[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"not used", 8},
    {"mode", 4, kPieces},
};
constexpr Field kReordering[] = {
    {"nSize"}, {"nVersion"}, {"port index"},
    {"enable"},
};
constexpr Field kSwitch[] = {{"enable"}};

constexpr auto kStructures = std::to_array<Structure>({
    {OMX_IndexParamPortDefinition,             "OMX_IndexParamPortDefinition",             kPortDefinition},
    {OMX_IndexParamAudioPcm,                   "OMX_IndexParamAudioPcm",                   kPcm},
    {OMX_IndexParamAudioAac,                   "OMX_IndexParamAudioAac",                   kAac},
    {OMX_IndexParamAudioAndroidAacPresentation, "OMX_IndexParamAudioAndroidAacPresentation", kAacPresentation},
    {OMX_IndexParamAudioG726,                  "OMX_IndexParamAudioG726",                  kG726},
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
    constexpr size_t kMostOfNumber = 8;
    if (field.sizeBytes > kMostOfNumber) {
        out.bytes(field.name, field.sizeBytes);
        return;
    }
    const uint64_t value = out.little(field.name, field.sizeBytes);
    const bool isNegative = field.sizeBytes == 4 && value >> 31 != 0;
    if (isNegative) out.say(std::to_string(static_cast<int32_t>(value)));
    if (value < field.words.size() && !field.words[value].empty()) {
        out.say(std::string(field.words[value]));
    }
}

}  // namespace

Record readParameter(uint32_t index, const std::string& name, Bytes parameter) {
    const auto* found = std::ranges::find(kStructures, index, &Structure::index);
    const Structure structure =
            found != kStructures.end() ? *found : Structure{index, name, kSwitch};
    Annotator out(parameter);
    for (const Field& field : structure.fields) {
        readField(out, field);
        while (field.isRepeated && out.remaining() > 0) readField(out, field);
    }
    std::string digits;
    for (int shift = 28; shift >= 0; shift -= 4) digits += "0123456789abcdef"[index >> shift & 0xF];
    return {.key = std::string(structure.name) + " (0x" + digits + ")",
            .sizeBytes = parameter.size(),
            .rows = out.finish()};
}

}  // namespace inspect
