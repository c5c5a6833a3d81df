#pragma once
// One row computed straight from its entries, each labelled by its role's
// name in the catalogue; std::nullopt is an empty cell.
#include <optional>
#include <string_view>
#include <vector>

#include "effectsize/Compute.h"
#include "effectsize/Trail.h"
#include "support/ScriptedPrompter.h"

namespace synthara::effectsize {

struct OneRow {
    using Procedure = void (*)(const sheet::FormatDef&, WorkingSet&, ComputeContext&);

    // Through the frame (which also refuses results that are not finite), or
    // straight through `procedure` when one is given; under `rowOptions`.
    OneRow(std::string_view format, const std::vector<std::optional<double>>& values,
           Procedure procedure = nullptr, const ComputeOptions& rowOptions = {}) {
        options = rowOptions;
        ws.Reset();
        const sheet::FormatDef* def = sheet::FindComputedFormat(format);
        for (std::size_t role = 0; role < ws.EntryMissing.size(); ++role) {
            const bool given = role < values.size() && values[role];
            if (def != nullptr && role < def->roles.size())
                ws.EntryLabels[role] = def->roles[role].name;
            ws.EntryMissing[role] = !given;
            ws.EntryVals[role] = given ? *values[role] : 0;
        }
        if (procedure != nullptr && def != nullptr)
            procedure(*def, ws, context);
        else
            Dispatch(format, ws, context);
    }
    double Point(int i) const { return ws.Es(1, i); }
    std::vector<std::string> Errors() const { return SplitErrors(ws.RowErrors); }
    std::vector<int> ValidIndices() const {
        std::vector<int> valid;
        for (int i = 1; i <= IndexCount; ++i)
            if (ws.IsValid(i)) valid.push_back(i);
        return valid;
    }

    synthara::testing::ScriptedPrompter prompter;
    ComputeOptions options;
    ComputeContext context{options, prompter};
    WorkingSet ws;
};

}  // namespace synthara::effectsize
