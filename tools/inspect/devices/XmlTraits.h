// The elements of a codec list in XML that say what a decoder can do.

#pragma once

#include <initializer_list>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "inspect/devices/Decoder.h"

namespace inspect {

std::string tagOf(const pugi::xml_node& node);   // "<MediaCodec>"
std::string nameOf(const pugi::xml_node& node);  // what its attribute says

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names);

// Returns what is not understood; empty = all is.
std::string applyTrait(const pugi::xml_node& node, Decoder& decoder);

}  // namespace inspect
