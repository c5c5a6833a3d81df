// One mean with its standard error, from an SD, a standard error, a variance
// or confidence limits.
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputeFromOneGroup.h"
#include "effectsize/FormatRoles.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"
#include "stats/Distributions.h"

namespace synthara::effectsize {

namespace {

using sheet::MeanEntry;
using sheet::RoleKind;

constexpr Formula kFromSD{"MeanSE = {SD} * Sqr(1 / {n})"};
constexpr Formula kFromVariance{"MeanSE = Sqr({Variance})"};
constexpr Formula kFromLower{"MeanSE = abs({Mean} - {Lower}) / {t-value}"};
constexpr Formula kFromUpper{"MeanSE = abs({Mean} - {Upper}) / {t-value}"};
constexpr Formula kFromBoth{"MeanSE = abs(({Upper} - {Lower}) / 2) / {t-value}"};

// The words that open the trail of each way of entering the mean.
constexpr std::string_view Opening(MeanEntry entry) {
    switch (entry) {
        case MeanEntry::SDAndN:
            return "Mean, SD and Sample size";
        case MeanEntry::StdErr:
            return "Mean and Standard error";
        case MeanEntry::Variance:
            return "Mean and Variance";
        case MeanEntry::Limits:
            break;
    }
    return "Mean and confidence limits";
}

struct MeanRow {
    double mean = 0, se = 0;
    // The trail's lines after "Mean = Given" and after the mean's number.
    std::string symbols, numbers;
    bool trails = true;
};

// Standard error from the limits present, with the t-value of df = N - 1.
bool FromLimits(const FormatRoles& roles, WorkingSet& ws, ComputeOptions& options, MeanRow& m) {
    const CILimits limits = CheckCI(
        CIKind::Raw, roles.Role(RoleKind::Mean), roles.Role(RoleKind::LowerLimit),
        roles.Role(RoleKind::UpperLimit), roles.Role(RoleKind::ConfidenceLevel), ws, options);
    CheckN1(roles.Role(RoleKind::SampleSize), ws);
    if (!ws.RowErrors.empty()) return false;
    const double df = roles.Value(RoleKind::SampleSize) - 1;
    if (df < 1) {
        AddErr(ws.RowErrors, "The sample size is too low");
        return false;
    }
    const double level = roles.Value(RoleKind::ConfidenceLevel);
    const double t = std::fabs(stats::VBDTIN((1 - level) / 2, df));
    const double lower = roles.Value(RoleKind::LowerLimit),
                 upper = roles.Value(RoleKind::UpperLimit);
    const Formula* line = &kFromBoth;
    if (limits == LowerOnly) {
        m.se = std::fabs(m.mean - lower) / t;
        line = &kFromLower;
    } else if (limits == UpperOnly) {
        m.se = std::fabs(m.mean - upper) / t;
        line = &kFromUpper;
    } else {
        m.se = std::fabs((upper - lower) / 2) / t;
    }
    ws.SetPoint(Ix::N0, roles.Value(RoleKind::SampleSize));
    if (!m.trails) return true;
    AddFormula(m.symbols, "Lower = Given", "S");
    AddFormula(m.symbols, "Upper = Given", "S");
    line->AddSymbols(m.symbols);
    const std::string meanText = G3(m.mean), lowerText = G3(lower), upperText = G3(upper),
                      tText = G3(t);
    const Slots values{
        {"Mean", meanText}, {"Lower", lowerText}, {"Upper", upperText}, {"t-value", tText}};
    line->AddNumbers(m.numbers, values, G3(m.se));
    return true;
}

// Validates the entries and finds the mean and its standard error; false when refused.
bool ReadMean(MeanEntry entry, const FormatRoles& roles, WorkingSet& ws, ComputeOptions& options,
              MeanRow& m) {
    m.mean = roles.Value(RoleKind::Mean);
    if (entry == MeanEntry::Limits) return FromLimits(roles, ws, options, m);
    CheckMean(roles.Role(RoleKind::Mean), ws);
    switch (entry) {
        case MeanEntry::SDAndN:
            CheckSDP(roles.Role(RoleKind::SD), ws);
            CheckN(roles.Role(RoleKind::SampleSize), ws);
            break;
        case MeanEntry::StdErr:
            CheckSe(roles.Role(RoleKind::StdErr), ws);
            break;
        case MeanEntry::Variance:
        case MeanEntry::Limits:
            CheckVariance(roles.Role(RoleKind::Variance), ws);
            break;
    }
    if (!ws.RowErrors.empty()) return false;
    const double sd = roles.Value(RoleKind::SD), n = roles.Value(RoleKind::SampleSize);
    // The printed numbers are made only for a trail.
    std::string sdText, nText, varianceText;
    if (m.trails) {
        sdText = G3(sd);
        nText = G1(n);
        varianceText = G3(roles.Value(RoleKind::Variance));
    }
    const Slots values{{"SD", sdText}, {"n", nText}, {"Variance", varianceText}};
    if (entry == MeanEntry::SDAndN) {
        m.se = std::sqrt(1 / n) * sd;
        ws.SetPoint(Ix::Mean0, m.mean);
        ws.SetPoint(Ix::SD0, sd);
        ws.SetPoint(Ix::MeanN0, n);
        ws.SetPoint(Ix::N0, n);
        if (m.trails) {
            kFromSD.AddSymbols(m.symbols);
            kFromSD.AddNumbers(m.numbers, values, G3(m.se));
        }
    } else if (entry == MeanEntry::StdErr) {
        m.se = roles.Value(RoleKind::StdErr);
        if (m.trails) {
            AddFormula(m.symbols, "MeanSE = Given", "S");
            AddStep(m.numbers, {"MeanSE = ", G3(m.se)});
        }
    } else {
        m.se = std::sqrt(roles.Value(RoleKind::Variance));
        if (m.trails) {
            kFromVariance.AddSymbols(m.symbols);
            kFromVariance.AddNumbers(m.numbers, values, G3(m.se));
        }
    }
    return true;
}

}  // namespace

void ComputeFromMeansOneGroup(const sheet::FormatDef& format, WorkingSet& ws,
                              ComputeContext& context) {
    const auto* layout = std::get_if<sheet::OneGroupMeansLayout>(&format.layout);
    if (layout == nullptr) return;
    const FormatRoles roles(format, ws);
    MeanRow m;
    m.trails = ws.BuildTrails;
    if (!ReadMean(layout->entry, roles, ws, context.options, m)) return;
    ws.SetResult(Ix::Mean, m.mean, m.se, m.se * m.se);
    if (!m.trails) return;
    std::string& t = ws.EsFormula[Ix::Mean];
    AddFormula(t, Opening(layout->entry), "A");
    AddFormula(t, "Mean", "T");
    AddFormula(t, "Mean = Given", "S");
    t += m.symbols;
    AddStep(t, {"Mean = ", G3(m.mean)});
    t += m.numbers;
}

}  // namespace synthara::effectsize
