#include "inspect/report/TagRows.h"

#include <array>

#include "zrcodecparser/FormatKeys.h"

namespace inspect {

using namespace android;

// The platform's keys are no constants at compile time.
std::span<const TagRow> tagRows() {
    // clang-format off
    static const auto kRows = std::to_array<TagRow>({
        {"title",           AMEDIAFORMAT_KEY_TITLE,                0x20},
        {"artist",          AMEDIAFORMAT_KEY_ARTIST,               0x02},
        {"album",           AMEDIAFORMAT_KEY_ALBUM,                0x01},
        {"album artist",    AMEDIAFORMAT_KEY_ALBUMARTIST,          0x04},
        {"composer",        AMEDIAFORMAT_KEY_COMPOSER,             0x08},
        {"lyricist",        AMEDIAFORMAT_KEY_LYRICIST},
        {"author",          AMEDIAFORMAT_KEY_AUTHOR},
        {"genre",           AMEDIAFORMAT_KEY_GENRE,                0x10},
        {"year",            AMEDIAFORMAT_KEY_YEAR},
        {"date",            AMEDIAFORMAT_KEY_DATE},
        {"track",           AMEDIAFORMAT_KEY_CDTRACKNUMBER},
        {"disc",            AMEDIAFORMAT_KEY_DISCNUMBER},
        {"compilation",     AMEDIAFORMAT_KEY_COMPILATION},
        {"description",     ZREAMEDIAFORMAT_KEY_USERMESSAGE},
        {"lyrics",          ZREAMEDIAFORMAT_KEY_UNSYNCEDLYRICS},
        {"recording mode",  ZREAMEDIAFORMAT_KEY_RECMODE},
        {"loop",            AMEDIAFORMAT_KEY_LOOP},
        {"haptic channels", AMEDIAFORMAT_KEY_HAPTIC_CHANNEL_COUNT},
        {"encoder delay",   AMEDIAFORMAT_KEY_ENCODER_DELAY,        0, " samples"},
        {"encoder padding", AMEDIAFORMAT_KEY_ENCODER_PADDING,      0, " samples"},
    });
    // clang-format on
    return kRows;
}

std::vector<const TagRow*> eightBitRows(const Entries& entries) {
    std::vector<const TagRow*> found;
    const auto* mask = findValue<int32_t>(entries, ZREAMEDIAFORMAT_KEY_MIXEDENCODINGTYPE);
    for (const TagRow& row : tagRows()) {
        if (mask != nullptr && (static_cast<uint32_t>(*mask) & row.mixedEncodingBit) != 0) {
            found.push_back(&row);
        }
    }
    return found;
}

}  // namespace inspect
