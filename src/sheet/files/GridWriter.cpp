// Writing a grid as the JSON text of a project file's member.
#include <charconv>
#include <cmath>

#include "sheet/files/GridArchive.h"

namespace synthara::sheet {

namespace {

bool ValidUtf8(std::string_view s) {
    std::size_t i = 0;
    const std::size_t n = s.size();
    while (i < n) {
        const auto c = static_cast<unsigned char>(s[i]);
        if (c < 0x80) {
            ++i;
            continue;
        }
        int extra = 0;
        std::uint32_t code = 0;
        if ((c & 0xE0) == 0xC0) {
            extra = 1;
            code = c & 0x1Fu;
        } else if ((c & 0xF0) == 0xE0) {
            extra = 2;
            code = c & 0x0Fu;
        } else if ((c & 0xF8) == 0xF0) {
            extra = 3;
            code = c & 0x07u;
        } else {
            return false;
        }
        if (i + static_cast<std::size_t>(extra) >= n) return false;
        for (int k = 1; k <= extra; ++k) {
            const auto d = static_cast<unsigned char>(s[i + static_cast<std::size_t>(k)]);
            if ((d & 0xC0) != 0x80) return false;
            code = (code << 6) | (d & 0x3Fu);
        }
        // Overlong forms, surrogates and code points past U+10FFFF are not text.
        static constexpr std::uint32_t kMin[] = {0, 0x80, 0x800, 0x10000};
        if (code < kMin[extra] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
            return false;
        i += static_cast<std::size_t>(extra) + 1;
    }
    return true;
}

void AppendString(std::string& out, std::string_view s) {
    static constexpr char kHex[] = "0123456789abcdef";
    out += '"';
    for (char ch : s) {
        const auto c = static_cast<unsigned char>(ch);
        switch (ch) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (c < 0x20) {
                    out += "\\u00";
                    out += kHex[c >> 4];
                    out += kHex[c & 0xF];
                } else {
                    out += ch;
                }
        }
    }
    out += '"';
}

void AppendInt(std::string& out, long long value) {
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

// A number is written so that it can only be read back as a floating-point
// number ("12.0", "-0.0", "1e-05"), the shortest text that gives the same
// double. JSON has no infinities or NaN: those go in a small object.
void AppendNumber(std::string& out, double value) {
    if (std::isnan(value)) {
        out += R"({"number":"nan"})";
        return;
    }
    if (std::isinf(value)) {
        out += value > 0 ? R"({"number":"inf"})" : R"({"number":"-inf"})";
        return;
    }
    char buffer[40];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    const std::string_view text(buffer, static_cast<std::size_t>(result.ptr - buffer));
    out += text;
    if (text.find_first_of(".eE") == std::string_view::npos) out += ".0";
}

// Text that isn't UTF-8 (imported from an old code page, say) can't be a JSON
// string; its bytes are kept in hexadecimal instead.
void AppendText(std::string& out, std::string_view text) {
    if (ValidUtf8(text)) {
        AppendString(out, text);
        return;
    }
    static constexpr char kHex[] = "0123456789abcdef";
    out += R"({"bytes":")";
    for (char ch : text) {
        const auto c = static_cast<unsigned char>(ch);
        out += kHex[c >> 4];
        out += kHex[c & 0xF];
    }
    out += "\"}";
}

// Keys and number formats are the program's own words, always plain text; a
// byte that isn't UTF-8 could only come from a fault and is written as "?".
void AppendWord(std::string& out, const std::string& word) {
    if (ValidUtf8(word)) {
        AppendString(out, word);
        return;
    }
    std::string plain(word);
    for (char& c : plain) {
        if (static_cast<unsigned char>(c) >= 0x80) c = '?';
    }
    AppendString(out, plain);
}

void AppendCell(std::string& out, const Cell& cell) {
    if (cell.IsNumber())
        AppendNumber(out, cell.Number());
    else
        AppendText(out, cell.TextView());
}

const char* AlignmentName(Alignment a) {
    switch (a) {
        case Alignment::Left:
            return "left";
        case Alignment::Center:
            return "center";
        case Alignment::Right:
            return "right";
        case Alignment::General:
            break;
    }
    return "general";
}

// Runs of equal values down the rows: [[count, value], ...].
template <typename Get>
void AppendRowRuns(std::string& out, int rows, Get get) {
    out += '[';
    int r = 0;
    bool first = true;
    while (r < rows) {
        const long long value = get(r);
        int end = r + 1;
        while (end < rows && get(end) == value)
            ++end;
        if (!first) out += ',';
        first = false;
        out += '[';
        AppendInt(out, end - r);
        out += ',';
        AppendInt(out, value);
        out += ']';
        r = end;
    }
    out += ']';
}

// Runs of consecutive non-empty cells: [[firstRow, cell, cell, ...], ...].
void AppendCells(std::string& out, const Column& column, int col, int fixedRows,
                 const DerivedCells& derived) {
    out += '[';
    std::size_t next = 0;  // the row after the last one written
    bool open = false;
    column.cells.ForEachSet([&](std::size_t row, const Cell& cell) {
        const auto r = static_cast<int>(row);
        if (r >= fixedRows && derived.Has(r, col)) return;
        if (!open || row != next) {
            if (open) out += "],";
            out += '[';
            AppendInt(out, static_cast<int>(row));
            open = true;
        }
        out += ',';
        AppendCell(out, cell);
        next = row + 1;
    });
    if (open) out += ']';
    out += ']';
}

}  // namespace

std::string EncodeGrid(const Grid& grid, const DerivedCells& derived) {
    std::string out;
    out.reserve(1 << 16);
    out += R"({"format":)";
    AppendString(out, GridFormatMarker);
    out += R"(,"version":)";
    AppendInt(out, GridFormatVersion);
    out += R"(,"rows":)";
    AppendInt(out, grid.Rows());
    out += R"(,"cols":)";
    AppendInt(out, grid.Cols());
    out += R"(,"fixedRows":)";
    AppendInt(out, grid.FixedRows());
    out += R"(,"fixedCols":)";
    AppendInt(out, grid.FixedCols());
    out += R"(,"rowHeights":)";
    AppendRowRuns(out, grid.Rows(), [&](int r) { return grid.RowHeight(r); });
    out += R"(,"rowHidden":)";
    AppendRowRuns(out, grid.Rows(), [&](int r) { return grid.RowHidden(r) ? 1 : 0; });
    out += R"(,"columns":[)";
    for (int c = 0; c < grid.Cols(); ++c) {
        const Column& column = grid.Col(c);
        if (c > 0) out += ',';
        out += '{';
        if (!column.key.empty()) {
            out += R"("key":)";
            AppendWord(out, column.key);
            out += ',';
        }
        out += R"("width":)";
        AppendInt(out, column.width);
        out += R"(,"hidden":)";
        out += column.hidden ? "true" : "false";
        out += R"(,"align":")";
        out += AlignmentName(column.alignment);
        out += '"';
        if (!column.numberFormat.empty()) {
            out += R"(,"numberFormat":)";
            AppendWord(out, column.numberFormat);
        }
        out += R"(,"cells":)";
        AppendCells(out, column, c, grid.FixedRows(), derived);
        out += '}';
        out += '\n';  // one column a line keeps the member readable by eye
    }
    out += "]}\n";
    return out;
}

}  // namespace synthara::sheet
