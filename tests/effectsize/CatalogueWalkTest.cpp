// Every format of the catalogue computes: a row of plausible entries, made
// from the meaning of each of its roles, yields the format's primary index;
// an empty row and a name outside the catalogue yield nothing.
#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "OneRow.h"
#include "sheet/grid/Sheet.h"

namespace synthara::effectsize {
namespace {

using sheet::RoleKind;

// A value every validator accepts for a role of this meaning; limits are
// made from the point.
struct Plausible {
    RoleKind kind;
    double value;
};
// clang-format off
constexpr Plausible kPlausible[] = {
    {RoleKind::EventsA, 10}, {RoleKind::NonEventsA, 40}, {RoleKind::TotalNA, 50},
    {RoleKind::RateA, 0.2}, {RoleKind::EventsB, 15}, {RoleKind::NonEventsB, 35},
    {RoleKind::TotalNB, 50}, {RoleKind::RateB, 0.3}, {RoleKind::ExternalCorrelation, 0.5},
    {RoleKind::PairsBothEvents, 10}, {RoleKind::PairsOnlyA, 5}, {RoleKind::PairsOnlyB, 8},
    {RoleKind::PairsBothNonEvents, 20}, {RoleKind::ExposedCases, 20},
    {RoleKind::UnexposedCases, 30}, {RoleKind::TotalCases, 50}, {RoleKind::PropnCasesExposed, 0.4},
    {RoleKind::ExposedControls, 10}, {RoleKind::UnexposedControls, 40},
    {RoleKind::TotalControls, 50}, {RoleKind::PropnControlsExposed, 0.2},
    {RoleKind::PersonYearsA, 100}, {RoleKind::PersonYearsB, 120}, {RoleKind::PYRateA, 0.1},
    {RoleKind::PYRateB, 0.12}, {RoleKind::Events, 10}, {RoleKind::NonEvents, 40},
    {RoleKind::SampleSize, 50}, {RoleKind::EventRate, 0.2}, {RoleKind::PersonYears, 100},
    {RoleKind::PYRate, 0.1}, {RoleKind::Mean, 10}, {RoleKind::SD, 2}, {RoleKind::StdErr, 0.2},
    {RoleKind::Variance, 0.04}, {RoleKind::ConfidenceLevel, 0.95}, {RoleKind::PetoOE, 2},
    {RoleKind::PetoV, 5}, {RoleKind::ChiSquared, 4},
    {RoleKind::EffectDirection, 3},  // positive: every format accepts it
    {RoleKind::MeanA, 10}, {RoleKind::SDA, 2}, {RoleKind::MeanB, 8}, {RoleKind::SDB, 3},
    {RoleKind::MeanDifference, 2}, {RoleKind::CommonSD, 2.5}, {RoleKind::CohensD, 0.5},
    {RoleKind::TValue, 3}, {RoleKind::PValue, 0.05}, {RoleKind::Tails, 2},
    {RoleKind::PreMean, 8}, {RoleKind::PreSD, 2}, {RoleKind::PostMean, 10},
    {RoleKind::PostSD, 2.5}, {RoleKind::PrePostCorrelation, 0.5}, {RoleKind::PreMeanA, 8},
    {RoleKind::PreSDA, 2}, {RoleKind::PostMeanA, 10}, {RoleKind::PostSDA, 2.5},
    {RoleKind::MeanChangeA, 2}, {RoleKind::ChangeSDA, 2}, {RoleKind::TChangeA, 3},
    {RoleKind::PChangeA, 0.01}, {RoleKind::PreMeanB, 8}, {RoleKind::PreSDB, 2},
    {RoleKind::PostMeanB, 9}, {RoleKind::PostSDB, 2.5}, {RoleKind::MeanChangeB, 1},
    {RoleKind::ChangeSDB, 2}, {RoleKind::TChangeB, 2}, {RoleKind::PChangeB, 0.05},
    {RoleKind::FValue, 4},
    {RoleKind::StandardizeBy, 2},  // the change-score SD, which every format allows
    {RoleKind::Ratio, 2}, {RoleKind::LogRatio, 0.5}, {RoleKind::PointEstimate, 0.3},
    {RoleKind::HedgesG, 0.5}, {RoleKind::Correlation, 0.3}, {RoleKind::FisherZ, 0.3},
    {RoleKind::Rxx, 0.8}, {RoleKind::Ryy, 0.9}, {RoleKind::RangeRestriction, 0.7},
};
// clang-format on

double PlausibleValue(RoleKind kind) {
    for (const Plausible& p : kPlausible)
        if (p.kind == kind) return p.value;
    ADD_FAILURE() << "no plausible value for a role's meaning";
    return 0;
}

std::vector<std::optional<double>> PlausibleRow(const sheet::FormatDef& format) {
    std::vector<std::optional<double>> row;
    const bool logs = format.procedure == sheet::Procedure::ComputePointLog;
    const double point = format.roles.empty() ? 0 : PlausibleValue(format.roles[0].kind);
    for (const sheet::RoleDef& role : format.roles) {
        if (role.kind == RoleKind::LowerLimit)
            row.emplace_back(logs ? point / 2 : point - 1);
        else if (role.kind == RoleKind::UpperLimit)
            row.emplace_back(logs ? point * 2 : point + 1);
        else
            row.emplace_back(PlausibleValue(role.kind));
    }
    return row;
}

TEST(CatalogueWalk, EveryFormatYieldsItsPrimaryIndex) {
    for (const sheet::FormatDef& format : sheet::AllFormats()) {
        const std::string name(format.longName);
        const OneRow row(name, PlausibleRow(format));
        // Corrections for artifacts were never finished: the format
        // computes nothing, and says nothing.
        if (name == "Correlation, sample size, and artifacts") {
            EXPECT_TRUE(row.ValidIndices().empty());
            EXPECT_EQ(row.ws.RowErrors, "");
            continue;
        }
        EXPECT_EQ(row.ws.RowErrors, "") << name;
        // The one format outside the wizard with no display set shows paired d.
        const std::string primary =
            format.displaySet.empty() ? "Std Paired Difference" : std::string(format.displaySet[0]);
        const int i = sheet::IndexNumber(primary);
        ASSERT_GT(i, 0) << primary;
        EXPECT_TRUE(row.ws.IsValid(i)) << name << ": " << primary;
        EXPECT_TRUE(std::isfinite(row.Point(i))) << name;
        bool spread = false;
        for (std::string_view shown : format.displaySet) {
            const int k = sheet::IndexNumber(shown);
            if (!row.ws.IsValid(k) || !row.ws.HasSpread[static_cast<std::size_t>(k)]) continue;
            spread = true;
            EXPECT_GT(row.ws.Es(2, k), 0) << name << ": " << shown;
            EXPECT_DOUBLE_EQ(row.ws.Es(3, k), row.ws.Es(2, k) * row.ws.Es(2, k)) << name;
        }
        EXPECT_TRUE(spread || format.displaySet.empty()) << name << " shows no standard error";

        const OneRow empty(name, {});
        EXPECT_TRUE(empty.ValidIndices().empty()) << name;
        EXPECT_TRUE(ComputesFormat(name)) << name;
    }
    for (const sheet::FormatDef& legacy : sheet::LegacyFormats())
        EXPECT_TRUE(ComputesFormat(legacy.longName)) << legacy.longName;
    const sheet::FormatDef& first = sheet::AllFormats()[0];
    const OneRow unknown("Events and sample size in one group", PlausibleRow(first));
    EXPECT_TRUE(unknown.ValidIndices().empty());
    EXPECT_FALSE(ComputesFormat("Events and sample size in one group"));
}

}  // namespace
}  // namespace synthara::effectsize
