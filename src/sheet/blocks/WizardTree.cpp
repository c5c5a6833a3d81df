#include "sheet/blocks/WizardTree.h"

#include <algorithm>

namespace synthara::sheet {

namespace {

// The child of that caption, added at the end when new.
WizardNode& Child(WizardNode& parent, std::string_view caption) {
    auto it = std::find_if(parent.children.begin(), parent.children.end(),
                           [caption](const WizardNode& n) { return n.caption == caption; });
    if (it != parent.children.end()) return *it;
    parent.children.push_back({std::string(caption), nullptr, {}});
    return parent.children.back();
}

}  // namespace

WizardNode InitializeES(int studyType, bool commonOnly) {
    WizardNode root;
    if (studyType < 0 || studyType >= static_cast<int>(WizardCaptions::Branches.size()))
        return root;
    root.caption = WizardCaptions::Branches[static_cast<std::size_t>(studyType)];
    const auto branch = static_cast<Branch>(studyType);
    for (const FormatDef& format : AllFormats()) {
        if (format.branch != branch || (commonOnly && format.allFormatsOnly)) continue;
        WizardNode& design = Child(Child(root, format.family), format.design);
        design.children.push_back({std::string(format.longName), &format, {}});
    }
    return root;
}

int CountFormats(const WizardNode& node) {
    int count = node.format != nullptr ? 1 : 0;
    for (const WizardNode& child : node.children)
        count += CountFormats(child);
    return count;
}

const WizardNode* FindFormatNode(const WizardNode& node, std::string_view longName) {
    if (node.format != nullptr && node.format->longName == longName) return &node;
    for (const WizardNode& child : node.children) {
        if (const WizardNode* found = FindFormatNode(child, longName)) return found;
    }
    return nullptr;
}

}  // namespace synthara::sheet
