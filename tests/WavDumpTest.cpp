// The linker wraps fopen in this program: the device's folder is a folder of the test's own.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/Platform.h"
#include "zrcodecparser/WavDump.h"

namespace android {

struct LayoutProbe {
    static uint32_t& size(WavDump& dump) { return dump.mDataSize; }
};

}  // namespace android

namespace {

using android::WavDump;
using test::Line;

const std::string kDevice = "/data/local/wavdump/";
std::string folder;
bool readOnly = false;

}  // namespace

extern "C" FILE* __real_fopen(const char* name, const char* mode);
extern "C" FILE* __wrap_fopen(const char* name, const char* mode) {
    if (!std::string(name).starts_with(kDevice)) return __real_fopen(name, mode);
    if (readOnly && *mode == 'w') return nullptr;
    return __real_fopen((folder + (name + kDevice.size())).c_str(), mode);
}

namespace {

class WavDumpTest : public testing::Test {
protected:
    WavDumpTest() {
        folder = (std::filesystem::temp_directory_path() / "wavdumpXXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no temporary folder");
        folder += '/';
        readOnly = false;
    }
    ~WavDumpTest() override { std::filesystem::remove_all(folder); }

    static std::string file(const std::string& name) {
        std::ifstream in(folder + name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    void expectLines(const std::vector<Line>& lines) { EXPECT_EQ(mLog.lines(), lines); }
    static Line nameLine(const std::string& name) { return {4, "mFilename=[" + name + "]"}; }

private:
    test::LogCapture mLog{"WavDump"};
};

TEST_F(WavDumpTest, Counter) {
    WavDump dump("x");
    const auto expectCount = [&dump](const std::string& bytes, int count) {
        std::ofstream(folder + "count") << bytes;
        EXPECT_EQ(dump.get_count(), count);
        EXPECT_EQ(file("count"), std::string(1, static_cast<char>((count + 1) % 100)));
    };
    for (int count = 0; count < 256; ++count) expectCount({static_cast<char>(count)}, count);
    expectCount("", 0);
    expectLines({nameLine("x")});
}

TEST_F(WavDumpTest, Names) {
    const WavDump first, second, given("given.wav"), none(nullptr);
    readOnly = true;
    const WavDump third;
    const std::string name(2000, 'n');
    for (size_t length : {1023u, 1024u, 2000u}) WavDump(name.substr(0, length).c_str());
    const Line cut = nameLine(name.substr(0, 1023));
    expectLines({{6, "count was not opened."},
                 nameLine(kDevice + "0000.wav"),
                 nameLine(kDevice + "0001.wav"),
                 nameLine("given.wav"),
                 nameLine(kDevice + "wavdump.wav"),
                 {6, "count was not created."},
                 nameLine(kDevice + "-0001.wav"),
                 cut,
                 cut,
                 cut});
}

// RIFF WAVE with one "fmt " and one "data" chunk, as little-endian machines have the numbers.
std::string header(uint32_t rate, uint16_t bits, uint16_t channels, uint32_t byteRate,
                   uint16_t blockAlign, uint32_t size) {
    const auto bytes = [](auto number) {
        return std::string(reinterpret_cast<const char*>(&number), sizeof(number));
    };
    return "RIFF" + bytes(size + 36) + "WAVEfmt " + bytes(16) + bytes(uint16_t{1}) +
           bytes(channels) + bytes(rate) + bytes(byteRate) + bytes(blockAlign) + bytes(bits) +
           "data" + bytes(size);
}

std::string stereo(uint32_t size) {
    return header(48000, 16, 2, 192000, 4, size);
}

// Numbers that are too long for their field lose their top bits.
TEST_F(WavDumpTest, Formats) {
    const std::tuple<uint32_t, uint16_t, uint16_t, uint32_t, uint16_t> formats[] = {
            {44100, 24, 3, 396900, 9},
            {11025, 12, 2, 22050, 2},
            {~0u, 65535, 65535, 0xE0011FFF, 0xE001},
    };
    for (const auto& [rate, bits, channels, byteRate, blockAlign] : formats) {
        EXPECT_EQ(WavDump(nullptr).open(rate, bits, channels), 0);
        EXPECT_EQ(file("wavdump.wav"), header(rate, bits, channels, byteRate, blockAlign, 0));
    }
}

// Up to the byte that the header has no number for.
TEST_F(WavDumpTest, FileIsCompleteAtAnyTime) {
    WavDump dump(nullptr);
    EXPECT_EQ(dump.open(48000, 16, 2), 0);
    EXPECT_EQ(file("wavdump.wav"), stereo(0));
    const std::string samples(70000, 'x');
    const auto* data = reinterpret_cast<const uint8_t*>(samples.data());
    uint32_t total = 0;
    for (uint32_t size : {1000u, 1u, 70000u, 0u, 9u}) {
        EXPECT_EQ(dump.dump(data, size), size);
        total += size;
        EXPECT_EQ(file("wavdump.wav"), stereo(total) + std::string(total, 'x'));
        EXPECT_EQ(dump.open(8000, 8, 1), -1);
    }
    android::LayoutProbe::size(dump) = 0xFFFFFFF0;  // as after that many bytes
    EXPECT_EQ(dump.dump(data, 15), 15u);
    const std::string last = file("wavdump.wav");
    EXPECT_EQ(last, stereo(0xFFFFFFFF - 44) + std::string(total + 15, 'x'));
    for (uint32_t size : {1u, 70000u}) {
        EXPECT_NE(test::fatalText([&] { dump.dump(data, size); }), "");
        EXPECT_EQ(file("wavdump.wav"), last);
    }
}

TEST_F(WavDumpTest, FailuresAreLoggedAndForgotten) {
    std::optional<WavDump> dump(nullptr);
    const std::string name = kDevice + "wavdump.wav";
    EXPECT_EQ(dump->dump(nullptr, 1), 0u);
    EXPECT_EQ(dump->write_u32le(1), -1);
    EXPECT_EQ(dump->write_u16le(1), -1);
    EXPECT_EQ(dump->write_header(), -1);
    readOnly = true;
    EXPECT_EQ(dump->open(8000, 8, 1), -1);
    const Line notOpened{6, name + " was not opened."};
    expectLines({nameLine(name),
                 notOpened,
                 notOpened,
                 notOpened,
                 notOpened,
                 {6, name + " was not created."}});

    readOnly = false;
    EXPECT_EQ(dump->open(48000, 16, 2), 0);
    EXPECT_EQ(dump->write_u16le('a' + 256 * 'b'), 2);
    EXPECT_EQ(dump->write_u32le(0x89abcdef), 4);
    EXPECT_EQ(dump->write_header(), 0);
    dump.reset();
    EXPECT_EQ(file("wavdump.wav"), stereo(0) + "ab\xef\xcd\xab\x89" + stereo(0));
}

}  // namespace
