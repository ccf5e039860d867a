#include "inspect/devices/Source.h"

#include <algorithm>
#include <utility>

#include "inspect/base/InputFile.h"

namespace inspect {

std::string Source::place(size_t offset) const {
    const std::string_view before = text.substr(0, offset);
    return name + ':' + std::to_string(1 + std::ranges::count(before, '\n')) + ": ";
}

void Warnings::add(const Source& source, size_t offset, const std::string& text) {
    constexpr size_t kMaxShown = 50;
    if (mShown.size() < kMaxShown) {
        mShown.push_back(source.place(offset) + text);
    } else {
        mHidden++;
    }
}

std::vector<std::string> Warnings::take() {
    if (mHidden > 0) mShown.push_back("and " + std::to_string(mHidden) + " more");
    return std::move(mShown);
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

void addDecoder(DeviceDescription& device, Decoder decoder, const Source& source, size_t offset) {
    if (device.decoders.size() == kMaxDecoders) {
        throw FileError(source.place(offset) + "no device has so many decoders");
    }
    device.decoders.push_back(std::move(decoder));
}

void warnOfNone(DeviceDescription& device, const std::string& files) {
    if (device.decoders.empty()) device.warnings.push_back("no decoder is described in " + files);
}

}  // namespace inspect
