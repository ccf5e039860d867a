#include "inspect/devices/MediaPlayerDump.h"

#include <algorithm>
#include <array>

#include "inspect/devices/Draft.h"
#include "inspect/devices/LimitText.h"

namespace inspect {
namespace {

constexpr std::string_view kMediaType = "Media type '";
constexpr std::string_view kProfileLevels = "profile/levels:";
constexpr std::string_view kAliases = "aliases:";

// What stands between the first pair of quotes, of either kind.
std::string_view quotedPart(std::string_view text) {
    const size_t first = text.find_first_of("'\"");
    if (first == text.npos) return {};
    const std::string_view rest = text.substr(first + 1);
    return rest.substr(0, rest.find(text[first]));
}

// A limit's name in the dump, as in the XML form.
std::string_view limitOf(std::string_view key) {
    if (key == "max-channel-count" || key == "channel-ranges") return "channel-count";
    for (const std::string_view end : {"-ranges", "-range"}) {
        if (key.ends_with(end)) key.remove_suffix(end.size());
    }
    return key;
}

class DumpReader {
public:
    DumpReader(std::string_view text, const std::string& file) : mDraft{file, text} {}

    DeviceDescription read() {
        std::string_view rest = mDraft.text;
        while (!rest.empty()) readLine(trimmed(takeLine(rest)));
        return mDraft.finish(mDraft.name);
    }

private:
    void readLine(std::string_view line) {
        if (line.starts_with(kMediaType)) {
            mType = shortName(quotedPart(line));
            mIsDecoder = false;
        } else if (line.starts_with("Decoder \"") || line.starts_with("Encoder \"")) {
            mIsDecoder = line[0] == 'D' && !mType.empty();
            if (!mIsDecoder) return;
            mDraft.add({.name = shortName(quotedPart(line)), .type = mType}, line);
        } else if (mIsDecoder) {
            readTraits(line, mDraft.device.decoders.back());
        }
    }

    void readTraits(std::string_view line, Decoder& decoder) {
        constexpr std::string_view kSoftware = "software-only:";
        if (const size_t at = line.find(kSoftware); at != line.npos) {
            decoder.isSoftware = trimmed(line.substr(at + kSoftware.size())).starts_with('1');
        }
        if (line.starts_with(kProfileLevels)) {
            setProfileLevels(decoder.limits, brackets(line));
        } else if (line.starts_with(kAliases)) {
            readAliases(brackets(line), decoder);
        } else {
            readDetails(line, decoder);
        }
    }

    // What the brackets hold that are opened on this line and closed on this or another.
    std::string_view brackets(std::string_view line) {
        const size_t open = line.find('[');
        if (open == line.npos) return line.substr(line.find(':') + 1);
        const auto first = static_cast<size_t>(line.data() - mDraft.text.data()) + open + 1;
        const std::string_view list = mDraft.text.substr(first);
        const size_t end = std::min(list.find_first_of("[]{"), list.size());
        if (end == list.size() || list[end] != ']') mDraft.warn(line, "the list is not closed");
        return list.substr(0, end);
    }

    static void readAliases(std::string_view list, Decoder& decoder) {
        while (decoder.aliases.size() < kMaxAliases) {
            const std::string_view name = quotedPart(list);
            if (name.empty()) return;
            decoder.aliases.push_back(shortName(name));
            list.remove_prefix(std::min(
                    list.size(), static_cast<size_t>(name.data() - list.data()) + name.size() + 1));
        }
    }

    // Any number of "TYPE KEY = VALUE".
    void readDetails(std::string_view line, Decoder& decoder) {
        for (size_t equals; (equals = line.find('=')) != line.npos;) {
            const std::string_view before = trimmed(line.substr(0, equals));
            const std::string_view key = before.substr(before.find_last_of(" \t{,(") + 1);
            line = trimmed(line.substr(equals + 1));
            const bool isText = line.starts_with('"');
            const std::string_view value =
                    isText ? quotedPart(line) : line.substr(0, line.find_first_of(" \t,})"));
            readDetail(key, value, decoder);
            line.remove_prefix(std::min(line.size(), value.size() + (isText ? 2 : 0)));
        }
    }

    void readDetail(std::string_view key, std::string_view value, Decoder& decoder) {
        constexpr std::string_view kFeature = "feature-";
        if (key.starts_with(kFeature)) {
            if (value == "1") setFeature(decoder, key.substr(kFeature.size()), true, true);
            return;
        }
        const std::string most = '-' + std::string(value);
        const std::string_view range = key == "max-channel-count" ? most : value;
        if (setLimit(decoder.limits, limitOf(key), range) == LimitResult::kBroken) {
            mDraft.warn(key, shortName(key) + " has the value " + inQuotes(value));
        }
    }

    Draft mDraft;
    std::string mType;
    bool mIsDecoder = false;  // the lines are of the last one
};

}  // namespace

bool isMediaPlayerDump(std::string_view text) {
    return text.find(kMediaType) != text.npos;
}

DeviceDescription readMediaPlayerDump(std::string_view text, const std::string& file) {
    return DumpReader(text, file).read();
}

}  // namespace inspect
