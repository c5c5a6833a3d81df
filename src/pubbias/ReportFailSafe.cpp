#include "pubbias/Report.h"
#include "pubbias/Scale.h"

namespace synthara::pubbias {
namespace {

std::string Whole(double value) {
    return Fixed(value, 0);
}

}  // namespace

ReportSection ClassicFailSafeReport(const FailSafeResult& r) {
    std::string t =
        "One concern of publication bias is that some non-significant studies are missing from our "
        "analysis and that these studies, if included, would nullify the observed effect.  "
        "Robert Rosenthal suggested that rather than simply speculate about the impact of the "
        "missing studies, we compute the number of studies that would be required to nullify the "
        "effect. "
        "If this number is relatively small then there is indeed cause for concern. However, if "
        "this number is large, we can be confident that the treatment effect, while possibly "
        "inflated by the exclusion of some studies, is nevertheless not nil.";
    t += "\n\n";
    t += "He suggested that this analysis be called a 'File-drawer' analysis, file drawers being "
         "the presumed location of the missing studies.  Naidra proposed the term 'Fail-Safe N', "
         "a reference to the number of missing studies that would nullify the effect.  ";
    t += "\n\n";
    t += "This approach is limited in two important ways.  First, it assumes that the effect in "
         "the hidden studies is nil, rather than considering the possibility that some of the "
         "studies could have shown an effect in the reverse direction.  Therefore, the number of "
         "studies required to nullify the effect may be smaller than the Fail-Safe N. ";
    t += "\n\n";
    t += "Second, and more fundamentally, this approach focuses on statistical significance "
         "rather than clinical or substantive significance.  "
         "That is, it may allow us to assert that the treatment effect is not nil, but does not "
         "address the question of whether or not it remains clinically important after the "
         "missing studies have been included.";
    t += "\n\n";
    t += "Note also that the fail-safe N algorithm computes a p-value for each study and then "
         "combines these p-values.  "
         "By contrast, the generally accepted approach today (and the one used by this program) "
         "is to compute an effect size for each study, combine the effect sizes, and then "
         "compute the p-value for the combined effect. "
         "The two approaches do not generally yield identical results.";
    t += "\n\n";
    t += "This meta analysis incorporates data from " + Fixed(r.n, 5) +
         " studies, which yield a z-value of " + Fixed(r.zc, 5) + " and corresponding " +
         (r.tails == 1 ? "1-tailed " : "2-tailed ") + "p-value of " + Fixed(r.p, 5) + ".  ";
    t += "\n\n";
    if (r.failSafeN == 0) {
        t += "Since the combined result is not statistically significant, the Fail-Safe N (which "
             "addresses the concern that the observed significance may be spurious)  is not "
             "relevant.";
    } else {
        t += "The fail-safe N is " + Whole(r.failSafeN) + ".  " +
             "This means that we would need to locate and include " + Whole(r.failSafeN) +
             " 'null' studies in order for the combined " + Whole(r.tails) +
             "-tailed p-value to exceed " + Fixed(r.alpha, 3) + ".  " +
             "Put another way, there would be need to be " + Fixed(r.failSafeN / r.n, 1) +
             " missing studies for every observed study for the effect to be nullified. ";
    }
    return {"Classic fail-safe N", t};
}

std::string OrwinRowLabel(const FailSafeResult& r, std::string_view indexName,
                          analysis::Transform transform) {
    return "Number missing studies needed to bring " + LowerCase(indexName) +
           (r.orwin == OrwinCase::Over ? " over " : " under ") + Shown(r.criterion, transform);
}

ReportSection OrwinReport(const FailSafeResult& r, std::string_view indexName,
                          analysis::Transform transform) {
    const std::string index = LowerCase(indexName);
    const std::string criterion = Shown(r.criterion, transform);
    const std::string meanNew = Shown(r.meanNew, transform);
    std::string t =
        "Like the classic fail-safe N, the Orwin fail-safe N addresses the possibility that "
        "studies are missing from the analysis and that these studies, "
        "if included in the analysis, would shift the effect size toward the null.";
    t += "\n\n";
    t += "Orwin's fail-safe N differs from the classic fail-safe N in two ways. ";
    t += "\n\n";
    t += "First, the mean " + index +
         " in the new (missing) studies can be a value other than the nil value (currently, it "
         "is set to " +
         meanNew + ").";
    t += "\n\n";
    const std::string second =
        "Second, the criterion value is an effect size rather than a p-value.  That is, the Orwin "
        "fail-safe N is the number of (missing) studies that, when added to the analysis, will ";
    switch (r.orwin) {
        case OrwinCase::Over:
            t += second + "bring the combined " + index +
                 " above a specified threshold (currently, " + criterion + ").";
            break;
        case OrwinCase::Under:
            t += second + "bring the combined " + index +
                 " below a specified threshold (currently, " + criterion + ").";
            break;
        case OrwinCase::NotBetween:
            t += second + "move the combined " + index +
                 " past a specified threshold (currently, " + criterion + ")." +
                 "The criterion value must be set between the other two values for the Orwin "
                 "fail-safe N to be computed.";
            break;
    }
    if (r.orwinN) {
        const std::string n = std::to_string(*r.orwinN);
        t += "\n\n";
        t += "The Orwin fail-safe N is " + n + ".  This means that we would need to locate " + n +
             " studies with mean " + index + " of " + meanNew + " to bring the combined " + index +
             (r.orwin == OrwinCase::Over ? " over " : " under ") + criterion;
    }
    return {"Orwin fail-safe N", t};
}

}  // namespace synthara::pubbias
