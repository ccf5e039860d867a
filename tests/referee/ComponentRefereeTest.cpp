// What a component is told about WMA and RealAudio files, against what libavformat says of them.
// The parser in between reads WAVEFORMATEX in ASF, and the header of RealAudio 4, by itself.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "referee/Media.h"
#include "support/Component.h"
#include "zrcodecparser/CodecType.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaExtractorHelper.h"
#include "zrcodecparser/TrackInfo.h"

namespace {

using namespace android;
using test::Bytes;
using test::Call;
using Numbers = std::vector<int64_t>;

const std::string kNoise = "-f lavfi -i anoisesrc=d=0.5:seed=7 ";

// The bytes of the file from so far behind the mark on.
Call headerIn(const std::string& path, const Bytes& mark, int distance) {
    const Bytes file = test::media::readFile(path);
    return {"",
            {std::search(file.begin(), file.end(), mark.begin(), mark.end()) + distance,
             file.end()}};
}

// The track's numbers as the decoder glue gets them.
sp<AMessage> messageOf(uint32_t codecType, const std::array<uint32_t, 5>& track,
                       const Bytes& data) {
    const test::DeviceScope device({{"audio/x-zr-ms-wma", "audio/x-pn-realaudio"}});
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    const test::Format format;
    const auto& [channels, rate, bits, bitRate, align] = track;
    TrackInfo info{kTrackTypeAudio, codecType, {}};
    info.audio = {channels, rate, bits, bitRate, static_cast<uint16_t>(align), nullptr, {}, {}};
    size_t size = data.size();
    helper->setTrackMeta(&info, format.get(), false);
    EXPECT_EQ(helper->setAudioConfig(codecType, data.data(), &size, format.get()), 0);
    const sp<AMessage> message = new AMessage;
    for (const auto& [key, value] : host::formatEntries(format.get())) {
        if (value.index() == 0) message->setInt32(key.c_str(), std::get<0>(value));
    }
    return message;
}

TEST(ComponentReferee, Wma) {
    for (const auto& [codecType, arguments] :
         {std::pair<uint32_t, const char*>{kCodecTypeWmaV1,
                                           "-ar 44100 -ac 2 -b:a 128k -c:a wmav1 -f asf"},
          {kCodecTypeWmaV2, "-ar 22050 -ac 1 -b:a 32k -c:a wmav2 -f asf"}}) {
        const std::string path = test::media::encode(kNoise + arguments, "encoded");
        // WAVEFORMATEX stands at 78 in an ASF_Stream_Properties_Object.
        const Call wave = headerIn(path, {0x91, 0x07, 0xDC, 0xB7, 0xB7, 0xA9, 0xCF, 0x11}, 78);
        const auto data = wave.bytes.begin() + 18;
        const auto message = messageOf(
                codecType,
                {wave.at(2, 2), wave.at(4), wave.at(14, 2), 8 * wave.at(8), wave.at(12, 2)},
                {data, data + wave.at(16, 2)});
        const sp<test::Component> node = new test::Component;
        ASSERT_EQ(MediaCodecHelper::setWMAFormat(message, node, false), 0);
        const Call& call = node->calls.back();
        const auto file = test::media::demux(path);
        const auto& [rate, channels, blockAlign, bits, bitRate] = file.sound;
        const auto options = file.extradata.at(codecType == kCodecTypeWmaV1 ? 2 : 4);
        EXPECT_EQ((Numbers{call.at(12, 2), call.at(16), call.at(28), call.at(32, 2), call.at(34, 2),
                           call.at(44, 2), call.at(46, 2)}),
                  (Numbers{channels, bitRate, rate, blockAlign, options, wave.at(0, 2), bits}));
    }
}

// No format key of the library's holds the "ra-" keys. Of these the header has rate, flavor and
// four-character code; each frame of this codec has 20 bytes; the quality is the parser's choice.
TEST(ComponentReferee, RealAudio) {
    const std::string path =
            test::media::encode(kNoise + "-ar 8000 -ac 1 -c:a real_144 -f rm", "encoded");
    const Call header = headerIn(path, {'.', 'r', 'a', 0xFD, 0, 4}, 0);
    const auto at = [&](size_t i) { return header.at(i, 1) << 8 | header.at(i + 1, 1); };
    const auto message = messageOf(kCodecTypeRealAudio, {at(54), at(48), at(52), 0, 0}, {});
    message->setInt32("ra-actual-rate", static_cast<int32_t>(at(48)));
    message->setInt32("ra-audio-quality", 100);
    message->setInt32("ra-flavor-index", static_cast<int32_t>(at(22)));
    message->setInt32("ra-bits-per-frame", 160);
    message->setInt32("ra-granularity", 20);
    message->setInt32("ra-fourcc", static_cast<int32_t>(at(62) << 16 | at(64)));
    const sp<test::Component> node = new test::Component;
    ASSERT_EQ(MediaCodecHelper::setRAFormat(message, 0, node, false), 0);
    const Call& call = node->calls.back();
    const auto file = test::media::demux(path);
    const auto frame = std::ssize(file.packets.at(0).data);
    EXPECT_EQ(file.codec, AV_CODEC_ID_RA_144);  // "lpcJ", 16 bits
    EXPECT_EQ((Numbers{call.at(12), call.at(16), call.at(20), call.at(24, 2), call.at(26, 2),
                       call.at(28, 2), call.at(32), call.at(36), call.at(40)}),
              (Numbers{file.sound.channels, file.sound.sampleRate, file.sound.sampleRate, 16, 100,
                       3, 8 * frame, frame, 0x6C70634A}));
}

}  // namespace
