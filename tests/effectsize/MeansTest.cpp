// Means of two groups, independent, paired and pre-post: each format's
// indices against numbers worked out by hand from the published formulas,
// the options' effects, and the refused rows.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "RowCases.h"
#include "support/Tolerance.h"

namespace synthara::effectsize {
namespace {

using synthara::testing::IsNear;
constexpr auto none = std::nullopt;

constexpr const char* kMeansSD = "Mean, SD and sample size in each group";
constexpr const char* kSampleSizeT = "Sample size and t-value";
constexpr const char* kPairedDiffT = "Mean difference, sample size, and t-value";
constexpr const char* kPrePostSD = "Means, SD pre and post, N, in each group, Pre/Post Corr";
constexpr const char* kFOnly = "F for difference between changes, N";

// Means 10 (SD 2, n 20) and 8 (SD 3, n 25).
const std::vector<std::optional<double>> kMeansRow{10, 2, 20, 8, 3, 25, 1};

TEST(IndependentMeans, EveryFormat) {
    // Means with SDs, each index and each direction code, are reference cases.
    const ValidCase cases[] = {
        {"difference and common SD",
         "Difference in means, common SD, and sample size",
         {2, 2.5, 20, 25, 1},
         {{Ix::DifferenceInMeans, 2, 0.75}, {Ix::StdDiffInMeans, 0.8, 0.31162655713387316}}},
        {"Cohen's d forced negative",
         "Cohen's d (standardized by pooled within-groups SD) and sample size",
         {0.5, 20, 25, 2},
         {{Ix::StdDiffInMeans, -0.5, 0.3045944480416178},
          {Ix::HedgesG, -0.49122807017543857, 0.2992506857952736}}},
        // A large d still gives a finite odds ratio.
        {"d of 40",
         "Cohen's d (standardized by pooled within-groups SD) and sample size",
         {40, 20, 25, 1},
         {{Ix::LogOddsRatio, 72.55197456936864, 7.666983287518019}}},
        {"means and t",
         "Means, sample size, and t-value",
         {5, 15, 7, 18, 2.2, 1},
         {{Ix::DifferenceInMeans, -2, 0.9090909090909091},
          {Ix::StdDiffInMeans, -0.7691264886581113, 0.3621949546655574}}},
        {"difference and negative t",
         "Difference in means, sample size, and t-value",
         {3, 15, 18, -2.5, 1},
         {{Ix::DifferenceInMeans, 3, 1.2},
          {Ix::StdDiffInMeans, 0.8740073734751264, 0.36578176047514493}}},
        {"sizes and t forced negative",
         kSampleSizeT,
         {15, 18, 2.5, 2},
         {{Ix::StdDiffInMeans, -0.8740073734751264, 0.36578176047514493}}},
        // p .05 on two tails: the t of .025 with 31 df.
        {"means and two-tailed p",
         "Means, sample size, and p-value",
         {5, 15, 7, 18, 0.05, 2, 1},
         {{Ix::DifferenceInMeans, -2, 0.9806260427131656},
          {Ix::StdDiffInMeans, -0.7130199161808513, 0.36045140191779423}}},
        {"difference and p",
         "Difference in means, sample size, and p-value",
         {-3, 15, 18, 0.01, 2, 1},
         {{Ix::DifferenceInMeans, -3, 1.0932777589533178},
          {Ix::StdDiffInMeans, -0.9593251482352116, 0.3690070913070596}}},
        {"sizes and one-tailed p",
         "Sample size and p-value",
         {15, 18, 0.05, 1, 3},
         {{Ix::StdDiffInMeans, 0.5927583671242623, 0.357135683163732}}},
    };
    for (const ValidCase& c : cases)
        CheckValid(c);

    // Without means there is no raw difference.
    const Row sizes(kSampleSizeT, {15, 18, 2.5, 3});
    EXPECT_FALSE(sizes.ws.IsValid(Ix::DifferenceInMeans));
    EXPECT_EQ(sizes.ws.EsFormula[Ix::DifferenceInMeans],
              "Starting with\r\nSample size and independent t-value\r\n\r\n"
              "Raw difference in means\r\nCannot be computed without means.");
}

TEST(IndependentMeans, TrailsOfMeansAndSDs) {
    const Row row(kMeansSD, kMeansRow);
    const std::string& raw = row.ws.EsFormula[Ix::DifferenceInMeans];
    EXPECT_NE(
        raw.find("** Option for pooled variance **\r\nRawDiffSE = Sqr(1 / N1 + 1 / N2) * SDP"),
        std::string::npos);
    EXPECT_NE(raw.find("\r\nRawDiff = 10.000 - 8.000 = 2.000"), std::string::npos);
    // d's trail goes on from the raw difference's.
    EXPECT_TRUE(row.ws.EsFormula[Ix::StdDiffInMeans].starts_with(raw));
    EXPECT_NE(row.ws.EsFormula[Ix::HedgesG].find("J = 1 - (3 / (4 * 43 - 1)) = 0.982"),
              std::string::npos);
}

Row WithOptions(const char* format, const std::vector<std::optional<double>>& values,
                double imputedR, int poolMethod, int gMethod) {
    return Row(format, values, nullptr, ComputeOptions{imputedR, 1.1, poolMethod, gMethod});
}

// Every index but `changed` holds the same numbers in both rows; `changed`
// differs in `attribute`.
void ExpectSameBut(const Row& a, const Row& b, int changed, int attribute) {
    for (int i : {Ix::DifferenceInMeans, Ix::StdDiffInMeans, Ix::HedgesG, Ix::StdPairedDifference,
                  Ix::Correlation, Ix::FishersZ, Ix::LogOddsRatio}) {
        if (i == changed) continue;
        for (int k = 1; k <= 3; ++k)
            EXPECT_EQ(a.ws.Es(k, i), b.ws.Es(k, i)) << "index " << i << ", attribute " << k;
    }
    EXPECT_EQ(a.ws.Es(1, changed) == b.ws.Es(1, changed), attribute != 1);
    EXPECT_NE(a.ws.Es(attribute, changed), b.ws.Es(attribute, changed));
}

TEST(IndependentMeans, Options) {
    const Row standard(kMeansSD, kMeansRow);

    const Row separate = WithOptions(kMeansSD, kMeansRow, 0.5, 2, 1);
    EXPECT_TRUE(IsNear(separate.ws.Es(2, Ix::DifferenceInMeans), 0.7483314773547883));
    ExpectSameBut(standard, separate, Ix::DifferenceInMeans, 2);
    EXPECT_NE(
        separate.ws.EsFormula[Ix::DifferenceInMeans].find(
            "** Option for separate variance **\r\nRawDiffSE = Sqr(SD1 ^ 2 / N1 + SD2 ^ 2 / N2)"),
        std::string::npos);

    const Row revman = WithOptions(kMeansSD, kMeansRow, 0.5, 1, 2);
    EXPECT_TRUE(IsNear(revman.ws.Es(2, Ix::HedgesG), 0.31132532336935304));
    ExpectSameBut(standard, revman, Ix::HedgesG, 2);

    // An imputed correlation of .5 leaves paired d equal to d; another does not.
    EXPECT_EQ(standard.ws.Es(1, Ix::StdPairedDifference), standard.ws.Es(1, Ix::StdDiffInMeans));
    const Row imputed = WithOptions(kMeansSD, kMeansRow, 0.3, 1, 1);
    EXPECT_TRUE(IsNear(imputed.ws.Es(1, Ix::StdPairedDifference), 0.6486475467630493));
    EXPECT_TRUE(IsNear(imputed.ws.Es(2, Ix::StdPairedDifference), 0.2626035864533801));
    ExpectSameBut(standard, imputed, Ix::StdPairedDifference, 1);
}

TEST(IndependentMeans, RefusedRows) {
    const RefusedCase cases[] = {
        {"auto without means",
         kSampleSizeT,
         {15, 18, 2.5, 1},
         {"Effect direction cannot be determined automatically"}},
        {"auto without means, p",
         "Sample size and p-value",
         {15, 18, 0.05, 2, 1},
         {"Effect direction cannot be determined automatically"}},
        {"t of zero for different means",
         "Means, sample size, and t-value",
         {5, 15, 7, 18, 0, 1},
         {"If mean difference is not zero, t-value cannot equal zero"}},
        {"missing common SD and direction",
         "Difference in means, common SD, and sample size",
         {2, none, 20, 25, none},
         {"Standard deviation is missing", "Effect direction is missing"}},
        {"one-tailed p above .5",
         "Difference in means, sample size, and p-value",
         {2, 15, 18, 0.6, 1, 1},
         {"One-sided p-value cannot exceed 0.500"}},
    };
    for (const RefusedCase& c : cases)
        CheckRefused(c);

    // A log odds ratio beyond 700 refuses the row and keeps what came before it.
    const Row huge("Cohen's d (standardized by pooled within-groups SD) and sample size",
                   {400, 20, 25, 1});
    EXPECT_EQ(huge.Errors(), std::vector<std::string>{"The effect size exceeds computer memory"});
    EXPECT_TRUE(huge.ws.IsValid(Ix::HedgesG));
    EXPECT_FALSE(huge.ws.IsValid(Ix::LogOddsRatio));
}

TEST(PairedMeans, EveryFormat) {
    // The difference with its SD, and the means with SDs, are reference cases.
    const ValidCase cases[] = {
        {"means and t",
         "Means, sample size, and paired t-value",
         {10, 12, 20, 3, 1},
         {{Ix::DifferenceInMeans, 2, 0.6666666666666666},
          {Ix::StdPairedDifference, 0.6708203932499369, 0.24748737341529162},
          {Ix::StdDiffInMeans, 0.6708203932499369, 0.24748737341529164},
          {Ix::HedgesG, 0.6439875775199394, 0.23758787847867996}}},
        // The given difference keeps its sign in the standard error.
        {"negative difference and t",
         kPairedDiffT,
         {-3, 10, 2, 1},
         {{Ix::DifferenceInMeans, -3, -1.5},
          {Ix::StdPairedDifference, -0.6324555320336759, 0.34641016151377546},
          {Ix::HedgesG, -0.5782450578593608, 0.3167178619554518}}},
        {"means and p",
         "Means, sample size, and paired p-value",
         {10, 12, 20, 0.04, 2, 1},
         {{Ix::DifferenceInMeans, 2, 0.907152344841286},
          {Ix::StdDiffInMeans, 0.4929862090343841, 0.23680347349110473},
          {Ix::Correlation, 0.23932961526383564, 0.10837598974569523}}},
        {"size and one-tailed p",
         "Sample size and p-value from paired t-test",
         {12, 0.04, 1, 3},
         {{Ix::StdPairedDifference, 0.5566888761715354, 0.31023529409500405},
          {Ix::HedgesG, 0.5178501173688701, 0.2885909712511665}}},
    };
    for (const ValidCase& c : cases)
        CheckValid(c);

    // Without a correlation of its own the t family imputes one.
    const Row imputed =
        WithOptions("Means, sample size, and paired t-value", {10, 12, 20, 3, 1}, 0.3, 1, 1);
    EXPECT_TRUE(IsNear(imputed.ws.Es(1, Ix::StdDiffInMeans), 0.7937253933193772));
    EXPECT_TRUE(IsNear(imputed.ws.Es(2, Ix::StdDiffInMeans), 0.29283100928692646));
    EXPECT_TRUE(IsNear(imputed.ws.Es(1, Ix::StdPairedDifference), 0.6708203932499369));

    const Row signedSE(kPairedDiffT, {-3, 10, 2, 1});
    EXPECT_NE(signedSE.ws.EsFormula[Ix::DifferenceInMeans].find(
                  "PairedDiffSE = PairedDiff / tObs\r\nPairedDiff = -3.000\r\n"
                  "PairedDiffSE = -3.000 / 2.000 = -1.500"),
              std::string::npos);
}

TEST(PairedMeans, RefusedRows) {
    const RefusedCase cases[] = {
        {"t of zero",
         "Means, sample size, and paired t-value",
         {10, 10, 20, 0, 1},
         {"Cannot compute when t-value = 0"}},
        {"one-tailed p of .5",
         "Means, sample size, and paired p-value",
         {10, 12, 20, 0.5, 1, 1},
         {"Cannot compute when p-value = 0.5 and tails = 1",
          "If mean difference is not zero, 1-tailed p-value cannot equal 0.500"}},
        {"auto without means",
         "Sample size and t-value from paired t-test",
         {20, 2, 1},
         {"Effect direction cannot be determined automatically"}},
        {"correlation of 1",
         "Mean difference, SD of difference, and sample size",
         {4, 5, 20, 1, 1},
         {"Correlation must be less than +1"}},
    };
    for (const RefusedCase& c : cases)
        CheckRefused(c);
}

// Pre 20 (SD 4) and post 26 (SD 5) in 20; pre 21 (SD 4.5) and post 23 (SD 5.5) in 22.
std::vector<std::optional<double>> PrePost(std::optional<double> corr, double direction,
                                           double stdType) {
    return {20, 4, 26, 5, 20, 21, 4.5, 23, 5.5, 22, corr, direction, stdType};
}

TEST(PrePostMeans, EveryFormat) {
    const ValidCase cases[] = {
        {"by post SD",
         kPrePostSD,
         PrePost(0.6, 3, 1),
         {{Ix::DifferenceInMeans, 4, 1.3465359597534303},
          {Ix::StdDiffInMeans, 0.7592409013141527, 0.31987029671285266},
          {Ix::StdPairedDifference, 0.7592409013141527, 0.31987029671285266},
          {Ix::HedgesG, 0.7449156012893573, 0.31383500809562903},
          {Ix::Correlation, 0.3545556937355485, 0.13059736705965735},
          {Ix::LogOddsRatio, 1.3771106641042234, 0.5801805408151822}}},
        {"by change SD",
         kPrePostSD,
         PrePost(0.6, 3, 2),
         {{Ix::DifferenceInMeans, 4, 1.3465359597534303},
          {Ix::StdDiffInMeans, 0.9177837044418384, 0.3247803057145084},
          {Ix::FishersZ, 0.4436716175206273, 0.14745358841226855}}},
        {"change and its SD",
         "Mean change, SD difference, N, in each group, Pre/Post Corr",
         {6, 4, 20, 2, 4.5, 22, 0.5, 3, 1},
         {{Ix::DifferenceInMeans, 4, 1.319187508210331},
          {Ix::StdDiffInMeans, 0.9368105395291608, 0.32542638340144897},
          {Ix::HedgesG, 0.9191348689720068, 0.3192862629599122}}},
        {"change and t",
         "Mean change in each group, t within groups, N",
         {6, 5, 20, 2, 2, 22, 0.5, 3, 2},
         {{Ix::DifferenceInMeans, 4, 1.5518756979275699},
          {Ix::StdDiffInMeans, 0.7963451988822424, 0.3209425756002343}}},
        {"change and p",
         "Mean change in each group, p within groups, N",
         {6, 0.001, 20, 2, 0.04, 22, 2, 0.5, 3, 1},
         {{Ix::DifferenceInMeans, 4, 1.7563244089221572},
          {Ix::StdDiffInMeans, 0.7036449274568062, 0.3183532405041516}}},
        {"change and F by post SD, negative",
         "Mean change in each group, F for difference between changes, N",
         {6, 20, 2, 22, 9, 0.7, 2, 1},
         {{Ix::DifferenceInMeans, -4, 1.3333333333333335},
          {Ix::StdDiffInMeans, -0.7179516316957191, 0.31873328833196746}}},
        {"change and F by change SD, negative",
         "Mean change in each group, F for difference between changes, N",
         {6, 20, 2, 22, 9, 0.7, 2, 2},
         {{Ix::StdDiffInMeans, -0.9268715709799871, 0.3250874008352495},
          {Ix::HedgesG, -0.9093834281313081, 0.3189536762911882}}},
        {"F alone",
         kFOnly,
         {20, 22, 9, none, 3, 2},
         {{Ix::StdDiffInMeans, 0.9268715709799871, 0.3250874008352495},
          {Ix::OddsRatio, 5.3717786110618695}}},
    };
    for (const ValidCase& c : cases)
        CheckValid(c);

    // Without the correlation the SD of the changes is unknown: d by the
    // post SDs stands, the raw difference does not.
    const Row noCorr(kPrePostSD, PrePost(none, 3, 1));
    EXPECT_EQ(noCorr.ws.RowErrors, "");
    EXPECT_TRUE(IsNear(noCorr.ws.Es(1, Ix::StdDiffInMeans), 0.7592409013141527));
    EXPECT_TRUE(noCorr.ws.IsValid(Ix::OddsRatio));
    EXPECT_FALSE(noCorr.ws.IsValid(Ix::DifferenceInMeans));
    EXPECT_NE(noCorr.ws.EsFormula[Ix::DifferenceInMeans].find(
                  "To calculate the effect size and standard error using this format, the "
                  "pre-post correlation is required"),
              std::string::npos);
    EXPECT_FALSE(Row(kFOnly, {20, 22, 9, none, 3, 2}).ws.IsValid(Ix::DifferenceInMeans));

    const Row separate = WithOptions(kPrePostSD, PrePost(0.6, 3, 1), 0.5, 2, 1);
    EXPECT_TRUE(IsNear(separate.ws.Es(2, Ix::DifferenceInMeans), 1.3399457248166977));
    EXPECT_EQ(separate.ws.Es(2, Ix::StdDiffInMeans),
              Row(kPrePostSD, PrePost(0.6, 3, 1)).ws.Es(2, Ix::StdDiffInMeans));
}

TEST(PrePostMeans, RefusedRows) {
    const RefusedCase cases[] = {
        {"auto direction",
         kPrePostSD,
         PrePost(0.6, 1, 1),
         {"Effect direction cannot be determined automatically"}},
        {"change SD without the correlation",
         kPrePostSD,
         PrePost(none, 3, 2),
         {"To standardize by change-scores using this format, the pre-post correlation is "
          "required"}},
        {"F by post SD",
         kFOnly,
         {20, 22, 9, none, 3, 1},
         {"With this format, must standardize by change score SD"}},
        {"same change in both groups",
         "Means pre and post in each group, F for difference between changes, N",
         {10, 12, 20, 10, 12, 22, 9, 0.5, 3, 2},
         {"Cannot compute when both groups have the same mean change value"}},
        {"p of 1 on two tails",
         "Mean change in each group, p within groups, N",
         {6, 1, 20, 2, 0.04, 22, 2, 0.5, 3, 1},
         {"Cannot compute when p-value = 1.0 and tails = 2", "or p-value = 0.5 and tails = 1"}},
    };
    for (const RefusedCase& c : cases)
        CheckRefused(c);
}

}  // namespace
}  // namespace synthara::effectsize
