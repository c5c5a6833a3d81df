#pragma once
// One cell of the grid: empty, the text the user typed, or a computed number.
// Long text is shared and immutable, so copying a cell costs a reference, not
// a copy of its text.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace synthara::sheet {

// Eight bytes: a sheet can hold tens of millions of cells. A cell is a
// double; its other kinds live in the bit patterns of negative not-a-number
// values, which no number takes (a number that is not a number is stored in
// the one positive form). Text of up to kShortText bytes sits in the cell
// (most typed entries: counts, means, short codes); longer text is reached
// through one counted pointer.
class Cell {
  public:
    static constexpr std::size_t kShortText = 6;

    Cell() = default;
    Cell(const Cell& other) noexcept;
    Cell(Cell&& other) noexcept : bits_(other.bits_) { other.bits_ = kEmpty; }
    Cell& operator=(const Cell& other) noexcept;
    Cell& operator=(Cell&& other) noexcept;
    ~Cell() {
        if (IsShared()) Release();
    }
    static Cell FromText(std::string_view text);
    static Cell FromNumber(double value);
    // Makes the cell the number, in place.
    void AssignNumber(double value) noexcept;

    bool IsEmpty() const { return bits_ == kEmpty; }
    bool IsNumber() const { return (bits_ >> 48) < kTagEmpty; }
    bool IsText() const { return (bits_ >> 48) > kTagEmpty; }

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
    // The top sixteen bits of a cell that is not a number: empty, shared
    // text, then short text of 1 to kShortText bytes.
    static constexpr std::uint64_t kTagEmpty = 0xFFF8, kTagShared = 0xFFF9, kTagShort = 0xFFFA;
    static constexpr std::uint64_t kEmpty = kTagEmpty << 48;
    static constexpr std::uint64_t kPayload = (std::uint64_t{1} << 48) - 1;

    bool IsShared() const { return (bits_ >> 48) == kTagShared; }
    void Release() noexcept;
    SharedText* Shared() const;

    std::uint64_t bits_ = kEmpty;
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
