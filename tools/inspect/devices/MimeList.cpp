#include "inspect/devices/MimeList.h"

#include <algorithm>
#include <vector>

#include "inspect/base/InputFile.h"
#include "inspect/devices/Draft.h"
#include "inspect/devices/LimitText.h"

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
    if (name == "profile/levels") return setProfileLevels(decoder.limits, value);
    if (name == "software") {
        decoder.isSoftware = value == "1";
    } else if (name == "can-swap-width-height") {
        decoder.limits.canSwapSides = value == "1";
    } else {
        return setLimit(decoder.limits, name, value) == LimitResult::kTaken;
    }
    return true;
}

void readLine(std::string_view line, Draft& draft) {
    const std::string_view whole = line;
    std::vector<Decoder>& decoders = draft.device.decoders;
    line = line.substr(0, line.find('#'));
    bool maybeName = false;
    for (std::string_view word; !(word = takeWord(line)).empty();) {
        const bool isType = isMimeType(word);
        if (isType) {
            draft.add({.name = std::string(word), .type = std::string(word)}, whole);
        } else if (decoders.empty()) {
            throw FileError(draft.place(whole) + inQuotes(word) +
                            " begins no codec list in XML, no output of \"dumpsys "
                            "media.player\" and no list of MIME types");
        } else if (maybeName && word.find('=') == word.npos) {
            decoders.back().name = shortName(word);
        } else if (!setTrait(decoders.back(), word)) {
            draft.warn(whole, inQuotes(word) + " is not understood");
        }
        maybeName = isType;
    }
}

}  // namespace

DeviceDescription readMimeList(std::string_view text, const std::string& file) {
    Draft draft{file, text};
    while (!text.empty()) readLine(takeLine(text), draft);
    return draft.finish(file);
}

}  // namespace inspect
