#include "Helper/base/Check.h"

#include "platform/Log.h"

namespace android::base {

void fatal(const char* location, const char* text) {
    __android_log_assert(nullptr, nullptr, "%s %s", location, text);
}

void fatalOverflow() {
    fatal(kAtMediaExtractorHelper, "size arithmetic overflow");
}

}  // namespace android::base
