#include "inspect/devices/XmlCodecList.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "inspect/base/InputFile.h"
#include "inspect/devices/Source.h"
#include "inspect/devices/XmlTraits.h"

namespace inspect {
namespace {

using pugi::xml_node;

constexpr size_t kMaxSteps = 1'000'000;  // elements, and comparisons of names
constexpr size_t kMaxFiles = 256;
constexpr int kMaxDepth = 16;

size_t offsetOf(const xml_node& node) {
    return static_cast<size_t>(std::max<ptrdiff_t>(0, node.offset_debug()));
}

// A path that stays below the folder of the file that names it.
bool staysInside(const std::filesystem::path& path) {
    return !path.empty() && !path.is_absolute() && std::ranges::find(path, "..") == path.end();
}

enum class Section { kRoot, kDecoders, kEncoders, kSettings };

std::optional<Section> sectionOf(std::string_view tag) {
    if (tag == "Decoders") return Section::kDecoders;
    if (tag == "Encoders") return Section::kEncoders;
    if (tag == "Settings") return Section::kSettings;
    return {};
}

class ListReader {
public:
    explicit ListReader(const FileReader& read) : mRead(read) {}

    void readFile(const std::string& name) {
        if (!mNames.insert(name).second) return;
        if (const auto text = mRead(name)) readText({name, *text}, Section::kRoot, 0);
    }

    DeviceDescription take();

private:
    struct Place {
        const Source& source;
        Section section;
        int depth;
    };

    void readText(const Source& source, Section section, int depth);
    void readChildren(const Place& place, const xml_node& parent);
    void readOther(const Place& place, const xml_node& node);
    void readInclude(const Place& place, const xml_node& node);
    void readCodec(const Source& source, const xml_node& node);
    void readUpdate(const Source& source, const xml_node& node);
    void readTraits(const Source& source, const xml_node& node,
                    const std::vector<Decoder*>& decoders);
    void readTag(const xml_node& codec, Decoder& decoder);
    std::vector<Decoder*> find(const Source& source, const xml_node& node, std::string_view name,
                               std::string_view type);

    void spend(const Source& source, const xml_node& node, size_t steps) {
        mSteps += steps;
        if (mSteps > kMaxSteps) throw FileError(place(source, node) + "no device has such a list");
    }
    void warn(const Source& source, const xml_node& node, const std::string& text) {
        mWarnings.add(source, offsetOf(node), text);
    }
    static std::string place(const Source& source, const xml_node& node) {
        return source.place(offsetOf(node));
    }

    const FileReader& mRead;
    DeviceDescription mDevice;
    std::vector<std::string> mDomainOf;  // each decoder's
    std::map<std::string, bool> mDomains;
    std::set<std::string> mNames;
    Warnings mWarnings;
    size_t mSteps = 0;
    size_t mBytes = 0;
};

// Of the encoding only what is below 128 matters.
void ListReader::readText(const Source& source, Section section, int depth) {
    mBytes += source.text.size();
    if (mBytes > kMaxDescriptionBytes) throw FileError(source.name + ": makes more than 16 MiB");
    pugi::xml_document document;
    const auto result = document.load_buffer(source.text.data(), source.text.size(),
                                             pugi::parse_default, pugi::encoding_utf8);
    if (!result) {
        throw FileError(source.place(static_cast<size_t>(std::max<ptrdiff_t>(0, result.offset))) +
                        "is no XML: " + result.description());
    }
    for (const xml_node& root : document.children()) {
        if (isOneOf(root.name(), {"MediaCodecs", "Included"})) {
            readChildren({source, section, depth}, root);
        } else if (root.type() == pugi::node_element && depth == 0) {
            throw FileError(place(source, root) + tagOf(root) + " begins no list of codecs");
        } else if (root.type() == pugi::node_element) {
            warn(source, root, tagOf(root) + " begins no list of codecs");
        }
    }
}

void ListReader::readChildren(const Place& place, const xml_node& parent) {
    if (place.depth > kMaxDepth) return warn(place.source, parent, "is nested too deep");
    for (const xml_node& node : parent.children()) {
        if (node.type() != pugi::node_element) continue;
        spend(place.source, node, 1);
        const std::string_view tag = node.name();
        if (tag == "Include") {
            readInclude(place, node);
        } else if (const auto section = sectionOf(tag)) {
            readChildren({place.source, *section, place.depth + 1}, node);
        } else if (tag == "MediaCodec" && place.section == Section::kDecoders) {
            readCodec(place.source, node);
        } else {
            readOther(place, node);
        }
    }
}

void ListReader::readOther(const Place& place, const xml_node& node) {
    const std::string_view tag = node.name();
    if (place.section == Section::kEncoders && tag == "MediaCodec") return;
    if (place.section == Section::kSettings && tag == "Domain") {
        mDomains[nameOf(node)] = node.attribute("enabled").as_bool(true);
    } else if (place.section != Section::kSettings || !isOneOf(tag, {"Setting", "Variant"})) {
        warn(place.source, node, tagOf(node) + " is not known here");
    }
}

void ListReader::readInclude(const Place& place, const xml_node& node) {
    const std::filesystem::path path = node.attribute("href").value();
    if (!staysInside(path)) {
        return warn(place.source, node, inQuotes(path.string()) + " is no file of this folder");
    }
    const auto folder = std::filesystem::path(place.source.name).parent_path();
    const std::string name = (folder / path).lexically_normal().generic_string();
    if (mNames.contains(name)) {
        return warn(place.source, node, inQuotes(name) + " is read once only");
    }
    if (mNames.size() == kMaxFiles) {
        throw FileError(this->place(place.source, node) + "too many files are included");
    }
    mNames.insert(name);
    if (const auto text = mRead(name)) {
        return readText({name, *text}, place.section, place.depth + 1);
    }
    mDevice.missingFiles.push_back(name);
    warn(place.source, node, inQuotes(name) + " is missing");
}

void ListReader::readTag(const xml_node& codec, Decoder& decoder) {
    if (!codec.attribute("enabled").as_bool(true)) decoder.whyIgnored = "is switched off";
    if (const auto variant = codec.attribute("variant")) {
        decoder.remark = "is there on models of the variant " + inQuotes(variant.value()) + " only";
    }
}

void ListReader::readTraits(const Source& source, const xml_node& parent,
                            const std::vector<Decoder*>& decoders) {
    for (const xml_node& node : parent.children()) {
        const bool isType = std::string_view(node.name()) == "Type";
        if (node.type() != pugi::node_element || isType) continue;
        spend(source, node, decoders.size());
        std::string complaint;
        for (Decoder* each : decoders) complaint = applyTrait(node, *each);
        if (!complaint.empty()) warn(source, node, complaint);
    }
}

void ListReader::readCodec(const Source& source, const xml_node& node) {
    if (node.attribute("update").as_bool()) return readUpdate(source, node);
    Decoder decoder;
    decoder.name = nameOf(node);
    readTag(node, decoder);
    readTraits(source, node, {&decoder});
    const auto add = [&](Decoder each, std::string_view type, const xml_node& of) {
        each.type = shortName(trimmed(type));
        if (each.type.empty()) warn(source, of, inQuotes(each.name) + " has no type");
        if (each.type.empty()) return;
        addDecoder(mDevice, std::move(each), source, offsetOf(of));
        mDomainOf.push_back(shortName(node.attribute("domain").value()));
    };
    const auto types = node.children("Type");
    if (node.attribute("type") || types.begin() == types.end()) {
        add(decoder, node.attribute("type").value(), node);
    }
    for (const xml_node& type : types) {
        spend(source, type, 1);
        Decoder each = decoder;
        readTraits(source, type, {&each});
        add(std::move(each), type.attribute("name").value(), type);
    }
}

// Those of this name, and of this type unless it is empty; says so when there is none.
std::vector<Decoder*> ListReader::find(const Source& source, const xml_node& node,
                                       std::string_view name, std::string_view type) {
    spend(source, node, 1 + mDevice.decoders.size());
    std::vector<Decoder*> found;
    for (Decoder& each : mDevice.decoders) {
        const bool isNamed =
                each.name == name || std::ranges::find(each.aliases, name) != each.aliases.end();
        if (isNamed && (type.empty() || each.type == type)) found.push_back(&each);
    }
    if (found.empty()) {
        warn(source, node,
             "there is no decoder " + inQuotes(name) +
                     (type.empty() ? "" : " of " + inQuotes(type)) + " to update");
    }
    return found;
}

void ListReader::readUpdate(const Source& source, const xml_node& node) {
    const std::string name = nameOf(node);
    const auto decoders = find(source, node, name, node.attribute("type").value());
    for (Decoder* each : decoders) readTag(node, *each);
    if (decoders.empty()) return;
    readTraits(source, node, decoders);
    for (const xml_node& type : node.children("Type")) {
        readTraits(source, type, find(source, type, name, type.attribute("name").value()));
    }
}

DeviceDescription ListReader::take() {
    for (size_t i = 0; i < mDomainOf.size(); i++) {
        Decoder& decoder = mDevice.decoders[i];
        if (mDomainOf[i].empty() || !decoder.whyIgnored.empty() || mDomains[mDomainOf[i]]) continue;
        decoder.whyIgnored = "is of the domain " + inQuotes(mDomainOf[i]) + ", which is off";
    }
    std::string files;
    for (const std::string& name : mNames) files += (files.empty() ? "" : ", ") + name;
    mDevice.warnings = mWarnings.take();
    warnOfNone(mDevice, files);
    return std::move(mDevice);
}

}  // namespace

DeviceDescription readXmlCodecLists(const std::vector<std::string>& files, const FileReader& read) {
    ListReader reader(read);
    for (const std::string& name : files) reader.readFile(name);
    return reader.take();
}

}  // namespace inspect
