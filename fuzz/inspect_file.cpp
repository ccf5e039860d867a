// Input: a file. FFmpeg, which reads most of it, is not built for fuzzing: this finds what goes
// wrong behind it.

#include <sstream>

#include "Inspect.h"
#include "inspect/DeviceOptions.h"
#include "inspect/collection/Worker.h"
#include "inspect/report/JsonReport.h"
#include "inspect/report/Outcome.h"
#include "inspect/report/TextReport.h"

namespace {

using namespace inspect;

void checkTerminal(const std::string& text) {
    REQUIRE(isUtf8(text));
    REQUIRE(std::ranges::none_of(text, [](char c) { return c >= 0 && c < ' ' && c != '\n'; }));
}

void checkText(const FileReport& report, const Scope& scope) {
    const TextStyle style = {.colour = false, .keys = true, .log = true, .notKnown = true};
    std::ostringstream out;
    printText(out, report, scope.devices, style);
    printFixes(out, report, scope.devices, style, 80);
    REQUIRE(!out.str().empty());
    checkTerminal(out.str());
}

void checkJson(const FileReport& report, const WorkerRules& rules) {
    const Json json = fileToJson(report, rules.scope.devices);
    const std::string line = jsonLine(json);
    checkTerminal(line);
    const Json read = Json::parse(line);
    const FileRow row = rowOf(read);
    const Finding finding = decodeFinding(encodeFinding(report, rules));
    REQUIRE(finding.line == line && finding.isMedia == report.isMedia);
    REQUIRE(finding.row.path == row.path && finding.row.error == row.error);
    REQUIRE(finding.row.tracks.size() == row.tracks.size());
    REQUIRE(finding.row.tags.size() == row.tags.size());
    REQUIRE(digestOf(read) == digestOf(Json::parse(jsonText(json))));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const WorkerRules rules = {.scope = {.devices = readDevices({}),
                                                .fix = true,
                                                .explain = true,
                                                .frames = true,
                                                .verify = true,
                                                .component = true,
                                                .legacy = true,
                                                .componentOptions = {},
                                                .dumpWav = {},
                                                .outputs = {}},
                                      .makesLines = true,
                                      .maxMemoryMiB = 0};
    fuzz::setInput({data, size});
    const FileReport report = makeReport(fuzz::kInputPath, rules.scope, nullptr);
    REQUIRE(report.verdicts.size() == 1 && report.path == fuzz::kInputPath);
    for (const std::string& each : faultsOf(report)) REQUIRE(!each.empty());
    checkText(report, rules.scope);
    checkJson(report, rules);
    return 0;
}
