#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {

status_t MediaExtractorHelper::parseID3v2MetaData(const uint8_t* data, size_t size, bool ignoreV1,
                                                  AMediaFormat* meta) {
    return mID3Wrapper->parseID3v2MetaData(data, size, ignoreV1, meta);
}

status_t MediaExtractorHelper::parseID3v2MetaData(DataSourceHelper* source, bool ignoreV1,
                                                  off64_t offset, AMediaFormat* meta) {
    return mID3Wrapper->parseID3v2MetaData(source, ignoreV1, offset, meta);
}

status_t MediaExtractorHelper::parseID3GaplessInfo(DataSourceHelper* source, bool ignoreV1,
                                                   off64_t offset, AMediaFormat* meta) {
    return mID3Wrapper->parseID3GaplessInfo(source, ignoreV1, offset, meta);
}

}  // namespace android
