/// @file
/// Writes PCM into WAV files, for listening to what a decoder put out.

#pragma once

#include <cstdint>
#include <cstdio>

#include "zrcodecparser/Export.h"

namespace android {

/// One WAV file of PCM samples.
///
/// How it is used: make one, open it with the format of the samples, dump them as they come. The
/// header is written anew on every dump, so the file is complete whenever the process stops. An
/// object writes one file: open() truncates what stands under its name. Samples are written as they
/// come and are taken to be little-endian.
///
/// Numbered files are /data/local/wavdump/0000.wav to 0099.wav, and then 0000.wav again. The number
/// of the next one is the only byte, 0 to 99 and not a digit, of /data/local/wavdump/count. The
/// directory has to be there, the counter is made; nothing keeps two processes from taking the same
/// number.
///
/// @code
/// WavDump dump("decoded.wav");
/// const uint8_t silence[4] = {};
/// if (dump.open(44100, 16, 2) == 0) dump.dump(silence, sizeof(silence));
/// @endcode
///
/// Threads: one at a time for an object.
///
/// How it fails: failures are logged under the tag "WavDump" and leave the object usable; errors
/// while writing are not looked at.
class ZR_EXPORT WavDump {
public:
    /// Takes the file with the number that get_count() returns; "-0001.wav" when that is -1. No
    /// file is touched but the counter. Logs the name.
    WavDump();
    /// Takes the file of this name; null for /data/local/wavdump/wavdump.wav. Of longer names 1023
    /// bytes count. Logs the name.
    explicit WavDump(const char* name);
    /// Closes the file.
    ~WavDump();

    WavDump(const WavDump&) = delete;
    WavDump& operator=(const WavDump&) = delete;

    /// The byte in the counter file; 0 when it is empty or cannot be opened (the latter logged).
    /// Stores (byte + 1) mod 100 in it.
    ///
    /// @return the byte, or -1 when the counter cannot be written (logged). A byte above 99, which
    /// nothing here writes, is returned as it is.
    int get_count();

    /// Creates the file for samples of a rate in Hz and a width in bits.
    ///
    /// @return 0, or -1 when a file is open already or cannot be created (logged).
    int open(uint32_t sampleRate, uint16_t bitsPerSample, uint16_t channels);

    /// Appends bytes.
    ///
    /// @return size, or 0 when no file is open (logged).
    ///
    /// Fatal where the file would grow past 2^32 - 1 bytes, which its header cannot tell: it stays
    /// what the last dump left.
    uint32_t dump(const uint8_t* data, uint32_t size);

    /// @{
    /// Write at the current position of the file: the 44 bytes of the header (RIFF WAVE, one "fmt "
    /// and one "data" chunk; Multimedia Programming Interface and Data Specifications 1.0), or one
    /// number, little-endian.
    ///
    /// @return 0 or the number of bytes; -1 when no file is open (logged).
    int write_header();
    int write_u32le(uint32_t value);
    int write_u16le(uint16_t value);
    /// @}

private:
    friend struct LayoutProbe;

    bool isOpen() const;
    void rewriteHeader();

    uint16_t mAudioFormat = 0;
    uint16_t mChannels = 0;
    uint32_t mSampleRate = 0;
    uint32_t mByteRate = 0;
    uint16_t mBlockAlign = 0;
    uint16_t mBitsPerSample = 0;
    char mFilename[1024];
    FILE* mFile = nullptr;
    uint32_t mDataSize = 0;  // of the whole file, with the header
};

}  // namespace android
