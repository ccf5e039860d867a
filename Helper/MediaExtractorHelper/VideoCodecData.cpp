// Codec data of video tracks: which form each codec's takes, and the sequence header of VC-1 and
// WMV.

#include <algorithm>
#include <array>

#include "Helper/csd/Vc1Header.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/TrackInfo.h"

namespace android {
namespace {

enum class ConfigForm { kNone, kEsds, kAvc, kVc1, kTheora, kHevc };

struct ConfigRow {
    uint32_t codecType;
    ConfigForm form;
};

using enum ConfigForm;
constexpr auto kConfigRows = std::to_array<ConfigRow>({
        {kCodecTypeMpeg2, kEsds},
        {kCodecTypeMpeg4, kEsds},
        {kCodecTypeAvc, kAvc},
        {kCodecTypeWmv, kVc1},
        {kCodecTypeWmv7, kVc1},
        {kCodecTypeWmv8, kVc1},
        {kCodecTypeVc1Simple, kVc1},
        {kCodecTypeVc1Main, kVc1},
        {kCodecTypeVc1Advanced, kVc1},
        {kCodecTypeMpeg1, kEsds},
        {kCodecTypeXvid, kEsds},
        {kCodecTypeTheora, kTheora},
        {kCodecTypeDivx4, kEsds},
        {kCodecTypeDivx5, kEsds},
        {kCodecTypeDivx6, kEsds},
        {kCodecTypeMpeg4Asp, kEsds},
        {kCodecTypeHevc, kHevc},
});

ConfigForm configForm(uint32_t codecType) {
    const auto row = std::ranges::find(kConfigRows, codecType, &ConfigRow::codecType);
    return row == kConfigRows.end() ? kNone : row->form;
}

}  // namespace

status_t MediaExtractorHelper::setVideoConfig(void* trackInfo, const uint8_t* data, size_t& size,
                                              AMediaFormat* format) {
    switch (configForm(static_cast<const TrackInfo*>(trackInfo)->codecType)) {
        case kNone: break;
        case kEsds: setESDS(data, &size, format, false); break;
        case kAvc: return setAVCCSeqHeader(data, size, trackInfo, format);
        case kVc1: setVC1SeqHeader(data, &size, trackInfo, format); break;
        case kTheora:
            AMediaFormat_setBuffer(format, ZREAMEDIAFORMAT_KEY_THEORASPECIFICDATA, data, size);
            break;
        case kHevc: return MakeHEVCCodecSpecificData(data, size, format);
    }
    return OK;
}

status_t MediaExtractorHelper::setVC1SeqHeader(const void* data, size_t* size, void* trackInfo,
                                               AMediaFormat* format) {
    const auto& info = *static_cast<const TrackInfo*>(trackInfo);
    const auto header =
            csd::makeVc1SequenceHeader(info.codecType, {static_cast<const uint8_t*>(data), *size},
                                       info.video.width, info.video.height);
    if (!header) return OK;
    AMediaFormat_setBuffer(format, ZREAMEDIAFORMAT_KEY_VC1SEQUENCEHEADER, header->data(),
                           header->size());
    AMediaFormat_setInt32(format, ZREAMEDIAFORMAT_KEY_USEARBITRARYMODE, 0);
    return OK;
}

}  // namespace android
