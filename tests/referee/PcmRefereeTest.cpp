// Samples converted, against what FFmpeg makes of the same bytes.

#include <gtest/gtest.h>

#include "model/PcmModel.h"
#include "model/Random.h"
#include "referee/Media.h"

namespace {

using namespace test::pcm;
using test::Bytes;

constexpr size_t kSamples = 20000;

// All cut low bits off, but for floats, where only the library rounds: these lie on the steps of 24
// bits. Integers to big-endian 24 bits have no row: only the library keeps the lower bits there.
constexpr struct Row {
    const char *from, *to;  // as FFmpeg calls them
    Call call;
} kRows[] = {
        {"s8", "s16le", {kTo16, 8, 0, false, true}},
        {"u8", "s16le", {kTo16, 8, 0, false, false}},
        {"s24le", "s16le", {kTo16, 24, 0, false, false}},
        {"s24be", "s16le", {kTo16, 24, 0, false, true}},
        {"s32le", "s16le", {kTo16, 32, 0, false, false}},
        {"s32le", "s24le", {kTo24, 32, 0, false, false}},
        {"f32le", "s24le", {kTo24, 32, 0, true, false}},
        {"s24le", "f32le", {kToFloat, 24, 0, false, false}},
        {"s24be", "f32le", {kToFloat, 24, 0, false, true}},
        {"s32le", "f32le", {kToFloat, 32, 0, false, false}},
        {"s32be", "f32le", {kToFloat, 32, 0, false, true}},
        {"s24le", "s32le", {kTo32, 24, 0, false, false}},
        {"s24be", "s32le", {kTo32, 24, 0, false, true}},
        {"s16be", "s16le", {kEndian, 16, 0, false, false}},
        {"s24be", "s24le", {kEndian, 24, 0, false, false}},
        {"s32be", "s32le", {kEndian, 32, 0, false, false}},
};

Bytes converted(Bytes bytes, const Call& call) {
    const size_t size = bytes.size();
    Bytes out(4 * kSamples);
    bytes.resize(out.size());
    if (call.operation == kTo32) {  // which makes no sense in place
        kLibrary->ConvertXto32(bytes.data(), out.data(), call.source, kSamples, call.bigEndian);
        return out;
    }
    host::SampleBuffer buffer(bytes.data(), bytes.size(), 0, size);
    EXPECT_EQ(run(call, &buffer), 0);
    bytes.resize(buffer.range_length());
    return bytes;
}

TEST(PcmReferee, ConvertsAlike) {
    const std::string path = test::media::temporaryPath("samples");
    for (const auto& [from, to, call] : kRows) {
        SCOPED_TRACE(std::string(from) + " to " + to);
        Bytes bytes = test::Random(1).bytes(kSamples * static_cast<size_t>(call.source / 8));
        for (size_t at = 0; call.isFloat && at < bytes.size(); at += 4)
            std::ranges::copy(toFraction24({bytes[at], bytes[at + 1], bytes[at + 2]}), &bytes[at]);
        test::media::writeFile(path, bytes);
        const std::string arguments = std::string("-f ") + from + " -ac 1 -i " + path + " -f " + to;
        EXPECT_TRUE(converted(bytes, call) ==
                    test::media::readFile(test::media::encode(arguments, "converted")));
    }
}

}  // namespace
