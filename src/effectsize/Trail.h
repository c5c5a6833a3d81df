#pragma once
// Error texts and formula trails, built exactly as the user reads them.
#include <array>
#include <cstddef>
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
// Each line as a step.
void AddSteps(std::string& trail, std::initializer_list<std::string_view> lines);
// A step made of pieces: AddFormula(trail, Cat(parts), "S") without the temporary.
void AddStep(std::string& trail, std::initializer_list<std::string_view> parts);

// A slot of a formula and the text it shows.
struct Slot {
    std::string_view name;
    std::string_view text;
};

// The texts of a formula's slots; a slot not given shows its own name.
// `more` is searched after these, so lines can share the cells' slots.
class Slots {
  public:
    Slots(std::initializer_list<Slot> slots, const Slots* more = nullptr);
    std::string_view Find(std::string_view name) const;

  private:
    static constexpr std::size_t kCapacity = 12;
    std::array<Slot, kCapacity> slots_{};
    std::size_t count_ = 0;
    const Slots* more_ = nullptr;
};

// A formula written once, as a template whose slots are in braces:
// "LogOddsRatio = Log(({A} * {D}) / ({B} * {C}))". Its symbolic line shows
// the slots' names, its numeric line their printed values and the result,
// so the two lines of a trail can never tell different formulas.
class Formula {
  public:
    // `numbersName`, when given, replaces the name left of " = " on the
    // numeric line, where the program has always spelt it differently.
    constexpr explicit Formula(std::string_view text, std::string_view numbersName = {})
        : text_(text), numbersName_(numbersName) {}

    // "LogOddsRatio = Log((A * D) / (B * C))" as a step; `names` gives the
    // slots other names (a column's label for a role's slot).
    void AddSymbols(std::string& trail, const Slots* names = nullptr) const;
    // "LogOddsRatio = Log((12 * 34) / (56 * 78)) = -1.234" as a step; no
    // " = result" when `result` is empty.
    void AddNumbers(std::string& trail, const Slots& values, std::string_view result = {}) const;

  private:
    void Render(std::string& trail, std::string_view text, const Slots* slots) const;

    std::string_view text_;
    std::string_view numbersName_;
};

// A formula of a trail and the result its numeric line ends in.
struct FormulaLine {
    const Formula& formula;
    std::string_view result;
};
// Each formula's symbolic line, then each one's numeric line.
void AddFormulaLines(std::string& trail, std::initializer_list<FormulaLine> lines,
                     const Slots& values);

// Counts: a whole number as "0", otherwise with one decimal ("0.0").
std::string G1(double value);
// Statistics: always three decimals ("0.000").
std::string G3(double value);
// Text of a value with a decimal format of n digits after the point (n 0..9).
std::string FormatDecimals(double value, int digits);

}  // namespace synthara::effectsize
