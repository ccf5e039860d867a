/// @file
/// The key/value store that describes a file or a track.

#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

/// A store of numbers, texts and bytes under text keys. One thread at a time uses it.
struct AMediaFormat;

/// Statuses of a format's operations, and of some of the library's.
typedef enum {
    AMEDIA_OK = 0,                            ///< done
    AMEDIA_ERROR_UNKNOWN = -10000,            ///< nothing known about it
    AMEDIA_ERROR_MALFORMED = -10001,          ///< bytes are not what they should be
    AMEDIA_ERROR_INVALID_OPERATION = -10005,  ///< not for these arguments
    AMEDIA_ERROR_END_OF_STREAM = -10006,      ///< nothing more to read
    AMEDIA_ERROR_IO = -10007,                 ///< reading failed
} media_status_t;

/// An empty format, which the caller deletes.
AMediaFormat* AMediaFormat_new();
/// Frees the format and what it holds; null is allowed. Returns AMEDIA_OK.
media_status_t AMediaFormat_delete(AMediaFormat* format);

/// @{
/// Stores a copy of the value under the key, in place of whatever was there.
void AMediaFormat_setInt32(AMediaFormat* format, const char* key, int32_t value);
void AMediaFormat_setInt64(AMediaFormat* format, const char* key, int64_t value);
void AMediaFormat_setString(AMediaFormat* format, const char* key, const char* value);
void AMediaFormat_setBuffer(AMediaFormat* format, const char* key, const void* data, size_t size);
/// @}

/// @{
/// Returns true, and writes its outputs, only when a value of its type is stored under
/// the key. Strings and buffers stay the format's own and are valid until it changes.
bool AMediaFormat_getInt32(AMediaFormat* format, const char* key, int32_t* out);
bool AMediaFormat_getInt64(AMediaFormat* format, const char* key, int64_t* out);
bool AMediaFormat_getString(AMediaFormat* format, const char* key, const char** out);
bool AMediaFormat_getBuffer(AMediaFormat* format, const char* key, void** data, size_t* size);
/// @}

/// All entries in one line of text, which the format keeps until the next such call.
const char* AMediaFormat_toString(AMediaFormat* format);

/// @{
/// A key of the platform's: its text is the device's, so compare and use it by this name. Types and
/// units stand where the library stores it.
extern const char* const AMEDIAFORMAT_KEY_MIME;
extern const char* const AMEDIAFORMAT_KEY_DURATION;
extern const char* const AMEDIAFORMAT_KEY_TIME_US;
extern const char* const AMEDIAFORMAT_KEY_MAX_INPUT_SIZE;
extern const char* const AMEDIAFORMAT_KEY_WIDTH;
extern const char* const AMEDIAFORMAT_KEY_HEIGHT;
extern const char* const AMEDIAFORMAT_KEY_STRIDE;
extern const char* const AMEDIAFORMAT_KEY_SLICE_HEIGHT;
extern const char* const AMEDIAFORMAT_KEY_FRAME_RATE;
extern const char* const AMEDIAFORMAT_KEY_BIT_RATE;
extern const char* const AMEDIAFORMAT_KEY_CHANNEL_COUNT;
extern const char* const AMEDIAFORMAT_KEY_SAMPLE_RATE;
extern const char* const AMEDIAFORMAT_KEY_BITS_PER_SAMPLE;
extern const char* const AMEDIAFORMAT_KEY_PCM_ENCODING;
extern const char* const AMEDIAFORMAT_KEY_LANGUAGE;
extern const char* const AMEDIAFORMAT_KEY_CSD_0;
extern const char* const AMEDIAFORMAT_KEY_CSD_1;
extern const char* const AMEDIAFORMAT_KEY_CSD_2;
extern const char* const AMEDIAFORMAT_KEY_CSD_AVC;
extern const char* const AMEDIAFORMAT_KEY_CSD_HEVC;
extern const char* const AMEDIAFORMAT_KEY_ESDS;
extern const char* const AMEDIAFORMAT_KEY_ENCODER_DELAY;
extern const char* const AMEDIAFORMAT_KEY_ENCODER_PADDING;
extern const char* const AMEDIAFORMAT_KEY_HAPTIC_CHANNEL_COUNT;
extern const char* const AMEDIAFORMAT_KEY_LOOP;
extern const char* const AMEDIAFORMAT_KEY_ALBUM;
extern const char* const AMEDIAFORMAT_KEY_ALBUMART;
extern const char* const AMEDIAFORMAT_KEY_ALBUMARTIST;
extern const char* const AMEDIAFORMAT_KEY_ARTIST;
extern const char* const AMEDIAFORMAT_KEY_AUTHOR;
extern const char* const AMEDIAFORMAT_KEY_CDTRACKNUMBER;
extern const char* const AMEDIAFORMAT_KEY_COMPILATION;
extern const char* const AMEDIAFORMAT_KEY_COMPOSER;
extern const char* const AMEDIAFORMAT_KEY_DATE;
extern const char* const AMEDIAFORMAT_KEY_DISCNUMBER;
extern const char* const AMEDIAFORMAT_KEY_GENRE;
extern const char* const AMEDIAFORMAT_KEY_LYRICIST;
extern const char* const AMEDIAFORMAT_KEY_TITLE;
extern const char* const AMEDIAFORMAT_KEY_YEAR;
/// @}

}  // extern "C"
