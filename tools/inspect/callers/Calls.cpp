#include "inspect/callers/Calls.h"

#include "inspect/callers/Hooks.h"
#include "platform/Host.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace inspect {
namespace {

const char* statusWords(int32_t status) {
    switch (status) {
        case android::OK: return ", ok";
        case -1: return kDoesNotApply;
        case android::BAD_VALUE: return ", bad value";
        case android::INVALID_OPERATION: return ", invalid operation";
        case -1010: return ", unsupported";
        case android::UNKNOWN_ERROR: return ", unknown error";
        default: return "";
    }
}

}  // namespace

Call callLibrary(const char* name, const std::function<std::optional<int32_t>()>& operation) {
    try {
        const auto status = operation();
        return {name, status ? std::to_string(*status) + statusWords(*status) : "", {}, {}};
    } catch (const LibraryFatal& fatal) {
        return {name, std::string("the library would end the process: ") + fatal.what(), {}, {}};
    }
}

}  // namespace inspect
