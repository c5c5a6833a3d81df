#include "analysis/WorkingTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace synthara::analysis {
namespace {

TEST(TextPool, RanksFollowTheSheetsSortOrder) {
    // Empty first, numbers by value (typed or not), then text without regard
    // to case; texts that sort as equal share a rank.
    TextPool pool;
    const char* ascending[] = {"", "-2", "1", "1.0", "10", "alpha", "Beta", "beta", "gamma"};
    std::vector<Code> codes;
    for (const char* text : ascending)
        codes.push_back(pool.Intern(text));
    EXPECT_EQ(pool.Intern("alpha"), codes[5]);  // one code per text
    const auto& rank = pool.SortRanks();
    for (std::size_t i = 1; i < codes.size(); ++i) {
        const std::string_view a = ascending[i - 1];
        const std::string_view b = ascending[i];
        const bool tie = (a == "1" && b == "1.0") || (a == "Beta" && b == "beta");
        if (tie) {
            EXPECT_EQ(rank[codes[i - 1]], rank[codes[i]]) << a << " " << b;
        } else {
            EXPECT_LT(rank[codes[i - 1]], rank[codes[i]]) << a << " " << b;
        }
    }
    // A text added later is ranked at the next call.
    const Code late = pool.Intern("2");
    EXPECT_LT(pool.SortRanks()[codes[3]], pool.SortRanks()[late]);
    EXPECT_LT(pool.SortRanks()[late], pool.SortRanks()[codes[4]]);
}

TEST(WorkingTable, RebuildMovesEveryColumnAndBlanksNewRows) {
    WorkingTable vs;
    vs.SetRows(3);
    Column<double>& q = vs.Ensure(Stat::Q, 1, 1);
    Column<Code>& dose = vs.AddModerator("Dose");
    Column<double>& n1 = vs.EnsureCount(0);
    for (int r = 0; r < 3; ++r) {
        vs.sheetRow[r] = 100 + r;
        vs.population[0][r] = vs.texts.Intern(std::string(1, static_cast<char>('a' + r)));
        q[r] = r * 1.5;
        dose[r] = vs.texts.Intern(std::to_string(10 * r));
        n1[r] = 20.0 + r;
    }
    // Row 1 goes, rows 2 and 0 swap, and a new row comes between them.
    vs.RebuildRows({2, -1, 0});
    ASSERT_EQ(vs.Rows(), 3);
    EXPECT_EQ(vs.sheetRow[0], 102);
    EXPECT_EQ(vs.sheetRow[1], NoRow);
    EXPECT_EQ(vs.sheetRow[2], 100);
    EXPECT_EQ(vs.PopulationText(0, 0), "c");
    EXPECT_EQ(vs.PopulationText(0, 1), "");
    EXPECT_EQ(q[0], 3.0);
    EXPECT_TRUE(std::isnan(q[1]));
    EXPECT_EQ(vs.Ref(Stat::Q, 1, 1).Get(1), 0);  // an empty cell reads as zero
    EXPECT_EQ(vs.blockLine[1], NoLine);
    // The columns made for the sheet's moderators and counts move too.
    EXPECT_EQ(vs.FindModerator("Dose"), 0);
    EXPECT_EQ(vs.ModeratorText(0, 0), "20");
    EXPECT_EQ(vs.ModeratorText(0, 1), "");
    EXPECT_EQ(n1[2], 20.0);
    EXPECT_TRUE(std::isnan(n1[1]));
    EXPECT_EQ(vs.Count(1), nullptr);
    // A statistic made later is born at the table's length.
    EXPECT_EQ(vs.Ensure(Stat::K, 1, 2).Size(), 3);
    vs.SetRows(5);
    EXPECT_EQ(q.Size(), 5);
    EXPECT_EQ(vs.kind.Size(), 5);
    EXPECT_EQ(dose.Size(), 5);
    vs.Clear();
    EXPECT_EQ(vs.ModeratorCount(), 0);
    EXPECT_EQ(vs.Count(0), nullptr);
}

TEST(StatKey, ReadsKeysWithoutRegardToCase) {
    const struct {
        const char* key;
        std::optional<StatKey> expected;
    } cases[] = {
        {"cQ(1,3)", StatKey{Stat::Q, 1, 3}},
        {"CQDF(2,1)", StatKey{Stat::Qdf, 2, 1}},
        {"Group T^2 Variance(3,5)", StatKey{Stat::GroupT2Variance, 3, 5}},
        {"MHOR-E(1,1)", StatKey{Stat::MHOR_E, 1, 1}},
        {"cQ(4,1)", std::nullopt},
        {"cQ(1,6)", std::nullopt},
        {"cQ(1,1", std::nullopt},
        {"cQ(", std::nullopt},
        {"EntrySeq", std::nullopt},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ParseStatKey(c.key), c.expected) << c.key;
        if (c.expected) {
            EXPECT_TRUE(ParseStatKey(RunModelKey(c.expected->stat, 1, 1)));
        }
    }
}

}  // namespace
}  // namespace synthara::analysis
