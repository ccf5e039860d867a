#include "Helper/base/FourCC.h"
#include "Helper/csd/HevcConfig.h"
#include "zrcodecparser/MediaCodecHelper.h"

namespace android {
namespace {

constexpr uint32_t kParameterSetStreamKey = base::fourcc("hcsd");
constexpr uint32_t kParameterSetStreamType = base::fourcc("hvcc");

constexpr status_t kNothingToStore = -1;

}  // namespace

status_t MediaCodecHelper::parseHEVCCodecSpecificData(const sp<MetaData>& meta, const void* data,
                                                      size_t size) {
    csd::HevcParameterSetStream stream;
    switch (stream.assign({static_cast<const uint8_t*>(data), size})) {
        case csd::HevcRecordResult::kMalformed: return ERROR_MALFORMED;
        case csd::HevcRecordResult::kEmpty: return kNothingToStore;
        case csd::HevcRecordResult::kStream: break;
    }
    meta->setData(kParameterSetStreamKey, kParameterSetStreamType, stream.bytes().data(),
                  stream.bytes().size());
    return OK;
}

}  // namespace android
