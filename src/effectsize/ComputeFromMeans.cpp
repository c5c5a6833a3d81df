// Two independent groups from their means and SDs, a difference in means
// with a common SD, or Cohen's d; each with the two sample sizes.
#include "effectsize/ComputeFromMeans.h"

#include <cmath>
#include <string>
#include <variant>

#include "effectsize/FormatRoles.h"
#include "effectsize/StdDiffChain.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

namespace {

using sheet::MeansEntry;
using sheet::RoleKind;

constexpr Formula kRawDiff{"RawDiff = {Mean1} - {Mean2}"};
constexpr Formula kSDP{
    "SDP = Sqr(((({N1} - 1) * {SD1} ^ 2 + ({N2} - 1) * {SD2} ^ 2) / ({N1} + {N2} - 2)))"};
constexpr Formula kPooledSE{"RawDiffSE = Sqr(1 / {N1} + 1 / {N2}) * {SDP}"};
constexpr Formula kSeparateSE{"RawDiffSE = Sqr({SD1} ^ 2 / {N1} + {SD2} ^ 2 / {N2})"};
constexpr Formula kStdDiff{"StdDiff = {RawDiff} / {SDP}"};
constexpr Formula kStdDiffSE{
    "StdDiffSE = Sqr(1 / {N1} + 1 / {N2} + {StdDiff} ^ 2 / (2 * ({N1} + {N2})))"};

struct MeansRow {
    double mean1 = 0, mean2 = 0, sd1 = 0, sd2 = 0, n1 = 0, n2 = 0;
    double rawDiff = 0, rawDiffSE = 0, sdp = 0, stdDiff = 0, stdDiffSE = 0;
    bool pooled = true;  // the raw difference's SE from the pooled SD
};

void Validate(MeansEntry entry, const FormatRoles& roles, WorkingSet& ws) {
    switch (entry) {
        case MeansEntry::MeansAndSD:
            CheckMean1(roles.Role(RoleKind::MeanA), ws);
            CheckSD1(roles.Role(RoleKind::SDA), ws);
            CheckN1(roles.Role(RoleKind::TotalNA), ws);
            CheckMean2(roles.Role(RoleKind::MeanB), ws);
            CheckSD2(roles.Role(RoleKind::SDB), ws);
            CheckN2(roles.Role(RoleKind::TotalNB), ws);
            break;
        case MeansEntry::DifferenceAndSD:
            CheckMean(roles.Role(RoleKind::MeanDifference), ws);
            CheckSDP(roles.Role(RoleKind::CommonSD), ws);
            CheckN1(roles.Role(RoleKind::TotalNA), ws);
            CheckN2(roles.Role(RoleKind::TotalNB), ws);
            break;
        default:
            CheckMean(roles.Role(RoleKind::CohensD), ws);
            CheckN1(roles.Role(RoleKind::TotalNA), ws);
            CheckN2(roles.Role(RoleKind::TotalNB), ws);
            break;
    }
    CheckDirection(roles.Role(RoleKind::EffectDirection), ws);
}

// The raw difference's trail (index 11), which also opens that of d.
void RawTrail(MeansEntry entry, const MeansRow& m, const Slots& values, std::string& t) {
    const Formula& se = m.pooled ? kPooledSE : kSeparateSE;
    AddFormula(t,
               entry == MeansEntry::MeansAndSD ? "Mean, SD, N in each group"
                                               : "Difference in means, Common SD, N in each group",
               "A");
    AddFormula(t, "Raw difference in means", "T");
    AddFormula(t, "", "S");
    if (entry == MeansEntry::MeansAndSD) {
        kRawDiff.AddSymbols(t);
        kSDP.AddSymbols(t);
        AddFormula(
            t, m.pooled ? "** Option for pooled variance **" : "** Option for separate variance **",
            "S");
    } else {
        AddFormula(t, "RawDiff = Given", "S");
        AddFormula(t, "SDP = Given", "S");
    }
    se.AddSymbols(t);
    AddFormula(t, "", "S");
    if (entry == MeansEntry::MeansAndSD) {
        kRawDiff.AddNumbers(t, values, G3(m.rawDiff));
        kSDP.AddNumbers(t, values, G3(m.sdp));
    } else {
        AddStep(t, {"RawDiff = ", G3(m.rawDiff)});
        AddStep(t, {"SDP = ", G3(m.sdp)});
    }
    se.AddNumbers(t, values, G3(m.rawDiffSE));
}

void StdDiffTrail(MeansEntry entry, const MeansRow& m, const Slots& values, std::string& t) {
    if (entry == MeansEntry::StdDiff) {
        AddFormula(t, "Standardized difference in means (d), N in each group", "A");
        AddFormula(t, "Standardized difference in means (d)", "T");
        AddFormula(t, "StdDiff = Given", "S");
        kStdDiffSE.AddSymbols(t);
        AddStep(t, {"StdDiff = ", G3(m.stdDiff)});
        kStdDiffSE.AddNumbers(t, values, G3(m.stdDiffSE));
        return;
    }
    AddFormula(t, "Standardized difference in means", "T");
    AddFormula(t, "", "S");
    kStdDiff.AddSymbols(t);
    kStdDiffSE.AddSymbols(t);
    AddFormula(t, "", "S");
    kStdDiff.AddNumbers(t, values, G3(m.stdDiff));
    kStdDiffSE.AddNumbers(t, values, G3(m.stdDiffSE));
}

}  // namespace

void ComputeFromMeans(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& context) {
    const auto* layout = std::get_if<sheet::MeansLayout>(&format.layout);
    if (layout == nullptr) return;
    const MeansEntry entry = layout->entry;
    const FormatRoles roles(format, ws);
    Validate(entry, roles, ws);
    if (!ws.RowErrors.empty()) return;

    MeansRow m;
    m.n1 = roles.Value(RoleKind::TotalNA);
    m.n2 = roles.Value(RoleKind::TotalNB);
    const bool raw = entry != MeansEntry::StdDiff;
    if (entry == MeansEntry::MeansAndSD) {
        m.mean1 = roles.Value(RoleKind::MeanA);
        m.mean2 = roles.Value(RoleKind::MeanB);
        m.sd1 = roles.Value(RoleKind::SDA);
        m.sd2 = roles.Value(RoleKind::SDB);
        // The raw values of both groups, kept so that a study's subgroups
        // can be put together again as one sample.
        ws.SetPoint(Ix::N1, m.n1);
        ws.SetPoint(Ix::N2, m.n2);
        ws.SetPoint(Ix::N3, m.n1 + m.n2);
        ws.SetPoint(Ix::Mean1, m.mean1);
        ws.SetPoint(Ix::Mean2, m.mean2);
        ws.SetPoint(Ix::SD1, m.sd1);
        ws.SetPoint(Ix::SD2, m.sd2);
        m.rawDiff = m.mean1 - m.mean2;
        m.sdp = std::sqrt(((m.n2 - 1) * m.sd2 * m.sd2 + (m.n1 - 1) * m.sd1 * m.sd1) /
                          (m.n2 + m.n1 - 2));
        const int method = context.options.PoolVarianceMethod;
        m.pooled = method != 2;
        if (method == 1) {
            m.rawDiffSE = std::sqrt(1 / m.n1 + 1 / m.n2) * m.sdp;
        } else if (method == 2) {
            m.rawDiffSE = std::sqrt(m.sd1 * m.sd1 / m.n1 + m.sd2 * m.sd2 / m.n2);
        } else {
            context.prompter.Message(
                ports::Box{"", {"Variance method not known"}, ports::Icon::None});
        }
    } else if (entry == MeansEntry::DifferenceAndSD) {
        m.rawDiff = roles.Value(RoleKind::MeanDifference);
        m.sdp = roles.Value(RoleKind::CommonSD);
        m.rawDiffSE = std::sqrt(1 / m.n1 + 1 / m.n2) * m.sdp;
    }
    m.stdDiff = raw ? m.rawDiff / m.sdp : roles.Value(RoleKind::CohensD);
    m.stdDiffSE = std::sqrt(1 / m.n1 + 1 / m.n2 + m.stdDiff * m.stdDiff / (2 * (m.n1 + m.n2)));

    if (ws.BuildTrails) {
        const std::string mean1 = G3(m.mean1), mean2 = G3(m.mean2), sd1 = G3(m.sd1),
                          sd2 = G3(m.sd2), n1 = G1(m.n1), n2 = G1(m.n2), sdp = G3(m.sdp),
                          rawDiff = G3(m.rawDiff), stdDiff = G3(m.stdDiff);
        const Slots values{{"Mean1", mean1}, {"Mean2", mean2},     {"SD1", sd1},
                           {"SD2", sd2},     {"N1", n1},           {"N2", n2},
                           {"SDP", sdp},     {"RawDiff", rawDiff}, {"StdDiff", stdDiff}};
        std::string& d = ws.EsFormula[Ix::StdDiffInMeans];
        if (raw) {
            std::string& rawTrail = ws.EsFormula[Ix::DifferenceInMeans];
            RawTrail(entry, m, values, rawTrail);
            d = rawTrail;
        }
        StdDiffTrail(entry, m, values, d);
    }

    const double direction = roles.Value(RoleKind::EffectDirection);
    m.stdDiff = ApplyDirection(m.stdDiff, direction);
    m.rawDiff = ApplyDirection(m.rawDiff, direction);
    PairedFromD(m.stdDiff, m.stdDiffSE, PairedWords{}, ws, context.options);
    if (raw) ws.SetResult(Ix::DifferenceInMeans, m.rawDiff, m.rawDiffSE, m.rawDiffSE * m.rawDiffSE);
    ws.SetResult(Ix::StdDiffInMeans, m.stdDiff, m.stdDiffSE, m.stdDiffSE * m.stdDiffSE);
    StdDiffChain(
        {m.stdDiff, m.stdDiffSE, m.n1, m.n2, m.n1 + m.n2, false, OddsLimit::RefuseAbove700}, ws,
        context.options);
}

}  // namespace synthara::effectsize
