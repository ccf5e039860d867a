// What the fuzz targets share. A target calls the library with bytes that may be anything, and
// requires of each result what the headers promise.

#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/Host.h"
#include "platform/MediaFormat.h"
#include "zrcodecparser/MediaExtractorHelper.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

#define REQUIRE(condition)                                                                 \
    do {                                                                                   \
        if (!(condition)) {                                                                \
            std::fprintf(stderr, "%s:%d: not true: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                  \
        }                                                                                  \
    } while (false)

namespace fuzz {

using Bytes = std::span<const uint8_t>;

inline const bool kLogIsDropped = [] {
    android::host::setLogSink([](const android::host::LogLine&) {});
    return true;
}();

inline const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

// Whether the call ends in a fatal assertion, as some input must, rather than return.
template <typename Call>
bool endsFatally(Call call) {
    struct Fatal {};
    android::host::setFatalHandler([](const char*) { throw Fatal(); });
    try {
        call();
    } catch (const Fatal&) {
        return true;
    }
    return false;
}

// Takes bytes off the front of the input; zeros when there are none.
inline uint32_t take(Bytes& input, size_t count) {
    uint32_t value = 0;
    for (; count > 0; --count) {
        value = value << 8 | (input.empty() ? 0u : input[0]);
        if (!input.empty()) input = input.subspan(1);
    }
    return value;
}

inline bool same(Bytes left, Bytes right) {
    return left.size() == right.size() &&
           (left.empty() || std::memcmp(left.data(), right.data(), left.size()) == 0);
}

inline bool contains(Bytes bytes, Bytes part) {
    return part.empty() ||
           std::search(bytes.begin(), bytes.end(), part.begin(), part.end()) != bytes.end();
}

class Format {
public:
    AMediaFormat* get() const { return mFormat.get(); }

    // The keys in the order in which they were first set, each followed by a blank.
    std::string keys() const {
        std::string text;
        for (const auto& entry : android::host::formatEntries(get())) text += entry.key + ' ';
        return text;
    }
    // Valid until the format changes.
    Bytes buffer(const char* key) const {
        void* data = nullptr;
        size_t size = 0;
        REQUIRE(AMediaFormat_getBuffer(get(), key, &data, &size));
        return {static_cast<const uint8_t*>(data), size};
    }
    int32_t int32(const char* key) const {
        int32_t value = 0;
        REQUIRE(AMediaFormat_getInt32(get(), key, &value));
        return value;
    }
    std::string string(const char* key) const {
        const char* value = nullptr;
        REQUIRE(AMediaFormat_getString(get(), key, &value));
        return value;
    }

private:
    struct Delete {
        void operator()(AMediaFormat* format) const { AMediaFormat_delete(format); }
    };
    std::unique_ptr<AMediaFormat, Delete> mFormat{AMediaFormat_new()};
};

}  // namespace fuzz
