// The report as one JSON document.

#pragma once

#include <span>
#include <string>
#include <vector>

#include "inspect/report/Report.h"

namespace inspect {

// docs/json.md names every field, docs/zrinspect.schema.json holds for every document. Characters
// that a terminal obeys are escaped.
std::string jsonReport(std::span<const PretendedDevice> devices,
                       const std::vector<FileReport>& reports);

}  // namespace inspect
