#include "sheet/catalogue/FormatCatalogue.h"

#include <algorithm>
#include <set>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

namespace synthara::sheet {
namespace {

TEST(FormatCatalogue, NamesAreUniqueAndFindable) {
    const auto all = AllFormats();
    std::set<std::string_view> longNames, shortNames;
    for (const FormatDef& f : all) {
        EXPECT_TRUE(longNames.insert(f.longName).second) << f.longName;
        EXPECT_TRUE(shortNames.insert(f.shortName).second) << f.shortName;
        EXPECT_FALSE(f.roles.empty()) << f.longName;
        EXPECT_LE(f.roles.size(), static_cast<std::size_t>(MaxRoles)) << f.longName;
        EXPECT_NE(f.procedure, Procedure::None) << f.longName;
        EXPECT_EQ(FindFormat(f.longName), &f);
        EXPECT_EQ(FindFormatByAnyName(f.longName), &f);
        EXPECT_EQ(FindFormatByAnyName(f.shortName), &f);
        EXPECT_EQ(ProcedureFor(f.longName), f.procedure);
    }
    for (const FormatDef& legacy : LegacyFormats()) {
        EXPECT_EQ(FindFormat(legacy.longName), nullptr) << legacy.longName;
        EXPECT_EQ(ProcedureFor(legacy.longName), legacy.procedure) << legacy.longName;
    }
    EXPECT_EQ(FindFormat("events and sample size"), nullptr);
    EXPECT_EQ(FindFormat("Events"), nullptr);  // a short name is no key
    EXPECT_EQ(FindFormatByAnyName(""), nullptr);
    EXPECT_EQ(ProcedureFor("No such format"), Procedure::None);
}

// The tree is built by grouping consecutive entries, so each branch, each
// family within a branch and each node must form one run, in branch order,
// and a node is either wholly common or wholly under "Show all".
TEST(FormatCatalogue, WizardEntriesGroupIntoTree) {
    using Node = std::tuple<Branch, std::string_view, std::string_view>;
    std::set<Branch> branchesSeen;
    std::set<std::pair<Branch, std::string_view>> familiesSeen;
    std::set<Node> nodesSeen;
    const FormatDef* previous = nullptr;
    for (const FormatDef& f : AllFormats()) {
        if (f.branch == Branch::NotInWizard) {
            EXPECT_TRUE(f.family.empty() && f.design.empty()) << f.longName;
        }
        const bool newBranch = previous == nullptr || previous->branch != f.branch;
        const bool newFamily = newBranch || previous->family != f.family;
        const bool newNode = newFamily || previous->design != f.design;
        if (newBranch) {
            EXPECT_TRUE(branchesSeen.insert(f.branch).second) << f.longName;
            if (previous != nullptr) {
                EXPECT_LT(previous->branch, f.branch) << f.longName;
            }
        }
        if (newFamily) {
            EXPECT_TRUE(familiesSeen.insert({f.branch, f.family}).second) << f.longName;
        }
        if (newNode) {
            EXPECT_TRUE(nodesSeen.insert({f.branch, f.family, f.design}).second) << f.longName;
        } else {
            EXPECT_EQ(previous->allFormatsOnly, f.allFormatsOnly) << f.longName;
        }
        previous = &f;
    }
    EXPECT_EQ(branchesSeen.size(), 5u);
    EXPECT_EQ(nodesSeen.size(), 19u);  // 18 wizard nodes and the formats outside it
}

// Every slot from `first` on is blank.
::testing::AssertionResult BlankFrom(const DefinedFormat& defined, std::size_t first) {
    for (std::size_t i = first; i < MaxRoles; ++i) {
        bool blank = defined.EntryColNames[i].empty() && !defined.EntryColInteger[i];
        for (const auto& pieces : defined.LabelPieces)
            blank = blank && pieces[i].empty();
        if (!blank) return ::testing::AssertionFailure() << "slot " << i << " is not blank";
    }
    return ::testing::AssertionSuccess();
}

TEST(FormatCatalogue, DefineFormatBlanksThenFills) {
    constexpr std::string_view kLong = "Means, SD pre and post, N, in each group, Pre/Post Corr";
    DefinedFormat defined;
    DefineFormat(kLong, defined);
    EXPECT_EQ(defined.EntryColNames[12], "Standardize by");

    DefineFormat("Events and sample size in each group", defined);
    EXPECT_EQ(defined.CurrentFormatLong, "Events and sample size in each group");
    EXPECT_EQ(defined.CurrentFormatShort, "Cohort 2x2 (Events)");
    EXPECT_EQ(defined.EntryColNames[3], "Group-B Total N");
    EXPECT_TRUE(defined.EntryColInteger[3]);
    EXPECT_EQ(defined.LabelPieces[1][3], "Total N");
    EXPECT_TRUE(BlankFrom(defined, 4));

    // Names DefineFormat doesn't know, legacy and short names included: all
    // slots blank, the current names untouched.
    for (std::string_view unknown : {"No such format", "Cohort 2x2 (Events)",
                                     "Events and sample size in each condition", ""}) {
        DefineFormat(kLong, defined);
        DefineFormat(unknown, defined);
        EXPECT_EQ(defined.CurrentFormatShort, "Means, SD in each group") << unknown;
        EXPECT_EQ(defined.CurrentFormatLong, kLong);
        EXPECT_TRUE(BlankFrom(defined, 0)) << unknown;
    }
}

TEST(FormatCatalogue, DropDownRoles) {
    EXPECT_EQ(FindDropDown("Tails"), nullptr);
    EXPECT_EQ(FindDropDown("effect direction"), nullptr);

    const DropDownRole& direction = *FindDropDown("Effect direction");
    const std::pair<int, std::vector<std::string_view>> cases[] = {
        {0, {"0", "Not specified"}},
        {2, {"2.0", " 2 ", "Negative", "negative"}},
        {3, {"3", "03", "POSITIVE"}},
        {-1, {"4", "-1", "1.5", "2x", "", "Neg", "Paired study", "99999999999999999999"}}};
    for (const auto& [code, cells] : cases) {
        for (std::string_view cell : cells)
            EXPECT_EQ(DropDownCode(direction, cell), code) << cell;
    }
    EXPECT_EQ(DropDownCode(*FindDropDown("Standardize by"), "change score sd"), 2);
    EXPECT_EQ(DropDownCode(*FindDropDown("Study design"), "3"), -1);
}

}  // namespace
TEST(FormatCatalogue, LegacyNamesAreComputedWithoutRolesOrLayout) {
    // A legacy name is computed by its procedure, with no roles and no layout.
    const FormatDef* legacy = FindComputedFormat("Cases and controls in each condition");
    ASSERT_NE(legacy, nullptr);
    EXPECT_EQ(legacy->procedure, Procedure::ComputeFromEvents);
    EXPECT_TRUE(legacy->roles.empty());
    EXPECT_TRUE(std::holds_alternative<std::monostate>(legacy->layout));
    const FormatDef* rates = FindFormat("Matched 2x2 table");
    EXPECT_EQ(FindComputedFormat(rates->longName), rates);
    EXPECT_EQ(FindComputedFormat("No such format"), nullptr);
}

}  // namespace synthara::sheet
