#include "Platform/Linux/Windows/TextProperty.h"

#include <algorithm>

namespace morvel::x11 {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr std::string_view kUtf8Begin = "\x1B%G", kUtf8End = "\x1B%@";
constexpr char kEscape = '\x1B';

uint8_t byteAt(std::string_view text, size_t i) {
    return static_cast<uint8_t>(text[i]);
}

bool isControl(uint8_t byte) {
    return byte < 0x20 || byte == 0x7F;
}

// How many bytes the sequence that starts so has; 0 where none can start.
size_t sequenceLength(uint8_t lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

// The bounds of the second byte keep out overlong forms, surrogates and what lies beyond U+10FFFF.
bool isSecondByte(uint8_t lead, uint8_t byte) {
    switch (lead) {
        case 0xE0:
            return byte >= 0xA0 && byte <= 0xBF;
        case 0xED:
            return byte >= 0x80 && byte <= 0x9F;
        case 0xF0:
            return byte >= 0x90 && byte <= 0xBF;
        case 0xF4:
            return byte >= 0x80 && byte <= 0x8F;
        default:
            return byte >= 0x80 && byte <= 0xBF;
    }
}

// How many of the bytes from `i` on are a sequence's, as far as they go.
size_t validPrefix(std::string_view text, size_t i, size_t length) {
    const uint8_t lead = byteAt(text, i);
    size_t n = 1;
    while (n < length && i + n < text.size()) {
        const uint8_t byte = byteAt(text, i + n);
        if (n == 1 ? !isSecondByte(lead, byte) : (byte & 0xC0) != 0x80) break;
        ++n;
    }
    return n;
}

void appendLatin1(std::string& out, uint8_t byte) {
    if (isControl(byte)) {
        out += ' ';
    } else if (byte < 0x80) {
        out += static_cast<char>(byte);
    } else {
        out += static_cast<char>(0xC0 | byte >> 6);
        out += static_cast<char>(0x80 | (byte & 0x3F));
    }
}

// An escape sequence of ISO 2022: intermediate bytes 0x20…0x2F, then one final byte.
size_t escapeLength(std::string_view text, size_t i) {
    size_t n = 1;
    while (i + n < text.size() && byteAt(text, i + n) >= 0x20 && byteAt(text, i + n) <= 0x2F) ++n;
    return std::min(n + 1, text.size() - i);
}

// Whether the escape selects a set that reads as Latin-1: ASCII into the left half, Latin-1 into the right one.
bool selectsLatin1(std::string_view escape) {
    return escape == "\x1B(B" || escape == "\x1B-A";
}

}  // namespace

std::string cleanUtf8(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        const size_t length = sequenceLength(byteAt(text, i));
        const size_t valid = length == 0 ? 0 : validPrefix(text, i, length);
        if (length != 0 && valid == length) {
            if (length == 1 && isControl(byteAt(text, i)))
                out += ' ';
            else
                out.append(text.substr(i, length));
            i += length;
        } else if (length != 0 && i + valid == text.size()) {
            break;
        } else {
            out.append(kReplacement);
            i += std::max<size_t>(valid, 1);
        }
    }
    return out;
}

std::string latin1ToUtf8(std::string_view text) {
    std::string out;
    for (const char c : text.substr(0, text.find('\0'))) appendLatin1(out, static_cast<uint8_t>(c));
    return out;
}

std::string compoundTextToUtf8(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    std::string out;
    bool isReadable = true;  // whether the set that is selected is one that we read
    for (size_t i = 0; i < text.size();) {
        if (text.substr(i).starts_with(kUtf8Begin)) {
            i += kUtf8Begin.size();
            const size_t end = std::min(text.find(kUtf8End, i), text.size());
            out += cleanUtf8(text.substr(i, end - i));
            i = std::min(end + kUtf8End.size(), text.size());
        } else if (text[i] == kEscape) {
            const size_t length = escapeLength(text, i);
            isReadable = selectsLatin1(text.substr(i, length));
            if (!isReadable) out.append(kReplacement);
            i += length;
        } else {
            if (isReadable) appendLatin1(out, byteAt(text, i));
            ++i;
        }
    }
    return out;
}

std::vector<std::string> splitAtNul(std::string_view text) {
    std::vector<std::string> out;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\0'), text.size());
        out.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return out;
}

}  // namespace morvel::x11
