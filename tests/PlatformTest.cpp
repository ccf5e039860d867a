// The desktop stand-in keeps the promises of the platform's operations.

#include <gtest/gtest.h>

#include "platform/MetaData.h"
#include "platform/Strings.h"
#include "support/Platform.h"

namespace {

using test::Bytes;
using test::Format;

TEST(Platform, FormatKeepsTypesApartAndReplaces) {
    const Format format;
    AMediaFormat_setInt32(format.get(), "key", 1);
    AMediaFormat_setInt64(format.get(), "key", 2);
    EXPECT_EQ(format.int32("key"), std::nullopt);
    EXPECT_EQ(format.int64("key"), 2);
    AMediaFormat_setString(format.get(), "key", nullptr);
    EXPECT_EQ(format.int64("key"), 2);
    AMediaFormat_setBuffer(format.get(), "key", nullptr, 0);
    EXPECT_EQ(format.buffer("key"), Bytes());
    EXPECT_EQ(format.buffer("Key"), std::nullopt);
}

TEST(Platform, MetaDataKeepTypesApartAndReplace) {
    android::MetaDataBase meta;
    EXPECT_FALSE(meta.setInt32(1, 2));
    EXPECT_TRUE(meta.setInt64(1, 3));
    int32_t number = 0;
    int64_t value = 0;
    EXPECT_FALSE(meta.findInt32(1, &number));
    EXPECT_TRUE(meta.findInt64(1, &value) && value == 3);
    meta.setData(1, 0x696e3332 /* in32 */, "ab", 2);
    EXPECT_FALSE(meta.findInt32(1, &number));
}

// The borders of RFC 3629, and surrogates without their other half.
TEST(Platform, Utf16BecomesUtf8) {
    const std::pair<std::u16string, std::string> cases[] = {
            {u"\x7F\x80\x7FF", "\x7F\xC2\x80\xDF\xBF"},
            {u"\x800\xFFFF", "\xE0\xA0\x80\xEF\xBF\xBF"},
            {u"\xD800\xDC00\xDBFF\xDFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
            {u"\xD800", "\xEF\xBF\xBD"},
            {u"\xDC00\xD800z", "\xEF\xBF\xBD\xEF\xBF\xBDz"},
    };
    for (const auto& [utf16, utf8] : cases) {
        android::String8 text;
        text.setTo(utf16.data(), utf16.size());
        EXPECT_EQ(std::string(text.c_str(), text.size()), utf8);
    }
}

TEST(Platform, LogAndFatalTexts) {
    std::string lines;
    const host::LogSink sink = [&](const host::LogLine& line) {
        lines += std::to_string(line.priority) + line.tag + line.text;
    };
    const host::LogSink former = host::setLogSink(sink);
    const std::string longText(1000, 'x');
    __android_log_print(ANDROID_LOG_WARN, "T", "%s %d", longText.c_str(), 7);
    EXPECT_EQ(test::fatalText([] { __android_log_assert("condition", "T", nullptr); }),
              "condition");
    // A program that nests sinks gets each one back.
    const host::LogSink mine = host::setLogSink(former);
    mine({6, "a", "b"});
    EXPECT_EQ(lines, "5T" + longText + " 76ab");
}

}  // namespace
