// Tags, for a person and for a script.

#pragma once

#include <nlohmann/json.hpp>
#include <ostream>

#include "inspect/callers/Tags.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

void printTags(std::ostream& out, const Tags& tags, const TextStyle& style);

// Without "keys" and "log".
nlohmann::ordered_json tagToJson(const Tag& tag);

}  // namespace inspect
