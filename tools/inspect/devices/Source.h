// Where the reader of a device description is, and what it did not understand.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/devices/Decoder.h"

namespace inspect {

inline constexpr size_t kMaxDescriptionBytes = size_t{16} << 20;  // with all that it includes
inline constexpr size_t kMaxDecoders = 1'000;                     // of a description

struct Source {
    std::string name;
    std::string_view text;

    std::string place(size_t offset) const;  // "media_codecs.xml:12: "
    size_t offsetOf(std::string_view part) const {
        return static_cast<size_t>(part.data() - text.data());
    }
};

// The first of them, and how many there were.
class Warnings {
public:
    void add(const Source& source, size_t offset, const std::string& text);
    std::vector<std::string> take();

private:
    std::vector<std::string> mShown;
    size_t mHidden = 0;
};

// A name or a value out of a description: all of a usual one.
std::string shortName(std::string_view text);

// The same in quotes, for messages, which end at a zero.
std::string inQuotes(std::string_view text);

std::string_view trimmed(std::string_view text);

// Takes the first line, without its end, off the front.
std::string_view takeLine(std::string_view& text);

// Throws a FileError at one too many.
void addDecoder(DeviceDescription& device, Decoder decoder, const Source& source, size_t offset);

// Says so when the description, read from these files, has no decoder.
void warnOfNone(DeviceDescription& device, const std::string& files);

}  // namespace inspect
