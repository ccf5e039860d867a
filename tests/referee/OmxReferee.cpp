// The platform's OpenMAX IL declarations against those of the standard's own headers. There is
// nothing to run: what differs does not compile.

#include <array>

#include "platform/Omx.h"

namespace {

constexpr int kMaxChannels = OMX_AUDIO_MAXCHANNELS;  // a macro in the standard's headers

// Their words are "long": 32 bits wide on the machines of their time, and made so here.
namespace standard {
#ifdef __clang__
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define OMX_SKIP64BIT
#define long int
#include <OMX_Audio.h>
#include <OMX_Component.h>
#include <OMX_Core.h>
#include <OMX_Index.h>
#undef long
}  // namespace standard

// clang-format off
template <typename Version, typename Port, typename Pcm, typename Aac, typename G726>
constexpr auto kLayout = std::to_array<size_t>({
        sizeof(Version), offsetof(Version, s.nVersionMajor), sizeof(Port), offsetof(Port, nVersion),
        offsetof(Port, nPortIndex), offsetof(Port, format), offsetof(Port, format.audio.eEncoding),
        offsetof(Port, nBufferAlignment), sizeof(Pcm), offsetof(Pcm, nChannels),
        offsetof(Pcm, eNumData), offsetof(Pcm, eEndian), offsetof(Pcm, bInterleaved),
        offsetof(Pcm, nBitPerSample), offsetof(Pcm, nSamplingRate), offsetof(Pcm, ePCMMode),
        offsetof(Pcm, eChannelMapping), sizeof(Aac), offsetof(Aac, nChannels),
        offsetof(Aac, nSampleRate), offsetof(Aac, eAACStreamFormat), sizeof(G726),
        offsetof(G726, nChannels), offsetof(G726, eG726Mode)});
#define LAYOUT(of)                                                                          \
    kLayout<of::OMX_VERSIONTYPE, of::OMX_PARAM_PORTDEFINITIONTYPE,                          \
            of::OMX_AUDIO_PARAM_PCMMODETYPE, of::OMX_AUDIO_PARAM_AACPROFILETYPE,            \
            of::OMX_AUDIO_PARAM_G726TYPE>
#define VALUES(of)                                                                          \
    std::to_array<uint64_t>({                                                               \
            sizeof(of::OMX_U32), sizeof(of::OMX_S32), sizeof(of::OMX_BOOL),                 \
            sizeof(of::OMX_INDEXTYPE), of::OMX_IndexParamPortDefinition,                    \
            of::OMX_IndexParamAudioPcm, of::OMX_IndexParamAudioAac,                         \
            of::OMX_IndexParamAudioRa, of::OMX_IndexParamAudioWma,                          \
            of::OMX_IndexParamAudioG726, of::OMX_IndexVendorStartUnused,                    \
            of::OMX_AUDIO_CodingPCM, of::OMX_NumericalDataSigned, of::OMX_EndianLittle,     \
            of::OMX_AUDIO_PCMModeLinear, of::OMX_TRUE, of::OMX_AUDIO_ChannelLF,             \
            of::OMX_AUDIO_ChannelRF, of::OMX_AUDIO_ChannelCF, of::OMX_AUDIO_ChannelLS,      \
            of::OMX_AUDIO_ChannelRS, of::OMX_AUDIO_ChannelLFE, of::OMX_AUDIO_ChannelCS,     \
            of::OMX_AUDIO_ChannelLR, of::OMX_AUDIO_ChannelRR,                               \
            of::OMX_AUDIO_AACStreamFormatADIF, of::OMX_AUDIO_G726Mode16,                    \
            of::OMX_AUDIO_G726Mode24, of::OMX_AUDIO_G726Mode32, of::OMX_AUDIO_G726Mode40})
// clang-format on
static_assert(LAYOUT() == LAYOUT(standard));
static_assert(VALUES() == VALUES(standard));
static_assert(kMaxChannels == OMX_AUDIO_MAXCHANNELS);

}  // namespace
