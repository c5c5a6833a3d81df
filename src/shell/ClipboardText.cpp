#include "shell/ClipboardText.h"

#include <algorithm>

namespace synthara::shell {

void ClipboardWriter::AddCell(std::string_view text) {
    if (rowStarted_) text_ += '\t';
    rowStarted_ = true;
    if (text.find_first_of("\t\r\n\"") == std::string_view::npos) {
        text_ += text;
        return;
    }
    text_ += '"';
    for (char c : text) {
        if (c == '"') text_ += '"';
        text_ += c;
    }
    text_ += '"';
}

void ClipboardWriter::EndRow() {
    text_ += '\n';
    rowStarted_ = false;
}

bool ClipboardTable::Parse(std::string_view text) {
    text_.clear();
    ends_.clear();
    rowStarts_.clear();
    cols_ = 0;
    // A cell's end is kept in 32 bits; larger texts are no clipboard of cells.
    if (text.size() >= UINT32_MAX) return false;
    text_.reserve(text.size());

    std::size_t i = 0;
    const std::size_t n = text.size();
    bool rowOpen = false;
    const auto endRow = [&] {
        cols_ = std::max(cols_, static_cast<int>(ends_.size() - rowStarts_.back()));
        rowOpen = false;
    };
    while (i < n) {
        if (!rowOpen) {
            rowStarts_.push_back(ends_.size());
            rowOpen = true;
        }
        if (ends_.size() >= kMaxCells) return false;
        // One cell: quoted when it starts with a quote, up to the closing
        // quote; otherwise up to the next tab or line break.
        if (text[i] == '"') {
            ++i;
            while (i < n) {
                if (text[i] == '"') {
                    if (i + 1 < n && text[i + 1] == '"') {
                        text_ += '"';
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                // A line break inside a cell is kept as a line feed.
                if (text[i] == '\r') {
                    text_ += '\n';
                    i += i + 1 < n && text[i + 1] == '\n' ? 2 : 1;
                    continue;
                }
                text_ += text[i++];
            }
            // Anything after the closing quote belongs to the cell as it stands.
            while (i < n && text[i] != '\t' && text[i] != '\n' && text[i] != '\r')
                text_ += text[i++];
        } else {
            const std::size_t end = std::min(text.find_first_of("\t\r\n", i), n);
            text_.append(text.substr(i, end - i));
            i = end;
        }
        ends_.push_back(static_cast<std::uint32_t>(text_.size()));
        if (i >= n) break;
        if (text[i] == '\t') {
            ++i;
            // A tab at the very end leaves one more, empty, cell.
            if (i == n) ends_.push_back(static_cast<std::uint32_t>(text_.size()));
            continue;
        }
        // A line break: "\r\n", "\r" or "\n".
        if (text[i] == '\r' && i + 1 < n && text[i + 1] == '\n') ++i;
        ++i;
        endRow();
    }
    if (rowOpen) endRow();
    if (ends_.size() > kMaxCells) return false;
    return true;
}

std::string_view ClipboardTable::At(int row, int col) const {
    if (row < 0 || row >= Rows() || col < 0) return {};
    const std::size_t first = rowStarts_[static_cast<std::size_t>(row)];
    const std::size_t last =
        row + 1 < Rows() ? rowStarts_[static_cast<std::size_t>(row) + 1] : ends_.size();
    const std::size_t cell = first + static_cast<std::size_t>(col);
    if (cell >= last) return {};
    const std::size_t begin = cell == 0 ? 0 : ends_[cell - 1];
    return std::string_view(text_).substr(begin, ends_[cell] - begin);
}

}  // namespace synthara::shell
