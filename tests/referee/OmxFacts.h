// What must be so of the OpenMAX IL declarations that stand above the inclusion of this file.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace omxfacts {

struct Fact {
    std::string name;
    uint64_t value;
    bool operator==(const Fact&) const = default;
};

std::vector<Fact> ours();
std::vector<Fact> standard();

#define SIZE(type) \
    { "sizeof " #type, sizeof(type) }
#define FIELD(type, field) \
    { #type "." #field, offsetof(type, field) }
#define VALUE(constant) \
    { #constant, static_cast < uint64_t>(constant) }

#define ZR_OMX_FACTS                                                                              \
    {                                                                                             \
        SIZE(OMX_U32), SIZE(OMX_S32), SIZE(OMX_BOOL), SIZE(OMX_VERSIONTYPE), SIZE(OMX_INDEXTYPE), \
                FIELD(OMX_VERSIONTYPE, s.nVersionMajor), SIZE(OMX_PARAM_PORTDEFINITIONTYPE),      \
                FIELD(OMX_PARAM_PORTDEFINITIONTYPE, nVersion),                                    \
                FIELD(OMX_PARAM_PORTDEFINITIONTYPE, nPortIndex),                                  \
                FIELD(OMX_PARAM_PORTDEFINITIONTYPE, format),                                      \
                FIELD(OMX_PARAM_PORTDEFINITIONTYPE, format.audio.eEncoding),                      \
                FIELD(OMX_PARAM_PORTDEFINITIONTYPE, nBufferAlignment),                            \
                SIZE(OMX_AUDIO_PARAM_PCMMODETYPE), FIELD(OMX_AUDIO_PARAM_PCMMODETYPE, nChannels), \
                FIELD(OMX_AUDIO_PARAM_PCMMODETYPE, eNumData),                                     \
                FIELD(OMX_AUDIO_PARAM_PCMMODETYPE, eEndian),                                      \
                FIELD(OMX_AUDIO_PARAM_PCMMODETYPE, bInterleaved),                                 \
                FIELD(OMX_AUDIO_PARAM_PCMMODETYPE, nBitPerSample),                                \
                FIELD(OMX_AUDIO_PARAM_PCMMODETYPE, nSamplingRate),                                \
                FIELD(OMX_AUDIO_PARAM_PCMMODETYPE, ePCMMode),                                     \
                FIELD(OMX_AUDIO_PARAM_PCMMODETYPE, eChannelMapping),                              \
                SIZE(OMX_AUDIO_PARAM_AACPROFILETYPE),                                             \
                FIELD(OMX_AUDIO_PARAM_AACPROFILETYPE, nChannels),                                 \
                FIELD(OMX_AUDIO_PARAM_AACPROFILETYPE, nSampleRate),                               \
                FIELD(OMX_AUDIO_PARAM_AACPROFILETYPE, eAACStreamFormat),                          \
                SIZE(OMX_AUDIO_PARAM_G726TYPE), FIELD(OMX_AUDIO_PARAM_G726TYPE, nChannels),       \
                FIELD(OMX_AUDIO_PARAM_G726TYPE, eG726Mode), VALUE(OMX_IndexParamPortDefinition),  \
                VALUE(OMX_IndexParamAudioPcm), VALUE(OMX_IndexParamAudioAac),                     \
                VALUE(OMX_IndexParamAudioRa), VALUE(OMX_IndexParamAudioWma),                      \
                VALUE(OMX_IndexParamAudioG726), VALUE(OMX_IndexVendorStartUnused),                \
                VALUE(OMX_AUDIO_CodingPCM), VALUE(OMX_NumericalDataSigned),                       \
                VALUE(OMX_EndianLittle), VALUE(OMX_AUDIO_PCMModeLinear), VALUE(OMX_TRUE),         \
                VALUE(OMX_AUDIO_MAXCHANNELS), VALUE(OMX_AUDIO_ChannelLF),                         \
                VALUE(OMX_AUDIO_ChannelRF), VALUE(OMX_AUDIO_ChannelCF),                           \
                VALUE(OMX_AUDIO_ChannelLS), VALUE(OMX_AUDIO_ChannelRS),                           \
                VALUE(OMX_AUDIO_ChannelLFE), VALUE(OMX_AUDIO_ChannelCS),                          \
                VALUE(OMX_AUDIO_ChannelLR), VALUE(OMX_AUDIO_ChannelRR),                           \
                VALUE(OMX_AUDIO_AACStreamFormatADIF), VALUE(OMX_AUDIO_G726Mode16),                \
                VALUE(OMX_AUDIO_G726Mode24), VALUE(OMX_AUDIO_G726Mode32),                         \
                VALUE(OMX_AUDIO_G726Mode40),                                                      \
    }

}  // namespace omxfacts
