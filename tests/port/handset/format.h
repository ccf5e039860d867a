// A device's media formats, whose keys are variables and no constants, and its log.

#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

typedef struct AMediaFormat AMediaFormat;
typedef enum {
    AMEDIA_OK = 0,
    AMEDIA_ERROR_UNKNOWN = -10000,
    AMEDIA_ERROR_MALFORMED = -10001,
    AMEDIA_ERROR_INVALID_OPERATION = -10005,
    AMEDIA_ERROR_END_OF_STREAM = -10006,
    AMEDIA_ERROR_IO = -10007,
} media_status_t;

AMediaFormat* AMediaFormat_new();
media_status_t AMediaFormat_delete(AMediaFormat*);
void AMediaFormat_setInt32(AMediaFormat*, const char* name, int32_t value);
void AMediaFormat_setInt64(AMediaFormat*, const char* name, int64_t value);
void AMediaFormat_setString(AMediaFormat*, const char* name, const char* value);
void AMediaFormat_setBuffer(AMediaFormat*, const char* name, const void* data, size_t size);
bool AMediaFormat_getInt32(AMediaFormat*, const char* name, int32_t* out);
bool AMediaFormat_getString(AMediaFormat*, const char* name, const char** out);
bool AMediaFormat_getBuffer(AMediaFormat*, const char* name, void** data, size_t* size);

enum { ANDROID_LOG_DEBUG = 3, ANDROID_LOG_INFO, ANDROID_LOG_WARN, ANDROID_LOG_ERROR };
int __android_log_print(int priority, const char* tag, const char* format, ...);
[[noreturn]] void __android_log_assert(const char* condition, const char* tag, const char* format,
                                       ...);
int __android_log_error_write(int tag, const char* subTag, int32_t uid, const char* data,
                              uint32_t size);

// clang-format off
#define HANDSET_KEYS(X) \
    X(MIME) X(DURATION) X(TIME_US) X(MAX_INPUT_SIZE) X(WIDTH) X(HEIGHT) X(STRIDE) \
    X(SLICE_HEIGHT) X(FRAME_RATE) X(BIT_RATE) X(CHANNEL_COUNT) X(SAMPLE_RATE) X(BITS_PER_SAMPLE) \
    X(PCM_ENCODING) X(LANGUAGE) X(CSD_0) X(CSD_1) X(CSD_2) X(CSD_AVC) X(CSD_HEVC) X(ESDS) \
    X(ENCODER_DELAY) X(ENCODER_PADDING) X(HAPTIC_CHANNEL_COUNT) X(LOOP) X(ALBUM) X(ALBUMART) \
    X(ALBUMARTIST) X(ARTIST) X(AUTHOR) X(CDTRACKNUMBER) X(COMPILATION) X(COMPOSER) X(DATE) \
    X(DISCNUMBER) X(GENRE) X(LYRICIST) X(TITLE) X(YEAR)
// clang-format on
#define HANDSET_DECLARE(NAME) extern char* AMEDIAFORMAT_KEY_##NAME;
HANDSET_KEYS(HANDSET_DECLARE)
}
