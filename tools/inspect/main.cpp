// zrinspect: shows what the library makes of media files.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/Options.h"
#include "inspect/base/Console.h"
#include "inspect/base/Progress.h"
#include "inspect/collection/Collection.h"
#include "inspect/collection/Row.h"
#include "inspect/collection/Sandbox.h"
#include "inspect/page/CollectionPage.h"
#include "inspect/page/FilePage.h"
#include "inspect/report/Comparison.h"
#include "inspect/report/JsonReport.h"
#include "inspect/report/Outcome.h"
#include "inspect/report/TextReport.h"

namespace inspect {
namespace {

bool wantsColour() {
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && (noColour == nullptr || *noColour == '\0') &&
           terminal != nullptr && std::string_view(terminal) != "dumb";
}

size_t lineColumns(const Options& options) {
    return options.columns ? *options.columns : terminalColumns(STDOUT_FILENO);
}

bool meets(const Options& options, const FileReport& report) {
    return options.check.empty() ||
           meets(options.check, rowOf(fileToJson(report, options.scope.devices)));
}

std::string textOf(const Options& options, const FileReport& report) {
    const std::vector<PretendedDevice>& devices = options.scope.devices;
    const TextStyle style{.colour = wantsColour(),
                          .keys = options.keys,
                          .log = options.log,
                          .notKnown = options.isDeviceNamed};
    std::ostringstream text;
    std::ostringstream fixes;
    printText(text, report, devices, style);
    printFixes(fixes, report, devices, style, lineColumns(options));
    return wrapped(text.str(), lineColumns(options)) + fixes.str();
}

// Returns whether all of it is written.
bool show(const Options& options, const FileReport& report, bool isFirst) {
    if (options.quiet || options.json || options.isCompared || !report.error.empty()) return true;
    return print(std::string(isFirst ? 0 : 1, '\n').append(textOf(options, report)));
}

bool showAll(const Options& options, const std::vector<FileReport>& reports) {
    if (options.quiet) return true;
    if (options.json) return print(jsonReport(options.scope.devices, reports));
    if (!options.isCompared) return true;
    const TextStyle style{.colour = wantsColour()};
    std::ostringstream text;
    printComparison(text, options.scope.devices, reports, lineColumns(options), style);
    return print(text.str());
}

void keepPage(const Options& options, OutputFile& file) {
    file.keep();
    if (!options.quiet) complain("page -> " + options.html);
}

void writePage(const Options& options, const std::string& html) {
    OutputFile file(options.html, options.scope.outputs);
    file.write(ByteVector(html.begin(), html.end()));
    keepPage(options, file);
}

int inspectFiles(const Options& options, PictureFiles* pictures) {
    std::vector<FileReport> reports;
    FilePage page(options.scope.devices, options.files.size() == 1);
    if (!options.html.empty()) OutputFile(options.html, options.scope.outputs);
    bool isComplete = true;
    bool isMet = true;
    bool isFirst = true;
    for (const std::string& path : options.files) {
        FileReport report = makeReport(path, options.gathered(), pictures);
        if (!options.html.empty()) {
            page.add(report);
            keepOnly(report, options.scope);
        }
        if (!show(options, report, isFirst)) return kExitFileError;
        if (report.error.empty()) isFirst = false;
        const std::vector<std::string> faults = faultsOf(report);
        std::ranges::for_each(faults, complain);
        if (!faults.empty()) isComplete = false;
        if (!meets(options, report)) isMet = false;
        if (options.json || options.isCompared) reports.push_back(std::move(report));
    }
    if (!options.html.empty()) writePage(options, page.html());
    if (!showAll(options, reports) || !isComplete) return kExitFileError;
    return isMet ? EXIT_SUCCESS : kExitDoesNotPlay;
}

// A device that is named twice has each said once.
void warnOfDevices(const Options& options) {
    std::set<std::string> said;
    for (const PretendedDevice& device : options.scope.devices) {
        const std::string& name = device.description.name;
        const std::string file = std::filesystem::path(name).filename().string() + ':';
        for (const std::string& warning : device.description.warnings) {
            const bool isNamed = warning.starts_with(file);
            const std::string place =
                    isNamed ? warning.substr(file.size() - 1) : std::string(": ").append(warning);
            if (said.insert(name + place).second) complain(name + place);
        }
    }
}

Ending showMany(const Options& options) {
    OutputRules rules = options.scope.outputs;
    // The run does not begin if the page cannot be written.
    OutputFile(options.html, rules);  // NOLINT(bugprone-unused-raii)
    CollectionPage page(options.collection, options.scope);
    Ending ending = runCollection(options.collection, options.scope, [&](const FileRow& row) {
        std::error_code ignored;
        page.add(row);
        if (rules.overwrites && std::filesystem::equivalent(row.path, options.html, ignored)) {
            rules.inputs.push_back(row.path);
        }
    });
    if (!ending.isWhole) return ending;
    OutputFile file(options.html, rules);
    page.write(ending, [&](std::string_view part) {
        file.write(Bytes(reinterpret_cast<const uint8_t*>(part.data()), part.size()));
    });
    keepPage(options, file);
    return ending;
}

int runMany(const Options& options) {
    const Ending ending = options.html.empty()
                                  ? runCollection(options.collection, options.scope, {})
                                  : showMany(options);
    if (!ending.isComplete) return kExitFileError;
    return ending.isMet ? EXIT_SUCCESS : kExitDoesNotPlay;
}

int run(const Options& options) {
    warnOfDevices(options);
    const bool isConfined = forbidOutsideWorld() || kIsSanitized;
    if (!isConfined && options.collection.isWanted && !options.quiet) {
        complain("this kernel has no sandbox: nothing is refused to the workers");
    }
    try {
        if (options.collection.isWanted) return runMany(options);
        if (options.pictures.empty()) return inspectFiles(options, nullptr);
        PictureFiles pictures(options.pictures, options.scope.outputs);
        return inspectFiles(options, &pictures);
    } catch (const FileError& error) {
        complain(error.what());
        return kExitFileError;
    }
}

// A file opened later must not take the place of a standard stream that is closed, and what is
// written to that is to fail.
void occupyStandardStreams() {
    int descriptor = 0;
    do {
        descriptor = open("/dev/null", O_RDONLY);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    close(descriptor);
}

int main(int count, char** arguments) {
    occupyStandardStreams();
    // A reader that has gone and a file that gets too large are errors like others.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    Options options;
    const auto end = readCommandLine(count, arguments, options);
    if (!end) return run(options);
    if (end->status != EXIT_SUCCESS) {
        complain(end->text);
        if (end->status == kExitUsage) std::cerr << "Run with --help for more information.\n";
        return end->status;
    }
    return print(wrapped(end->text, lineColumns(options))) ? EXIT_SUCCESS : kExitFileError;
}

}  // namespace
}  // namespace inspect

int main(int count, char** arguments) {
    return inspect::main(count, arguments);
}
