#include "Helper/base/Check.h"

#include "platform/Log.h"

namespace android::base {

void fatal(const char* location, const char* text) {
    __android_log_assert(nullptr, nullptr, "%s %s", location, text);
}

void fatalNotEqual(const char* location, const char* operands, long long left, long long right) {
    __android_log_assert(nullptr, nullptr, "%s CHECK_EQ( %s) failed: %lld vs. %lld", location,
                         operands, left, right);
}

void fatalOverflow() {
    fatal(kAtMediaExtractorHelper, "size arithmetic overflow");
}

}  // namespace android::base
