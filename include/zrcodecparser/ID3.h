/// @file
/// ID3 tags: the frames of one tag.

#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Strings.h"
#include "zrcodecparser/DataSource.h"
#include "zrcodecparser/Export.h"

namespace android {

/// @cond
namespace id3 {
struct Tag;
struct TagView;
}  // namespace id3
/// @endcond

/// ID3 tags: the tag at a given place of a file (ID3v2.2, v2.3, v2.4) or at its end (v1, v1.1).
///
/// How it is used: an ID3 reads the tag when it is made and answers from its own copy after that.
/// @code{.unparsed}
///   isValid            whether there is a tag at all; nothing below may be asked before it is
///   true; ID3::Iterator      the frames, all or those of one id, in the order of the tag;
///   getAlbumArt        the first attached picture.
/// @endcode
///
/// How it fails: there are no statuses. Whatever is wrong with a tag as such (a flag that its
/// version does not know, a size that is not syncsafe, a source that reads short, no memory) leaves
/// the object invalid; whatever is wrong with a frame ends the walk there, or gives an empty text.
/// But a v2.4 tag is invalid when its frames fit into it in neither reading of their sizes: as
/// syncsafe numbers, or as the plain ones that some programs write. A tag of more than 0x700000
/// bytes is refused. Messages go to the system log under the tag "ZRID3". Asking for frames or the
/// picture of an object that never held a tag ends the process.
///
/// @code
/// const uint8_t bytes[10] = {'I', 'D', '3', 4};
/// const ID3 tag(bytes, sizeof(bytes), true);
/// if (tag.isValid()) {
///     for (ID3::Iterator frame(tag, nullptr); !frame.done(); frame.next()) {
///         String8 text;
///         frame.getString(&text);
///     }
/// }
/// @endcode
///
/// Threads: one at a time for an object; several may ask one whose tag stays as it is.
///
/// The documents: "ID3 tag version 2.3.0", "ID3 tag version 2.4.0" (Main Structure, Native Frames),
/// "ID3 tag version 2" for v2.2; cited as ID3v2.3, ID3v2.4, ID3v2.2.
class ZR_EXPORT ID3 {
public:
    /// Of the tag that was read last.
    enum Version : int32_t {
        ID3_UNKNOWN,  ///< no tag
        ID3_V1,       ///< 128 bytes at the end of the file
        ID3_V1_1,     ///< with a track number
        ID3_V2_2,     ///< ids of three letters
        ID3_V2_3,     ///< unsynchronised as a whole
        ID3_V2_4,     ///< unsynchronised frame by frame
    };

    /// Reads the v2 tag at an offset in bytes; if there is none, and ignoreV1 is false, the v1 tag
    /// in the last 128 bytes. The source is used in the constructor only, through its own readAt
    /// and getSize, and through nothing else. Fatal: an offset at which the source has the header
    /// of a v2 tag, and which overflows by the header's 10 bytes.
    ID3(DataSourceHelper* source, bool ignoreV1, off64_t offset);

    /// Reads the v2 tag at the start of the bytes, which are copied. A v1 tag at their end is
    /// deliberately not found, whatever ignoreV1 says.
    ID3(const uint8_t* data, size_t size, bool ignoreV1);

    /// Frees the tag, and with it what iterators and pictures point to.
    ~ID3();

    ID3(const ID3&) = delete;
    ID3& operator=(const ID3&) = delete;

    /// Whether the constructor found a tag.
    bool isValid() const;
    /// That of the tag that was read last; ID3_UNKNOWN when there was none.
    Version version() const;

    /// @{
    /// Reads the tag, in place of what the object holds, and returns whether there is one: a v2 tag
    /// at an offset in bytes, or a v1 tag in the last 128 bytes of a source that knows its size. On
    /// failure the object holds no frames. isValid, and until the next checkMixedEncodingtype the
    /// mask, keep to what the constructor found, and version to the last tag. Iterators and
    /// pictures from before are void, as they are after the two operations that remove
    /// unsynchronisation. Fatal: an offset as in the constructor.
    bool parseV2(DataSourceHelper* source, off64_t offset);
    bool parseV2(DataSourceBase* source, off64_t offset);
    bool parseV1(DataSourceHelper* source);
    bool parseV1(DataSourceBase* source);
    /// @}

    /// Four bytes of 7 bits each, most significant first (ID3v2.4 6.2).
    ///
    /// @return false when a byte has its top bit set; `*x` then holds what the bytes before it say.
    static bool ParseSyncsafeInteger(const uint8_t encoded[4], size_t* x);

    /// Takes the 00 after each FF out of the whole tag (ID3v2.3 5).
    void removeUnsynchronization();

    /// Undoes unsynchronisation frame by frame (ID3v2.4 4.1.2) and removes data length indicators:
    /// the frames move together, and bytes that become free at the end are zeroed. Frames without
    /// the flag are treated alike where hasGlobalUnsync is true; their header, unless it changes
    /// for another reason, deliberately keeps the size from before. iTunesHack reads the frame
    /// sizes as plain 32-bit numbers, as some programs write them, and leaves syncsafe ones behind.
    ///
    /// @return false when a size is not syncsafe, or a frame does not fit into the tag or is too
    /// small for its indicator: the frames before it are done then, and it follows them as it was.
    bool removeUnsynchronizationV2_4(bool iTunesHack, bool hasGlobalUnsync);

    /// Works out which of six texts of the tag are in some 8-bit encoding: those marked ISO-8859-1,
    /// which is often not true, and all of a v1 tag. Bits: 0x01 album, 0x02 artist, 0x04 album
    /// artist, 0x08 composer, 0x10 genre, 0x20 title. Of several frames of a kind the first counts,
    /// one with an id of v2.3 (TALB) before any with that of v2.2 (TAL). Does nothing for an
    /// invalid object, whose mask is 0.
    void checkMixedEncodingtype();
    /// The mask of these bits, despite the name.
    uint32_t isMixedEncodingtype();

    /// The data of the first attached picture (APIC; PIC in v2.2), or null. The bytes belong to the
    /// tag. Sets `*length` to the size in bytes, 0 for null, and `*mime` to the MIME type: as it
    /// stands in an APIC frame, image/png, image/jpeg or text/plain (for a link) for a PIC frame.
    /// `*mime` may be set beside a null for a malformed frame. A picture of no bytes is possible
    /// with PIC. The description before the picture ends with one zero byte in encodings 0 and 3,
    /// and with two in any other, unknown ones included.
    const void* getAlbumArt(size_t* length, String8* mime) const;

    class Iterator;

private:
    friend struct LayoutProbe;
    friend class ID3Wrapper;

    bool hold(id3::Tag tag);
    id3::TagView view() const;

    bool mIsValid = false;
    uint8_t* mData = nullptr;  // without the 10-byte header of a v2 tag
    size_t mSize = 0;
    size_t mFirstFrameOffset = 0;
    Version mVersion = ID3_UNKNOWN;
    size_t mRawSize = 0;  // with that header, as the header says; 0 for v1
    uint32_t mMixedEncodingType = 0;
};

/// Walks over the frames of a tag, which it must not outlive. Compressed and encrypted frames are
/// passed over. The fields of a v1 tag are seen as v2.2 frames: TT2 title, TP1 artist, TAL album,
/// TYE year, COM comment, TRK track, TCO genre.
class ZR_EXPORT ID3::Iterator {
public:
    /// @{
    /// Stands on the first frame with an id, case-sensitive, or on the first of all for null.
    Iterator(const ID3& parent, const char* id);
    /// Leaves the tag as it is.
    ~Iterator();
    /// @}

    Iterator(const Iterator&) = delete;
    Iterator& operator=(const Iterator&) = delete;

    /// Whether there are no more frames.
    bool done() const;
    /// Goes to the next frame; does nothing when done.
    void next();

    /// The id of the frame, 3 or 4 bytes as they stand in the tag; empty when done.
    void getID(String8* id) const;

    /// The text of the frame; then, where ss is not null, its second half as getstring gives it.
    void getString(String8* s, String8* ss = nullptr) const;

    /// The text of a text frame, or what follows the encoding byte in any other. ISO-8859-1 and
    /// UTF-8 come as the bytes that they are, NULs included. UTF-16 comes as UTF-8; if all its
    /// characters are below 256 and a byte-order mark was allowed (encoding 1), as ISO-8859-1. The
    /// track number and genre of a v1 tag come as decimal numbers. Empty when done, for an encoding
    /// above 3, and when the frame is too short.
    ///
    /// With secondhalf, what follows encoding, language and a description, as in COMM frames; a v1
    /// tag has no halves and gives the whole field. The description ends at the first zero byte
    /// behind its first byte, which is deliberately not looked at. So behind an empty description
    /// the text is taken for more of it: the result is what follows the next zero byte, mostly
    /// nothing. And in UTF-16 the description ends at the first character that has a zero byte in
    /// it: the result is the rest of the description, a NUL, a byte-order mark and the text, or
    /// starts in the middle of a character, and is read as little-endian unless encoding is 2.
    ///
    /// For an iterator made for USLT or ULT either half begins behind a language and a description
    /// that is taken to be empty: 3 bytes and 1, or 2 in UTF-16.
    void getstring(String8* s, bool secondhalf) const;

    /// 0 for v1, 6 for v2.2, 10 for v2.3 and v2.4.
    size_t getHeaderLength() const;

    /// The data of the frame behind its header, `*length` bytes, which belong to the tag; null and
    /// 0 when done.
    const uint8_t* getData(size_t* length) const;

    /// The first byte of the data: 0 ISO-8859-1, 1 UTF-16 with a byte-order mark, 2 UTF-16BE, 3
    /// UTF-8 (ID3v2.4 4). 0 for a v1 tag, 0xFF when done. For a frame without data, the byte behind
    /// it in the tag, or 0 at the tag's end.
    uint8_t getEncodingType() const;

private:
    friend struct LayoutProbe;

    void findFrame();

    const ID3& mParent;
    char* mID;
    size_t mOffset;
    const uint8_t* mFrameData;
    size_t mFrameSize;
};

}  // namespace android
