#include "inspect/devices/MimeList.h"

#include <algorithm>
#include <utility>

#include "inspect/base/InputFile.h"
#include "inspect/devices/LimitText.h"
#include "inspect/devices/Source.h"

namespace inspect {
namespace {

// RFC 6838 4.2, without '#'.
bool isMimeType(std::string_view word) {
    const auto isNameChar = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               std::string_view("!$&-^_.+").find(c) != std::string_view::npos;
    };
    const size_t slash = word.find('/');
    return slash != word.npos && slash > 0 && slash + 1 < word.size() && word.size() < 128 &&
           std::ranges::all_of(word.substr(0, slash), isNameChar) &&
           std::ranges::all_of(word.substr(slash + 1), isNameChar);
}

std::string_view takeWord(std::string_view& line) {
    line = trimmed(line);
    const std::string_view word = line.substr(0, line.find_first_of(" \t"));
    line.remove_prefix(word.size());
    return word;
}

bool setTrait(Decoder& decoder, std::string_view word) {
    const size_t equals = word.find('=');
    if (equals == word.npos) return false;
    const std::string_view name = word.substr(0, equals);
    const std::string_view value = word.substr(equals + 1);
    if (name == "software") {
        decoder.isSoftware = value == "1";
        return true;
    }
    if (name == "can-swap-width-height") {
        decoder.limits.canSwapSides = value == "1";
        return true;
    }
    if (name != "profile/levels") {
        const LimitResult result = setLimit(decoder.limits, name, value);
        return result == LimitResult::kSet || result == LimitResult::kIgnored;
    }
    decoder.limits.profileLevels = readProfileLevels(value);
    return !decoder.limits.profileLevels->empty();
}

class ListReader {
public:
    explicit ListReader(Source source) : mSource(std::move(source)) {}

    DeviceDescription read() {
        std::string_view rest = mSource.text;
        while (!rest.empty()) readLine(takeLine(rest));
        mDevice.warnings = mWarnings.take();
        warnOfNone(mDevice, mSource.name);
        return std::move(mDevice);
    }

private:
    void readLine(std::string_view line) {
        const size_t offset = mSource.offsetOf(line);
        line = line.substr(0, line.find('#'));
        bool maybeName = false;
        for (std::string_view word; !(word = takeWord(line)).empty();) {
            const bool isType = isMimeType(word);
            if (isType) {
                const std::string type(word);
                addDecoder(mDevice, {.name = type, .type = type}, mSource, offset);
            } else if (mDevice.decoders.empty()) {
                throw FileError(mSource.place(offset) + inQuotes(word) +
                                " begins no codec list in XML, no output of \"dumpsys "
                                "media.player\" and no list of MIME types");
            } else if (maybeName && word.find('=') == word.npos) {
                mDevice.decoders.back().name = shortName(word);
            } else if (!setTrait(mDevice.decoders.back(), word)) {
                mWarnings.add(mSource, offset, inQuotes(word) + " is not understood");
            }
            maybeName = isType;
        }
    }

    Source mSource;
    DeviceDescription mDevice;
    Warnings mWarnings;
};

}  // namespace

DeviceDescription readMimeList(std::string_view text, const std::string& file) {
    return ListReader({file, text}).read();
}

}  // namespace inspect
