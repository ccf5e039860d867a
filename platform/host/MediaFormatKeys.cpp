#include "platform/MediaFormat.h"

// The values are those of the NDK's published media format documentation.
// clang-format off
const char* const AMEDIAFORMAT_KEY_MIME                 = "mime";
const char* const AMEDIAFORMAT_KEY_DURATION             = "durationUs";
const char* const AMEDIAFORMAT_KEY_TIME_US              = "timeUs";
const char* const AMEDIAFORMAT_KEY_MAX_INPUT_SIZE       = "max-input-size";
const char* const AMEDIAFORMAT_KEY_WIDTH                = "width";
const char* const AMEDIAFORMAT_KEY_HEIGHT               = "height";
const char* const AMEDIAFORMAT_KEY_STRIDE               = "stride";
const char* const AMEDIAFORMAT_KEY_SLICE_HEIGHT         = "slice-height";
const char* const AMEDIAFORMAT_KEY_FRAME_RATE           = "frame-rate";
const char* const AMEDIAFORMAT_KEY_BIT_RATE             = "bitrate";
const char* const AMEDIAFORMAT_KEY_CHANNEL_COUNT        = "channel-count";
const char* const AMEDIAFORMAT_KEY_SAMPLE_RATE          = "sample-rate";
const char* const AMEDIAFORMAT_KEY_BITS_PER_SAMPLE      = "bits-per-sample";
const char* const AMEDIAFORMAT_KEY_PCM_ENCODING         = "pcm-encoding";
const char* const AMEDIAFORMAT_KEY_LANGUAGE             = "language";
const char* const AMEDIAFORMAT_KEY_CSD_0                = "csd-0";
const char* const AMEDIAFORMAT_KEY_CSD_1                = "csd-1";
const char* const AMEDIAFORMAT_KEY_CSD_2                = "csd-2";
const char* const AMEDIAFORMAT_KEY_CSD_AVC              = "csd-avc";
const char* const AMEDIAFORMAT_KEY_CSD_HEVC             = "csd-hevc";
const char* const AMEDIAFORMAT_KEY_ESDS                 = "esds";
const char* const AMEDIAFORMAT_KEY_ENCODER_DELAY        = "encoder-delay";
const char* const AMEDIAFORMAT_KEY_ENCODER_PADDING      = "encoder-padding";
const char* const AMEDIAFORMAT_KEY_HAPTIC_CHANNEL_COUNT = "haptic-channel-count";
const char* const AMEDIAFORMAT_KEY_LOOP                 = "loop";
const char* const AMEDIAFORMAT_KEY_ALBUM                = "album";
const char* const AMEDIAFORMAT_KEY_ALBUMART             = "albumart";
const char* const AMEDIAFORMAT_KEY_ALBUMARTIST          = "albumartist";
const char* const AMEDIAFORMAT_KEY_ARTIST               = "artist";
const char* const AMEDIAFORMAT_KEY_AUTHOR               = "author";
const char* const AMEDIAFORMAT_KEY_CDTRACKNUMBER        = "cdtracknum";
const char* const AMEDIAFORMAT_KEY_COMPILATION          = "compilation";
const char* const AMEDIAFORMAT_KEY_COMPOSER             = "composer";
const char* const AMEDIAFORMAT_KEY_DATE                 = "date";
const char* const AMEDIAFORMAT_KEY_DISCNUMBER           = "discnum";
const char* const AMEDIAFORMAT_KEY_GENRE                = "genre";
const char* const AMEDIAFORMAT_KEY_LYRICIST             = "lyricist";
const char* const AMEDIAFORMAT_KEY_TITLE                = "title";
const char* const AMEDIAFORMAT_KEY_YEAR                 = "year";
// clang-format on
