#pragma once
// One cell of the grid: empty, the text the user typed, or a computed number.
// Text is shared and immutable, so copying a long formula trail from one index
// to its siblings costs a reference, not a copy.
#include <memory>
#include <string>
#include <string_view>

namespace synthara::sheet {

class Cell {
public:
    Cell() = default;
    static Cell FromText(std::string text);
    static Cell FromNumber(double value);

    bool IsEmpty() const { return kind_ == Kind::Empty; }
    bool IsNumber() const { return kind_ == Kind::Number; }
    bool IsText() const { return kind_ == Kind::Text; }

    // The cell as text: typed text as it stands, a number in the shortest form
    // that reads back to the same double, "" when empty.
    std::string Text() const;
    // Typed text without a copy; empty for number and empty cells.
    std::string_view TextView() const;
    // The stored number; for a text cell, its conversion when it is numeric.
    // nullopt-like: returns false when the cell holds no number.
    bool TryNumber(double& out) const;
    double Number() const { return number_; }  // only meaningful when IsNumber()

    friend bool operator==(const Cell& a, const Cell& b);

private:
    enum class Kind : unsigned char { Empty, Text, Number };
    Kind kind_ = Kind::Empty;
    double number_ = 0;
    std::shared_ptr<const std::string> text_;
};

// Shortest round-trip text of a double ("0.1", "1e-05", "123").
std::string FormatNumber(double value);

// Strict parse of a cell's text as a number: optional blanks around, sign,
// digits with one decimal point (a comma is taken as the decimal separator
// when there is no point), optional exponent. Nothing else may follow.
bool ParseNumber(std::string_view text, double& out);

}  // namespace synthara::sheet
