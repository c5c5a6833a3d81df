#include "sheet/import/WorkbookTable.h"

#include <algorithm>
#include <fstream>

#include "sheet/grid/Cell.h"
#include "sheet/grid/Sheet.h"

namespace synthara::sheet {
std::size_t TextCharacters(std::string_view text) {
    // Every byte but UTF-8's continuation bytes starts a character.
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

WorkbookResult WorkbookFault(std::string message) {
    WorkbookResult result;
    result.message = std::move(message);
    return result;
}

namespace {
constexpr std::string_view CompoundSignature("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
}  // namespace

bool IsCompoundDocument(std::string_view head) {
    return head.substr(0, CompoundSignature.size()) == CompoundSignature;
}

std::string FileHead(const std::string& path) {
    std::string head(CompoundSignature.size(), '\0');
    std::ifstream in(path, std::ios::binary);
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    return head;
}

int PickSheet(const std::vector<std::string>& names, const SheetChoice& choice,
              std::string& fault) {
    if (names.empty()) {
        fault = "the workbook has no sheets";
        return -1;
    }
    if (!choice.name.empty()) {
        const auto found = std::find(names.begin(), names.end(), choice.name);
        if (found != names.end()) return static_cast<int>(found - names.begin());
        fault = "the workbook has no sheet named \"" + choice.name + "\"";
        return -1;
    }
    if (choice.number == 0) return 0;
    if (choice.number > 0 && static_cast<std::size_t>(choice.number) <= names.size())
        return choice.number - 1;
    fault = "the workbook has no sheet " + std::to_string(choice.number) + " (it has " +
            std::to_string(names.size()) + ")";
    return -1;
}

std::string CellName(std::size_t row, std::size_t column) {
    return AutoLetters(static_cast<int>(column)) + std::to_string(row);
}

std::string NumberText(double value) {
    return FormatNumber(value);
}

bool SheetCells::Fail(std::string message) {
    fault_ = std::move(message);
    return false;
}

bool SheetCells::TextFits(std::size_t row, std::size_t column, std::string_view text) {
    if (text.size() <= limits_.cellCharacters || TextCharacters(text) <= limits_.cellCharacters)
        return true;
    return Fail("cell " + CellName(row, column) + " holds more than " +
                std::to_string(limits_.cellCharacters) +
                " characters of text, more than the import takes");
}

bool SheetCells::Put(std::size_t row, std::size_t column, std::string text) {
    if (row < 1 || row > limits_.rows)
        return Fail("the sheet has a row " + std::to_string(row) + ", beyond the last row (" +
                    std::to_string(limits_.rows) + ")");
    if (column < 1 || column > limits_.columns)
        return Fail("row " + std::to_string(row) + " has a cell beyond the last column (" +
                    AutoLetters(static_cast<int>(limits_.columns)) + ")");
    if (row < lastRow_)
        return Fail("the workbook is damaged: row " + std::to_string(row) + " comes after row " +
                    std::to_string(lastRow_));
    if (text.empty()) return true;
    if (!TextFits(row, column, text)) return false;
    if (row != lastRow_) {
        table_.rows.emplace_back();
        table_.lines.push_back(static_cast<int>(row));
    }
    lastRow_ = row;
    auto& cells = table_.rows.back();
    if (column > cells.size()) {
        cells_ += column - cells.size();
        if (cells_ > limits_.tableCells)
            return Fail("the sheet holds more than " + std::to_string(limits_.tableCells) +
                        " cells, more than the import takes");
        cells.resize(column);
    }
    cells[column - 1] = std::move(text);
    return true;
}

bool SheetCells::Enough(std::size_t row) const {
    return rowLimit_ > 0 && table_.rows.size() >= rowLimit_ && row != lastRow_;
}

DelimitedTable SheetCells::Take() {
    table_.places = PlaceNames::Cells;
    return std::move(table_);
}

}  // namespace synthara::sheet
