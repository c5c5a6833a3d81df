#include "pubbias/Report.h"
#include "pubbias/Scale.h"

namespace synthara::pubbias {
namespace {

struct SideWords {
    const char* asymmetric;
    const char* method;
};

SideWords WordsFor(TrimSide side) {
    switch (side) {
        case TrimSide::Left:
            return {
                "Therefore, if the funnel plot is actually asymmetric, with a relatively high "
                "number of small studies (representing a large effect size) falling toward "
                "the right of the mean effect "
                "and relatively few falling toward the left, we are concerned that these "
                "left-hand studies may actually exist, and are missing from the analysis. ",
                "The method is known as 'Trim and Fill' as the method initially trims the "
                "asymmetric studies from the right-hand side to locate the "
                "unbiased effect (in an iterative procedure), and then fills the plot by "
                "re-inserting the trimmed studies on the right as well as their imputed "
                "counterparts to the left the mean effect.  "};
        case TrimSide::Right:
            return {
                "Therefore, if the funnel plot is actually asymmetric, with a relatively high "
                "number of small studies (representing a large effect size) falling toward "
                "the left of the mean effect "
                "and relatively few falling toward the right, we are concerned that these "
                "right-hand studies may actually exist, and are missing from the analysis. ",
                "The method is known as 'Trim and Fill' as the method initially trims the "
                "asymmetric studies from the left-hand side to locate the "
                "unbiased effect (in an iterative procedure), and then fills the plot by "
                "re-inserting the trimmed studies on the left as well as their imputed "
                "counterparts to the right the mean effect.  "};
        case TrimSide::NotSpecified:
            break;
    }
    return {
        "Therefore, if the funnel plot is actually asymmetric, with a relatively high number "
        "of small studies (representing a large effect size) falling toward one side of the "
        "mean effect "
        "and relatively few falling toward the other, we are concerned that these left-hand "
        "studies may actually exist, and are missing from the analysis. ",
        "The method is known as 'Trim and Fill' as the method initially trims the asymmetric "
        "studies from one side to locate the "
        "unbiased effect (in an iterative procedure), and then fills the plot by re-inserting "
        "the trimmed studies on that side as well as their imputed counterparts on the other "
        "side of the mean effect.  "};
}

// "x (lower, upper).  " as the result table shows the three cells.
std::string Interval(double point, double lower, double upper, analysis::Transform transform) {
    return Shown(point, transform) + " (" + Shown(lower, transform) + ", " +
           Shown(upper, transform) + ").  ";
}

std::string ModelSentence(const char* model, float observed, double observedLower,
                          double observedUpper, float adjusted, double adjustedLower,
                          double adjustedUpper, int k, analysis::Transform transform) {
    std::string t =
        std::string("Under the ") + model +
        " model the point estimate and 95% confidence interval for the combined "
        "studies is " +
        Interval(static_cast<double>(observed), observedLower, observedUpper, transform);
    if (k == 0) return t + "Using Trim and Fill these values are unchanged.";
    return t + "Using Trim and Fill the imputed point estimate is " +
           Interval(static_cast<double>(adjusted), adjustedLower, adjustedUpper, transform);
}

}  // namespace

ReportSection TrimFillReport(const TrimFillResult& r, analysis::Transform transform) {
    const SideWords words = WordsFor(r.side);
    std::string t =
        "If the meta analysis had captured all the relevant studies we would expect "
        "the funnel plot to be symmetric. That is, we would expect studies to be "
        "dispersed equally on either side of the overall effect.  ";
    t += "\n\n";
    t += words.asymmetric;
    t += "\n\n";
    t += "Duval and Tweedie developed a method that allows us to impute these studies. That is, "
         "we determine where the missing studies are likely to fall, "
         "add them to the analysis, and then recompute the combined effect.  ";
    t += "\n\n";
    t += words.method;
    t += "\n\n";
    if (!r.OptionsSet())
        return {"Duval and Tweedie's Trim and Fill",
                t + "Trim and Fill cannot be computed because one or more options have not been "
                    "set."};
    t += r.model == TrimModel::Fixed
             ? "The program is looking for missing studies based on a fixed effect model, "
             : "The program is looking for missing studies based on a random effects model, ";
    t += r.side == TrimSide::Left
             ? "and is looking for missing studies only to the left side of the mean effect "
               "(these parameters are set by the user). "
             : "and is looking for missing studies only to the right side of the mean effect "
               "(these parameters are set by the user). ";
    t += "\n\n";
    if (r.k == 0)
        t += "Using these parameters the method suggests that no studies are missing.  ";
    else if (r.k == 1)
        t += "Using these parameters the method suggests that one study is missing.  ";
    else
        t += "Using these parameters the method suggests that " + Fixed(r.k, 0) +
             " studies are missing.  ";
    const StoredSummary& o = r.observed;
    const StoredSummary& a = r.adjusted;
    t += "\n\n";
    t += ModelSentence("fixed effect", o.fixedMean, o.FixedLower(), o.FixedUpper(), a.fixedMean,
                       a.FixedLower(), a.FixedUpper(), r.k, transform);
    t += "\n\n";
    t += ModelSentence("random effects", o.randomMean, o.RandomLower(), o.RandomUpper(),
                       a.randomMean, a.RandomLower(), a.RandomUpper(), r.k, transform);
    if (r.k != 0) {
        t += "\n\n";
        t += "To plot the imputed studies click 'Funnel plot' and then select 'Plot observed and "
             "imputed' on the toolbar.";
    }
    return {"Duval and Tweedie's Trim and Fill", t};
}

}  // namespace synthara::pubbias
