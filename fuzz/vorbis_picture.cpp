// Input: where base64 text is changed and into what, two bytes and one, and flags; then a picture
// block, or that text itself.
//
// Aims at Helper/vorbis/*.

#include "Helper/vorbis/Base64.h"
#include "Helper/vorbis/PictureBlock.h"
#include "Picture.h"

using fuzz::Bytes;
using fuzz::take;

namespace {

constexpr uint32_t kIsText = 1, kUrlAlphabet = 2, kCut = 4;

// RFC 4648 4, or in the alphabet of its section 5.
std::string encoded(Bytes bytes, bool urlAlphabet) {
    std::string text;
    for (size_t at = 0; at < bytes.size(); at += 3) {
        Bytes group = bytes.subspan(at, std::min<size_t>(3, bytes.size() - at));
        const size_t digits = group.size() + 1;
        const uint32_t bits = take(group, 3);
        for (size_t i = 0; i < 4; ++i) {
            const uint32_t digit = bits >> (18 - 6 * i) & 63;
            text += i < digits ? fuzz::kBase64Digits[digit + (urlAlphabet && digit > 61 ? 2 : 0)]
                               : '=';
        }
    }
    return text;
}

// The text and the room for its bytes are as long as they have to be, for ASan to see.
void checkBase64(const std::string& text) {
    const std::vector<char> exact(text.begin(), text.end());
    const std::string_view view(exact.data(), exact.size());
    const auto expected = fuzz::base64Decoded(text);
    const auto size = android::vorbis::base64DecodedSize(view);
    REQUIRE(size.has_value() == (text.size() % 4 == 0) && (!expected || *size == expected->size()));
    if (!size) return;
    const std::unique_ptr<uint8_t[]> out(new uint8_t[*size]);
    REQUIRE(android::vorbis::base64Decode(view, out.get()) == expected.has_value());
    if (expected) REQUIRE(fuzz::same(*expected, {out.get(), *size}));
}

void checkCover(Bytes block) {
    const auto expected = fuzz::frontCover(block);
    const auto actual = android::vorbis::frontCover(block);
    REQUIRE(actual.has_value() == expected.has_value());
    if (actual) REQUIRE(actual->data() == expected->data() && actual->size() == expected->size());
}

// The picture comes out of the comment whole.
void checkComment(Bytes block, const std::string& text) {
    const std::string comment = "METADATA_BLOCK_PICTURE=" + text;
    const fuzz::Format format;
    fuzz::helper->parseVorbisComment(format.get(), comment.c_str(), comment.size());
    const auto expected = fuzz::frontCover(block);
    REQUIRE(format.keys() == (expected ? "albumart mixed-encoding-type " : "mixed-encoding-type "));
    if (expected) REQUIRE(fuzz::same(format.buffer("albumart"), *expected));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes input(data, size);
    const size_t place = take(input, 2);
    const auto character = static_cast<char>(take(input, 1));
    const uint32_t flags = take(input, 1);
    checkCover(input);
    std::string text(input.begin(), input.end());
    if ((flags & kIsText) == 0) {
        text = encoded(input, (flags & kUrlAlphabet) != 0);
        REQUIRE(fuzz::same(fuzz::base64Decoded(text).value(), input));
        checkComment(input, text);
    }
    checkBase64(text);
    if (place < text.size()) text[place] = character;
    if ((flags & kCut) != 0) text.resize(std::min(text.size(), place));
    checkBase64(text);
    return 0;
}
