#include "inspect/devices/XmlCodecList.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <pugixml.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "inspect/base/InputFile.h"
#include "inspect/devices/Draft.h"
#include "inspect/devices/LimitText.h"

namespace inspect {
namespace {

using pugi::xml_node;

constexpr size_t kMaxSteps = 1'000'000;  // elements, and comparisons of names
constexpr size_t kMaxFiles = 256;
constexpr int kMaxDepth = 16;

std::string tagOf(const xml_node& node) {
    return '<' + shortName(node.name()) + '>';
}

std::string nameOf(const xml_node& node) {
    return shortName(trimmed(node.attribute("name").value()));
}

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::ranges::find(names, name) != names.end();
}

// A path that stays below the folder of the file that names it.
bool staysInside(const std::filesystem::path& path) {
    return !path.empty() && !path.is_absolute() && std::ranges::find(path, "..") == path.end();
}

// Whichever form it has, as "from-to" or as a list.
std::string valueOf(const xml_node& limit) {
    for (const char* name : {"range", "ranges", "value"}) {
        if (const auto attribute = limit.attribute(name)) return attribute.value();
    }
    return std::string(limit.attribute("min").value()) + '-' + limit.attribute("max").value();
}

// These return what is not understood; empty = all is.

std::string applyLimit(const xml_node& node, Decoder& decoder) {
    const std::string value = valueOf(node);
    const LimitResult result = setLimit(decoder.limits, nameOf(node), value);
    if (result == LimitResult::kTaken) return {};
    return "the limit " + inQuotes(nameOf(node)) +
           (result == LimitResult::kUnknown ? " is not known"
                                            : " has the value " + inQuotes(value));
}

std::string applyFeature(const xml_node& node, Decoder& decoder) {
    if (nameOf(node).empty()) return "a feature without a name";
    setFeature(decoder, nameOf(node), node.attribute("required").as_bool(),
               node.attribute("value").as_bool(true));
    return {};
}

std::string applyTrait(const xml_node& node, Decoder& decoder) {
    const std::string_view tag = node.name();
    if (tag == "Limit") return applyLimit(node, decoder);
    if (tag == "Feature") return applyFeature(node, decoder);
    if (tag == "Attribute" && nameOf(node) == "software-codec") decoder.isSoftware = true;
    if (tag == "Alias" && decoder.aliases.size() < kMaxAliases) {
        decoder.aliases.push_back(nameOf(node));
    }
    if (tag == "Variant") {
        decoder.remark = "has other limits on models of the variant " + inQuotes(nameOf(node));
    }
    if (isOneOf(tag, {"Attribute", "Alias", "Variant", "Quirk", "Mapping", "Setting"})) return {};
    return tagOf(node) + " is not known here";
}

class ListReader {
public:
    explicit ListReader(const FileReader& read) : mRead(read) {}

    void readFile(const std::string& name) {
        if (!mNames.insert(name).second) return;
        if (const auto text = mRead(name)) readText(name, *text, "", 0);
    }

    DeviceDescription finish();

private:
    // The section is the tag of the element of the list that the nodes are in; empty = the root.
    void readText(const std::string& name, std::string_view text, std::string_view section,
                  int depth);
    void readChildren(const xml_node& parent, std::string_view section, int depth);
    void readOther(const xml_node& node, std::string_view section);
    void readInclude(const xml_node& node, std::string_view section, int depth);
    void readCodec(const xml_node& node);
    void readUpdate(const xml_node& node);
    void readTraits(const xml_node& parent, const std::vector<Decoder*>& decoders);
    void add(Decoder decoder, std::string_view type, const xml_node& codec, const xml_node& node);
    std::vector<Decoder*> find(const xml_node& node, std::string_view name, std::string_view type);

    std::string_view partAt(ptrdiff_t offset) const {
        // pugixml tells of what it misses at the end as one byte behind it.
        const auto end = static_cast<ptrdiff_t>(mDraft.text.size());
        return mDraft.text.substr(static_cast<size_t>(std::clamp<ptrdiff_t>(offset, 0, end)));
    }
    void warn(const xml_node& node, const std::string& complaint) {
        mDraft.warn(partAt(node.offset_debug()), complaint);
    }
    [[noreturn]] void fail(ptrdiff_t offset, const std::string& complaint) const {
        throw FileError(mDraft.place(partAt(offset)) + complaint);
    }
    void spend(const xml_node& node, size_t steps) {
        mSteps += steps;
        if (mSteps > kMaxSteps) fail(node.offset_debug(), "no device has such a list");
    }

    const FileReader& mRead;
    Draft mDraft{};
    std::vector<std::string> mDomainOf;  // each decoder's
    std::map<std::string, bool> mDomains;
    std::set<std::string> mNames;
    size_t mSteps = 0;
    size_t mBytes = 0;
};

// Of the encoding only what is below 128 matters.
void ListReader::readText(const std::string& name, std::string_view text, std::string_view section,
                          int depth) {
    mBytes += text.size();
    if (mBytes > kMaxDescriptionBytes) throw FileError(name + ": makes more than 16 MiB");
    const std::string outerName = std::exchange(mDraft.name, name);
    const std::string_view outerText = std::exchange(mDraft.text, text);
    pugi::xml_document document;
    const auto result = document.load_buffer(text.data(), text.size(), pugi::parse_default,
                                             pugi::encoding_utf8);
    if (!result) fail(result.offset, std::string("is no XML: ") + result.description());
    for (const xml_node& root : document.children()) {
        if (isOneOf(root.name(), {"MediaCodecs", "Included"})) {
            readChildren(root, section, depth);
        } else if (root.type() == pugi::node_element) {
            const std::string complaint = tagOf(root) + " begins no list of codecs";
            if (depth == 0) fail(root.offset_debug(), complaint);
            warn(root, complaint);
        }
    }
    mDraft.name = outerName;
    mDraft.text = outerText;
}

void ListReader::readChildren(const xml_node& parent, std::string_view section, int depth) {
    if (depth > kMaxDepth) return warn(parent, "is nested too deep");
    for (const xml_node& node : parent.children()) {
        if (node.type() != pugi::node_element) continue;
        spend(node, 1);
        const std::string_view tag = node.name();
        if (tag == "Include") {
            readInclude(node, section, depth);
        } else if (isOneOf(tag, {"Decoders", "Encoders", "Settings"})) {
            readChildren(node, tag, depth + 1);
        } else if (tag == "MediaCodec" && section == "Decoders") {
            readCodec(node);
        } else {
            readOther(node, section);
        }
    }
}

void ListReader::readOther(const xml_node& node, std::string_view section) {
    const std::string_view tag = node.name();
    if (section == "Encoders" && tag == "MediaCodec") return;
    if (section == "Settings" && tag == "Domain") {
        mDomains[nameOf(node)] = node.attribute("enabled").as_bool(true);
    } else if (section != "Settings" || !isOneOf(tag, {"Setting", "Variant"})) {
        warn(node, tagOf(node) + " is not known here");
    }
}

void ListReader::readInclude(const xml_node& node, std::string_view section, int depth) {
    const std::filesystem::path path = node.attribute("href").value();
    if (!staysInside(path)) {
        return warn(node, inQuotes(path.string()) + " is no file of this folder");
    }
    const auto folder = std::filesystem::path(mDraft.name).parent_path();
    const std::string name = (folder / path).lexically_normal().generic_string();
    if (mNames.contains(name)) return warn(node, inQuotes(name) + " is read once only");
    if (mNames.size() == kMaxFiles) fail(node.offset_debug(), "too many files are included");
    mNames.insert(name);
    if (const auto text = mRead(name)) return readText(name, *text, section, depth + 1);
    mDraft.device.missingFiles.push_back(name);
    warn(node, inQuotes(name) + " is missing");
}

void readTag(const xml_node& codec, Decoder& decoder) {
    if (!codec.attribute("enabled").as_bool(true)) decoder.whyIgnored = "is switched off";
    if (const auto variant = codec.attribute("variant")) {
        decoder.remark = "is there on models of the variant " + inQuotes(variant.value()) + " only";
    }
}

void ListReader::readTraits(const xml_node& parent, const std::vector<Decoder*>& decoders) {
    for (const xml_node& node : parent.children()) {
        const bool isType = std::string_view(node.name()) == "Type";
        if (node.type() != pugi::node_element || isType) continue;
        spend(node, decoders.size());
        std::string complaint;
        for (Decoder* each : decoders) complaint = applyTrait(node, *each);
        if (!complaint.empty()) warn(node, complaint);
    }
}

// The node is the codec or, inside it, the type.
void ListReader::add(Decoder decoder, std::string_view type, const xml_node& codec,
                     const xml_node& node) {
    decoder.type = shortName(trimmed(type));
    if (decoder.type.empty()) return warn(node, inQuotes(decoder.name) + " has no type");
    mDraft.add(std::move(decoder), partAt(node.offset_debug()));
    mDomainOf.push_back(shortName(codec.attribute("domain").value()));
}

void ListReader::readCodec(const xml_node& node) {
    if (node.attribute("update").as_bool()) return readUpdate(node);
    Decoder decoder;
    decoder.name = nameOf(node);
    readTag(node, decoder);
    readTraits(node, {&decoder});
    const auto types = node.children("Type");
    if (node.attribute("type") || types.begin() == types.end()) {
        add(decoder, node.attribute("type").value(), node, node);
    }
    for (const xml_node& type : types) {
        spend(type, 1);
        Decoder each = decoder;
        readTraits(type, {&each});
        add(std::move(each), type.attribute("name").value(), node, type);
    }
}

// Those of this name, and of this type unless it is empty; says so when there is none.
std::vector<Decoder*> ListReader::find(const xml_node& node, std::string_view name,
                                       std::string_view type) {
    spend(node, 1 + mDraft.device.decoders.size());
    std::vector<Decoder*> found;
    for (Decoder& each : mDraft.device.decoders) {
        const bool isNamed = each.name == name || std::ranges::count(each.aliases, name) > 0;
        if (isNamed && (type.empty() || each.type == type)) found.push_back(&each);
    }
    if (found.empty()) {
        warn(node, "there is no decoder " + inQuotes(name) +
                           (type.empty() ? "" : " of " + inQuotes(type)) + " to update");
    }
    return found;
}

void ListReader::readUpdate(const xml_node& node) {
    const std::string name = nameOf(node);
    const auto decoders = find(node, name, node.attribute("type").value());
    for (Decoder* each : decoders) readTag(node, *each);
    if (decoders.empty()) return;
    readTraits(node, decoders);
    for (const xml_node& type : node.children("Type")) {
        readTraits(type, find(type, name, type.attribute("name").value()));
    }
}

DeviceDescription ListReader::finish() {
    for (size_t i = 0; i < mDomainOf.size(); i++) {
        Decoder& decoder = mDraft.device.decoders[i];
        if (mDomainOf[i].empty() || !decoder.whyIgnored.empty() || mDomains[mDomainOf[i]]) continue;
        decoder.whyIgnored = "is of the domain " + inQuotes(mDomainOf[i]) + ", which is off";
    }
    std::string files;
    for (const std::string& name : mNames) files += (files.empty() ? "" : ", ") + name;
    return mDraft.finish(files);
}

}  // namespace

DeviceDescription readXmlCodecLists(const std::set<std::string>& files, const FileReader& read) {
    ListReader reader(read);
    for (const std::string& name : files) reader.readFile(name);
    return reader.finish();
}

}  // namespace inspect
