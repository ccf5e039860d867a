// Lists the tracks of an AVI file as the library describes them.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "Describe.h"
#include "FileSource.h"
#include "platform/Host.h"
#include "zrcodecparser/CodecType.h"

namespace {

using namespace android;

struct Counts {
    size_t samples = 0;
    size_t marked = 0;  // by the index
    size_t found = 0;   // by the library
    uint64_t bytes = 0;
    uint64_t convertedBytes = 0;
    bool isComplete = true;
};

Counts readSamples(const avi::Reader& reader, const avi::Track& track,
                   const avi::Description& description, MediaExtractorHelper& helper, FILE* pcm) {
    Counts counts;
    avi::Bytes bytes;
    avi::Bytes converted;
    for (const avi::Sample& sample : track.samples) {
        if (reader.read(sample, &bytes) != OK) {
            counts.isComplete = false;
            break;
        }
        ++counts.samples;
        counts.bytes += bytes.size();
        if (sample.isMarked) ++counts.marked;
        if (avi::isKeyFrame(description, helper, bytes)) ++counts.found;
        if (!description.isPcm) continue;
        if (avi::convertTo16(description, helper, bytes, &converted) != OK) {
            counts.isComplete = false;
            break;
        }
        counts.convertedBytes += converted.size();
        if (pcm != nullptr) fwrite(converted.data(), 1, converted.size(), pcm);
    }
    return counts;
}

using Format = std::unique_ptr<AMediaFormat, decltype(&AMediaFormat_delete)>;

const char* mimeOf(AMediaFormat* format) {
    const char* mime = "none: the media server or its codec list cannot be reached";
    AMediaFormat_getString(format, AMEDIAFORMAT_KEY_MIME, &mime);
    return mime;
}

bool showTrack(const avi::Reader& reader, size_t number, MediaExtractorHelper& helper, FILE* pcm) {
    const avi::Track& track = reader.tracks()[number];
    if (track.kind != avi::fourCC("vids") && track.kind != avi::fourCC("auds")) {
        printf("track %zu: neither video nor audio\n", number);
        return true;
    }
    const Format format(AMediaFormat_new(), &AMediaFormat_delete);
    avi::Description description;
    const status_t err = avi::describe(reader, track, helper, format.get(), &description);
    const Counts counts = readSamples(reader, track, description, helper, pcm);
    printf("track %zu: %s\n", number, mimeOf(format.get()));
    printf("  stored      %s\n", AMediaFormat_toString(format.get()));
    if (err != OK) printf("  codec data  refused: status %d\n", err);
    printf("  samples     %zu\n  bytes       %llu\n", counts.samples,
           static_cast<unsigned long long>(counts.bytes));
    printf("  key frames  %zu in the index\n", counts.marked);
    if (description.info.trackType == kTrackTypeVideo) {
        printf("  and         %zu by the library\n", counts.found);
    }
    if (description.isPcm) {
        printf("  converted   %llu bytes of 16-bit samples\n",
               static_cast<unsigned long long>(counts.convertedBytes));
    }
    return err == OK && counts.isComplete;
}

bool showFile(const avi::Reader& reader, FILE* pcm) {
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    const Format file(AMediaFormat_new(), &AMediaFormat_delete);
    helper->setFileMeta(kFileKindAvi, file.get());
    printf("%s, %zu tracks\n", mimeOf(file.get()), reader.tracks().size());
    bool isWhole = !reader.isDamaged();
    for (size_t i = 0; i < reader.tracks().size(); ++i) {
        isWhole &= showTrack(reader, i, *helper, pcm);
    }
    return isWhole;
}

// Codec data that the library cannot go on with end the process: a device starts its parsers in
// one of their own. On the desktop a program may say its last words.
void stop(const char* text) {
    fflush(stdout);
    fprintf(stderr, "avi_parser: stopped by the library: %s\n", text);
    std::_Exit(EXIT_FAILURE);
}

int fail(const char* why) {
    fprintf(stderr, "avi_parser: %s\n", why);
    return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
    const bool hasPcm = argc == 4 && strcmp(argv[1], "--pcm") == 0;
    if (argc != 2 && !hasPcm) {
        fprintf(stderr, "usage: avi_parser [--pcm FILE] AVI\n");
        return 2;
    }
    host::setFatalHandler(&stop);
    avi::FileSource file(argv[argc - 1]);
    DataSourceHelper source(file.record());
    avi::Reader reader(&source);
    const status_t err = reader.open();
    if (err != OK) {
        return fail(err == ERROR_IO ? "the file cannot be read"
                                    : "this is no AVI file, or it has no tracks");
    }
    const std::unique_ptr<FILE, int (*)(FILE*)> pcm(hasPcm ? fopen(argv[2], "wb") : nullptr,
                                                    &fclose);
    if (hasPcm && pcm == nullptr) return fail("the PCM file cannot be written");
    if (!showFile(reader, pcm.get())) return fail("damaged or cut short; this is what is left");
    return EXIT_SUCCESS;
}
