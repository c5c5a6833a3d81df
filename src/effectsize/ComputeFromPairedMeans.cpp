// One group measured twice, or matched pairs: the mean difference with the
// SD of the differences, or both means with their SDs and the correlation.
// The difference is the second mean minus the first.
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputeFromMeans.h"
#include "effectsize/FormatRoles.h"
#include "effectsize/StdDiffChain.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

namespace {

using sheet::MeansEntry;
using sheet::RoleKind;

constexpr Formula kPairedDiff{"PairedDiff = ({Mean2} - {Mean1})"};
constexpr Formula kPairedDiffSD{
    "PairedDiffSD = Sqr({SD1} ^ 2 + {SD2} ^ 2 - 2 * {Corr} * {SD1} * {SD2})"};
constexpr Formula kPairedDiffSE{"PairedDiffSE = {PairedDiffSD} / Sqr({n})"};
constexpr Formula kStdPairedDiff{"StdPairedDiff = {PairedDiff} / {PairedDiffSD}"};
constexpr Formula kStdPairedDiffSE{
    "StdPairedDiffSE = (1 / Sqr({n})) * Sqr(1 + {StdPairedDiff} ^ 2 / 2)"};
constexpr Formula kStdDiff{"StdDiff = {PairedDiff} /  ({PairedDiffSD} / Sqr(2 * (1 - {Corr})))"};
constexpr Formula kStdDiffSE{
    "StdDiffSe = Sqr(1 / {n} + {StdDiff} ^ 2 / (2 * {n})) * Sqr(2 * (1 - {Corr}))"};

void Validate(bool means, const FormatRoles& roles, WorkingSet& ws) {
    if (means) {
        CheckMean1(roles.Role(RoleKind::PreMean), ws);
        CheckSD1(roles.Role(RoleKind::PreSD), ws);
        CheckMean2(roles.Role(RoleKind::PostMean), ws);
        CheckSD2(roles.Role(RoleKind::PostSD), ws);
        CheckCorr(roles.Role(RoleKind::PrePostCorrelation), ws);
        CheckN(roles.Role(RoleKind::SampleSize), ws);
    } else {
        CheckMean(roles.Role(RoleKind::MeanDifference), ws);
        CheckSDP(roles.Role(RoleKind::CommonSD), ws);
        CheckN(roles.Role(RoleKind::SampleSize), ws);
        CheckCorr(roles.Role(RoleKind::PrePostCorrelation), ws);
    }
    CheckDirection(roles.Role(RoleKind::EffectDirection), ws);
}

}  // namespace

void ComputeFromPairedMeans(const sheet::FormatDef& format, WorkingSet& ws,
                            ComputeContext& context) {
    const auto* layout = std::get_if<sheet::PairedMeansLayout>(&format.layout);
    if (layout == nullptr) return;
    const bool means = layout->entry == MeansEntry::MeansAndSD;
    const FormatRoles roles(format, ws);
    Validate(means, roles, ws);
    if (!ws.RowErrors.empty()) return;

    const double mean1 = roles.Value(RoleKind::PreMean), mean2 = roles.Value(RoleKind::PostMean),
                 sd1 = roles.Value(RoleKind::PreSD), sd2 = roles.Value(RoleKind::PostSD),
                 corr = roles.Value(RoleKind::PrePostCorrelation),
                 n = roles.Value(RoleKind::SampleSize);
    double diff = means ? mean2 - mean1 : roles.Value(RoleKind::MeanDifference);
    const double diffSD = means ? std::sqrt(sd1 * sd1 + sd2 * sd2 - 2 * corr * sd1 * sd2)
                                : roles.Value(RoleKind::CommonSD);
    const double diffSE = diffSD / std::sqrt(n);
    double stdPaired = diff / diffSD;
    const double stdPairedSE = (1 / std::sqrt(n)) * std::sqrt(1 + stdPaired * stdPaired / 2);
    const double direction = roles.Value(RoleKind::EffectDirection);
    diff = ApplyDirection(diff, direction);
    stdPaired = ApplyDirection(stdPaired, direction);
    // The row's own correlation turns the SD of the differences into a pooled SD.
    const double f = std::sqrt(2 * (1 - corr));
    const double stdDiff = diff / (diffSD / f);
    const double stdDiffSE = std::sqrt(stdDiff * stdDiff / (2 * n) + 1 / n) * f;

    ws.SetResult(Ix::DifferenceInMeans, diff, diffSE, diffSE * diffSE);
    ws.SetResult(Ix::StdPairedDifference, stdPaired, stdPairedSE, stdPairedSE * stdPairedSE);
    ws.SetResult(Ix::StdDiffInMeans, stdDiff, stdDiffSE, stdDiffSE * stdDiffSE);
    StdDiffChain({stdDiff, stdDiffSE, 1, 1, n, true, OddsLimit::SkipAbove620}, ws, context.options);
    if (!ws.BuildTrails) return;

    const std::string mean1Text = G3(mean1), mean2Text = G3(mean2), sd1Text = G3(sd1),
                      sd2Text = G3(sd2), corrText = G3(corr), nText = G1(n), diffText = G3(diff),
                      sdText = G3(diffSD), pairedText = G3(stdPaired), dText = G3(stdDiff);
    const Slots values{
        {"Mean1", mean1Text},     {"Mean2", mean2Text},     {"SD1", sd1Text},
        {"SD2", sd2Text},         {"Corr", corrText},       {"n", nText},
        {"PairedDiff", diffText}, {"PairedDiffSD", sdText}, {"StdPairedDiff", pairedText},
        {"StdDiff", dText}};
    std::string& raw = ws.EsFormula[Ix::DifferenceInMeans];
    AddFormula(raw,
               means ? "Paired means, SD Pre, SD Post, Pre/Post correlation, Sample size"
                     : "Paired mean difference, SD of difference, Sample size",
               "A");
    AddFormula(raw, means ? "Paired mean difference" : "Paired difference in means", "T");
    if (means) {
        kPairedDiff.AddSymbols(raw);
        kPairedDiffSD.AddSymbols(raw);
    } else {
        AddFormula(raw, "PairedDiff = Given", "S");
    }
    kPairedDiffSE.AddSymbols(raw);
    if (means) {
        kPairedDiff.AddNumbers(raw, values, diffText);
        kPairedDiffSD.AddNumbers(raw, values, sdText);
    } else {
        AddStep(raw, {"PairedDiff = ", diffText});
    }
    kPairedDiffSE.AddNumbers(raw, values, G3(diffSE));

    std::string& paired = ws.EsFormula[Ix::StdPairedDifference];
    paired = raw;
    AddFormula(paired, "Paired standardized mean difference", "T");
    AddFormulaLines(paired, {{kStdPairedDiff, pairedText}, {kStdPairedDiffSE, G3(stdPairedSE)}},
                    values);

    std::string& d = ws.EsFormula[Ix::StdDiffInMeans];
    d = raw;
    AddFormula(d, "Independent standardized mean difference", "T");
    AddFormulaLines(d, {{kStdDiff, dText}, {kStdDiffSE, G3(stdDiffSE)}}, values);
}

}  // namespace synthara::effectsize
