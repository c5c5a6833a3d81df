#pragma once
// The names of the working table: bookkeeping keys, the stems of the
// per-run-and-model columns, and the labels of a summary block's rows.
#include <array>
#include <string>
#include <string_view>

namespace synthara::analysis {

inline constexpr int MaxRuns = 3;     // 1 all studies, 2 omit one, 3 cumulative
inline constexpr int MaxModels = 5;   // 1 fixed .. 5 fully random
inline constexpr int BlockRows = 10;  // rows of one summary block

// Metadata rows the analysis reads besides the sheet's own record.
struct TableRow {
    static constexpr int ForestMark = 32;  // "Forest" on the forest-plot column
};
inline constexpr int ForestWidth = 5000;  // twips

namespace Key {
inline constexpr std::string_view EntrySeq = "EntrySeq";
inline constexpr std::string_view OriginalRow = "OriginalRow";
inline constexpr std::string_view ValidRow = "ValidRow";
inline constexpr std::string_view Temp01 = "Temp01";
inline constexpr std::string_view Temp02 = "Temp02";
inline constexpr std::string_view Temp03 = "Temp03";
inline constexpr std::string_view GroupBy = "Group by";
inline constexpr std::string_view Model = "Model";
inline constexpr std::string_view ModelDisplay = "ModelDisplay";
inline constexpr std::string_view RefLineSub = "RefLineSub";
inline constexpr std::string_view RefLineTot = "RefLineTot";
inline constexpr std::string_view HideCol = "HideCol";
inline constexpr std::string_view PointSource = "colPointSource";
inline constexpr std::string_view SeSource = "colSeSource";
inline constexpr std::string_view VarianceSource = "colVarianceSource";
}  // namespace Key

// The bookkeeping columns every working table has, created when missing.
inline constexpr std::array<std::string_view, 11> BookkeepingKeys = {
    Key::OriginalRow, Key::ValidRow,   Key::Temp01, Key::Temp02,
    Key::Temp03,      Key::GroupBy,    Key::Model,  Key::ModelDisplay,
    Key::RefLineSub,  Key::RefLineTot, Key::HideCol};

// Row kinds and words written into the bookkeeping columns.
namespace Word {
inline constexpr std::string_view Original = "Original";
inline constexpr std::string_view Subgroup = "Subgroup";
inline constexpr std::string_view Overall = "Overall";
inline constexpr std::string_view Study = "Study";
inline constexpr std::string_view None = "None";
inline constexpr std::string_view Calculations = "Calculations";
inline constexpr std::string_view Fixed = "Fixed";
inline constexpr std::string_view Random = "Random";
inline constexpr std::string_view NoGrouping = "No grouping";
inline constexpr std::string_view MissingData = "Missing Data";
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

// Stems of the per-run-and-model columns, with their titles.
namespace Stem {
inline constexpr std::string_view Point = "cPoint(";
inline constexpr std::string_view Variance = "cVariance(";
inline constexpr std::string_view TauWithin = "Tau^2 Within(";
inline constexpr std::string_view TauBetween = "Tau^2 Between(";
inline constexpr std::string_view TotalVariance = "Total Variance(";
inline constexpr std::string_view MHQ = "MH Q(";
inline constexpr std::string_view IVWeight = "IV-Weight(";
inline constexpr std::string_view MHWeight = "MH-Weight(";
inline constexpr std::string_view W1 = "cW1(";
inline constexpr std::string_view RawWeight = "cRawWeight(";
inline constexpr std::string_view PointWt = "cPointWt(";
inline constexpr std::string_view PointSqWt = "cPointSqWt(";
inline constexpr std::string_view Wsq = "cWsq(";
inline constexpr std::string_view Wcu = "cWcu(";
inline constexpr std::string_view C = "cC(";
inline constexpr std::string_view B = "cB(";
inline constexpr std::string_view Q = "cQ(";
inline constexpr std::string_view Qdf = "cQdf(";
inline constexpr std::string_view I2 = "cI^2(";
inline constexpr std::string_view K = "cK(";
inline constexpr std::string_view SummaryPoint = "Summary Point(";
inline constexpr std::string_view SummaryVariance = "Summary Variance(";
inline constexpr std::string_view GroupT2 = "Group T^2(";
inline constexpr std::string_view GroupT2Variance = "Group T^2 Variance(";
inline constexpr std::string_view WtPct = "cWtPct(";
inline constexpr std::string_view WtPctG = "cWtPctG(";
}  // namespace Stem

struct CalcStem {
    std::string_view stem;
    std::string_view title;
};

// The columns of every run and model, in the order of the "Calculations" tab.
inline constexpr std::array<CalcStem, 24> CalcStems = {{
    {Stem::Point, "Point"},
    {Stem::Variance, "Study Variance"},
    {Stem::TauWithin, "Tau^2 Within"},
    {Stem::TauBetween, "Tau^2 Between"},
    {Stem::TotalVariance, "Total Variance"},
    {Stem::MHQ, "MH Q"},
    {Stem::IVWeight, "IV-Weight"},
    {Stem::MHWeight, "MH-Weight"},
    {Stem::W1, "W"},
    {Stem::RawWeight, "Raw weight"},
    {Stem::PointWt, "T*W"},
    {Stem::PointSqWt, "T^2*W"},
    {Stem::Wsq, "W^2"},
    {Stem::Wcu, "W^3"},
    {Stem::C, "C"},
    {Stem::B, "B"},
    {Stem::Q, "Q"},
    {Stem::Qdf, "Q df"},
    {Stem::I2, "I^2"},
    {Stem::K, "K"},
    {Stem::SummaryPoint, "Summary Point"},
    {Stem::SummaryVariance, "Summary Variance"},
    {Stem::GroupT2, "Group T^2"},
    {Stem::GroupT2Variance, "Group T^2 Variance"},
}};

// The Mantel-Haenszel terms of model 1, in the order GetMHVals yields them.
inline constexpr int MHTermCount = 11;
inline constexpr std::array<std::string_view, MHTermCount> MHStems = {
    "MHOR-R(", "MHOR-S(", "MHOR-E(", "MHOR-F(", "MHOR-G(", "MHOR-H(",
    "MHRR-P(", "MHRR-R(", "MHRR-S(", "MHRD-J(", "MHRD-K("};

// The weights view of each run and model.
inline constexpr std::array<CalcStem, 2> WeightStems = {{
    {Stem::WtPct, "Relative weight"},
    {Stem::WtPctG, "Relative weight"},
}};

// The columns a study row copies from its block's "Calculations" row.
inline constexpr std::array<std::string_view, 10> CopiedStems = {Stem::C,
                                                                 Stem::B,
                                                                 Stem::Q,
                                                                 Stem::Qdf,
                                                                 Stem::I2,
                                                                 Stem::K,
                                                                 Stem::SummaryPoint,
                                                                 Stem::SummaryVariance,
                                                                 Stem::GroupT2,
                                                                 Stem::GroupT2Variance};

// "cQ(1,3)": the stem, the run, a comma, the model and a closing parenthesis.
std::string RunModelKey(std::string_view stem, int run, int model);

}  // namespace synthara::analysis
