// Files that end too early or too late, or that lack what a decoder needs.

#include <algorithm>
#include <random>

#include "Run.h"

namespace {

using namespace std::string_literals;

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

// Tags may follow the frames (ID3v1, APEv2, ID3v2.4 3.1), which tell where they end.
TEST(BrokenFiles, NoiseBehindFramesIsNamed) {
    std::string noise(1 << 20, '\0');
    std::mt19937 random(1);
    std::ranges::generate(noise, [&] { return static_cast<char>(random()); });
    const std::string mp3 = encode("mp3", "anoisesrc=d=1 -q:a 5 -write_xing 0 -write_id3v1 1");
    const std::string ape = "APETAGEX\xD0\7\0\0\x20\0\1\0\0\0\0\0\0\0\0\xA0"s +
                            std::string(8, '\0') + noise.substr(0, 1 << 16) + std::string(32, ' ');
    const std::string id3 = "ID3\4\0\0\0\4\0\0"s + noise.substr(0, 1 << 16);
    const std::string files[] = {mp3,
                                 mp3 + ape,
                                 mp3 + id3 + mp3 + id3,
                                 encode("mp2", "sine=d=1"),
                                 encode("mp3", "sine=d=1:r=11025 -b:a 32k"),
                                 encode("adts", "sine=d=1"),
                                 encode("ac3", "sine=d=1"),
                                 encode("dts", "sine=d=1 -c:a dca -strict -2"),
                                 encode("eac3", "sine=d=1")};
    for (const std::string& bytes : files) {
        const json whole = json::parse(inspectBytes("--json", bytes).out)["files"][0];
        const json noisy = json::parse(inspectBytes("--json", bytes + noise).out)["files"][0];
        EXPECT_EQ(whole.value("junk", ""), "");
        EXPECT_EQ(noisy.value("junk", ""), "1048576 bytes behind offset " +
                                                   std::to_string(bytes.size()) +
                                                   " belong to no frame");
        EXPECT_EQ(noisy["durationUs"], whole["durationUs"]);
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
