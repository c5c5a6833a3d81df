#include "sheet/import/DelimitedText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <new>
#include <sstream>

#include "sheet/files/Project.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {
namespace {

unsigned char Byte(std::string_view text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

// Length of the valid UTF-8 sequence at i, 0 when the bytes there are not one.
std::size_t SequenceLength(std::string_view text, std::size_t i) {
    const unsigned char b = Byte(text, i);
    if (b == 0) return 0;
    if (b < 0x80) return 1;
    std::size_t len = 0;
    unsigned char lo = 0x80, hi = 0xBF;  // allowed range of the second byte
    if (b >= 0xC2 && b <= 0xDF) {
        len = 2;
    } else if (b >= 0xE0 && b <= 0xEF) {
        len = 3;
        if (b == 0xE0) lo = 0xA0;  // overlong
        if (b == 0xED) hi = 0x9F;  // surrogates
    } else if (b >= 0xF0 && b <= 0xF4) {
        len = 4;
        if (b == 0xF0) lo = 0x90;  // overlong
        if (b == 0xF4) hi = 0x8F;  // beyond U+10FFFF
    } else {
        return 0;
    }
    if (i + len > text.size()) return 0;
    const unsigned char second = Byte(text, i + 1);
    if (second < lo || second > hi) return 0;
    for (std::size_t k = 2; k < len; ++k) {
        const unsigned char c = Byte(text, i + k);
        if (c < 0x80 || c > 0xBF) return 0;
    }
    return len;
}

class Parser {
  public:
    Parser(std::string_view bytes, char delimiter) : text_(bytes), delim_(delimiter) {}

    DelimitedResult Run() {
        DelimitedResult result;
        if (text_.substr(0, 3) == "\xEF\xBB\xBF") pos_ = 3;
        std::vector<std::string> row;
        while (pos_ < text_.size()) {
            const int line = line_;
            row.clear();
            if (!ReadRow(row, result)) {
                result.table = {};
                return result;
            }
            // A blank line (or one of empty fields only) is no row: it is
            // passed over here, so that any number of them costs nothing.
            if (row.empty()) continue;
            result.table.lines.push_back(line);
            result.table.rows.push_back(std::move(row));
        }
        result.ok = true;
        return result;
    }

  private:
    bool AtLineEnd() const { return text_[pos_] == '\n' || text_[pos_] == '\r'; }

    void SkipLineEnd() {
        if (text_[pos_] == '\r' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '\n') ++pos_;
        ++pos_;
        ++line_;
    }

    // Empty fields are only counted: they are stored when text follows them
    // on the row, so a line of nothing but delimiters costs nothing.
    bool ReadRow(std::vector<std::string>& fields, DelimitedResult& result) {
        for (std::size_t column = 1;; ++column) {
            const int fieldLine = line_;
            const int shown =
                static_cast<int>(std::min<std::size_t>(column, MaxDelimitedFields + 1));
            std::string field;
            if (pos_ < text_.size() && text_[pos_] == '"') {
                if (!ReadQuoted(field)) return Fail(result, fieldLine, shown, Unclosed());
            }
            ReadPlain(field);
            if (const auto bad = FindInvalidText(field); bad != std::string_view::npos) {
                const auto breaks = std::count(
                    field.begin(), field.begin() + static_cast<std::ptrdiff_t>(bad), '\n');
                const char* why =
                    field[bad] == '\0' ? "not valid text: it holds a NUL byte" : "not valid text";
                return Fail(result, fieldLine + static_cast<int>(breaks), shown, why);
            }
            if (!field.empty()) {
                if (column > MaxDelimitedFields)
                    return Fail(
                        result, fieldLine, shown,
                        "the row has more than " + std::to_string(MaxDelimitedFields) + " fields");
                fields.resize(column - 1);
                fields.push_back(std::move(field));
            }
            if (pos_ < text_.size() && text_[pos_] == delim_) {
                ++pos_;
                continue;
            }
            if (pos_ < text_.size()) SkipLineEnd();
            return true;
        }
    }

    // Reads from an opening quote up to its closing quote; false when the text ends first.
    bool ReadQuoted(std::string& field) {
        ++pos_;
        while (pos_ < text_.size()) {
            const char c = text_[pos_];
            if (c == '"') {
                if (pos_ + 1 < text_.size() && text_[pos_ + 1] == '"') {
                    field += '"';
                    pos_ += 2;
                    continue;
                }
                ++pos_;
                return true;
            }
            if (c == '\n' || (c == '\r' && (pos_ + 1 >= text_.size() || text_[pos_ + 1] != '\n')))
                ++line_;
            field += c;
            ++pos_;
        }
        return false;
    }

    // Unquoted text up to the delimiter or the line's end. After a closing
    // quote, whatever stands before the delimiter is kept as it is typed.
    void ReadPlain(std::string& field) {
        const std::size_t start = pos_;
        while (pos_ < text_.size() && text_[pos_] != delim_ && !AtLineEnd())
            ++pos_;
        field.append(text_.substr(start, pos_ - start));
    }

    static const char* Unclosed() { return "the quote that opens this field is never closed"; }

    static bool Fail(DelimitedResult& result, int line, int column, std::string message) {
        result.ok = false;
        result.line = line;
        result.column = column;
        result.message = std::move(message);
        return false;
    }

    std::string_view text_;
    char delim_;
    std::size_t pos_ = 0;
    int line_ = 1;
};

}  // namespace

std::string PlaceText(PlaceNames names, int line, int column) {
    if (line <= 0) return {};
    if (names == PlaceNames::Cells)
        return column > 0 ? "cell " + AutoLetters(column) + std::to_string(line)
                          : "row " + std::to_string(line);
    std::string text = "line " + std::to_string(line);
    if (column > 0) text += ", column " + std::to_string(column);
    return text;
}

std::string DelimitedResult::Describe(std::string_view fileName) const {
    std::ostringstream out;
    out << fileName;
    if (line > 0) out << ", " << PlaceText(PlaceNames::Lines, line, column);
    out << ": " << message;
    return out.str();
}

char DelimiterForPath(std::string_view path) {
    const auto dot = path.rfind('.');
    const auto slash = path.find_last_of("/\\");
    if (dot == std::string_view::npos || (slash != std::string_view::npos && dot < slash))
        return '\t';
    std::string ext(path.substr(dot + 1));
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext == "csv" ? ',' : '\t';
}

std::size_t FindInvalidText(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t len = SequenceLength(text, i);
        if (len == 0) return i;
        i += len;
    }
    return std::string_view::npos;
}

DelimitedResult ReadDelimitedText(std::string_view bytes, char delimiter) {
    return Parser(bytes, delimiter).Run();
}

DelimitedResult ReadDelimitedFile(const std::string& path) {
    DelimitedResult result;
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) {
        result.message = "it is a folder, not a file";
        return result;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        result.message = "the file cannot be opened";
        return result;
    }
    try {
        // Read in the file's own size, so the text is never copied while it grows.
        std::string bytes;
        const auto size = std::filesystem::file_size(path, ec);
        if (!ec) bytes.reserve(static_cast<std::size_t>(size));
        std::array<char, 1 << 16> chunk;
        while (in.read(chunk.data(), chunk.size()) || in.gcount() > 0)
            bytes.append(chunk.data(), static_cast<std::size_t>(in.gcount()));
        if (in.bad()) {
            result.message = "the file cannot be read";
            return result;
        }
        return ReadDelimitedText(bytes, DelimiterForPath(path));
    } catch (const std::bad_alloc&) {
        result = {};
        result.message = NotEnoughMemoryToRead;
        return result;
    }
}

}  // namespace synthara::sheet
