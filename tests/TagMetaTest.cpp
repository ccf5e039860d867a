// Tags as entries of a format: ID3 from a file, gapless comments, Vorbis comments.

#include <gtest/gtest.h>

#include <cerrno>

#include "Helper/vorbis/Base64.h"
#include "Helper/vorbis/PictureBlock.h"
#include "support/Platform.h"
#include "support/Tag.h"
#include "zrcodecparser/ID3.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using test::File;
using test::Format;
using test::frameV2_2;
using test::frameV2_3;
using test::Line;
using test::LogCapture;
using test::tag;
using test::text;

const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

TEST(TagMeta, V1TagAtTheEndOfAFile) {
    std::string v1 = "TAG";
    for (const std::string field : {"title", "artist", "album"})
        v1 += field + std::string(30 - field.size(), '\0');
    v1 += "1999" + std::string(31, 'c');
    for (const int track : {0, 1, 2, 3, 7, 255}) {
        File file{"audio" + v1.substr(0, 125) + '\0' + static_cast<char>(track) + '\xFF'};
        const Format format;
        EXPECT_EQ(helper->parseID3v2MetaData(&file.source, false, 0, format.get()), 0);
        EXPECT_EQ(format.text(),
                  "mixed-encoding-type: int32(51), album: string(album), artist: string(artist), "
                  "genre: string(255), title: string(title), year: string(1999), cdtracknum: "
                  "string(" +
                          std::to_string(track) + ")");
    }
    File file{v1};
    const Format format;
    EXPECT_EQ(helper->parseID3v2MetaData(&file.source, true, 0, format.get()), -10001);
    const auto* bytes = reinterpret_cast<const uint8_t*>(v1.data());
    EXPECT_EQ(helper->parseID3v2MetaData(bytes, v1.size(), false, format.get()), -10001);
}

// Notes what comes by the object.
struct Object : android::DataSourceHelper {
    explicit Object(File& below) : DataSourceHelper(&below.record), calls(below.calls) {}
    ssize_t readAt(off64_t offset, void* out, size_t size) override {
        return calls += "object ", DataSourceHelper::readAt(offset, out, size);
    }
    int32_t getSize(off64_t* size) override {
        return calls += "object ", DataSourceHelper::getSize(size);
    }
    uint32_t flags() override { return calls += "object ", DataSourceHelper::flags(); }
    std::string& calls;
};

// An ID3 asks the object, and for the size before it reads the end.
TEST(TagMeta, ReadsThroughItsSource) {
    File file{"TAG" + std::string(125, 'x')};
    Object object(file);
    EXPECT_TRUE(android::ID3(&object, false, 0).isValid());
    EXPECT_EQ(file.calls, "object read object size object read ");

    file.record.readAt = [](void*, off64_t, void* out, size_t size) {
        return static_cast<ssize_t>(tag(3, 0, "").copy(static_cast<char*>(out), size));
    };
    EXPECT_TRUE(android::ID3(&object, true, INT64_MAX - 10).isValid());
    const auto overflow = [&] { android::ID3(&object, true, INT64_MAX - 9); };
    EXPECT_NE(test::fatalText(overflow).find("overflow"), std::string::npos);
}

// A format is filled from the record; the object is asked for flags where the address tells to.
TEST(TagMeta, StreamsAreNotRead) {
    const struct {
        const char* uri;
        uint32_t flags;
        int32_t status;
        std::string calls;
    } rows[] = {
            {"HTTPS://x", 0x41, -10001, "address10 object flags "},
            {"http://host/file", 0x40, -10001, "address10 object flags "},
            {"http://x", 0xBF, 0, "address10 object flags read read "},
            {"http:/x", 0x40, 0, "address10 read read "},
            {"https:/x", 0x40, 0, "address10 read read "},
            {"", 0x40, 0, "address10 read read "},
    };
    for (const auto& row : rows) {
        File file{tag(3, 0, frameV2_3("TIT2", text("\3a"))), row.uri, row.flags};
        Object object(file);
        const Format format;
        EXPECT_EQ(helper->parseID3v2MetaData(&object, true, 0, format.get()), row.status);
        EXPECT_EQ(file.calls, row.calls);
        EXPECT_EQ(helper->parseID3GaplessInfo(&object, true, 0, format.get()), row.status);
        EXPECT_EQ(file.calls, row.calls + row.calls);
        EXPECT_EQ(format.string("title").has_value(), row.status == 0) << row.uri;
    }
}

TEST(TagMeta, GaplessComments) {
    const std::string value = " 00000000 00000840 000001CA 00000000004A5EA6";
    const std::string set = "encoder-delay: int32(2112), encoder-padding: int32(458)";
    const std::string other = frameV2_3("COMM", text("\0engiTunSMPBx\0 1 2 3"));
    const struct {
        std::string tag;
        std::string format;
        bool logged;
    } rows[] = {
            {tag(3, 0, other + frameV2_3("COMM", text("\0engiTunSMPB\0") + value)), set, true},
            {tag(3, 0, frameV2_3("COMM", text("\0en\0iTunSMPB\0") + value)), set, true},
            {tag(2, 0, frameV2_2("COM", text("\0engiTunSMPB\0") + value)), set, false},
            {tag(3, 0, other), "", true},
            {tag(3, 0,
                 frameV2_3("COMM", text("\0en")) +
                         frameV2_3("COMM", text("\0engiTunSMPB\0") + value)),
             set, true},
            // The first such comment counts, whatever it says.
            {tag(3, 0,
                 frameV2_3("COMM", text("\0engiTunSMPB\0 0 1")) +
                         frameV2_3("COMM", text("\0engiTunSMPB\0") + value)),
             "", true},
            {tag(3, 0, frameV2_3("COMM", text("\0engiTunSMPB\0 0 ffffffff 0"))),
             "encoder-delay: int32(-1), encoder-padding: int32(0)", true},
    };
    for (const auto& row : rows) {
        const LogCapture log("ID3Wrapper");
        File file{row.tag};
        const Format format;
        EXPECT_EQ(helper->parseID3GaplessInfo(&file.source, true, 5, format.get()), 0);
        EXPECT_EQ(format.text(), row.format);
        std::vector<Line> lines;
        if (row.logged) lines.push_back({4, "ID3Wrapper com->done() : id3 is COMM"});
        EXPECT_EQ(log.lines(), lines);
    }
}

std::string vorbis(const std::string& comment) {
    const Format format;
    helper->parseVorbisComment(format.get(), comment.c_str(), comment.size());
    return format.text();
}

TEST(VorbisComment, NamesAndKeys) {
    const Format format;
    for (const std::string comment :
         {"title=a=b", "ARTIST=c", "AlbumArtist=d", "Album=e", "COMPILATION=f", "COMPOSER=g",
          "GENRE=h", "AUTHOR=i", "TRACKNUMBER=j", "DISCNUMBER=k", "DATE=l", "YEAR=m", "LYRICIST=",
          "DESCRIPTION=n", "UNSYNCEDLYRICS=o", "LVRM=p", "ANDROID_LOOP=TRUE", "ANDROID_HAPTIC=2x"})
        helper->parseVorbisComment(format.get(), comment.c_str(), comment.size());
    EXPECT_EQ(format.text(),
              "title: string(a=b), mixed-encoding-type: int32(0), artist: string(c), albumartist: "
              "string(d), album: string(e), compilation: string(f), composer: string(g), genre: "
              "string(h), author: string(i), cdtracknum: string(j), discnum: string(k), date: "
              "string(l), year: string(m), lyricist: string(), user-message: string(n), "
              "unsynced-lyrics: string(o), key-rec-mode: string(p), loop: int32(1), "
              "haptic-channel-count: int32(2)");

    const std::string nothing = "mixed-encoding-type: int32(0)";
    EXPECT_EQ(vorbis("ALBUM ARTIST=x"), "albumartist: string(x), " + nothing);
    EXPECT_EQ(vorbis("ANDROID_HAPTIC=4294967298"), "haptic-channel-count: int32(2), " + nothing);
    errno = ERANGE;
    EXPECT_EQ(vorbis("ANDROID_HAPTIC="), "haptic-channel-count: int32(0), " + nothing);
    EXPECT_EQ(vorbis("ANDROID_HAPTIC=0x10"), "haptic-channel-count: int32(0), " + nothing);
    EXPECT_EQ(vorbis("ANDROID_HAPTIC=010"), "haptic-channel-count: int32(10), " + nothing);
    for (const char* comment :
         {"ANDROID_LOOP=1", "ANDROID_LOOP=true ", "TITLE Foo", "TITLEX=Foo", "TITL", ""})
        EXPECT_EQ(vorbis(comment), nothing) << comment;
    const LogCapture log;
    EXPECT_EQ(vorbis("ANDROID_HAPTIC=99999999999999999999"), nothing);
    EXPECT_EQ(log.lines(), (std::vector<Line>{{6, "Error(34) when parsing haptic channel count"}}));
}

// Every character at every place of texts that take each of the ways through the decoder
// (RFC 4648 4 and 5); the others are x, which stands for 49.
TEST(VorbisComment, Base64CharacterByCharacter) {
    const std::string alphabet =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/-_";
    for (const size_t length : {4u, 24u, 28u, 72u, 140u}) {
        for (size_t i = 0; i < 256 * length; ++i) {
            const size_t at = i / 256;
            std::string text(length, 'x');
            text[at] = static_cast<char>(i);
            const size_t index = alphabet.find(text[at]), bits = index < 64 ? index : index - 2;
            const bool isDigit = index != std::string::npos;
            std::vector<uint8_t> out(length / 4 * 3, 0xEE);
            ASSERT_EQ(android::vorbis::base64Decode(text, out.data()),
                      isDigit || text.back() == '=')
                    << text;
            const size_t changed = 0xC71C71 ^ (bits ^ 49) << (18 - at % 4 * 6);
            for (size_t group = 0; isDigit && group < length / 4; ++group)
                ASSERT_EQ(android::base::bigEndianAt(out, 3 * group, 3),
                          group == at / 4 ? changed : 0xC71C71)
                        << text;
        }
    }
}

// Up to three, each for a byte less; nothing is written behind the rest.
TEST(VorbisComment, Base64Padding) {
    for (size_t padding = 0; padding <= 4; ++padding) {
        const size_t size = 6 - std::min<size_t>(padding, 3);
        std::string out(6, 'x'), text(8 - padding, 'A');
        text.resize(8, '=');
        EXPECT_EQ(android::vorbis::base64DecodedSize(text), size);
        EXPECT_EQ(android::vorbis::base64Decode(text, reinterpret_cast<uint8_t*>(out.data())),
                  padding < 4);
        EXPECT_EQ(out.substr(size), std::string(6 - size, 'x'));
    }
}

// The picture block, each field as text.
std::string block(unsigned type, const std::string& mime, size_t mimeSize, size_t textSize,
                  size_t pictureSize) {
    return test::bigEndian(type, 4) + test::bigEndian(mimeSize, 4) + mime +
           test::bigEndian(textSize, 4) + "d" + std::string(16, '\1') +
           test::bigEndian(pictureSize, 4) + "PIC";
}

TEST(VorbisComment, PictureBlocks) {
    const std::string good = block(3, "image/png", 9, 1, 3);
    const std::pair<std::string, const char*> rows[] = {
            {good, "PIC"},
            {block(3, "-->x", 4, 1, 0), ""},
            {block(3, std::string(127, 'a'), 127, 1, 2), "PI"},
            {block(3, std::string(128, 'a'), 128, 1, 2), nullptr},
            {block(6, "a", 1, 1, 3), nullptr},
            {block(3, "-->", 3, 1, 3), nullptr},
            {block(3, text("-->\0a"), 5, 1, 3), nullptr},
            {block(3, "a", 1, 1, 4), nullptr},
            {block(3, "a", 1, 5, 0), nullptr},
            {block(3, "a", 6, 1, 3), nullptr},
            {test::bigEndian(3, 4) + test::bigEndian(30, 4) + std::string(24, 'a'), nullptr},
            {block(3, "a", 200, 1, 3), nullptr},
            {test::bigEndian(3, 4) + std::string(28, '\0'), ""},
            {good.substr(0, 31), nullptr},
            {"", nullptr},
    };
    for (const auto& [bytes, expected] : rows) {
        const std::vector<uint8_t> unterminated(bytes.begin(), bytes.end());
        const auto picture = android::vorbis::frontCover(unterminated);
        ASSERT_EQ(picture.has_value(), expected != nullptr) << testing::PrintToString(bytes);
        if (!picture) continue;
        EXPECT_EQ(std::string(picture->begin(), picture->end()), expected);
    }
}

TEST(VorbisComment, Pictures) {
    const std::string name = "METADATA_BLOCK_PICTURE=", none = "mixed-encoding-type: int32(0)";
    const std::string cover = "albumart: data(504943fbff), " + none;
    // Type 3, six empty fields, five bytes of picture.
    const std::string good = "AAAAAw" + std::string(36, 'A') + "VQSUP7/w==";
    const std::vector<Line> malformed{{6, "malformed base64 encoded data."}};
    for (const std::string& value :
         {good, good.substr(0, 48) + "_w==", "AAAABg" + good.substr(6),
          good.substr(0, 48) + "*w==", std::string("AAAAA"), std::string("AAA*"),
          std::string("A=AA"), std::string("===="), std::string("AA==AAAA")}) {
        const LogCapture log;
        const bool isBlock = value.size() > 9 && value[48] != '*';
        EXPECT_EQ(vorbis(name + value), isBlock && value[5] == 'w' ? cover : none) << value;
        EXPECT_EQ(log.lines(), isBlock ? std::vector<Line>() : malformed) << value;
    }
    const LogCapture quiet;
    EXPECT_EQ(vorbis(name), none);
    EXPECT_EQ(quiet.lines(), std::vector<Line>());
    // A length that is too short leaves no room for the picture; one that does not cover the name
    // is the caller's fault.
    const std::string comment = name + good;
    const Format format;
    const LogCapture log;
    helper->parseVorbisComment(format.get(), comment.c_str(), comment.size() - 4);
    EXPECT_EQ(log.lines(), malformed);
    const auto shorter = [&] {
        helper->parseVorbisComment(format.get(), comment.c_str(), name.size() - 1);
    };
    EXPECT_NE(test::fatalText(shorter).find("overflow"), std::string::npos);
}

}  // namespace
