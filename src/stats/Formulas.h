#pragma once
// Shared conversions between effect-size indices. Pure functions, no state.
// Guards are the validators' job: a division by zero or a log of a negative
// number here yields inf or NaN, and callers keep such results invalid.

namespace synthara::stats {

// The program's pi: a decimal constant used in every formula and printed trail.
// It is deliberately not the full double value of pi.
inline constexpr double PI = 3.14159265358979;

// How SE(g) is derived from SE(d) and back; option "GVarianceMethod".
enum class GVarianceMethod { Method1 = 1, Method2 = 2 };

double DToR(double d, double n1, double n2);
double DSEToRSE(double se, double d, double n1, double n2);
double DToLogOdds(double d);
double DSEToLogOddsSE(double se);
double LogOddsToD(double x);
double LogOddsSEToD(double se);
double RToD(double r);
double RSEToDSE(double r, double se);
double Logit(double p);
double InverseLogit(double x);
double FisherZ(double r);
double InverseFisher(double z);
double NormalQuantile(double p, int tails);
double ZFromP(double p, int tails);
double CorrectionJ(int df);
double DToG(double d, int df);
double GToD(double g, int df);
// method is the stored option value; any value other than 1 or 2 gives 0.
double GSEFromD(double d, double se, int df, bool independent, int method);
double DSEFromG(double g, double se, int df, int method);
double ChiSquareP(double x, double df);
double HarmonicN(double n1, double n2);

}  // namespace synthara::stats
