// Writes ID3v2 tags, and reads files that are strings.

#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "zrcodecparser/DataSource.h"

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

// A file with an address, behind the record of container parsers. Notes what is asked of it, and
// how much room an address gets that is zeroed.
struct File {
    static File& of(void* self, const std::string& call) {
        static_cast<File*>(self)->calls += call;
        return *static_cast<File*>(self);
    }
    std::string data;
    std::string uri{};
    uint32_t flagBits = 0;
    std::string calls{};
    CDataSource record{
            [](void* self, off64_t offset, void* out, size_t size) {
                const auto& all = of(self, "read ").data;
                const auto start = std::min(static_cast<size_t>(offset), all.size());
                return static_cast<ssize_t>(all.copy(static_cast<char*>(out), size, start));
            },
            [](void* self, off64_t* size) { return *size = std::ssize(of(self, "size ").data), 0; },
            [](void* self) { return of(self, "flags ").flagBits; },
            [](void* self, char* out, size_t room) {
                const auto zeroed = std::count(out, out + room, '\0');
                const auto& address = of(self, "address" + std::to_string(zeroed) + " ").uri;
                address.copy(out, room);
                return !address.empty();
            },
            this};
    android::DataSourceHelper source{&record};
};

}  // namespace test
