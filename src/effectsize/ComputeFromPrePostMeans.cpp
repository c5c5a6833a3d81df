// Two groups each measured before and after: the difference between the
// groups' mean changes, standardised by the pooled SD of the post scores or
// of the changes.
#include <cmath>
#include <string>
#include <variant>

#include "effectsize/ComputeFromMeans.h"
#include "effectsize/FormatRoles.h"
#include "effectsize/StdDiffChain.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"
#include "stats/Distributions.h"
#include "stats/Formulas.h"

namespace synthara::effectsize {

namespace {

using sheet::PrePostEntry;
using sheet::RoleKind;

// How a format gives each group's change and its spread.
enum class Spread { SDChange, SDPrePost, T, P, F };

struct Kind {
    Spread spread;
    bool means;  // means pre and post rather than the mean change
};

constexpr Kind KindOf(PrePostEntry entry) {
    switch (entry) {
        case PrePostEntry::ChangeSDDifference:
            return {Spread::SDChange, false};
        case PrePostEntry::MeansSDDifference:
            return {Spread::SDChange, true};
        case PrePostEntry::ChangeSDPrePost:
            return {Spread::SDPrePost, false};
        case PrePostEntry::MeansSDPrePost:
            return {Spread::SDPrePost, true};
        case PrePostEntry::ChangeT:
            return {Spread::T, false};
        case PrePostEntry::MeansT:
            return {Spread::T, true};
        case PrePostEntry::ChangeP:
            return {Spread::P, false};
        case PrePostEntry::MeansP:
            return {Spread::P, true};
        case PrePostEntry::ChangeF:
            return {Spread::F, false};
        case PrePostEntry::MeansF:
        case PrePostEntry::FOnly:
            break;
    }
    return {Spread::F, true};
}

// The roles of one group.
struct GroupRoles {
    RoleKind preMean, postMean, meanChange, changeSD, preSD, postSD, tChange, pChange, n;
};
constexpr GroupRoles kGroupA{RoleKind::PreMeanA,  RoleKind::PostMeanA, RoleKind::MeanChangeA,
                             RoleKind::ChangeSDA, RoleKind::PreSDA,    RoleKind::PostSDA,
                             RoleKind::TChangeA,  RoleKind::PChangeA,  RoleKind::TotalNA};
constexpr GroupRoles kGroupB{RoleKind::PreMeanB,  RoleKind::PostMeanB, RoleKind::MeanChangeB,
                             RoleKind::ChangeSDB, RoleKind::PreSDB,    RoleKind::PostSDB,
                             RoleKind::TChangeB,  RoleKind::PChangeB,  RoleKind::TotalNB};

void ValidateGroup(bool first, const GroupRoles& g, const FormatRoles& roles, WorkingSet& ws) {
    auto mean = first ? &CheckMean1 : &CheckMean2;
    auto sd = first ? &CheckSD1 : &CheckSD2;
    for (RoleKind kind : {g.preMean, g.postMean, g.meanChange})
        if (roles.Role(kind) >= 0) mean(roles.Role(kind), ws);
    for (RoleKind kind : {g.changeSD, g.preSD, g.postSD})
        if (roles.Role(kind) >= 0) sd(roles.Role(kind), ws);
    if (roles.Role(g.tChange) >= 0) CheckT(roles.Role(g.tChange), ws);
    if (roles.Role(g.pChange) >= 0) CheckP(roles.Role(g.pChange), roles.Role(RoleKind::Tails), ws);
    (first ? &CheckN1 : &CheckN2)(roles.Role(g.n), ws);
}

constexpr Formula kRawDiff{"RawDiff = {MeanChange(1)} - {MeanChange(2)}"};
constexpr Formula kRawDiffFirstT{"RawDiff = {MeanChange1} - {MeanChange2}"};
constexpr Formula kSDChangeFromPrePost[] = {
    Formula{"SDChange(1) = Sqr({SDPre(1)} ^ 2 + {SDPost(1)} ^ 2 - 2 * {CorrPrePost} * {SDPre(1)} * "
            "{SDPost(1)})"},
    Formula{"SDChange(2) = Sqr({SDPre(2)} ^ 2 + {SDPost(2)} ^ 2 - 2 * {CorrPrePost} * {SDPre(2)} * "
            "{SDPost(2)})"}};
constexpr Formula kSDChangeFromT[] = {
    Formula{"SDChange(1) = Sqr({n(1)}) * {MeanChange(1)} / {TChange(1)}"},
    Formula{"SDChange(2) = Sqr({n(2)}) * {MeanChange(2)} / {TChange(2)}"}};
constexpr Formula kSDChangeFirstT[] = {
    Formula{"SDChange1 = Sqr({n(1)}) * {MeanChange(1)} / {TChange(1)}"},
    Formula{"SDChange2 = Sqr({n(2)}) * {MeanChange(2)} / {TChange(2)}"}};
constexpr Formula kPChange[] = {Formula{"PChange(1) = {pEntered} / {tails}"},
                                Formula{"PChange(2) = {pEntered} / {tails}"}};
constexpr Formula kDf[] = {Formula{"df(1) = {n(1)} - 1"}, Formula{"df(2) = {n(2)} - 1"}};
constexpr Formula kTChange[] = {Formula{"TChange(1)= Abs(t for {PChange}, {df})"},
                                Formula{"TChange(2)= Abs(t for {PChange}, {df})"}};
constexpr Formula kSDChangePooled{
    "SDChangePooled = Sqr(((({n(1)} - 1) * {SDChange(1)} ^ 2 + ({n(2)} - 1) * {SDChange(2)} ^ 2) / "
    "({n(1)} + {n(2)} - 2)))"};
constexpr Formula kPooledSE{"MeanChangeDiffSE = Sqr(1 / {n(1)} + 1 / {n(2)}) * {SDChangePooled}"};
constexpr Formula kSeparateSE{
    "MeanChangeDiffSE = Sqr({SDChange(1)} ^ 2 / {n(1)} + {SDChange(2)} ^ 2 / {n(2)})"};
constexpr Formula kStdChangeDiffF{
    "StdChangeDiff = Sqr({f} * (({n(1)} + {n(2)}) / ({n(1)} * {n(2)})))"};
constexpr Formula kSDChangePooledF{"SDChangePooled = {RawDiff} / {StdChangeDiff}"};

constexpr Formula kSDPostFromChange[] = {
    Formula{"SDPost(1) = {SDChange(1)} / Sqr(2 * (1 - {CorrPrePost}))"},
    Formula{"SDPost(2) = {SDChange(2)} / Sqr(2 * (1 - {CorrPrePost}))"}};
constexpr Formula kSDPostFromT[] = {
    Formula{"SDPost(1) = ({MeanChange(1)} * Sqr({n(1)})) / ({TChange(1)} * Sqr(2 * (1 - "
            "{CorrPrePost})))"},
    Formula{"SDPost(2) = ({MeanChange(2)} * Sqr({n(2)})) / ({TChange(2)} * Sqr(2 * (1 - "
            "{CorrPrePost})))"}};
constexpr Formula kSDPostF{
    "SDPost = Sqr((({n(1)} * {n(2)}) / ({n(1)} + {n(2)}) * {MeanChange(3)} ^ 2) / (2 * (1 - "
    "{CorrPrePost}) * {f}))"};
constexpr Formula kSDPostPooled{
    "SDPostPooled = Sqr((({n(1)} - 1) * {SDPost(1)} ^ 2 + ({n(2)} - 1) * {SDPost(2)} ^ 2) / "
    "({n(1)} + {n(2)} - 2))"};
constexpr Formula kStdPostDiff{"StdPostDiff = {RawDiff} / {SDPostPooled}"};
constexpr Formula kStdPostDiffF{"StdPostDiff = {RawDiff} / {SDPost}"};
constexpr Formula kStdPostDiffSE{
    "StdPostDiffSE = Sqr((1 / {n(1)} + 1 / {n(2)}) + {StdPostDiff} ^ 2 / (2 * ({n(1)} + "
    "{n(2)})))"};
constexpr Formula kStdChangeDiff{"StdChangeDiff = {RawDiff} / {SDChangePooled}"};
constexpr Formula kStdChangeDiffSE{
    "StdChangeDiffSE = Sqr(1 / {n(1)} + 1 / {n(2)} + {StdChangeDiff} ^ 2 / (2 * ({n(1)} + "
    "{n(2)})))"};

constexpr std::string_view kSameChange =
    "Cannot compute when both groups have the same mean change value";

struct Group {
    double meanChange = 0, sdChange = 0, sdPre = 0, sdPost = 0, n = 0, t = 0, p = 0;
};

struct PrePostRow {
    PrePostEntry entry = PrePostEntry::MeansSDPrePost;
    Kind kind{Spread::SDPrePost, true};
    Group g[2];
    double corr = 0, tails = 0, f = 0;
    int stdType = 1;
    double rawDiff = 0, sdChangePooled = 0, sdPostPooled = 0, sdPostF = 0;
    double stdPostDiff = 0, stdPostDiffSE = 0, stdChangeDiff = 0, stdChangeDiffSE = 0;
    double meanChangeDiffSE = 0;
    int poolMethod = 1;
    // False where the SDs of the changes are not known: from the SDs pre and
    // post without the correlation.
    bool changeKnown = true;
    bool hasRaw() const { return entry != PrePostEntry::FOnly; }
};

CorrNeed NeedOf(const Kind& kind, PrePostEntry entry) {
    if (entry == PrePostEntry::FOnly) return CorrNeed::NeedForNeither;
    return kind.spread == Spread::SDPrePost ? CorrNeed::NeedForChange : CorrNeed::NeedForPost;
}

void Validate(const PrePostRow& row, const FormatRoles& roles, WorkingSet& ws) {
    ValidateGroup(true, kGroupA, roles, ws);
    ValidateGroup(false, kGroupB, roles, ws);
    if (row.kind.spread == Spread::F) CheckF(roles.Role(RoleKind::FValue), ws);
    const int stdType = roles.Role(RoleKind::StandardizeBy);
    CheckCorrOptional(roles.Role(RoleKind::PrePostCorrelation), stdType,
                      NeedOf(row.kind, row.entry), ws);
    // The sign of a difference between two changes is the user's to give.
    CheckDirection(roles.Role(RoleKind::EffectDirection), ws, false);
    CheckStdType(stdType, ws,
                 row.entry == PrePostEntry::FOnly ? StdTypes::ChangeOnly : StdTypes::Either);
    if (row.kind.spread != Spread::T) return;
    for (const GroupRoles* g : {&kGroupA, &kGroupB}) {
        if (row.kind.means)
            CheckTMeans(roles.Role(g->tChange), roles.Role(g->preMean), roles.Role(g->postMean),
                        ws);
        else
            CheckTMeanDiff(roles.Role(g->tChange), roles.Role(g->meanChange), ws);
    }
}

// Reads each group's change and spread; false when the entries leave
// nothing to compute (the reason is in RowErrors, or none for a pooled SD of 0).
bool ReadGroups(PrePostRow& row, const FormatRoles& roles, WorkingSet& ws) {
    const double corrFactor = std::sqrt(2 * (1 - row.corr));
    for (int i = 0; i < 2; ++i) {
        const GroupRoles& r = i == 0 ? kGroupA : kGroupB;
        Group& g = row.g[i];
        g.n = roles.Value(r.n);
        g.meanChange = row.kind.means ? roles.Value(r.postMean) - roles.Value(r.preMean)
                                      : roles.Value(r.meanChange);
        switch (row.kind.spread) {
            case Spread::SDChange:
                g.sdChange = roles.Value(r.changeSD);
                g.sdPost = g.sdChange / corrFactor;
                break;
            case Spread::SDPrePost:
                g.sdPre = roles.Value(r.preSD);
                g.sdPost = roles.Value(r.postSD);
                g.sdChange = std::sqrt(g.sdPre * g.sdPre + g.sdPost * g.sdPost -
                                       2 * row.corr * g.sdPre * g.sdPost);
                break;
            case Spread::T:
                g.t = std::fabs(roles.Value(r.tChange));
                break;
            case Spread::P:
                g.p = roles.Value(r.pChange);
                g.t = std::fabs(stats::VBDTIN(g.p / row.tails, g.n - 1));
                break;
            case Spread::F:
                break;
        }
    }
    const bool sameChange = row.hasRaw() && row.g[0].meanChange == row.g[1].meanChange;
    if (row.kind.spread == Spread::T) {
        if (row.g[0].t == 0 || row.g[1].t == 0) {
            AddErr(ws.RowErrors, "Cannot compute when t-value = 0");
            return false;
        }
        if (row.kind.means && sameChange) {
            AddErr(ws.RowErrors, kSameChange);
            return false;
        }
    } else if (row.kind.spread == Spread::P) {
        if (row.kind.means && sameChange) {
            AddErr(ws.RowErrors, kSameChange);
            return false;
        }
        if (row.g[0].t == 0 || row.g[1].t == 0) {
            AddErr(ws.RowErrors, "Cannot compute when p-value = 1.0 and tails = 2");
            AddErr(ws.RowErrors, "or p-value = 0.5 and tails = 1");
            return false;
        }
    } else if (row.kind.spread == Spread::F && sameChange) {
        AddErr(ws.RowErrors, kSameChange);
        return false;
    }
    if (row.kind.spread == Spread::T || row.kind.spread == Spread::P) {
        for (Group& g : row.g) {
            g.sdChange = std::sqrt(g.n) * g.meanChange / g.t;
            g.sdPost = (std::sqrt(g.n) * g.meanChange) / (corrFactor * g.t);
        }
    }
    return true;
}

double SE(double d, double n1, double n2) {
    return std::sqrt(1 / n1 + 1 / n2 + d * d / (2 * (n1 + n2)));
}

double Pooled(double sd1, double sd2, double n1, double n2) {
    return std::sqrt(((n1 - 1) * sd1 * sd1 + (n2 - 1) * sd2 * sd2) / (n1 + n2 - 2));
}

// False when the row ends without a message.
bool Arithmetic(PrePostRow& row) {
    const Group &a = row.g[0], &b = row.g[1];
    if (row.kind.spread == Spread::F) {
        row.rawDiff = std::fabs(a.meanChange - b.meanChange);
        row.stdChangeDiff = std::sqrt(((a.n + b.n) / (a.n * b.n)) * row.f);
        row.sdChangePooled = row.rawDiff / row.stdChangeDiff;
        row.meanChangeDiffSE = std::sqrt(1 / a.n + 1 / b.n) * row.sdChangePooled;
        row.sdPostF = std::sqrt((stats::HarmonicN(a.n, b.n) * row.rawDiff * row.rawDiff) /
                                (2 * (1 - row.corr) * row.f));
        row.stdPostDiff = row.rawDiff / row.sdPostF;
    } else {
        row.rawDiff = a.meanChange - b.meanChange;
        row.sdChangePooled = Pooled(a.sdChange, b.sdChange, a.n, b.n);
        if (row.entry == PrePostEntry::ChangeT && row.sdChangePooled == 0) return false;
        row.stdChangeDiff = row.rawDiff / row.sdChangePooled;
        row.sdPostPooled = Pooled(a.sdPost, b.sdPost, a.n, b.n);
        row.stdPostDiff = row.rawDiff / row.sdPostPooled;
        if (row.poolMethod == 1)
            row.meanChangeDiffSE = std::sqrt(1 / a.n + 1 / b.n) * row.sdChangePooled;
        else if (row.poolMethod == 2)
            row.meanChangeDiffSE =
                std::sqrt(a.sdChange * a.sdChange / a.n + b.sdChange * b.sdChange / b.n);
    }
    row.stdPostDiffSE = SE(row.stdPostDiff, a.n, b.n);
    row.stdChangeDiffSE = SE(row.stdChangeDiff, a.n, b.n);
    return true;
}

// Both trails from the working values, before the direction is applied.
void Trails(const PrePostRow& row, std::string_view opening, WorkingSet& ws) {
    const Group &a = row.g[0], &b = row.g[1];
    const bool separate = row.kind.spread != Spread::F && row.poolMethod == 2;
    const std::string n1 = G1(a.n), n2 = G1(b.n), mc1 = G3(a.meanChange), mc2 = G3(b.meanChange),
                      sdc1 = G3(a.sdChange), sdc2 = G3(b.sdChange), sdpre1 = G3(a.sdPre),
                      sdpre2 = G3(b.sdPre), sdpost1 = G3(a.sdPost), sdpost2 = G3(b.sdPost),
                      corr = G3(row.corr), t1 = G3(a.t), t2 = G3(b.t), raw = G3(row.rawDiff),
                      f = G3(row.f), sdcp = G3(row.sdChangePooled), sdpp = G3(row.sdPostPooled),
                      sdpf = G3(row.sdPostF), post = G3(row.stdPostDiff),
                      change = G3(row.stdChangeDiff), tails = G1(row.tails);
    const Slots groups{{"n(1)", n1},           {"n(2)", n2},           {"MeanChange(1)", mc1},
                       {"MeanChange(2)", mc2}, {"MeanChange1", mc1},   {"MeanChange2", mc2},
                       {"SDChange(1)", sdc1},  {"SDChange(2)", sdc2},  {"SDPre(1)", sdpre1},
                       {"SDPre(2)", sdpre2},   {"SDPost(1)", sdpost1}, {"SDPost(2)", sdpost2}};
    const Slots values{{{"CorrPrePost", corr},
                        {"TChange(1)", t1},
                        {"TChange(2)", t2},
                        {"RawDiff", raw},
                        {"MeanChange(3)", raw},
                        {"f", f},
                        {"SDChangePooled", sdcp},
                        {"SDPostPooled", sdpp},
                        {"SDPost", sdpf},
                        {"StdPostDiff", post},
                        {"StdChangeDiff", change},
                        {"tails", tails}},
                       &groups};
    const bool firstT = row.entry == PrePostEntry::ChangeT;

    std::string head;
    AddFormula(head, opening, "A");
    if (row.hasRaw() && row.changeKnown) {
        std::string& t = ws.EsFormula[Ix::DifferenceInMeans];
        t = head;
        AddFormula(t, "Raw difference in means", "T");
        AddFormula(
            t, separate ? "** Option for separate variance **" : "** Option for pooled variance **",
            "S");
        if (row.kind.means) {
            AddFormula(t, "MeanChange(1) = Group 1 mean difference", "S");
            AddFormula(t, "MeanChange(2) = Group 2 mean difference", "S");
        }
        // The formula lines of this format, shown once with names, once with numbers.
        const Formula& rawLine = firstT ? kRawDiffFirstT : kRawDiff;
        std::string pTexts[2], dfTexts[2], pEntered[2];
        for (int i = 0; i < 2; ++i) {
            pTexts[i] = G3(row.g[i].p / row.tails);
            dfTexts[i] = G1(row.g[i].n - 1);
            pEntered[i] = G3(row.g[i].p);
        }
        auto lines = [&](bool numbers) {
            auto add = [&](const Formula& formula, const Slots& slots, std::string_view result) {
                if (numbers)
                    formula.AddNumbers(t, slots, result);
                else
                    formula.AddSymbols(t);
            };
            if (numbers && row.kind.means) {
                AddStep(t, {"MeanChange(1) = ", mc1});
                AddStep(t, {"MeanChange(2) = ", mc2});
            }
            add(rawLine, values, raw);
            for (int i = 0; i < 2; ++i) {
                const Slots group{
                    {{"pEntered", pEntered[i]}, {"PChange", pTexts[i]}, {"df", dfTexts[i]}},
                    &values};
                const std::string sd = G3(row.g[i].sdChange);
                switch (row.kind.spread) {
                    case Spread::SDPrePost:
                        add(kSDChangeFromPrePost[i], group, sd);
                        break;
                    case Spread::P:
                        add(kPChange[i], group, pTexts[i]);
                        add(kDf[i], group, dfTexts[i]);
                        add(kTChange[i], group, G3(row.g[i].t));
                        [[fallthrough]];
                    case Spread::T:
                        add(firstT ? kSDChangeFirstT[i] : kSDChangeFromT[i], group, sd);
                        break;
                    default:
                        break;
                }
            }
            if (row.kind.spread == Spread::F) {
                add(kStdChangeDiffF, values, change);
                add(kSDChangePooledF, values, sdcp);
            } else {
                add(kSDChangePooled, values, sdcp);
            }
            add(separate ? kSeparateSE : kPooledSE, values, G3(row.meanChangeDiffSE));
        };
        lines(false);
        AddFormula(t, "", "S");
        lines(true);
        head = t;
    }

    std::string& d = ws.EsFormula[Ix::StdDiffInMeans];
    d = head;
    AddFormula(d, "Standardized difference in means", "T");
    auto both = [&](const Formula& formula, const Slots& slots, std::string_view result,
                    std::string& numbers) {
        formula.AddSymbols(d);
        formula.AddNumbers(numbers, slots, result);
    };
    std::string numbers;
    if (row.stdType == 1) {
        AddFormula(d, "** Option to standardize by Post SD **", "S");
        for (int i = 0; i < 2; ++i) {
            const std::string sd = G3(row.g[i].sdPost);
            if (row.kind.spread == Spread::SDChange)
                both(kSDPostFromChange[i], values, sd, numbers);
            if (row.kind.spread == Spread::SDPrePost) {
                AddFormula(d, i == 0 ? "SDPost(1) = Given" : "SDPost(2) = Given", "S");
                AddStep(numbers, {i == 0 ? "SDPost(1) = " : "SDPost(2) = ", sd});
            }
            if (row.kind.spread == Spread::T || row.kind.spread == Spread::P)
                both(kSDPostFromT[i], values, sd, numbers);
        }
        if (row.kind.spread == Spread::F) {
            both(kSDPostF, values, sdpf, numbers);
            both(kStdPostDiffF, values, post, numbers);
        } else {
            both(kSDPostPooled, values, sdpp, numbers);
            both(kStdPostDiff, values, post, numbers);
        }
        both(kStdPostDiffSE, values, G3(row.stdPostDiffSE), numbers);
    } else {
        AddFormula(d, "** Option to standardize by Change SD **", "S");
        both(row.kind.spread == Spread::F ? kStdChangeDiffF : kStdChangeDiff, values, change,
             numbers);
        both(kStdChangeDiffSE, values, G3(row.stdChangeDiffSE), numbers);
    }
    AddFormula(d, "", "S");
    d += numbers;
}

}  // namespace

void ComputeFromPrePostMeans(const sheet::FormatDef& format, WorkingSet& ws,
                             ComputeContext& context) {
    const auto* layout = std::get_if<sheet::PrePostLayout>(&format.layout);
    if (layout == nullptr) return;
    PrePostRow row;
    row.entry = layout->entry;
    row.kind = KindOf(layout->entry);
    const FormatRoles roles(format, ws);
    Validate(row, roles, ws);
    if (!ws.RowErrors.empty()) return;

    row.corr = roles.Value(RoleKind::PrePostCorrelation);
    row.tails = roles.Value(RoleKind::Tails);
    row.f = roles.Value(RoleKind::FValue);
    row.stdType = static_cast<int>(roles.Value(RoleKind::StandardizeBy));
    row.poolMethod = context.options.PoolVarianceMethod;
    row.changeKnown = row.kind.spread != Spread::SDPrePost ||
                      CheckCorrValid(roles.Role(RoleKind::PrePostCorrelation), ws);
    if (!ReadGroups(row, roles, ws) || !Arithmetic(row)) return;
    if (ws.BuildTrails) Trails(row, format.longName, ws);

    const double direction = roles.Value(RoleKind::EffectDirection);
    row.stdPostDiff = ApplyDirection(row.stdPostDiff, direction);
    row.stdChangeDiff = ApplyDirection(row.stdChangeDiff, direction);
    row.rawDiff = ApplyDirection(row.rawDiff, direction);
    const bool byPost = row.stdType == 1;
    const double d = byPost ? row.stdPostDiff : row.stdChangeDiff;
    const double dSE = byPost ? row.stdPostDiffSE : row.stdChangeDiffSE;
    PairedFromD(d, dSE,
                byPost ? PairedWords{"Paired standardized mean difference",
                                     "d (pooled) is standardized by the pooled SD post within "
                                     "groups.",
                                     "d (change) is standardized by the SD of the differences in "
                                     "the post scores."}
                       : PairedWords{"Paired standardized mean difference",
                                     "d (pooled) is standardized by the pooled SD of change "
                                     "within groups.",
                                     "d (change) is standardized by the SD of the differences in "
                                     "the change scores."},
                ws, context.options);
    if (row.hasRaw() && row.changeKnown) {
        const double se = row.meanChangeDiffSE;
        ws.SetResult(Ix::DifferenceInMeans, row.rawDiff, se, se * se);
    } else if (row.hasRaw() && ws.BuildTrails) {
        std::string& t = ws.EsFormula[Ix::DifferenceInMeans];
        AddFormula(t, "Raw difference in means", "T");
        AddFormula(t,
                   "To calculate the effect size and standard error using this format, the "
                   "pre-post correlation is required",
                   "S");
    }
    ws.SetResult(Ix::StdDiffInMeans, d, dSE, dSE * dSE);
    const double n1 = row.g[0].n, n2 = row.g[1].n;
    StdDiffChain({d, dSE, n1, n2, n1 + n2, false, OddsLimit::SkipAbove620}, ws, context.options);
}

}  // namespace synthara::effectsize
