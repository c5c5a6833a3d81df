#include "effectsize/ComputeFromPersonYears.h"

#include <cmath>
#include <string>
#include <variant>

#include "effectsize/FormatRoles.h"
#include "effectsize/Trail.h"
#include "effectsize/Validators.h"

namespace synthara::effectsize {

namespace {

using sheet::RoleKind;

constexpr Formula kRate1{"Rate(Group 1) = {Events(Group 1)} / {PersonYears(Group 1)}"};
constexpr Formula kRate2{"Rate(Group 2) = {Events(Group 2)} / {PersonYears(Group 2)}"};
constexpr Formula kEvents1{"Events(Group 1) = {Rate(Group 1)} * {PersonYears(Group 1)}"};
constexpr Formula kEvents2{"Events(Group 2) = {Rate(Group 2)} * {PersonYears(Group 2)}"};
constexpr Formula kRateRatio{"RateRatio = {Rate(Group 1)} / {Rate(Group 2)}"};
constexpr Formula kLogRateRatio{"LogRateRatio = Log({Rate(Group 1)} / {Rate(Group 2)})"};
constexpr Formula kLogRateSE{"LogRateSE = Sqr(1 / {Events(Group 1)} + 1 / {Events(Group 2)})"};
constexpr Formula kRateDiff{"RateDiff = {Rate(Group 1)} - {Rate(Group 2)}"};
constexpr Formula kRateDiffSE{
    "RateDiffSE = Sqr({Events(Group 1)} / {PersonYears(Group 1)} ^ 2 + {Events(Group 2)} / "
    "{PersonYears(Group 2)} ^ 2)"};

constexpr std::string_view kAdded =
    "One or more rates was equal to 0, so 0.5 was added to each event value";

// The working values of the two groups, and their printed forms.
struct Groups {
    bool rates = false;  // entered as rates, the events computed
    double events[2]{}, py[2]{}, rate[2]{};

    void Recompute() {
        for (int i = 0; i < 2; ++i)
            rate[i] = events[i] / py[i];
    }
};

struct Printed {
    explicit Printed(const Groups& g)
        : e1(G1(g.events[0])),
          e2(G1(g.events[1])),
          py1(G1(g.py[0])),
          py2(G1(g.py[1])),
          r1(G3(g.rate[0])),
          r2(G3(g.rate[1])) {}
    std::string e1, e2, py1, py2, r1, r2;
    Slots Values() const {
        return Slots{{"Events(Group 1)", e1},       {"Events(Group 2)", e2},
                     {"PersonYears(Group 1)", py1}, {"PersonYears(Group 2)", py2},
                     {"Rate(Group 1)", r1},         {"Rate(Group 2)", r2}};
    }
};

// "Rate ratio" and the lines that tell how the rates (or, from rates, the
// events) arise; the head of both trails.
void AddHead(std::string& t, const Groups& g) {
    AddFormula(t, "Rate ratio", "T");
    AddFormula(t, "", "S");
    (g.rates ? kEvents1 : kRate1).AddSymbols(t);
    (g.rates ? kEvents2 : kRate2).AddSymbols(t);
}

void AddHeadNumbers(std::string& t, const Groups& g, const Printed& p, const Slots& values) {
    if (g.rates) {
        kEvents1.AddNumbers(t, values, p.e1);
        kEvents2.AddNumbers(t, values, p.e2);
    } else {
        kRate1.AddNumbers(t, values, p.r1);
        kRate2.AddNumbers(t, values, p.r2);
    }
}

void AddedNote(std::string& t, std::string_view forWhat) {
    AddFormula(t, "", "S");
    AddFormula(t, kAdded, "S");
    AddFormula(t, forWhat, "S");
    AddFormula(t, "", "S");
}

// A formula of a trail and its result; no formula is a blank line.
struct Line {
    const Formula* formula;
    double result;
};

// The head, the lines' formulas, the note of the added events, then the
// head's and the lines' numbers: the numbers are those of the events with
// 0.5 added, which the spread used.
void AddTrail(std::string& t, const Groups& g, std::initializer_list<Line> lines, bool added,
              std::string_view forWhat) {
    AddHead(t, g);
    AddFormula(t, "", "S");
    for (const Line& line : lines) {
        if (line.formula != nullptr)
            line.formula->AddSymbols(t);
        else
            AddFormula(t, "", "S");
    }
    AddFormula(t, "", "S");
    if (added) AddedNote(t, forWhat);
    const Printed p(g);
    const Slots values = p.Values();
    AddHeadNumbers(t, g, p, values);
    for (const Line& line : lines)
        if (line.formula != nullptr) line.formula->AddNumbers(t, values, G3(line.result));
}

// Validates the entries and reads the working values; false when refused.
bool ReadGroups(const sheet::FormatDef& format, bool rates, WorkingSet& ws, Groups& g) {
    const FormatRoles roles(format, ws);
    const RoleKind countKinds[2] = {rates ? RoleKind::PYRateA : RoleKind::EventsA,
                                    rates ? RoleKind::PYRateB : RoleKind::EventsB};
    const RoleKind pyKinds[2] = {RoleKind::PersonYearsA, RoleKind::PersonYearsB};
    for (int i = 0; i < 2; ++i) {
        if (rates)
            CheckRatePY(roles.Role(countKinds[i]), ws);
        else
            CheckEvents(roles.Role(countKinds[i]), ws);
        CheckPersonYears(roles.Role(pyKinds[i]), ws);
    }
    if (!ws.RowErrors.empty()) return false;
    g.rates = rates;
    for (int i = 0; i < 2; ++i) {
        g.py[i] = roles.Value(pyKinds[i]);
        if (rates) {
            g.rate[i] = roles.Value(countKinds[i]);
            g.events[i] = g.rate[i] * g.py[i];
        } else {
            g.events[i] = roles.Value(countKinds[i]);
            g.rate[i] = g.events[i] / g.py[i];
        }
    }
    if (g.py[0] + g.py[1] > MaxSampleSize) {
        std::string message = "Total person years cannot be greater than ";
        message += MaxSampleSizeText;
        AddErr(ws.RowErrors, message);
        return false;
    }
    return true;
}

}  // namespace

void ComputeFromEventsPersonYears(const sheet::FormatDef& format, WorkingSet& ws,
                                  ComputeContext& /*context*/) {
    const auto* layout = std::get_if<sheet::PersonYearsLayout>(&format.layout);
    if (layout == nullptr || !RequireFirstRoles(4, ws)) return;
    Groups g;
    if (!ReadGroups(format, layout->rates, ws, g)) return;

    const bool bothZero = g.rate[0] == 0 && g.rate[1] == 0;
    const double rateDiff = g.rate[0] - g.rate[1];
    ws.SetPoint(Ix::PYCellA, g.events[0]);
    ws.SetPoint(Ix::PYCellB, g.py[0]);
    ws.SetPoint(Ix::PYCellC, g.events[1]);
    ws.SetPoint(Ix::PYCellD, g.py[1]);
    ws.SetPoint(Ix::NPY1, g.py[0]);
    ws.SetPoint(Ix::NPY2, g.py[1]);
    ws.SetPoint(Ix::NPY3, g.py[0] + g.py[1]);
    ws.SetPoint(Ix::EventsPY1, g.events[0]);
    ws.SetPoint(Ix::EventsPY2, g.events[1]);
    ws.SetPoint(Ix::EventsPY3, g.events[0] + g.events[1]);

    // A rate of 0 has no log: both groups' events grow by 0.5.
    const bool added = g.rate[0] == 0 || g.rate[1] == 0;
    if (added) {
        g.events[0] += 0.5;
        g.events[1] += 0.5;
        g.Recompute();
    }
    const double logRatio = std::log(g.rate[0] / g.rate[1]);
    const double logSE = std::sqrt(1 / g.events[1] + 1 / g.events[0]);
    const double diffSE =
        std::sqrt(g.events[0] / (g.py[0] * g.py[0]) + g.events[1] / (g.py[1] * g.py[1]));
    ws.SetResult(Ix::LogRateRatio, logRatio, logSE, logSE * logSE);
    ws.SetPoint(Ix::RateRatio, std::exp(logRatio));
    ws.SetResult(Ix::RateDifference, rateDiff, diffSE, diffSE * diffSE);
    if (!ws.BuildTrails) return;

    std::string& ratio = ws.EsFormula[Ix::LogRateRatio];
    if (bothZero) {
        AddFormula(ratio, "Rate ratio", "T");
        AddFormula(ratio, "Cannot be computed when event rate is 0% in both groups", "S");
    }
    AddTrail(ratio, g,
             {{&kRateRatio, std::exp(logRatio)},
              {nullptr, 0},
              {&kLogRateRatio, logRatio},
              {&kLogRateSE, logSE}},
             added, "for computation of Log rate ratio and its variance");
    ws.EsFormula[Ix::RateRatio] = ratio;
    // The difference is of the rates as entered; its numbered lines show
    // the rates the variance used.
    AddTrail(ws.EsFormula[Ix::RateDifference], g, {{&kRateDiff, rateDiff}, {&kRateDiffSE, diffSE}},
             added, "for computation of the Rate difference variance");
}

}  // namespace synthara::effectsize
