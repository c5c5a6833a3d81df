#include "effectsize/Options.h"

#include <charconv>
#include <cmath>
#include <string>

namespace synthara::effectsize {

namespace {

constexpr std::string_view kOutsideRange = "Option outside range";

}  // namespace

std::optional<ports::Box> CheckVals(const ComputeOptions& options) {
    if (!(options.FudgeFactor >= 1 && options.FudgeFactor <= 2))
        return ports::Box{std::string(kOutsideRange),
                          {"The allowed error must fall in range of 1 to 2    ",
                           "(recommended range is 1.01 to 1.20)"},
                          ports::Icon::Warning};
    // The words say three nines; the test has always allowed four.
    if (!(options.ImputedR >= -0.9999 && options.ImputedR <= 0.9999))
        return ports::Box{
            std::string(kOutsideRange),
            {"The assumed correlation    ", "must fall in the range of -0.999 to +0.999"},
            ports::Icon::Warning};
    return std::nullopt;
}

void OptionOverrides::ApplyTo(ComputeOptions& options) const {
    if (ImputedR) options.ImputedR = *ImputedR;
    if (FudgeFactor) options.FudgeFactor = *FudgeFactor;
    if (PoolVarianceMethod) options.PoolVarianceMethod = *PoolVarianceMethod;
    if (GVarianceMethod) options.GVarianceMethod = *GVarianceMethod;
}

std::optional<std::string> ReadOption(std::string_view nameValue, OptionOverrides& overrides) {
    const std::size_t equals = nameValue.find('=');
    const std::string_view name = nameValue.substr(0, equals);
    const std::string_view text =
        equals == std::string_view::npos ? std::string_view() : nameValue.substr(equals + 1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool number = !text.empty() && error == std::errc() && end == text.data() + text.size() &&
                        std::isfinite(value);
    const bool method = name == "PoolVarianceMethod" || name == "GVarianceMethod";
    if (name != "ImputedR" && name != "FudgeFactor" && !method)
        return "Unknown option \"" + std::string(name) +
               "\": give ImputedR, FudgeFactor, PoolVarianceMethod or GVarianceMethod";
    if (!number)
        return "The option " + std::string(name) + " needs a number, as " + std::string(name) +
               "=VALUE";
    if (method && value != 1 && value != 2)
        return "The option " + std::string(name) + " must be 1 or 2";
    if (name == "ImputedR") overrides.ImputedR = value;
    if (name == "FudgeFactor") overrides.FudgeFactor = value;
    if (name == "PoolVarianceMethod") overrides.PoolVarianceMethod = static_cast<int>(value);
    if (name == "GVarianceMethod") overrides.GVarianceMethod = static_cast<int>(value);
    return std::nullopt;
}

}  // namespace synthara::effectsize
