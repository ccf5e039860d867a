/// @file
/// ID3 tags as entries of a format. MediaExtractorHelper owns one and offers the same operations.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Errors.h"
#include "platform/MediaFormat.h"
#include "platform/RefBase.h"
#include "zrcodecparser/DataSource.h"
#include "zrcodecparser/Export.h"
#include "zrcodecparser/ID3.h"

namespace android {

/// Stores the texts and the picture of ID3 tags in formats.
///
/// Reference-counted and without fields of its own: any thread may call anything, as long as no
/// two use the same format, source or tag at a time. Each operation returns 0, or
/// AMEDIA_ERROR_MALFORMED when there is no valid tag, or where a source is not read: one whose
/// address begins with http:// or https:// and whose flags have the bit 0x40. Nothing is stored
/// then.
///
/// Of a source, the operations use the record that it was made over: they read, and ask for size
/// and address, there, past whatever a derived class overrides. Only flags() is asked of the
/// object, and only when the address is such a one. Fatal: an offset as in the constructor of ID3.
class ZR_EXPORT ID3Wrapper : public RefBase {
public:
    /// Does nothing.
    ID3Wrapper();
    /// Called when the last reference goes; never by hand.
    ~ID3Wrapper() override;

    /// Stores the texts of a tag (album, artist, album artist, composer, genre, title, year,
    /// author, track, disc, compilation) under the AMEDIAFORMAT_KEY_* of that name, its first
    /// picture under AMEDIAFORMAT_KEY_ALBUMART, and under ZREAMEDIAFORMAT_KEY_MIXEDENCODINGTYPE
    /// which texts are of an unknown 8-bit encoding; see ID3::checkMixedEncodingtype. Of several
    /// frames of a kind the first is stored, also when it is empty or of an encoding above 3, which
    /// reads as empty. Of the two ids of a kind, that of v2.3 (TALB) wins over that of v2.2 (TAL)
    /// for the first six; for year, author, track, disc and compilation that of v2.2 wins (TYE over
    /// TYER). Dates of v2.4, comments, lyrics and the picture's MIME type are not stored.
    status_t parseID3(AMediaFormat* meta, ID3& id3);

    /// The same for the v2 tag at the start of the bytes, whatever ignoreV1 says.
    status_t parseID3v2MetaData(const uint8_t* data, size_t size, bool ignoreV1,
                                AMediaFormat* meta);

    /// The same for the v2 tag at an offset in bytes, or else, unless ignoreV1 is set, the v1 tag
    /// at the end of the source.
    status_t parseID3v2MetaData(DataSourceHelper* source, bool ignoreV1, off64_t offset,
                                AMediaFormat* meta);

    /// Stores AMEDIAFORMAT_KEY_ENCODER_DELAY and AMEDIAFORMAT_KEY_ENCODER_PADDING, in samples, from
    /// the first comment with the description "iTunSMPB", when it has them. Comments are the COM
    /// frames, or where there are none the COMM frames. The tag is looked for at the start of the
    /// source; offset is deliberately ignored.
    status_t parseID3GaplessInfo(DataSourceHelper* source, bool ignoreV1, off64_t offset,
                                 AMediaFormat* meta);
};

}  // namespace android
