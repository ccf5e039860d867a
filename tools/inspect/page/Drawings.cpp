// SVG without styles of its own.

#include <sstream>

#include "inspect/page/Views.h"
#include "inspect/report/VerifyText.h"

namespace inspect {
namespace {

// A stroke in the middle of each column that is marked.
std::string ticks(const KeyFrames& frames, bool KeyFrameMarks::*mark) {
    std::string path;
    size_t column = 0;
    for (const KeyFrameMarks& each : frames.strip.all()) {
        if (each.*mark) path += numbered("M", column, ".5 0v1");
        column++;
    }
    return path;
}

Json linesOf(const std::string& text) {
    Json lines = Json::array();
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line.substr(std::min(line.find_first_not_of(' '), line.size())));
    }
    return lines;
}

}  // namespace

Json stripView(const KeyFrames& frames) {
    std::ostringstream words;
    printKeyFrames(words, frames);
    return {{"columns", frames.strip.all().size()},
            {"width", frames.strip.width()},
            {"isMerged", frames.strip.width() > 1},
            {"hasSamples", frames.samples > 0},
            {"last", frames.samples},
            {"isExamined", frames.isExamined},
            {"marker", frames.isMarkedByContainer ? "container" : "demuxer"},
            {"marked", ticks(frames, &KeyFrameMarks::marked)},
            {"library", ticks(frames, &KeyFrameMarks::library)},
            {"disputed",
             frames.isExamined ? Json(ticks(frames, &KeyFrameMarks::disputed)) : Json()},
            {"words", linesOf(words.str())}};
}

}  // namespace inspect
