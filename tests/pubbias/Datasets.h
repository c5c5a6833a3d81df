#pragma once
// Small bias datasets the tests share.
#include <vector>

#include "pubbias/BiasData.h"

namespace synthara::pubbias::testdata {

inline BiasDataset Make(const std::vector<double>& point, const std::vector<double>& se) {
    BiasDataset data;
    for (std::size_t i = 0; i < point.size(); ++i)
        data.Add("Study " + std::to_string(i + 1), point[i], se[i]);
    return data;
}

}  // namespace synthara::pubbias::testdata
