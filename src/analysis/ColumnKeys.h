#pragma once
// The names of the working table: the statistics kept per run and model with
// their keys and titles, and the labels of a summary block's rows.
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace synthara::analysis {

inline constexpr int MaxRuns = 3;     // 1 all studies, 2 omit one, 3 cumulative
inline constexpr int MaxModels = 5;   // 1 fixed .. 5 fully random
inline constexpr int BlockRows = 10;  // rows of one summary block

// Words of the working table as the views and results show them.
namespace Word {
inline constexpr std::string_view Overall = "Overall";
inline constexpr std::string_view Fixed = "Fixed";
inline constexpr std::string_view Random = "Random";
inline constexpr std::string_view MissingData = "Missing Data";
inline constexpr std::string_view Combined = "Combined";
}  // namespace Word

// `Model` of row i of a summary block, and the short wording of the same rows.
inline constexpr std::array<std::string_view, BlockRows> ModelLabels = {"Calculations",
                                                                        "Fixed effects analysis",
                                                                        "Random, ignoring grouping",
                                                                        "Mixed, pooled tau",
                                                                        "Mixed, separate tau",
                                                                        "Fully random",
                                                                        "Future1",
                                                                        "Future2",
                                                                        "Future3",
                                                                        "Future4"};
inline constexpr std::array<std::string_view, BlockRows> ModelWords = {
    "Calculations", "Fixed",   "Random",  "Pooled tau", "Separate tau",
    "Fully random", "Future1", "Future2", "Future3",    "Future4"};

// The text under the summary of a grouped analysis for models 3 to 5; "" for
// the others.
constexpr std::string_view ModelText(int model) {
    switch (model) {
        case 3:
            return "Mixed effects analysis - A random effects model is used to combine studies "
                   "within each subgroup.  A fixed effect model is used to combine subgroups and "
                   "yield the overall effect.  The study-to-study variance (tau-squared) is "
                   "assumed to be the same for all subgroups - this value is computed within "
                   "subgroups and then pooled across subgroups.";
        case 4:
            return "Mixed effects analysis - A random effects model is used to combine studies "
                   "within each subgroup.  A fixed effect model is used to combine subgroups and "
                   "yield the overall effect.  The study-to-study variance (tau-squared) is NOT "
                   "assumed to be the same for all subgroups - this value is computed within "
                   "subgroups and NOT pooled across subgroups.";
        case 5:
            return "Fully random effects analysis - A random effects model is used to combine "
                   "studies within each subgroup.  A random effects model is used to combine "
                   "subgroups and yield the overall effect.  The study-to-study variance "
                   "(tau-squared) is assumed to be the same for all subgroups - this value is "
                   "computed within subgroups and then pooled across subgroups.";
        default:
            return {};
    }
}

// The note on the random-effects rows of a grouped analysis: pooled tau-squared
// under models 3 and 5, separate under model 4.
constexpr std::string_view RandomRowsText(int model) {
    if (model == 3 || model == 5)
        return "In the random effects analysis the study-to-study variance (tau-squared) is "
               "assumed to be the same for all subgroups.  This value is computed within "
               "subgroups and then pooled across subgroups.";
    if (model == 4)
        return "In the random effects analysis the study-to-study variance (tau-squared) is NOT "
               "assumed to be the same for all subgroups.  This value is computed within "
               "subgroups and NOT pooled across subgroups.";
    return {};
}

// `ModelDisplay` of line i of a summary block: "Fixed" on the fixed model's
// row, "Random" on the rows of the random models, "" elsewhere.
constexpr std::string_view ModelDisplayWord(int line) {
    if (line == 1) return Word::Fixed;
    if (line >= 2 && line <= MaxModels) return Word::Random;
    return {};
}

// The statistics kept per run and model, one column each: the calculation
// columns in the order of the "Calculations" tab, the weights view, and the
// Mantel-Haenszel terms of model 1 in the order GetMHVals yields them.
enum class Stat : std::uint8_t {
    Point,
    Variance,
    TauWithin,
    TauBetween,
    TotalVariance,
    MHQ,
    IVWeight,
    MHWeight,
    W1,
    RawWeight,
    PointWt,
    PointSqWt,
    Wsq,
    Wcu,
    C,
    B,
    Q,
    Qdf,
    I2,
    K,
    SummaryPoint,
    SummaryVariance,
    GroupT2,
    GroupT2Variance,
    WtPct,
    WtPctG,
    MHOR_R,
    MHOR_S,
    MHOR_E,
    MHOR_F,
    MHOR_G,
    MHOR_H,
    MHRR_P,
    MHRR_R,
    MHRR_S,
    MHRD_J,
    MHRD_K,
};
inline constexpr int StatCount = static_cast<int>(Stat::MHRD_K) + 1;

struct StatName {
    std::string_view stem;   // the key up to the run: "cQ("
    std::string_view title;  // the column's title
};

// By Stat.
inline constexpr std::array<StatName, StatCount> StatNames = {{
    {"cPoint(", "Point"},
    {"cVariance(", "Study Variance"},
    {"Tau^2 Within(", "Tau^2 Within"},
    {"Tau^2 Between(", "Tau^2 Between"},
    {"Total Variance(", "Total Variance"},
    {"MH Q(", "MH Q"},
    {"IV-Weight(", "IV-Weight"},
    {"MH-Weight(", "MH-Weight"},
    {"cW1(", "W"},
    {"cRawWeight(", "Raw weight"},
    {"cPointWt(", "T*W"},
    {"cPointSqWt(", "T^2*W"},
    {"cWsq(", "W^2"},
    {"cWcu(", "W^3"},
    {"cC(", "C"},
    {"cB(", "B"},
    {"cQ(", "Q"},
    {"cQdf(", "Q df"},
    {"cI^2(", "I^2"},
    {"cK(", "K"},
    {"Summary Point(", "Summary Point"},
    {"Summary Variance(", "Summary Variance"},
    {"Group T^2(", "Group T^2"},
    {"Group T^2 Variance(", "Group T^2 Variance"},
    {"cWtPct(", "Relative weight"},
    {"cWtPctG(", "Relative weight"},
    {"MHOR-R(", "MHOR-R"},
    {"MHOR-S(", "MHOR-S"},
    {"MHOR-E(", "MHOR-E"},
    {"MHOR-F(", "MHOR-F"},
    {"MHOR-G(", "MHOR-G"},
    {"MHOR-H(", "MHOR-H"},
    {"MHRR-P(", "MHRR-P"},
    {"MHRR-R(", "MHRR-R"},
    {"MHRR-S(", "MHRR-S"},
    {"MHRD-J(", "MHRD-J"},
    {"MHRD-K(", "MHRD-K"},
}};

// The columns of every run and model the passes write (the MH terms apart).
inline constexpr Stat LastCalcStat = Stat::GroupT2Variance;
inline constexpr int MHTermCount = 11;
inline constexpr Stat FirstMHStat = Stat::MHOR_R;

// The columns a study row copies from its block's "Calculations" row.
inline constexpr std::array<Stat, 10> CopiedStats = {Stat::C,
                                                     Stat::B,
                                                     Stat::Q,
                                                     Stat::Qdf,
                                                     Stat::I2,
                                                     Stat::K,
                                                     Stat::SummaryPoint,
                                                     Stat::SummaryVariance,
                                                     Stat::GroupT2,
                                                     Stat::GroupT2Variance};

// "cQ(1,3)": the stem, the run, a comma, the model and a closing parenthesis.
std::string RunModelKey(Stat stat, int run, int model);

// A column named by its key.
struct StatKey {
    Stat stat = Stat::Point;
    int run = 1;
    int model = 1;
    friend bool operator==(const StatKey&, const StatKey&) = default;
};
// The statistic, run and model of a key, read without regard to case
// ("IV-WEIGHT(1,2)" is "IV-Weight(1,2)"); nullopt for any other text.
std::optional<StatKey> ParseStatKey(std::string_view key);

}  // namespace synthara::analysis
