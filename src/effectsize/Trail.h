#pragma once
// Error texts and formula trails, built exactly as the user reads them.
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace synthara::effectsize {

// errors += CR + two blanks + message, whether or not errors was empty.
void AddErr(std::string& errors, std::string_view message);
// The messages of an error text one by one (CR and the two blanks taken off).
std::vector<std::string> SplitErrors(std::string_view errors);

// section "A" opens a trail, "T" adds a title after a blank line, "S" adds a
// step; any other letter adds nothing. Lines end in CR LF.
void AddFormula(std::string& trail, std::string_view line, std::string_view section);

// One line of a trail from its pieces, allocated once.
std::string Cat(std::initializer_list<std::string_view> parts);
// A step made of pieces: AddFormula(trail, Cat(parts), "S") without the temporary.
void AddStep(std::string& trail, std::initializer_list<std::string_view> parts);

// Counts: a whole number as "0", otherwise with one decimal ("0.0").
std::string G1(double value);
// Statistics: always three decimals ("0.000").
std::string G3(double value);
// Text of a value with a decimal format of n digits after the point (n 0..9).
std::string FormatDecimals(double value, int digits);

}  // namespace synthara::effectsize
