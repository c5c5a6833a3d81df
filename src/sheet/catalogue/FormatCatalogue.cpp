// The data-entry formats as one table. Each entry is a format's whole
// definition, read alike by DefineFormat, the wizard and the computation, so a
// format changes in one place only. Names are keys stored in users' files and
// are compared letter for letter: their odd spellings must not be mended.
#include "sheet/catalogue/FormatCatalogue.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <variant>

namespace synthara::sheet {
namespace {

constexpr RoleDef Dec(std::string_view name, std::string_view piece1 = {},
                      std::string_view piece2 = {}, std::string_view piece3 = {}) {
    return RoleDef{name, false, {piece1, piece2, piece3}};
}

constexpr RoleDef Whole(std::string_view name, std::string_view piece1 = {},
                        std::string_view piece2 = {}, std::string_view piece3 = {}) {
    return RoleDef{name, true, {piece1, piece2, piece3}};
}

// A role whose value a procedure reads by its meaning.
constexpr RoleDef As(RoleKind kind, RoleDef role) {
    role.kind = kind;
    return role;
}

using enum RoleKind;

// Roles in entry order, with the pieces a column title is composed of.
// clang-format off
constexpr RoleDef kEventsRoles[] = {
    As(Events, Whole("Events")),
    As(SampleSize, Whole("Sample size")),
};
constexpr RoleDef kNonEventsRoles[] = {
    As(NonEvents, Whole("Non-events")),
    As(SampleSize, Whole("Sample size")),
};
constexpr RoleDef kEventsAndNonEventsRoles[] = {
    As(Events, Whole("Events")),
    As(NonEvents, Whole("Non-events")),
};
constexpr RoleDef kEventRateRoles[] = {
    As(EventRate, Dec("Event rate")),
    As(SampleSize, Whole("Sample size")),
};
constexpr RoleDef kMeanSDRoles[] = {
    As(Mean, Dec("Mean")),
    As(SD, Dec("Standard deviation")),
    As(SampleSize, Whole("Sample size")),
};
constexpr RoleDef kMeanCIRoles[] = {
    As(Mean, Dec("Mean")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(SampleSize, Whole("Sample size")),
    As(ConfidenceLevel, Dec("Confidence level")),
};
constexpr RoleDef kMeanSERoles[] = {
    As(Mean, Dec("Mean")),
    As(StdErr, Dec("Standard error")),
};
constexpr RoleDef kMeanVarianceRoles[] = {
    As(Mean, Dec("Mean")),
    As(Variance, Dec("Variance")),
};
constexpr RoleDef kEventsPersonYearsInOneGroupRoles[] = {
    As(Events, Whole("Events")),
    As(PersonYears, Dec("Person Years")),
};
constexpr RoleDef kEventRatePersonYearsInOneGroupRoles[] = {
    As(PYRate, Dec("Event rate")),
    As(PersonYears, Dec("Person Years")),
};
constexpr RoleDef kCohort2x2EventsRoles[] = {
    As(EventsA, Whole("Group-A Events", "Group-A", "Events")),
    As(TotalNA, Whole("Group-A Total N", "Group-A", "Total N")),
    As(EventsB, Whole("Group-B Events", "Group-B", "Events")),
    As(TotalNB, Whole("Group-B Total N", "Group-B", "Total N")),
};
constexpr RoleDef kCohort2x2NonEventsRoles[] = {
    As(NonEventsA, Whole("Group-A Non-events", "Group-A", "Non-events")),
    As(TotalNA, Whole("Group-A Total N", "Group-A", "Total N")),
    As(NonEventsB, Whole("Group-B Non-events", "Group-B", "Non-events")),
    As(TotalNB, Whole("Group-B Total N", "Group-B", "Total N")),
};
constexpr RoleDef kCohort2x2AllCellsRoles[] = {
    As(EventsA, Whole("Group-A Events", "Group-A", "Events")),
    As(NonEventsA, Whole("Group-A Non-events", "Group-A", "Non-events")),
    As(EventsB, Whole("Group-B Events", "Group-B", "Events")),
    As(NonEventsB, Whole("Group-B Non-events", "Group-B", "Non-events")),
};
constexpr RoleDef kCohort2x2RatesRoles[] = {
    As(RateA, Dec("Group-A Event rate", "Group-A", "Events", "rate")),
    As(TotalNA, Whole("Group-A Total N", "Group-A", "Total N")),
    As(RateB, Dec("Group-B Event rate", "Group-B", "Events", "rate")),
    As(TotalNB, Whole("Group-B Total N", "Group-B", "Total N")),
};
constexpr RoleDef kChiSquaredFor2x2Roles[] = {
    As(ChiSquared, Dec("Chi-squared", "Chi Squared")),
    As(SampleSize, Whole("Total N", "Total N")),
    As(EffectDirection, Dec("Effect direction", "Effect direction")),
};
constexpr RoleDef kMatched2x2EventPairsRoles[] = {
    As(PairsBothEvents, Whole("Both Events", "Both", "Events")),
    As(PairsOnlyA, Whole("Group-A Only", "Only", "Group-A", "Events")),
    As(PairsOnlyB, Whole("Group-B Only", "Only", "Group-B", "Events")),
    As(PairsBothNonEvents, Whole("Both Non-events", "Both", "Non-events")),
};
constexpr RoleDef kMatched2x2EventsRoles[] = {
    As(EventsA, Whole("Group-A Events", "Group-A", "Events")),
    As(TotalNA, Whole("Group-A Total N", "Group-A", "Total N")),
    As(EventsB, Whole("Group-B Events", "Group-B", "Events")),
    As(TotalNB, Whole("Group-B Total N", "Group-B", "Total N")),
    As(ExternalCorrelation, Dec("External correlation")),
};
constexpr RoleDef kMatched2x2NonEventsRoles[] = {
    As(NonEventsA, Whole("Group-A Non-events", "Group-A", "Non-events")),
    As(TotalNA, Whole("Group-A Total N", "Group-A", "Total N")),
    As(NonEventsB, Whole("Group-B Non-events", "Group-B", "Non-events")),
    As(TotalNB, Whole("Group-B Total N", "Group-B", "Total N")),
    As(ExternalCorrelation, Dec("External correlation")),
};
constexpr RoleDef kMatched2x2AllCellsRoles[] = {
    As(EventsA, Whole("Group-A Events", "Group-A", "Events")),
    As(NonEventsA, Whole("Group-A Non-events", "Group-A", "Non-events")),
    As(EventsB, Whole("Group-B Events", "Group-B", "Events")),
    As(NonEventsB, Whole("Group-B Non-events", "Group-B", "Non-events")),
    As(ExternalCorrelation, Dec("External correlation")),
};
constexpr RoleDef kMatched2x2RatesRoles[] = {
    As(RateA, Whole("Group-A Event rate", "Group-A", "Events", "rate")),
    As(TotalNA, Whole("Group-A Total N", "Group-A", "Total N")),
    As(RateB, Whole("Group-B Event rate", "Group-B", "Events", "rate")),
    As(TotalNB, Whole("Group-B Total N", "Group-B", "Total N")),
    As(ExternalCorrelation, Dec("External correlation")),
};
constexpr RoleDef kCaseControl2x2ExpUnexpRoles[] = {
    As(ExposedCases, Whole("Exposed Cases", "Exposed", "Cases")),
    As(UnexposedCases, Whole("Unexposed Cases", "Unexposed", "Cases")),
    As(ExposedControls, Whole("Exposed Controls", "Exposed", "Controls")),
    As(UnexposedControls, Whole("Unexposed Controls", "Unexposed", "Controls")),
};
constexpr RoleDef kCaseControl2x2ExpTotalRoles[] = {
    As(ExposedCases, Whole("Exposed Cases", "Exposed", "Cases")),
    As(TotalCases, Whole("Total Cases", "Total", "Cases")),
    As(ExposedControls, Whole("Exposed Controls", "Exposed", "Controls")),
    As(TotalControls, Whole("Total Controls", "Total", "Controls")),
};
constexpr RoleDef kCaseControl2x2ProportionsRoles[] = {
    As(PropnCasesExposed, Dec("Propn Cases Exposed", "Propn", "Cases", "Exposed")),
    As(TotalCases, Whole("Total Cases", "Total", "Cases")),
    As(PropnControlsExposed, Dec("Propn Controls Exposed", "Propn", "Controls", "Exposed")),
    As(TotalControls, Whole("Total Controls", "Total", "Controls")),
};
constexpr RoleDef kOddsRatioRoles[] = {
    As(Ratio, Dec("Odds ratio")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(ConfidenceLevel, Dec("Confidence level")),
};
constexpr RoleDef kLogORSERoles[] = {
    As(LogRatio, Dec("Odds ratio (log)")),
    As(StdErr, Dec("Std error (log)")),
};
constexpr RoleDef kLogORVarRoles[] = {
    As(LogRatio, Dec("Odds ratio (log)")),
    As(Variance, Dec("Variance (log)")),
};
constexpr RoleDef kOERoles[] = {
    As(PetoOE, Dec("O-E")),
    As(PetoV, Dec("V")),
};
constexpr RoleDef kRiskRatioRoles[] = {
    As(Ratio, Dec("Risk ratio")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(ConfidenceLevel, Dec("Confidence level")),
};
constexpr RoleDef kLogRRSERoles[] = {
    As(LogRatio, Dec("Risk ratio (log)")),
    As(StdErr, Dec("Standard error (log)")),
};
constexpr RoleDef kLogRRVarRoles[] = {
    As(LogRatio, Dec("Risk ratio (log)")),
    As(Variance, Dec("Variance (log)")),
};
constexpr RoleDef kRiskDifferenceRoles[] = {
    As(PointEstimate, Dec("Risk difference")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(ConfidenceLevel, Dec("Confidence level")),
};
constexpr RoleDef kRDSERoles[] = {
    As(PointEstimate, Dec("Risk difference")),
    As(StdErr, Dec("Standard error")),
};
constexpr RoleDef kRDVarRoles[] = {
    As(PointEstimate, Dec("Risk difference")),
    As(Variance, Dec("Variance")),
};
constexpr RoleDef kIndependentGroupsMeansSDsRoles[] = {
    As(MeanA, Dec("Group-A Mean", "Group-A", "Mean")),
    As(SDA, Dec("Group-A Std-Dev", "Group-A", "Std-Dev")),
    As(TotalNA, Whole("Group-A Sample size", "Group-A", "Sample size")),
    As(MeanB, Dec("Group-B Mean", "Group-B", "Mean")),
    As(SDB, Dec("Group-B Std-Dev", "Group-B", "Std-Dev")),
    As(TotalNB, Whole("Group-B Sample size", "Group-B", "Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kIndependentGroupsDifferenceSDRoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(CommonSD, Dec("Common SD")),
    As(TotalNA, Whole("Group-A Sample size", "Group-A", "Sample size")),
    As(TotalNB, Whole("Group-B Sample size", "Group-B", "Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kIndependentGroupsStdDifferenceRoles[] = {
    As(CohensD, Dec("Std diff in means")),
    As(TotalNA, Whole("Group-A Sample size", "Group-A", "Sample size")),
    As(TotalNB, Whole("Group-B Sample size", "Group-B", "Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kIndependentGroupsMeansTRoles[] = {
    As(MeanA, Dec("Group-A Mean", "Group-A", "Mean")),
    As(TotalNA, Whole("Group-A Sample size", "Group-A", "Sample size")),
    As(MeanB, Dec("Group-B Mean", "Group-B", "Mean")),
    As(TotalNB, Whole("Group-B Sample size", "Group-B", "Sample size")),
    As(TValue, Dec("Independent groups t-value")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kIndependentGroupsDifferenceTRoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(TotalNA, Whole("Group-A Sample size", "Group-A", "Sample size")),
    As(TotalNB, Whole("Group-B Sample size", "Group-B", "Sample size")),
    As(TValue, Dec("Independent groups t-value")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kIndependentGroupsSampleSizeTRoles[] = {
    As(TotalNA, Whole("Group-A Sample size", "Group-A", "Sample size")),
    As(TotalNB, Whole("Group-B Sample size", "Group-B", "Sample size")),
    As(TValue, Dec("Independent groups t-value")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kIndependentGroupsMeansPRoles[] = {
    As(MeanA, Dec("Group-A Mean", "Group-A", "Mean")),
    As(TotalNA, Whole("Group-A Sample size", "Group-A", "Sample size")),
    As(MeanB, Dec("Group-B Mean", "Group-B", "Mean")),
    As(TotalNB, Whole("Group-B Sample size", "Group-B", "Sample size")),
    As(PValue, Dec("Independent groups p-value")),
    As(Tails, Dec("Tails")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kIndependentGroupsDifferencePRoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(TotalNA, Whole("Group-A Sample size", "Group-A", "Sample size")),
    As(TotalNB, Whole("Group-B Sample size", "Group-B", "Sample size")),
    As(PValue, Dec("Independent groups p-value")),
    As(Tails, Dec("Tails")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kIndependentGroupsSampleSizePRoles[] = {
    As(TotalNA, Whole("Group-A Sample size", "Group-A", "Sample size")),
    As(TotalNB, Whole("Group-B Sample size", "Group-B", "Sample size")),
    As(PValue, Dec("Independent groups p-value")),
    As(Tails, Dec("Tails")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kMeansSDInEachGroupRoles[] = {
    As(PreMeanA, Dec("Pre mean (A)", "Group-A", "Pre", "Mean")),
    As(PreSDA, Dec("Pre SD (A)", "Group-A", "Pre", "SD")),
    As(PostMeanA, Dec("Post mean (A)", "Group-A", "Post", "Mean")),
    As(PostSDA, Dec("Post SD (A)", "Group-A", "Post", "SD")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample", "size")),
    As(PreMeanB, Dec("Pre mean (B)", "Group-B", "Pre", "Mean")),
    As(PreSDB, Dec("Pre SD (B)", "Group-B", "Pre", "SD")),
    As(PostMeanB, Dec("Post mean (B)", "Group-B", "Post", "Mean")),
    As(PostSDB, Dec("Post SD (B)", "Group-B", "Post", "SD")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample", "size")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kMeansSDDifferenceInEachGroupRoles[] = {
    As(PreMeanA, Dec("Pre mean (A)", "Group-A", "Pre", "Mean")),
    As(PostMeanA, Dec("Post mean (A)", "Group-A", "Post", "Mean")),
    As(ChangeSDA, Dec("Difference SD (A)", "Group-A", "Difference", "SD")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample", "size")),
    As(PreMeanB, Dec("Pre mean (B)", "Group-B", "Pre", "Mean")),
    As(PostMeanB, Dec("Post mean (B)", "Group-B", "Post", "Mean")),
    As(ChangeSDB, Dec("DIfference SD (B)", "Group-B", "Difference", "SD")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample", "size")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kMeansTInEachGroupRoles[] = {
    As(PreMeanA, Dec("Pre mean (A)", "Group-A", "Pre", "Mean")),
    As(PostMeanA, Dec("Post mean (A)", "Group-A", "Post", "Mean")),
    As(TChangeA, Dec("Paired t for change (A)", "Group-A", "Paired t for change")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample", "size")),
    As(PreMeanB, Dec("Pre mean (B)", "Group-B", "Pre", "Mean")),
    As(PostMeanB, Dec("Post mean (B)", "Group-B", "Post", "Mean")),
    As(TChangeB, Dec("Paired t for change (B)", "Group-B", "Paired t for change")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample", "size")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kMeansPInEachGroupRoles[] = {
    As(PreMeanA, Dec("Pre mean (A)", "Group-A", "Pre", "Mean")),
    As(PostMeanA, Dec("Post mean (A)", "Group-A", "Post", "Mean")),
    As(PChangeA, Dec("Paired p for change (A)", "Group-A", "Paired p for change")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample", "size")),
    As(PreMeanB, Dec("Pre mean (B)", "Group-B", "Pre", "Mean")),
    As(PostMeanB, Dec("Post mean (B)", "Group-B", "Post", "Mean")),
    As(PChangeB, Dec("Paired p for change (B)", "Group-B", "Paired p for change")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample", "size")),
    As(Tails, Dec("Tails for p-values")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kMeansFForDiffInChangeRoles[] = {
    As(PreMeanA, Dec("Pre mean (A)", "Group-A", "Pre", "Mean")),
    As(PostMeanA, Dec("Post mean (A)", "Group-A", "Post", "Mean")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample", "size")),
    As(PreMeanB, Dec("Pre mean (B)", "Group-B", "Pre", "Mean")),
    As(PostMeanB, Dec("Post mean (B)", "Group-B", "Post", "Mean")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample", "size")),
    As(FValue, Dec("F for difference")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kChangeInEachGroupRoles[] = {
    As(MeanChangeA, Dec("Mean change (A)", "Group-A", "Mean change")),
    As(PreSDA, Dec("SD Pre (A)", "Group-A", "Pre", "SD")),
    As(PostSDA, Dec("SD Post (A)", "Group-A", "Post", "SD")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample size")),
    As(MeanChangeB, Dec("Mean change (B)", "Group-B", "Mean change")),
    As(PreSDB, Dec("SD Pre (B)", "Group-B", "Pre", "SD")),
    As(PostSDB, Dec("SD Post (B)", "Group-B", "Post", "SD")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample size")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kMeanChangeSDDifferenceInEachGroupRoles[] = {
    As(MeanChangeA, Dec("Mean change (A)", "Group-A", "Mean", "Difference")),
    As(ChangeSDA, Dec("Difference SD (A)", "Group-A", "Difference", "SD")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample", "size")),
    As(MeanChangeB, Dec("Mean change (B)", "Group-B", "Mean", "Difference")),
    As(ChangeSDB, Dec("DIfference SD (B)", "Group-B", "Difference", "SD")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample", "size")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kChangeTInEachGroupRoles[] = {
    As(MeanChangeA, Dec("Mean change (A)", "Group-A", "Mean change")),
    As(TChangeA, Dec("Paired t for change (A)", "Group-A", "Paired t for change")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample size")),
    As(MeanChangeB, Dec("Mean change (B)", "Group-B", "Mean change")),
    As(TChangeB, Dec("Paired t for change (B)", "Group-B", "Paired t for change")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample size")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kChangePInEachGroupRoles[] = {
    As(MeanChangeA, Dec("Mean change (A)", "Group-A", "Mean change")),
    As(PChangeA, Dec("Paired p for change (A)", "Group-A", "Paired p for change")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample size")),
    As(MeanChangeB, Dec("Mean change (B)", "Group-B", "Mean change")),
    As(PChangeB, Dec("Paired p for change (B)", "Group-B", "Paired p for change")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample size")),
    As(Tails, Dec("Tails for p-values")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kChangeFForDiffInChangeRoles[] = {
    As(MeanChangeA, Dec("Mean change (A)", "Group-A", "Mean change")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample size")),
    As(MeanChangeB, Dec("Mean change (B)", "Group-B", "Mean change")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample size")),
    As(FValue, Dec("F for difference")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kFForDiffInChangeRoles[] = {
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample size")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample size")),
    As(FValue, Dec("F for difference")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "correlation")),
    As(EffectDirection, Dec("Effect direction")),
    As(StandardizeBy, Dec("Standardize by")),
};
constexpr RoleDef kPairedGroupsDifferenceSDRoles[] = {
    As(MeanDifference, Dec("Mean Difference")),
    As(CommonSD, Dec("SD of Difference")),
    As(SampleSize, Whole("Sample size")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kPairedGroupsMeansSDRoles[] = {
    As(PreMean, Dec("Mean Pre", "Pre", "Mean")),
    As(PreSD, Dec("SD Pre", "Pre", "SD")),
    As(PostMean, Dec("Mean Post", "Post", "Mean")),
    As(PostSD, Dec("SD Post", "Post", "SD")),
    As(PrePostCorrelation, Dec("Pre/Post Correlation", "Pre", "Post", "Correlation")),
    As(SampleSize, Whole("Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kPairedGroupsMeansTRoles[] = {
    As(PreMean, Dec("Mean for treatment A", "Pre", "Mean")),
    As(PostMean, Dec("Mean for treatment B", "Post", "Mean")),
    As(SampleSize, Whole("Sample size")),
    As(TValue, Dec("Paired groups t-value")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kPairedGroupsMeansPRoles[] = {
    As(PreMean, Dec("Mean for treatment A", "Pre", "Mean")),
    As(PostMean, Dec("Mean for treatment B", "Post", "Mean")),
    As(SampleSize, Whole("Sample size")),
    As(PValue, Dec("Paired groups p-value")),
    As(Tails, Whole("Tails")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kPairedGroupsDifferenceTRoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(SampleSize, Whole("Sample size")),
    As(TValue, Dec("Paired groups t-value")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kPairedGroupsDifferencePRoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(SampleSize, Whole("Sample size")),
    As(PValue, Dec("Paired groups p-value")),
    As(Tails, Whole("Tails")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kPairedGroupsNTValueRoles[] = {
    As(SampleSize, Whole("Paired sample size")),
    As(TValue, Dec("t-value (paired t-test)")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kPairedGroupsNPValueRoles[] = {
    As(SampleSize, Whole("Paired sample size")),
    As(PValue, Dec("p-value (paired t-test)")),
    As(Tails, Dec("Tails")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kRawDifferenceIndepGroupsCIRoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample size")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample size")),
    As(ConfidenceLevel, Dec("Confidence level")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kRawDifferenceIndepGroupsSERoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(StdErr, Dec("Standard Error")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "N (Optional)")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "N (Optional)")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kRawDifferenceIndepGroupsVarianceRoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(Variance, Dec("Variance")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "N (Optional)")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "N (Optional)")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCohenDCIRoles[] = {
    As(CohensD, Dec("Std diff in means")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample size")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample size")),
    As(ConfidenceLevel, Dec("Confidence level")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCohenDSERoles[] = {
    As(CohensD, Dec("Std diff in means")),
    As(StdErr, Dec("Standard error")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "N (Optional)")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "N (Optional)")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCohenDVarianceRoles[] = {
    As(CohensD, Dec("Std diff in means")),
    As(Variance, Dec("Variance")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "N (Optional)")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "N (Optional)")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kHedgesGCIRoles[] = {
    As(HedgesG, Dec("Hedges's g")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "Sample size")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "Sample size")),
    As(ConfidenceLevel, Dec("Confidence level")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kHedgesGSERoles[] = {
    As(HedgesG, Dec("Hedges's g")),
    As(StdErr, Dec("Standard error")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "N (Optional)")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "N (Optional)")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kHedgesGVarianceRoles[] = {
    As(HedgesG, Dec("Hedges's g")),
    As(Variance, Dec("Variance")),
    As(TotalNA, Whole("Sample size (A)", "Group-A", "N (Optional)")),
    As(TotalNB, Whole("Sample size (B)", "Group-B", "N (Optional)")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kRawDifferencePairedCIRoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(SampleSize, Whole("Sample size")),
    As(ConfidenceLevel, Dec("Confidence level")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kRawDifferencePairedSERoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(StdErr, Dec("Standard Error")),
    As(SampleSize, Whole("Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kRawDifferencePairedVarianceRoles[] = {
    As(MeanDifference, Dec("Difference in means")),
    As(Variance, Dec("Variance")),
    As(SampleSize, Whole("Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCohenPairedDCIRoles[] = {
    As(CohensD, Dec("Std diff in means")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(SampleSize, Whole("Sample size")),
    As(ConfidenceLevel, Dec("Confidence level")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCohenPairedDSERoles[] = {
    As(CohensD, Dec("Std diff in means")),
    As(StdErr, Dec("Standard error")),
    As(SampleSize, Whole("Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCorrNRoles[] = {
    As(Correlation, Dec("Correlation")),
    As(SampleSize, Whole("Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCorrSERoles[] = {
    As(Correlation, Dec("Correlation")),
    As(StdErr, Dec("Standard error")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCorrVarRoles[] = {
    As(Correlation, Dec("Correlation")),
    As(Variance, Dec("Variance")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kFisherZNRoles[] = {
    As(FisherZ, Dec("Fisher's Z")),
    As(SampleSize, Whole("Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kFisherZSERoles[] = {
    As(FisherZ, Dec("Fisher's Z")),
    As(StdErr, Dec("Standard error")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kFisherZVarRoles[] = {
    As(FisherZ, Dec("Fisher's Z")),
    As(Variance, Dec("Variance")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCorrelationAndTValueRoles[] = {
    As(Correlation, Dec("Correlation")),
    As(TValue, Dec("t-value")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kTValueForCorrelationRoles[] = {
    As(TValue, Dec("t-value")),
    As(SampleSize, Dec("Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kPValueForCorrelationRoles[] = {
    As(PValue, Dec("p-value")),
    As(Tails, Dec("Tails")),
    As(SampleSize, Dec("Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kEventsPersonYearsRoles[] = {
    As(EventsA, Whole("Group-A Events", "Group-A", "Events")),
    As(PersonYearsA, Dec("Group-A Person Years", "Group-A", "Person years")),
    As(EventsB, Whole("Group-B Events", "Group-B", "Events")),
    As(PersonYearsB, Dec("Group-B Person Years", "Group-B", "Person years")),
};
constexpr RoleDef kRatesAndPersonYearsRoles[] = {
    As(PYRateA, Whole("Group-A Rate", "Group-A", "Events", "rate")),
    As(PersonYearsA, Whole("Group-A Person Years", "Group-A", "Person years")),
    As(PYRateB, Whole("Group-B Rate", "Group-B", "Events", "rate")),
    As(PersonYearsB, Whole("Group-B Person Years", "Group-B", "Person years")),
};
constexpr RoleDef kRateRatioCIRoles[] = {
    As(Ratio, Dec("Rate ratio")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(ConfidenceLevel, Dec("Confidence level")),
};
constexpr RoleDef kLogRateRatioSERoles[] = {
    As(LogRatio, Dec("Rate ratio (log)")),
    As(StdErr, Dec("Std error (log)")),
};
constexpr RoleDef kLogRateRatioVarRoles[] = {
    As(LogRatio, Dec("Rate ratio (log)")),
    As(Variance, Dec("Variance (log)")),
};
constexpr RoleDef kRateDifferenceCIRoles[] = {
    As(PointEstimate, Dec("Rate Difference")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(ConfidenceLevel, Dec("Confidence level")),
};
constexpr RoleDef kRateDifferenceSERoles[] = {
    As(PointEstimate, Dec("Rate Difference")),
    As(StdErr, Dec("Standard Error")),
};
constexpr RoleDef kRateDifferenceVarRoles[] = {
    As(PointEstimate, Dec("Rate Difference")),
    As(Variance, Dec("Variance")),
};
constexpr RoleDef kHazardRatioCIRoles[] = {
    As(Ratio, Dec("Hazard ratio")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(ConfidenceLevel, Dec("Confidence level")),
};
constexpr RoleDef kLogHazardRatioSERoles[] = {
    As(LogRatio, Dec("Hazard ratio (log)")),
    As(StdErr, Dec("Std error (log)")),
};
constexpr RoleDef kLogHazardRatioVarRoles[] = {
    As(LogRatio, Dec("Hazard ratio (log)")),
    As(Variance, Dec("Variance (log)")),
};
constexpr RoleDef kPointEstimateCIRoles[] = {
    As(PointEstimate, Dec("Point estimate")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(ConfidenceLevel, Dec("Confidence level")),
};
constexpr RoleDef kPointEstimateSERoles[] = {
    As(PointEstimate, Dec("Point estimate")),
    As(StdErr, Dec("Standard Error")),
};
constexpr RoleDef kPointEstimateVarianceRoles[] = {
    As(PointEstimate, Dec("Point estimate")),
    As(Variance, Dec("Variance")),
};
constexpr RoleDef kPointEstimateRawUnitsCIRoles[] = {
    As(Ratio, Dec("Point (raw)")),
    As(LowerLimit, Dec("Lower Limit")),
    As(UpperLimit, Dec("Upper Limit")),
    As(ConfidenceLevel, Dec("Confidence level")),
};
constexpr RoleDef kLogPointEstimateSERoles[] = {
    As(LogRatio, Dec("Point estimate (log)")),
    As(StdErr, Dec("Std error (log)")),
};
constexpr RoleDef kLogPointEstimateVarianceRoles[] = {
    As(LogRatio, Dec("Point estimate (log)")),
    As(Variance, Dec("Variance (log)")),
};
constexpr RoleDef kCohenPairedDVarianceRoles[] = {
    As(CohensD, Dec("Std diff in means")),
    As(Variance, Dec("Variance")),
    As(SampleSize, Whole("Sample size")),
    As(EffectDirection, Dec("Effect direction")),
};
constexpr RoleDef kCorrNAndArtifactsRoles[] = {
    As(Correlation, Dec("Correlation")),
    As(SampleSize, Whole("Sample size")),
    As(Rxx, Dec("Rxx")),
    As(Ryy, Dec("Ryy")),
    As(RangeRestriction, Dec("Range Restriction")),
    As(EffectDirection, Dec("Effect direction")),
};
// clang-format on

// The effect-size indices a block shows first; the first is its primary index.
constexpr std::string_view kShowEventRate[] = {"Event rate", "Logit event rate"};
constexpr std::string_view kShowMean[] = {"Mean"};
constexpr std::string_view kShowRate[] = {"Rate"};
constexpr std::string_view kShowOddsRatio[] = {"Odds ratio", "Log odds ratio"};
constexpr std::string_view kShowPetoOddsRatio[] = {"Peto odds ratio", "Log Peto odds ratio",
                                                   "Odds ratio"};
constexpr std::string_view kShowRiskRatio[] = {"Risk ratio", "Log risk ratio"};
constexpr std::string_view kShowRiskDifference[] = {"Risk difference"};
constexpr std::string_view kShowStdDiffInMeans[] = {"Std diff in means", "Hedges's g",
                                                    "Difference in means"};
constexpr std::string_view kShowHedgesG[] = {"Hedges's g", "Std diff in means",
                                             "Difference in means"};
constexpr std::string_view kShowCorrelation[] = {"Correlation", "Fisher's Z"};
constexpr std::string_view kShowRateRatio[] = {"Rate ratio", "Log rate ratio"};
constexpr std::string_view kShowRateDifference[] = {"Rate difference"};
constexpr std::string_view kShowHazardRatio[] = {"Hazard ratio", "Log hazard ratio"};
constexpr std::string_view kShowPointEstimate[] = {"Point estimate"};
constexpr std::string_view kShowPointLog[] = {"Point (log)", "Point (raw)"};
// One format outside the wizard names no indices to show first.
constexpr std::span<const std::string_view> kShowNothing{};

// In the wizard's order: branch, family, design, then the formats of a node.
constexpr FormatDef kFormats[] = {
    {"Events and sample size", "Events", kEventsRoles, Procedure::ComputeFromEventsOneGroup,
     kShowEventRate, Branch::OneGroup, "Dichotomous (number of events)", "Raw data", false,
     OneGroupEventsLayout{EventsEntry::EventsAndN}},
    {"Non-events and sample size", "Non-events", kNonEventsRoles,
     Procedure::ComputeFromEventsOneGroup, kShowEventRate, Branch::OneGroup,
     "Dichotomous (number of events)", "Raw data", false,
     OneGroupEventsLayout{EventsEntry::NonEventsAndN}},
    {"Events and non-events", "Events and non-events", kEventsAndNonEventsRoles,
     Procedure::ComputeFromEventsOneGroup, kShowEventRate, Branch::OneGroup,
     "Dichotomous (number of events)", "Raw data", false,
     OneGroupEventsLayout{EventsEntry::EventsAndNonEvents}},
    {"Event rate and sample size", "Event rate", kEventRateRoles,
     Procedure::ComputeFromEventsOneGroup, kShowEventRate, Branch::OneGroup,
     "Dichotomous (number of events)", "Raw data", false,
     OneGroupEventsLayout{EventsEntry::RateAndN}},
    {"Mean, SD and sample size", "Mean, SD", kMeanSDRoles, Procedure::ComputeFromMeansOneGroup,
     kShowMean, Branch::OneGroup, "Continuous (means)", "Raw data", false,
     OneGroupMeansLayout{MeanEntry::SDAndN}},
    {"Mean and confidence limits", "Mean, CI", kMeanCIRoles, Procedure::ComputeFromMeansOneGroup,
     kShowMean, Branch::OneGroup, "Continuous (means)", "Computed effect sizes", false,
     OneGroupMeansLayout{MeanEntry::Limits}},
    {"Mean and standard error", "Mean, SE", kMeanSERoles, Procedure::ComputeFromMeansOneGroup,
     kShowMean, Branch::OneGroup, "Continuous (means)", "Computed effect sizes", false,
     OneGroupMeansLayout{MeanEntry::StdErr}},
    {"Mean and variance", "Mean, Variance", kMeanVarianceRoles, Procedure::ComputeFromMeansOneGroup,
     kShowMean, Branch::OneGroup, "Continuous (means)", "Computed effect sizes", false,
     OneGroupMeansLayout{MeanEntry::Variance}},
    {"Events and person years", "Events, person-years in one group",
     kEventsPersonYearsInOneGroupRoles, Procedure::ComputeFromEventsPYOneGroup, kShowRate,
     Branch::OneGroup, "Rates (events by person years)", "Raw data", false,
     OneGroupPYLayout{false}},
    {"Event rate and person years", "Event rate, person-years in one group",
     kEventRatePersonYearsInOneGroupRoles, Procedure::ComputeFromEventsPYOneGroup, kShowRate,
     Branch::OneGroup, "Rates (events by person years)", "Raw data", false, OneGroupPYLayout{true}},
    {"Events and sample size in each group", "Cohort 2x2 (Events)", kCohort2x2EventsRoles,
     Procedure::ComputeFromEvents, kShowOddsRatio, Branch::TwoGroups,
     "Dichotomous (number of events)",
     "Unmatched groups, prospective (e.g., controlled trials, cohort studies)", false,
     EventsLayout{EventsEntry::EventsAndN, false}},
    {"Non-events and sample size in each group", "Cohort 2x2 (Non-Events)",
     kCohort2x2NonEventsRoles, Procedure::ComputeFromEvents, kShowOddsRatio, Branch::TwoGroups,
     "Dichotomous (number of events)",
     "Unmatched groups, prospective (e.g., controlled trials, cohort studies)", false,
     EventsLayout{EventsEntry::NonEventsAndN, false}},
    {"Events and non-events in each group", "Cohort 2x2 (All cells)", kCohort2x2AllCellsRoles,
     Procedure::ComputeFromEvents, kShowOddsRatio, Branch::TwoGroups,
     "Dichotomous (number of events)",
     "Unmatched groups, prospective (e.g., controlled trials, cohort studies)", false,
     EventsLayout{EventsEntry::EventsAndNonEvents, false}},
    {"Event rate and sample size in each group", "Cohort 2x2 (rates)", kCohort2x2RatesRoles,
     Procedure::ComputeFromEvents, kShowOddsRatio, Branch::TwoGroups,
     "Dichotomous (number of events)",
     "Unmatched groups, prospective (e.g., controlled trials, cohort studies)", false,
     EventsLayout{EventsEntry::RateAndN, false}},
    {"Chi-squared and total sample size", "Chi-squared for 2x2", kChiSquaredFor2x2Roles,
     Procedure::ComputeFromChiSquare, kShowOddsRatio, Branch::TwoGroups,
     "Dichotomous (number of events)",
     "Unmatched groups, prospective (e.g., controlled trials, cohort studies)", false,
     ChiSquareLayout{}},
    {"Matched 2x2 table", "Matched 2x2 (Event pairs)", kMatched2x2EventPairsRoles,
     Procedure::ComputeFromEvents, kShowOddsRatio, Branch::TwoGroups,
     "Dichotomous (number of events)",
     "Matched groups, prospective (e.g., crossover trials or pre-post designs)", true,
     EventsLayout{EventsEntry::MatchedPairs, true}},
    {"Events and sample size in each treatment, and external correlation", "Matched 2x2 (Events)",
     kMatched2x2EventsRoles, Procedure::ComputeFromEvents, kShowOddsRatio, Branch::TwoGroups,
     "Dichotomous (number of events)",
     "Matched groups, prospective (e.g., crossover trials or pre-post designs)", true,
     EventsLayout{EventsEntry::EventsAndN, true}},
    {"Non-events and sample size in each treatment, and external correlation",
     "Matched 2x2 (Non-events)", kMatched2x2NonEventsRoles, Procedure::ComputeFromEvents,
     kShowOddsRatio, Branch::TwoGroups, "Dichotomous (number of events)",
     "Matched groups, prospective (e.g., crossover trials or pre-post designs)", true,
     EventsLayout{EventsEntry::NonEventsAndN, true}},
    {"Events and non-events in each treatment, and external correlation", "Matched 2x2 (All cells)",
     kMatched2x2AllCellsRoles, Procedure::ComputeFromEvents, kShowOddsRatio, Branch::TwoGroups,
     "Dichotomous (number of events)",
     "Matched groups, prospective (e.g., crossover trials or pre-post designs)", true,
     EventsLayout{EventsEntry::EventsAndNonEvents, true}},
    {"Event rate and sample size in each treatment, and external correlation",
     "Matched 2x2 (rates)", kMatched2x2RatesRoles, Procedure::ComputeFromEvents, kShowOddsRatio,
     Branch::TwoGroups, "Dichotomous (number of events)",
     "Matched groups, prospective (e.g., crossover trials or pre-post designs)", true,
     EventsLayout{EventsEntry::RateAndN, true}},
    {"Exposed and unexposed for cases and controls", "Case control 2x2 (Exp/Unexp)",
     kCaseControl2x2ExpUnexpRoles, Procedure::ComputeFromEventsCaseControl, kShowOddsRatio,
     Branch::TwoGroups, "Dichotomous (number of events)",
     "Unmatched groups, retrospective (e.g., case control studies)", true,
     CaseControlLayout{CaseControlEntry::ExposedAndUnexposed}},
    {"Exposed and total for cases and controls", "Case control 2x2 (Exp/Total)",
     kCaseControl2x2ExpTotalRoles, Procedure::ComputeFromEventsCaseControl, kShowOddsRatio,
     Branch::TwoGroups, "Dichotomous (number of events)",
     "Unmatched groups, retrospective (e.g., case control studies)", true,
     CaseControlLayout{CaseControlEntry::ExposedAndTotal}},
    {"Proportion exposed and total for cases and controls", "Case control 2x2 (Proportions)",
     kCaseControl2x2ProportionsRoles, Procedure::ComputeFromEventsCaseControl, kShowOddsRatio,
     Branch::TwoGroups, "Dichotomous (number of events)",
     "Unmatched groups, retrospective (e.g., case control studies)", true,
     CaseControlLayout{CaseControlEntry::ProportionAndTotal}},
    {"Odds ratio and confidence limits", "Odds ratio", kOddsRatioRoles, Procedure::ComputePointLog,
     kShowOddsRatio, Branch::TwoGroups, "Dichotomous (number of events)", "Computed effect sizes",
     false, PointLogLayout{RatioFamily::Odds, PointForm::Limits}},
    {"Log odds ratio and standard error", "Log OR, SE", kLogORSERoles, Procedure::ComputePointLog,
     kShowOddsRatio, Branch::TwoGroups, "Dichotomous (number of events)", "Computed effect sizes",
     false, PointLogLayout{RatioFamily::Odds, PointForm::StdErr}},
    {"Log odds ratio and variance", "Log OR, Var", kLogORVarRoles, Procedure::ComputePointLog,
     kShowOddsRatio, Branch::TwoGroups, "Dichotomous (number of events)", "Computed effect sizes",
     false, PointLogLayout{RatioFamily::Odds, PointForm::Variance}},
    {"Peto's (O-E) and V", "O-E", kOERoles, Procedure::ComputeFromPeto, kShowPetoOddsRatio,
     Branch::TwoGroups, "Dichotomous (number of events)", "Computed effect sizes", false,
     PetoLayout{}},
    {"Risk ratio and confidence limits", "Risk ratio", kRiskRatioRoles, Procedure::ComputePointLog,
     kShowRiskRatio, Branch::TwoGroups, "Dichotomous (number of events)", "Computed effect sizes",
     false, PointLogLayout{RatioFamily::Risk, PointForm::Limits}},
    {"Log risk ratio and standard error", "Log RR, SE", kLogRRSERoles, Procedure::ComputePointLog,
     kShowRiskRatio, Branch::TwoGroups, "Dichotomous (number of events)", "Computed effect sizes",
     false, PointLogLayout{RatioFamily::Risk, PointForm::StdErr}},
    {"Log risk ratio and variance", "Log RR, Var", kLogRRVarRoles, Procedure::ComputePointLog,
     kShowRiskRatio, Branch::TwoGroups, "Dichotomous (number of events)", "Computed effect sizes",
     false, PointLogLayout{RatioFamily::Risk, PointForm::Variance}},
    {"Risk difference and confidence limits", "Risk difference", kRiskDifferenceRoles,
     Procedure::ComputePoint, kShowRiskDifference, Branch::TwoGroups,
     "Dichotomous (number of events)", "Computed effect sizes", false,
     PointLayout{DifferenceFamily::Risk, PointForm::Limits}},
    {"Risk difference and standard error", "RD, SE", kRDSERoles, Procedure::ComputePoint,
     kShowRiskDifference, Branch::TwoGroups, "Dichotomous (number of events)",
     "Computed effect sizes", false, PointLayout{DifferenceFamily::Risk, PointForm::StdErr}},
    {"Risk difference and variance", "RD, Var", kRDVarRoles, Procedure::ComputePoint,
     kShowRiskDifference, Branch::TwoGroups, "Dichotomous (number of events)",
     "Computed effect sizes", false, PointLayout{DifferenceFamily::Risk, PointForm::Variance}},
    {"Mean, SD and sample size in each group", "Independent groups (means, SD's)",
     kIndependentGroupsMeansSDsRoles, Procedure::ComputeFromMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, post data only", false,
     MeansLayout{MeansEntry::MeansAndSD}},
    {"Difference in means, common SD, and sample size", "Independent groups (difference, SD)",
     kIndependentGroupsDifferenceSDRoles, Procedure::ComputeFromMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, post data only", false,
     MeansLayout{MeansEntry::DifferenceAndSD}},
    {"Cohen's d (standardized by pooled within-groups SD) and sample size",
     "Independent groups (std difference)", kIndependentGroupsStdDifferenceRoles,
     Procedure::ComputeFromMeans, kShowStdDiffInMeans, Branch::TwoGroups, "Continuous (means)",
     "Unmatched groups, post data only", false, MeansLayout{MeansEntry::StdDiff}},
    {"Means, sample size, and t-value", "Independent groups (means, t)",
     kIndependentGroupsMeansTRoles, Procedure::ComputeFromMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, post data only", false,
     MeansLayout{MeansEntry::MeansAndT}},
    {"Difference in means, sample size, and t-value", "Independent groups (difference, t)",
     kIndependentGroupsDifferenceTRoles, Procedure::ComputeFromMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, post data only", false,
     MeansLayout{MeansEntry::DifferenceAndT}},
    {"Sample size and t-value", "Independent groups (Sample size, t)",
     kIndependentGroupsSampleSizeTRoles, Procedure::ComputeFromMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, post data only", false,
     MeansLayout{MeansEntry::SampleSizeAndT}},
    {"Means, sample size, and p-value", "Independent groups (means, p)",
     kIndependentGroupsMeansPRoles, Procedure::ComputeFromMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, post data only", false,
     MeansLayout{MeansEntry::MeansAndP}},
    {"Difference in means, sample size, and p-value", "Independent groups (difference, p)",
     kIndependentGroupsDifferencePRoles, Procedure::ComputeFromMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, post data only", false,
     MeansLayout{MeansEntry::DifferenceAndP}},
    {"Sample size and p-value", "Independent groups (Sample size, p)",
     kIndependentGroupsSampleSizePRoles, Procedure::ComputeFromMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, post data only", false,
     MeansLayout{MeansEntry::SampleSizeAndP}},
    {"Means, SD pre and post, N, in each group, Pre/Post Corr", "Means, SD in each group",
     kMeansSDInEachGroupRoles, Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::MeansSDPrePost}},
    {"Means, SD difference, N, in each group, Pre/Post Corr", "Means, SD difference in each group",
     kMeansSDDifferenceInEachGroupRoles, Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::MeansSDDifference}},
    {"Means pre and post in each group, t within groups, N", "Means, t in each group",
     kMeansTInEachGroupRoles, Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::MeansT}},
    {"Means pre and post in each group, p within groups, N", "Means, p in each group",
     kMeansPInEachGroupRoles, Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::MeansP}},
    {"Means pre and post in each group, F for difference between changes, N",
     "Means, F for diff in change", kMeansFForDiffInChangeRoles, Procedure::ComputeFromPrePostMeans,
     kShowStdDiffInMeans, Branch::TwoGroups, "Continuous (means)",
     "Unmatched groups, pre and post data", true, PrePostLayout{PrePostEntry::MeansF}},
    {"Mean change, SD pre and post, N, in each group, Pre/Post Corr", "Change in each group",
     kChangeInEachGroupRoles, Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::ChangeSDPrePost}},
    {"Mean change, SD difference, N, in each group, Pre/Post Corr",
     "Mean change, SD difference in each group", kMeanChangeSDDifferenceInEachGroupRoles,
     Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans, Branch::TwoGroups,
     "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::ChangeSDDifference}},
    {"Mean change in each group, t within groups, N", "Change, t in each group",
     kChangeTInEachGroupRoles, Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::ChangeT}},
    {"Mean change in each group, p within groups, N", "Change, p in each group",
     kChangePInEachGroupRoles, Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::ChangeP}},
    {"Mean change in each group, F for difference between changes, N",
     "Change, F for diff in change", kChangeFForDiffInChangeRoles,
     Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans, Branch::TwoGroups,
     "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::ChangeF}},
    {"F for difference between changes, N", "F for diff in change", kFForDiffInChangeRoles,
     Procedure::ComputeFromPrePostMeans, kShowStdDiffInMeans, Branch::TwoGroups,
     "Continuous (means)", "Unmatched groups, pre and post data", true,
     PrePostLayout{PrePostEntry::FOnly}},
    {"Mean difference, SD of difference, and sample size", "Paired groups (difference, SD)",
     kPairedGroupsDifferenceSDRoles, Procedure::ComputeFromPairedMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "One group (pre-post) and matched groups", true,
     PairedMeansLayout{MeansEntry::DifferenceAndSD}},
    {"Means, SD Pre, SD Post, Pre/Post correlation, and sample size", "Paired groups (means, SD)",
     kPairedGroupsMeansSDRoles, Procedure::ComputeFromPairedMeans, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "One group (pre-post) and matched groups", true,
     PairedMeansLayout{MeansEntry::MeansAndSD}},
    {"Means, sample size, and paired t-value", "Paired groups (means, t)", kPairedGroupsMeansTRoles,
     Procedure::ComputeFromPairedMeansTest, kShowStdDiffInMeans, Branch::TwoGroups,
     "Continuous (means)", "One group (pre-post) and matched groups", true,
     PairedMeansLayout{MeansEntry::MeansAndT}},
    {"Means, sample size, and paired p-value", "Paired groups (means, p)", kPairedGroupsMeansPRoles,
     Procedure::ComputeFromPairedMeansTest, kShowStdDiffInMeans, Branch::TwoGroups,
     "Continuous (means)", "One group (pre-post) and matched groups", true,
     PairedMeansLayout{MeansEntry::MeansAndP}},
    {"Mean difference, sample size, and t-value", "Paired groups (difference, t)",
     kPairedGroupsDifferenceTRoles, Procedure::ComputeFromPairedMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "One group (pre-post) and matched groups", true,
     PairedMeansLayout{MeansEntry::DifferenceAndT}},
    {"Mean difference, sample size, and p-value", "Paired groups (difference, p)",
     kPairedGroupsDifferencePRoles, Procedure::ComputeFromPairedMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "One group (pre-post) and matched groups", true,
     PairedMeansLayout{MeansEntry::DifferenceAndP}},
    {"Sample size and t-value from paired t-test", "Paired groups (N, t-value)",
     kPairedGroupsNTValueRoles, Procedure::ComputeFromPairedMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "One group (pre-post) and matched groups", true,
     PairedMeansLayout{MeansEntry::SampleSizeAndT}},
    {"Sample size and p-value from paired t-test", "Paired groups (N, p-value)",
     kPairedGroupsNPValueRoles, Procedure::ComputeFromPairedMeansTest, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "One group (pre-post) and matched groups", true,
     PairedMeansLayout{MeansEntry::SampleSizeAndP}},
    {"Raw difference in means and confidence limits (independent groups)",
     "Raw difference (indep groups), CI", kRawDifferenceIndepGroupsCIRoles,
     Procedure::ComputePointTIndep, kShowStdDiffInMeans, Branch::TwoGroups, "Continuous (means)",
     "Computed effect sizes", false,
     PointTIndepLayout{MeansIndex::RawDifference, PointForm::Limits}},
    {"Raw difference in means and standard error (independent groups)",
     "Raw difference (indep groups), SE", kRawDifferenceIndepGroupsSERoles,
     Procedure::ComputePointTIndep, kShowStdDiffInMeans, Branch::TwoGroups, "Continuous (means)",
     "Computed effect sizes", false,
     PointTIndepLayout{MeansIndex::RawDifference, PointForm::StdErr}},
    {"Raw difference in means and variance (independent groups)",
     "Raw difference (indep groups), Variance", kRawDifferenceIndepGroupsVarianceRoles,
     Procedure::ComputePointTIndep, kShowStdDiffInMeans, Branch::TwoGroups, "Continuous (means)",
     "Computed effect sizes", false,
     PointTIndepLayout{MeansIndex::RawDifference, PointForm::Variance}},
    {"Cohen's d (standardized by pooled within-groups SD) and confidence limits", "Cohen's d, CI",
     kCohenDCIRoles, Procedure::ComputePointTIndep, kShowStdDiffInMeans, Branch::TwoGroups,
     "Continuous (means)", "Computed effect sizes", false,
     PointTIndepLayout{MeansIndex::CohensD, PointForm::Limits}},
    {"Cohen's d (standardized by pooled within-groups SD) and standard error", "Cohen's d, SE",
     kCohenDSERoles, Procedure::ComputePointTIndep, kShowStdDiffInMeans, Branch::TwoGroups,
     "Continuous (means)", "Computed effect sizes", false,
     PointTIndepLayout{MeansIndex::CohensD, PointForm::StdErr}},
    {"Cohen's d (standardized by pooled within-groups SD) and variance", "Cohen's d, Variance",
     kCohenDVarianceRoles, Procedure::ComputePointTIndep, kShowStdDiffInMeans, Branch::TwoGroups,
     "Continuous (means)", "Computed effect sizes", false,
     PointTIndepLayout{MeansIndex::CohensD, PointForm::Variance}},
    {"Hedges's g (standardized by pooled within-groups SD) and confidence limits", "Hedges's g, CI",
     kHedgesGCIRoles, Procedure::ComputePointTIndep, kShowHedgesG, Branch::TwoGroups,
     "Continuous (means)", "Computed effect sizes", false,
     PointTIndepLayout{MeansIndex::HedgesG, PointForm::Limits}},
    {"Hedges's g (standardized by pooled within-groups SD) and standard error", "Hedges's g, SE",
     kHedgesGSERoles, Procedure::ComputePointTIndep, kShowHedgesG, Branch::TwoGroups,
     "Continuous (means)", "Computed effect sizes", false,
     PointTIndepLayout{MeansIndex::HedgesG, PointForm::StdErr}},
    {"Hedges's g (standardized by pooled within-groups SD) and variance", "Hedges's g, Variance",
     kHedgesGVarianceRoles, Procedure::ComputePointTIndep, kShowHedgesG, Branch::TwoGroups,
     "Continuous (means)", "Computed effect sizes", false,
     PointTIndepLayout{MeansIndex::HedgesG, PointForm::Variance}},
    {"Raw mean difference and confidence limits (paired study)", "Raw difference (paired), CI",
     kRawDifferencePairedCIRoles, Procedure::ComputePointTPaired, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Computed effect sizes", false,
     PointTPairedLayout{MeansIndex::RawDifference, PointForm::Limits}},
    {"Raw mean difference and standard error (paired study)", "Raw difference (paired), SE",
     kRawDifferencePairedSERoles, Procedure::ComputePointTPaired, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Computed effect sizes", false,
     PointTPairedLayout{MeansIndex::RawDifference, PointForm::StdErr}},
    {"Raw mean difference and variance (paired study)", "Raw difference (paired), Variance",
     kRawDifferencePairedVarianceRoles, Procedure::ComputePointTPaired, kShowStdDiffInMeans,
     Branch::TwoGroups, "Continuous (means)", "Computed effect sizes", false,
     PointTPairedLayout{MeansIndex::RawDifference, PointForm::Variance}},
    {"Cohen's d (standardized by SD of difference scores) and confidence limits",
     "Cohen's paired d, CI", kCohenPairedDCIRoles, Procedure::ComputePointTPaired,
     kShowStdDiffInMeans, Branch::TwoGroups, "Continuous (means)", "Computed effect sizes", false,
     PointTPairedLayout{MeansIndex::CohensD, PointForm::Limits}},
    {"Cohen's d (standardized by SD of difference scores) and standard error",
     "Cohen's paired d, SE", kCohenPairedDSERoles, Procedure::ComputePointTPaired,
     kShowStdDiffInMeans, Branch::TwoGroups, "Continuous (means)", "Computed effect sizes", false,
     PointTPairedLayout{MeansIndex::CohensD, PointForm::StdErr}},
    {"Correlation and sample size", "Corr, N", kCorrNRoles, Procedure::ComputePointCorr,
     kShowCorrelation, Branch::TwoGroups, "Correlation", "Computed effect sizes", false,
     PointCorrLayout{CorrEntry::CorrAndN}},
    {"Correlation and standard error", "Corr, SE", kCorrSERoles, Procedure::ComputePointCorr,
     kShowCorrelation, Branch::TwoGroups, "Correlation", "Computed effect sizes", false,
     PointCorrLayout{CorrEntry::CorrAndSE}},
    {"Correlation and variance", "Corr, Var", kCorrVarRoles, Procedure::ComputePointCorr,
     kShowCorrelation, Branch::TwoGroups, "Correlation", "Computed effect sizes", false,
     PointCorrLayout{CorrEntry::CorrAndVariance}},
    {"Fisher's Z and sample size", "Fisher's Z, N", kFisherZNRoles, Procedure::ComputePointCorr,
     kShowCorrelation, Branch::TwoGroups, "Correlation", "Computed effect sizes", false,
     PointCorrLayout{CorrEntry::ZAndN}},
    {"Fisher's Z and standard error", "Fisher's Z, SE", kFisherZSERoles,
     Procedure::ComputePointCorr, kShowCorrelation, Branch::TwoGroups, "Correlation",
     "Computed effect sizes", false, PointCorrLayout{CorrEntry::ZAndSE}},
    {"Fisher's Z and variance", "Fisher's Z, Var", kFisherZVarRoles, Procedure::ComputePointCorr,
     kShowCorrelation, Branch::TwoGroups, "Correlation", "Computed effect sizes", false,
     PointCorrLayout{CorrEntry::ZAndVariance}},
    {"Correlation and t-value", "Correlation and t-value", kCorrelationAndTValueRoles,
     Procedure::ComputePointCorr, kShowCorrelation, Branch::TwoGroups, "Correlation",
     "Computed effect sizes", false, PointCorrLayout{CorrEntry::CorrAndT}},
    {"t-value and sample size for correlation", "t-value for correlation",
     kTValueForCorrelationRoles, Procedure::ComputePointCorr, kShowCorrelation, Branch::TwoGroups,
     "Correlation", "Computed effect sizes", false, PointCorrLayout{CorrEntry::TAndN}},
    {"p-value and sample size for correlation", "p-value for correlation",
     kPValueForCorrelationRoles, Procedure::ComputePointCorr, kShowCorrelation, Branch::TwoGroups,
     "Correlation", "Computed effect sizes", false, PointCorrLayout{CorrEntry::PAndN}},
    {"Events and person years in each group", "Events, person-years", kEventsPersonYearsRoles,
     Procedure::ComputeFromEventsPersonYears, kShowRateRatio, Branch::TwoGroups,
     "Rates (events by person years)", "Unmatched groups", true, PersonYearsLayout{false}},
    {"Event rate and person years in each group", "Rates and person-years",
     kRatesAndPersonYearsRoles, Procedure::ComputeFromEventsPersonYears, kShowRateRatio,
     Branch::TwoGroups, "Rates (events by person years)", "Unmatched groups", true,
     PersonYearsLayout{true}},
    {"Rate ratio and confidence limits", "Rate ratio, CI", kRateRatioCIRoles,
     Procedure::ComputePointLog, kShowRateRatio, Branch::TwoGroups,
     "Rates (events by person years)", "Computed effect sizes", true,
     PointLogLayout{RatioFamily::Rate, PointForm::Limits}},
    {"Log rate ratio and standard error", "Log rate ratio, SE", kLogRateRatioSERoles,
     Procedure::ComputePointLog, kShowRateRatio, Branch::TwoGroups,
     "Rates (events by person years)", "Computed effect sizes", true,
     PointLogLayout{RatioFamily::Rate, PointForm::StdErr}},
    {"Log rate ratio and variance", "Log rate ratio, Var", kLogRateRatioVarRoles,
     Procedure::ComputePointLog, kShowRateRatio, Branch::TwoGroups,
     "Rates (events by person years)", "Computed effect sizes", true,
     PointLogLayout{RatioFamily::Rate, PointForm::Variance}},
    {"Rate difference and confidence limits", "Rate difference, CI", kRateDifferenceCIRoles,
     Procedure::ComputePoint, kShowRateDifference, Branch::TwoGroups,
     "Rates (events by person years)", "Computed effect sizes", true,
     PointLayout{DifferenceFamily::Rate, PointForm::Limits}},
    {"Rate difference and standard error", "Rate difference, SE", kRateDifferenceSERoles,
     Procedure::ComputePoint, kShowRateDifference, Branch::TwoGroups,
     "Rates (events by person years)", "Computed effect sizes", true,
     PointLayout{DifferenceFamily::Rate, PointForm::StdErr}},
    {"Rate difference and variance", "Rate difference, Var", kRateDifferenceVarRoles,
     Procedure::ComputePoint, kShowRateDifference, Branch::TwoGroups,
     "Rates (events by person years)", "Computed effect sizes", true,
     PointLayout{DifferenceFamily::Rate, PointForm::Variance}},
    {"Hazard ratio and confidence limits", "Hazard ratio, CI", kHazardRatioCIRoles,
     Procedure::ComputePointLog, kShowHazardRatio, Branch::TwoGroups, "Survival (time to event)",
     "Computed effect sizes", true, PointLogLayout{RatioFamily::Hazard, PointForm::Limits}},
    {"Log hazard ratio and standard error", "Log hazard ratio, SE", kLogHazardRatioSERoles,
     Procedure::ComputePointLog, kShowHazardRatio, Branch::TwoGroups, "Survival (time to event)",
     "Computed effect sizes", true, PointLogLayout{RatioFamily::Hazard, PointForm::StdErr}},
    {"Log hazard ratio and variance", "Log hazard ratio, Var", kLogHazardRatioVarRoles,
     Procedure::ComputePointLog, kShowHazardRatio, Branch::TwoGroups, "Survival (time to event)",
     "Computed effect sizes", true, PointLogLayout{RatioFamily::Hazard, PointForm::Variance}},
    {"Point estimate and condfidence limits", "Point estimate, CI", kPointEstimateCIRoles,
     Procedure::ComputePoint, kShowPointEstimate, Branch::GenericRaw, "Data analyzed in raw scale",
     "Computed effect sizes", false, PointLayout{DifferenceFamily::Generic, PointForm::Limits}},
    {"Point estimate and standard error in raw units", "Point estimate, SE", kPointEstimateSERoles,
     Procedure::ComputePoint, kShowPointEstimate, Branch::GenericRaw, "Data analyzed in raw scale",
     "Computed effect sizes", false, PointLayout{DifferenceFamily::Generic, PointForm::StdErr}},
    {"Point estimate and variance in raw units", "Point estimate, Variance",
     kPointEstimateVarianceRoles, Procedure::ComputePoint, kShowPointEstimate, Branch::GenericRaw,
     "Data analyzed in raw scale", "Computed effect sizes", false,
     PointLayout{DifferenceFamily::Generic, PointForm::Variance}},
    {"Point estimate and condfidence limits in raw units", "Point estimate (raw units), CI",
     kPointEstimateRawUnitsCIRoles, Procedure::ComputePointLog, kShowPointLog, Branch::GenericLog,
     "Data analyzed in log scale", "Computed effect sizes", false,
     PointLogLayout{RatioFamily::Generic, PointForm::Limits}},
    {"Point estimate and standard error in log units", "Log point estimate, SE",
     kLogPointEstimateSERoles, Procedure::ComputePointLog, kShowPointLog, Branch::GenericLog,
     "Data analyzed in log scale", "Computed effect sizes", false,
     PointLogLayout{RatioFamily::Generic, PointForm::StdErr}},
    {"Point estimate and variance in log units", "Log point estimate, Variance",
     kLogPointEstimateVarianceRoles, Procedure::ComputePointLog, kShowPointLog, Branch::GenericLog,
     "Data analyzed in log scale", "Computed effect sizes", false,
     PointLogLayout{RatioFamily::Generic, PointForm::Variance}},
    // Known to DefineFormat and to files, but offered by no wizard path.
    {"Cohen's d (standardized by SD of difference scores) and variance",
     "Cohen's paired d, Variance", kCohenPairedDVarianceRoles, Procedure::ComputePointTPaired,
     kShowNothing, Branch::NotInWizard, "", "", false,
     PointTPairedLayout{MeansIndex::CohensD, PointForm::Variance}},
    {"Correlation, sample size, and artifacts", "Corr, N, and artifacts", kCorrNAndArtifactsRoles,
     Procedure::ComputePointCorr, kShowCorrelation, Branch::NotInWizard, "", "", false,
     PointCorrLayout{CorrEntry::Artifacts}},
};

// A name known only to the computation: no roles, no block, no layout.
constexpr FormatDef Legacy(std::string_view longName, Procedure procedure) {
    FormatDef format{};
    format.longName = longName;
    format.procedure = procedure;
    return format;
}

// Old files may hold these; the computation still accepts them.
constexpr FormatDef kLegacy[] = {
    Legacy("Events and sample size in each condition", Procedure::ComputeFromEvents),
    Legacy("Non-events and sample size in each condition", Procedure::ComputeFromEvents),
    Legacy("Events and non-events in each condition", Procedure::ComputeFromEvents),
    Legacy("Event rate and sample size in each condition", Procedure::ComputeFromEvents),
    Legacy("Cases and sample size in each condition", Procedure::ComputeFromEvents),
    Legacy("Controls and sample size in each condition", Procedure::ComputeFromEvents),
    Legacy("Cases and controls in each condition", Procedure::ComputeFromEvents),
    Legacy("Cases (proportion) and sample size in each condition", Procedure::ComputeFromEvents),
    Legacy("Matched 2x2 table for case-control study", Procedure::ComputeFromEventsCaseControl),
    Legacy("Exposed and unexposed for cases and controls, and external correlation",
           Procedure::ComputeFromEventsCaseControl),
    Legacy("Exposed and total for cases and controls, and external correlation",
           Procedure::ComputeFromEventsCaseControl),
    Legacy("Proportion exposed and total for cases and controls, and external correlation",
           Procedure::ComputeFromEventsCaseControl),
};

// Rows of these formats keep counts or means that can be summed across
// subgroups of a study; every other format pools only by weighting.
struct MergeClass {
    std::string_view longName;
    int type;
};
constexpr MergeClass kMergeClasses[] = {
    {"Events and sample size", 1},
    {"Non-events and sample size", 1},
    {"Events and non-events", 1},
    {"Event rate and sample size", 1},
    {"Mean, SD and sample size", 2},
    {"Events and person years", 3},
    {"Events and sample size in each group", 4},
    {"Non-events and sample size in each group", 4},
    {"Events and non-events in each group", 4},
    {"Event rate and sample size in each group", 4},
    {"Exposed and unexposed for cases and controls", 5},
    {"Exposed and total for cases and controls", 5},
    {"Proportion exposed and total for cases and controls", 5},
    {"Mean, SD and sample size in each group", 6},
    {"Events and person years in each group", 7},
    {"Event rate and person years in each group", 7},
};

constexpr std::string_view kStudyDesignWords[] = {"Not specified", "Paired study",
                                                  "Independent groups"};
constexpr std::string_view kEffectDirectionWords[] = {"Not specified", "Auto", "Negative",
                                                      "Positive"};
constexpr std::string_view kStandardizeByWords[] = {"Not specified", "Post score SD",
                                                    "Change score SD"};
constexpr DropDownRole kDropDowns[] = {
    {"Study design", "#0;Not specified|#1;Paired study|#2;Independent groups", kStudyDesignWords},
    {"Effect direction", "#0;Not specified|#1;Auto|#2;Negative|#3;Positive", kEffectDirectionWords},
    {"Standardize by", "#0;Not specified|#1;Post score SD|#2;Change score SD", kStandardizeByWords},
};

// Name lookups run once per row, so the names are sorted at compile time and
// searched by halving.
struct NameIndex {
    std::string_view name;
    std::size_t index = 0;
};
using NameIndexTable = std::array<NameIndex, std::size(kFormats)>;

template <typename Key>
constexpr NameIndexTable SortedBy(Key key) {
    NameIndexTable sorted{};
    for (std::size_t i = 0; i < sorted.size(); ++i)
        sorted[i] = {key(kFormats[i]), i};
    std::sort(sorted.begin(), sorted.end(),
              [](const NameIndex& a, const NameIndex& b) { return a.name < b.name; });
    return sorted;
}

constexpr NameIndexTable kByLongName = SortedBy([](const FormatDef& f) { return f.longName; });
constexpr NameIndexTable kByShortName = SortedBy([](const FormatDef& f) { return f.shortName; });

constexpr bool AllDistinct(const NameIndexTable& sorted) {
    return std::adjacent_find(sorted.begin(), sorted.end(),
                              [](const NameIndex& a, const NameIndex& b) {
                                  return a.name == b.name;
                              }) == sorted.end();
}

constexpr const FormatDef* Lookup(const NameIndexTable& sorted, std::string_view name) {
    const auto* it = std::lower_bound(
        sorted.begin(), sorted.end(), name,
        [](const NameIndex& entry, std::string_view wanted) { return entry.name < wanted; });
    if (it == sorted.end() || it->name != name) return nullptr;
    return &kFormats[it->index];
}

static_assert(AllDistinct(kByLongName), "two formats share a long name");
static_assert(AllDistinct(kByShortName), "two formats share a short name");
static_assert(std::all_of(std::begin(kFormats), std::end(kFormats),
                          [](const FormatDef& f) { return f.roles.size() <= MaxRoles; }),
              "a format has more roles than DefineFormat has slots");
// Every format is computed by a procedure that knows its variant and reads
// every role by its meaning.
constexpr bool RolesHaveMeanings(const FormatDef& f) {
    return !std::holds_alternative<std::monostate>(f.layout) &&
           std::none_of(f.roles.begin(), f.roles.end(),
                        [](const RoleDef& r) { return r.kind == RoleKind::None; });
}

// The roles a two-group event layout builds its table from are all there.
constexpr bool EventsRolesPresent(const FormatDef& f) {
    const auto* layout = std::get_if<EventsLayout>(&f.layout);
    if (layout == nullptr) return f.procedure != Procedure::ComputeFromEvents;
    for (RoleKind kind : TableRoles(layout->entry))
        if (f.RoleOf(kind) < 0) return false;
    return !NeedsExternalCorrelation(*layout) || f.RoleOf(RoleKind::ExternalCorrelation) >= 0;
}

static_assert(std::all_of(std::begin(kFormats), std::end(kFormats), RolesHaveMeanings),
              "a format lacks its variant, or a role its meaning");
static_assert(std::all_of(std::begin(kFormats), std::end(kFormats), EventsRolesPresent),
              "a two-group event format lacks its layout or a role of its table");
static_assert(std::all_of(std::begin(kMergeClasses), std::end(kMergeClasses),
                          [](const MergeClass& m) {
                              return Lookup(kByLongName, m.longName) != nullptr;
                          }),
              "a merge class names no format");

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return Lower(x) == Lower(y); });
}

std::string_view TrimBlanks(std::string_view s) {
    const auto first = s.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return s.substr(first, s.find_last_not_of(" \t\r\n") - first + 1);
}

// The code of a cell written as a number: "2", or "2.0" as a number cell may
// hold it; -1 for anything else or a code outside the list.
int NumericCode(std::string_view cell, std::size_t count) {
    std::size_t code = 0;
    std::size_t i = 0;
    for (; i < cell.size() && IsDigit(cell[i]); ++i) {
        code = code * 10 + static_cast<std::size_t>(cell[i] - '0');
        if (code >= count) return -1;
    }
    if (i == 0) return -1;
    if (i < cell.size() && cell[i] == '.') {
        ++i;
        while (i < cell.size() && cell[i] == '0')
            ++i;
    }
    return i == cell.size() ? static_cast<int>(code) : -1;
}

}  // namespace

std::string_view ProcedureName(Procedure p) {
    switch (p) {
        case Procedure::None:
            return "None";
        case Procedure::ComputeFromEvents:
            return "ComputeFromEvents";
        case Procedure::ComputeFromEventsCaseControl:
            return "ComputeFromEventsCaseControl";
        case Procedure::ComputeFromEventsPersonYears:
            return "ComputeFromEventsPersonYears";
        case Procedure::ComputeFromPeto:
            return "ComputeFromPeto";
        case Procedure::ComputeFromChiSquare:
            return "ComputeFromChiSquare";
        case Procedure::ComputeFromEventsOneGroup:
            return "ComputeFromEventsOneGroup";
        case Procedure::ComputeFromEventsPYOneGroup:
            return "ComputeFromEventsPYOneGroup";
        case Procedure::ComputeFromMeansOneGroup:
            return "ComputeFromMeansOneGroup";
        case Procedure::ComputeFromMeans:
            return "ComputeFromMeans";
        case Procedure::ComputeFromMeansTest:
            return "ComputeFromMeansTest";
        case Procedure::ComputeFromPairedMeans:
            return "ComputeFromPairedMeans";
        case Procedure::ComputeFromPairedMeansTest:
            return "ComputeFromPairedMeansTest";
        case Procedure::ComputeFromPrePostMeans:
            return "ComputeFromPrePostMeans";
        case Procedure::ComputePointLog:
            return "ComputePointLog";
        case Procedure::ComputePoint:
            return "ComputePoint";
        case Procedure::ComputePointTIndep:
            return "ComputePointTIndep";
        case Procedure::ComputePointTPaired:
            return "ComputePointTPaired";
        case Procedure::ComputePointCorr:
            return "ComputePointCorr";
    }
    return "None";
}

std::span<const FormatDef> AllFormats() {
    return kFormats;
}

const FormatDef* FindFormat(std::string_view longName) {
    return Lookup(kByLongName, longName);
}

const FormatDef* FindFormatByAnyName(std::string_view name) {
    const FormatDef* found = Lookup(kByLongName, name);
    return found != nullptr ? found : Lookup(kByShortName, name);
}

std::span<const FormatDef> LegacyFormats() {
    return kLegacy;
}

const FormatDef* FindComputedFormat(std::string_view longName) {
    if (const FormatDef* f = FindFormat(longName)) return f;
    for (const FormatDef& legacy : kLegacy) {
        if (legacy.longName == longName) return &legacy;
    }
    return nullptr;
}

Procedure ProcedureFor(std::string_view longName) {
    const FormatDef* f = FindComputedFormat(longName);
    return f != nullptr ? f->procedure : Procedure::None;
}

int MergeType(std::string_view longName) {
    for (const MergeClass& m : kMergeClasses) {
        if (m.longName == longName) return m.type;
    }
    return 0;
}

void DefineFormat(std::string_view longName, DefinedFormat& out) {
    for (std::string& name : out.EntryColNames)
        name.clear();
    out.EntryColInteger.fill(false);
    for (auto& pieces : out.LabelPieces) {
        for (std::string& piece : pieces)
            piece.clear();
    }
    const FormatDef* format = FindFormat(longName);
    if (format == nullptr) return;
    for (std::size_t i = 0; i < format->roles.size(); ++i) {
        const RoleDef& role = format->roles[i];
        out.EntryColNames[i] = role.name;
        out.EntryColInteger[i] = role.whole;
        for (std::size_t p = 0; p < role.labels.size(); ++p)
            out.LabelPieces[p][i] = role.labels[p];
    }
    out.CurrentFormatLong = format->longName;
    out.CurrentFormatShort = format->shortName;
}

const DropDownRole* FindDropDown(std::string_view role) {
    for (const DropDownRole& d : kDropDowns) {
        if (d.role == role) return &d;
    }
    return nullptr;
}

int DropDownCode(const DropDownRole& role, std::string_view cell) {
    cell = TrimBlanks(cell);
    if (cell.empty()) return -1;
    if (IsDigit(cell.front())) return NumericCode(cell, role.words.size());
    // A word as typed first, so that a list never loses an exact match to a
    // word that differs only in case.
    for (std::size_t c = 0; c < role.words.size(); ++c) {
        if (role.words[c] == cell) return static_cast<int>(c);
    }
    for (std::size_t c = 0; c < role.words.size(); ++c) {
        if (EqualsIgnoringCase(role.words[c], cell)) return static_cast<int>(c);
    }
    return -1;
}

}  // namespace synthara::sheet
