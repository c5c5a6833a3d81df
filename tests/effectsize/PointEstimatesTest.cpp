// Effects the user computed already: ratios in logs, differences, means'
// differences and correlations, against numbers worked by hand from the
// formulas (normal and t quantiles to 30 digits), and the refused rows.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "RowCases.h"

namespace synthara::effectsize {
namespace {

constexpr auto none = std::nullopt;

// Hazard ratios and generic differences in each form are reference cases.
TEST(PointEstimates, EveryProcedure) {
    const ValidCase cases[] = {
        // Both limits: half the log width over z; the odds ratio goes on to d, r and z.
        {"odds ratio, both limits",
         "Odds ratio and confidence limits",
         {2, 1, 4, 0.95},
         {{Ix::LogOddsRatio, 0.69314718055994529, 0.35365301915106695},
          {Ix::OddsRatio, 2},
          {Ix::StdDiffInMeans, 0.38215206942284446, 0.19497912841113982},
          {Ix::StdPairedDifference, 0.38215206942284446, 0.19497912841113982},
          {Ix::Correlation, 0.18768063369286375, 0.092384231892464475},
          {Ix::FishersZ, 0.18993203291401789, 0.095757184914245688}}},
        {"odds ratio, lower limit only",
         "Odds ratio and confidence limits",
         {2, 1.2, none, 0.95},
         {{Ix::LogOddsRatio, 0.69314718055994529, 0.26063010738733877}}},
        {"rate ratio, upper limit only",
         "Rate ratio and confidence limits",
         {0.8, none, 1.1, 0.99},
         {{Ix::LogRateRatio, -0.22314355131420976, 0.12363153516414251}, {Ix::RateRatio, 0.8}}},
        {"log risk ratio and SE",
         "Log risk ratio and standard error",
         {-0.3, 0.2},
         {{Ix::LogRiskRatio, -0.3, 0.2}, {Ix::RiskRatio, 0.74081822068171788}}},
        // The name with "in raw units" is the one analysed in logs.
        {"generic ratio, lower limit at 90%",
         "Point estimate and condfidence limits in raw units",
         {1.5, 1, none, 0.9},
         {{Ix::PointLog, 0.40546510810816438, 0.24650528257620252}, {Ix::PointRaw, 1.5}}},
        {"risk difference, both limits",
         "Risk difference and confidence limits",
         {0.1, 0.02, 0.18, 0.95},
         {{Ix::RiskDifference, 0.1, 0.040817076553972313}}},
        {"rate difference and SE",
         "Rate difference and standard error",
         {0.3, 0.1},
         {{Ix::RateDifference, 0.3, 0.1}}},
        // Independent groups: d from the raw difference's SD, then the chain.
        {"raw difference and SE with sizes",
         "Raw difference in means and standard error (independent groups)",
         {2, 0.75, 20, 25, 1},
         {{Ix::DifferenceInMeans, 2, 0.75},
          {Ix::StdDiffInMeans, 0.8, 0.31162655713387316},
          {Ix::HedgesG, 0.7859649122807018, 0.3061594245525771},
          {Ix::Correlation, 0.3694056772316881, 0.12425967710414232},
          {Ix::LogOddsRatio, 1.451039491387373, 0.5652280512079167},
          {Ix::N3, 45}}},
        {"raw difference, limits at 90% with t of 43 df",
         "Raw difference in means and confidence limits (independent groups)",
         {2, 0.5, 3.5, 20, 25, 0.9, 1},
         {{Ix::DifferenceInMeans, 2, 0.89228846659597882},
          {Ix::StdDiffInMeans, 0.67242828128100784, 0.30825962710868199},
          {Ix::HedgesG, 0.66063129389011299, 0.30285156347519632}}},
        // g back to d through J, and d forward to the same g.
        {"Hedges's g, both limits",
         "Hedges's g (standardized by pooled within-groups SD) and confidence limits",
         {0.49122807017543857, 0.49122807017543857 - 0.6, 0.49122807017543857 + 0.6, 20, 25, 0.95,
          1},
         {{Ix::HedgesG, 0.49122807017543857, 0.29751689436282608},
          {Ix::StdDiffInMeans, 0.5, 0.30282969604787652},
          {Ix::Correlation, 0.24112141108520604, 0.13754689799988398}}},
        // Without sizes r takes both as 1.
        {"Cohen's d and SE, no sizes",
         "Cohen's d (standardized by pooled within-groups SD) and standard error",
         {0.5, 0.3, none, none, 1},
         {{Ix::StdDiffInMeans, 0.5, 0.3},
          {Ix::StdPairedDifference, 0.5, 0.3},
          {Ix::Correlation, 0.24253562503633297, 0.13696129413816449},
          {Ix::FishersZ, 0.24746646154726346},
          {Ix::LogOddsRatio, 0.90689968211710803, 0.54413980927026484}}},
        {"Cohen's d forced negative",
         "Cohen's d (standardized by pooled within-groups SD) and variance",
         {0.5, 0.09, none, none, 2},
         {{Ix::StdDiffInMeans, -0.5, 0.3}, {Ix::Correlation, -0.24253562503633297}}},
        // Paired: d (change) from the raw difference, then d by the imputed r of .5.
        {"paired raw difference and SE",
         "Raw mean difference and standard error (paired study)",
         {3, 1, 20, 1},
         {{Ix::DifferenceInMeans, 3, 1},
          {Ix::StdPairedDifference, 0.67082039324993692, 0.24748737341529164},
          {Ix::StdDiffInMeans, 0.67082039324993692, 0.24748737341529164},
          {Ix::HedgesG, 0.6439875775199394, 0.23758787847867996},
          {Ix::Correlation, 0.31799936400190798},
          {Ix::N3, 20}}},
        {"paired d, both limits with t of 29 df",
         "Cohen's d (standardized by SD of difference scores) and confidence limits",
         {0.4, 0.1, 0.7, 30, 0.95, 1},
         {{Ix::StdPairedDifference, 0.4, 0.14668279484115485},
          {Ix::HedgesG, 0.38956521739130434, 0.14285628714964646}}},
        {"paired d and variance (no wizard path)",
         "Cohen's d (standardized by SD of difference scores) and variance",
         {0.4, 0.04, 30, 3},
         {{Ix::StdPairedDifference, 0.4, 0.2}, {Ix::StdDiffInMeans, 0.4, 0.2}}},
        // Correlations: r, Z and N by the format, then d, g and the odds ratio
        // (a correlation with its N is a reference case).
        {"correlation and t: N of 29",
         "Correlation and t-value",
         {0.5, 3, 1},
         {{Ix::Correlation, 0.5, 0.14708710135363803},
          {Ix::FishersZ, 0.54930614433405489, 0.19611613513818404},
          {Ix::HedgesG, 1.1223257569293659, 0.44021237963004844}}},
        {"t and N",
         "t-value and sample size for correlation",
         {2.5, 30, 3},
         {{Ix::Correlation, 0.42717882885838049, 0.1573314602171243},
          {Ix::HedgesG, 0.91937304245487705, 0.41419052762637487}}},
        {"two-tailed p and N",
         "p-value and sample size for correlation",
         {0.05, 2, 30, 3},
         {{Ix::Correlation, 0.36100690773323307, 0.16736884175462333},
          {Ix::LogOddsRatio, 1.4042890410535411, 0.74861601306848247}}},
        // The SE gives N back, and r's SE comes out as entered.
        {"correlation and SE: N of 85.81",
         "Correlation and standard error",
         {0.3, 0.1, 1},
         {{Ix::Correlation, 0.3, 0.1},
          {Ix::FishersZ, 0.3095196042031117, 0.10989010989010989},
          {Ix::HedgesG, 0.62333832679106305, 0.22832905743262383}}},
        // N = 1 / SE + 3 = 13, not 103: only g's df shows it.
        {"Fisher's Z and SE",
         "Fisher's Z and standard error",
         {0.3, 0.1, 1},
         {{Ix::Correlation, 0.2913126124515909, 0.091513696182662918},
          {Ix::FishersZ, 0.3, 0.1},
          {Ix::HedgesG, 0.56654938315747461, 0.19448158402397403}}},
        {"Fisher's Z and N forced negative",
         "Fisher's Z and sample size",
         {0.5, 40, 2},
         {{Ix::Correlation, -0.46211715726000974, 0.12929121086819251},
          {Ix::FishersZ, -0.5, 0.16439898730535729},
          {Ix::StdDiffInMeans, -1.0421906109874948, 0.37076113347831013},
          {Ix::LogOddsRatio, -1.890324667619987, 0.6724863081857162}}},
    };
    for (const ValidCase& c : cases)
        CheckValid(c);
}

TEST(PointEstimates, WhatEachFamilyLeavesOut) {
    struct Case {
        const char* what;
        const char* format;
        std::vector<std::optional<double>> values;
        std::vector<int> valid;
    };
    const Case cases[] = {
        {"risk ratio: no d",
         "Log risk ratio and variance",
         {-0.3, 0.04},
         {Ix::LogRiskRatio, Ix::RiskRatio}},
        {"odds ratio: no g",
         "Log odds ratio and standard error",
         {0.4, 0.2},
         {Ix::LogOddsRatio, Ix::OddsRatio, Ix::StdDiffInMeans, Ix::StdPairedDifference,
          Ix::Correlation, Ix::FishersZ}},
        {"risk difference alone",
         "Risk difference and variance",
         {0.1, 0.01},
         {Ix::RiskDifference}},
        {"raw difference without sizes",
         "Raw difference in means and variance (independent groups)",
         {2, 0.5, none, none, 1},
         {Ix::DifferenceInMeans}},
        {"raw difference with one size",
         "Raw difference in means and standard error (independent groups)",
         {2, 0.5, 20, none, 1},
         {Ix::DifferenceInMeans}},
        {"g without sizes",
         "Hedges's g (standardized by pooled within-groups SD) and standard error",
         {0.5, 0.3, none, none, 1},
         {Ix::HedgesG}},
        {"d without sizes: no g",
         "Cohen's d (standardized by pooled within-groups SD) and standard error",
         {0.5, 0.3, none, none, 1},
         {Ix::LogOddsRatio, Ix::OddsRatio, Ix::StdDiffInMeans, Ix::StdPairedDifference,
          Ix::Correlation, Ix::FishersZ}},
        {"paired raw difference without n",
         "Raw mean difference and variance (paired study)",
         {3, 1, none, 1},
         {Ix::DifferenceInMeans}},
        {"correlation: no paired d",
         "Correlation and sample size",
         {0.3, 50, 1},
         {Ix::LogOddsRatio, Ix::OddsRatio, Ix::StdDiffInMeans, Ix::HedgesG, Ix::Correlation,
          Ix::FishersZ}},
        // The artifacts are evaluated and kept by no index, without a word.
        {"artifacts", "Correlation, sample size, and artifacts", {0.3, 50, 0.8, 0.9, 0.7, 1}, {}},
    };
    for (const Case& c : cases) {
        const Row row(c.format, c.values);
        EXPECT_EQ(row.ws.RowErrors, "") << c.what;
        EXPECT_EQ(row.ValidIndices(), c.valid) << c.what;
    }
    const Row g("Hedges's g (standardized by pooled within-groups SD) and standard error",
                {0.5, 0.3, none, none, 1});
    EXPECT_EQ(g.ws.EsFormula[Ix::StdDiffInMeans], "Cannot compute without sample size.");
    const Row risk("Log risk ratio and variance", {-0.3, 0.04});
    EXPECT_EQ(risk.ws.EsFormula[Ix::LogOddsRatio], "Odds ratio cannot be computed from the data");
    EXPECT_EQ(risk.ws.EsFormula[Ix::OddsRatio], "Odds ratio cannot be computed from the data");
    const Row odds("Log odds ratio and variance", {0.4, 0.04});
    EXPECT_EQ(odds.ws.EsFormula[Ix::LogHazardRatio],
              "Hazard ratio cannot be computed from the data.");
    const Row tooSmall("Correlation and t-value", {0.9, 1, 1});
    EXPECT_TRUE(tooSmall.ValidIndices().empty());
    EXPECT_EQ(
        tooSmall.ws.EsFormula[Ix::Correlation],
        "Starting with\r\nCorrelation and t-value\r\n\r\nCannot compute when calculated n < 3.");
}

TEST(PointEstimates, RefusedRows) {
    const RefusedCase cases[] = {
        {"no limits",
         "Odds ratio and confidence limits",
         {2, none, none, 0.95},
         {"The lower and upper limits are missing"}},
        {"log beyond 10",
         "Log odds ratio and standard error",
         {12, 0.2},
         {"Point estimate must fall in range of -10 to +10"}},
        {"variance of zero",
         "Log hazard ratio and variance",
         {0.5, 0},
         {"Variance must exceed zero"}},
        // The difference's variance is told in the words for a standard error.
        {"difference's variance of zero",
         "Risk difference and variance",
         {0.1, 0},
         {"Standard error must exceed zero"}},
        {"one size of 1",
         "Raw difference in means and standard error (independent groups)",
         {2, 0.5, 1, 20, 1},
         {"First sample size must be 2 or greater"}},
        {"limits without sizes",
         "Cohen's d (standardized by pooled within-groups SD) and confidence limits",
         {0.5, 0.1, 0.9, none, none, 0.95, 1},
         {"First sample size is missing", "Second sample size is missing"}},
        // A log odds ratio above 620 from d refuses the whole row.
        {"d too large for an odds ratio",
         "Cohen's d (standardized by pooled within-groups SD) and standard error",
         {400, 1, 20, 25, 1},
         {"Cannot compute with entered data"}},
        {"paired d too large",
         "Cohen's d (standardized by SD of difference scores) and standard error",
         {400, 1, 20, 1},
         {"Cannot compute with entered data"}},
        {"correlation of 1",
         "Correlation and sample size",
         {1, 50, 1},
         {"Correlation must fall in the range of -.9999 to +.9999"}},
        {"SE of a correlation above 1",
         "Correlation and standard error",
         {0.3, 1.5, 1},
         {"Standard error cannot exceed 1"}},
        {"Fisher's Z of 5",
         "Fisher's Z and variance",
         {5, 0.1, 1},
         {"Fisher's Z must fall in the range of -4.95 to +4.95"}},
        {"N of 3", "Fisher's Z and sample size", {0.5, 3, 1}, {"Sample size must be 4 or greater"}},
        {"t alone with Auto",
         "t-value and sample size for correlation",
         {2.5, 30, 1},
         {"Effect direction cannot be determined automatically"}},
        {"p without tails",
         "p-value and sample size for correlation",
         {0.05, none, 30, 3},
         {"The number of tails is missing"}},
    };
    for (const RefusedCase& c : cases)
        CheckRefused(c);
}

TEST(PointEstimates, Trails) {
    const Row odds("Odds ratio and confidence limits", {2, 1.2, none, 0.95});
    EXPECT_EQ(odds.ws.EsFormula[Ix::LogOddsRatio],
              "Starting with\r\nPoint estimate and confidence interval for Odds ratio\r\n"
              "All computations use the logs of the provided values.\r\n"
              "LLower = Log(Lower limit)\r\nLUpper = Log(Upper limit)\r\n\r\n"
              "OddsRatio = Given\r\nLogOddsRatio = Log(OddsRatio)\r\n"
              "LogOddsSE = (LogOddsRatio - LLower) / Z\r\n"
              "LLower = Log(1.200) = 0.182\r\nLogOddsRatio = Log(2.000) = 0.693\r\n"
              "LogOddsSE = (0.693 - 0.182) / 1.960 = 0.261");
    const Row rd("Risk difference and variance", {0.1, 0.01});
    EXPECT_EQ(rd.ws.EsFormula[Ix::RiskDifference],
              "Starting with\r\nPoint estimate and variance for Risk difference\r\n"
              "RiskDiff = Given\r\nRiskDiff = Sqr(RiskDiffVariance)\r\n"
              "RiskDiff = 0.100\r\nRiskDiffSE = Sqr(0.010) = 0.100");
    const Row raw("Raw difference in means and standard error (independent groups)",
                  {2, 0.75, 20, 25, 1});
    EXPECT_EQ(raw.ws.EsFormula[Ix::DifferenceInMeans],
              "Starting with\r\nPoint estimate and Standard error\r\n\r\nPoint estimate\r\n"
              "Point = Given\r\nPointSE = Given\r\nPoint = 2.000\r\nPointSE = 0.750");
    const Row corr("Correlation and standard error", {0.3, 0.1, 1});
    EXPECT_NE(corr.ws.EsFormula[Ix::Correlation].find(
                  "The program back-computes the sample size (N).\r\nRSq = Corr ^ 2\r\n"
                  "N = (((1 - RSq) ^ 2) / CorrSE ^ 2) + 3"),
              std::string::npos);
}

}  // namespace
}  // namespace synthara::effectsize
