#include "inspect/base/Bytes.h"

#include <algorithm>
#include <charconv>

namespace inspect {

Bytes ByteCursor::take(size_t sizeBytes) {
    if (sizeBytes > mRest.size()) {
        mOk = false;
        sizeBytes = mRest.size();
    }
    const Bytes taken = mRest.first(sizeBytes);
    mRest = mRest.subspan(sizeBytes);
    return taken;
}

uint64_t ByteCursor::big(size_t sizeBytes) {
    uint64_t value = 0;
    for (const uint8_t byte : take(sizeBytes)) value = value << 8 | byte;
    return mOk ? value : 0;
}

uint64_t ByteCursor::little(size_t sizeBytes) {
    uint64_t value = 0;
    for (size_t shift = 0; const uint8_t byte : take(sizeBytes)) {
        value |= uint64_t{byte} << shift;
        shift += 8;
    }
    return mOk ? value : 0;
}

bool startsWith(Bytes data, std::string_view text) {
    return data.size() >= text.size() &&
           std::ranges::equal(data.first(text.size()), text, {},
                              [](uint8_t byte) { return static_cast<char>(byte); });
}

std::string hex(Bytes data, std::string_view separator) {
    static constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const uint8_t byte : data) {
        if (!text.empty()) text += separator;
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

ByteVector fromHex(std::string_view text) {
    ByteVector bytes(text.size() / 2);
    for (size_t i = 0; i < bytes.size(); i++) {
        const char* const digits = text.data() + 2 * i;
        std::from_chars(digits, digits + 2, bytes[i], 16);
    }
    return hex(bytes, "") == text ? bytes : ByteVector();
}

std::string shortHex(Bytes data) {
    constexpr size_t kShown = 12;
    return hex(data.first(std::min(data.size(), kShown)), " ") +
           (data.size() > kShown ? " ..." : "");
}

}  // namespace inspect
