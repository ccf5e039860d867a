// Pieces of text that the reports for a person are made of.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace inspect {

struct TextStyle {
    bool colour = false;
    bool keys = false;      // every key of every format
    bool log = false;       // the library's log lines
    bool notKnown = false;  // what could not be judged
};

inline constexpr std::string_view kBold = "1";
inline constexpr std::string_view kDim = "2";
inline constexpr std::string_view kRed = "31";
inline constexpr std::string_view kGreen = "32";
inline constexpr std::string_view kYellow = "33";

// Where the lines about a track begin.
inline constexpr const char* kIndent = "             ";

std::string paint(const TextStyle& style, std::string_view colour, const std::string& text);
std::string padded(std::string text, size_t width);
std::string rightAligned(const std::string& text, size_t width);
// The text with its lines broken at blanks where they are too wide; 0 = none is.
std::string wrapped(std::string_view text, size_t columns);
std::string durationText(int64_t microseconds);  // "1.000 s", "1:02:03.456"

}  // namespace inspect
