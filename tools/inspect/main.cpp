// zrinspect: shows what the library makes of media files.

#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/Bytes.h"
#include "inspect/Demuxer.h"
#include "inspect/JsonReport.h"
#include "inspect/Options.h"
#include "inspect/Parser.h"
#include "inspect/TextReport.h"

namespace inspect {
namespace {

bool wantsColour() {
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (noColour == nullptr || *noColour == '\0') &&
           terminal != nullptr && std::string_view(terminal) != "dumb";
}

FileReport inspectFile(const std::string& path, const host::Device& device) {
    FileReport report;
    report.path = path;
    try {
        return Parser(device).describe(readMediaFile(path));
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
        FileReport report = inspectFile(path, options.device);
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
