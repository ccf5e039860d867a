// Text values.

#pragma once

#include <cstddef>
#include <string>

namespace android {

// A string of 8-bit characters, counted: a NUL may stand inside, where a reader of c_str() stops.
class String8 {
public:
    String8();
    ~String8();
    String8(const String8& other);
    String8& operator=(const String8& other);

    // Up to the NUL.
    void setTo(const char* text);
    // All of length, NULs too.
    void setTo(const char* text, size_t length);
    // From UTF-16 to UTF-8; the length counts code units. A surrogate without its other half
    // becomes U+FFFD.
    void setTo(const char16_t* text, size_t length);

    const char* c_str() const { return mText.c_str(); }
    size_t size() const { return mText.size(); }

private:
    std::string mText;
};

// A string as messages hold it.
class AString {
public:
    AString();
    explicit AString(const char* text);
    ~AString();
    AString(const AString& other);
    AString& operator=(const AString& other);

    const char* c_str() const { return mText.c_str(); }
    size_t size() const { return mText.size(); }

private:
    std::string mText;
};

}  // namespace android
