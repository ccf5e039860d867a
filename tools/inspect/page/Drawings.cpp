// SVG without styles of its own.

#include <algorithm>
#include <sstream>

#include "inspect/page/Views.h"
#include "inspect/report/TextLayout.h"
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

// A short one for each sample, while there is room for them.
Json everyTick(const KeyFrames& frames) {
    constexpr size_t kMost = 250;
    const size_t count = frames.strip.all().size();
    if (count > kMost || frames.strip.width() > 1) return {};
    std::string path;
    for (size_t i = 0; i < count; i++) path += numbered("M", i, ".5 1.1v.3");
    return path;
}

// The outline of a channel, a unit a column; 1 is at the top, -1 at 200.
std::string outline(const Envelope& envelope) {
    const auto at = [](size_t column, float value) {
        const auto height = static_cast<uint64_t>(100 - 99 * value);
        return numbered(" ", column, numbered(" ", height));
    };
    std::string path = "M";
    const std::vector<Extremes>& columns = envelope.all();
    for (size_t i = 0; i < columns.size(); i++) path += at(i, columns[i].most);
    for (size_t i = columns.size(); i-- > 0;) path += at(i, columns[i].least);
    return path + "Z";
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
            {"each", everyTick(frames)},
            {"marked", ticks(frames, &KeyFrameMarks::marked)},
            {"library", ticks(frames, &KeyFrameMarks::library)},
            {"disputed",
             frames.isExamined ? Json(ticks(frames, &KeyFrameMarks::disputed)) : Json()},
            {"words", linesOf(words.str())}};
}

Json waveView(const Waveform& waveform, uint32_t sampleRate) {
    Json channels = Json::array();
    for (size_t i = 0; i < waveform.before.size(); i++) {
        const Envelope& before = waveform.before[i];
        channels.push_back({{"channel", i + 1},
                            {"columns", std::max<size_t>(before.all().size(), 2) - 1},
                            {"before", outline(before)},
                            {"after", outline(waveform.after[i])}});
    }
    const auto frames = static_cast<double>(waveform.frames);
    const double us = sampleRate == 0 ? 0 : 1e6 * frames / sampleRate;
    return {{"channels", channels},
            {"frames", waveform.frames},
            {"end", durationText(static_cast<int64_t>(us))},
            {"isCut", !waveform.isWhole}};
}

}  // namespace inspect
