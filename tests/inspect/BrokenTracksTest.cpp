// Encrypted tracks, and those with codec data that no decoder starts from.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "inspect/callers/Session.h"
#include "inspect/media/OpenFile.h"
#include "inspect/verdict/BrokenData.h"

namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;

const std::string kPath = fs::temp_directory_path() / ("zr_tracks" + std::to_string(getpid()));

const std::string kSine = "sine=d=0.2 -c:a ";
const std::string kVideo = "testsrc=d=0.2:s=128x96,format=yuv420p -c:v ";
const std::string kHevc = kVideo + "libx265 -x265-params log-level=none -f mp4 ";

// A file by FFmpeg, and new bytes so far behind wherever the old ones stand.
struct Case {
    std::string options;
    std::string old;
    size_t behind;
    std::string bytes;
    std::string said;
};

std::string encode(const std::string& options) {
    const std::string command = "'" FFMPEG "' -v error -nostdin -y -f lavfi -i ";
    EXPECT_EQ(std::system((command + options + " '" + kPath + "'").c_str()), 0);
    std::ostringstream bytes;
    bytes << std::ifstream(kPath, std::ios::binary).rdbuf();
    fs::remove(kPath);
    return bytes.str();
}

std::string patched(std::string file, const Case& patch) {
    EXPECT_NE(file.find(patch.old), std::string::npos);
    for (size_t at = 0; (at = file.find(patch.old, at)) != std::string::npos; at++) {
        file.replace(at + patch.behind, patch.bytes.size(), patch.bytes);
    }
    return file;
}

inspect::MediaFile read(const std::string& bytes) {
    std::ofstream(kPath, std::ios::binary) << bytes;
    const inspect::InputFile input(kPath);
    fs::remove(kPath);
    return inspect::readMediaFile(inspect::OpenFile(input));
}

std::string protectionOf(const std::string& bytes) {
    const auto found = read(bytes).streams.at(0).protection;
    return found ? found->scheme + " " + found->keyId : "none";
}

std::string whyOf(const std::string& bytes) {
    const inspect::MediaFile file = read(bytes);
    const bool isWhole = file.container.hasWholeFrames;
    inspect::Session session(android::host::typicalPhone());
    const auto& stream = file.streams.at(0);
    return whyNoDecoderStarts(stream, session.describeTrack(stream, isWhole).records, isWhole);
}

TEST(BrokenTracks, CodecData) {
    const std::string avc = kVideo + "libx264 -f mp4";
    const std::string flv = kVideo + "libx264 -f flv";
    const std::string hvc1 = kHevc + "-tag:v hvc1";
    const std::string vorbis = kSine + "libvorbis -f matroska";
    const std::string opus = kSine + "libopus -f matroska";
    const std::string av1 = kVideo + "libaom-av1 -cpu-used 8 -f mp4";
    const std::string aac = kSine + "aac -f ipod";
    const std::string esds = "\5\x80\x80\x80\5";  // ISO/IEC 14496-1 7.2.6.7: DecoderSpecificInfo
    const Case cases[] = {{avc, "avcC", 4, "\2", "version 2"},
                          {avc, "avcC", 9, "\xE0", "no SPS"},
                          {flv, "\1\0\6\x68"s, 0, "\0"s, "no PPS"},
                          {avc, "avcC", 10, "\xFF", "cut short"},
                          {avc, "\0\0\0\65avcC"s, 0, "\0\0\0\13"s, "cut short"},
                          {avc, "avcC", 16, std::string(8, '\0'), "SPS"},
                          {hvc1, "hvcC", 4, "\0"s, "version 0"},
                          {hvc1, "hvcC", 27, "\x27", "no VPS"},
                          {hvc1, "hvcC", 29, "\xFF", "cut short"},
                          {kHevc, "hvcC", 27, "\x27", ""},
                          {av1, "av1C", 4, "\x82", "version 2"},
                          {kVideo + "libvpx-vp9 -f mp4", "vpcC", 4, "\2", "version 2"},
                          {aac, esds, 5, "\2", "type 0"},
                          {aac, esds, 5, "\x16\x88", "index 13"},
                          {aac, "esds", 0, "none", "missing"},
                          {kSine + "aac -f adts", "\xFF\xF1", 0, "\xFF", ""},
                          {kSine + "pcm_s16le -f matroska", "\x9F\x81\1", 2, "\0"s, "channels"},
                          {vorbis, "\1vorbis", 11, "\0"s, "identification"},
                          {vorbis, "\5vorbis", 0, "\7", "setup"},
                          {opus, "OpusHead", 0, "Opuz", "missing"},
                          {opus, "OpusHead", 9, "\0"s, "no sense"},
                          {kSine + "flac -f matroska", "fLaC", 18, "\0\0\0"s, "STREAMINFO"},
                          {kSine + "alac -f ipod", "$alac", 18, "\0"s, "ALAC"}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.options + " " + each.old);
        const std::string file = encode(each.options);
        EXPECT_EQ(whyOf(file), "");
        const std::string why = whyOf(patched(file, each));
        EXPECT_TRUE(each.said.empty() ? why.empty() : why.find(each.said) != why.npos) << why;
    }
}

// A title of 33 letters makes room for the ContentEncodings of Matroska.
TEST(BrokenTracks, Encryption) {
    const std::string encrypted =
            " -encryption_scheme cenc-aes-ctr -encryption_key 00112233445566778899aabbccddeeff "
            "-encryption_kid 0123456789abcdef0123456789abcdef -f mp4";
    const std::string key = " 0123456789abcdef0123456789abcdef";
    const std::string title(33, 'n');
    const std::string mkv = kVideo + "libx264 -f matroska -metadata:s:0 title=" + title;
    const std::string letters = "6b6b6b6b6b6b6b6b6b6b6b6b6b6b6b6b";
    const std::string name = "\x53\x6E\xA1" + title;
    const std::string encodings = "\x6D\x80\xA1\x62\x40\x9E\x50\x33\x81";
    const std::string none = encodings + "\0\x50\x34\x97\x42\x54\x81\3\x42\x55\x90"s;
    const std::string aes = encodings + "\1\x50\x35\x97\x47\xE1\x81\5\x47\xE2\x90";
    const Case cases[] = {
            {kVideo + "libx264" + encrypted, "senc", 0, "free", "cenc" + key},
            {kHevc + "-movflags +frag_keyframe" + encrypted, "senc", 0, "senc", "cenc" + key},
            {kSine + "aac" + encrypted, "cenc\0\1"s, 0, "cbcs", "cbcs" + key},
            {kSine + "aac -f ipod", "mp4a\0"s, 0, "drms", "drms "},
            {mkv, name, 0, none, "none"},
            {mkv, name, 0, aes + std::string(16, 'k'), "Matroska ContentEncryption " + letters},
            {kSine + "wmav2 -f asf",
             "\x40\x52\xD1\x86\x1D\x31\xD0\x11\xA3\xA4\0\xA0\xC9\3\x48\xF6"s, 0,
             "\x14\xE6\x8A\x29\x22\x26\x17\x4C\xB9\x35\xDA\xE0\x7E\xE9\x28\x9C",
             "ASF Extended Content Encryption "},
            {kVideo + "mpeg2video -r 25 -f vob", "\0\0\1\xE0"s, 6, "\x91",
             "MPEG-PS (MPEG-2 Program Stream) scrambling "}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.options);
        EXPECT_EQ(protectionOf(patched(encode(each.options), each)), each.said);
    }
}

// ISO/IEC 13818-1 2.4.3.3, in packets of each size; nobody can see into those of the track.
TEST(BrokenTracks, ScrambledTransportStream) {
    const std::string clear = encode(kVideo + "libx264 -f mpegts");
    EXPECT_EQ(protectionOf(clear), "none");
    for (const auto& [before, behind] : {std::pair{0u, 0u}, {4u, 0u}, {0u, 16u}}) {
        std::string file;
        for (size_t at = 0; at < clear.size(); at += 188) {
            std::string packet = clear.substr(at, 188);
            const bool isOfTrack = packet[1] % 32 == 1 && packet[2] == 0;
            if (isOfTrack) packet.replace(4, 184, 184, 'x').at(3) = '\x90';
            file.append(before, '\0').append(packet).append(behind, '\0');
        }
        EXPECT_EQ(protectionOf(file), "MPEG-TS (MPEG-2 Transport Stream) scrambling ");
    }
}

}  // namespace
