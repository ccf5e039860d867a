// The report as JSON.

#pragma once

#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <vector>

#include "inspect/report/Report.h"

namespace inspect {

using Json = nlohmann::ordered_json;

// A file as it stands in the document.
Json fileToJson(const FileReport& report, std::span<const PretendedDevice> devices);

// On one line unless it is indented by so many spaces. Characters that a terminal obeys are
// escaped.
std::string jsonText(const Json& json, int indent = -1);

// A file as one line of its own.
std::string jsonLine(const Json& file);

// One document. docs/json.md names every field, docs/zrinspect.schema.json holds for every
// document.
std::string jsonReport(std::span<const PretendedDevice> devices,
                       const std::vector<FileReport>& reports);

}  // namespace inspect
