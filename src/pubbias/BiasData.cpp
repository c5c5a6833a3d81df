#include "pubbias/BiasData.h"

#include <cmath>
#include <utility>

#include "analysis/Analysis.h"

namespace synthara::pubbias {
namespace {

bool TakesPart(const analysis::WorkingTable& vs, int row) {
    return vs.validRow[row] > 0 && vs.kind[row] == analysis::RowKind::Study;
}

bool IsEmpty(const DataCell& cell) {
    return std::holds_alternative<std::monostate>(cell);
}

const double* Number(const DataCell& cell) {
    return std::get_if<double>(&cell);
}

}  // namespace

void BiasDataset::Add(std::string name, double effect, double stdErr) {
    names.push_back(std::move(name));
    point.push_back(effect);
    se.push_back(stdErr);
    variance.push_back(stdErr * stdErr);
    weight.push_back(1 / variance.back());
}

std::optional<std::string> CheckPubValid(const analysis::Analysis& analysis, bool showAllStudies) {
    if (!showAllStudies)
        return "Please select 'Show all studies' on the toolbar before running publication bias "
               "         ";
    const analysis::WorkingTable& vs = analysis.vs;
    int count = 0;
    bool effectVaries = false;
    bool seVaries = false;
    double firstPoint = 0;
    double firstVariance = 0;
    for (int row = 0; row < vs.Rows(); ++row) {
        if (!TakesPart(vs, row)) continue;
        if (count == 0) {
            firstPoint = vs.point[row];
            firstVariance = vs.variance[row];
        } else {
            effectVaries = effectVaries || vs.point[row] != firstPoint;
            seVaries = seVaries || vs.variance[row] != firstVariance;
        }
        ++count;
    }
    if (count < 3)
        return "There must be at least three rows of data to run publication bias procedures "
               "         ";
    if (!effectVaries)
        return "To run the publication bias procedures there must be some variance in the effect "
               "size           ";
    if (!seVaries)
        return "To run the publication bias procedures there must be some variance in the "
               "standard errors           ";
    if (analysis.Grouped())
        return "The program cannot run publication bias when 'Group-by' is in effect          \n"
               "To turn off 'Group-by' use the Computational options menu         ";
    return std::nullopt;
}

BiasDataset BiasRows(const analysis::Analysis& analysis) {
    const analysis::WorkingTable& vs = analysis.vs;
    BiasDataset data;
    for (int row = 0; row < vs.Rows(); ++row) {
        if (!TakesPart(vs, row)) continue;
        data.Add(std::string(vs.PopulationText(0, row)), vs.point[row],
                 std::sqrt(vs.variance[row]));
    }
    return data;
}

CheckValsResult CheckVals(std::vector<DataRow> rows) {
    CheckValsResult result;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].tag == "Imputed") {
            rows.resize(i);
            break;
        }
    }
    int n = static_cast<int>(rows.size());
    while (n > 0 && IsEmpty(rows[static_cast<std::size_t>(n) - 1].point))
        --n;
    result.N = n;
    bool failed = false;
    for (int i = 0; i < n; ++i) {
        const DataRow& row = rows[static_cast<std::size_t>(i)];
        if (Number(row.point) == nullptr) {
            result.marked.push_back(i);
            failed = true;
        }
        if (Number(row.se) == nullptr) {
            if (result.marked.empty() || result.marked.back() != i) result.marked.push_back(i);
            result.messages.emplace_back(
                "One of the effect sizes or standard errors is not isValid  ");
            failed = true;
        }
    }
    if (failed) {
        result.messages.emplace_back("Problems in data are highlighted  ");
        return result;
    }
    for (int i = 0; i < n; ++i) {
        if (*Number(rows[static_cast<std::size_t>(i)].se) <= 0) {
            result.marked.push_back(i);
            result.messages.emplace_back("One of the standard errors is not positive  ");
            failed = true;
        }
    }
    if (failed) return result;
    if (n == 0) {
        result.messages.emplace_back("Please enter data prior to running this procedure   ");
        return result;
    }
    for (int i = 0; i < n; ++i) {
        DataRow& row = rows[static_cast<std::size_t>(i)];
        result.data.Add(std::move(row.name), *Number(row.point), *Number(row.se));
    }
    result.ok = true;
    return result;
}

}  // namespace synthara::pubbias
