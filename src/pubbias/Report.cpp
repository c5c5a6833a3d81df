#include "pubbias/Report.h"

namespace synthara::pubbias {

ReportFont FontFor(ReportSize size) {
    switch (size) {
        case ReportSize::Small:
            return {"Ariel", 8, 10};
        case ReportSize::Large:
            return {"Ariel", 12, 14};
        case ReportSize::Medium:
            break;
    }
    return {"Ariel", 10, 12};
}

std::vector<ReportLine> WriteIntro() {
    return {
        {"Introduction to publication bias", true},
        {"", false},
        {"The basic issue of publication bias is that not all completed studies are published, and "
         "the selection process is not random (hence the 'bias'). "
         "Rather, studies that report relatively large treatment effects are more likely to be "
         "submitted and/or accepted for publication than studies which report more modest "
         "treatment effects."
         "Since the treatment effect estimated from a biased collection of studies would tend to "
         "overestimate the true treatment effect, it is important to assess the likley extent of "
         "the bias, and its potential impact on the conclusions. "
         "This module includes several tools which may be used for this purpose.",
         false},
        {"", false},
        {"Funnel plot", true},
        {"", false},
        {"The funnel plot is a plot of a measure of study size (usually standard error or "
         "precision) on the vertical axis as a function of effect size on the horizontal axis. "
         "Large studies appear toward the top of the graph, and tend to cluster near the mean "
         "effect size.  Smaller studies appear toward the bottom of the graph, and (since there "
         "is more sampling variation in effect size estimates in the smaller studies) will be "
         "dispersed across a range of values.  "
         "In the absence of publication bias we would expect the studies to be distributed "
         "symmetrically about the combined effect size.  By contrast, in the presence of bias, we "
         "would expect that the bottom of the plot would show a higher concentration of studies "
         "on one side of the mean than the other.  This would reflect the fact that smaller "
         "studies (which appear toward the bottom) are more likely to be published if they have "
         "larger than average effects, which makes them more likely to meet the criterion for "
         "statistical significance.",
         false},
        {"", false},
        {"Various statistical procedures can be accessed from the View menu to quantify or augment "
         "this display. "
         "Rank correlation and regression procedures can test for the presence of bias.  "
         "The classic fail-Safe N and the Orwin fail-safe N ask if we need to be concerned that "
         "the entire observed effect may be an artifact of bias.  "
         "Trim and Fill offers a more nuanced perspective, and asks how the effect size would "
         "shift if the apparent bias were to be removed. ",
         false},
        {"", false},
        {"An important caveat", true},
        {"", false},
        {"Sterne and Egger note that while the plot and these procedures may detect a relationship "
         "between sample size and effect size, they cannot assign a causal mechanism to it. "
         "That is, the effect size MAY be larger in small studies because we retrieved a biased "
         "sample of the smaller studies.  However, it is also possible that the effect size "
         "really IS larger in smaller studies - perhaps because the smaller studies used "
         "different populations or different protocols than the larger ones."
         "Sterne and Egger use the term 'small study effect' to capture these and other "
         "potential confounds. ",
         false},
    };
}

std::vector<ReportLine> CreateReport(const ReportSections& sections, bool all, Section current) {
    std::vector<ReportLine> lines = WriteIntro();
    lines.push_back({"", false});
    lines.push_back({"", false});
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (!all && i != static_cast<std::size_t>(current)) continue;
        lines.push_back({sections[i].title, true});
        lines.push_back({"", false});
        lines.push_back({sections[i].text, false});
        lines.push_back({"", false});
        lines.push_back({"", false});
    }
    return lines;
}

std::string PlainText(const std::vector<ReportLine>& lines) {
    std::string text;
    for (const ReportLine& line : lines) {
        text += line.text;
        text += '\n';
    }
    return text;
}

WindowRect SetPubDetails(WindowRect stored, int screenWidth, int screenHeight) {
    if (stored.width <= 0) stored.width = 7460;
    if (stored.height <= 0) stored.height = 795;
    if (stored.left <= 1000) stored.left = screenWidth - stored.width - 1000;
    if (stored.top <= 0) stored.top = screenHeight - stored.height - 1000;
    return stored;
}

}  // namespace synthara::pubbias
