#include <gtest/gtest.h>

#include "platform/Strings.h"
#include "support/Platform.h"
#include "support/Tag.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/ID3.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {

struct LayoutProbe {
    static size_t rawSize(const ID3& id3) { return id3.mRawSize; }
};

}  // namespace android

namespace {

using android::ID3;
using android::String8;
using test::frameV2_3;
using test::frameV2_4;
using test::tag;
using test::text;

struct Parsed : ID3 {
    explicit Parsed(const std::string& data)
        : ID3(reinterpret_cast<const uint8_t*>(data.data()), data.size(), true) {}
};

// "id=data" of every frame.
std::string framesOf(const ID3& id3) {
    std::string all;
    for (ID3::Iterator frame(id3, nullptr); !frame.done(); frame.next()) {
        String8 id;
        frame.getID(&id);
        size_t size = 0;
        const auto* data = reinterpret_cast<const char*>(frame.getData(&size));
        all += std::string(id.c_str()) + "=" + std::string(data, size) + ";";
    }
    return all;
}

struct Base : android::MemorySource {
    using MemorySource::MemorySource;
    android::status_t getSize(off64_t* size) override { return *size = 128, 0; }
};

TEST(Id3, TagsInPlaceOfOthers) {
    const std::string album = frameV2_3("TALB", text("\0a"));
    test::File good{tag(3, 0x40, text("\0\0\0\2\0\0") + album)}, bad{"ID3"},
            v1{"TAG" + std::string(122, 'x') + text("\0\1\2")}, plain{tag(3, 0, album)};
    Parsed id3(good.data);
    EXPECT_EQ(android::LayoutProbe::rawSize(id3), 28u);  // 10 + 6 + 12
    Base base(reinterpret_cast<const uint8_t*>(v1.data.data()), v1.data.size());
    EXPECT_TRUE(id3.parseV1(&base));
    EXPECT_TRUE(id3.parseV1(&v1.source));
    EXPECT_EQ(android::LayoutProbe::rawSize(id3), 0u);
    EXPECT_EQ(id3.version(), ID3::ID3_V1_1);
    EXPECT_EQ(ID3::Iterator(id3, nullptr).getEncodingType(), 0);
    v1.data[2] = 'X';
    EXPECT_FALSE(id3.parseV1(&v1.source));
    EXPECT_TRUE(id3.parseV2(&plain.source, 0));
    EXPECT_EQ(framesOf(id3), text("TALB=\0a;"));
    EXPECT_FALSE(id3.parseV2(&bad.source, 0));
    EXPECT_EQ(framesOf(id3), "");
    EXPECT_EQ(id3.version(), ID3::ID3_V2_3);
    EXPECT_TRUE(id3.isValid());
    EXPECT_EQ(id3.isMixedEncodingtype(), 1u);
    id3.checkMixedEncodingtype();
    EXPECT_EQ(id3.isMixedEncodingtype(), 0u);

    Parsed invalid("");
    EXPECT_TRUE(invalid.parseV2(&good.source, 0));
    EXPECT_EQ(framesOf(invalid), text("TALB=\0a;"));
    EXPECT_FALSE(invalid.isValid());
    invalid.checkMixedEncodingtype();
    EXPECT_EQ(invalid.isMixedEncodingtype(), 0u);
    EXPECT_NE(test::fatalText([] { ID3::Iterator(Parsed(""), "TIT2"); })
                      .find("ParserLibrary/id3/ID3 CHECK(mParent.mVersion == ID3_V1 || "
                            "mParent.mVersion == ID3_V1_1) failed."),
              std::string::npos);
}

TEST(Id3, WhatUnsynchronisationLeavesBehind) {
    const std::string data = text("\3\xFF\0b\xFF\0c"), plain = text("\3\xFF") + "b\xFF" + "c";
    const Parsed id3(tag(4, 0, frameV2_4("TIT2", data, 2)));
    size_t size = 0;
    const uint8_t* frame = ID3::Iterator(id3, nullptr).getData(&size);
    EXPECT_EQ(std::string(frame, frame + size + 2), plain + text("\0\0"));

    // Where the frames end to fit, the rest follows what has been done, and nothing follows the
    // rest.
    const std::string large = std::string(188, 'x') + frameV2_3("TCOM", "no");
    std::string pairs = "\3";
    for (int i = 0; i < 12; ++i) pairs += text("\xFF\0");
    Parsed failed(tag(3, 0, frameV2_3("TIT2", pairs, 2) + frameV2_3("TALB", large)));
    EXPECT_FALSE(failed.removeUnsynchronizationV2_4(false, false));
    EXPECT_EQ(framesOf(failed), "TIT2=\3" + std::string(12, '\xFF') + ";TALB=" + large + ";");
}

// ID3v2.3 3.2: the size of an extended header takes four bytes.
TEST(Id3, ExtendedHeadersThatDoNotFit) {
    for (const std::string& body : {text(""), text("abc"), text("\0\0\0\1")})
        EXPECT_FALSE(Parsed(tag(3, 0x40, body)).isValid());
    EXPECT_TRUE(Parsed(tag(3, 0x40, text("\0\0\0\0"))).isValid());
}

TEST(Id3, UnsynchronisationOnRequest) {
    Parsed header(tag(3, 0x40, text("\0\0\0\6\xFF\0\0\0\0\0")));
    header.removeUnsynchronization();  // the tag ends within its extended header now
    EXPECT_TRUE(header.removeUnsynchronizationV2_4(false, false));
    Parsed whole(tag(3, 0, frameV2_3("TIT2", text("\3\xFF\0b"))));
    whole.removeUnsynchronization();
    EXPECT_EQ(framesOf(whole), "");  // its size says a byte more than there is left
    const std::string large(0x2000C8, 'x');
    Parsed plain(tag(4, 0, frameV2_3("TIT2", large)));
    EXPECT_TRUE(plain.removeUnsynchronizationV2_4(false, false));
    EXPECT_FALSE(plain.removeUnsynchronizationV2_4(true, false));  // syncsafe 01 00 01 48
    EXPECT_TRUE(framesOf(plain) == "TIT2=" + large + ";");
}

TEST(Id3, BytesInMemory) {
    const uint8_t bytes[] = {1, 2, 3};
    android::MemorySource source(bytes, 3);
    const struct {
        off64_t offset;
        size_t size;
        std::string read;
    } rows[] = {{0, 3, "\1\2\3"}, {2, 5, "\3"}, {3, 1, ""}, {-1, 1, ""}, {INT64_MAX, 1, ""}};
    for (const auto& row : rows) {
        std::string out(row.size, 'x');
        EXPECT_EQ(source.readAt(row.offset, out.data(), row.size), std::ssize(row.read));
        EXPECT_EQ(out, row.read + std::string(row.size - row.read.size(), 'x'));
    }
    off64_t size = 7;
    char address[] = "x";
    EXPECT_EQ(source.getSize(&size), -1010);
    EXPECT_EQ(size, 0);
    size = 7;
    EXPECT_EQ(source.getAvailableSize(0, &size), -1);
    EXPECT_EQ(size, 7);
    EXPECT_EQ(source.initCheck(), 0);
    EXPECT_EQ(source.flags(), 0u);
    EXPECT_FALSE(source.getUri(address, 1));
    source.close();
    EXPECT_EQ(source.readAt(0, address, 1), 1);
}

TEST(Id3, SyncsafeNumbers) {
    size_t number = 0;
    const uint8_t good[] = {0x7F, 1, 0, 0x7F}, bad[] = {1, 2, 0x80, 0};
    EXPECT_TRUE(ID3::ParseSyncsafeInteger(good, &number));
    EXPECT_EQ(number, 0x7Fu << 21 | 1u << 14 | 0x7F);
    EXPECT_FALSE(ID3::ParseSyncsafeInteger(bad, &number));
    EXPECT_EQ(number, 1u << 7 | 2);
}

}  // namespace
