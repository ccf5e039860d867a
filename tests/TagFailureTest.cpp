// Tags from sources that fail, and without memory. A program of its own: the linker sends what the
// library allocates, where it can bear a refusal, through the functions below.

#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "platform/Strings.h"
#include "support/Platform.h"
#include "support/Tag.h"
#include "zrcodecparser/ID3.h"

int left = -1;  // allocations before one is refused, after which there is memory again
#define WRAP(name, parameters, arguments)                                  \
    extern "C" void* __real_##name parameters;                             \
    extern "C" void* __wrap_##name parameters {                            \
        return left < 0 || left-- > 0 ? __real_##name arguments : nullptr; \
    }
WRAP(malloc, (size_t size), (size))
WRAP(_ZnwmRKSt9nothrow_t, (size_t size, const std::nothrow_t& tag), (size, tag))
WRAP(_ZnamRKSt9nothrow_t, (size_t size, const std::nothrow_t& tag), (size, tag))

namespace {

using android::ID3;

struct Script {
    std::string file;
    int spoiltRead = -1;  // which read has another answer than it should have
    ssize_t answer = 0;
    off64_t size = static_cast<off64_t>(file.size());
    int32_t sizeStatus = 0;
};

struct Source : android::DataSourceBase, Script {
    explicit Source(const Script& script) : Script(script) {}
    int32_t initCheck() const override { return 0; }
    ssize_t readAt(off64_t offset, void* data, size_t count) override {
        const auto at = static_cast<size_t>(std::max<off64_t>(offset, 0));
        count = file.copy(static_cast<char*>(data), count, std::min(at, file.size()));
        return spoiltRead-- == 0 ? answer : static_cast<ssize_t>(count);
    }
    int32_t getSize(off64_t* out) override { return *out = size, sizeStatus; }
};

template <auto kMember>
constexpr auto kCall = [](void* source, auto... arguments) {
    return (static_cast<Source*>(source)->*kMember)(arguments...);
};

// The version of the tag that is read through the class, through the record of container parsers,
// or from memory; 0 for none.
ID3 reused(nullptr, 0, true);
int fromClass(const Script& script) {
    Source source(script);
    return reused.parseV2(&source, 0) || reused.parseV1(&source) ? reused.version() : 0;
}
int fromRecord(const Script& script) {
    Source source(script);
    CDataSource record{kCall<&Source::readAt>, kCall<&Source::getSize>, nullptr, nullptr, &source};
    android::DataSourceHelper helper(&record);
    const ID3 id3(&helper, false, 0);
    return id3.isValid() ? id3.version() : 0;
}
int fromMemory(const Script& script) {
    const ID3 id3(reinterpret_cast<const uint8_t*>(script.file.data()), script.file.size(), false);
    return id3.isValid() ? id3.version() : 0;
}

const std::string kV1 = "TAG" + std::string(125, 'x');
const std::string kV2_4 = test::tag(4, 0, test::frameV2_4("TIT2", "\3title"));

TEST(TagFailure, SourcesThatFail) {
    for (const auto read : {fromClass, fromRecord}) {
        for (const ssize_t answer : {9L, 0L, -5L, INT64_MIN}) {
            EXPECT_EQ(read({kV2_4 + kV1, 0, answer}), ID3::ID3_V1) << answer;  // of the header
            EXPECT_EQ(read({kV2_4 + kV1, 1, answer}), ID3::ID3_V1) << answer;  // of the body
            EXPECT_EQ(read({kV1, 1, answer}), 0) << answer;
        }
        for (off64_t n : {-129L, 0L, 127L, 129L, INT64_MAX}) EXPECT_EQ(read({kV1, -1, 0, n}), 0);
        for (int status : {-1010, -1, 1}) EXPECT_EQ(read({kV1, -1, 0, 128, status}), 0);
    }
    for (std::string part = kV2_4; !part.empty();) {
        part.pop_back();
        for (auto read : {fromClass, fromRecord, fromMemory}) EXPECT_EQ(read({part}), 0);
    }
}

// What comes of it when the first allocation is refused, the second, ... none: version and log.
std::string refusals(int (*read)(const Script&), const std::string& file) {
    std::string all;
    for (int before = 0;; ++before) {
        const test::LogCapture log("ZRID3");
        left = before;
        all += std::to_string(read({file})) + ' ';
        for (const auto& line : log.lines()) all += std::to_string(line.priority) + line.text + ' ';
        if (std::exchange(left, -1) >= 0) return all;
    }
}

TEST(TagFailure, NoMemoryForTags) {
    for (const auto read : {fromClass, fromRecord}) {
        EXPECT_EQ(refusals(read, kV1), "0 1 ");
        EXPECT_EQ(refusals(read, test::tag(3, 0, "") + kV1), "1 4 ");
        EXPECT_EQ(refusals(read, kV2_4), "0 5 ");
    }
    EXPECT_EQ(refusals(fromMemory, kV2_4), "0 0 5 ");
    const std::string plainSizes = test::tag(4, 0, test::frameV2_3("TIT2", std::string(200, 'x')));
    EXPECT_EQ(refusals(fromMemory, plainSizes), "0 0 5 ");
}

TEST(TagFailure, NoMemoryForTexts) {
    const auto repeated = [](char16_t unit) {  // too often for the stack
        const std::u16string units(1000, unit);
        return std::string(reinterpret_cast<const char*>(units.data()), 2000);
    };
    const auto textOf = [&repeated](const std::string& mark, char16_t unit) {
        const auto tag = test::tag(3, 0, test::frameV2_3("TIT2", mark + repeated(unit)));
        const ID3 id3(reinterpret_cast<const uint8_t*>(tag.data()), tag.size(), true);
        android::String8 text;
        left = 0;
        ID3::Iterator(id3, "TIT2").getString(&text);
        EXPECT_EQ(std::exchange(left, -1), -1);
        return std::string(text.c_str(), text.size());
    };
    EXPECT_EQ(textOf("\1\xFE\xFF", 0x2620), "");
    EXPECT_EQ(textOf("\2", 0x2620), "");
    EXPECT_EQ(textOf("\1\xFE\xFF", 0xE900), repeated(0xA9C3));  // U+00E9, for once not narrowed
    EXPECT_EQ(textOf("\1\xFF\xFE", 0x00E9), repeated(0xA9C3));
}

}  // namespace
