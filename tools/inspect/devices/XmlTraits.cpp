#include "inspect/devices/XmlTraits.h"

#include <algorithm>

#include "inspect/devices/LimitText.h"
#include "inspect/devices/Source.h"

namespace inspect {
namespace {

using pugi::xml_node;

constexpr size_t kMaxAliases = 16;

// Whichever form it has, as "from-to" or as a list.
std::string valueOf(const xml_node& limit) {
    for (const char* name : {"range", "ranges", "value"}) {
        if (const auto attribute = limit.attribute(name)) return attribute.value();
    }
    return std::string(limit.attribute("min").value()) + '-' + limit.attribute("max").value();
}

// Both return what is not understood.
std::string applyLimit(const xml_node& node, Decoder& decoder) {
    const std::string value = valueOf(node);
    const std::string limit = "the limit " + inQuotes(nameOf(node));
    switch (setLimit(decoder.limits, nameOf(node), value)) {
        case LimitResult::kUnknown: return limit + " is not known";
        case LimitResult::kBroken: return limit + " has the value " + inQuotes(value);
        case LimitResult::kSet:
        case LimitResult::kIgnored: break;
    }
    return {};
}

std::string applyFeature(const xml_node& node, Decoder& decoder) {
    const std::string name = nameOf(node);
    if (name.empty()) return "a feature without a name";
    if (node.attribute("required").as_bool()) requireFeature(decoder, name);
    if (name == "can-swap-width-height") {
        decoder.limits.canSwapSides = node.attribute("value").as_bool(true);
    }
    return {};
}

}  // namespace

std::string tagOf(const xml_node& node) {
    return '<' + shortName(node.name()) + '>';
}

std::string nameOf(const xml_node& node) {
    return shortName(trimmed(node.attribute("name").value()));
}

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::ranges::find(names, name) != names.end();
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

}  // namespace inspect
