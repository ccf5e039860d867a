// Comparison of ID3v2 tags, and of what formats get of them, with a model.

#include <gtest/gtest.h>

#include "model/Id3Model.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using namespace std::string_literals;
using namespace test;

const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

std::vector<std::string> split(const std::string& text) {
    std::vector<std::string> parts(1);
    for (std::istringstream in(text); std::getline(in, parts.back(), ' ');) parts.emplace_back();
    return parts;
}

// Key, first and second id; the first six in the order of the bits of the mask.
const auto kTexts = split(
        "album TALB TAL artist TPE1 TP1 albumartist TPE2 TP2 composer TCOM TCM genre TCON TCO "
        "title TIT2 TT2 year TYE TYER author TXT TEXT cdtracknum TRK TRCK discnum TPA TPOS "
        "compilation TCP TCMP");
const auto kOtherIds =
        split("COMM COM COMM COM USLT ULT APIC PIC APIC PIC APIC PIC \0WX UM\0U \x80"s);

// What frames are made of: characters of all sizes, byte-order marks, heads of frames.
const auto kPieces = split(
        "a \xe9 \xff \0 \0 \0\0 \0a \0\xe9 a\0 \xe9\0 a\0\xe9\0 \xac! =\xd8\0\xde \xff\xfe "
        "\xfe\xff \xfe\xff\0\xe9 "
        "\xff\0\xff\0\0 eng eng\0 eng\0\0 engabc\0 image/png\0\3 PNG\3 PNA\3 JPG\3 -->\3 GIF\3"s);

struct Writer : Random {
    using Random::Random;
    uint32_t version = of({2, 3, 4, 4});
    bool plain = oneIn(3), unsynchronized = oneIn(3);

    // Mostly 0.
    uint32_t odd(uint32_t oneOf, uint32_t limit) { return oneIn(oneOf) ? below(limit) : 0; }

    std::string pick(const std::vector<std::string>& choices) {
        return choices[below(static_cast<uint32_t>(choices.size()))];
    }

    static std::string escaped(std::string data) {
        for (size_t i = data.size(); i-- > 1;) {
            if (data[i - 1] == '\xff' && (data[i] == 0 || (data[i] & 0xe0) == 0xe0))
                data.insert(i, 1, '\0');
        }
        return data;
    }

    std::string frame() {
        std::string id = pick(oneIn(2) ? kTexts : kOtherIds);
        id.resize(version == 2 ? 3 : 4);
        std::string data = bigEndian(oneIn(9) ? of({4, 5, 0x83}) : below(4), 1);
        for (uint32_t n = below(7); n > 0; --n) data += pick(kPieces);
        data.append(oneIn(400) ? 0x10000 : odd(8, 300), 'x');
        const uint32_t flags =
                version == 3 ? of({0, 0, 0, 0x80, 0x40, any()}) : of({0, 0, 1, 2, 3, 4, 8, any()});
        if (version == 4 && (flags & 2 || unsynchronized)) data = escaped(data);
        if (version == 4 && flags & 1) data = syncsafe(data.size()) + data;
        data.resize(oneIn(12) ? below(6) : data.size());
        const size_t size = data.size() + odd(40, 5) - odd(40, 2);
        if (version == 2) return id + bigEndian(size, 3) + data;
        id += version == 4 && !plain ? syncsafe(size) : bigEndian(size, 4);
        return id + bigEndian(flags, 2) + data;
    }

    std::string tag() {
        const uint32_t padding = odd(2, 25), extended = of({6, 6, 10, 12, 128, below(20), any()});
        std::string body, extra = bigEndian(extended, 4);
        if (version == 4) extra = syncsafe(extended);
        extra += bigEndian(0, 2) + bigEndian(padding + odd(4, 20), 4) + std::string(120, '1');
        extra = oneIn(5) ? extra.substr(0, extended + (version == 3 ? 4 : 0)) : "";
        for (uint32_t n = below(7); n > 0; --n) body += frame();
        body = extra + body + std::string(padding, '\0');
        if (unsynchronized && version < 4) body = escaped(body);
        const uint32_t flags =
                unsynchronized * 0x80u + !extra.empty() * 0x40u + odd(12, of({2, 0x40}));
        const size_t size = oneIn(60) ? 0x700000 + below(2) : body.size() + odd(15, 3);
        std::string data = "ID3" + bigEndian(version + odd(40, 4), 1) +
                           bigEndian(oneIn(20) ? of({1, 0xfe, 0xff}) : 0, 1) + bigEndian(flags, 1) +
                           syncsafe(size) + body;
        if (oneIn(8)) data[below(oneIn(2) ? 10 : 4096) % data.size()] = static_cast<char>(any());
        if (oneIn(20)) data.resize(below(static_cast<uint32_t>(data.size())));
        return data + std::string(odd(2, 3), 'a');
    }
};

Outcome modelMetaData(const Id3Tag& tag, std::string& mime, Lines lines) {
    if (tag.version == 0) return {AMEDIA_ERROR_MALFORMED, {}, lines};
    int32_t mask = 0;
    Stored stored{{"mixed-encoding-type", 0}};
    for (size_t i = 0; i + 2 < kTexts.size(); i += 3) {
        auto frames = modelFrames(tag, kTexts[i + 1].c_str());
        if (frames.empty()) frames = modelFrames(tag, kTexts[i + 2].c_str());
        if (frames.empty()) continue;
        if (i < 18 && frames[0].encoding == 0) mask |= 1 << i / 3;
        stored.emplace_back(kTexts[i], modelText(frames[0], "", false).c_str());
    }
    stored[0].second = mask;
    const auto picture = modelPicture(tag, mime, lines);
    if (picture) stored.emplace_back("albumart", Bytes(picture->begin(), picture->end()));
    return {0, stored, lines};
}

std::string counted(const android::String8& text) {
    return {text.c_str(), text.size()};
}

void compareFrames(const android::ID3& actual, const Id3Tag& tag, const char* id) {
    auto frames = modelFrames(tag, id);
    frames.push_back({"", "", 0xff});
    android::ID3::Iterator at(actual, id);
    android::String8 name, text, second;  // as they are left by the frame before
    for (const Id3Frame& frame : frames) {
        size_t size;
        at.getID(&name);
        at.getString(&text, &second);
        const uint8_t* data = at.getData(&size);
        ASSERT_EQ(counted(name), frame.id);
        ASSERT_EQ(std::string(data, data + size), frame.data);
        ASSERT_EQ(counted(text), modelText(frame, id != nullptr ? id : "", false));
        ASSERT_EQ(counted(second), modelText(frame, id != nullptr ? id : "", true));
        ASSERT_EQ(at.getEncodingType(), frame.encoding);
        at.next();
    }
    ASSERT_TRUE(at.done());
}

void compareTags(const android::ID3& actual, const Id3Tag& tag, const std::string& mime) {
    ASSERT_EQ(actual.version(), tag.version);
    if (tag.version == 0) return;
    for (const char* id : {"COMM", "COMMX", "TT2", "ULT", "USLT", "UM", ""})
        compareFrames(actual, tag, *id == 0 ? nullptr : id);
    android::String8 type;
    type.setTo("of the picture before");
    size_t length;
    actual.getAlbumArt(&length, &type);
    EXPECT_EQ(counted(type), mime);
}

TEST(Id3Model, RandomTags) {
    std::map<int32_t, int> versions;
    for (uint32_t seed = 0; seed < 20000 && !HasFailure(); ++seed) {
        const std::string bytes = Writer(seed).tag();
        const Bytes data(bytes.begin(), bytes.end());
        Lines lines;
        std::string mime;
        const Id3Tag tag = modelV2(bytes, lines);
        ++versions[tag.version];
        const LogCapture log("ZRID3");
        const Format format;
        const auto status =
                helper->parseID3v2MetaData(data.data(), data.size(), true, format.get());
        const Outcome actual{status, stored(format), log.lines()};
        EXPECT_EQ(actual, modelMetaData(tag, mime, lines));
        compareTags(android::ID3(data.data(), data.size(), false), tag, mime);
        if (HasFailure()) ADD_FAILURE() << describe(seed, data);
    }
    for (int32_t version : {0, 3, 4, 5}) EXPECT_GT(versions[version], 1000) << version;
}

}  // namespace
