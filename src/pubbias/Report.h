#pragma once
// The publication-bias report: one title and text per procedure, in the
// program's words with the numbers as its tables show them, the fixed
// introduction, and their composition into a formatted report.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/DisplayVals.h"
#include "pubbias/FailSafe.h"
#include "pubbias/Intercept.h"
#include "pubbias/RankCorrelation.h"
#include "pubbias/TrimFill.h"

namespace synthara::pubbias {

struct ReportSection {
    std::string title;
    std::string text;
};

// The report slots, in the report's order.
enum class Section { ClassicFailSafe, OrwinFailSafe, Begg, Egger, TrimFill };
inline constexpr std::size_t kSections = 5;
using ReportSections = std::array<ReportSection, kSections>;

// `indexName` as the analysis names the index ("Odds ratio").
ReportSection ClassicFailSafeReport(const FailSafeResult& r);
ReportSection OrwinReport(const FailSafeResult& r, std::string_view indexName,
                          analysis::Transform transform);
ReportSection BeggReport(const TauResult& r);
ReportSection EggerReport(const InterceptResult& r);
ReportSection TrimFillReport(const TrimFillResult& r, analysis::Transform transform);

// The text of the fail-safe table's row 15 and its display of Orwin's N.
std::string OrwinRowLabel(const FailSafeResult& r, std::string_view indexName,
                          analysis::Transform transform);

enum class ReportSize { Small, Medium, Large };
struct ReportFont {
    std::string_view face = "Ariel";  // as the program names it; the platform finds a face
    int textSize = 10;
    int headingSize = 12;
};
ReportFont FontFor(ReportSize size);

// One line of the formatted report; an empty text is a blank line.
struct ReportLine {
    std::string text;
    bool heading = false;  // bold at the heading size
};

// The fixed introduction: three headings and their blocks.
std::vector<ReportLine> WriteIntro();

// The report window's text: the introduction, then the section `current`,
// or every section in order when `all`. A section that has not run shows
// its empty slot.
std::vector<ReportLine> CreateReport(const ReportSections& sections, bool all, Section current);

// The lines as plain text, one line break after each.
std::string PlainText(const std::vector<ReportLine>& lines);

// The report window's rectangle: an unset size takes 7460 by 795 units, an
// unset position stands 1000 units in from the screen's right and bottom.
struct WindowRect {
    int left = 0, top = 0, width = 0, height = 0;
};
WindowRect SetPubDetails(WindowRect stored, int screenWidth, int screenHeight);

}  // namespace synthara::pubbias
