#include "platform/Strings.h"

#include <cstdint>

namespace android {
namespace {

bool isLeadSurrogate(uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isTrailSurrogate(uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// RFC 3629
void appendUtf8(std::string& text, uint32_t codePoint) {
    const auto append = [&text](uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    const auto appendTrail = [&](unsigned shift) { append(0x80 | (codePoint >> shift & 0x3F)); };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | codePoint >> 6);
        appendTrail(0);
    } else if (codePoint < 0x10000) {
        append(0xE0 | codePoint >> 12);
        appendTrail(6);
        appendTrail(0);
    } else {
        append(0xF0 | codePoint >> 18);
        appendTrail(12);
        appendTrail(6);
        appendTrail(0);
    }
}

}  // namespace

String8::String8() = default;
String8::~String8() = default;
String8::String8(const String8& other) = default;
String8& String8::operator=(const String8& other) = default;

AString::AString() = default;
AString::AString(const char* text) : mText(text) {}
AString::~AString() = default;
AString::AString(const AString& other) = default;
AString& AString::operator=(const AString& other) = default;

void String8::setTo(const char* text) {
    mText = text;
}

void String8::setTo(const char* text, size_t length) {
    mText.assign(text, length);
}

// RFC 2781 2.2
void String8::setTo(const char16_t* text, size_t length) {
    constexpr uint32_t kReplacement = 0xFFFD;
    mText.clear();
    mText.reserve(length);
    for (size_t i = 0; i < length; ++i) {
        uint32_t codePoint = text[i];
        if (isLeadSurrogate(codePoint) && i + 1 < length && isTrailSurrogate(text[i + 1])) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (text[++i] - 0xDC00u);
        } else if (isLeadSurrogate(codePoint) || isTrailSurrogate(codePoint)) {
            codePoint = kReplacement;
        }
        appendUtf8(mText, codePoint);
    }
}

}  // namespace android
