// What base64 decodes to, and which picture a block holds.

#pragma once

#include <optional>

#include "Fuzz.h"

namespace fuzz {

inline const std::string kBase64Digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/-_";

// RFC 4648 4 and 5, both alphabets at once. None when malformed.
inline std::optional<std::vector<uint8_t>> base64Decoded(const std::string& text) {
    size_t padding = 0;
    while (padding < 3 && text.substr(0, text.size() - padding).ends_with('=')) ++padding;
    std::vector<uint8_t> bytes;
    for (size_t i = 0, group = 0; i < text.size(); ++i) {
        const size_t digit = i + padding < text.size() ? kBase64Digits.find(text[i]) : 0;
        if (digit == std::string::npos) return std::nullopt;
        group = group << 6 | (digit < 64 ? digit : digit - 2);
        for (size_t shift : {16u, 8u, 0u}) {
            if (i % 4 == 3) bytes.push_back(static_cast<uint8_t>(group >> shift));
        }
    }
    if (text.size() % 4 != 0) return std::nullopt;
    bytes.resize(bytes.size() - padding);
    return bytes;
}

// The front cover in a picture block, RFC 9639 8.8.
inline std::optional<Bytes> frontCover(Bytes block) {
    if (block.size() < 32 || take(block, 4) != 3) return {};
    const size_t mimeSize = take(block, 4);
    if (mimeSize > 127 || mimeSize > block.size()) return {};
    const std::string mime(block.begin(), block.begin() + static_cast<ptrdiff_t>(mimeSize));
    if (std::strcmp(mime.c_str(), "-->") == 0) return {};
    block = block.subspan(mimeSize);
    const size_t skipped = size_t{take(block, 4)} + 16;
    if (skipped + 4 > block.size()) return {};
    block = block.subspan(skipped);
    const size_t size = take(block, 4);
    if (size > block.size()) return {};
    return block.first(size);
}

}  // namespace fuzz
