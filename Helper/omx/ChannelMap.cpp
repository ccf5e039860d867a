#include "Helper/omx/ChannelMap.h"

#include <array>

namespace android::omx {
namespace {

constexpr auto LF = OMX_AUDIO_ChannelLF;
constexpr auto RF = OMX_AUDIO_ChannelRF;
constexpr auto CF = OMX_AUDIO_ChannelCF;
constexpr auto LS = OMX_AUDIO_ChannelLS;
constexpr auto RS = OMX_AUDIO_ChannelRS;
constexpr auto LFE = OMX_AUDIO_ChannelLFE;
constexpr auto CS = OMX_AUDIO_ChannelCS;
constexpr auto LR = OMX_AUDIO_ChannelLR;
constexpr auto RR = OMX_AUDIO_ChannelRR;

constexpr size_t kMaxChannels = 8;

// A row for each number of channels.
constexpr OMX_AUDIO_CHANNELTYPE kMaps[kMaxChannels][kMaxChannels] = {
        {CF},
        {LF, RF},
        {LF, RF, CF},
        {LF, RF, LR, RR},
        {LF, RF, CF, LR, RR},
        {LF, RF, CF, LFE, LR, RR},
        {LF, RF, CF, LFE, LR, RR, CS},
        {LF, RF, CF, LFE, LR, RR, LS, RS},
};

}  // namespace

std::span<const OMX_AUDIO_CHANNELTYPE> channelMap(size_t channels) {
    if (channels == 0 || channels > kMaxChannels) return {};
    return std::span(kMaps[channels - 1]).first(channels);
}

}  // namespace android::omx
