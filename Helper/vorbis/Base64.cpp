#include "Helper/vorbis/Base64.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "Helper/vorbis/Base64Blocks.h"

namespace android::vorbis {
namespace {

constexpr size_t kMaxPadding = 3;

// What each of the four characters of a group adds to its 24 bits; kInvalid for characters that
// stand for nothing.
using Alphabet = std::array<uint32_t, 256>;
constexpr uint32_t kInvalid = uint32_t{1} << 31;

consteval Alphabet alphabetAt(unsigned position) {
    constexpr std::string_view kFirst62 =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    const unsigned shift = 6 * (3 - position);
    Alphabet bits;
    bits.fill(kInvalid);
    for (uint32_t i = 0; i < kFirst62.size(); ++i) {
        bits[static_cast<uint8_t>(kFirst62[i])] = i << shift;
    }
    bits['+'] = bits['-'] = uint32_t{62} << shift;
    bits['/'] = bits['_'] = uint32_t{63} << shift;
    return bits;
}

constexpr std::array<Alphabet, 4> kAlphabets{alphabetAt(0), alphabetAt(1), alphabetAt(2),
                                             alphabetAt(3)};

uint32_t decodeGroup(const char* group) {
    uint32_t bits = 0;
    for (size_t i = 0; i < 4; ++i) bits |= kAlphabets[i][static_cast<uint8_t>(group[i])];
    return bits;
}

size_t paddingOf(std::string_view text) {
    size_t padding = 0;
    while (padding < kMaxPadding && padding < text.size() &&
           text[text.size() - 1 - padding] == '=') {
        ++padding;
    }
    return padding;
}

// Groups of four characters to three bytes. Writes four bytes at a time, so that the last two
// groups are left to the caller. Returns the groups' bits, or-ed together.
uint32_t decodeGroups(const char*& text, size_t groups, uint8_t*& out) {
    static_assert(std::endian::native == std::endian::little);
    uint32_t all = 0;
    for (; groups > 0; --groups) {
        const uint32_t bits = decodeGroup(text);
        const uint32_t bytes = __builtin_bswap32(bits << 8);
        std::memcpy(out, &bytes, sizeof(bytes));
        all |= bits;
        text += 4;
        out += 3;
    }
    return all;
}

}  // namespace

std::optional<size_t> base64DecodedSize(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    return text.size() / 4 * 3 - paddingOf(text);
}

bool base64Decode(std::string_view text, uint8_t* out) {
    if (text.empty()) return true;
    const size_t padding = paddingOf(text);
    const size_t groups = text.size() / 4;

    // The padding stands in the last group, and its "=" for zeros.
    std::array<char, 4> last;
    text.copy(last.data(), 4, 4 * (groups - 1));
    std::fill(last.end() - static_cast<ptrdiff_t>(padding), last.end(), 'A');

    const size_t inBlocks = decodeBase64Blocks(text.data(), groups, out);
    const char* next = text.data() + 4 * inBlocks;
    out += 3 * inBlocks;
    const size_t fast = std::max(groups, inBlocks + 2) - 2;
    uint32_t all = decodeGroups(next, fast - inBlocks, out);
    for (size_t group = fast; group < groups; ++group) {  // two at most
        const bool isLast = group + 1 == groups;
        const uint32_t bits = decodeGroup(isLast ? last.data() : next);
        all |= bits;
        for (size_t i = 0; i < 3 - (isLast ? padding : 0); ++i) {
            *out++ = static_cast<uint8_t>(bits >> (16 - 8 * i));
        }
    }
    return (all & kInvalid) == 0;
}

}  // namespace android::vorbis
