// What a shell does to zrinspect: broken outputs, pipes, odd names and options, narrow terminals.

#include "Run.h"

namespace {

using CommandLine = InFolder;

TEST_F(CommandLine, EndsAsItShould) {
    // clang-format off
    const std::tuple<const char*, int, const char*> cases[] = {
            {"$Z --json $S/video.mp4 >/dev/full", 1, "standard output: No space left on device"},
            {"$Z $S/video.mp4 >&-", 1, "standard output: Bad file descriptor"},
            {"$Z $S/video.mp4 | :; exit ${PIPESTATUS[0]}", 1, "standard output: Broken pipe"},
            {"$Z --decoder ' VIDEO/avx ' $S/video.mp4", 2, "the nearest is video/avc\n"},
            {"$Z --only-decoders video/HEVC,audio/ogus x", 2, "the nearest is audio/opus\n"},
            {"$Z $'--a\\e[31m' x", 2, "zrinspect: The following argument was not expected: --a\\x1b["},
            {">./-a; $Z x -a", 2, "for the file of that name, write ./-a\n"},
            {"$Z -- -a 'a\\n'", 1, "zrinspect: -a: is empty\nzrinspect: a\\\\n: No such file"},
            {"printf '#EXTM3U\\n#EXT-X-VERSION:3\\n' | $Z -", 1, "-: is not a media file: HLS playlist"},
            {"TMPDIR=$PWD/no; export TMPDIR; $Z <(cat $S/audio.ogg)", 1, "temporary file: No such file"},
            {"ulimit -f 2; $Z --dump-wav o.wav $S/audio.aiff", 1, "o.wav: could not be written"},
            {FFMPEG " -v error -f lavfi -i anullsrc=r=192000:cl=7.1 -t 20 -c:a pcm_s24le -f wav in\n"
             "$Z --dump-wav o.wav in & for i in {1..500}; do ls -A | grep zrinspect && break; done\n"
             "kill $!; wait $!", 143, ""},
    };
    // clang-format on
    for (const auto& [script, status, complaint] : cases) {
        const Result result = shell(script);
        EXPECT_EQ(result.status, status) << script;
        expectContains(result.err, complaint);
    }
    EXPECT_EQ(shell("ls -A | grep -E 'wav|zrinspect'").out, "");
}

TEST_F(CommandLine, ProposesWhatCanBeDone) {
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
            {"$Z --fix --no-decoder audio/mpeg $S/audio.mp3", "becomes AAC LC; other track 1 (cover picture, mjpeg) is left out\n"},
            {"$Z --fix --no-decoder audio/mpeg $S/audio.mp3", "lacks: a decoder for audio/mpeg\n"},
            {FFMPEG " -v error -i $S/video.mp4 -c copy A.MKV; $Z --fix --device bare A.MKV",
             ".fixed.mkv\n"},
            {"printf 'video/hevc v bitrate=1-9 video/avc v audio/mpeg a' >d; $Z --fix --device d $S/video.avi",
             " -level:0 1.1 -c:1 copy "},
            {"LC_ALL=C sed 's/5avcC/\\x0BavcC/' $S/video.mp4 >u; $Z --fix u", "no conversion mends that"},
            // Sequence headers of MPEG-2 have the size.
            {FFMPEG " -v error -f lavfi -i testsrc -f lavfi -i sine -t 1 -f mpegts - |"
             " LC_ALL=C sed 's/\\x00\\x00\\x01\\xB3/\\x00\\x00\\x01\\xB2/g' >t; $Z --fix t",
             "no conversion is known"},
    };
    // clang-format on
    for (const auto& [script, part] : cases) expectContains(shell(script).out, part);
}

TEST_F(CommandLine, FitsPipesAndTerminals) {
    const std::string usual = shell("cd $S; $Z --keys video.mp4").out.substr(9);
    EXPECT_EQ(shell("$Z --keys - <$S/video.mp4").out, "-" + usual);
    EXPECT_EQ(shell("cat $S/video.mp4 | $Z --keys /dev/stdin").out, "/dev/stdin" + usual);
    EXPECT_EQ(shell("$Z --only-decoders ' Video/AVC, audio/MP4A-latm' $S/audio.aac").err, "");
    EXPECT_EQ(shell("cat $S/audio.mp3 | $Z --pictures p - >a; ls p").out, "stdin.jpg\n");
    std::istringstream lines(
            shell("script -qec \"stty cols 40; TERM=dumb '$Z' --keys $S/audio.ogg\" /dev/null")
                    .out);
    size_t count = 0;
    for (std::string line; std::getline(lines, line); count++) EXPECT_LE(line.size(), 41u) << line;
    EXPECT_GT(count, 20u);
}

// Colour says nothing that words do not: without it the text is the same.
TEST_F(CommandLine, FitsAnyWidthWithAndWithoutColour) {
    const std::string plain = shell("$Z --verify $S/video-10bit.mp4").out;
    ASSERT_NE(plain, "");
    // clang-format off
    const std::tuple<const char*, const char*, bool> cases[] = {
            {"", "", true}, {"NO_COLOR=", "", true}, {"NO_COLOR=1", "", false},
            {"NO_COLOR=1", "stty cols 40;", false}, {"COLUMNS=40", "", true},
    };
    // clang-format on
    for (const auto& [setting, before, isColoured] : cases) {
        const std::string script = std::string("unset NO_COLOR COLUMNS; TERM=xterm ") + setting +
                                   " script -qec \"" + before +
                                   " '$Z' --width 0 --verify $S/video-10bit.mp4\" /dev/null"
                                   " | tr -d '\\r' | tee all | sed 's/\x1b\\[[0-9]*m//g'\n";
        EXPECT_EQ(shell(script).out, plain) << script;
        EXPECT_EQ(readFile(mFolder / "all") != plain, isColoured) << script;
    }
    for (const char* what : {"--fix $S/video-10bit.mp4 | grep -v ffmpeg", "--help",
                             "--compare phone,bare $S/video.mp4 $S/video-10bit.mp4"}) {
        const std::string script = std::string("$Z --width 44 ") + what + " | sed \"s,$S,,\"";
        EXPECT_EQ(shell(script + " | LC_ALL=C.UTF-8 grep -E '.{45}'").out, "") << script;
    }
}

}  // namespace
