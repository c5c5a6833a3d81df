#include "effectsize/Trail.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace synthara::effectsize {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

constexpr std::int64_t kPow10[] = {1,      10,      100,      1000,      10000,
                                   100000, 1000000, 10000000, 100000000, 1000000000};

// Beyond this a scaled value no longer holds every integer exactly.
constexpr double kExactLimit = 9007199254740992.0;  // 2^53

// Writes `units` (the value times 10^Digits, already rounded, not negative)
// with Digits decimals, and a minus sign unless the printed value is zero.
template <int Digits>
std::string PrintScaled(std::uint64_t units, bool negative) {
    constexpr auto scale = static_cast<std::uint64_t>(kPow10[Digits]);
    char buf[40];
    char* p = buf;
    if (negative && units != 0) *p++ = '-';
    p = std::to_chars(p, buf + sizeof buf, units / scale).ptr;
    if constexpr (Digits > 0) {
        *p++ = '.';
        std::uint64_t frac = units % scale;
        for (int i = Digits - 1; i >= 0; --i) {
            p[i] = static_cast<char>('0' + frac % 10);
            frac /= 10;
        }
        p += Digits;
    }
    return std::string(buf, p);
}

std::string PrintScaled(std::uint64_t units, int digits, bool negative) {
    switch (digits) {
        case 0:
            return PrintScaled<0>(units, negative);
        case 1:
            return PrintScaled<1>(units, negative);
        case 2:
            return PrintScaled<2>(units, negative);
        case 3:
            return PrintScaled<3>(units, negative);
        case 4:
            return PrintScaled<4>(units, negative);
        case 5:
            return PrintScaled<5>(units, negative);
        case 6:
            return PrintScaled<6>(units, negative);
        case 7:
            return PrintScaled<7>(units, negative);
        case 8:
            return PrintScaled<8>(units, negative);
        default:
            return PrintScaled<9>(units, negative);
    }
}

// Rounds half away from zero on the value's 15-significant-digit decimal
// form, so that a typed 1.005 prints as 1.01 although its binary value lies
// just below. Used only where the scaled value sits on a tie.
std::uint64_t RoundDecimal(double magnitude, int digits) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.14e", magnitude);
    // buf holds "d.dddddddddddddde+XX": 15 digits and a decimal exponent.
    char mantissa[15];
    mantissa[0] = buf[0];
    for (int i = 0; i < 14; ++i)
        mantissa[i + 1] = buf[i + 2];
    const int exponent = std::atoi(buf + 17);
    const int keep = exponent + 1 + digits;  // digits left of the rounding point
    if (keep < 0) return 0;
    std::uint64_t units = 0;
    for (int i = 0; i < keep && i < 15; ++i)
        units = units * 10 + static_cast<std::uint64_t>(mantissa[i] - '0');
    for (int i = 15; i < keep; ++i)
        units *= 10;
    if (keep < 15 && mantissa[keep] >= '5') ++units;
    return units;
}

}  // namespace

void AddErr(std::string& errors, std::string_view message) {
    errors.reserve(errors.size() + 3 + message.size());
    errors += "\r  ";
    errors += message;
}

std::vector<std::string> SplitErrors(std::string_view errors) {
    std::vector<std::string> messages;
    std::size_t pos = 0;
    while (pos < errors.size()) {
        if (errors[pos] == '\r') ++pos;
        if (errors.substr(pos, 2) == "  ") pos += 2;
        const std::size_t end = errors.find('\r', pos);
        const std::size_t stop = end == std::string_view::npos ? errors.size() : end;
        messages.emplace_back(errors.substr(pos, stop - pos));
        pos = stop;
    }
    return messages;
}

void AddFormula(std::string& trail, std::string_view line, std::string_view section) {
    if (section == "A") {
        trail.clear();
        trail += "Starting with";
        trail += kLineEnd;
        trail += line;
    } else if (section == "T") {
        if (!trail.empty()) {
            trail += kLineEnd;
            trail += kLineEnd;
        }
        trail += line;
    } else if (section == "S") {
        trail += kLineEnd;
        trail += line;
    }
}

void AddSteps(std::string& trail, std::initializer_list<std::string_view> lines) {
    for (std::string_view line : lines)
        AddFormula(trail, line, "S");
}

// Numbers in trails are rounded half away from zero, as a reader rounding by
// hand would, and a value that rounds to zero prints without a sign.
std::string FormatDecimals(double value, int digits) {
    if (digits < 0) digits = 0;
    if (digits > 9) digits = 9;
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    const bool negative = std::signbit(value);
    const double magnitude = std::fabs(value);
    const double scaled = magnitude * static_cast<double>(kPow10[digits]);
    if (scaled >= kExactLimit) {
        char buf[400];
        const int n = std::snprintf(buf, sizeof buf, "%.*f", digits, magnitude);
        std::string text(buf, static_cast<std::size_t>(n));
        return negative ? "-" + text : text;
    }
    const double whole = std::floor(scaled);
    const double fraction = scaled - whole;
    std::uint64_t units;
    if (std::fabs(fraction - 0.5) < 1e-6)
        units = RoundDecimal(magnitude, digits);
    else
        units = static_cast<std::uint64_t>(whole) + (fraction > 0.5 ? 1u : 0u);
    return PrintScaled(units, digits, negative);
}

std::string Cat(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (std::string_view part : parts)
        size += part.size();
    std::string line;
    line.reserve(size);
    for (std::string_view part : parts)
        line += part;
    return line;
}

void AddStep(std::string& trail, std::initializer_list<std::string_view> parts) {
    std::size_t size = trail.size() + kLineEnd.size();
    for (std::string_view part : parts)
        size += part.size();
    if (trail.capacity() < size) trail.reserve(std::max(size, 2 * trail.capacity()));
    trail += kLineEnd;
    for (std::string_view part : parts)
        trail += part;
}

Slots::Slots(std::initializer_list<Slot> slots, const Slots* more) : more_(more) {
    for (const Slot& slot : slots)
        if (count_ < kCapacity) slots_[count_++] = slot;
}

std::string_view Slots::Find(std::string_view name) const {
    for (std::size_t i = 0; i < count_; ++i)
        if (slots_[i].name == name) return slots_[i].text;
    return more_ != nullptr ? more_->Find(name) : name;
}

void Formula::Render(std::string& trail, std::string_view text, const Slots* slots) const {
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t open = text.find('{', pos);
        const std::size_t close = open == std::string_view::npos ? open : text.find('}', open);
        if (close == std::string_view::npos) {
            trail += text.substr(pos);
            return;
        }
        trail += text.substr(pos, open - pos);
        const std::string_view name = text.substr(open + 1, close - open - 1);
        trail += slots != nullptr ? slots->Find(name) : name;
        pos = close + 1;
    }
}

void Formula::AddSymbols(std::string& trail, const Slots* names) const {
    trail += kLineEnd;
    Render(trail, text_, names);
}

void Formula::AddNumbers(std::string& trail, const Slots& values, std::string_view result) const {
    std::string_view text = text_;
    trail += kLineEnd;
    const std::size_t equals = text.find(" = ");
    if (!numbersName_.empty() && equals != std::string_view::npos) {
        trail += numbersName_;
        text.remove_prefix(equals);
    }
    Render(trail, text, &values);
    if (!result.empty()) {
        trail += " = ";
        trail += result;
    }
}

void AddFormulaLines(std::string& trail, std::initializer_list<FormulaLine> lines,
                     const Slots& values) {
    for (const FormulaLine& line : lines)
        line.formula.AddSymbols(trail);
    for (const FormulaLine& line : lines)
        line.formula.AddNumbers(trail, values, line.result);
}

std::string G1(double value) {
    return FormatDecimals(value, value == std::floor(value) ? 0 : 1);
}

std::string G3(double value) {
    return FormatDecimals(value, 3);
}

}  // namespace synthara::effectsize
