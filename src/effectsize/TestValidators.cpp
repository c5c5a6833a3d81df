// The validators of t- and p-values and of what they say about the means.
#include <cmath>
#include <string_view>

#include "effectsize/ValidatorSupport.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

using namespace validate;

namespace {

// Two means closer than this are the same value.
constexpr double kSameMeans = 1e-08;

void BlameAll(WorkingSet& ws, std::initializer_list<int> roles, std::string_view message) {
    AddErr(ws.RowErrors, message);
    for (int role : roles)
        ws.EntryMarks[At(role)] = message;
}

void CheckTAgainst(double diff, int tRole, WorkingSet& ws, std::initializer_list<int> roles) {
    const double t = Val(ws, tRole);
    const bool same = std::fabs(diff) <= kSameMeans;
    if (same && t != 0) BlameAll(ws, roles, "If mean difference is zero, t-value must equal zero");
    if (!same && t == 0)
        BlameAll(ws, roles, "If mean difference is not zero, t-value cannot equal zero");
}

void CheckPAgainst(double diff, int pRole, int tailsRole, WorkingSet& ws,
                   std::initializer_list<int> roles) {
    const double p = Val(ws, pRole);
    const double tails = Val(ws, tailsRole);
    const bool same = std::fabs(diff) <= kSameMeans;
    if (same && tails == 1 && p != 0.5)
        BlameAll(ws, roles, "If mean difference is zero, 1-tailed p-value must equal 0.500");
    if (same && tails == 2 && p != 1)
        BlameAll(ws, roles, "If mean difference is zero, 2-tailed p-value must equal 1.000");
    if (!same && tails == 1 && p == 0.5)
        BlameAll(ws, roles, "If mean difference is not zero, 1-tailed p-value cannot equal 0.500");
    if (!same && tails == 2 && p == 1)
        BlameAll(ws, roles, "If mean difference is not zero, 2-tailed p-value cannot equal 1.000");
}

}  // namespace

void CheckTMeans(int tRole, int mean1Role, int mean2Role, WorkingSet& ws) {
    CheckTAgainst(Val(ws, mean1Role) - Val(ws, mean2Role), tRole, ws,
                  {tRole, mean1Role, mean2Role});
}

void CheckTMeanDiff(int tRole, int diffRole, WorkingSet& ws) {
    CheckTAgainst(Val(ws, diffRole), tRole, ws, {tRole, diffRole});
}

void CheckPMeans(int pRole, int tailsRole, int mean1Role, int mean2Role, WorkingSet& ws) {
    CheckPAgainst(Val(ws, mean1Role) - Val(ws, mean2Role), pRole, tailsRole, ws,
                  {pRole, tailsRole, mean1Role, mean2Role});
}

void CheckPMeanDiff(int pRole, int tailsRole, int diffRole, WorkingSet& ws) {
    CheckPAgainst(Val(ws, diffRole), pRole, tailsRole, ws, {pRole, tailsRole, diffRole});
}

void CheckP(int pRole, int tailsRole, WorkingSet& ws) {
    const bool haveP = !Missing(ws, pRole);
    const bool haveTails = !Missing(ws, tailsRole);
    const double p = Val(ws, pRole);
    const double tails = Val(ws, tailsRole);
    if (!haveP)
        Blame(ws, pRole, "p-value is missing");
    else if (p <= 0)
        Blame(ws, pRole, "p-value must exceed zero");
    else if (p > 1)
        Blame(ws, pRole, "p-value cannot exceed 1.000");
    if (!haveTails)
        Blame(ws, tailsRole, "The number of tails is missing");
    else if (tails != 1 && tails != 2)
        Blame(ws, tailsRole, "Tails must be either 1 or 2");
    if (haveP && haveTails && tails == 1 && p > 0.5)
        BlameBoth(ws, pRole, tailsRole, "One-sided p-value cannot exceed 0.500");
}

}  // namespace synthara::effectsize
