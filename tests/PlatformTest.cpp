// The desktop stand-in keeps the promises of the platform's operations.

#include <gtest/gtest.h>

#include "platform/BitReader.h"
#include "platform/CodecList.h"
#include "platform/MetaData.h"
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
    int32_t old = 0;
    int64_t value = 0;
    EXPECT_FALSE(meta.findInt32(1, &old));
    EXPECT_TRUE(meta.findInt64(1, &value) && value == 3);
}

TEST(Platform, BitReaderYieldsZerosPastTheEnd) {
    const Bytes data = {0xA5, 0xFF};
    android::ABitReader reader(data.data(), data.size());
    EXPECT_EQ(reader.getBits(4), 0xAu);
    reader.skipBits(3);
    EXPECT_EQ(reader.getBits(32), 0xFF800000u);  // nine bits of data, then zeros
    reader.skipBits(1000);
    EXPECT_EQ(reader.getBits(1), 0u);
}

TEST(Platform, LastReferenceDeletes) {
    struct Counted : android::RefBase {
        explicit Counted(bool& alive) : mAlive(alive) { mAlive = true; }
        ~Counted() override { mAlive = false; }
        bool& mAlive;
    };
    bool alive = false;
    android::sp<Counted> first = new Counted(alive);
    android::sp<android::RefBase> second = first;
    first = nullptr;
    EXPECT_TRUE(alive);
    second.clear();
    EXPECT_TRUE(!alive && second == nullptr);
}

TEST(Platform, MediaPlayerService) {
    EXPECT_NE(android::mediaPlayerService(), nullptr);
    const test::DeviceScope scope({.mediaServerAlive = false});
    EXPECT_EQ(android::mediaPlayerService(), nullptr);
}

TEST(Platform, LogAndFatalTexts) {
    std::vector<std::string> lines;
    const host::LogSink former = host::setLogSink([&](const host::LogLine& line) {
        lines.push_back(std::to_string(line.priority) + line.tag + line.text);
    });
    const std::string longText(1000, 'x');
    __android_log_print(ANDROID_LOG_WARN, "T", "%s %d", longText.c_str(), 7);
    EXPECT_EQ(test::fatalText([] { __android_log_assert("condition", "T", nullptr); }),
              "condition");
    EXPECT_TRUE(host::setLogSink(former));  // gives the one of this test back
    EXPECT_EQ(lines, std::vector<std::string>{"5T" + longText + " 7"});
}

}  // namespace
