#include "inspect/devices/DeviceList.h"

#include <algorithm>
#include <filesystem>
#include <pugixml.hpp>
#include <set>
#include <vector>

#include "inspect/base/Distance.h"
#include "inspect/base/InputFile.h"
#include "inspect/devices/Draft.h"
#include "inspect/devices/MediaPlayerDump.h"
#include "inspect/devices/MimeList.h"
#include "inspect/devices/XmlCodecList.h"

namespace inspect {
namespace {

namespace fs = std::filesystem;

// A shell that writes UTF-16 marks it (RFC 2781 3.2); what is beyond a unit is of no interest.
std::string utf8Of(const std::string& text) {
    const bool isLittle = text.starts_with("\xFF\xFE");
    if (!isLittle && !text.starts_with("\xFE\xFF")) {
        return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
    }
    std::wstring wide;
    for (size_t i = 2; i + 1 < text.size(); i += 2) {
        const auto low = static_cast<unsigned char>(text[isLittle ? i : i + 1]);
        const auto high = static_cast<unsigned char>(text[isLittle ? i + 1 : i]);
        wide += static_cast<wchar_t>(high << 8 | low);
    }
    return pugi::as_utf8(wide);
}

// Throws a FileError, which names the file.
std::string readText(const fs::path& folder, const std::string& name) {
    try {
        const InputFile file((folder / name).string());
        const auto size = static_cast<size_t>(file.size());
        if (size > kMaxDescriptionBytes) throw FileError("is larger than 16 MiB");
        std::vector<uint8_t> bytes(size);
        const int64_t count = file.readAt(0, bytes);
        if (count < 0) throw FileError("cannot be read");
        return utf8Of({bytes.begin(), bytes.begin() + count});
    } catch (const FileError& error) {
        throw FileError(name + ": " + error.what());
    }
}

// Only a regular file can be part of a list.
FileReader readerOf(const fs::path& folder) {
    return [folder](const std::string& name) -> std::optional<std::string> {
        std::error_code ignored;
        if (!fs::is_regular_file(folder / name, ignored)) return {};
        return readText(folder, name);
    };
}

DeviceDescription readFolder(const fs::path& folder) {
    std::set<std::string> files = {"media_codecs.xml", "media_codecs_c2.xml"};
    const auto isThere = [&](const auto& name) { return fs::exists(folder / name); };
    if (std::ranges::none_of(files, isThere)) {
        throw FileError("media_codecs.xml: there is none in this folder");
    }
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        const bool isOne = name.starts_with("media_codecs_performance") && name.ends_with(".xml");
        if (isOne) files.insert(name);
    }
    return readXmlCodecLists(files, readerOf(folder));
}

DeviceDescription readFile(const fs::path& path) {
    const std::string name = path.filename().string();
    const std::string text = readText(path.parent_path(), name);
    if (!trimmed(text).starts_with('<')) {
        return isMediaPlayerDump(text) ? readMediaPlayerDump(text, name) : readMimeList(text, name);
    }
    const FileReader others = readerOf(path.parent_path());
    return readXmlCodecLists({name}, [&](const std::string& wanted) {
        return wanted == name ? std::optional(text) : others(wanted);
    });
}

[[noreturn]] void failOnUnknown(const std::string& what) {
    std::vector<std::string_view> names;
    for (const BuiltInDevice& each : builtInDevices()) names.push_back(each.name);
    std::ranges::sort(names, {}, [&](std::string_view name) { return distance(what, name); });
    std::string list;
    for (const std::string_view name : names) list.append(list.empty() ? "" : ", ").append(name);
    throw UnknownDevice(what + ": there is no such file, and the built-in devices are " + list);
}

}  // namespace

DeviceDescription loadDevice(const std::string& what) {
    DeviceDescription device;
    const auto builtIn = std::ranges::find(builtInDevices(), what, &BuiltInDevice::name);
    if (builtIn != builtInDevices().end()) {
        std::string list;
        for (const std::string_view part : builtIn->decoders) list += part;
        device = readMimeList(list, what);
        device.name = what;
        return device;
    }
    std::error_code error;
    if (what != "-" && !fs::exists(what, error) && !error) failOnUnknown(what);
    const bool isFolder = fs::is_directory(what, error);
    const fs::path folder = isFolder ? fs::path(what) : fs::path(what).parent_path();
    try {
        device = isFolder ? readFolder(folder) : readFile(what);
    } catch (const FileError& fault) {
        throw FileError((folder / "").string() + fault.what());
    } catch (const fs::filesystem_error& fault) {
        throw FileError(what + ": " + fault.code().message());
    }
    device.name = what;
    return device;
}

}  // namespace inspect
