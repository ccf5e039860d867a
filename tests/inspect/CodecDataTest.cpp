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
    const struct {
        const char* file;
        size_t track;
        size_t records;
    } cases[] = {{"video.hevc", 0, 1}, {"video.mp4", 0, 1}, {"video.mp4", 1, 1},
                 {"video.avi", 0, 1},  {"video.mkv", 1, 3}, {"audio.aac", 0, 1}};
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

// ISO/IEC 14496-15 8.3.3.1.2. The record holds bytes 3 to 14 of the SPS as they stand; with the
// emulation prevention bytes of this one among them, the level is not where a reader looks.
TEST(CodecData, HevcInWordsAndFields) {
    const json referee = refereeStreams("video.hevc")[0];
    const std::string level = referee["level"].dump();
    const json track = inspectFile("--explain video.hevc")["tracks"][0];
    EXPECT_EQ(referee["profile"], "Main 10");
    EXPECT_EQ(track["codecData"][0]["text"],
              "HEVC Main 10, level 0.0 (raw 0), VPS+SPS+PPS, 4-byte lengths; "
              "its SPS says level 1.0 (raw " +
                      level + ")");
    const json record = track["explanations"][0];
    EXPECT_EQ(valueOf(record, "numOfArrays"), "3");
    EXPECT_EQ(valueOf(record, "general_profile_compatibility_flags"), "20 00 00 00");
    EXPECT_EQ(valueOf(record, "general_level_idc"), hex(std::stoul(level), 2) + " (1.0)");
}

TEST(CodecData, FieldsAgreeWithTheReferee) {
    const json avc = inspectFile("--explain video.mp4")["tracks"][0]["explanations"][0];
    const json referee = refereeStreams("video.mp4");
    EXPECT_EQ(referee[0]["profile"], "High");
    EXPECT_EQ(valueOf(avc, "profile_idc"), "100 (High)");
    EXPECT_EQ(valueOf(avc, "level_idc"), referee[0]["level"].dump() + " (1.1)");
    EXPECT_EQ(valueOf(avc, "lengthSizeMinusOne"), "3 (4-byte lengths)");
    EXPECT_EQ(valueOf(avc, "bit_depth_luma_minus8"), "0");

    const json aac = inspectFile("--explain video.mp4")["tracks"][1]["explanations"][0];
    EXPECT_EQ(referee[1]["profile"], "LC");
    EXPECT_EQ(valueOf(aac, "audioObjectType"), "2 (AAC LC)");
    EXPECT_EQ(valueOf(aac, "samplingFrequencyIndex"),
              "4 (" + referee[1]["sample_rate"].get<std::string>() + " Hz)");
}

// The avcC box with the bytes at an offset replaced.
json explainBroken(size_t offset, const std::string& bytes) {
    std::string file = readFile(SAMPLES "video.mp4");
    file.replace(file.find("avcC") + 4 + offset, bytes.size(), bytes);
    const fs::path path = fs::temp_directory_path() / ("zr_broken" + std::to_string(getpid()));
    std::ofstream(path, std::ios::binary) << file;
    const json track = inspectFile("--explain '" + path.string() + "'")["tracks"][0];
    fs::remove(path);
    return track;
}

TEST(CodecData, BrokenRecordIsNamedToItsEnd) {
    const struct {
        size_t offset;
        std::string bytes;
        std::string lastRow;
    } cases[] = {
            {6, "\xFF\xFF", "missing " + std::to_string(0xFFFF - (45 - 8)) + " bytes"},  // SPS size
            {5, "\xE0", "further bytes"},                                                // no SPS
    };
    for (const auto& [offset, bytes, lastRow] : cases) {
        const json track = explainBroken(offset, bytes);
        const json explanation = track["explanations"][0];
        expectEveryByteOnce(explanation, track["keys"]["csd-avc"]["value"]);
        EXPECT_EQ(explanation["bytes"], 45);
        EXPECT_EQ(explanation["rows"].back()["name"], lastRow);
    }
}

}  // namespace
