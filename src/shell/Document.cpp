#include "shell/Document.h"

#include <algorithm>
#include <utility>

#include "analysis/Analysis.h"
#include "analysis/RandomModel.h"
#include "effectsize/Compute.h"
#include "sheet/blocks/CellBorders.h"
#include "sheet/files/ProjectFile.h"
#include "sheet/files/SheetFormat.h"
#include "sheet/grid/MetaRows.h"
#include "sheet/import/ImportTable.h"

namespace synthara::shell {

Document::Document(ports::Prompter& prompter) : prompter_(prompter), sheet_(prompter) {
    sheet_.InitializeGrid();
}

void Document::AddListener(DocumentListener& listener) {
    if (std::find(listeners_.begin(), listeners_.end(), &listener) == listeners_.end())
        listeners_.push_back(&listener);
}

void Document::RemoveListener(DocumentListener& listener) {
    listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), &listener),
                     listeners_.end());
}

void Document::Notify(const SheetChange& change) {
    // The block outlines follow the columns, wherever the change moved them.
    if (change.kind != ChangeKind::Cells) sheet::AddCellBorders(sheet_);
    if (change.kind == ChangeKind::Reset) ++sheetsLoaded_;
    // A listener may stop listening while it is told; walk a copy.
    const std::vector<DocumentListener*> listeners = listeners_;
    for (DocumentListener* listener : listeners)
        listener->SheetChanged(change);
}

void Document::NotifyCells(std::vector<CellRange> ranges) {
    if (ranges.empty()) return;
    Notify({ChangeKind::Cells, std::move(ranges)});
}

void Document::SetDirty(bool dirty) {
    if (project_.SheetDirty == dirty) return;
    project_.SheetDirty = dirty;
    NotifyDirty();
}

void Document::NotifyDirty() {
    const std::vector<DocumentListener*> listeners = listeners_;
    for (DocumentListener* listener : listeners)
        listener->DirtyChanged(project_.SheetDirty);
}

CellRange Document::DataArea() const {
    const int first = sheet::FixedRowCount;
    return {first, first + dataRows_ - 1, 0, sheet_.Flex().Cols() - 1};
}

void Document::ForEachRowResult(
    const std::function<void(int i, const effectsize::RowResult&)>& visit,
    effectsize::Trails trails) const {
    // The rows are computed: their numbers are read back, and only trails,
    // which are never kept, need the computation again.
    if (trails == effectsize::Trails::Off) {
        effectsize::ShownReader reader(sheet_);
        for (int i = 0; i < dataRows_; ++i)
            visit(i, reader.Read(sheet::FixedRowCount + i));
        return;
    }
    // Computing the rows showed their boxes; evaluating them again is quiet.
    ports::SilentPrompter silent;
    effectsize::RowEvaluator evaluator(sheet_, options_, silent, trails);
    for (int i = 0; i < dataRows_; ++i) {
        effectsize::RowResult result = evaluator.Evaluate(sheet::FixedRowCount + i);
        effectsize::KeepShownIndices(sheet_, result);
        visit(i, result);
    }
}

std::string Document::CellText(int row, int col) const {
    const sheet::Grid& flex = sheet_.Flex();
    if (row >= flex.FixedRows() && flex.TextIs(sheet::MetaRow::Function, col, "Display") &&
        flex.TextIs(sheet::MetaRow::Attribute, col, "Formula")) {
        const auto& table = sheet_.DisplayColTable();
        for (int index = 1; index <= sheet::IndexCount; ++index)
            if (table[static_cast<std::size_t>(index)][sheet::AttrFormula] == col) {
                // The row's boxes were shown when it was computed; reading
                // its trail again must not show them a second time.
                ports::SilentPrompter silent;
                return effectsize::FormulaText(sheet_, row, index, options_, silent);
            }
    }
    return flex.Text(row, col);
}

std::string Document::StudyName(int i) const {
    const int col = sheet_.GetCol(0, 1);
    return col >= 0 ? sheet_.Flex().Text(sheet::FixedRowCount + i, col) : std::string();
}

std::string Document::RowFormat(int i) const {
    const int col = sheet_.FormatCol();
    return col >= 0 ? sheet_.Flex().Text(sheet::FixedRowCount + i, col) : std::string();
}

bool Document::ComputeRows() {
    return ComputeRows(prompter_);
}

bool Document::ComputeRows(ports::Prompter& prompter) {
    if (dataRows_ <= 0) return false;
    const std::uint64_t before = sheet_.Flex().Revision();
    effectsize::ComputeContext context{options_, prompter};
    int first = sheet::FixedRowCount;
    int last = sheet::FixedRowCount + dataRows_ - 1;
    effectsize::Compute(sheet_, first, last, context);
    return sheet_.Flex().Revision() != before;
}

void Document::ComputeAll() {
    if (!ComputeRows()) return;
    SetDirty(true);
    NotifyCells({DataArea()});
}

bool Document::SetOptions(const effectsize::ComputeOptions& options) {
    if (const auto refused = effectsize::CheckVals(options)) {
        prompter_.Message(*refused);
        return false;
    }
    KeepOptions(options, prompter_);
    return true;
}

void Document::RestoreOptions(const effectsize::ComputeOptions& options) {
    // The rows showed their boxes when these options were first set.
    ports::SilentPrompter silent;
    KeepOptions(options, silent);
}

void Document::KeepOptions(const effectsize::ComputeOptions& options, ports::Prompter& prompter) {
    options_ = options;
    sheet::WriteStoredNumbers(sheet_, {options.ImputedR, options.FudgeFactor,
                                       options.PoolVarianceMethod, options.GVarianceMethod});
    ComputeRows(prompter);
    SetDirty(true);
    NotifyCells({DataArea()});
}

void Document::SetRandomModel(const analysis::RandomModelOptions& options) {
    analysis::WriteRandomModel(sheet_, options);
    SetDirty(true);
}

bool Document::EditCell(int row, int col, std::string text) {
    if (row < sheet_.Flex().FixedRows()) return false;
    return !FinishEdit(row, col, std::move(text)).Empty();
}

bool Document::AddBlock(std::string_view format) {
    const sheet::FormatDef* def = sheet::FindFormatByAnyName(format);
    if (def == nullptr) return false;
    sheet::AddFormatBlock(sheet_, *def);
    SetDirty(true);
    Notify({ChangeKind::Structure, {}});
    return true;
}

analysis::ComputeStatus Document::RunAnalyses(analysis::Analysis& analysis) {
    const std::uint64_t before = sheet_.Flex().Revision();
    const analysis::ComputeStatus status = analysis::RunAnalyses(sheet_, analysis);
    // The check's "Blank" cells, red marks and sequence numbers stay in the sheet.
    if (sheet_.Flex().Revision() != before) {
        SetDirty(true);
        NotifyCells({DataArea()});
    }
    return status;
}

sheet::FileResult Document::Save(const std::filesystem::path& path) {
    // Opening computes every row again, so the display cells of the rows
    // this program computes are not written.
    const sheet::FileResult saved = sheet::SaveProjectFile(
        sheet_, path, [](std::string_view format) { return effectsize::ComputesFormat(format); });
    if (!saved.ok) return saved;
    project_.CurrentFilePath = path.string();
    project_.CurrentFileTitle = path.filename().string();
    SetDirty(false);
    return saved;
}

}  // namespace synthara::shell
