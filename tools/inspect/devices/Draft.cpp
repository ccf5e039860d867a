#include "inspect/devices/Draft.h"

#include <algorithm>
#include <utility>

#include "inspect/base/InputFile.h"

namespace inspect {

std::string Draft::place(std::string_view part) const {
    const std::string_view before(text.data(), static_cast<size_t>(part.data() - text.data()));
    return name + ':' + std::to_string(1 + std::ranges::count(before, '\n')) + ": ";
}

void Draft::warn(std::string_view part, const std::string& complaint) {
    constexpr size_t kMaxShown = 50;
    if (device.warnings.size() < kMaxShown) {
        device.warnings.push_back(place(part) + complaint);
    } else {
        moreWarnings++;
    }
}

void Draft::add(Decoder decoder, std::string_view part) {
    if (device.decoders.size() == kMaxDecoders) {
        throw FileError(place(part) + "no device has so many decoders");
    }
    device.decoders.push_back(std::move(decoder));
}

DeviceDescription Draft::finish(const std::string& files) {
    auto& warnings = device.warnings;
    if (moreWarnings > 0) warnings.push_back("and " + std::to_string(moreWarnings) + " more");
    if (device.decoders.empty()) warnings.push_back("no decoder is described in " + files);
    return std::move(device);
}

std::string shortName(std::string_view text) {
    return std::string(text.substr(0, 200));
}

std::string inQuotes(std::string_view text) {
    return '"' + shortName(text.substr(0, text.find('\0'))) + '"';
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == text.npos) return text.substr(0, 0);
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view takeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    return line;
}

}  // namespace inspect
