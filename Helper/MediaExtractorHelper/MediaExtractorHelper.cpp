#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {

MediaExtractorHelper::MediaExtractorHelper() : mID3Wrapper(new ID3Wrapper) {}

MediaExtractorHelper::~MediaExtractorHelper() = default;

}  // namespace android
