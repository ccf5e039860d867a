// A program whose static object, older than its first call, uses the library while it is destroyed.

#include <cstdlib>

#include "platform/Log.h"
#include "support/Platform.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

int lines = 0;

bool findsCodec(int codecType, const char* mime) {
    const test::Format format;
    const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;
    helper->SupportCodecEx(codecType, format.get(), false);
    __android_log_print(ANDROID_LOG_WARN, "AtExit", "%s", format.text().c_str());
    return format.mime() == mime;
}

struct User {
    ~User() {
        if (!findsCodec(204, "audio/eac3") || lines != 2) std::_Exit(1);
    }
};
const User user;

}  // namespace

int main() {
    host::setLogSink([](const host::LogLine& line) { lines += line.tag == "AtExit" ? 1 : 0; });
    return findsCodec(104, "video/avc") ? 0 : 1;
}
