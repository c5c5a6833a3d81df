// Opening a file into the project: a delimited text or a workbook's sheet
// becomes a sheet as the wizard and typing would make it; a project or
// template is read whole.
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include "sheet/files/ProjectFile.h"
#include "sheet/files/SheetFormat.h"
#include "sheet/import/ImportTable.h"
#include "sheet/import/TableFile.h"
#include "shell/Document.h"
#include "shell/FileKinds.h"

namespace synthara::shell {

namespace {

// Every row from the first data row to the last one holding anything.
int DataRowsOf(const sheet::Sheet& sheet) {
    const int last = sheet.GetLastRow();
    if (last == sheet::FixedRowCount && sheet.isRowEmpty(last)) return 0;
    return last - sheet::FixedRowCount + 1;
}

effectsize::ComputeOptions StoredOptions(const sheet::Sheet& sheet) {
    // The options travel with the project; an imported table has the defaults.
    const sheet::StoredNumbers stored = sheet::ReadStoredNumbers(sheet);
    return {stored.ImputedR, stored.FudgeFactor, stored.PoolVarianceMethod, stored.GVarianceMethod};
}

std::string LowerExtension(const std::filesystem::path& path) {
    std::string ext = path.extension().string();
    for (auto& c : ext)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return ext;
}

// Reads the file into `fresh`, a sheet no one sees yet, with what the open
// project takes from it.
OpenOutcome ReadInto(sheet::Sheet& fresh, sheet::OpenProject& project, int& dataRows,
                     const std::filesystem::path& path, const OpenSettings& settings) {
    fresh.InitializeGrid();
    fresh.Separators = settings.separators;
    const std::string name = path.string();
    if (IsProjectFile(path)) {
        const sheet::FileResult loaded = sheet::LoadProjectFile(fresh, path);
        if (!loaded.ok) return {OpenStatus::Refused, name + ": " + loaded.message};
        fresh.Separators = settings.separators;
        dataRows = DataRowsOf(fresh);
        if (IsTemplateFile(path)) {
            project.CurrentTemplatePath = name;
        } else {
            project.CurrentFilePath = name;
            project.CurrentFileTitle = path.filename().string();
        }
        return {OpenStatus::Opened, {}};
    }
    const sheet::DelimitedResult text = sheet::ReadTableFile(name, settings.table);
    if (!text.ok) return {OpenStatus::Refused, text.Describe(name)};
    // Without first-row labels the columns come in unidentified, for the user
    // to say what each holds.
    const sheet::ImportResult imported =
        settings.table.firstRowTitles
            ? sheet::ImportTable(fresh, text.table, settings.defaultFormat, name)
            : sheet::ImportPlainTable(fresh, text.table, name);
    if (!imported.ok)
        return {imported.optionFault ? OpenStatus::NoFormat : OpenStatus::Refused,
                imported.message};
    dataRows = imported.dataRows;
    // Rows typed in from a file are unsaved work.
    project.SheetDirty = true;
    return {OpenStatus::Opened, {}};
}

}  // namespace

bool IsProjectFile(const std::filesystem::path& path) {
    const std::string ext = LowerExtension(path);
    return ext == ".syn" || ext == ".syt";
}

bool IsTemplateFile(const std::filesystem::path& path) {
    return LowerExtension(path) == ".syt";
}

OpenOutcome Document::Open(const std::filesystem::path& path, const OpenSettings& settings) {
    if (!settings.defaultFormat.empty() &&
        sheet::FindFormatByAnyName(settings.defaultFormat) == nullptr)
        return {OpenStatus::UnknownFormat, {}};
    const std::string name = path.string();
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec))
        return {OpenStatus::Refused, name + " is a folder, not a file."};

    // The new sheet is built aside and taken only when the whole file was read.
    sheet::Sheet fresh(prompter_);
    sheet::OpenProject project;
    int dataRows = 0;
    try {
        const OpenOutcome read = ReadInto(fresh, project, dataRows, path, settings);
        if (!read.ok()) return read;
    } catch (const std::bad_alloc&) {
        return {OpenStatus::Refused, name + ": " + sheet::NotEnoughMemoryToRead};
    }

    sheet_ = std::move(fresh);
    project_ = std::move(project);
    options_ = StoredOptions(sheet_);
    settings.options.ApplyTo(options_);
    dataRows_ = dataRows;
    ComputeRows();
    Notify({ChangeKind::Reset, {}});
    NotifyDirty();
    return {OpenStatus::Opened, {}};
}

void Document::Reloaded() {
    options_ = StoredOptions(sheet_);
    dataRows_ = DataRowsOf(sheet_);
    unfrozenCols_ = -1;
    ComputeRows();
    Notify({ChangeKind::Reset, {}});
    NotifyDirty();
}

void Document::Settle(std::uint64_t revision, bool wasDirty) {
    const bool changed = sheet_.Flex().Revision() != revision;
    if (changed) {
        dataRows_ = DataRowsOf(sheet_);
        project_.SheetDirty = true;
    }
    if (project_.SheetDirty != wasDirty) NotifyDirty();
    if (changed) Notify({ChangeKind::Structure, {}});
}

}  // namespace synthara::shell
