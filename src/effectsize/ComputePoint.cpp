// Differences computed by the user, analysed as they are: a risk
// difference, a rate difference or a generic estimate in raw units, each
// with confidence limits, a standard error or a variance.
#include <array>
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputePoint.h"
#include "effectsize/PointSupport.h"
#include "effectsize/Trail.h"

namespace synthara::effectsize {

namespace {

using sheet::DifferenceFamily;
using sheet::PointForm;
using sheet::RoleKind;

struct Family {
    std::string_view name;  // "Risk difference"
    std::string_view word;  // "RiskDiff", as the trail's names spell it
    int index;
};
// In the order of DifferenceFamily.
constexpr std::array<Family, 3> kFamilies{
    {{"Risk difference", "RiskDiff", Ix::RiskDifference},
     {"Rate difference", "RateDiff", Ix::RateDifference},
     {"Generic difference", "GenericDiff", Ix::PointEstimate}}};

void LimitsTrail(const Family& f, const EnteredPoint& m, std::string& t) {
    const std::string w(f.word);
    const std::string seLine = m.limits == LowerOnly   ? w + "SE = ({P} - {Lower}) / {Z}"
                               : m.limits == UpperOnly ? w + "SE = ({Upper} - {P}) / {Z}"
                                                       : w + "SE = (({Upper} - {Lower}) / 2) / {Z}";
    const Formula line{seLine};
    AddFormula(t, Cat({"Point estimate and confidence interval for ", f.name}), "A");
    AddFormula(t, f.name, "T");
    AddFormula(t, w + " = Given", "S");
    const Slots names{{"P", w}};
    line.AddSymbols(t, &names);
    const std::string pText = G3(m.point), lowerText = G3(m.lower), upperText = G3(m.upper),
                      zText = G3(m.critical);
    const Slots values{{"P", pText}, {"Lower", lowerText}, {"Upper", upperText}, {"Z", zText}};
    AddStep(t, {w, " = ", pText});
    line.AddNumbers(t, values, G3(m.se));
}

// The variance forms have always spoken of each family in its own words,
// slips included.
void GivenTrail(const Family& f, PointForm form, double point, double se, std::string& t) {
    const std::string w(f.word);
    const std::string pText = G3(point), seText = G3(se), varText = G3(se * se);
    if (form == PointForm::StdErr) {
        AddFormula(t, Cat({"Point estimate and standard error for ", f.name}), "A");
        AddFormula(t, w + " = Given", "S");
        AddFormula(t, w + "SE = Given", "S");
        AddStep(t, {w, " = ", pText});
        AddStep(t, {w, "SE = ", seText});
        return;
    }
    const bool risk = f.index == Ix::RiskDifference;
    AddFormula(t,
               Cat({"Point estimate and ", risk ? "variance" : "standard error", " for ", f.name}),
               "A");
    AddFormula(t, w + " = Given", "S");
    if (f.index == Ix::RateDifference) AddFormula(t, w + "Variance = Given", "S");
    AddFormula(t, Cat({risk ? w : w + "SE", " = Sqr(", w, "Variance)"}), "S");
    AddStep(t, {w, " = ", pText});
    AddStep(t, {w, "SE = Sqr(", varText, ") = ", seText});
}

}  // namespace

void ComputePoint(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context) {
    const auto* layout = std::get_if<sheet::PointLayout>(&format.layout);
    if (layout == nullptr) return;
    const FormatRoles roles(format, ws);
    EnteredPoint m;
    if (!ReadEnteredPoint(layout->form, CIKind::Raw, roles, ws, context.options, m)) return;
    const Family& f = kFamilies[static_cast<std::size_t>(layout->family)];
    ws.SetResult(f.index, m.value, m.se, m.se * m.se);
    if (!ws.BuildTrails) return;
    std::string& t = ws.EsFormula[static_cast<std::size_t>(f.index)];
    if (layout->form == PointForm::Limits)
        LimitsTrail(f, m, t);
    else
        GivenTrail(f, layout->form, m.value, m.se, t);
}

}  // namespace synthara::effectsize
