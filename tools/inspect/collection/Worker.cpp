#include "inspect/collection/Worker.h"

#include <sys/resource.h>

#include <exception>
#include <new>

#include "inspect/base/InputFile.h"
#include "inspect/report/Outcome.h"

namespace inspect {
namespace {

// A sanitizer's own tables would be counted.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kCanLimitMemory = false;
#elif defined(__has_feature)
constexpr bool kCanLimitMemory = !__has_feature(address_sanitizer);
#else
constexpr bool kCanLimitMemory = true;
#endif

FileReport unreadable(const std::string& path, const std::string& why, const WorkerRules& rules) {
    FileReport report;
    report.path = path;
    report.error = why;
    report.verdicts.assign(rules.scope.devices.size(), {FilePlay::kUnreadable, why});
    return report;
}

// Whoever writes to the file right now is not done.
bool hasChanged(const FileReport& report) {
    if (!report.sizeBytes) return false;
    struct stat status {};
    return stat(report.path.c_str(), &status) != 0 || status.st_size != report.sizeBytes ||
           modifiedNs(status) != report.modifiedNs;
}

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
    if (maxMemoryMiB == 0 || !kCanLimitMemory) return;
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

std::string examine(const std::string& path, const WorkerRules& rules) {
    FileReport report = makeReport(path, rules.scope, nullptr);
    if (hasChanged(report)) {
        const bool isMedia = report.isMedia;
        report = unreadable(path, "changed while it was read", rules);
        report.isMedia = isMedia;
    }
    return encodeFinding(report, rules);
}

std::string encodeFailure(const std::string& path, const std::string& why,
                          const WorkerRules& rules) {
    return encodeFinding(unreadable(path, why, rules), rules);
}

}  // namespace inspect
