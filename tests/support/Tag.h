// Writes ID3v2 tags.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace test {

// Text with the NULs in it.
template <size_t N>
std::string text(const char (&literal)[N]) {
    return {literal, N - 1};
}

inline std::string bigEndian(size_t value, unsigned bytes) {
    std::string out;
    for (unsigned i = bytes; i > 0; --i) out += static_cast<char>(value >> (8 * (i - 1)) & 0xFF);
    return out;
}

inline std::string syncsafe(size_t value) {
    std::string out;
    for (unsigned i = 4; i > 0; --i) out += static_cast<char>(value >> (7 * (i - 1)) & 0x7F);
    return out;
}

inline std::string frameV2_2(std::string_view id, std::string_view data) {
    return std::string(id).append(bigEndian(data.size(), 3)).append(data);
}

inline std::string frameV2_3(std::string_view id, std::string_view data, unsigned flags = 0) {
    return std::string(id)
            .append(bigEndian(data.size(), 4))
            .append(bigEndian(flags, 2))
            .append(data);
}

inline std::string frameV2_4(std::string_view id, std::string_view data, unsigned flags = 0) {
    return std::string(id).append(syncsafe(data.size())).append(bigEndian(flags, 2)).append(data);
}

inline std::string tag(char version, unsigned flags, std::string_view body) {
    return std::string("ID3")
            .append({version, 0, static_cast<char>(flags)})
            .append(syncsafe(body.size()))
            .append(body);
}

}  // namespace test
