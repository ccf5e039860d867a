#include "inspect/collection/Worker.h"

#include <sys/resource.h>

#include <exception>
#include <utility>

#include "inspect/collection/Sandbox.h"
#include "inspect/report/Outcome.h"

namespace inspect {
namespace {

Finding readFinding(const std::string& text) {
    const size_t lineBytes = text.find('\n') + 1;
    const Json json = Json::from_msgpack(std::string_view(text).substr(lineBytes));
    Finding finding = {.isMedia = json.at("media"),
                       .faults = json.at("faults"),
                       .line = lineBytes > 1 ? text.substr(0, lineBytes) : "",
                       .row = rowOf(json.at("digest"))};
    FileRow& row = finding.row;
    for (const std::string& each : finding.faults) {
        if (!row.error.empty()) break;
        row.fault += (row.fault.empty() ? "" : "; ") + each.substr(row.path.size() + 2);
    }
    return finding;
}

}  // namespace

void limitMemory(size_t maxMemoryMiB) {
    if (maxMemoryMiB == 0 || kIsSanitized) return;
    const rlimit limit{maxMemoryMiB << 20, maxMemoryMiB << 20};
    setrlimit(RLIMIT_DATA, &limit);
}

std::string encodeFinding(const FileReport& report, const WorkerRules& rules) {
    Json file = fileToJson(report, rules.scope.devices);
    std::string text = rules.makesLines ? jsonLine(file) : "\n";
    const Json finding = {{"media", report.isMedia},
                          {"faults", faultsOf(report)},
                          {"digest", digestOf(std::move(file))}};
    Json::to_msgpack(finding, text);
    return text;
}

Finding decodeFinding(const std::string& text) {
    try {
        return readFinding(text);
    } catch (const std::exception& error) {
        throw FileError(std::string("the process looking at it answers nonsense: ") + error.what());
    }
}

Request requestFor(const std::string& path, OpenedFile file) {
    Request request{.text = {}, .file = std::move(file.descriptor)};
    Json::to_msgpack({path, file.sizeBytes, file.modifiedNs, file.isFolderWritable}, request.text);
    return request;
}

std::string examine(Request request, const WorkerRules& rules) {
    const Json known = Json::from_msgpack(request.text);
    OpenedFile file{.descriptor = std::move(request.file),
                    .sizeBytes = known.at(1),
                    .modifiedNs = known.at(2),
                    .isFolderWritable = known.at(3)};
    return encodeFinding(makeReport(known.at(0), std::move(file), rules.scope), rules);
}

std::string encodeFailure(const std::string& path, const std::string& why, const WorkerRules& rules,
                          bool isMedia) {
    FileReport report;
    report.path = path;
    report.error = why;
    report.isMedia = isMedia;
    report.verdicts.assign(rules.scope.devices.size(), {FilePlay::kUnreadable, why});
    return encodeFinding(report, rules);
}

}  // namespace inspect
