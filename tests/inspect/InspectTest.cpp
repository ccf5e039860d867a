// zrinspect as a user meets it: command line in, text, JSON and exit status out.

#include <algorithm>

#include "Run.h"

namespace {

// ISO/IEC 14496-1 7.2.6.5: ES, DecoderConfig, DecoderSpecificInfo
std::string esDescriptor(const std::string& config) {
    const size_t size = config.size() / 2;
    return "03" + hex(size + 20, 2) + "00000004" + hex(size + 15, 2) + "40" + std::string(24, '0') +
           "05" + hex(size, 2) + config;
}

TEST(Inspect, KeysAgreeWithTheReferee) {
    const json mp4 = refereeStreams("video.mp4");
    const int rate = std::stoi(mp4[1]["sample_rate"].get<std::string>());
    const std::tuple<const char*, size_t, const char*, const char*, json> cases[] = {
            {"video.mp4", 0, "mime", "string", "video/avc"},
            {"video.mp4", 0, "width", "int32", mp4[0]["width"]},
            {"video.mp4", 0, "height", "int32", mp4[0]["height"]},
            {"video.mp4", 0, "frame-rate", "int32", 25},
            {"video.mp4", 0, "durationUs", "int64", 1000000},
            {"video.mp4", 0, "csd-avc", "buffer", privateData(mp4[0])},
            {"video.mp4", 1, "mime", "string", "audio/mp4a-latm"},
            {"video.mp4", 1, "sample-rate", "int32", rate},
            {"video.mp4", 1, "channel-count", "int32", mp4[1]["channels"]},
            {"video.mp4", 1, "esds", "buffer", esDescriptor(privateData(mp4[1]))},
            {"video.mkv", 1, "language", "string", "fre"},
            {"video.mkv", 1, "csd-0", "buffer", privateData(refereeStreams("video.mkv")[1])},
            {"video.mkv", 2, "language", "string", "eng"},
            {"audio.aac", 0, "is-adts", "int32", 1},
    };
    for (const auto& [file, track, key, type, value] : cases) {
        const json entry = inspectFile(file)["tracks"][track]["keys"][key];
        EXPECT_EQ(entry, json({{"type", type}, {"value", value}})) << file << ", " << key;
    }
}

TEST(Inspect, CodecDataInWords) {
    const json opus = inspectFile("video.mkv")["tracks"][1];
    EXPECT_EQ(opus["codecData"][1]["text"], "codec delay 6500000 ns");  // 312 / 48 kHz
    const json aac = inspectFile("video.mp4")["tracks"][1];
    expectContains(aac["codecData"][0]["text"], "12 08 56 e5 00: AAC LC 44100 Hz 1 channel");
}

TEST(Inspect, VerdictFollowsTheDevice) {
    const std::string no = "no-decoder";
    const std::string fatal = "ends-process";
    // The last column is a part of the reason.
    const std::tuple<const char*, size_t, json, std::string, const char*> cases[] = {
            {"video.mp4", 0, "video/avc", "plays", "null"},
            {"--no-decoder video/avc video.mp4", 0, "video/notsupport", no, "for video/avc"},
            {"--no-decoder video/avc video.mp4", 1, "audio/mp4a-latm", "plays", "null"},
            {"--only-decoders audio/opus,video/hevc video.mkv", 1, "audio/opus", "plays", "null"},
            {"--only-decoders none video.mkv", 1, "audio/notsupport", no, "for audio/opus"},
            {"--only-decoders none video.mkv", 2, "application/x-subrip", "plays", "null"},
            {"video.avi", 0, "video/notsupport", no, "DivX alternative is off"},
            {"--divx-alternative on video.avi", 0, "video/mp4v-es", "plays-in-software", "null"},
            {"--decoder video/divx video.avi", 0, "video/divx", "plays", "null"},
            {"--decoder audio/x-zr-alac audio.m4a", 0, "audio/x-zr-alac", "plays-in-software", ""},
            {"--media-server dead video.mp4", 0, nullptr, no, "does not answer"},
            {"--codec-info missing video.mp4", 0, nullptr, fatal, "CHECK(info != NULL) failed."},
    };
    for (const auto& [arguments, index, mime, verdict, reason] : cases) {
        SCOPED_TRACE(arguments);
        const json track = inspectFile(arguments)["tracks"][index];
        EXPECT_EQ(track["mime"], mime);
        EXPECT_EQ(track["verdict"], verdict);
        expectContains(track["reason"].dump(), reason);
    }
}

// Every bad file gets its line, and the good one beside them is described all the same.
TEST(Inspect, BadFilesAreNamedAndTheOthersDone) {
    const fs::path folder = fs::temp_directory_path() / ("zr_inspect" + std::to_string(getpid()));
    fs::create_directory(folder);
    const auto write = [&](const char* name, const std::string& bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return (folder / name).string();
    };
    const std::string mkv = readFile(SAMPLES "video.mkv");
    const std::string cases[][2] = {
            {folder / "missing.mp4", "No such file or directory"},
            {write("empty.mp4", ""), "is empty"},
            {write("README.md", "# Title\n\nSome `text`.\n"), "is not a media file"},
            {write("text.mp4", "# Title\n"), "is not a media file"},
            {write("cut.mp4", readFile(SAMPLES "video.mp4").substr(0, 999)), "'mdat' box lacks"},
            {write("cut.mkv", mkv.substr(0, mkv.size() - 100)), "the segment lacks 100 of its"},
    };
    std::string files;
    for (const auto& [path, reason] : cases) files += " '" + path + "'";
    const Result result = inspect(files + " video.mp4");
    std::istringstream lines(result.err);
    for (const auto& [path, reason] : cases) {
        std::string line;
        std::getline(lines, line);
        EXPECT_TRUE(line.starts_with("zrinspect: " + path + ": ")) << line;
        expectContains(line, reason);
    }
    EXPECT_EQ(lines.peek(), EOF);
    EXPECT_EQ(result.status, 1);
    expectContains(result.out, "cut.mkv  video/x-matroska");
    expectContains(result.out, "\nvideo.mp4  video/mp4");
    EXPECT_EQ(inspectFile(files)["error"], "No such file or directory");
    fs::remove_all(folder);
}

TEST(Inspect, CommandLine) {
    for (const char* wrong : {"", "--unknown video.mp4", "--divx-alternative maybe video.mp4"}) {
        const Result result = inspect(wrong);
        EXPECT_EQ(result.status, 2) << wrong;
        EXPECT_TRUE(result.out.empty() && !result.err.empty()) << wrong;
    }
    EXPECT_EQ(inspect("--version").out, "ZR_CodecParser_R7.0.0.01\n");
    expectContains(inspect("--help").out, "--divx-alternative on|off");
}

TEST(Inspect, TextShowsWhatAPersonLooksFor) {
    const Result result = inspect("--keys --log video.mp4 video.h264");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    for (const char* part :
         {"video.mp4  video/mp4, QuickTime / MOV, 1.000 s: plays\n",
          "  0  video  video/avc        plays with hw.avc\n", " h264, 160x90, 25 fps, ",
          " csd-avc  45 bytes  AVC High 1.1, 1 SPS, 1 PPS, 4-byte lengths\n",
          " 1  audio  audio/mp4a-latm  plays with audio.aac\n", " aac, 44100 Hz, 1 channel, ",
          " esds  27 bytes  MPEG-4 audio, AudioSpecificConfig 12 08 ",
          " slice-height      int32   90\n", "\nvideo.h264  no container MIME type",
          ", 2-byte lengths\n",
          " I/MediaExtractorHelper: found AVC codec config (160 x 90, 100-profile level 1.1)\n"}) {
        expectContains(result.out, part);
    }
    EXPECT_EQ(result.out.find('\x1b'), std::string::npos);  // no colour off a terminal
}

}  // namespace
