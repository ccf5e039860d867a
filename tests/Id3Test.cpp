#include <gtest/gtest.h>

#include <cstddef>

#include "support/Platform.h"
#include "support/Tag.h"
#include "zrcodecparser/FormatKeys.h"
#include "zrcodecparser/ID3.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace android {

// The fields that code of other binaries finds at these places.
struct LayoutProbe {
    static_assert(offsetof(ID3, mIsValid) == 0 && offsetof(ID3, mData) == 8);
    static_assert(offsetof(ID3, mSize) == 16 && offsetof(ID3, mFirstFrameOffset) == 24);
    static_assert(offsetof(ID3, mVersion) == 32 && offsetof(ID3, mRawSize) == 40);
    static_assert(offsetof(ID3, mMixedEncodingType) == 48 && sizeof(ID3) == 56);
    static_assert(sizeof(ID3::Version) == 4 && ID3::ID3_V1 == 1 && ID3::ID3_V2_4 == 5);
    static_assert(sizeof(ID3::Iterator) == 40 && sizeof(DataSourceHelper) == 16);
    static_assert(sizeof(MemorySource) == 24 && sizeof(ID3Wrapper) == sizeof(RefBase));

    static std::vector<size_t> iteratorOffsets(const ID3::Iterator& i) {
        const auto at = [&i](const auto& field) {
            return static_cast<size_t>(reinterpret_cast<const char*>(&field) -
                                       reinterpret_cast<const char*>(&i));
        };
        return {at(i.mID), at(i.mOffset), at(i.mFrameData), at(i.mFrameSize)};
    }
    static size_t rawSize(const ID3& id3) { return id3.mRawSize; }
};

}  // namespace android

namespace {

using android::ID3;
using android::String8;
using test::frameV2_2;
using test::frameV2_3;
using test::frameV2_4;
using test::tag;
using test::text;

const uint8_t* bytesOf(const std::string& data) {
    return reinterpret_cast<const uint8_t*>(data.data());
}

std::string stringOf(const String8& text) {
    return {text.c_str(), text.size()};
}

struct Parsed : ID3 {
    explicit Parsed(const std::string& data) : ID3(bytesOf(data), data.size(), true) {}
};

std::string textOf(const ID3& id3, const char* id, bool secondHalf = false) {
    const ID3::Iterator frame(id3, id);
    String8 out;
    frame.getstring(&out, secondHalf);
    return frame.done() ? "(none)" : stringOf(out);
}

// "id=data" of every frame.
std::string framesOf(const ID3& id3) {
    std::string all;
    for (ID3::Iterator frame(id3, nullptr); !frame.done(); frame.next()) {
        String8 id;
        frame.getID(&id);
        size_t size = 0;
        const auto* data = reinterpret_cast<const char*>(frame.getData(&size));
        all += stringOf(id) + "=" + std::string(data, size) + ";";
    }
    return all;
}

TEST(Id3, FieldsStandWhereOthersLook) {
    const Parsed id3(tag(3, 0, frameV2_3("TIT2", "x")));
    EXPECT_EQ(android::LayoutProbe::iteratorOffsets(ID3::Iterator(id3, nullptr)),
              (std::vector<size_t>{8, 16, 24, 32}));
    EXPECT_EQ(android::LayoutProbe::rawSize(id3), 21u);
}

TEST(Id3, HeaderFlagsByVersion) {
    for (int version = 0; version < 256; ++version) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            const unsigned flag = 1u << bit;
            if (flag == 0x40) continue;  // the extended header, below
            const bool known = flag == 0x80 || (version == 3 && flag == 0x20) ||
                               (version == 4 && (flag == 0x20 || flag == 0x10));
            const bool valid = version >= 2 && version <= 4 && known;
            EXPECT_EQ(Parsed(tag(static_cast<char>(version), flag, "")).isValid(), valid)
                    << version << " " << flag;
        }
    }
}

TEST(Id3, SizeLimitAndLog) {
    const test::LogCapture log("ZRID3");
    EXPECT_TRUE(Parsed(tag(3, 0, std::string(0x700000, '\0'))).isValid());
    EXPECT_TRUE(log.lines().empty());
    EXPECT_FALSE(Parsed(tag(3, 0, std::string(0x700001, '\0'))).isValid());
    EXPECT_EQ(log.lines(),
              (std::vector<test::Line>{{6, "skipping huge ID3 metadata of size 7340033"}}));
}

TEST(Id3, ExtendedHeaders) {
    const std::string title3 = frameV2_3("TIT2", text("\0t"));
    const std::string title4 = frameV2_4("TIT2", text("\0t"));
    const struct {
        char version;
        std::string header;
        std::string behind;
        bool valid;
    } rows[] = {
            {3, text("\0\0\0\6\0\0\0\0\0\4"), text("\0\0\0\0"), true},  // 4 bytes of padding
            {3, text("\0\0\0\6\0\0\0\0\0\x11"), text("\0\0\0\0"), false},
            {3, text("\0\0\0\6\0\0\xFF\xFF\xFF\xFF"), "", false},
            {3, text("\0\0\0\2\0\0"), "", true},
            {3, text("\0\0\0\0"), "", true},
            {3, text("\xFF\xFF\xFF\xFC"), "", false},
            {4, text("\0\0\0\6\1\0"), "", true},
            {4, text("\0\0\0\5\1"), "", false},
            {4, text("\0\0\0\x7F\1\0"), "", false},
            {4, text("\0\0\0\x86\1\0"), "", false},
    };
    for (const auto& row : rows) {
        const auto& title = row.version == 3 ? title3 : title4;
        const Parsed id3(tag(row.version, 0x40, row.header + title + row.behind));
        EXPECT_EQ(id3.isValid(), row.valid) << testing::PrintToString(row.header);
        if (row.valid) {
            EXPECT_EQ(framesOf(id3), text("TIT2=\0t;"));
        }
    }
}

TEST(Id3, UnsynchronisationIsUndone) {
    // What follows an FF loses one 00, once.
    const std::string coded = text("\0\xFF\0\xE0\xFF\0\0\xFF\xFF\0"),
                      plain = text("\0\xFF\xE0\xFF\0\xFF\xFF");
    const auto code = [&](const std::string& frame) {
        return frame.substr(0, frame.size() - plain.size()) + coded;
    };
    EXPECT_EQ(framesOf(Parsed(tag(2, 0x80, code(frameV2_2("TT2", plain))))), "TT2=" + plain + ";");
    EXPECT_EQ(framesOf(Parsed(tag(3, 0x80, code(frameV2_3("TIT2", plain))))),
              "TIT2=" + plain + ";");

    // In v2.4 frame by frame: the flag, a data length indicator, or both; flags and lengths go.
    const std::string next = frameV2_4("TALB", text("\3a"));
    const std::string length = test::syncsafe(plain.size());
    EXPECT_EQ(framesOf(Parsed(tag(4, 0, frameV2_4("TIT2", coded, 2) + next))),
              "TIT2=" + plain + text(";TALB=\3a;"));
    EXPECT_EQ(framesOf(Parsed(tag(4, 0, frameV2_4("TIT2", length + coded, 3) + next))),
              "TIT2=" + plain + text(";TALB=\3a;"));
    EXPECT_EQ(framesOf(Parsed(tag(4, 0, frameV2_4("TIT2", length + coded, 1) + next))),
              "TIT2=" + coded + text(";TALB=\3a;"));
    // With the tag's flag alone the frame keeps its size, which now reaches into the next one.
    EXPECT_EQ(framesOf(Parsed(tag(4, 0x80, frameV2_4("TIT2", coded) + next))),
              "TIT2=" + plain + "TAL;");
}

TEST(Id3, PlainSizesInV2_4AreRepaired) {
    const std::string data(200, 'x');
    EXPECT_EQ(framesOf(Parsed(tag(4, 0, frameV2_3("TIT2", data) + frameV2_3("TALB", text("\0a"))))),
              "TIT2=" + data + text(";TALB=\0a;"));
    EXPECT_FALSE(Parsed(tag(4, 0, frameV2_3("TIT2", data).substr(0, 150))).isValid());
    // From the bytes as they were: undone twice, the first frame would lose both zeros.
    const std::string first = frameV2_4("TPE1", text("\0\xFF\0\0b"));
    EXPECT_EQ(framesOf(Parsed(tag(4, 0x80, first + frameV2_3("TIT2", data)))),
              text("TPE1=\0\xFF\0b;TIT2=") + data + ";");
}

TEST(Id3, TextEncodings) {
    const struct {
        std::string data;
        std::string text;
    } rows[] = {
            {text("\0caf\xE9"), "caf\xE9"},
            {text("\3caf\xC3\xA9\0x"), text("caf\xC3\xA9\0x")},  // counted
            {text("\1\xFF\xFE"
                  "A\0\xE9\0"),
             "A\xE9"},  // fits 8 bits
            {text("\1\xFE\xFF\0A\0\xE9"), "A\xE9"},
            {text("\1\xFF\xFE"
                  "A\0\x20\x26"),
             "A\xE2\x98\xA0"},
            {text("\1\xFE\xFF\x26\x20\x01"), "\xE2\x98\xA0"},  // an odd byte at the end
            {text("\1\x20\x26"), "\xE2\x98\xA0"},              // without a mark: little-endian
            {text("\1\xFF\xFE"), ""},
            {text("\2\0A\0\xE9"), "A\xC3\xA9"},  // not narrowed
            {text("\2\xD8\x3D\xDE\x00"), "\xF0\x9F\x98\x80"},
            {text("\4abc"), ""},
            {text("\1a"), ""},
            {"", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOf(Parsed(tag(3, 0, frameV2_3("TIT2", row.data))), "TIT2"), row.text)
                << testing::PrintToString(row.data);
    }
}

TEST(Id3, CommentsAndLyrics) {
    const Parsed comment(tag(3, 0, frameV2_3("COMM", text("\0engab\0cd"))));
    EXPECT_EQ(textOf(comment, "COMM"), text("engab\0cd"));
    EXPECT_EQ(textOf(comment, "COMM", true), "cd");
    // The first character of a description is not looked at, so an empty one hides the text.
    EXPECT_EQ(textOf(Parsed(tag(3, 0, frameV2_3("COMM", text("\0eng\0cd")))), "COMM", true), "");

    const std::string lyrics = text("\0eng\0la la");
    const Parsed id3(tag(2, 0, frameV2_2("ULT", lyrics) + frameV2_2("COM", lyrics)));
    EXPECT_EQ(textOf(id3, "ULT"), "la la");
    EXPECT_EQ(textOf(id3, nullptr), lyrics.substr(1));  // not asked for by its id
    EXPECT_EQ(textOf(Parsed(tag(3, 0, frameV2_3("USLT", text("\1eng\0\0l\0")))), "USLT"), "l");
    EXPECT_EQ(textOf(Parsed(tag(3, 0, frameV2_3("USLT", text("\0eng")))), "USLT"), "");
}

TEST(Id3, WhatTheWalkPassesOverAndWhereItEnds) {
    const std::string a = text("\0a");
    EXPECT_EQ(framesOf(Parsed(tag(3, 0,
                                  frameV2_3("TIT1", a, 0x80) + frameV2_3("TIT2", a, 0x40) +
                                          frameV2_3("TIT3", a, 0x20)))),
              text("TIT3=\0a;"));
    EXPECT_EQ(framesOf(Parsed(tag(4, 0,
                                  frameV2_4("TIT1", a, 8) + frameV2_4("TIT2", a, 4) +
                                          frameV2_4("TIT3", a, 0x40)))),
              text("TIT3=\0a;"));
    EXPECT_EQ(framesOf(Parsed(
                      tag(2, 0, frameV2_2("TT1", a) + frameV2_2("TT2", "") + frameV2_2("TT3", a)))),
              text("TT1=\0a;"));
    EXPECT_EQ(textOf(Parsed(tag(3, 0, frameV2_3(text("TT2\0"), a))), "TT2"), "a");
    EXPECT_NE(test::fatalText([] {
                  const Parsed none("");
                  ID3::Iterator frame(none, "TIT2");
              })
                      .find("ParserLibrary/id3/ID3 CHECK(mParent.mVersion == ID3_V1 || "
                            "mParent.mVersion == ID3_V1_1) failed."),
              std::string::npos);
}

TEST(Id3, PicturesAndTheirWarnings) {
    const struct {
        char version;
        std::string data;
        std::string mime;
        const char* picture;
        const char* warning;
    } rows[] = {
            {3, text("\0image/png\0\3d\0PIC"), "image/png", "PIC", nullptr},
            {4, text("\1image/png\0\3\xFF\xFE\0d\0\0PIC"), "image/png", "PIC", nullptr},
            {3, text("\7a\0\3\0\0P"), "a", "P", nullptr},
            {3, "", "", nullptr, "bogus album art size: mime"},
            {3, text("\0image"), "", nullptr, "bogus album art size: mime"},
            {3, text("\0image\0\3"), "image", nullptr, "bogus album art size: pic type"},
            {3, text("\0image\0\3d\0"), "image", nullptr, "bogus album art size: description"},
            {3, text("\0image\0\3dd"), "image", nullptr, "bogus album art size: description"},
            {3, text("\1image\0\3ddd"), "image", nullptr, "bogus album art size: description"},
            {2, text("\0JPG\3d\0PIC"), "image/jpeg", "PIC", nullptr},
            {2, text("\2PNG\3\0d\0\0PIC"), "image/png", "PIC", nullptr},
            {2, text("\0-->\3d\0"), "text/plain", "", nullptr},
            {2, text("\0GIF\3d\0PIC"), "", nullptr, nullptr},
            {2, text("\0PNG\3dd"), "image/png", nullptr, nullptr},
            {2, text("\0PNG\3"), "", nullptr, nullptr},
    };
    for (const auto& row : rows) {
        const test::LogCapture log("ZRID3");
        const std::string frame = row.version == 2   ? frameV2_2("PIC", row.data)
                                  : row.version == 3 ? frameV2_3("APIC", row.data)
                                                     : frameV2_4("APIC", row.data);
        const Parsed id3(tag(row.version, 0, frame));
        size_t size = 99;
        String8 mime;
        const auto* picture = static_cast<const char*>(id3.getAlbumArt(&size, &mime));
        ASSERT_EQ(picture != nullptr, row.picture != nullptr) << testing::PrintToString(row.data);
        EXPECT_EQ(std::string(picture == nullptr ? "" : picture, size),
                  row.picture == nullptr ? "" : row.picture);
        EXPECT_EQ(stringOf(mime), row.mime);
        const std::vector<test::Line> lines{{5, row.warning == nullptr ? "" : row.warning}};
        EXPECT_EQ(log.lines(), row.warning == nullptr ? std::vector<test::Line>() : lines);
    }
}

}  // namespace
