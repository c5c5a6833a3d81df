#include "cli/JsonWriter.h"

#include <array>
#include <charconv>
#include <cmath>
#include <ostream>

#include <nlohmann/json.hpp>

namespace synthara::cli {
namespace {

// Text is handed to the stream in pieces of about this size.
constexpr std::size_t kChunk = std::size_t{1} << 16;

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

struct Sequence {
    std::size_t length = 0;
    bool valid = false;
};

// The UTF-8 sequence that starts at `at`, whose lead byte is not ASCII: its
// length when it is well formed. Otherwise the bytes that one U+FFFD stands
// for: a lead byte that starts nothing, or the bytes before the one that
// breaks the sequence (which is then read afresh), or what is left of the text.
Sequence Utf8Sequence(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    std::size_t length = 0;
    // The second byte's range rules out overlong forms, surrogates and code
    // points beyond U+10FFFF.
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0) low = 0xA0;
        if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;
    } else {
        return {1, false};
    }
    for (std::size_t k = 1; k < length; ++k) {
        if (at + k >= text.size()) return {text.size() - at, false};
        const unsigned char next = byte(at + k);
        if (next < (k == 1 ? low : 0x80) || next > (k == 1 ? high : 0xBF)) return {k, false};
    }
    return {length, true};
}

void AppendEscaped(std::string& out, unsigned char c) {
    switch (c) {
        case '\b':
            out += "\\b";
            return;
        case '\t':
            out += "\\t";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\f':
            out += "\\f";
            return;
        case '\r':
            out += "\\r";
            return;
        case '"':
            out += "\\\"";
            return;
        case '\\':
            out += "\\\\";
            return;
        default:
            constexpr std::string_view hex = "0123456789abcdef";
            out += "\\u00";
            out += hex[c >> 4];
            out += hex[c & 0xF];
    }
}

}  // namespace

JsonWriter::JsonWriter(std::ostream& out) : out_(out) {
    buffer_.reserve(kChunk + kChunk / 4);
}

JsonWriter::~JsonWriter() {
    Flush();
}

void JsonWriter::Open(char bracket) {
    Separate();
    buffer_ += bracket;
    empty_.push_back(true);
}

void JsonWriter::BeginObject() {
    Open('{');
}

void JsonWriter::EndObject() {
    Close('}');
}

void JsonWriter::BeginArray() {
    Open('[');
}

void JsonWriter::EndArray() {
    Close(']');
}

JsonWriter& JsonWriter::Key(std::string_view key) {
    Separate();
    Quoted(key);
    buffer_ += ':';
    afterKey_ = true;
    return *this;
}

void JsonWriter::String(std::string_view text) {
    Separate();
    Quoted(text);
}

void JsonWriter::Number(double value) {
    if (!std::isfinite(value)) {
        Null();
        return;
    }
    Separate();
    // The digits of the dump the output has always had: its shortest form
    // differs now and then from std::to_chars's in the last digit.
    std::array<char, 64> text{};
    char* end = nlohmann::detail::to_chars(text.data(), text.data() + text.size(), value);
    buffer_.append(text.data(), end);
}

void JsonWriter::Number(const std::optional<double>& value) {
    if (value)
        Number(*value);
    else
        Null();
}

void JsonWriter::Integer(std::int64_t value) {
    Separate();
    std::array<char, 24> text{};
    char* end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    buffer_.append(text.data(), end);
}

void JsonWriter::Bool(bool value) {
    Separate();
    buffer_ += value ? "true" : "false";
}

void JsonWriter::Null() {
    Separate();
    buffer_ += "null";
}

void JsonWriter::Flush() {
    if (buffer_.empty()) return;
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    buffer_.clear();
}

void JsonWriter::Separate() {
    if (buffer_.size() >= kChunk) Flush();
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (empty_.empty()) return;
    if (!empty_.back()) buffer_ += ',';
    empty_.back() = false;
}

void JsonWriter::Close(char bracket) {
    buffer_ += bracket;
    empty_.pop_back();
    if (empty_.empty()) {
        buffer_ += '\n';
        Flush();
    }
}

void JsonWriter::Quoted(std::string_view text) {
    buffer_ += '"';
    std::size_t plain = 0;  // where the bytes not yet copied begin
    for (std::size_t i = 0; i < text.size();) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c >= 0x20 && c != '"' && c != '\\' && c < 0x80) {
            ++i;
            continue;
        }
        if (c >= 0x80) {
            const Sequence sequence = Utf8Sequence(text, i);
            if (sequence.valid) {
                i += sequence.length;
                continue;
            }
            buffer_.append(text.substr(plain, i - plain));
            buffer_ += kReplacement;
            i += sequence.length;
        } else {
            buffer_.append(text.substr(plain, i - plain));
            AppendEscaped(buffer_, c);
            ++i;
        }
        plain = i;
    }
    buffer_.append(text.substr(plain));
    buffer_ += '"';
}

}  // namespace synthara::cli
