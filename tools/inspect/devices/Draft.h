// A device description while it is read.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "inspect/devices/Decoder.h"

namespace inspect {

inline constexpr size_t kMaxDescriptionBytes = size_t{16} << 20;  // with all that it includes
inline constexpr size_t kMaxDecoders = 1'000;                     // of a description
inline constexpr size_t kMaxAliases = 16;                         // of a decoder

struct Draft {
    std::string name;       // of the file that is being read
    std::string_view text;  // of this file; places are told by parts of it
    DeviceDescription device{};
    size_t moreWarnings = 0;

    std::string place(std::string_view part) const;  // "media_codecs.xml:12: "
    void warn(std::string_view part, const std::string& complaint);
    // Throws a FileError at one too many.
    void add(Decoder decoder, std::string_view part);
    // The files are those that were read.
    DeviceDescription finish(const std::string& files);
};

// A name or a value out of a description: all of a usual one.
std::string shortName(std::string_view text);

// The same in quotes, for messages.
std::string inQuotes(std::string_view text);

std::string_view trimmed(std::string_view text);

// Takes the first line, without its end, off the front.
std::string_view takeLine(std::string_view& text);

}  // namespace inspect
