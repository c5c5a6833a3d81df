#include "pubbias/Report.h"
#include "pubbias/Scale.h"

namespace synthara::pubbias {

ReportSection BeggReport(const TauResult& r) {
    std::string t =
        "The classic case of publication bias is the case depicted by the funnel plot.  "
        "Large studies tend to be included in the analysis regardless of their "
        "treatment effect "
        "whereas small studies are more likely to be included when they show a "
        "relatively large treatment effect.  "
        "Under these circumstances there will be an inverse correlation between study "
        "size and effect size.  ";
    t += "\n\n";
    t += "Begg and Mazumdar suggested that this correlation can serve as a test for publication "
         "bias.  Concretely, they suggest that we compute "
         "the rank order correlation (Kendall's tau b) between the treatment effect and the "
         "standard error (which is driven primarily by sample size).";
    t += "\n\n";
    t += "This approach is limited in some important ways.  "
         "A significant correlation suggests that bias exists but does not directly address the "
         "implications of this bias.  "
         "Conversely, a non-significant correlation may be due to low statistical power, and "
         "cannot be taken as evidence that bias is absent.  ";
    if (r.ok) {
        t += "\n\n";
        t += "In this case Kendall's tau b (corrected for ties, if any) is " +
             Fixed(r.tauCorrected, 5) + ", " + "with a 1-tailed p-value (recommended) of " +
             Fixed(r.p1Corrected, 5) + " " + "or a 2-tailed p-value of " + Fixed(r.p2Corrected, 5) +
             " " + "(based on continuity-corrected normal approximation).  ";
    }
    return {"Begg and Mazumdar Rank Correlation Test", t};
}

ReportSection EggerReport(const InterceptResult& r) {
    std::string t =
        "Egger suggests that we assess this same bias "
        "by using precision (the inverse of the standard error) to predict the "
        "standardized effect (effect size divided by the standard error).  "
        "In this equation, the size of the treatment effect is captured by the slope "
        "of the regression line (B1) "
        "while bias is captured by the intercept (B0).  ";
    t += "\n\n";
    t += "This approach may offer a number of advantages over the rank correlation approach.  "
         "Under some circumstances this may be a more powerful test.  "
         "Additionally, this approach can be extended to include more than one predictor "
         "variable, which means that we can simultaneously assess the impact of several "
         "factors, including sample size, on the treatment effect.";
    if (r.valid) {
        t += "\n\n";
        t += "In this case the intercept (B0) is  " + Fixed(r.intercept, 5) +
             ",  95% confidence interval (" + Fixed(r.lower, 5) + ", " + Fixed(r.upper, 5) + "), ";
        if (r.t) {
            t += "with t=" + Fixed(*r.t, 5) + ", df=" + Fixed(r.df, 0) + ". " +
                 "The 1-tailed p-value (recommended) is " + Fixed(*r.p1, 5) + ", " +
                 "and the 2-tailed p-value is " + Fixed(*r.p2, 5) + ".";
        } else {
            t += "Since the standard error is zero, the t-value and p-value cannot be computed.";
        }
    }
    return {"Egger's Test of the Intercept", t};
}

}  // namespace synthara::pubbias
