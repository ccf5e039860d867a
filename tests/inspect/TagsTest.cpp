// Tags and their pictures, as the library reads them; samples/make.sh says what was put in.

#include "Run.h"

namespace {

class Tags : public testing::Test {
protected:
    ~Tags() override { fs::remove_all(mFolder); }
    std::string path(const std::string& name) const { return (mFolder / name).string(); }
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(mFolder / name, std::ios::binary) << bytes;
        return std::string("'").append(path(name)).append("'");
    }
    const fs::path mFolder = fs::temp_directory_path() / ("zr_tags" + std::to_string(getpid()));
    const bool mIsMade = fs::create_directory(mFolder);
};

json refereePicture(const std::string& file) {
    const std::string packets = "'" FFPROBE "' -v error -of json -show_packets -show_data ";
    const json found = json::parse(run(packets + "-select_streams v '" SAMPLES + file + "'").out);
    return privateData({{"extradata", found["packets"][0]["data"]}});
}

TEST_F(Tags, AreReadFromTheFile) {
    const json keys = inspectFile("audio.mp3")["tags"][0]["keys"];
    EXPECT_EQ(keys["title"]["value"], "Prüfton № 1");
    EXPECT_EQ(keys["artist"]["bytes"], "4af67267");
    EXPECT_EQ(keys["albumart"]["value"], refereePicture("audio.mp3"));
    const json ogg = inspectFile("audio.ogg")["tags"][0];
    EXPECT_EQ(ogg["keys"]["title"]["value"], "Prüfton № 2");
    EXPECT_EQ(ogg["keys"]["albumart"]["value"], refereePicture("audio.ogg"));
    const std::string text = inspect("--log audio.mp3 audio.aac").out;
    for (const char* part :
         {" artist           Jörg  (not UTF-8, shown as Latin-1)\n",
          " I/ID3Wrapper: ", " encoder delay    2112 samples\n", " encoder padding  458 samples\n",
          " bytes, JPEG\n", "\n      tags   none\n"}) {
        expectContains(text, part);
    }
}

// Comments of other codecs, and FLAC's own picture block, which ffmpeg makes of the MP3's.
TEST_F(Tags, OfOtherCodecs) {
    for (const std::string name : {"a.opus", "a.spx", "a.oga", "a.flac"}) {
        run("'" FFMPEG "' -v error -nostdin -i '" SAMPLES "audio.mp3' " +
            std::string(name == "a.flac" ? "-c:v copy" : "-vn") + " -ar 16000 " + path(name));
        const json tag = inspectFile(path(name))["tags"][0];
        EXPECT_EQ(tag["keys"]["title"]["value"], "Prüfton № 1") << name;
        EXPECT_EQ(tag["notes"].size(), name == "a.flac") << tag["notes"];
    }
}

TEST_F(Tags, WrongOnesAreExplainedAndShownSafely) {
    const std::string mp3 = readFile(SAMPLES "audio.mp3");
    const std::tuple<size_t, std::string, const char*> cases[] = {
            {3, "\5", " version 2.5 at offset 3"},
            {5, "\1", " flags 0x01 at offset 5"},
            {3, "\5", " ID3v1.1, 128 bytes at offset 1287\n"},
            {6, "\3\x7F\x7F\x7F", " is 8388607 bytes, more than the 7340032"},
            {14, std::string(4, '\x7F'), " frame TIT2 at offset 10 does not fit"},
            {3, "\5", " title            Ä\\x1b[31m  (not UTF-8, shown as Latin-1)\n"},
            {3, "\5", " 8-bit text       title, artist (ASCII), album (ASCII), genre (ASCII): en"},
    };
    for (const auto& [at, bytes, line] : cases) {
        std::string broken = mp3 + "TAG\xC4\x1B[31m" + std::string(119, '\0');
        broken.replace(at, bytes.size(), bytes);
        const Result result = inspect(write("broken.mp3", broken));
        expectContains(result.out + result.err, line);
    }
    expectContains(inspect(write("cut.mp3", mp3.substr(0, 400))).err, "but 390 follow in the file");
}

TEST_F(Tags, PicturesAreWrittenAndNotOverwritten) {
    const std::string command = "--pictures '" + path("new/out") + "' audio.mp3 ./audio.mp3";
    EXPECT_EQ(inspect(command).status, 0);
    const std::string bytes = readFile(path("new/out/audio.jpg"));
    std::string digits;
    for (const char byte : bytes) digits += hex(static_cast<unsigned char>(byte), 2);
    EXPECT_EQ(digits, refereePicture("audio.mp3"));
    EXPECT_EQ(readFile(path("new/out/audio-2.jpg")), bytes);
    write("new/out/audio.jpg", "mine");
    EXPECT_EQ(inspect(command).status, 1);
    expectContains(inspect(command).err, "new/out/audio.jpg: is there already; --force over");
    EXPECT_EQ(readFile(path("new/out/audio.jpg")), "mine");
    EXPECT_EQ(inspect("--force " + command).status, 0);
    EXPECT_EQ(readFile(path("new/out/audio.jpg")), bytes);
}

}  // namespace
