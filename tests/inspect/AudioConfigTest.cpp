// Forms of the AudioSpecificConfig that encoders here do not write: ISO/IEC 14496-3 1.6.2.1.

#include "Run.h"

namespace {

// The sample with another configuration in place of its own of five bytes.
json explain(const std::string& config) {
    std::string file = readFile(SAMPLES "video.mp4");
    file.replace(file.find("\x12\x08\x56\xE5", file.find("esds")), config.size(), config);
    const fs::path path = fs::temp_directory_path() / ("zr_config" + std::to_string(getpid()));
    std::ofstream(path, std::ios::binary) << file;
    const json track = inspectFile("--explain '" + path.string() + "'")["tracks"][1];
    fs::remove(path);
    return track;
}

TEST(AudioConfig, IsReadFieldByField) {
    const struct {
        std::string config;
        const char* summary;
        size_t bits[10];  // of the fields, in their order
    } cases[] = {
            // spectral band replication: another rate, and the type below
            {{"\x2B\x11\x88\0\0", 5}, "HE-AAC 48000 Hz 2 channels", {5, 4, 4, 4, 5, 1, 1, 1, 7}},
            // an explicit rate
            {{"\x17\x80\x56\x22\x08", 5}, "AAC LC 44100 Hz 1 channel", {5, 4, 24, 4, 1, 1, 1}},
            // an escaped type, of which no more is known
            {{"\xF9\x4C\x80\0\0", 5}, "USAC 24000 Hz 4 channels", {5, 6, 4, 4, 5}},
            // the extension is cut off
            {{"\x2F\x80\xBB\x81\x08", 5}, "08: not complete", {5, 4, 24, 4, 3}},
    };
    for (const auto& [config, summary, bits] : cases) {
        SCOPED_TRACE(summary);
        const json track = explain(config);
        const std::string text = track["codecData"][0]["text"];
        EXPECT_TRUE(text.ends_with(summary)) << text;
        std::string bytes;
        const size_t* next = nullptr;
        for (const json& row : track["explanations"][0]["rows"]) {
            bytes += row["bytes"];
            if (row["name"] == "audioObjectType" && next == nullptr) next = bits;
            if (next == nullptr || !row.contains("bits")) continue;
            EXPECT_EQ(row["bits"], *next++) << row;
        }
        EXPECT_TRUE(next != nullptr && *next == 0);
        EXPECT_EQ(bytes, track["keys"]["esds"]["value"]);
    }
}

}  // namespace
