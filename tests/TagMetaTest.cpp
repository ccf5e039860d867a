// Tags as entries of a format: ID3 from a file, gapless comments, Vorbis comments.

#include <gtest/gtest.h>
#include <strings.h>

#include <cstring>

#include "Helper/vorbis/Base64.h"
#include "support/Platform.h"
#include "support/Tag.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using test::Format;
using test::frameV2_2;
using test::frameV2_3;
using test::Line;
using test::LogCapture;
using test::tag;
using test::text;

const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

// A file with an address.
struct File {
    std::string data;
    std::string uri{};
    uint32_t flagBits = 0;

    CDataSource record{
            [](void* self, off64_t offset, void* out, size_t size) -> ssize_t {
                const auto& all = static_cast<File*>(self)->data;
                const auto start = std::min(static_cast<size_t>(offset), all.size());
                return static_cast<ssize_t>(all.copy(static_cast<char*>(out), size, start));
            },
            [](void* self, off64_t* size) {
                *size = static_cast<off64_t>(static_cast<File*>(self)->data.size());
                return 0;
            },
            [](void* self) { return static_cast<File*>(self)->flagBits; },
            [](void* self, char* out, size_t capacity) {
                static_cast<File*>(self)->uri.copy(out, capacity);
                return !static_cast<File*>(self)->uri.empty();
            },
            this};
    android::DataSourceHelper source{&record};
};

TEST(TagMeta, KeysOfBothGenerationsOfIds) {
    const struct {
        const char* key;
        const char* id;
        const char* idV2_2;
    } rows[] = {
            {"album", "TALB", "TAL"},       {"artist", "TPE1", "TP1"},
            {"albumartist", "TPE2", "TP2"}, {"composer", "TCOM", "TCM"},
            {"genre", "TCON", "TCO"},       {"title", "TIT2", "TT2"},
            {"year", "TYER", "TYE"},        {"author", "TEXT", "TXT"},
            {"cdtracknum", "TRCK", "TRK"},  {"discnum", "TPOS", "TPA"},
            {"compilation", "TCMP", "TCP"},
    };
    for (const auto& row : rows) {
        for (const auto& data :
             {tag(3, 0, frameV2_3(row.id, text("\3a")) + frameV2_3(row.id, "\3b")),
              tag(2, 0, frameV2_2(row.idV2_2, text("\3a")))}) {
            File file{data};
            const Format format;
            EXPECT_EQ(helper->parseID3v2MetaData(&file.source, true, 0, format.get()), 0);
            EXPECT_EQ(format.text(),
                      std::string("mixed-encoding-type: int32(0), ") + row.key + ": string(a)");
        }
    }
}

TEST(TagMeta, V1TagAtTheEndOfAFile) {
    std::string v1 = "TAG";
    for (const char* field : {"title", "artist", "album"})
        v1 += std::string(field) + std::string(30 - strlen(field), '\0');
    v1 += "1999" + std::string(28, 'c') + text("\0\x07\xFF");
    File file{"audio" + v1};
    const Format format;
    EXPECT_EQ(helper->parseID3v2MetaData(&file.source, false, 0, format.get()), 0);
    EXPECT_EQ(
            format.text(),
            "mixed-encoding-type: int32(51), album: string(album), artist: string(artist), genre: "
            "string(255), title: string(title), year: string(1999), cdtracknum: string(7)");

    EXPECT_EQ(helper->parseID3v2MetaData(&file.source, true, 0, format.get()), -10001);
    const auto* bytes = reinterpret_cast<const uint8_t*>(v1.data());
    EXPECT_EQ(helper->parseID3v2MetaData(bytes, v1.size(), false, format.get()), -10001);
}

TEST(TagMeta, StreamsAreNotRead) {
    const struct {
        const char* uri;
        uint32_t flags;
        bool read;
    } rows[] = {
            {"HTTPS://x", 0x41, false}, {"http://host/file", 0x40, false}, {"http://x", 0xBF, true},
            {"http:/x", 0x40, true},    {"ftp://x", 0x40, true},           {"", 0x40, true},
    };
    for (const auto& row : rows) {
        File file{tag(3, 0, frameV2_3("TIT2", text("\3a"))), row.uri, row.flags};
        const Format format;
        const int32_t expected = row.read ? 0 : -10001;
        EXPECT_EQ(helper->parseID3v2MetaData(&file.source, true, 0, format.get()), expected);
        EXPECT_EQ(helper->parseID3GaplessInfo(&file.source, true, 0, format.get()), expected);
        EXPECT_EQ(format.string("title").has_value(), row.read) << row.uri;
    }
}

TEST(TagMeta, GaplessComments) {
    const std::string value = " 00000000 00000840 000001CA 00000000004A5EA6";
    const std::string set = "encoder-delay: int32(2112), encoder-padding: int32(458)";
    const std::string other = frameV2_3("COMM", text("\0engiTunNORM\0 1 2 3"));
    const struct {
        std::string tag;
        std::string format;
        bool logged;
    } rows[] = {
            {tag(3, 0, other + frameV2_3("COMM", text("\0engiTunSMPB\0") + value)), set, true},
            {tag(3, 0, frameV2_3("COMM", text("\0en\0iTunSMPB\0") + value)), set, true},
            {tag(2, 0, frameV2_2("COM", text("\0engiTunSMPB\0") + value)), set, false},
            {tag(3, 0, other), "", true},
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
    const std::string nothing = "mixed-encoding-type: int32(0)";
    const struct {
        const char* comment;
        std::string stored;
    } rows[] = {
            {"title=Foo", "title: string(Foo)"},
            {"ALBUM ARTIST=a=b", "albumartist: string(a=b)"},
            {"AlbumArtist=", "albumartist: string()"},
            {"Album=x", "album: string(x)"},
            {"ARTIST=x", "artist: string(x)"},
            {"COMPILATION=1", "compilation: string(1)"},
            {"COMPOSER=x", "composer: string(x)"},
            {"GENRE=x", "genre: string(x)"},
            {"AUTHOR=x", "author: string(x)"},
            {"TRACKNUMBER=3/9", "cdtracknum: string(3/9)"},
            {"DISCNUMBER=1", "discnum: string(1)"},
            {"DATE=2001", "date: string(2001)"},
            {"YEAR=2001", "year: string(2001)"},
            {"LYRICIST=x", "lyricist: string(x)"},
            {"ANDROID_LOOP=TRUE", "loop: int32(1)"},
            {"ANDROID_LOOP=1", ""},
            {"ANDROID_LOOP=true ", ""},
            {"DESCRIPTION=x", "user-message: string(x)"},
            {"UNSYNCEDLYRICS=x", "unsynced-lyrics: string(x)"},
            {"LVRM=x", "key-rec-mode: string(x)"},
            {"ANDROID_HAPTIC=2x", "haptic-channel-count: int32(2)"},
            {"ANDROID_HAPTIC=", "haptic-channel-count: int32(0)"},
            {"ANDROID_HAPTIC=4294967298", "haptic-channel-count: int32(2)"},
            {"TITLE Foo", ""},
            {"TITLEX=Foo", ""},
            {"TITL", ""},
            {"", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(vorbis(row.comment), row.stored + (row.stored.empty() ? "" : ", ") + nothing);
    }
    const LogCapture log;
    EXPECT_EQ(vorbis("ANDROID_HAPTIC=99999999999999999999"), nothing);
    EXPECT_EQ(log.lines(), (std::vector<Line>{{6, "Error(34) when parsing haptic channel count"}}));
}

// The picture block, each field as text, in base64 by the book (RFC 4648 4).
std::string block(unsigned type, const std::string& mime, size_t mimeSize, size_t pictureSize) {
    return test::bigEndian(type, 4) + test::bigEndian(mimeSize, 4) + mime + test::bigEndian(1, 4) +
           "d" + std::string(16, '\1') + test::bigEndian(pictureSize, 4) + "PIC\xFB\xFF";
}

std::string base64(const std::string& data, const std::string& last2) {
    const std::string alphabet =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789" + last2;
    std::string out;
    for (size_t bit = 0; bit < data.size() * 8; bit += 6) {
        size_t index = 0;
        for (size_t i = bit; i < bit + 6; ++i) {
            const int byte = i / 8 < data.size() ? data[i / 8] : 0;
            index = index * 2 + (byte >> (7 - i % 8) & 1);
        }
        out += alphabet[index];
    }
    return out + std::string((4 - out.size() % 4) % 4, '=');
}

// Every character at every place of texts that take each of the ways through the decoder.
TEST(VorbisComment, Base64CharacterByCharacter) {
    const std::string alphabet =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/-_";
    for (const size_t length : {4u, 24u, 28u, 72u, 140u}) {
        for (size_t at = 0; at < length; ++at) {
            for (int character = 0; character < 256; ++character) {
                std::string text(length, 'x');
                text[at] = static_cast<char>(character);
                const size_t index = alphabet.find(text[at]);
                std::vector<uint8_t> out(length / 4 * 3, 0xEE);
                const bool padding = character == '=' && at == length - 1;
                ASSERT_EQ(android::vorbis::base64Decode(text, out.data()),
                          index != std::string::npos || padding)
                        << character << " at " << at << " of " << length;
                if (index == std::string::npos) continue;
                const std::string plain = base64({out.begin(), out.end()}, "+/");
                text[at] = alphabet[index < 64 ? index : index - 2];
                ASSERT_EQ(plain, text);
            }
        }
    }
}

TEST(VorbisComment, Pictures) {
    const std::string name = "METADATA_BLOCK_PICTURE=";
    const std::string none = "mixed-encoding-type: int32(0)";
    const std::string cover = "albumart: data(504943fbff), " + none;
    const std::string good = block(3, "image/png", 9, 5);
    EXPECT_EQ(vorbis(name + base64(good, "+/")), cover);
    EXPECT_EQ(vorbis(name + base64(good, "-_")), cover);
    EXPECT_EQ(vorbis(name + base64(block(3, "-->x", 4, 0), "+/")), "albumart: data(), " + none);

    const LogCapture log;
    for (const auto& bad :
         {block(6, "a", 1, 5), block(3, "-->", 3, 5), block(3, text("-->\0a"), 5, 5),
          block(3, "a", 1, 6), block(3, "a", 200, 5), block(3, std::string(128, 'a'), 128, 5),
          good.substr(0, 31), std::string()}) {
        EXPECT_EQ(vorbis(name + base64(bad, "+/")), none);
    }
    EXPECT_TRUE(log.lines().empty());
    const std::vector<Line> malformed{{6, "malformed base64 encoded data."}};
    for (const auto& bad : {"AAAAA", "AAA*", "A=AA", "====", "AA==AAAA"}) {
        const LogCapture each;
        EXPECT_EQ(vorbis(name + bad), none);
        EXPECT_EQ(each.lines(), malformed) << bad;
    }
    // A length that is too short leaves no room for the picture; one that does not cover the name
    // is the caller's fault.
    const std::string comment = name + base64(good, "+/");
    const Format format;
    const LogCapture each;
    helper->parseVorbisComment(format.get(), comment.c_str(), comment.size() - 4);
    EXPECT_EQ(each.lines(), malformed);
    EXPECT_NE(test::fatalText([&] {
                  helper->parseVorbisComment(format.get(), comment.c_str(), name.size() - 1);
              }).find("overflow"),
              std::string::npos);
}

}  // namespace
