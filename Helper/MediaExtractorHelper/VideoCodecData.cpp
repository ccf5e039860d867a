// Codec data of video tracks: which form each codec's takes, and the sequence header of VC-1 and
// WMV.

#include "Helper/csd/Vc1Header.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/TrackInfo.h"

namespace android {

status_t MediaExtractorHelper::setVideoConfig(void* trackInfo, const uint8_t* data, size_t& size,
                                              AMediaFormat* format) {
    switch (static_cast<const TrackInfo*>(trackInfo)->codecType) {
        case kCodecTypeMpeg1:
        case kCodecTypeMpeg2:
        case kCodecTypeMpeg4:
        case kCodecTypeMpeg4Asp:
        case kCodecTypeXvid:
        case kCodecTypeDivx4:
        case kCodecTypeDivx5:
        case kCodecTypeDivx6: setESDS(data, &size, format, false); return OK;
        case kCodecTypeAvc: return setAVCCSeqHeader(data, size, trackInfo, format);
        case kCodecTypeHevc: return MakeHEVCCodecSpecificData(data, size, format);
        case kCodecTypeWmv:
        case kCodecTypeWmv7:
        case kCodecTypeWmv8:
        case kCodecTypeVc1Simple:
        case kCodecTypeVc1Main:
        case kCodecTypeVc1Advanced: return setVC1SeqHeader(data, &size, trackInfo, format);
        case kCodecTypeTheora:
            AMediaFormat_setBuffer(format, ZREAMEDIAFORMAT_KEY_THEORASPECIFICDATA, data, size);
            return OK;
        default: return OK;
    }
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
