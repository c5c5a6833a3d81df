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
double Plausible(RoleKind kind) {
    using enum RoleKind;
    switch (kind) {
        case EventsA:
        case Events:
        case PairsBothEvents:
        case ExposedControls:
            return 10;
        case NonEventsA:
        case NonEvents:
        case UnexposedControls:
            return 40;
        case TotalNA:
        case TotalNB:
        case SampleSize:
        case TotalCases:
        case TotalControls:
            return 50;
        case RateA:
        case EventRate:
        case PropnControlsExposed:
            return 0.2;
        case EventsB:
            return 15;
        case NonEventsB:
            return 35;
        case RateB:
            return 0.3;
        case ExternalCorrelation:
        case PrePostCorrelation:
            return 0.5;
        case PairsOnlyA:
            return 5;
        case PairsOnlyB:
            return 8;
        case PairsBothNonEvents:
        case ExposedCases:
            return 20;
        case UnexposedCases:
            return 30;
        case PropnCasesExposed:
            return 0.4;
        case PersonYearsA:
        case PersonYears:
            return 100;
        case PersonYearsB:
            return 120;
        case PYRateA:
        case PYRate:
            return 0.1;
        case PYRateB:
            return 0.12;
        case Mean:
        case MeanA:
        case PostMean:
        case PostMeanA:
            return 10;
        case SD:
        case SDA:
        case PreSD:
        case PreSDA:
        case PreSDB:
        case ChangeSDA:
        case ChangeSDB:
            return 2;
        case StdErr:
            return 0.2;
        case Variance:
            return 0.04;
        case ConfidenceLevel:
            return 0.95;
        case PetoOE:
            return 2;
        case PetoV:
            return 5;
        case ChiSquared:
        case FValue:
            return 4;
        case EffectDirection:
            return 3;  // positive: every format accepts it
        case MeanB:
        case PreMean:
        case PreMeanA:
        case PreMeanB:
            return 8;
        case SDB:
            return 3;
        case MeanDifference:
        case MeanChangeA:
            return 2;
        case CommonSD:
        case PostSD:
        case PostSDA:
        case PostSDB:
            return 2.5;
        case CohensD:
        case HedgesG:
        case LogRatio:
            return 0.5;
        case TValue:
        case TChangeA:
            return 3;
        case PValue:
        case PChangeB:
            return 0.05;
        case PChangeA:
            return 0.01;
        case Tails:
            return 2;
        case PostMeanB:
            return 9;
        case MeanChangeB:
            return 1;
        case TChangeB:
            return 2;
        case StandardizeBy:
            return 1;
        case Ratio:
            return 2;
        case PointEstimate:
        case Correlation:
        case FisherZ:
            return 0.3;
        case Rxx:
            return 0.8;
        case Ryy:
            return 0.9;
        case RangeRestriction:
            return 0.7;
        case LowerLimit:
        case UpperLimit:
        case None:
            break;
    }
    return 0;
}

std::vector<std::optional<double>> PlausibleRow(const sheet::FormatDef& format) {
    std::vector<std::optional<double>> row;
    const bool logs = format.procedure == sheet::Procedure::ComputePointLog;
    const double point = format.roles.empty() ? 0 : Plausible(format.roles[0].kind);
    for (const sheet::RoleDef& role : format.roles) {
        if (role.kind == RoleKind::LowerLimit)
            row.emplace_back(logs ? point / 2 : point - 1);
        else if (role.kind == RoleKind::UpperLimit)
            row.emplace_back(logs ? point * 2 : point + 1);
        else
            row.emplace_back(Plausible(role.kind));
    }
    return row;
}

TEST(CatalogueWalk, EveryFormatYieldsItsPrimaryIndex) {
    for (const sheet::FormatDef& format : sheet::AllFormats()) {
        const std::string name(format.longName);
        const Row row(name, PlausibleRow(format));
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

        const Row empty(name, {});
        EXPECT_TRUE(empty.ValidIndices().empty()) << name;
        EXPECT_TRUE(ComputesFormat(name)) << name;
    }
    for (const sheet::FormatDef& legacy : sheet::LegacyFormats())
        EXPECT_TRUE(ComputesFormat(legacy.longName)) << legacy.longName;
    const sheet::FormatDef& first = sheet::AllFormats()[0];
    const Row unknown("Events and sample size in one group", PlausibleRow(first));
    EXPECT_TRUE(unknown.ValidIndices().empty());
    EXPECT_FALSE(ComputesFormat("Events and sample size in one group"));
}

}  // namespace
}  // namespace synthara::effectsize
