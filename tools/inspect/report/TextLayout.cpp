#include "inspect/report/TextLayout.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace inspect {
namespace {

template <typename... Arguments>
std::string print(const char* format, Arguments... arguments) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, arguments...);
    return text.data();
}

}  // namespace

std::string paint(const TextStyle& style, std::string_view colour, const std::string& text) {
    if (!style.colour) return text;
    return "\x1b[" + std::string(colour) + "m" + text + "\x1b[0m";
}

std::string padded(std::string text, size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string rightAligned(const std::string& text, size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string durationText(int64_t microseconds) {
    constexpr int64_t kPerSecond = 1'000'000;
    const double seconds = static_cast<double>(microseconds % (60 * kPerSecond)) / 1e6;
    const auto minutes = static_cast<long long>(microseconds / (60 * kPerSecond));
    if (minutes == 0) return print("%.3f s", seconds);
    if (minutes < 60) return print("%lld:%06.3f", minutes, seconds);
    return print("%lld:%02lld:%06.3f", minutes / 60, minutes % 60, seconds);
}

}  // namespace inspect
