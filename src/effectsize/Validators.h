#pragma once
// Validators: the only barrier between the user's cells and the formulas.
// Each appends its messages to RowErrors through AddErr and marks the cell it
// blames in EntryMarks. They never stop one another. A missing value gives
// the "missing" message and skips that value's range tests.
#include "effectsize/WorkingSet.h"

namespace synthara::effectsize {

// The largest sample size accepted, and its printed form.
inline constexpr double MaxSampleSize = 100000000.0;
inline constexpr std::string_view MaxSampleSizeText = "100,000,000";

// Counts of one group, or of each arm of a two-group table (N at least 1);
// the one-group variants ask for N of at least 2.
void CheckEventsAndN(int eventsRole, int nRole, WorkingSet& ws);
void CheckNonEventsAndN(int nonEventsRole, int nRole, WorkingSet& ws);
void CheckEventsNonEvents(int eventsRole, int nonEventsRole, WorkingSet& ws);
void CheckEventRateN(int rateRole, int nRole, WorkingSet& ws);
void CheckEventsAndNOneGroup(int eventsRole, int nRole, WorkingSet& ws);
void CheckNonEventsAndNOneGroup(int nonEventsRole, int nRole, WorkingSet& ws);
void CheckEventsNonEventsOneGroup(int eventsRole, int nonEventsRole, WorkingSet& ws);
void CheckEventRateNOneGroup(int rateRole, int nRole, WorkingSet& ws);
// The four pair counts S, T, U, V of a matched table, in roles firstRole..firstRole + 3.
void CheckSTUV(int firstRole, WorkingSet& ws);

// One value against its range.
void CheckN(int role, WorkingSet& ws);
void CheckNChiSq(int role, WorkingSet& ws);
void CheckNCorr(int role, WorkingSet& ws);
void CheckN1(int role, WorkingSet& ws);
void CheckN2(int role, WorkingSet& ws);
// An absent size is accepted; both speak of the "First sample size".
void CheckN1Optional(int role, WorkingSet& ws);
void CheckN2Optional(int role, WorkingSet& ws);
void CheckSDP(int role, WorkingSet& ws);
void CheckSD1(int role, WorkingSet& ws);
void CheckSD2(int role, WorkingSet& ws);
void CheckSe(int role, WorkingSet& ws);
void CheckVariance(int role, WorkingSet& ws);
void CheckSeCorr(int role, WorkingSet& ws);
void CheckSeFisher(int role, WorkingSet& ws);
void CheckVarianceCorr(int role, WorkingSet& ws);
void CheckVarianceFisher(int role, WorkingSet& ws);
void CheckR(int role, WorkingSet& ws);
void CheckCorr(int role, WorkingSet& ws);
void CheckFisherZ(int role, WorkingSet& ws);
void CheckChiSq(int role, WorkingSet& ws);
void CheckChiSquareN(int chiSqRole, int nRole, WorkingSet& ws);
void CheckRate(int role, WorkingSet& ws);
void CheckRatePY(int role, WorkingSet& ws);
void CheckT(int role, WorkingSet& ws);
void CheckF(int role, WorkingSet& ws);
void CheckEvents(int role, WorkingSet& ws);
void CheckPersonYears(int role, WorkingSet& ws);
void CheckLogPoint(int role, WorkingSet& ws);
void CheckPoint(int role, WorkingSet& ws);
void CheckMean(int role, WorkingSet& ws);
void CheckMean1(int role, WorkingSet& ws);
void CheckMean2(int role, WorkingSet& ws);
void CheckDesign(int role, WorkingSet& ws);

// The direction codes 1 (Auto), 2 (Negative), 3 (Positive). Auto needs means
// to tell the direction from: without them (`autoDirectionAllowed` false) it
// is refused.
void CheckDirection(int role, WorkingSet& ws, bool autoDirectionAllowed = true);

// The method of standardising a pre-post difference: 1 by the post-score SD,
// 2 by the change-score SD. Some formats allow one method only.
enum class StdTypes { Either, PostOnly, ChangeOnly };
void CheckStdType(int role, WorkingSet& ws, StdTypes permitted = StdTypes::Either);

// Which method needs the pre-post correlation with a format.
enum class CorrNeed { NeedForPost, NeedForChange, NeedForNeither };
// The pre-post correlation where the method needs it; a value given where it
// doesn't is still tested for its range.
void CheckCorrOptional(int corrRole, int stdTypeRole, CorrNeed need, WorkingSet& ws);
// True when the correlation is present and strictly between -1 and 1; reports nothing.
bool CheckCorrValid(int corrRole, const WorkingSet& ws);

// A t-value or p-value must agree with whether the means differ.
void CheckTMeans(int tRole, int mean1Role, int mean2Role, WorkingSet& ws);
void CheckTMeanDiff(int tRole, int diffRole, WorkingSet& ws);
void CheckPMeans(int pRole, int tailsRole, int mean1Role, int mean2Role, WorkingSet& ws);
void CheckPMeanDiff(int pRole, int tailsRole, int diffRole, WorkingSet& ws);
void CheckP(int pRole, int tailsRole, WorkingSet& ws);

// Confidence limits of data analysed in logs (Ratio) or as they are (Raw).
enum class CIKind { Ratio, Raw };
// Which limits were entered: 1 the lower only, 2 the upper only, 3 both; 0 neither.
enum CILimits : int { NoLimits = 0, LowerOnly = 1, UpperOnly = 2, BothLimits = 3 };
// Tests the point, the limits present and the level; with both limits, that
// they are symmetric within options.FudgeFactor (a factor of exactly 1 is
// taken as 1.0001, in the option itself). Returns the limits entered.
CILimits CheckCI(CIKind kind, int pointRole, int lowerRole, int upperRole, int levelRole,
                 WorkingSet& ws, ComputeOptions& options);

}  // namespace synthara::effectsize
