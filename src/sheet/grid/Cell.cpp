#include "sheet/grid/Cell.h"

#include <atomic>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <system_error>

namespace synthara::sheet {

static_assert(sizeof(Cell) == 8, "a cell must stay small: sheets hold millions");
static_assert(std::endian::native == std::endian::little,
              "short text is read from the low bytes of a cell");

struct Cell::SharedText {
    explicit SharedText(std::string_view s) : text(s) {}
    std::atomic<std::uint32_t> refs{1};
    const std::string text;
};

Cell::SharedText* Cell::Shared() const {
    return reinterpret_cast<SharedText*>(static_cast<std::uintptr_t>(bits_ & kPayload));
}

Cell::Cell(const Cell& other) noexcept : bits_(other.bits_) {
    if (IsShared()) Shared()->refs.fetch_add(1, std::memory_order_relaxed);
}

Cell& Cell::operator=(const Cell& other) noexcept {
    if (this != &other) {
        Cell copy(other);
        *this = std::move(copy);
    }
    return *this;
}

Cell& Cell::operator=(Cell&& other) noexcept {
    if (this != &other) {
        if (IsShared()) Release();
        bits_ = other.bits_;
        other.bits_ = kEmpty;
    }
    return *this;
}

void Cell::Release() noexcept {
    SharedText* text = Shared();
    if (text->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) delete text;
    bits_ = kEmpty;
}

Cell Cell::FromText(std::string_view text) {
    Cell cell;
    // Typing nothing leaves the cell empty, so "blank" has one meaning.
    if (text.empty()) return cell;
    if (text.size() <= kShortText) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data(), text.size());
        cell.bits_ = ((kTagShort + text.size() - 1) << 48) | bytes;
        return cell;
    }
    const auto address = reinterpret_cast<std::uintptr_t>(new SharedText(text));
    cell.bits_ = (kTagShared << 48) | static_cast<std::uint64_t>(address);
    return cell;
}

Cell Cell::FromNumber(double value) {
    Cell cell;
    cell.AssignNumber(value);
    return cell;
}

void Cell::AssignNumber(double value) noexcept {
    if (IsShared()) Release();
    // Every not-a-number is kept as the one positive form, so that the
    // negative ones are free for the other kinds.
    if (std::isnan(value)) value = std::numeric_limits<double>::quiet_NaN();
    bits_ = std::bit_cast<std::uint64_t>(value);
}

double Cell::Number() const {
    return IsNumber() ? std::bit_cast<double>(bits_) : 0;
}

std::string Cell::Text() const {
    if (IsNumber()) return FormatNumber(Number());
    return std::string(TextView());
}

std::string_view Cell::TextView() const {
    const std::uint64_t tag = bits_ >> 48;
    if (tag == kTagShared) return Shared()->text;
    if (tag >= kTagShort)
        return std::string_view(reinterpret_cast<const char*>(&bits_), tag - kTagShort + 1);
    return {};
}

bool Cell::TryNumber(double& out) const {
    if (IsNumber()) {
        out = Number();
        return true;
    }
    return IsText() && ParseNumber(TextView(), out);
}

bool operator==(const Cell& a, const Cell& b) {
    if (a.IsText() && b.IsText()) return a.bits_ == b.bits_ || a.TextView() == b.TextView();
    if (a.IsNumber() && b.IsNumber()) {
        const double x = a.Number(), y = b.Number();
        return x == y || (std::isnan(x) && std::isnan(y));
    }
    return a.bits_ == b.bits_;
}

std::string FormatNumber(double value) {
    // A negative zero would show as "-0" in a cell or a trail; it is zero.
    if (value == 0) value = 0;
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    if (result.ec != std::errc()) return {};
    return std::string(buffer, result.ptr);
}

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The shape of a number found by the scanner; positions index the trimmed text.
struct Shape {
    bool negative = false;
    std::size_t mantissaBegin = 0;                   // after the sign
    std::size_t separator = std::string_view::npos;  // the decimal point
    std::size_t exponent = std::string_view::npos;   // the 'e' or 'E'
};

// Checks the grammar: [sign] digits [sep digits] [e [sign] digits], with at
// least one mantissa digit and at least one exponent digit.
bool Scan(std::string_view s, Shape& shape) {
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) {
        shape.negative = s[i] == '-';
        ++i;
    }
    shape.mantissaBegin = i;
    bool anyDigit = false;
    bool separator = false;
    for (; i < s.size(); ++i) {
        const char c = s[i];
        if (IsDigit(c)) {
            anyDigit = true;
        } else if (c == '.' && !separator) {
            separator = true;
            shape.separator = i;
        } else {
            break;
        }
    }
    if (!anyDigit) return false;
    if (i == s.size()) return true;
    if (s[i] != 'e' && s[i] != 'E') return false;
    shape.exponent = i++;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    if (i == s.size()) return false;
    for (; i < s.size(); ++i) {
        if (!IsDigit(s[i])) return false;
    }
    return true;
}

// Rough decimal order of magnitude, enough to tell an overflow from an
// underflow when the converter reports a number out of range.
long Magnitude(std::string_view s, const Shape& shape) {
    const std::size_t end = shape.exponent == std::string_view::npos ? s.size() : shape.exponent;
    long order = 0;
    bool seenNonZero = false;
    long leadingFractionZeros = 0;
    bool inFraction = false;
    for (std::size_t i = shape.mantissaBegin; i < end; ++i) {
        if (i == shape.separator) {
            inFraction = true;
            continue;
        }
        if (s[i] != '0') seenNonZero = true;
        if (!inFraction && seenNonZero) ++order;
        if (inFraction && !seenNonZero) ++leadingFractionZeros;
    }
    if (order == 0) order = -leadingFractionZeros;
    if (shape.exponent != std::string_view::npos) {
        std::size_t i = shape.exponent + 1;
        const bool negative = s[i] == '-';
        if (s[i] == '+' || s[i] == '-') ++i;
        long exponent = 0;
        for (; i < s.size() && exponent < 100000; ++i)
            exponent = exponent * 10 + (s[i] - '0');
        order += negative ? -exponent : exponent;
    }
    return order;
}

std::string_view Trim(std::string_view text) {
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && IsBlank(text[begin]))
        ++begin;
    while (end > begin && IsBlank(text[end - 1]))
        --end;
    return text.substr(begin, end - begin);
}

}  // namespace

bool ParseNumber(std::string_view text, double& out) {
    const std::string_view s = Trim(text);
    Shape shape;
    if (!Scan(s, shape)) return false;

    // The converter wants no sign.
    const std::string_view digits = s.substr(shape.mantissaBegin);

    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                                        std::chars_format::general);
    if (result.ptr != digits.data() + digits.size()) return false;
    if (result.ec == std::errc::result_out_of_range) {
        // Too small to hold is zero; too large is not a number a cell can hold.
        if (Magnitude(s, shape) > 0) return false;
        value = 0;
    } else if (result.ec != std::errc()) {
        return false;
    }
    out = shape.negative ? -value : value;
    return true;
}

// The typed text is rewritten in the fixed format (groups dropped, the
// decimal separator made a point) and read by the fixed parse, so both agree
// on everything but the separators.
bool ParseTypedNumber(std::string_view text, const NumberSeparators& separators, double& out) {
    const std::string_view s = Trim(text);
    const std::string_view decimal =
        separators.decimal.empty() ? std::string_view(".") : std::string_view(separators.decimal);
    const std::string_view group = separators.group;
    const bool grouping = !group.empty() && group != decimal;
    // Most cells hold plain digits with a point, which the fixed parse reads
    // as they stand, without a copy.
    if (decimal == "." && (!grouping || s.find(group) == std::string_view::npos))
        return ParseNumber(s, out);

    std::string fixed;
    fixed.reserve(s.size());
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) fixed += s[i++];
    // The integer part: the first group holds one to three digits, every
    // later group exactly three.
    std::size_t run = 0;
    bool grouped = false;
    while (i < s.size()) {
        if (IsDigit(s[i])) {
            fixed += s[i++];
            ++run;
        } else if (grouping && s.substr(i).starts_with(group)) {
            if (run == 0 || run > 3 || (grouped && run != 3)) return false;
            grouped = true;
            run = 0;
            i += group.size();
        } else {
            break;
        }
    }
    if (grouped && run != 3) return false;
    if (s.substr(i).starts_with(decimal)) {
        fixed += '.';
        i += decimal.size();
        while (i < s.size() && IsDigit(s[i]))
            fixed += s[i++];
    }
    // Only an exponent may follow; a point here is not this locale's decimal.
    if (i < s.size() && s[i] != 'e' && s[i] != 'E') return false;
    fixed.append(s.substr(i));
    return ParseNumber(fixed, out);
}

}  // namespace synthara::sheet
