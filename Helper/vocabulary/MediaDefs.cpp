#include "zrcodecparser/MediaDefs.h"

namespace android {

const char* const ZRCODECPARSER_VERSION = "ZR_CodecParser_R7.0.0.01";

}  // namespace android
