// ID3 tags and Vorbis comments: ours beside libid3tag, TagLib, GStreamer, libavformat and OpenSSL's
// base64. What each finds is compared with what was written before anything is timed; each time
// includes freeing what was made.
//
// usage: tag_bench PICTURE.jpg [options of Google Benchmark]

#include <malloc.h>
#include <openssl/evp.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "Helper/vorbis/Base64.h"
#include "Run.h"
#include "Tags.h"
#include "zrcodecparser/ID3.h"
#include "zrcodecparser/MediaExtractorHelper.h"

namespace {

using android::ID3;
using android::String8;
using bench::Bytes;
using bench::Reader;
using bench::Visit;

const android::sp<android::MediaExtractorHelper> helper = new android::MediaExtractorHelper;

template <typename Call>
void time(const std::string& name, Call call) {
    benchmark::RegisterBenchmark(name.c_str(), [call](benchmark::State& state) {
        for (auto _ : state) {
            call();
            benchmark::ClobberMemory();
        }
    });
}

void timeReader(const std::string& name, const Reader& reader, const std::vector<uint8_t>& file,
                Bytes jpeg) {
    reader.read(file, [&](std::string_view title, Bytes picture) {
        if (title == bench::kTitle && std::ranges::equal(picture, jpeg)) return;
        bench::fail(name + ": " + reader.name + " finds something else");
    });
    const Visit keep = [](std::string_view, Bytes picture) { benchmark::DoNotOptimize(picture); };
    time(name + "/" + reader.name, [=] { reader.read(file, keep); });
}

// ---- ID3

// The others decode all texts in any case.
template <bool kAllTexts>
void readObject(Bytes file, const Visit& visit) {
    const ID3 id3(file.data(), file.size(), true);
    String8 text;
    for (ID3::Iterator frame(id3, nullptr); kAllTexts && !frame.done(); frame.next()) {
        if (frame.getEncodingType() != 0) frame.getString(&text);  // 0 is the picture's
    }
    String8 title;
    ID3::Iterator(id3, "TIT2").getString(&title);
    size_t size = 0;
    const void* picture = id3.getAlbumArt(&size, &text);
    visit(title.c_str(), {static_cast<const uint8_t*>(picture), size});
}

void report(AMediaFormat* format, const Visit& visit) {
    const char* title = "";
    void* picture = nullptr;
    size_t size = 0;
    AMediaFormat_getString(format, AMEDIAFORMAT_KEY_TITLE, &title);
    AMediaFormat_getBuffer(format, AMEDIAFORMAT_KEY_ALBUMART, &picture, &size);
    visit(title, {static_cast<const uint8_t*>(picture), size});
    AMediaFormat_delete(format);
}

void readIntoFormat(Bytes file, const Visit& visit) {
    AMediaFormat* format = AMediaFormat_new();
    helper->parseID3v2MetaData(file.data(), file.size(), true, format);
    report(format, visit);
}

// What two owners cost: a copy of the tag, and a copy out of that.
void copyTwice(Bytes tag) {
    void* first = std::malloc(tag.size());
    benchmark::DoNotOptimize(std::memcpy(first, tag.data(), tag.size()));
    void* second = std::malloc(tag.size());
    benchmark::DoNotOptimize(std::memcpy(second, first, tag.size()));
    std::free(first);
    std::free(second);
}

void timeTag(const std::string& name, const std::vector<uint8_t>& file, Bytes jpeg) {
    std::vector<Reader> readers = bench::kId3Peers;
    // libavformat loses its way in v2.3 frames with bytes to remove.
    if (name == "v2.3 unsynchronised") readers.pop_back();
    readers.insert(
            readers.end(),
            {{"ours", readObject<false>}, {"texts", readObject<true>}, {"format", readIntoFormat}});
    for (const Reader& reader : readers) timeReader(name, reader, file, jpeg);
    const size_t size = file.size() - bench::kMpegFramesSize;
    time(name + "/copies", [=] { copyTwice(Bytes(file).first(size)); });
    benchmark::AddCustomContext(name, std::to_string(size));
}

void timeSmallFrames(size_t megabytes) {
    const std::vector<uint8_t> tag = bench::tagOfSmallFrames(megabytes << 20);
    const ID3 id3(tag.data(), tag.size(), true);
    size_t frames = 0;
    for (ID3::Iterator frame(id3, nullptr); !frame.done(); frame.next()) {
        size_t size = 0;
        if (frame.getData(&size) != nullptr && size == 5) ++frames;
    }
    if (frames != tag.size() / 16) bench::fail("small frames get lost");
    time("small/" + std::to_string(megabytes), [tag] { ID3(tag.data(), tag.size(), true); });
}

// ---- Vorbis comments: ours gets one after the other, the others the whole block.

const std::string titleComment = std::string("TITLE=") + bench::kTitle;
std::string pictureComment = "METADATA_BLOCK_PICTURE=";

void parse(AMediaFormat* format, const std::string& comment) {
    helper->parseVorbisComment(format, comment.c_str(), comment.size());
}

void readComments(Bytes, const Visit& visit) {
    AMediaFormat* format = AMediaFormat_new();
    parse(format, titleComment);
    parse(format, pictureComment);
    report(format, visit);
}

void timeBase64(const std::string& text) {
    static std::vector<uint8_t> ours(text.size());
    static std::vector<uint8_t> openssl(text.size());
    const auto decode = [&text] { return android::vorbis::base64Decode(text, ours.data()); };
    const auto decodeByOpenssl = [&text] {
        return EVP_DecodeBlock(openssl.data(), reinterpret_cast<const uint8_t*>(text.data()),
                               static_cast<int>(text.size()));
    };
    if (!decode() || decodeByOpenssl() < 0 || ours != openssl) bench::fail("base64 differs");
    benchmark::AddCustomContext("base64", std::to_string(text.size()));
    time("base64/ours", decode);
    time("base64/openssl", decodeByOpenssl);
    time("base64/memcpy", [&text] { std::memcpy(ours.data(), text.data(), text.size()); });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) bench::fail("usage: tag_bench PICTURE.jpg [options]");
    // Memory that is freed stays with the process: nobody pays for fresh pages.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    const std::vector<uint8_t> jpeg = bench::readFile(argv[1]);
    for (const unsigned version : {3u, 4u}) {
        const std::string name = "v2." + std::to_string(version);
        timeTag(name + " picture", bench::id3File(version, jpeg, false), jpeg);
        timeTag(name + " texts", bench::id3File(version, {}, false), {});
        timeTag(name + " unsynchronised", bench::id3File(version, jpeg, true), jpeg);
    }
    for (const size_t megabytes : {1u, 2u, 4u, 5u}) timeSmallFrames(megabytes);

    const std::string base64 = bench::pictureBase64(jpeg);
    const std::vector<uint8_t> flac = bench::flacFile(base64);
    pictureComment += base64;
    timeReader("comment", {"ours", readComments}, flac, jpeg);
    for (const Reader& reader : bench::kCommentPeers) timeReader("comment", reader, flac, jpeg);
    timeBase64(base64);
    // One format is filled over and over.
    time("text/ours", [format = AMediaFormat_new()] { parse(format, titleComment); });
    return bench::runBenchmarks(argc, argv, 1);
}
