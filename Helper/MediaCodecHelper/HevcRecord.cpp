#include "Helper/base/Status.h"
#include "Helper/csd/HevcConfig.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MetaKeys.h"

namespace android {
namespace {

constexpr uint32_t kParameterSetStreamKey = metakeys::code("hcsd");
constexpr uint32_t kParameterSetStreamType = metakeys::code("hvcc");

}  // namespace

status_t MediaCodecHelper::parseHEVCCodecSpecificData(const sp<MetaData>& meta, const void* data,
                                                      size_t size) {
    csd::HevcParameterSetStream stream;
    switch (stream.assign({static_cast<const uint8_t*>(data), size})) {
        case csd::HevcRecordResult::kMalformed: return ERROR_MALFORMED;
        case csd::HevcRecordResult::kEmpty: return base::kFailed;
        case csd::HevcRecordResult::kStream: break;
    }
    meta->setData(kParameterSetStreamKey, kParameterSetStreamType, stream.bytes().data(),
                  stream.bytes().size());
    return OK;
}

}  // namespace android
