// zrinspect: shows what the library makes of media files.

#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/Options.h"
#include "inspect/base/Bytes.h"
#include "inspect/base/InputFile.h"
#include "inspect/callers/KeyFrames.h"
#include "inspect/callers/PcmDump.h"
#include "inspect/callers/Pictures.h"
#include "inspect/callers/Session.h"
#include "inspect/media/Demuxer.h"
#include "inspect/records/Explain.h"
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

void callGlue(FileReport& report, Session& session, const GlueOptions& glue) {
    for (TrackReport& track : report.tracks) {
        if (track.stream.kind == Kind::kOther) continue;
        if (glue.component) track.component = setUpComponent(track, glue);
        if (glue.legacy) track.legacy = describeToOlderParsers(track);
        for (host::LogLine& line : session.takeLog()) track.log.push_back(std::move(line));
    }
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

void writePictures(FileReport& report, PictureFiles& files) {
    for (Tag& tag : report.tags.list) {
        const ByteVector* picture = tag.picture();
        if (picture == nullptr || picture->empty()) continue;
        try {
            tag.pictureFile = files.write(report.path, *picture);
        } catch (const FileError& error) {
            report.outputErrors.emplace_back(error.what());
        }
    }
}

void writeWav(FileReport& report, const Options& options) {
    try {
        dumpWav(options.dumpWav, {options.force, options.files}, report);
    } catch (const FileError& error) {
        report.outputErrors.emplace_back(error.what());
    }
}

// The demuxer may stumble over what stands in front of the media.
std::string withFault(const std::string& error, const std::string& path) {
    try {
        const std::string fault = faultBeforeMedia(path);
        return fault.empty() ? error : error + "; " + fault;
    } catch (const std::exception&) {
        return error;  // it cannot be read at all
    }
}

FileReport inspectFile(const std::string& path, const Options& options) {
    FileReport report;
    report.path = path;
    try {
        const MediaFile file = readMediaFile(path);
        Session session(options.device);
        report = session.describe(file);
        callGlue(report, session, options.glue);
        addDetails(report, file, options);
    } catch (const std::exception& error) {
        report.error = withFault(error.what(), path);
    }
    return report;
}

void complain(const std::string& text) {
    std::cout.flush();
    std::cerr << "zrinspect: " << printable(text) << '\n';
}

// One line for each thing that went wrong. Returns whether something did.
bool complain(const FileReport& report) {
    for (const std::string& text : report.outputErrors) complain(text);
    std::string text = report.error;
    if (report.truncation) text = "is truncated: " + *report.truncation;
    if (!text.empty()) complain(report.path + ": " + text);
    return !text.empty() || !report.outputErrors.empty();
}

int inspectFiles(const Options& options, PictureFiles* pictures) {
    const TextStyle style{.colour = wantsColour(), .keys = options.keys, .log = options.log};
    std::vector<FileReport> reports;
    int status = EXIT_SUCCESS;
    bool isFirst = true;
    for (const std::string& path : options.files) {
        FileReport report = inspectFile(path, options);
        if (pictures != nullptr) writePictures(report, *pictures);
        if (!options.dumpWav.empty() && report.error.empty()) writeWav(report, options);
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
        PictureFiles pictures(options.pictures, {options.force, options.files});
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
