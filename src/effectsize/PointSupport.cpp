#include "effectsize/PointSupport.h"

#include <cmath>

#include "effectsize/Trail.h"
#include "stats/Distributions.h"
#include "stats/Formulas.h"

namespace synthara::effectsize {

double CriticalZ(double level) {
    return std::fabs(stats::NormalQuantile((1 - level) / 2, 1));
}

double CriticalT(double level, double df) {
    return std::fabs(stats::VBDTIN((1 - level) / 2, df));
}

double SEFromLimits(CILimits limits, double point, double lower, double upper, double critical) {
    switch (limits) {
        case LowerOnly:
            return std::fabs(point - lower) / critical;
        case UpperOnly:
            return std::fabs(point - upper) / critical;
        default:
            return std::fabs((upper - lower) / 2) / critical;
    }
}

double GivenSE(sheet::PointForm form, const FormatRoles& roles) {
    return form == sheet::PointForm::Variance ? std::sqrt(roles.Value(sheet::RoleKind::Variance))
                                              : roles.Value(sheet::RoleKind::StdErr);
}

void GivenPointTrail(const GivenPoint& g, std::string& t) {
    static constexpr Formula kFromLower{"PointSE = Abs({Point} - {Lower}) / {t-value}"};
    static constexpr Formula kFromUpper{"PointSE = Abs({Point} - {Upper}) / {t-value}"};
    static constexpr Formula kFromBoth{"PointSE = Abs(({Upper} - {Lower}) / 2) / {t-value}"};
    static constexpr Formula kFromVariance{"PointSE = Sqr({Variance})"};
    const bool limits = g.form == sheet::PointForm::Limits;
    AddFormula(t,
               limits                               ? "Point estimate and confidence limits"
               : g.form == sheet::PointForm::StdErr ? "Point estimate and Standard error"
                                                    : "Point estimate and Variance",
               "A");
    AddFormula(t, "Point estimate", "T");
    AddFormula(t, "Point = Given", "S");
    const Formula* line = g.limits == LowerOnly   ? &kFromLower
                          : g.limits == UpperOnly ? &kFromUpper
                                                  : &kFromBoth;
    if (!limits) line = g.form == sheet::PointForm::Variance ? &kFromVariance : nullptr;
    if (limits) {
        AddFormula(t, "Lower = Given", "S");
        AddFormula(t, "Upper = Given", "S");
    }
    if (line != nullptr)
        line->AddSymbols(t);
    else
        AddFormula(t, "PointSE = Given", "S");
    const std::string pointText = G3(g.point), lowerText = G3(g.lower), upperText = G3(g.upper),
                      tText = G3(g.critical), varianceText = G3(g.se * g.se), seText = G3(g.se);
    const Slots values{{"Point", pointText},
                       {"Lower", lowerText},
                       {"Upper", upperText},
                       {"t-value", tText},
                       {"Variance", varianceText}};
    AddStep(t, {"Point = ", pointText});
    if (line != nullptr)
        line->AddNumbers(t, values, seText);
    else
        AddStep(t, {"PointSE = ", seText});
}

void DiscardResults(WorkingSet& ws) {
    for (int i = 1; i <= IndexCount; ++i)
        ws.Es(4, i) = 0.0;
}

void NeedsSampleSize(WorkingSet& ws, std::initializer_list<int> indices) {
    if (!ws.BuildTrails) return;
    for (int i : indices)
        ws.EsFormula[static_cast<std::size_t>(i)] = "Cannot compute without sample size.";
}

}  // namespace synthara::effectsize
