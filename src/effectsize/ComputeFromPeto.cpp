#include "effectsize/ComputeFromPeto.h"

#include <cmath>
#include <string>

#include "effectsize/EventsSteps.h"
#include "effectsize/FormatRoles.h"
#include "effectsize/Trail.h"

namespace synthara::effectsize {

namespace {

using sheet::RoleKind;

constexpr Formula kLogPeto{"LogPetoOddsRatio = {Peto's (O-E)} / {V}"};
constexpr Formula kLogPetoSE{"LogPetoOddsSE = Sqr(1 / {V})"};

void CopyToPetoIndices(WorkingSet& ws) {
    for (int index : {Ix::PetoOddsRatio, Ix::PetoOE, Ix::PetoV})
        ws.EsFormula[static_cast<std::size_t>(index)] = ws.EsFormula[Ix::LogPetoOddsRatio];
}

}  // namespace

void ComputeFromPeto(const sheet::FormatDef& format, WorkingSet& ws, ComputeContext& /*context*/) {
    const FormatRoles roles(format, ws);
    const int oeRole = roles.Role(RoleKind::PetoOE), vRole = roles.Role(RoleKind::PetoV);
    const bool haveOE = oeRole >= 0 && !ws.EntryMissing[static_cast<std::size_t>(oeRole)];
    const bool haveV = vRole >= 0 && !ws.EntryMissing[static_cast<std::size_t>(vRole)];
    auto blame = [&](int role, std::string_view message) {
        AddErr(ws.RowErrors, message);
        if (role >= 0) ws.EntryMarks[static_cast<std::size_t>(role)] = message;
    };
    if (!haveOE) blame(oeRole, "The value O-E is missing");
    if (!haveV)
        blame(vRole, "The value V is missing");
    else if (roles.Value(RoleKind::PetoV) <= 0)
        blame(vRole, "The value V must exceed 0");
    if (!ws.RowErrors.empty()) return;

    const double oMinusE = roles.Value(RoleKind::PetoOE), v = roles.Value(RoleKind::PetoV);
    const double logPeto = oMinusE / v;
    std::string& t = ws.EsFormula[Ix::LogPetoOddsRatio];
    if (!events::PetoComputable(logPeto)) {
        if (!ws.BuildTrails) return;
        AddFormula(t, "Peto Odds ratio", "T");
        AddFormula(t, "cannot be computed from entered data", "S");
        AddFormula(t, "", "S");
        CopyToPetoIndices(ws);
        return;
    }
    const double se = std::sqrt(1 / v);
    ws.SetResult(Ix::LogPetoOddsRatio, logPeto, se, se * se);
    ws.SetPoint(Ix::PetoOddsRatio, std::exp(logPeto));
    ws.SetPoint(Ix::PetoOE, oMinusE);
    ws.SetPoint(Ix::PetoV, v);
    if (!ws.BuildTrails) return;

    AddFormula(t, "Peto odds ratio", "T");
    kLogPeto.AddSymbols(t);
    kLogPetoSE.AddSymbols(t);
    // The program has always left this bracket open on the symbolic line.
    AddFormula(t, "PetoOddsRatio = Exp(LogPetoOddsRatio", "S");
    const std::string oeText = G3(oMinusE), vText = G3(v), logText = G3(logPeto);
    const Slots values{{"Peto's (O-E)", oeText}, {"V", vText}};
    kLogPeto.AddNumbers(t, values, logText);
    kLogPetoSE.AddNumbers(t, values, G3(se));
    AddStep(t, {"PetoOddsRatio = Exp(", logText, ") = ", G3(std::exp(logPeto))});
    CopyToPetoIndices(ws);
}

}  // namespace synthara::effectsize
