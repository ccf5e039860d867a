// zrinspect: shows what the library makes of media files.

#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/Options.h"
#include "inspect/base/Utf8.h"
#include "inspect/report/JsonReport.h"
#include "inspect/report/TextReport.h"

namespace inspect {
namespace {

bool wantsColour() {
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (noColour == nullptr || *noColour == '\0') &&
           terminal != nullptr && std::string_view(terminal) != "dumb";
}

void complain(const std::string& text) {
    std::cout.flush();
    std::cerr << "zrinspect: " << escaped(text) << '\n';
}

// One line for each thing that went wrong. Returns whether something did.
bool complain(const FileReport& report) {
    for (const std::string& text : report.outputErrors) complain(text);
    std::string text = report.error;
    if (report.truncation) text = "is truncated: " + *report.truncation;
    if (!text.empty()) complain(escaped(report.path) + ": " + text);
    return !text.empty() || !report.outputErrors.empty();
}

int inspectFiles(const Options& options, PictureFiles* pictures) {
    const TextStyle style{.colour = wantsColour(), .keys = options.keys, .log = options.log};
    std::vector<FileReport> reports;
    int status = EXIT_SUCCESS;
    bool isFirst = true;
    for (const std::string& path : options.files) {
        FileReport report = makeReport(path, options.scope, pictures);
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

int run(const Options& options) {
    if (options.pictures.empty()) return inspectFiles(options, nullptr);
    try {
        PictureFiles pictures(options.pictures, options.scope.outputs);
        return inspectFiles(options, &pictures);
    } catch (const FileError& error) {
        complain(error.what());
        return kExitFileError;
    }
}

}  // namespace
}  // namespace inspect

int main(int count, char** arguments) {
    inspect::Options options;
    if (const auto status = inspect::readCommandLine(count, arguments, options)) return *status;
    return inspect::run(options);
}
