// Plays the decoder glue for the tracks of an AVI file and shows what the components receive.

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

#include "Component.h"
#include "Describe.h"
#include "FileSource.h"
#include "Glue.h"
#include "platform/Buffer.h"
#include "platform/Host.h"
#include "zrcodecparser/MediaCodecHelper.h"
#include "zrcodecparser/MediaDefs.h"

namespace {

using namespace android;

// A phone that decodes Windows Media and MPEG-4. On a device the codec list says what there is.
void pretendDevice() {
    host::Device device = host::typicalPhone();
    for (const char* mime : {ZRE_MEDIA_MIMETYPE_AUDIO_WMA, ZRE_MEDIA_MIMETYPE_VIDEO_WMV7,
                             ZRE_MEDIA_MIMETYPE_VIDEO_WMV8, ZRE_MEDIA_MIMETYPE_VIDEO_WMV}) {
        device.decoders.push_back(mime);
    }
    host::setDevice(std::move(device));
}

const char* nameOf(OMX_INDEXTYPE index) {
    switch (index) {
        case OMX_IndexParamPortDefinition: return "port definition";
        case OMX_IndexParamAudioPcm: return "PCM";
        case OMX_IndexParamAudioWma: return "WMA";
        default: return "of the decoder's maker";
    }
}

// Its 32-bit words, little-endian, but those that are 0.
void showParameter(const glue::Parameter& parameter) {
    printf("  parameter   0x%08x, %s, %zu bytes\n", parameter.index, nameOf(parameter.index),
           parameter.bytes.size());
    for (size_t at = 0; at < parameter.bytes.size(); at += 4) {
        const uint32_t word = avi::read32(parameter.bytes, at);
        if (word != 0) printf("    %3zu  %08x  %u\n", at, word, word);
    }
}

// What goes to the decoder in front of the samples.
void showCodecData(const sp<AMessage>& message) {
    const sp<ABuffer> data = MediaCodecHelper::ZRgetCodecSpecificData(message);
    if (data == nullptr) return;
    printf("  first input %zu bytes:", data->size());
    for (size_t i = 0; i < data->size(); ++i) printf(" %02x", data->data()[i]);
    printf("\n");
}

bool setUpTrack(const avi::Reader& reader, const avi::Track& track, const char* componentName,
                MediaExtractorHelper& helper) {
    const std::unique_ptr<AMediaFormat, decltype(&AMediaFormat_delete)> format(
            AMediaFormat_new(), &AMediaFormat_delete);
    avi::Description description;
    if (avi::describe(reader, track, helper, format.get(), &description) != OK) {
        printf("  refused     codec data\n");
        return false;
    }
    const char* mime = ZRE_MEDIA_MIMETYPE_VIDEO_NOTSUPPORTED;
    AMediaFormat_getString(format.get(), AMEDIAFORMAT_KEY_MIME, &mime);
    const sp<AMessage> message = glue::messageOf(format.get());
    const sp<glue::Component> component = new glue::Component;
    const status_t err = glue::configure(mime, componentName, message, component);
    printf("  mime        %s\n  status      %d\n", mime, err);
    for (const glue::Parameter& each : component->received()) showParameter(each);
    if (err == OK) showCodecData(message);
    return err == OK;
}

void stop(const char* text) {
    fflush(stdout);
    fprintf(stderr, "decoder_glue: stopped by the library: %s\n", text);
    std::_Exit(EXIT_FAILURE);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        fprintf(stderr, "usage: decoder_glue AVI [COMPONENT]\n");
        return 2;
    }
    host::setFatalHandler(&stop);
    pretendDevice();
    avi::FileSource file(argv[1]);
    DataSourceHelper source(file.record());
    avi::Reader reader(&source);
    if (reader.open() != OK) {
        fputs("decoder_glue: this is no AVI file, or it cannot be read\n", stderr);
        return EXIT_FAILURE;
    }
    const sp<MediaExtractorHelper> helper = new MediaExtractorHelper;
    bool allSetUp = true;
    for (size_t i = 0; i < reader.tracks().size(); ++i) {
        printf("track %zu\n", i);
        allSetUp &= setUpTrack(reader, reader.tracks()[i], argc == 3 ? argv[2] : "", *helper);
    }
    return allSetUp ? EXIT_SUCCESS : EXIT_FAILURE;
}
