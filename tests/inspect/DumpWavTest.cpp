// PCM files written as WAV; SoX makes them and reads what came out.

#include <bit>
#include <cmath>

#include "Run.h"

namespace {

// The upper 16 bits of each sample, the lower ones cut off; floats are rounded to 24 bits before.
std::string upper16(const std::string& raw, size_t bytes, char kind, bool isBig) {
    std::string out;
    for (size_t at = 0; at + bytes <= raw.size(); at += bytes) {
        uint32_t word = 0;  // the sample in its upper bits
        for (size_t i = 0; i < bytes; i++) {
            const char byte = raw[at + (isBig ? i : bytes - 1 - i)];
            word |= uint32_t{static_cast<unsigned char>(byte)} << (24 - 8 * i);
        }
        if (kind == 'u') word ^= 0x80000000;
        if (kind == 'f') word = uint32_t(lround(std::bit_cast<float>(word) * 0x1p23)) << 8;
        out += {static_cast<char>(word >> 16), static_cast<char>(word >> 24)};
    }
    return out;
}

TEST(DumpWav, HoldsTheUpperBitsOfEverySample) {
    const std::tuple<const char*, const char*, bool, const char*> cases[] = {
            {"aiff", "s24", true, "ConvertXtoX(24 to 16, big-endian)"},
            {"wav", "u8", false, "ConvertXtoX(8 to 16, unsigned)"},
            {"aiff", "s8", true, "ConvertXtoX(8 to 16, signed)"},
            {"au", "s16", true, "ConvertEndian(16)"},
            {"au", "s32", true, "ConvertEndian(32), ConvertXtoX(32 to 16)"},
            {"wav", "f32", false, "ConvertXto24packed(float), ConvertXtoX(24 to 16), as "},
    };
    const fs::path folder = fs::temp_directory_path() / ("zr_wav" + std::to_string(getpid()));
    fs::create_directory(folder);
    const std::string start = "cd '" + folder.string() + "' && '", sox = start + SOX "' -D -R ";
    const std::string dump = start + ZRINSPECT "' --dump-wav out.wav ";
    for (const auto& [extension, type, isBig, words] : cases) {
        SCOPED_TRACE(words);
        const std::string file = std::string("in.") + extension, bits = type + 1;
        const std::string format = "-c 2 -b " + bits + (*type == 'f' ? " -e float " : " ") + file;
        run(sox + "-n -r 8000 " + format + " synth 0.7 whitenoise gain -1");
        const Result result = run(dump + "--force " + file);
        EXPECT_EQ(result.status, 0) << result.err;
        expectContains(result.out, std::string("conversion to 16 bits: ") + words);
        const std::string raw = run(sox + file + " -t " + type + (isBig ? " -B -" : " -")).out;
        const std::string out = run(sox + "out.wav -t s16 -").out;
        EXPECT_EQ(out.size(), 8000 * 2 * 2 * 7 / 10);
        EXPECT_TRUE(out == upper16(raw, std::stoul(bits) / 8, *type, isBig));
    }
    const std::string before = readFile(folder / "out.wav");
    EXPECT_EQ(run(dump + "in.aiff").status, 1);
    expectContains(run(dump + "--force '" SAMPLES "video.mp4'").err, "PCM to dump, but: h264, aac");
    EXPECT_EQ(readFile(folder / "out.wav"), before);
    fs::remove_all(folder);
}

}  // namespace
