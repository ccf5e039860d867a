// ID3v2 tags, read step by step.

#pragma once

#include <cstring>

#include "model/Random.h"
#include "platform/Strings.h"
#include "support/Tag.h"

namespace test {

using Lines = std::vector<Line>;

// Bytes of 8 or 7 bits, most significant first; zeros behind the end. SIZE_MAX if one has more.
inline size_t numberAt(const std::string& data, size_t at, size_t bytes, unsigned bits = 8) {
    size_t value = 0;
    for (; bytes > 0; --bytes, ++at) {
        const size_t byte = at < data.size() ? static_cast<uint8_t>(data[at]) : 0;
        if (byte >> bits != 0) return SIZE_MAX;
        value = value << bits | byte;
    }
    return value;
}

struct Id3Tag {
    int32_t version = 0;  // 3 ID3v2.2, 4 ID3v2.3, 5 ID3v2.4
    std::string data{};
    size_t first = 0;
};

struct Id3Frame {
    std::string id, data;
    size_t encoding;
};

// In place, with every move: what is left behind a frame decides where the next one is found.
inline bool removeUnsynchronization(std::string& data, size_t at, bool plain, bool global) {
    const size_t oldSize = data.size();
    size_t size = oldSize, n = 0;
    for (; size >= 10 && at <= size - 10 && numberAt(data, at, 4) != 0; at += 10 + n) {
        n = numberAt(data, at + 4, 4, plain ? 8 : 7);
        const size_t flags = numberAt(data, at + 8, 2);
        if (n > size - at - 10 || (flags & 1 && n < 4)) return false;
        if (flags & 1) {
            std::memmove(&data[at + 10], &data[at + 14], size - at - 14);
            size -= 4, n -= 4;
        }
        if ((flags & 2 || global) && n >= 2) {
            size_t read = at + 11, write = read;
            for (size_t i = 1; i < n; ++i) {
                if (data[read - 1] == '\xff' && data[read] == 0) ++read, --size, --n;
                if (i < n) data[write++] = data[read++];
            }
            std::memmove(&data[write], &data[read], oldSize - read);
        }
        if (flags & 3 || plain) data.replace(at + 4, 6, syncsafe(n) + bigEndian(flags & ~3u, 2));
    }
    data.resize(size);
    return true;
}

inline Id3Tag modelV2(const std::string& source, Lines& lines) {
    const size_t size = numberAt(source, 6, 4, 7);
    if (source.size() < 10 || !source.starts_with("ID3") || size == SIZE_MAX) return {};
    const int major = source[3], flags = source[5];
    if (major < 2 || major > 4 || source[4] == '\xff') return {};
    if (flags & "\x7f\x1f\x0f"[major - 2]) return {};
    const std::string huge = "skipping huge ID3 metadata of size " + std::to_string(size);
    if (size > 0x700000) lines.push_back({ANDROID_LOG_ERROR, huge});
    if (size > 0x700000 || size > source.size() - 10) return {};
    std::string data = source.substr(10, size);
    for (size_t i = flags & 0x80 && major < 4 ? size : 0; i-- > 1;) {
        if (data[i - 1] == '\xff' && data[i] == 0) data.erase(i, 1);
    }
    size_t first = 0;
    if (major > 2 && flags & 0x40) {
        first = major == 4 ? numberAt(data, 0, 4, 7) : numberAt(data, 0, 4) + 4;
        const size_t padding = major == 3 && first >= 10 ? numberAt(data, 6, 4) : 0;
        if (first > data.size() || (major == 4 && first < 6)) return {};
        if (padding > data.size() - first) return {};
        data.resize(data.size() - padding);
    }
    for (const bool plain : {false, true}) {
        std::string tag = data;
        if (major < 4 || removeUnsynchronization(tag, first, plain, flags & 0x80))
            return {major + 1, tag, first};
    }
    return {};
}

inline std::vector<Id3Frame> modelFrames(const Id3Tag& tag, const char* wanted) {
    const auto& [version, data, first] = tag;
    const size_t header = version == 3 ? 6 : 10, idSize = version == 3 ? 3 : 4;
    std::vector<Id3Frame> found;
    for (size_t at = first, n; at + header <= data.size(); at += header + n) {
        const std::string id = data.substr(at, idSize);
        n = numberAt(data, at + idSize, idSize, version == 5 ? 7 : 8);
        if (numberAt(id, 0, 4) == 0 || (version == 3 && n == 0)) break;
        if (n > data.size() - at - header) break;
        const size_t flags = version == 3 ? 0 : numberAt(data, at + 8, 2);
        if (flags & (version == 5 ? 0x0c : 0xc0)) continue;
        if (wanted == nullptr || std::strcmp(id.c_str(), wanted) == 0)
            found.push_back({id, data.substr(at + header, n), numberAt(data, at + header, 1)});
    }
    return found;
}

inline std::string modelText(const Id3Frame& frame, const std::string& wanted, bool second) {
    const auto& [id, all, encoding] = frame;
    const bool lyrics = wanted == "USLT" || wanted == "ULT", wide = encoding == 1 || encoding == 2;
    const size_t begin = second ? all.find('\0', 5) + 1 : 1, at = begin + lyrics * (wide ? 5u : 4u);
    if (begin == 0 || encoding > 3 || at > all.size()) return "";
    const std::string text = all.substr(at);
    if (!wide) return text;

    const size_t mark = encoding == 1 ? numberAt(text, 0, 2) : 0;
    std::u16string units;
    for (size_t i = mark == 0xfeff || mark == 0xfffe ? 2 : 0; i + 1 < text.size(); i += 2) {
        const size_t unit = numberAt(text, i, 2);
        units += static_cast<char16_t>(encoding == 2 || mark == 0xfeff ? unit
                                                                       : unit << 8 | unit >> 8);
    }
    if (encoding == 1 && std::ranges::all_of(units, [](char16_t unit) { return unit < 256; }))
        return std::string(units.begin(), units.end());
    android::String8 converted;
    converted.setTo(units.data(), units.size());
    return std::string(converted.c_str(), converted.size());
}

inline std::optional<std::string> modelPicture(const Id3Tag& tag, std::string& mime, Lines& lines) {
    static const std::map<std::string, std::string> kKinds{
            {"PNG", "image/png"}, {"JPG", "image/jpeg"}, {"-->", "text/plain"}};
    const bool apic = tag.version > 3;
    const auto found = modelFrames(tag, apic ? "APIC" : "PIC");
    if (found.empty()) return std::nullopt;
    const auto& [id, data, encoding] = found[0];
    const auto fail = [&](const std::string& what) {
        if (apic) lines.push_back({ANDROID_LOG_WARN, "bogus album art size: " + what});
        return std::nullopt;
    };
    const size_t nul = apic ? data.find('\0', 1) : data.size() < 6 ? data.npos : 4;
    if (nul == data.npos) return fail("mime");
    mime = data.substr(1, nul - 1);
    if (!apic) mime = kKinds.contains(mime) ? kKinds.at(mime) : "";
    if (!apic && mime.empty()) return std::nullopt;
    size_t end = nul + (apic ? 2 : 1);
    if (data.size() <= end) return fail("pic type");
    const size_t step = encoding == 0 || encoding == 3 ? 1 : 2;
    while (end + step <= data.size() && numberAt(data, end, step) != 0) end += step;
    end += step;
    if (end > data.size() || (apic && end == data.size())) return fail("description");
    return data.substr(end);
}

}  // namespace test
