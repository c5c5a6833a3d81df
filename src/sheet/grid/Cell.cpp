#include "sheet/grid/Cell.h"

#include <atomic>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

namespace synthara::sheet {

static_assert(sizeof(Cell) <= 16, "a cell must stay small: sheets hold millions");

struct Cell::SharedText {
    explicit SharedText(std::string s) : text(std::move(s)) {}
    std::atomic<std::uint32_t> refs{1};
    const std::string text;
};

Cell::Cell(const Cell& other) noexcept : kind_(other.kind_) {
    if (kind_ == Kind::Text) {
        text_ = other.text_;
        text_->refs.fetch_add(1, std::memory_order_relaxed);
    } else {
        number_ = other.number_;
    }
}

Cell::Cell(Cell&& other) noexcept : kind_(other.kind_) {
    if (kind_ == Kind::Text) {
        text_ = other.text_;
        other.kind_ = Kind::Empty;
        other.number_ = 0;
    } else {
        number_ = other.number_;
    }
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
        Release();
        kind_ = other.kind_;
        if (kind_ == Kind::Text) {
            text_ = other.text_;
            other.kind_ = Kind::Empty;
            other.number_ = 0;
        } else {
            number_ = other.number_;
        }
    }
    return *this;
}

Cell::~Cell() {
    Release();
}

void Cell::Release() noexcept {
    if (kind_ != Kind::Text) return;
    if (text_->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) delete text_;
    kind_ = Kind::Empty;
    number_ = 0;
}

Cell Cell::FromText(std::string text) {
    Cell cell;
    // Typing nothing leaves the cell empty, so "blank" has one meaning.
    if (text.empty()) return cell;
    cell.text_ = new SharedText(std::move(text));
    cell.kind_ = Kind::Text;
    return cell;
}

Cell Cell::FromNumber(double value) {
    Cell cell;
    cell.kind_ = Kind::Number;
    cell.number_ = value;
    return cell;
}

std::string Cell::Text() const {
    switch (kind_) {
        case Kind::Text:
            return text_->text;
        case Kind::Number:
            return FormatNumber(number_);
        case Kind::Empty:
            break;
    }
    return {};
}

std::string_view Cell::TextView() const {
    return kind_ == Kind::Text ? std::string_view(text_->text) : std::string_view();
}

bool Cell::TryNumber(double& out) const {
    switch (kind_) {
        case Kind::Number:
            out = number_;
            return true;
        case Kind::Text:
            return ParseNumber(text_->text, out);
        case Kind::Empty:
            break;
    }
    return false;
}

bool operator==(const Cell& a, const Cell& b) {
    if (a.kind_ != b.kind_) return false;
    switch (a.kind_) {
        case Cell::Kind::Text:
            return a.text_ == b.text_ || a.text_->text == b.text_->text;
        case Cell::Kind::Number:
            return a.number_ == b.number_ || (std::isnan(a.number_) && std::isnan(b.number_));
        case Cell::Kind::Empty:
            break;
    }
    return true;
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
