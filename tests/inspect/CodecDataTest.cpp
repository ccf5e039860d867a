// Codec data in words and byte by byte.

#include "Run.h"

namespace {

// Every byte of the record stands in one row, in its order; the fields of packed bytes fill these.
void expectEveryByteOnce(const json& explanation, const std::string& record) {
    std::string bytes;
    size_t owedBits = 0;
    for (const json& row : explanation["rows"]) {
        EXPECT_FALSE(row["name"].get<std::string>().empty()) << row;
        const std::string own = row["bytes"];
        const size_t bits = row.value("bits", size_t{0});
        const bool isFurtherField = bits > 0 && own.empty();
        EXPECT_TRUE(isFurtherField || owedBits == 0) << row;
        EXPECT_TRUE(isFurtherField || row["offset"] == bytes.size() / 2) << row;
        if (bits > 0) owedBits += own.size() * 4 - bits;
        bytes += own;
    }
    EXPECT_EQ(owedBits, 0);
    EXPECT_EQ(bytes, record);
}

// The value of the last row of this name.
std::string valueOf(const json& explanation, const std::string& name) {
    std::string value = "no such row: " + name;
    for (const json& row : explanation["rows"]) {
        if (row["name"] == name) value = row["value"].is_null() ? "" : row["value"];
    }
    return value;
}

TEST(CodecData, EveryByteIsNamedOnce) {
    const std::tuple<const char*, size_t, size_t> cases[] = {{"video.hevc", 0, 1},
                                                             {"video.mp4", 0, 1},
                                                             {"video.mp4", 1, 1},
                                                             {"video.avi", 0, 1},
                                                             {"video.mkv", 1, 3}};
    for (const auto& [file, index, records] : cases) {
        SCOPED_TRACE(file);
        const json track = inspectFile(std::string("--explain ") + file)["tracks"][index];
        ASSERT_EQ(track["explanations"].size(), records);
        for (const json& each : track["explanations"]) {
            const std::string key = each["key"];
            expectEveryByteOnce(each, track["keys"][key]["value"]);
        }
    }
    EXPECT_FALSE(inspectFile("video.mp4")["tracks"][0].contains("explanations"));
}

// ISO/IEC 14496-15 8.3.3.1.2. The HEVC record holds bytes 3 to 14 of the SPS as they stand; with
// the emulation prevention bytes of this one among them, the level is not where a reader looks.
TEST(CodecData, FieldsAgreeWithTheReferee) {
    const json mp4 = refereeStreams("video.mp4");
    const json hevc = refereeStreams("video.hevc")[0];
    const std::string level = hevc["level"].dump();
    EXPECT_EQ(json({mp4[0]["profile"], mp4[1]["profile"], hevc["profile"]}),
              json({"High", "LC", "Main 10"}));
    const std::tuple<const char*, size_t, const char*, std::string> cases[] = {
            {"video.mp4", 0, "profile_idc", "100 (High)"},
            {"video.mp4", 0, "level_idc", mp4[0]["level"].dump() + " (1.1)"},
            {"video.mp4", 1, "audioObjectType", "2 (AAC LC)"},
            {"video.mp4", 1, "samplingFrequencyIndex",
             "4 (" + mp4[1]["sample_rate"].get<std::string>() + " Hz)"},
            {"video.hevc", 0, "general_profile_compatibility_flag[0..31]",
             "001" + std::string(29, '0')},
            {"video.hevc", 0, "general_level_idc", level + " (1.0)"},
    };
    for (const auto& [file, track, row, value] : cases) {
        const json tracks = inspectFile(std::string("--explain ") + file)["tracks"];
        EXPECT_EQ(valueOf(tracks[track]["explanations"][0], row), value);
    }
    const json track = inspectFile("video.hevc")["tracks"][0];
    EXPECT_EQ(track["codecData"][0]["text"],
              "HEVC Main 10, level 0.0 (raw 0), VPS+SPS+PPS, 4-byte lengths");
    expectContains(track["notes"].dump(),
                   "level 0 (0.0), in its parameter set " + level + " (1.0)");
}

TEST(CodecData, BrokenRecordIsNamedToItsEnd) {
    const std::tuple<size_t, std::string, std::string> cases[] = {
            {6, "\xFF\xFF", "missing " + std::to_string(0xFFFF - (45 - 8)) + " bytes"},  // SPS size
            {5, "\xE0", "further bytes"},                                                // no SPS
    };
    const std::string file = readFile(SAMPLES "video.mp4");
    for (const auto& [offset, bytes, lastRow] : cases) {
        std::string broken = file;
        broken.replace(file.find("avcC") + 4 + offset, bytes.size(), bytes);
        const Result result = inspectBytes("--json --explain", broken);
        const json track = json::parse(result.out)["files"][0]["tracks"][0];
        const json explanation = track["explanations"][0];
        expectEveryByteOnce(explanation, track["keys"]["csd-avc"]["value"]);
        EXPECT_EQ(explanation["bytes"], 45);
        EXPECT_EQ(explanation["rows"].back()["name"], lastRow);
    }
}

}  // namespace
