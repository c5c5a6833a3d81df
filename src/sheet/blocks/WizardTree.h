#pragma once
// The format tree of the block wizard, built from the format catalogue:
// branch, family, design, format, each node's children in catalogue order.
#include <string>
#include <string_view>
#include <vector>

#include "sheet/catalogue/FormatCatalogue.h"

namespace synthara::sheet {

struct WizardNode {
    std::string caption;
    const FormatDef* format = nullptr;  // set on a leaf only
    std::vector<WizardNode> children;
};

// The tree of study type `studyType` (optDatatypes 0 to 3); under
// `commonOnly` ("Show common formats only") the formats kept for "Show all 100
// formats" are left out, and so is a node left without formats. An unknown
// study type gives an empty tree.
WizardNode InitializeES(int studyType, bool commonOnly);

// How many formats (leaves) the tree holds.
int CountFormats(const WizardNode& node);

// The leaf of that long name, or nullptr.
const WizardNode* FindFormatNode(const WizardNode& node, std::string_view longName);

}  // namespace synthara::sheet
