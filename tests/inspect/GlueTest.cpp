// What components and older parsers get of a track.

#include "Run.h"

namespace {

// A file of one second, with these of FFmpeg's options.
std::string encode(const std::string& options) {
    const fs::path path = fs::temp_directory_path() / ("zr_glue" + std::to_string(getpid()));
    run("'" FFMPEG "' -v error -nostdin -y -f lavfi -i sine=d=1 " + options + " " + path.string());
    return path;
}

// The bytes of the first parameter that the track's component receives; all of them have names.
std::string received(const std::string& arguments) {
    const json track = inspectFile("--component " + arguments)["tracks"][0];
    std::string digits;
    for (const json& row : track["component"][0]["parameters"][0]["rows"]) {
        EXPECT_TRUE(row["offset"] == digits.size() / 2 && row["name"] != "") << row;
        digits += row["bytes"].get<std::string>();
    }
    return digits;
}

std::string little(size_t value, size_t sizeBytes) {
    std::string text;
    for (size_t i = 0; i < sizeBytes; i++) text += hex(value >> (8 * i) & 0xFF, 2);
    return text;
}

// The referee knows the rates; the WAVEFORMATEX in the file holds the rest, the options of the
// coder among it, at another place for each version.
TEST(Glue, WmaComponentGetsTheNumbersOfTheFile) {
    for (const auto& [tag, options, optionsAt] :
         {std::tuple{0x160, "-c:a wmav1 -b:a 32k -ar 22050 -ac 1 -f asf", 40},
          {0x161, "-c:a wmav2 -b:a 96k -ac 2 -f asf", 44}}) {
        const std::string path = encode(options);
        const std::string ffprobe = "'" FFPROBE "' -v error -of json -show_streams ";
        const json referee = json::parse(run(ffprobe + path).out)["streams"][0];
        const size_t rate = std::stoul(referee["sample_rate"].get<std::string>());
        const size_t bitRate = std::stoul(referee["bit_rate"].get<std::string>());
        const size_t channels = referee["channels"];
        std::string file;
        for (const char byte : readFile(path)) file += hex(static_cast<unsigned char>(byte), 2);
        const std::string tagBytes = little(static_cast<size_t>(tag), 2);
        const size_t wave = file.find(tagBytes + little(channels, 2) + little(rate, 4));
        ASSERT_NE(wave, std::string::npos);
        EXPECT_EQ(received("--decoder audio/x-zr-ms-wma " + path),
                  little(64, 4) + little(1, 4) + little(0, 4) + little(channels, 4) +
                          little(bitRate, 4) + little(0, 8) + little(rate, 4) +
                          file.substr(wave + 24, 4) +
                          file.substr(wave + static_cast<size_t>(optionsAt), 4) + little(0, 8) +
                          tagBytes + little(16, 2) + std::string(32, '0'));
        fs::remove(path);
    }
}

TEST(Glue, RealAudioWantsWhatOnlyItsParserKnows) {
    std::string command = "--decoder audio/x-pn-realaudio " + encode("-c:a real_144 -f rm");
    expectContains(inspect("--component " + command).out, "end the process: Helper/MediaCodecHel");
    for (const char* key : {"actual-rate 1", "audio-quality 2", "flavor-index 70000",
                            "bits-per-frame 4", "granularity 5", "fourcc 6"}) {
        command += std::string(" --component-key ra-") + key;
    }
    EXPECT_EQ(received(command + " --component-key bits-per-sample 16"),
              little(44, 4) + little(1, 8) + little(1, 4) + little(8000, 4) + little(1, 4) +
                      little(16, 2) + little(2, 2) + little(4464, 4) + little(4, 4) + little(5, 4) +
                      little(6, 4));
}

TEST(Glue, OlderParsersGetCodes) {
    expectContains(inspect("--legacy video.mp4").out, "Ex: 0, ok\n               mime  string  v");
    json track = inspectFile("--legacy video.hevc")["tracks"][0];
    EXPECT_EQ(track["legacy"][1]["metadata"]["hvcc"], track["keys"]["csd-hevc"]);
}

}  // namespace
