// Reading a project file's member back into a grid. The text is read as a
// stream of events, not built into a tree first: a large project's member
// holds millions of values, and each goes straight into its cell. The shape
// (rows, columns, fixed rows and columns) comes before the rows and columns
// it sizes, as the writer puts it; entries this version doesn't know are
// passed over, so that a later version may add some.
#include <istream>
#include <limits>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "sheet/files/GridArchive.h"

namespace synthara::sheet {

namespace {

using nlohmann::json;

constexpr long long kMaxExtent = 1 << 24;  // widths and heights, in twips

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool ParseAlignment(const std::string& word, Alignment& out) {
    if (word == "general") {
        out = Alignment::General;
    } else if (word == "left") {
        out = Alignment::Left;
    } else if (word == "center") {
        out = Alignment::Center;
    } else if (word == "right") {
        out = Alignment::Right;
    } else {
        return false;
    }
    return true;
}

class GridReader final : public json::json_sax_t {
  public:
    GridReader(Grid& out, const ReadLimits& limits) : out_(out), limits_(limits) {}

    bool SyntaxError() const { return syntaxError_; }
    bool Done() const { return done_; }
    const std::string& Why() const { return why_; }

    bool null() override { return Scalar(Value::Other); }
    bool boolean(bool value) override {
        boolean_ = value;
        return Scalar(Value::Boolean);
    }
    bool number_integer(number_integer_t value) override {
        whole_ = value;
        number_ = static_cast<double>(value);
        return Scalar(Value::Whole);
    }
    bool number_unsigned(number_unsigned_t value) override {
        constexpr auto kMax = static_cast<number_unsigned_t>(std::numeric_limits<long long>::max());
        whole_ =
            value > kMax ? std::numeric_limits<long long>::max() : static_cast<long long>(value);
        number_ = static_cast<double>(value);
        return Scalar(Value::Whole);
    }
    bool number_float(number_float_t value, const string_t&) override {
        number_ = value;
        return Scalar(Value::Float);
    }
    bool string(string_t& value) override {
        text_ = &value;
        return Scalar(Value::Text);
    }
    bool binary(binary_t&) override { return Scalar(Value::Other); }
    bool key(string_t& name) override {
        key_ = std::move(name);
        return true;
    }
    bool start_object(std::size_t) override { return Open(true); }
    bool end_object() override { return Close(); }
    bool start_array(std::size_t) override { return Open(false); }
    bool end_array() override { return Close(); }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        syntaxError_ = true;
        return false;
    }

  private:
    enum class Where { Root, RowRuns, RowRun, Columns, Column, Cells, Run, CellObject, Skip };
    enum class Value { Whole, Float, Text, Boolean, Other };

    bool Fail(std::string why) {
        if (why_.empty()) why_ = std::move(why);
        return false;
    }
    Where Top() const { return stack_.back(); }

    // ---- containers

    bool Open(bool object) {
        if (stack_.empty()) {
            if (!object) return Fail("the contents are not a sheet");
            stack_.push_back(Where::Root);
            return true;
        }
        switch (Top()) {
            case Where::Skip:
                ++skipDepth_;
                return true;
            case Where::Root:
                return OpenInRoot(object);
            case Where::RowRuns:
                if (object) return Fail(RunsName() + " are malformed");
                runValues_.clear();
                stack_.push_back(Where::RowRun);
                return true;
            case Where::Columns:
                if (!object) return Fail("a column is not a record");
                if (column_ >= cols_) return Fail("the columns don't match the number of columns");
                // A column is made when its record comes, not when the count
                // is read: a count the file doesn't back costs nothing.
                out_.SetCols(column_ + 1);
                columnSeen_ = {};
                stack_.push_back(Where::Column);
                return true;
            case Where::Column:
                if (key_ == "cells" && !object) {
                    if (columnSeen_.cells) return TwiceInColumn();
                    columnSeen_.cells = true;
                    stack_.push_back(Where::Cells);
                    return true;
                }
                if (IsColumnEntry(key_)) return Fail("a column's \"" + key_ + "\" is malformed");
                return Skip();
            case Where::Cells:
                if (object) return Fail("a run of cells is malformed");
                runStart_ = -1;
                runCount_ = 0;
                stack_.push_back(Where::Run);
                return true;
            case Where::Run:
                if (!object || runStart_ < 0) return Fail("a run of cells is malformed");
                special_ = Cell();
                specialSeen_ = false;
                stack_.push_back(Where::CellObject);
                return true;
            case Where::RowRun:
            case Where::CellObject:
                break;
        }
        return Fail("the contents are malformed");
    }

    bool OpenInRoot(bool object) {
        const bool heights = key_ == "rowHeights";
        if (!object && (heights || key_ == "rowHidden")) {
            if (!Allocate()) return false;
            bool& seen = heights ? seen_.heights : seen_.hidden;
            if (seen) return Twice();
            seen = true;
            runsOfHeights_ = heights;
            rowPos_ = 0;
            stack_.push_back(Where::RowRuns);
            return true;
        }
        if (!object && key_ == "columns") {
            if (!Allocate()) return false;
            if (seen_.columns) return Twice();
            seen_.columns = true;
            column_ = 0;
            stack_.push_back(Where::Columns);
            return true;
        }
        if (IsRootEntry(key_)) return Fail("the entry \"" + key_ + "\" is malformed");
        return Skip();
    }

    bool Twice() { return Fail("the entry \"" + key_ + "\" appears twice"); }
    bool TwiceInColumn() { return Fail("a column's \"" + key_ + "\" appears twice"); }

    bool Skip() {
        skipDepth_ = 1;
        stack_.push_back(Where::Skip);
        return true;
    }

    bool Close() {
        const Where where = Top();
        if (where == Where::Skip) {
            if (--skipDepth_ == 0) stack_.pop_back();
            return true;
        }
        stack_.pop_back();
        switch (where) {
            case Where::Root:
                return FinishRoot();
            case Where::RowRuns:
                if (rowPos_ != out_.Rows()) return Fail(RunsName() + " don't match the rows");
                return true;
            case Where::RowRun:
                return ApplyRowRun();
            case Where::Columns:
                if (column_ != cols_) return Fail("the columns don't match the number of columns");
                return true;
            case Where::Column:
                return FinishColumn();
            case Where::Cells:
                return true;
            case Where::Run:
                if (runStart_ < 0 || runCount_ == 0) return Fail("a run of cells is malformed");
                return true;
            case Where::CellObject:
                if (!specialSeen_) return Fail("a cell holds neither text nor a number");
                return PlaceCell(std::move(special_));
            case Where::Skip:
                break;
        }
        return true;
    }

    // ---- values

    bool Scalar(Value value) {
        if (stack_.empty()) return Fail("the contents are not a sheet");
        switch (Top()) {
            case Where::Skip:
                return true;
            case Where::Root:
                return RootValue(value);
            case Where::RowRun:
                if (value != Value::Whole || runValues_.size() == 2)
                    return Fail(RunsName() + " are malformed");
                runValues_.push_back(whole_);
                return true;
            case Where::Column:
                return ColumnValue(value);
            case Where::Run:
                return RunValue(value);
            case Where::CellObject:
                return SpecialValue(value);
            case Where::RowRuns:
            case Where::Columns:
            case Where::Cells:
                break;
        }
        return Fail("the contents are malformed");
    }

    bool RootValue(Value value) {
        if (key_ == "format") {
            if (value != Value::Text || *text_ != GridFormatMarker)
                return Fail("the contents are not a sheet");
            if (seen_.format) return Twice();
            seen_.format = true;
            return true;
        }
        struct Whole {
            const char* name;
            long long* target;
            bool* seen;
        };
        const Whole wholes[] = {{"version", &version_, &seen_.version},
                                {"rows", &rows_, &seen_.rows},
                                {"cols", &cols_, &seen_.cols},
                                {"fixedRows", &fixedRows_, &seen_.fixedRows},
                                {"fixedCols", &fixedCols_, &seen_.fixedCols}};
        for (const Whole& w : wholes) {
            if (key_ != w.name) continue;
            if (value != Value::Whole)
                return Fail("the entry \"" + key_ + "\" is not a whole number");
            if (*w.seen) return Twice();
            if (allocated_) return Fail("the entry \"" + key_ + "\" comes too late");
            *w.target = whole_;
            *w.seen = true;
            if (w.target == &version_ && (version_ < 1 || version_ > GridFormatVersion))
                return Fail(version_ < 1
                                ? "the version is out of range"
                                : "the file was written by a later version of the program");
            return true;
        }
        if (IsRootEntry(key_)) return Fail("the entry \"" + key_ + "\" is malformed");
        return true;
    }

    bool ColumnValue(Value value) {
        Column& column = out_.Col(column_);
        if (key_ == "key" || key_ == "numberFormat" || key_ == "align") {
            if (value != Value::Text) return Fail("a column's \"" + key_ + "\" is not text");
            bool& seen = key_ == "key"            ? columnSeen_.key
                         : key_ == "numberFormat" ? columnSeen_.numberFormat
                                                  : columnSeen_.align;
            if (seen) return TwiceInColumn();
            seen = true;
            if (key_ == "key") {
                column.key = std::move(*text_);
            } else if (key_ == "numberFormat") {
                column.numberFormat = std::move(*text_);
            } else if (!ParseAlignment(*text_, column.alignment)) {
                return Fail("a column's alignment is unknown");
            }
            return true;
        }
        if (key_ == "width") {
            if (columnSeen_.width) return TwiceInColumn();
            if (value != Value::Whole || whole_ < 0 || whole_ > kMaxExtent)
                return Fail("a column width is out of range");
            column.width = static_cast<int>(whole_);
            columnSeen_.width = true;
            return true;
        }
        if (key_ == "hidden") {
            if (columnSeen_.hidden) return TwiceInColumn();
            if (value != Value::Boolean) return Fail("a column's visibility is not true or false");
            column.hidden = boolean_;
            columnSeen_.hidden = true;
            return true;
        }
        if (IsColumnEntry(key_)) return Fail("a column's \"" + key_ + "\" is malformed");
        return true;
    }

    bool RunValue(Value value) {
        if (runStart_ < 0) {
            if (value != Value::Whole) return Fail("a run of cells is malformed");
            if (whole_ < 0 || whole_ >= out_.Rows()) return Fail("a cell lies outside the sheet");
            runStart_ = whole_;
            return true;
        }
        switch (value) {
            case Value::Whole:
            case Value::Float:
                return PlaceCell(Cell::FromNumber(number_));
            case Value::Text: {
                if (text_->empty()) return Fail("a cell holds an empty text");
                // The same text down a column (a format name on every row) is shared.
                if (runCount_ > 0) {
                    const Cell& above =
                        out_.At(static_cast<int>(runStart_ + runCount_ - 1), column_);
                    if (above.IsText() && above.TextView() == *text_) return PlaceCell(Cell(above));
                }
                return PlaceCell(Cell::FromText(std::move(*text_)));
            }
            case Value::Boolean:
            case Value::Other:
                break;
        }
        return Fail("a cell holds neither text nor a number");
    }

    // {"number":"nan"|"inf"|"-inf"} or {"bytes":"<hex>"}.
    bool SpecialValue(Value value) {
        if (specialSeen_ || value != Value::Text)
            return Fail("a cell holds neither text nor a number");
        specialSeen_ = true;
        const std::string& word = *text_;
        if (key_ == "number") {
            if (word == "nan") {
                special_ = Cell::FromNumber(std::numeric_limits<double>::quiet_NaN());
            } else if (word == "inf" || word == "-inf") {
                const double inf = std::numeric_limits<double>::infinity();
                special_ = Cell::FromNumber(word == "inf" ? inf : -inf);
            } else {
                return Fail("a cell holds neither text nor a number");
            }
            return true;
        }
        if (key_ != "bytes" || word.empty() || word.size() % 2 != 0)
            return Fail("a cell's bytes are malformed");
        std::string bytes(word.size() / 2, '\0');
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const int hi = HexDigit(word[2 * i]);
            const int lo = HexDigit(word[2 * i + 1]);
            if (hi < 0 || lo < 0) return Fail("a cell's bytes are malformed");
            bytes[i] = static_cast<char>(hi * 16 + lo);
        }
        special_ = Cell::FromText(std::move(bytes));
        return true;
    }

    // ---- structure

    bool PlaceCell(Cell cell) {
        const long long row = runStart_ + runCount_;
        if (row >= out_.Rows()) return Fail("a cell lies outside the sheet");
        out_.Set(static_cast<int>(row), column_, std::move(cell));
        ++runCount_;
        return true;
    }

    bool ApplyRowRun() {
        if (runValues_.size() != 2) return Fail(RunsName() + " are malformed");
        const long long count = runValues_[0];
        const long long value = runValues_[1];
        if (count <= 0 || count > out_.Rows() - rowPos_)
            return Fail(RunsName() + " don't match the rows");
        if (runsOfHeights_ ? (value < 0 || value > kMaxExtent) : (value != 0 && value != 1))
            return Fail(runsOfHeights_ ? "a row height is out of range"
                                       : "a row's visibility is not 0 or 1");
        for (long long k = 0; k < count; ++k) {
            const int row = static_cast<int>(rowPos_ + k);
            if (runsOfHeights_)
                out_.SetRowHeight(row, static_cast<int>(value));
            else
                out_.SetRowHidden(row, value == 1);
        }
        rowPos_ += count;
        return true;
    }

    bool FinishColumn() {
        const char* missing = !columnSeen_.width    ? "width"
                              : !columnSeen_.hidden ? "hidden"
                              : !columnSeen_.align  ? "align"
                              : !columnSeen_.cells  ? "cells"
                                                    : nullptr;
        if (missing != nullptr)
            return Fail(std::string("a column's \"") + missing + "\" is missing");
        ++column_;
        return true;
    }

    bool FinishRoot() {
        if (!Allocate()) return false;
        const char* missing = !seen_.heights   ? "rowHeights"
                              : !seen_.hidden  ? "rowHidden"
                              : !seen_.columns ? "columns"
                                               : nullptr;
        if (missing != nullptr)
            return Fail(std::string("the entry \"") + missing + "\" is missing");
        // Keys were written straight into the columns: let the grid see them.
        for (int c = 0; c < out_.Cols(); ++c) {
            std::string key = out_.Col(c).key;
            out_.SetColKey(c, std::move(key));
        }
        done_ = true;
        return true;
    }

    // Sizes the grid once the shape is known and within the limits.
    bool Allocate() {
        if (allocated_) return true;
        if (!seen_.format) return Fail("the contents are not a sheet");
        const std::pair<bool, const char*> required[] = {{seen_.version, "version"},
                                                         {seen_.rows, "rows"},
                                                         {seen_.cols, "cols"},
                                                         {seen_.fixedRows, "fixedRows"},
                                                         {seen_.fixedCols, "fixedCols"}};
        for (const auto& [seen, name] : required) {
            if (!seen) return Fail(std::string("the entry \"") + name + "\" is missing");
        }
        if (rows_ < 0 || rows_ > limits_.maxRows) return Fail("the number of rows is out of range");
        if (cols_ < 0 || cols_ > limits_.maxCols)
            return Fail("the number of columns is out of range");
        const std::uint64_t pageRows = PagedColumn<Cell>::kPageRows;
        const std::uint64_t pages = (static_cast<std::uint64_t>(rows_) + pageRows - 1) / pageRows;
        if (pages * static_cast<std::uint64_t>(cols_) > limits_.maxPages)
            return Fail("the sheet is larger than the program can hold");
        if (fixedRows_ < 0 || fixedRows_ > rows_) return Fail("the fixed rows are out of range");
        if (fixedCols_ < 0 || fixedCols_ > cols_) return Fail("the fixed columns are out of range");
        out_.Clear();
        out_.SetDefaultRowHeight(250);
        out_.SetRows(static_cast<int>(rows_));
        out_.SetFixedRows(static_cast<int>(fixedRows_));
        out_.SetFixedCols(static_cast<int>(fixedCols_));
        allocated_ = true;
        return true;
    }

    std::string RunsName() const { return runsOfHeights_ ? "the row heights" : "the hidden rows"; }

    static bool IsRootEntry(const std::string& k) {
        return k == "format" || k == "version" || k == "rows" || k == "cols" || k == "fixedRows" ||
               k == "fixedCols" || k == "rowHeights" || k == "rowHidden" || k == "columns";
    }
    static bool IsColumnEntry(const std::string& k) {
        return k == "key" || k == "width" || k == "hidden" || k == "align" || k == "numberFormat" ||
               k == "cells";
    }

    Grid& out_;
    const ReadLimits& limits_;
    std::vector<Where> stack_;
    std::string key_;
    std::string why_;
    bool syntaxError_ = false;
    bool done_ = false;
    bool allocated_ = false;

    // The value in hand.
    long long whole_ = 0;
    double number_ = 0;
    bool boolean_ = false;
    string_t* text_ = nullptr;

    struct {
        bool format = false, version = false, rows = false, cols = false, fixedRows = false,
             fixedCols = false, heights = false, hidden = false, columns = false;
    } seen_;
    struct ColumnSeen {
        bool key = false, width = false, hidden = false, align = false, numberFormat = false,
             cells = false;
    } columnSeen_;
    long long version_ = 0, rows_ = 0, cols_ = 0, fixedRows_ = 0, fixedCols_ = 0;

    int skipDepth_ = 0;
    bool runsOfHeights_ = false;
    long long rowPos_ = 0;
    std::vector<long long> runValues_;
    int column_ = 0;
    long long runStart_ = -1;
    long long runCount_ = 0;
    Cell special_;
    bool specialSeen_ = false;
};

}  // namespace

namespace {

template <typename Input>
FileResult Decode(Input&& input, Grid& out, const ReadLimits& limits) {
    GridReader reader(out, limits);
    bool parsed = false;
    try {
        // Strict: the text must end where the grid ends.
        parsed = json::sax_parse(std::forward<Input>(input), &reader);
    } catch (const std::bad_alloc&) {
        return {false, NotEnoughMemoryToRead};
    } catch (const std::exception&) {
        return {false, "The file's contents are damaged."};
    }
    if (parsed && reader.Done()) return {true, {}};
    if (reader.Done())
        return {false, "The file is not a readable sheet: there is more after its end."};
    if (reader.SyntaxError() || reader.Why().empty())
        return {false, "The file's contents are damaged."};
    return {false, "The file is not a readable sheet: " + reader.Why() + "."};
}

}  // namespace

FileResult DecodeGrid(std::string_view text, Grid& out, const ReadLimits& limits) {
    return Decode(text, out, limits);
}

FileResult DecodeGrid(std::istream& text, Grid& out, const ReadLimits& limits) {
    return Decode(text, out, limits);
}

}  // namespace synthara::sheet
