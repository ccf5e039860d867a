// Parameter sets in full, against FFmpeg's encoders and what its decoders find; contradictions.

#include <map>

#include "Run.h"

namespace {

// Coded in pairs of macroblocks, or blocks of 8x8; allowed are 900 / (12 * 8) frames (ITU-T H.264
// Table A-1), or 6 with the current one for 640 * 360 of 245760 samples (ITU-T H.265 A.4.2).
TEST(Sps, SaysWhatTheEncoderWasTold) {
    const std::pair<std::string, std::map<std::string, std::string>> cases[] = {
            {"178x98 -pix_fmt yuv422p10le -c:v libx264 -x264-params 'level=1.1:interlaced=1:"
             "b-pyramid=none:ref=3:colorprim=bt709:transfer=bt709:colormatrix=bt709:fullrange=on'",
             {{"picture", "178x98, cropped from 192x128"},
              {"chroma format", "4:2:2"},
              {"scan", "interlaced"},
              {"reference frames", "3; the level allows 9"},
              {"colour", "bt709 primaries, bt709 transfer, bt709 matrix, full range"}}},
            {"640x358 -pix_fmt yuv420p12le -c:v libx265 -x265-params 'log-level=none:level-idc=2.1:"
             "colorprim=bt2020:transfer=smpte2084:colormatrix=bt2020nc:range=limited:ref=4:"
             "master-display=G(1,2)B(3,4)R(5,6)WP(7,8)L(9000000,1)'",
             {{"picture", "640x358, cropped from 640x360"},
              {"bit depth", "12"},
              {"scan", "progressive"},
              {"reference frames", "4; the level allows 5"},
              {"colour", "bt2020 primaries, smpte2084 transfer, bt2020nc matrix, limited range"},
              {"max_display_mastering_luminance", "9000000 (900 cd/m2)"}}},
            // no emulation prevention, and a range that goes without saying
            {"178x98 -pix_fmt gbrp -c:v libaom-av1 -cpu-used 8 -color_trc iec61966-2-1",
             {{"colour", "bt709 primaries, iec61966-2-1 transfer, gbr matrix, full range"}}},
    };
    const std::string path = fs::temp_directory_path() / ("zr" + std::to_string(getpid()) + ".mp4");
    for (const auto& [options, expected] : cases) {
        run("'" FFMPEG "' -v error -y -f lavfi -i testsrc2=d=0.2:s=" + options + " " + path);
        const json rows = inspectFile("--explain " + path)["tracks"][0]["explanations"][0]["rows"];
        fs::remove(path);
        std::map<std::string, json> values;
        for (const json& row : rows) values[row["name"]] = row["value"];
        for (const auto& [name, value] : expected) EXPECT_EQ(values[name], value) << name;
    }
}

// Each of these bytes of a good file is changed; the encoder wrote High, 1.1, 160x90, "avc1".
TEST(Sps, ContradictionsAreSaid) {
    const std::string file = readFile(SAMPLES "video.mp4");
    const size_t record = file.find("avcC") + 4;
    const size_t box = file.find("avc1", file.find("stsd"));
    const std::tuple<size_t, std::string, const char*> cases[] = {
            {record + 1, "M", "profile 77 (Main), in its parameter set 100 (High)"},
            {box, "hvc1", "\\\"hvc1\\\" says H.265, but the record is one of H.264"},
            {box + 28, "\x01\x40", "the container says 320x90, the codec data 160x90"},
    };
    for (const auto& [offset, bytes, note] : cases) {
        std::string changed = file;
        changed.replace(offset, bytes.size(), bytes);
        const json track =
                json::parse(inspectBytes("--json", changed).out)["files"][0]["tracks"][0];
        expectContains(track["notes"].dump(), note);
        // Not a record of H.265 in any of them.
        EXPECT_EQ(track["notes"].dump().find("finished HEVC record"), std::string::npos);
    }
}

// The second, of another encoder, takes the place of the boxes behind the record.
TEST(Sps, EveryOneIsCompared) {
    const auto encode = [](const std::string& options) {
        return run("'" FFMPEG
                   "' -v error -f lavfi -i testsrc=d=0.2,format=yuv420p -c:v libx264 "
                   "-movflags +frag_keyframe " +
                   options + " -f mp4 -")
                .out;
    };
    std::string file = encode("-s 160x90 -profile:v high -level 1.1");
    const std::string other = encode("-s 320x180 -profile:v main -level 3 -x264-params sps-id=1");
    const auto sps = [](const std::string& bytes) {
        const size_t begin = bytes.find("avcC") + 10;
        return bytes.substr(begin, 2u + static_cast<uint8_t>(bytes[begin + 1]));
    };
    const size_t record = file.find("avcC") - 4;
    const size_t end = file.find("btrt") + 16;
    file[record + 3] = static_cast<char>(end - record);
    file[record + 13] = '\xE2';
    file.insert(record + 14 + sps(file).size(), sps(other)).erase(end, sps(other).size());
    const json track = json::parse(inspectBytes("--json", file).out)["files"][0]["tracks"][0];
    const std::string notes = track["notes"].dump();
    expectContains(notes, "profile 100 (High), in its parameter set 2: 77 (Main)");
    expectContains(notes, "level 11 (1.1), in its parameter set 2: 30 (3.0)");
    expectContains(notes, "the container says 160x90, parameter set 2: 320x180");
}

// VP9 6.2 in the first key frame, and WebM's features, for which a title of 33 letters makes room.
TEST(Sps, Vp9TellsOfItself) {
    const std::string title(33, 'n');
    const std::string file = run("'" FFMPEG
                                 "' -v error -f lavfi -i testsrc=d=0.1:s=178x98 -c:v "
                                 "libvpx-vp9 -pix_fmt yuv422p10le -colorspace bt2020nc "
                                 "-metadata:s:0 title=" +
                                 title + " -f matroska -")
                                     .out;
    const std::string features = "\1\1\3\2\1\x1F\3\1\x0A\4\1\2";
    std::string featured = file;
    featured.replace(file.find(title) - 3, 36,
                     "\x63\xA2\x8C" + features + "\xEC\x93" + std::string(19, 'v'));
    const std::tuple<std::string, std::string, std::map<std::string, std::string>> cases[] = {
            {file,
             "first key frame",
             {{"profile_high_bit", "1 (profile 3)"},
              {"picture", "178x98"},
              {"chroma format", "4:2:2"},
              {"bit depth", "10"}}},
            {featured,
             "private data",
             {{"profile", "3"},
              {"level", "31 (3.1)"},
              {"bitDepth", "10"},
              {"chromaSubsampling", "2 (4:2:2)"}}}};
    for (const auto& [bytes, key, expected] : cases) {
        const json document = json::parse(inspectBytes("--json --explain", bytes).out);
        const json record = document["files"][0]["tracks"][0]["explanations"][0];
        EXPECT_EQ(record["key"], key);
        std::map<std::string, json> values;
        for (const json& row : record["rows"]) values[row["name"]] = row["value"];
        for (const auto& [name, value] : expected) EXPECT_EQ(values[name], value) << name;
    }
}

}  // namespace
