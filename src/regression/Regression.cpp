#include "regression/Regression.h"

#include <cmath>
#include <utility>

#include "stats/Distributions.h"
#include "stats/Formulas.h"

namespace synthara::regression {
namespace {

int StepCount(Method method) {
    switch (method) {
        case Method::Fixed:
            return 1;
        case Method::Moments:
            return 2;
        case Method::MaximumLikelihood:
            break;
    }
    return MaxSteps;
}

// One step with the tau-squared of the step before; `tau2` becomes the one
// the next step weighs by. False on an arithmetic failure.
bool Step(RegressionTable& table, int i, double& tau2, Beta& beta) {
    table.FillWeights(tau2);
    if (!table.GetBeta(beta)) return false;
    tau2 = beta.tau2;
    table.FillDummy(beta.B0, beta.B1);
    // The first step keeps GetBeta's moments estimate; each later one takes
    // the maximum-likelihood update around its own line.
    if (i >= 2) {
        tau2 = table.Total(Key::Dummy) / table.Total(Key::w2);
        if (!std::isfinite(tau2)) return false;
        if (tau2 < 0) tau2 = 0;
    }
    beta.tau2 = tau2;
    return true;
}

}  // namespace

const ModelRow& RegressionResult::Row() const {
    switch (method) {
        case Method::Fixed:
            return steps.at(0);
        case Method::Moments:
            return steps.at(1);
        case Method::MaximumLikelihood:
            break;
    }
    return steps.at(static_cast<std::size_t>(lastStep - 1));
}

std::string StepName(int i) {
    if (i == 1) return "Fixed";
    if (i == 2) return "Method of moments";
    return "Unrestricted ML (" + std::to_string(i - 2) + ")";
}

RegressionResult RunRegression(RegressionTable table, Method method) {
    RegressionResult result;
    result.method = method;
    result.table = std::move(table);
    const int count = StepCount(method);
    double tau2 = 0;
    for (int i = 1; i <= count; ++i) {
        const double old = tau2;
        Beta beta;
        if (!Step(result.table, i, tau2, beta)) {
            result.failed = true;
            return result;
        }
        result.steps.push_back({StepName(i), beta});
        result.lastStep = i;
        if (std::fabs(tau2 - old) < Convergence && i >= FewestStepsToStop) break;
    }
    // Only the last step's residuals are ever shown, and nothing later reads
    // them, so they are worked out once, around the result's line.
    const Beta& line = result.Row().beta;
    result.table.FillResiduals(line.B0, line.B1);
    return result;
}

std::vector<std::string> FailureLines() {
    return {"Cannot run meta regression with this combination of      ",
            "effect measure, predictor and data set values.      "};
}

std::string_view Title(Method method) {
    switch (method) {
        case Method::Fixed:
            return "Fixed effect regression";
        case Method::Moments:
            return "Mixed effects regression (method of moments)";
        case Method::MaximumLikelihood:
            break;
    }
    return "Mixed effects regression (unrestricted maximum likelihood)";
}

double CriticalZ() {
    const double alpha = 1 - 0.95;
    return std::fabs(stats::VBDNORIN(alpha / 2));
}

std::vector<CoefficientRow> Coefficients(const RegressionResult& result) {
    const Beta& b = result.Row().beta;
    const double z = CriticalZ();
    const auto row = [z](std::string_view label, double point, double se, double test) {
        return CoefficientRow{label, point,           se, point - z * se, point + z * se,
                              test,  TwoTailedP(test)};
    };
    return {row("Slope", b.B1, b.seb1, b.z1), row("Intercept", b.B0, b.seb0, b.z0),
            CoefficientRow{"Tau-squared", b.tau2, {}, {}, {}, {}, {}}};
}

std::vector<QRow> QStatistics(const RegressionResult& result) {
    const Beta& b = result.Row().beta;
    return {{"Model", b.QM, b.dfM, stats::ChiSquareP(b.QM, b.dfM)},
            {"Residual", b.QE, b.dfE, stats::ChiSquareP(b.QE, b.dfE)},
            {"Total", b.QT, b.dfT, stats::ChiSquareP(b.QT, b.dfT)}};
}

}  // namespace synthara::regression
