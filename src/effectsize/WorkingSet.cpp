#include "effectsize/WorkingSet.h"

#include <limits>

namespace synthara::effectsize {

namespace {
// Attributes that a procedure never wrote read as not-a-number, so that the
// frame leaves their cells empty (the ratio indices have a point only).
constexpr double kUnset = std::numeric_limits<double>::quiet_NaN();
}  // namespace

void WorkingSet::SetResult(int i, double point, double se, double variance) {
    Es(1, i) = point;
    Es(2, i) = se;
    Es(3, i) = variance;
    Es(4, i) = 1.0;
    HasSpread[static_cast<std::size_t>(i)] = true;
}

void WorkingSet::SetPoint(int i, double point) {
    Es(1, i) = point;
    Es(4, i) = 1.0;
}

void WorkingSet::CopyResult(int from, int to) {
    for (int k = 1; k <= 4; ++k)
        Es(k, to) = Es(k, from);
    HasSpread[static_cast<std::size_t>(to)] = HasSpread[static_cast<std::size_t>(from)];
}

void WorkingSet::Reset() {
    for (int k = 1; k <= 3; ++k)
        EsResults[static_cast<std::size_t>(k)].fill(kUnset);
    EsResults[4].fill(0.0);
    HasSpread.fill(false);
    if (BuildTrails)
        for (auto& trail : EsFormula)
            trail.clear();
    for (auto& mark : EntryMarks)
        mark.clear();
    RowErrors.clear();
}

}  // namespace synthara::effectsize
