// Codec data of H.265 tracks.

#include "Helper/base/Log.h"
#include "Helper/base/Status.h"
#include "Helper/csd/HevcConfig.h"
#include "Helper/csd/HevcSps.h"
#include "zrcodecparser/MediaDefs.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {
namespace {

using base::kFailed;

void readDimensions(csd::Bytes sps, int32_t* width, int32_t* height) {
    if (sps.size() == csd::kHevcNalHeaderSize) return;
    const csd::HevcSps fields = csd::parseHevcSps(sps);
    csd::PictureSize size = csd::codedSize(fields);
    *width = size.width;
    *height = size.height;
    if (!fields.conformance_window_flag) return;
    size = csd::croppedSize(fields, size);
    *width = size.width;
    *height = size.height;
}

}  // namespace

status_t MediaExtractorHelper::MakeHEVCCodecSpecificData(const uint8_t* data, size_t size,
                                                         AMediaFormat* format) {
    if (size == 0) return kFailed;
    const csd::Bytes input(data, size);
    const auto [vps, sps, pps] = csd::findHevcUnits(input);
    if (!sps) {
        // Stored although the call fails, on purpose: this is also the way of a finished record.
        ZR_LOGW(base::kExtractorTag, "no sps found !!!");
        AMediaFormat_setBuffer(format, AMEDIAFORMAT_KEY_CSD_HEVC, data, size);
        return kFailed;
    }
    int32_t width = 0;
    int32_t height = 0;
    readDimensions(*sps, &width, &height);
    if (!pps) {
        ZR_LOGW(base::kExtractorTag,
                "no sps found !!!");  // the same words for a PPS, which log scanners know
        return kFailed;
    }
    const auto record = csd::makeHevcRecord(vps, *sps, *pps);
    if (!record) return kFailed;

    AMediaFormat_setString(format, AMEDIAFORMAT_KEY_MIME, ZRE_MEDIA_MIMETYPE_VIDEO_HEVC);
    AMediaFormat_setBuffer(format, AMEDIAFORMAT_KEY_CSD_HEVC, record->data(), record->size());
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_WIDTH, width);
    AMediaFormat_setInt32(format, AMEDIAFORMAT_KEY_HEIGHT, height);

    // The level is general_level_idc itself, not a thirtieth of it.
    const uint8_t profile = (*record)[csd::kHevcRecordProfile] & 0x1F;
    const int level = (*record)[csd::kHevcRecordLevel];
    ZR_LOGI(base::kExtractorTag, "found HEVC codec config (%d x %d, %s-profile level %d.%d)", width,
            height, HEVCProfileToString(profile), level / 10, level % 10);
    return OK;
}

void MediaExtractorHelper::FindHEVCDimensions(const sp<ABuffer>& sps, int32_t* width,
                                              int32_t* height) {
    readDimensions({sps->data(), sps->size()}, width, height);
}

const char* MediaExtractorHelper::HEVCProfileToString(uint8_t profile) {
    switch (profile) {
        case 1: return "Main Profile";
        case 2: return "Main 10 profile";
        case 3: return "Main Still Picture profile";
        default: return "Unknown";
    }
}

}  // namespace android
