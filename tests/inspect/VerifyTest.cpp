// Samples that are missing, broken or out of order, and files that have nothing to complain about.

#include "Run.h"

namespace {

const std::string kMp4 = "-c:v libx264 -movflags +faststart -f mp4";

const std::string kScratch = fs::temp_directory_path() / ("zr_verify" + std::to_string(getpid()));

struct Verify : testing::Test {
    ~Verify() override { fs::remove(kScratch); }
};

// Two seconds with B frames, a key frame every 20.
std::string encode(const std::string& options) {
    run("'" FFMPEG
        "' -v error -nostdin -y -f lavfi -i testsrc2=d=2:s=160x90:r=25 -f lavfi "
        "-i sine=d=2 -bf 2 -g 20 -sc_threshold 0 " +
        options + " " + kScratch);
    return readFile(kScratch);
}

// What the referee reads of a stream of the file that was encoded last.
json packetsOf(size_t stream) {
    const std::string probe = "'" FFPROBE "' -v error -of json -show_packets -select_streams ";
    return json::parse(run(probe + std::to_string(stream) + " " + kScratch).out)["packets"];
}

// What is said of each track. Standard error has a line for each that has a fault.
json verify(const std::string& bytes) {
    const Result result = inspectBytes("--json --verify", bytes);
    const json document = json::parse(result.out);
    json found;
    for (const json& track : document["files"][0]["tracks"]) {
        const std::string name = ": track " + track["index"].dump() + ": ";
        found.push_back(track["verify"]);
        EXPECT_NE(found.back()["fault"].is_null(), result.err.find(name) != std::string::npos);
    }
    EXPECT_EQ(result.status, result.err.empty() ? 0 : 1);
    return found;
}

size_t numberOf(const json& packet, const char* key) {
    return std::stoul(packet[key].get<std::string>());
}

json place(const json& packets, size_t index) {
    const double seconds = std::stod(packets[index]["dts_time"].get<std::string>());
    return {{"sample", index + 1},
            {"timeUs", std::llround(seconds * 1e6)},
            {"offset", numberOf(packets[index], "pos")}};
}

TEST_F(Verify, WholeFilesHaveNoFault) {
    for (const std::string options :
         {"libx264 -f mp4", "libx264 -f mp4 -movflags +frag_keyframe+empty_moov", "libx264 -f flv",
          "libx265 -x265-params log-level=none -c:a libopus -f matroska", "libx264 -f mpegts",
          "mpeg4 -c:a libmp3lame -f avi", "mpeg2video -c:a mp2 -f mpeg", "wmv2 -bf 0 -f asf",
          "libtheora -c:a libvorbis -f ogg", "libvpx -c:a libvorbis -f webm"}) {
        SCOPED_TRACE(options);
        const json found = verify(encode("-c:v " + options));
        for (const size_t stream : {0u, 1u}) {
            EXPECT_EQ(found[stream]["fault"], json());
            EXPECT_EQ(found[stream]["samples"], packetsOf(stream).size());
        }
    }
    EXPECT_EQ(verify(encode("-vn -f mp3"))[0]["fault"], json());
    const json found = verify(encode(kMp4))[0];
    EXPECT_EQ(found["keyDistance"], 20);
    EXPECT_EQ(found["keyDistanceUs"], 800000);
}

TEST_F(Verify, SamplesBehindTheEndAreCounted) {
    const std::string file = encode(kMp4);
    const size_t end = file.size() * 2 / 3;
    const json found = verify(file.substr(0, end));
    for (const size_t stream : {0u, 1u}) {
        const json packets = packetsOf(stream);
        size_t readable = 0;  // the first ones of a track, as it is written
        size_t missing = 0;
        for (const json& packet : packets) {
            const size_t behind = numberOf(packet, "pos") + numberOf(packet, "size");
            readable += behind <= end ? 1 : 0;
            if (behind > end) missing += std::min(numberOf(packet, "size"), behind - end);
        }
        const json& track = found[stream];
        EXPECT_EQ(track["outside"]["count"], packets.size() - readable);
        EXPECT_EQ(track["outside"]["first"], place(packets, readable));
        EXPECT_EQ(track["missingBytes"], missing);
    }
}

TEST_F(Verify, ChangedBytesAreFound) {
    const std::string file = encode(kMp4);
    const json packets = packetsOf(0);
    // One that zeros would fill as lengths.
    size_t index = 1;
    while (numberOf(packets[index], "size") % 4 != 0) index++;
    const size_t offset = numberOf(packets[index], "pos");
    const json expected = {{"count", 1}, {"first", place(packets, index)}};
    std::string changed = file;
    changed[offset + 3] ^= 1;  // of the unit's length of four bytes
    EXPECT_EQ(verify(changed)[0]["brokenUnits"], expected);
    std::fill_n(&changed[offset], numberOf(packets[index], "size"), 0);
    EXPECT_EQ(verify(changed)[0]["brokenUnits"], expected);
    changed = file;
    changed.replace(file.find("stts") + 16, 4, std::string(4, 0));  // from each sample to the next
    EXPECT_EQ(verify(changed)[0]["backward"]["count"], packets.size() - 1);
    // The first chunk's offset; those behind it are read all the same.
    changed[file.find("stco") + 12] = 0x7F;
    const json found = verify(changed)[0];
    EXPECT_EQ(found["outside"]["first"]["sample"], 1);
    EXPECT_EQ(found["readable"], packets.size() - found["outside"]["count"].get<size_t>());
}

TEST_F(Verify, NothingReadableIsTheVerdict) {
    const std::string mp4 = encode(kMp4);
    const std::string fragmented = encode("-c:v libx264 -movflags +empty_moov -f mp4");
    const std::string mkv = encode("-c:v libx264 -f matroska");
    const size_t data = mp4.find("mdat") + 4;
    const std::pair<std::string, std::string> cases[] = {
            {mp4.substr(0, data - 8), ", the file ends at " + std::to_string(data - 8)},
            {mp4.substr(0, data + 40), ": the first ends at offset "},
            {fragmented.substr(0, fragmented.find("moof") - 4), "the track has no samples"},
            {mkv.substr(0, mkv.find("\x1F\x43\xB6\x75") + 20), "before the file's end"}};
    for (const auto& [bytes, reason] : cases) {
        const json file = json::parse(inspectBytes("--json", bytes).out)["files"][0];
        for (const json& each : file["tracks"]) EXPECT_EQ(each["verdict"], "nothing-readable");
        expectContains(file["tracks"][0]["reason"], reason);
    }
    expectContains(inspectBytes("", fragmented).out, "video/avc        plays with");
    // The video begins behind sound of which no chunk is in the file.
    std::string late = encode("-vf setpts=PTS+3/TB -fps_mode passthrough " + kMp4);
    const size_t chunks = late.rfind("stco") + 12;
    const auto count = static_cast<size_t>(late[chunks - 1]);
    for (size_t i = 0; i < count; i++) late[chunks + 4 * i] = 0x7F;
    expectContains(inspectBytes("", late).out, "video/avc        plays with");
}

}  // namespace
