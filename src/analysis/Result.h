#pragma once
// The results of an analysis as plain data, read from the working table after
// a Compute: what the command line prints and the views format.
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "analysis/DisplayVals.h"
#include "analysis/Tau2.h"

namespace synthara::analysis {

class Analysis;

// One estimate on the computation scale with its limits and test, and the
// point and limits on the display scale.
struct Estimate {
    std::optional<double> point, se, variance, lower, upper, z, p;
    std::optional<double> displayPoint, displayLower, displayUpper;
};

struct StudyResult {
    int row = 0;  // in the working table
    // The texts of the identifying columns, by level (study name first); ""
    // where the level has no column or the cell is empty.
    std::array<std::string, 5> identity;
    bool valid = false;
    std::string hideReason;                           // "" for a row that takes part
    Estimate estimate;                                // nothing for a row that is not valid
    std::optional<double> weightFixed, weightRandom;  // percent of the block's weight
};

struct SummaryResult {
    int model = 0;          // 1 to 5
    std::string modelWord;  // "Fixed", "Random", "Pooled tau", ...
    std::string group;      // the group's label, "Overall" for the total
    int k = 0;
    Estimate estimate;  // nothing when k is 0
    std::optional<double> q, df, qP, i2;
    std::optional<double> tau2, tau2Se, tau2Variance, tau;
    int row = 0;  // the block's "Calculations" row in the working table
    // The random model's own figures (model 2 only): the prediction interval
    // on both scales, the confidence limits of tau-squared, and the estimator
    // whose value `tau2` is ("DL" where the chosen one did not converge).
    std::optional<double> piLower, piUpper, piDisplayLower, piDisplayUpper;
    std::optional<double> tau2Lower, tau2Upper;
    std::string tau2Method;
};

// The Q of a model split into the part within the groups and the part
// between them ("Total within", "Total between").
struct BetweenResult {
    int model = 0;
    std::string modelWord;
    double qWithin = 0, dfWithin = 0, qBetween = 0, dfBetween = 0;
    std::optional<double> pWithin, pBetween;
};

// One pass of the omit-one or cumulative run: the result of the pass's row's
// block without that row, or with the rows up to it.
struct PassResult {
    int row = 0;
    std::string study;
    int model = 0;
    std::string modelWord;
    int k = 0;
    Estimate estimate;  // nothing when the pass left the block without rows
};

struct AnalysisResult {
    std::string index;             // as displayed
    std::string computationIndex;  // as computed
    Transform transform = Transform::None;
    double ciLevel = DefaultCILevel;
    Tau2Method tau2Method = Tau2Method::DL;  // the random model's estimator
    bool hksj = false;                       // its limits adjusted, t on k - 1 df
    std::array<bool, 5> levelPresent{};      // which identifying columns the table has
    std::vector<StudyResult> studies;        // in display order, valid or not; CollectResult only
    std::vector<SummaryResult> summaries;    // the model rows on show, by model, groups then total
    std::vector<BetweenResult> between;      // with a grouping, each model on show
    // The notes under the summary on rows of one study taken as independent.
    std::vector<std::string> notes;
};

// The point with its limits and test at the critical value, on both scales.
Estimate MakeEstimate(double point, double variance, Transform transform, double critical);

// The notes under the summary when rows of one study that take part differ
// at the comparison, outcome or time-point level (so were taken as
// independent), and when the groups compared are the values of such a level.
std::vector<std::string> IndependenceNotes(const Analysis& analysis);

// Everything but the studies: the table's description and its summaries.
AnalysisResult CollectSummaries(Analysis& analysis);
// Each study row in display order, built as it is visited, so that a million
// studies are written out without a copy of them all.
void ForEachStudy(Analysis& analysis, const std::function<void(const StudyResult&)>& visit);
bool AnyValidStudy(const Analysis& analysis);
// The passes of run 2 or 3, in pass order and by model within a pass, as the
// views of those runs show them on each valid row.
void ForEachPass(Analysis& analysis, int run, const std::function<void(const PassResult&)>& visit);
// The summaries with every study: for small tables and tests.
AnalysisResult CollectResult(Analysis& analysis);

}  // namespace synthara::analysis
