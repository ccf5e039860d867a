// The library's key frames beside those that the container marks.

#include "Run.h"

namespace {

// The numbers of the samples that the referee finds marked.
json markedSamples(const std::string& file) {
    const json packets = referee("-show_packets -select_streams v", file)["packets"];
    json marked = json::array();
    for (size_t i = 0; i < packets.size(); i++) {
        if (packets[i]["flags"].get<std::string>()[0] == 'K') marked.push_back(i + 1);
    }
    return marked;
}

// Start codes, and in the two others lengths before the units, which the library does not read.
TEST(KeyFrames, LibraryAgreesWithTheContainer) {
    for (const char* file : {"video.avi", "video.mp4", "video.mkv", "video.h264"}) {
        SCOPED_TRACE(file);
        const json marked = markedSamples(file);
        EXPECT_FALSE(marked.empty());
        const json frames = inspectFile(std::string("--frames ") + file)["tracks"][0]["keyFrames"];
        const bool isRaw = file == std::string("video.h264");
        EXPECT_EQ(frames, json({{"examined", true},
                                {"markedBy", isRaw ? "demuxer" : "container"},
                                {"samples", isRaw ? 5 : 25},
                                {"library", marked.size()},
                                {"marked", marked.size()},
                                {"disputed", 0},
                                {"unreadable", 0},
                                {"firstOfLibrary", marked},
                                {"firstDisputed", json::array()}}));
    }
    EXPECT_FALSE(inspectFile("video.avi")["tracks"][0].contains("keyFrames"));
    EXPECT_FALSE(inspectFile("--frames video.avi")["tracks"][1].contains("keyFrames"));
}

// A key frame without its mark in the index, and another frame that has one. The entries of idx1
// are name, flags with 0x10 for a key frame, offset, and size: 0 for a frame that is left out.
TEST(KeyFrames, DisagreementIsShown) {
    std::string file = readFile(SAMPLES "video.avi");
    size_t entry = file.find("idx1") + 8;
    for (int sample = 1; sample <= 25; entry += 16) {
        const bool isVideo = file.compare(entry, 4, "00dc") == 0;
        if (!isVideo || file.compare(entry + 12, 4, std::string(4, 0)) == 0) continue;
        if (sample == 2 || sample == 13) file[entry + 4] ^= 0x10;
        sample++;
    }
    expectContains(inspectBytes("--frames", file).out,
                   "key frames among 25 samples: library 3, container 3; they disagree on 2\n"
                   "               to the library: sample 1 13 25\n"
                   "               sample 2, 0.080 s: key frame to the container only\n"
                   "               sample 13, 0.520 s: key frame to the library only\n");
}

// The library knows no key frames of H.265.
TEST(KeyFrames, DemuxerMarksWhereThereIsNoContainer) {
    const json frames = inspectFile("--frames video.hevc")["tracks"][0]["keyFrames"];
    EXPECT_EQ(frames["markedBy"], "demuxer");
    EXPECT_EQ(frames["library"], 0);
    EXPECT_EQ(frames["marked"], markedSamples("video.hevc").size());
    EXPECT_EQ(frames["firstDisputed"][0]["sample"], 1);
}

}  // namespace
