#include "inspect/records/Parameters.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/Omx.h"

namespace inspect {
namespace {

// The fields, each: its name; how many bytes, unless it is 4; words for the values from 0 on. One
// with [] is repeated to the end.
struct Layout {
    uint32_t index;
    std::string_view name;
    std::string_view fields;
};

// Those of OpenMAX IL 1.1.2, where pointers are as wide as the machine's, and the decoder makers'.
constexpr auto kLayouts = std::to_array<Layout>({
        {OMX_IndexParamPortDefinition, "OMX_IndexParamPortDefinition",
         "nSize,nVersion,nPortIndex,eDir=input|output,nBufferCountActual,nBufferCountMin,"
         "nBufferSize,bEnabled,bPopulated,eDomain=audio|video|image|other,cMIMEType:8,"
         "pNativeRender:8,bFlagErrorConcealment,eEncoding=unused|any|PCM,for video ports:40,"
         "bBuffersContiguous,nBufferAlignment"},
        {OMX_IndexParamAudioPcm, "OMX_IndexParamAudioPcm",
         "nSize,nVersion,nPortIndex,nChannels,eNumData=signed|unsigned,eEndian=big|little,"
         "bInterleaved,nBitPerSample,nSamplingRate,ePCMMode=linear|A-law|mu-law,"
         "eChannelMapping[]=none|front left|front right|centre|left side|right side|LFE|back "
         "centre|rear left|rear right"},
        {OMX_IndexParamAudioAac, "OMX_IndexParamAudioAac",
         "nSize,nVersion,nPortIndex,nChannels,nSampleRate,nBitRate,nAudioBandWidth,nFrameLength,"
         "nAACtools,nAACERtools,eAACProfile,"
         "eAACStreamFormat=MPEG-2 ADTS|ADTS|LOAS|LATM|ADIF|MP4,eChannelMode"},
        {OMX_IndexParamAudioAndroidAacPresentation, "OMX_IndexParamAudioAndroidAacPresentation",
         "nSize,nVersion,nMaxOutputChannels,nDrcCut,nDrcBoost,nHeavyCompression,"
         "nTargetReferenceLevel,nEncodedTargetLevel,nPCMLimiterEnable"},
        {OMX_IndexParamAudioG726, "OMX_IndexParamAudioG726",
         "nSize,nVersion,nPortIndex,nChannels,eG726Mode=unused|16 kb/s|24 kb/s|32 kb/s|40 kb/s"},
        {OMX_IndexParamAudioWma, "OMX_IndexParamAudioWma",
         "nSize,nVersion,port index,channel count:2,component's own:2,bit rate,component's own:8,"
         "sample rate,block align:2,encode options:2,advanced encode options 1:2,"
         "component's own:2,advanced encode options 2,format tag:2,bits per sample:2,"
         "component's own:4,voice encode options 1,voice encode options 2_0,"
         "voice encode options 2_1"},
        {OMX_IndexParamAudioRa, "OMX_IndexParamAudioRa",
         "nSize,nVersion,port index,channel count,sample rate,actual rate,bits per sample:2,"
         "audio quality:2,flavor index:2,component's own:2,bits per frame,granularity,"
         "four-character code"},
        {0x7FA30C07, "ALAC",
         "nSize,nVersion,port index,channel count,sample rate,component's own:24"},
        {0x7F00000B, "DivX version", "nSize,nVersion,port index,format code,profile"},
        {0x7F000002, "frame packing",
         "nSize,nVersion,port index,not used:8,mode=|arbitrary pieces||one whole frame"},
        {0x7F00001B, "timestamp reordering", "nSize,nVersion,port index,enable"},
        {0x7F000020, "user extra data", "enable"},
});

// The text up to the mark, which goes with it; all of it where there is none.
std::string cut(std::string_view& text, char mark) {
    const size_t end = std::min(text.find(mark), text.size());
    const std::string front(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return front;
}

void readField(Annotator& out, std::string_view field) {
    constexpr size_t kMostOfNumber = 8;
    std::string_view name = field.substr(0, field.find('='));
    std::string_view words = field.substr(std::min(name.size() + 1, field.size()));
    const std::string label = cut(name, ':');
    const size_t sizeBytes = name.empty() ? 4 : std::stoul(std::string(name));
    if (sizeBytes > kMostOfNumber) {
        out.bytes(label, sizeBytes);
        return;
    }
    const uint64_t value = out.little(label, sizeBytes);
    if (sizeBytes == 4 && value >> 31 != 0) out.say(std::to_string(static_cast<int32_t>(value)));
    for (uint64_t i = 0; i < value && !words.empty(); i++) cut(words, '|');
    const std::string word = cut(words, '|');
    if (!word.empty()) out.say(word);
}

}  // namespace

Explanation explainParameter(uint32_t index, const std::string& name, Bytes parameter) {
    const auto* found = std::ranges::find(kLayouts, index, &Layout::index);
    Layout layout = found != kLayouts.end() ? *found : Layout{index, name, "enable"};
    Annotator out(parameter);
    while (!layout.fields.empty()) {
        const std::string field = cut(layout.fields, ',');
        readField(out, field);
        while (field.find("[]") != std::string::npos && out.remaining() > 0) readField(out, field);
    }
    std::string digits;
    for (int shift = 28; shift >= 0; shift -= 4) digits += "0123456789abcdef"[index >> shift & 0xF];
    return {.key = std::string(layout.name) + " (0x" + digits + ")",
            .sizeBytes = parameter.size(),
            .rows = out.finish()};
}

}  // namespace inspect
