#include "inspect/collection/Worker.h"

#include <sys/resource.h>

#include <exception>
#include <utility>

#include "inspect/collection/Sandbox.h"
#include "inspect/report/Outcome.h"

namespace inspect {
namespace {

// The reader of MessagePack calls itself for each list in a list, of which a worker that a file has
// taken over may send as many as it likes.
class DepthCheck final : public nlohmann::json_sax<Json> {
public:
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool key(string_t&) override { return true; }
    bool start_object(size_t) override { return ++mDepth < kDeepest; }
    bool start_array(size_t) override { return ++mDepth < kDeepest; }
    bool end_object() override { return mDepth-- > 0; }
    bool end_array() override { return mDepth-- > 0; }
    bool parse_error(size_t, const std::string&, const Json::exception& error) override {
        throw FileError(error.what());
    }

private:
    static constexpr int kDeepest = 100;
    int mDepth = 0;
};

Finding readFinding(const std::string& text) {
    const size_t lineBytes = text.find('\n') + 1;
    const std::string_view packed = std::string_view(text).substr(lineBytes);
    DepthCheck check;
    if (!Json::sax_parse(packed, &check, Json::input_format_t::msgpack)) {
        throw FileError("lists in lists without end");
    }
    const Json json = Json::from_msgpack(packed);
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
