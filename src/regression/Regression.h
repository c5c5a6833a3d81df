#pragma once
// Meta-regression on one predictor: the fixed-effect line, the line with
// the method-of-moments tau-squared, and the unrestricted maximum-likelihood
// iteration, as steps of one loop. Results are data: the model table (one
// row per step), the working table as the last step left it, and the
// coefficient and Q tables the window shows.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "regression/RegressionTable.h"

namespace synthara::regression {

enum class Method { Fixed = 1, Moments = 2, MaximumLikelihood = 3 };

inline constexpr std::string_view kRegressionTitle = "Meta regression";

// The steps a method may run: the ML iteration stops at this count.
inline constexpr int MaxSteps = 40;
// An ML step that changes tau-squared by less than this, from step 4 on, is the last.
inline constexpr double Convergence = 1E-08;
inline constexpr int FewestStepsToStop = 4;

// One row of the model table. `tau2` is what the next step weighs by.
struct ModelRow {
    std::string Model;
    Beta beta;
};

struct RegressionResult {
    Method method = Method::Moments;
    std::vector<ModelRow> steps;  // the model table, one row per step run
    int lastStep = 0;             // the number of the last step run
    bool failed = false;          // a step met an arithmetic failure
    RegressionTable table;        // as the last step left it

    // The row the results are read from: the first, the second or the last.
    const ModelRow& Row() const;
};

// The name of step `i` (1-based) of the model table.
std::string StepName(int i);

// Runs the steps of `method` over the studies in `table` (SetStudies done).
// On a failure the steps before stay in the model table.
RegressionResult RunRegression(RegressionTable table, Method method);

// The message of an arithmetic failure, with the title kRegressionTitle.
std::vector<std::string> FailureLines();

std::string_view Title(Method method);

// A row of the table of coefficients; the tau-squared row has a point only.
struct CoefficientRow {
    std::string_view label;  // "Slope", "Intercept", "Tau-squared"
    double point = 0;
    std::optional<double> se, lower, upper, test, p;
};
// z of the limits: the inverse normal of half of 1 - 0.95, as stored.
double CriticalZ();
std::vector<CoefficientRow> Coefficients(const RegressionResult& result);

struct QRow {
    std::string_view label;  // "Model", "Residual", "Total"
    double Q = 0;
    double df = 0;
    double p = 0;  // the chi-squared upper tail
};
std::vector<QRow> QStatistics(const RegressionResult& result);

}  // namespace synthara::regression
