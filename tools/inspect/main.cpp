// zrinspect: shows what the library makes of media files.

#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/Bytes.h"
#include "inspect/Demuxer.h"
#include "inspect/JsonReport.h"
#include "inspect/KeyFrames.h"
#include "inspect/Options.h"
#include "inspect/Parser.h"
#include "inspect/TextReport.h"
#include "inspect/explain/Explain.h"

namespace inspect {
namespace {

bool wantsColour() {
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (noColour == nullptr || *noColour == '\0') &&
           terminal != nullptr && std::string_view(terminal) != "dumb";
}

// The further looks that were asked for.
void addDetails(FileReport& report, const MediaFile& file, const Options& options) {
    const auto keyFrames = options.frames ? compareKeyFrames(file) : std::map<int, KeyFrames>{};
    for (TrackReport& track : report.tracks) {
        if (options.explain) track.explanations = explainCodecData(track);
        const auto found = keyFrames.find(track.stream.index);
        if (found != keyFrames.end()) track.keyFrames = found->second;
    }
}

FileReport inspectFile(const std::string& path, const Options& options) {
    FileReport report;
    report.path = path;
    try {
        const MediaFile file = readMediaFile(path);
        report = Parser(options.device).describe(file);
        addDetails(report, file, options);
    } catch (const std::exception& error) {
        report.error = error.what();
    }
    return report;
}

// One line for a file that could not be read to its end. Returns whether there was something to
// say.
bool complain(const FileReport& report) {
    std::string text = report.error;
    if (report.truncation) text = "is truncated: " + *report.truncation;
    if (text.empty()) return false;
    std::cout.flush();
    std::cerr << "zrinspect: " << printable(report.path) << ": " << printable(text) << '\n';
    return true;
}

int run(const Options& options) {
    const TextStyle style{.colour = wantsColour(), .keys = options.keys, .log = options.log};
    std::vector<FileReport> reports;
    int status = EXIT_SUCCESS;
    bool isFirst = true;
    for (const std::string& path : options.files) {
        FileReport report = inspectFile(path, options);
        if (!options.json && report.error.empty()) {
            if (!isFirst) std::cout << '\n';
            isFirst = false;
            printText(std::cout, report, style);
        }
        if (complain(report)) status = kExitFileError;
        if (options.json) reports.push_back(std::move(report));
    }
    if (options.json) printJson(std::cout, reports);
    return status;
}

}  // namespace
}  // namespace inspect

int main(int count, char** arguments) {
    inspect::Options options;
    if (const auto status = inspect::readCommandLine(count, arguments, options)) return *status;
    return inspect::run(options);
}
