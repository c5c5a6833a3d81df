#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "pubbias/Datasets.h"
#include "pubbias/PubBias.h"

namespace synthara::pubbias {
namespace {

std::string ReadGolden(const std::string& name) {
    std::ifstream in(std::string(SYNTHARA_PUBBIAS_GOLDEN) + "/" + name, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

BiasResult EightStudies(const BiasSettings& settings) {
    return RunPubBias(testdata::Make({0.57, -0.12, 0.36, -0.2, -0.22, 1.67, 0.29, 0.99},
                                     {0.8, 0.12, 0.8, 0.8, 0.07, 0.46, 0.28, 0.98}),
                      settings, "Odds ratio", analysis::Transform::Log);
}

// The whole report of one dataset: introduction and all five sections, with
// an Orwin criterion between the mean and the missing studies' mean.
TEST(Report, FullReportOfOneDataset) {
    BiasSettings settings;
    settings.failSafe.orwinObservedMean = -0.133;
    settings.failSafe.orwinCriterion = -0.05;
    settings.failSafe.orwinMeanNew = 0.1;
    const BiasResult r = EightStudies(settings);
    EXPECT_EQ(PlainText(CreateReport(r.sections, true, Section::ClassicFailSafe)),
              ReadGolden("eight-studies.txt"));
}

TEST(Report, SectionsThatTakeOtherSentences) {
    BiasSettings settings;
    settings.side = TrimSide::NotSpecified;
    const BiasResult r = EightStudies(settings);
    const std::string& trim = r.sections[static_cast<std::size_t>(Section::TrimFill)].text;
    EXPECT_TRUE(trim.ends_with(
        "Trim and Fill cannot be computed because one or more options have not been set."));
    // Criterion and mean in missing studies both 0: no Orwin number.
    const std::string& orwin = r.sections[static_cast<std::size_t>(Section::OrwinFailSafe)].text;
    EXPECT_TRUE(
        orwin.ends_with("past a specified threshold (currently, 1.00000).The criterion "
                        "value must be set between the other two values for the Orwin "
                        "fail-safe N to be computed."));
}

TEST(Report, OnlyTheCurrentSectionUnlessAll) {
    const ReportSections sections = {ReportSection{"A", "a"}, {"B", "b"}, {}, {}, {}};
    const std::string one = PlainText(CreateReport(sections, false, Section::OrwinFailSafe));
    EXPECT_TRUE(one.ends_with("\n\n\nB\n\nb\n\n\n"));
    EXPECT_EQ(one.find("\nA\n"), std::string::npos);
    // Empty slots of procedures that have not run are written without fault.
    const std::string all = PlainText(CreateReport(sections, true, Section::OrwinFailSafe));
    EXPECT_TRUE(all.ends_with("B\n\nb\n\n\n" + std::string(15, '\n')));
}

TEST(Report, WindowAndFonts) {
    const WindowRect unset = SetPubDetails({}, 15360, 11520);
    EXPECT_EQ(unset.width, 7460);
    EXPECT_EQ(unset.height, 795);
    EXPECT_EQ(unset.left, 15360 - 7460 - 1000);
    EXPECT_EQ(unset.top, 11520 - 795 - 1000);
    const WindowRect kept = SetPubDetails({2000, 300, 5000, 4000}, 15360, 11520);
    EXPECT_EQ(kept.left, 2000);
    EXPECT_EQ(kept.top, 300);
    EXPECT_EQ(FontFor(ReportSize::Small).textSize, 8);
    EXPECT_EQ(FontFor(ReportSize::Large).headingSize, 14);
    EXPECT_EQ(FontFor(ReportSize::Medium).face, "Ariel");
}

}  // namespace
}  // namespace synthara::pubbias
