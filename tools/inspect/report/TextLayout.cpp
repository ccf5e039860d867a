#include "inspect/report/TextLayout.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "inspect/base/Utf8.h"

namespace inspect {
namespace {

template <typename... Arguments>
std::string print(const char* format, Arguments... arguments) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, arguments...);
    return text.data();
}

// Lines there have no room for the usual indentation.
bool isNarrow(size_t columns) {
    return columns < 60;
}

// What follows stands a little further in than the beginning, a word without room for that less,
// and columns of a table close up.
std::string wrappedLine(std::string_view line, size_t columns) {
    const size_t leading = std::min(line.find_first_not_of(' '), line.size());
    const size_t most = columns / (isNarrow(columns) ? 4 : 2);
    std::string out(std::min(leading, most), ' ');
    const size_t indent = std::min(leading, most) + 2;
    size_t used = out.size();
    line.remove_prefix(leading);
    while (!line.empty()) {
        const std::string_view word = line.substr(0, line.find(' '));
        const size_t width = columnsOf(word);
        line.remove_prefix(word.size());
        const size_t gap = std::min(line.find_first_not_of(' '), line.size());
        line.remove_prefix(gap);
        if (used + width > columns) {
            out.erase(out.find_last_not_of(' ') + 1).append(out.empty() ? "" : "\n");
            used = std::min(indent, columns - std::min(columns, width));
            out.append(used, ' ');
        }
        out.append(word).append(std::min<size_t>(gap, 2), ' ');
        used += width + std::min<size_t>(gap, 2);
    }
    return out;
}

}  // namespace

std::string wrapped(std::string_view text, size_t columns) {
    std::string out;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        const bool isAsIs = columns == 0 || (!isNarrow(columns) && columnsOf(line) <= columns);
        out += isAsIs ? line : wrappedLine(line, columns);
        text.remove_prefix(line.size());
        if (text.empty()) break;
        out += '\n';
        text.remove_prefix(1);
    }
    return out;
}

std::string paint(const TextStyle& style, std::string_view colour, const std::string& text) {
    if (!style.colour) return text;
    return "\x1b[" + std::string(colour) + "m" + text + "\x1b[0m";
}

std::string padded(std::string text, size_t width) {
    const size_t columns = columnsOf(text);
    return text.append(width - std::min(width, columns), ' ');
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
