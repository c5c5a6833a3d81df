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

CILimits CheckEnteredPoint(sheet::PointForm form, CIKind kind, sheet::RoleKind pointKind,
                           const FormatRoles& roles, WorkingSet& ws, ComputeOptions& options) {
    using sheet::PointForm;
    using sheet::RoleKind;
    if (form == PointForm::Limits) {
        return CheckCI(kind, roles.Role(pointKind), roles.Role(RoleKind::LowerLimit),
                       roles.Role(RoleKind::UpperLimit), roles.Role(RoleKind::ConfidenceLevel), ws,
                       options);
    }
    const int spread =
        roles.Role(form == PointForm::StdErr ? RoleKind::StdErr : RoleKind::Variance);
    if (kind == CIKind::Ratio) {
        CheckLogPoint(roles.Role(RoleKind::LogRatio), ws);
        if (form == PointForm::StdErr)
            CheckSe(spread, ws);
        else
            CheckVariance(spread, ws);
    } else {
        CheckPoint(roles.Role(pointKind), ws);
        CheckSe(spread, ws);
    }
    return NoLimits;
}

bool ReadEnteredPoint(sheet::PointForm form, CIKind kind, const FormatRoles& roles, WorkingSet& ws,
                      ComputeOptions& options, EnteredPoint& m) {
    using sheet::RoleKind;
    const bool ratio = kind == CIKind::Ratio;
    const RoleKind pointKind = ratio ? RoleKind::Ratio : RoleKind::PointEstimate;
    m.limits = CheckEnteredPoint(form, kind, pointKind, roles, ws, options);
    if (!ws.RowErrors.empty()) return false;
    if (form != sheet::PointForm::Limits) {
        m.value = m.point = roles.Value(ratio ? RoleKind::LogRatio : pointKind);
        m.se = GivenSE(form, roles);
        return true;
    }
    m.point = roles.Value(pointKind);
    m.lower = roles.Value(RoleKind::LowerLimit);
    m.upper = roles.Value(RoleKind::UpperLimit);
    m.critical = CriticalZ(roles.Value(RoleKind::ConfidenceLevel));
    const auto scale = [ratio](double x) { return ratio ? std::log(x) : x; };
    m.value = scale(m.point);
    m.se = SEFromLimits(m.limits, m.value, scale(m.lower), scale(m.upper), m.critical);
    return true;
}

bool CheckGivenDifference(const FormatRoles& roles, sheet::RoleKind pointKind,
                          std::initializer_list<sheet::RoleKind> sizes, WorkingSet& ws,
                          ComputeOptions& options, GivenPoint& given) {
    using sheet::RoleKind;
    const bool limits = given.form == sheet::PointForm::Limits;
    given.limits = CheckEnteredPoint(given.form, CIKind::Raw, pointKind, roles, ws, options);
    bool first = true;
    for (RoleKind size : sizes) {
        const int role = roles.Role(size);
        if (limits && first)
            CheckN1(role, ws);
        else if (limits)
            CheckN2(role, ws);
        else if (first)
            CheckN1Optional(role, ws);
        else
            CheckN2Optional(role, ws);
        first = false;
    }
    CheckDirection(roles.Role(RoleKind::EffectDirection), ws);
    given.point = roles.Value(pointKind);
    given.lower = roles.Value(RoleKind::LowerLimit);
    given.upper = roles.Value(RoleKind::UpperLimit);
    return ws.RowErrors.empty();
}

bool FindGivenSE(const FormatRoles& roles, double df, WorkingSet& ws, GivenPoint& given) {
    if (given.form != sheet::PointForm::Limits) {
        given.se = GivenSE(given.form, roles);
        return true;
    }
    if (df < 1) {
        AddErr(ws.RowErrors, "The sample size is too low");
        return false;
    }
    given.critical = CriticalT(roles.Value(sheet::RoleKind::ConfidenceLevel), df);
    given.se = SEFromLimits(given.limits, given.point, given.lower, given.upper, given.critical);
    return true;
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

void ChainFromGivenD(const ChainInput& chain, bool sized, WorkingSet& ws,
                     const ComputeOptions& options) {
    CorrelationFromD(chain, ws);
    if (!LogOddsFromD(chain, ws)) {
        DiscardResults(ws);
        return;
    }
    if (sized)
        HedgesGFromD(chain, ws, options);
    else
        NeedsSampleSize(ws, {Ix::HedgesG});
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
