// Files that end too early or too late, or that lack what a decoder needs.

#include "Run.h"

namespace {

// One second by FFmpeg, in the format of this name.
std::string encode(const std::string& format, const std::string& options) {
    const fs::path path = fs::temp_directory_path() / ("zr_whole" + std::to_string(getpid()));
    run("'" FFMPEG "' -v error -nostdin -y -f lavfi -i " + options + " -f " + format + " '" +
        path.string() + "'");
    const std::string bytes = readFile(path);
    fs::remove(path);
    return bytes;
}

// Two megabytes behind each file change nothing of what is said about it but for a line that names
// their number; and a cut is found in every kind of file, at its last byte.
TEST(BrokenFiles, EndIsFound) {
    constexpr size_t kZeros = 2 << 20;
    const std::tuple<const char*, const char*, const char*> cases[] = {
            {"mp3", "sine=d=1 -b:a 32k -write_xing 0", nullptr},
            {"ac3", "sine=d=1", nullptr},
            {"flac", "sine=d=1", "its last whole frame ends at sample "},
            {"wav", "sine=d=1", "the RIFF chunk lacks 1 of its "},
            {"aiff", "sine=d=1", "the FORM chunk lacks 1 of its "},
            {"caf", "sine=d=1", "the 'data' chunk lacks 1 of its "},
            {"ogg", "sine=d=1 -c:a flac", "the last page lacks 1 of its "},
            {"mpegts", "testsrc=d=1", "the last packet lacks 1 of its 188 bytes"},
            {"flv", "testsrc=d=1", "the last tag lacks 1 of its "},
            {"asf", "sine=d=1", " object lacks 1 of its "},
            {"rm", "testsrc=d=1:s=qcif", "the DATA chunk lacks "}};
    for (const auto& [format, options, lack] : cases) {
        SCOPED_TRACE(format);
        const std::string bytes = encode(format, options);
        const Result whole = inspectBytes("", bytes);
        EXPECT_EQ(std::tuple(whole.status, whole.err), std::tuple(0, ""));
        std::string filled = inspectBytes("", bytes + std::string(kZeros, '\0')).out;
        const size_t junk = filled.find("      junk: 2097");
        ASSERT_NE(junk, std::string::npos) << filled;
        EXPECT_EQ(filled.erase(junk, filled.find('\n', junk) + 1 - junk), whole.out);
        if (lack != nullptr) {
            expectContains(inspectBytes("", bytes.substr(0, bytes.size() - 1)).err, lack);
        }
    }
}

TEST(BrokenFiles, MissingCodecDataAreSaid) {
    std::string file = readFile(SAMPLES "video.mp4");
    file.replace(file.find("avcC"), 4, "none");
    const json track = json::parse(inspectBytes("--json", file).out)["files"][0]["tracks"][0];
    EXPECT_EQ(track["verdict"], "codec-data-broken");
    expectContains(track["reason"], "missing in the file");
    expectContains(inspect("--frames video.hevc").out, "the library does not examine this codec\n");
    expectContains(inspect("--component audio.m4a video.mp4").out,
                   "does not apply; it sets up ADIF");
}

}  // namespace
