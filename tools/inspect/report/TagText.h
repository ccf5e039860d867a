// Tags, for a person.

#pragma once

#include <ostream>

#include "inspect/callers/Tags.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

void printTags(std::ostream& out, const Tags& tags, const TextStyle& style);

}  // namespace inspect
