// What the targets of zrinspect's readers share.

#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <optional>
#include <string_view>

#include "Fuzz.h"
#include "inspect/base/InputFile.h"
#include "inspect/base/Utf8.h"

namespace fuzz {

inline constexpr const char* kInputPath = "-";

// Makes standard input a file in memory: the bytes, then a hole.
inline void setInput(Bytes bytes, size_t holeBytes = 0) {
    static const bool isMade = dup2(memfd_create("input", 0), STDIN_FILENO) == STDIN_FILENO;
    const auto size = static_cast<ssize_t>(bytes.size());
    REQUIRE(isMade && ftruncate(STDIN_FILENO, 0) == 0);
    REQUIRE(pwrite(STDIN_FILENO, bytes.data(), bytes.size(), 0) == size);
    REQUIRE(ftruncate(STDIN_FILENO, size + static_cast<ssize_t>(holeBytes)) == 0);
    REQUIRE(lseek(STDIN_FILENO, 0, SEEK_SET) == 0);
}

inline std::string textOf(Bytes bytes) {
    return {bytes.begin(), bytes.end()};
}

inline Bytes bytesOf(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

// Whether there is a FileError, which says something.
template <typename Call>
bool refuses(Call call) {
    try {
        call();
        return false;
    } catch (const inspect::FileError& error) {
        REQUIRE(error.what()[0] != '\0');
        return true;
    }
}

}  // namespace fuzz
