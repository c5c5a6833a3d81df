#pragma once
// One cell of the grid: empty, the text the user typed, or a computed number.
// Text is shared and immutable, so copying a long formula trail from one index
// to its siblings costs a reference, not a copy.
#include <cstddef>
#include <string>
#include <string_view>

namespace synthara::sheet {

// Sixteen bytes: a sheet can hold tens of millions of cells. A number sits in
// the cell; so does text of up to kShortText bytes (most typed entries: counts,
// means, short names); longer text is reached through one counted pointer.
class Cell {
  public:
    static constexpr std::size_t kShortText = 14;

    Cell() = default;
    Cell(const Cell& other) noexcept;
    Cell(Cell&& other) noexcept;
    Cell& operator=(const Cell& other) noexcept;
    Cell& operator=(Cell&& other) noexcept;
    ~Cell();
    static Cell FromText(std::string_view text);
    static Cell FromNumber(double value);
    // Makes the cell the number, in place.
    void AssignNumber(double value) noexcept;

    bool IsEmpty() const { return kind_ == Kind::Empty; }
    bool IsNumber() const { return kind_ == Kind::Number; }
    bool IsText() const { return kind_ == Kind::Shared || kind_ == Kind::Short; }

    // The cell as text: typed text as it stands, a number in the shortest form
    // that reads back to the same double, "" when empty.
    std::string Text() const;
    // Typed text without a copy; empty for number and empty cells.
    std::string_view TextView() const;
    // The stored number; for a text cell, its conversion when it is numeric.
    // nullopt-like: returns false when the cell holds no number.
    bool TryNumber(double& out) const;
    double Number() const;  // 0 unless IsNumber()

    friend bool operator==(const Cell& a, const Cell& b);

  private:
    struct SharedText;  // the text with its reference count
    enum class Kind : unsigned char { Empty, Number, Shared, Short };
    void Release() noexcept;
    void CopyFrom(const Cell& other) noexcept;
    SharedText* Shared() const;

    // The number, the shared text's pointer or the short text's bytes.
    alignas(8) char bytes_[kShortText] = {};
    unsigned char shortLength_ = 0;
    Kind kind_ = Kind::Empty;
};

// Shortest round-trip text of a double ("0.1", "1e-05", "123").
std::string FormatNumber(double value);

// Strict parse of a number in the program's own fixed format, as it writes
// settings, widths and computed cells: optional blanks around, sign, digits
// with one decimal point, optional exponent. Nothing else may follow.
bool ParseNumber(std::string_view text, double& out);

// The separators of numbers as the user types them, from the user's locale.
// Each is text: some locales group digits with a character of several bytes
// (a narrow no-break space). The default is the C locale's reading.
struct NumberSeparators {
    std::string decimal = ".";
    std::string group = ",";  // "" when the locale does not group digits
    friend bool operator==(const NumberSeparators&, const NumberSeparators&) = default;
};

// Strict parse of a number the user typed: optional blanks around, sign,
// digits, groups of exactly three digits after each group separator in the
// integer part only, one decimal separator, optional exponent. A group
// separator is never taken for a decimal one: with the default separators
// "1,200" is 1200 and "1,5" is not a number.
bool ParseTypedNumber(std::string_view text, const NumberSeparators& separators, double& out);

}  // namespace synthara::sheet
