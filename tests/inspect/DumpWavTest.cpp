// PCM files written as WAV. FFmpeg makes the files and cuts them to 16 bits; SoX reads the WAV.

#include "Run.h"

namespace {

TEST(DumpWav, HoldsTheUpperBitsOfEverySample) {
    // FFmpeg rounds floats to 16 bits, but cuts the 24 bits off that they are made from here.
    const std::tuple<std::string, const char*, const char*, const char*> cases[] = {
            {"in.aiff", "pcm_s24be", "in.aiff", "ConvertXtoX(24 to 16, big-endian)"},
            {"in.wav", "pcm_u8", "in.wav", "ConvertXtoX(8 to 16, unsigned)"},
            {"in.aiff", "pcm_s8", "in.aiff", "ConvertXtoX(8 to 16, signed)"},
            {"in.au", "pcm_s16be", "in.au", "ConvertEndian(16)"},
            {"in.au", "pcm_s32be", "in.au", "ConvertEndian(32), ConvertXtoX(32 to 16)"},
            {"in.wav", "pcm_f32le", "noise.wav",
             "ConvertXto24packed(float), ConvertXtoX(24 to 16), as "},
    };
    const fs::path folder = fs::temp_directory_path() / ("zr_wav" + std::to_string(getpid()));
    fs::create_directory(folder);
    const std::string start = "cd '" + folder.string() + "' && '";
    const std::string ffmpeg = start + FFMPEG "' -v error -y ", input = ffmpeg + "-i ";
    const std::string dump = start + ZRINSPECT "' --dump-wav out.wav ";
    run(ffmpeg + "-f lavfi -i 'aevalsrc=2*random(0)-1|random(1)-0.5:s=8000:d=0.7' " +
        "-c:a pcm_s24le noise.wav");
    for (const auto& [file, codec, source, words] : cases) {
        SCOPED_TRACE(words);
        run(input + "noise.wav -c:a " + codec + ' ' + file);
        const Result result = run(dump + "--force " + file);
        EXPECT_EQ(result.status, 0) << result.err;
        expectContains(result.out, std::string("conversion to 16 bits: ") + words);
        const std::string out = run(start + SOX "' out.wav -t s16 -").out;
        EXPECT_EQ(out.size(), 8000 * 2 * 2 * 7 / 10);
        EXPECT_TRUE(out == run(input + source + " -f s16le -").out);
    }
    const std::string before = readFile(folder / "out.wav");
    EXPECT_EQ(run(dump + "in.aiff").status, 1);
    expectContains(run(dump + "--force '" SAMPLES "video.mp4'").err, "PCM to dump, but: h264, aac");
    EXPECT_EQ(readFile(folder / "out.wav"), before);
    fs::remove_all(folder);
}

}  // namespace
