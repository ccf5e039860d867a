// Key frames, where the container does not mark them.

#include "Helper/csd/KeyFrame.h"

#include "Helper/base/Log.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

bool isH263KeyFrame(csd::Bytes sample) {
    switch (csd::h263Picture(sample)) {
        case csd::H263Picture::kNoPicture: return false;
        case csd::H263Picture::kIntra: return true;
        case csd::H263Picture::kInterPtype:
            ZR_LOGW(base::kExtractorTag, "[PTYPE]H263 StartCode and NOT Iframe");
            return false;
        case csd::H263Picture::kInterPlusPtypeOpptype:
            ZR_LOGW(base::kExtractorTag, "[PLUSPTYPE with OPPTYPE]H263 StartCode and NOT Iframe");
            return false;
        case csd::H263Picture::kInterPlusPtype:
            ZR_LOGW(base::kExtractorTag, "[PLUSPTYPE]H263 StartCode and NOT Iframe");
            return false;
    }
    return false;
}

}  // namespace

bool MediaExtractorHelper::isKeyFrame(const uint8_t* data, size_t size, int codecType) {
    if (data == nullptr || size == 0) return false;
    const csd::Bytes sample(data, size);
    switch (codecType) {
        case kCodecTypeMpeg4:
        case kCodecTypeXvid:
        case kCodecTypeDivx4:
        case kCodecTypeDivx5:
        case kCodecTypeDivx6:
        case kCodecTypeMpeg4Asp: return csd::isMpeg4KeyFrame(sample);
        case kCodecTypeH263: return isH263KeyFrame(sample);
        case kCodecTypeAvc: return csd::isAvcKeyFrame(sample);
        default: return false;
    }
}

}  // namespace android
