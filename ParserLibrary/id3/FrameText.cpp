#include "ParserLibrary/id3/FrameText.h"

#include <cstring>

namespace android::id3 {
namespace {

enum TextEncoding : uint8_t {
    kIso8859_1 = 0,
    kUtf16 = 1,  // with a byte-order mark
    kUtf16BigEndian = 2,
    kUtf8 = 3,
};

constexpr size_t kLanguageSize = 3;

// What follows encoding, language and description up to its NUL (ID3v2.4 4.10). The first character
// of the description is not looked at: it is taken to have one.
Bytes behindDescription(Bytes data) {
    constexpr size_t kSecondCharacter = 1 + kLanguageSize + 1;
    if (data.size() <= kSecondCharacter) return {};
    const Bytes rest = data.subspan(kSecondCharacter);
    const auto* nul = static_cast<const uint8_t*>(std::memchr(rest.data(), 0, rest.size()));
    if (nul == nullptr) return {};
    return rest.subspan(static_cast<size_t>(nul - rest.data()) + 1);
}

// What follows a language and a description, which is taken to be empty (ID3v2.4 4.8).
Bytes behindEmptyDescription(Bytes text, uint8_t encoding) {
    const bool wide = encoding == kUtf16 || encoding == kUtf16BigEndian;
    const size_t skipped = kLanguageSize + (wide ? 2 : 1);
    return text.size() < skipped ? Bytes() : text.subspan(skipped);
}

Bytes wholeUnits(Bytes text) {
    return text.first(text.size() / 2 * 2);
}

// Whether every code unit is at most 0xFF. The high bytes are the odd ones, or in big-endian text
// the even ones.
bool fitsEightBits(Bytes units, TextForm form) {
    for (size_t i = form == TextForm::kUtf16BigEndian ? 0 : 1; i < units.size(); i += 2) {
        if (units[i] != 0) return false;
    }
    return true;
}

FrameText readUtf16(Bytes text) {
    Bytes units = wholeUnits(text);
    auto form = TextForm::kUtf16LittleEndian;
    if (units.size() >= 2) {
        const uint32_t mark = base::bigEndianAt(units, 0, 2);
        if (mark == 0xFEFF) form = TextForm::kUtf16BigEndian;
        if (mark == 0xFEFF || mark == 0xFFFE) units = units.subspan(2);
    }
    return {units, form, fitsEightBits(units, form)};
}

}  // namespace

FrameText readFrameText(Bytes data, bool secondHalf, bool isLyrics) {
    if (data.empty()) return {};
    const uint8_t encoding = data[0];
    Bytes text = secondHalf ? behindDescription(data) : data.subspan(1);
    if (isLyrics) text = behindEmptyDescription(text, encoding);
    switch (encoding) {
        case kIso8859_1:
        case kUtf8: return {text, TextForm::kEightBit};
        case kUtf16: return readUtf16(text);
        case kUtf16BigEndian: return {wholeUnits(text), TextForm::kUtf16BigEndian};
        default: return {};
    }
}

}  // namespace android::id3
