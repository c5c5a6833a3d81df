#pragma once
// Small regression tables the tests share.
#include <string>
#include <vector>

#include "regression/RegressionTable.h"

namespace synthara::regression::testdata {

inline RegressionTable Make(std::vector<double> T, std::vector<double> V, std::vector<double> X) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < T.size(); ++i)
        names.push_back("Study " + std::to_string(i + 1));
    RegressionTable table;
    table.SetStudies(std::move(names), std::move(T), std::move(V), std::move(X));
    return table;
}

}  // namespace synthara::regression::testdata
