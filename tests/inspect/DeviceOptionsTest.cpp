// The options that name devices, and what is said of files on them.

#include <algorithm>

#include "Run.h"

namespace {

using DeviceOptions = InFolder;

// Each type in another case than the library's, which asks for "video/avc" and "audio/mp4a-latm".
constexpr const char* kDevice = R"(<MediaCodecs>
<Include href="other&#27;.xml"/>
<Decoders>
<MediaCodec name="small&#27;[31m" type="VIDEO/Avc"><Limit name="size" min="2x2" max="64x64"/></MediaCodec>
<MediaCodec name="secure" type="video/HEVC"><Feature name="secure-playback" required="true"/></MediaCodec>
<MediaCodec name="any" type="Audio/MP4A-Latm"/>
<MediaCodec name="wma" type="audio/x-ms-wma"/>
</Decoders></MediaCodecs>)";
constexpr const char* kWarning = ":2: \"other\\x1b.xml\" is missing\n";

TEST_F(DeviceOptions, EndAsTheyShould) {
    write("d.xml", kDevice);
    write("media_codecs.xml", kDevice);
    write("broken.xml", "<MediaCodecs>\n<Decoders>\n</MediaCodecs>");
    write("a,b", "video/avc\n");
    write("noise", std::string("\0\xFF\x1b", 3));
    fs::create_directory(mFolder / "empty");
    // clang-format off
    const std::tuple<const char*, int, std::string> cases[] = {
            {"$Z --device fone $S/audio.aac", 2, "zrinspect: --device: fone: there is no such file, and the built-in devices are phone, "},
            {"$Z --device '' $S/audio.aac", 2, "--device: is an empty name\n"},
            {"$Z --compare , $S/audio.aac", 2, "--compare: is an empty name\n"},
            {"$Z --compare phone --device bare $S/audio.aac", 2, "--device excludes --compare\n"},
            {"$Z --check=film $S/audio.aac", 2, "film not in {video,audio,all}\n"},
            {"$Z --device broken.xml $S/audio.aac", 1, "zrinspect: --device: broken.xml:3: is no XML: "},
            {"$Z --device empty $S/audio.aac", 1, "--device: empty/media_codecs.xml: there is none in this folder\n"},
            {"$Z --device noise $S/audio.aac", 1, "--device: noise:1: \"\" begins no codec list in XML, no output"},
            {"$Z --compare 'a,b' --check=video -q $S/video.mp4", 0, ""},
            {"$Z --compare 'bare, phone' --check -q $S/audio.aac", 0, ""},
            {"echo video/avc | $Z --device - --check=video -q $S/video.mp4", 0, ""},
            {"$Z --compare d.xml,d.xml -q $S/audio.aac", 0, std::string("zrinspect: d.xml") + kWarning},
            {"$Z --device . -q $S/audio.aac", 0, std::string("zrinspect: .: media_codecs.xml") + kWarning},
            {"$Z --device bare --check -q $S/video.mp4", 3, ""},
            {"$Z --device bare --check=video -q $S/video.mp4", 3, ""},
            {"$Z --device bare --check=audio -q $S/video.mp4", 0, ""},
            {"$Z --device bare --check=video -q $S/audio.aac", 0, ""},
            {"$Z --device phone --device bare --check=video -q $S/video.mp4", 3, ""},
            {"$Z --check=video -q $S/video.hevc", 3, ""},
            {"$Z --device bare --check -q $S/video.mp4 none", 1, "zrinspect: none: No such file or directory\n"},
    };
    // clang-format on
    for (const auto& [script, status, complaint] : cases) {
        const Result result = shell(script);
        EXPECT_EQ(result.status, status) << script;
        EXPECT_EQ(result.out, "") << script;
        if (complaint.ends_with('\n') && status != 2) {
            EXPECT_TRUE(result.err.ends_with(complaint)) << result.err;
            EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
        } else {
            expectContains(result.err, complaint);
        }
    }
    std::istringstream help(shell("$Z --help").out);
    for (std::string line; std::getline(help, line);) EXPECT_LE(line.size(), 100u) << line;
}

// What is wrong with a file comes before what is wrong with the device, and the options that shape
// a device come on top of its description.
TEST_F(DeviceOptions, VerdictsFollowThem) {
    write("d.xml", kDevice);
    shell(FFMPEG
          " -v error -i $S/video.mp4 -c copy -encryption_scheme cenc-aes-ctr "
          "-encryption_key 00112233445566778899aabbccddeeff "
          "-encryption_kid 0123456789abcdef0123456789abcdef locked.mp4\n"
          "LC_ALL=C sed 's/avcC\\x01/avcC\\x07/' $S/video.mp4 >broken.mp4\n" FFMPEG
          " -v error -i $S/audio.aac -c:a wmav2 wma.wma");
    const std::string no = "no-decoder";
    const std::string beyond = "beyond-decoder";
    // The last column is a part of the reason, or the decoder.
    const std::tuple<const char*, size_t, std::string, const char*> cases[] = {
            {"--device d.xml $S/video.mp4", 0, beyond,
             "beyond the decoder: 160x90; small\x1b[31m takes up to 64x64"},
            {"--device d.xml $S/video.mp4", 1, "plays", "any"},
            {"--device d.xml --no-decoder video/avc $S/video.mp4", 0, no, "decoder for video/avc"},
            {"--device d.xml --no-decoder video/avc $S/video.mp4", 1, "plays", "any"},
            {"--device d.xml --only-decoders video/avc $S/video.mp4", 0, beyond, "up to 64x64"},
            {"--device d.xml --only-decoders video/avc $S/video.mp4", 1, no, "audio/mp4a-latm"},
            {"--device d.xml --decoder video/avc $S/video.mp4", 0, "plays", "(any)"},
            {"--device d.xml $S/video.hevc", 0, no,
             "no decoder for video/hevc; secure does not count: serves only what asks for "
             "secure-playback; files of its description are missing: other\x1b.xml"},
            {"--device d.xml wma.wma", 0, no,
             "for audio/x-zr-ms-wma; it has one for audio/x-ms-wma, for which the library does "
             "not ask"},
            {"--only-decoders none --divx-alternative on $S/video.avi", 0,
             "offered-without-decoder",
             "whatever the device has, but there is no decoder for "
             "video/mp4v-es"},
            {"--media-server no-list $S/video.mp4", 0, no, "has no codec list, so no MIME type"},
            {"--only-decoders none --media-server dead locked.mp4", 0, "encrypted", "cenc, key 01"},
            {"--only-decoders none --media-server dead broken.mp4", 0, "codec-data-broken", "no "},
            {"--device d.xml --codec-info missing broken.mp4", 0, "ends-process", "CHECK(info"},
    };
    for (const auto& [arguments, index, verdict, part] : cases) {
        SCOPED_TRACE(arguments);
        const json file = json::parse(shell(std::string("$Z --json ") + arguments).out)["files"][0];
        const json& track = file["tracks"][index];
        EXPECT_EQ(track["verdict"], verdict);
        const json& words = track[verdict == "plays" ? "decoder" : "reason"];
        expectContains(words.is_null() ? "" : words.get<std::string>(), part);
    }
}

// The chain says nothing twice, and what is not known is told of a device that is named.
TEST_F(DeviceOptions, TextAndTable) {
    write("d.xml", kDevice);
    const std::string text = shell("$Z --device phone --device d.xml $S/video.mkv 2>&1").out;
    expectContains(text, "plays on phone\n      on d.xml: does not play: video track 0: beyond");
    expectContains(text, "\n             hw.avc: the bit rate of the file is not known\n");
    expectContains(shell("$Z --device d.xml $S/video.mp4").out,
                   "\n             h264: code 104; asks for video/avc: found; stores: video/avc\n");
    expectContains(shell("$Z $S/video.hevc").out, "no parser: no container parser reads this");
    EXPECT_EQ(
            shell("cp $S/video.mp4 日本語; $Z --compare phone,d.xml 日本語 - x <$S/video.mkv").out,
            R"(        phone           d.xml
日本語  plays           plays-in-part (1)
-       plays (2)       does-not-play (3)
x       unreadable (4)  unreadable (4)

(1) lost: video track 0: beyond the decoder: 160x90; small\x1b[31m takes up to 64x64
(2) hw.avc: the bit rate of the file is not known
(3) video track 0: beyond the decoder: 160x90; small\x1b[31m takes up to 64x64; audio track 1: )"
            R"(the device has no decoder for audio/opus; files of its description are missing: other\x1b.xml
(4) No such file or directory
)");
}

// Each command is run as a narrow terminal shows it, and what it makes plays.
TEST_F(DeviceOptions, FixesRunInAShell) {
    for (const char* name :
         {"a  b.mp4", "it's \"$HOME`id`\".mp4", "-n\n%s\\.mp4", "\xFF:\xE2\x80\xAE.mp4"}) {
        SCOPED_TRACE(name);
        write("name", name);
        const Result result = shell(
                "N=$(<name); cp $S/video.mp4 \"./$N\"; export N Z\n"
                "TERM=dumb COLUMNS=40 script -qec '\"$Z\" --device bare --fix -- \"$N\"' log |"
                "grep ffmpeg | tr -d '\\r' >command; cat command\n"
                "sh ./command 2>log </dev/null; $Z --device bare --check -q -- ./*fixed*\n");
        EXPECT_EQ(result.status, 0) << result.out << result.err;
        shell("rm ./*fixed*");
    }
    const std::string piped = shell("$Z --device bare --fix - <$S/video.mp4").out;
    expectContains(piped, "no command can name what comes through a pipe");
    EXPECT_EQ(piped.find("ffmpeg"), piped.npos);
    const std::string table = shell("$Z --compare phone,bare,bare --fix $S/video.mp4").out;
    expectContains(table, "\n      fix for bare, bare: video track 0 becomes H.264 Baseline\n");
}

}  // namespace
