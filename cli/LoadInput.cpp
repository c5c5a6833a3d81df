#include "cli/LoadInput.h"

#include <ostream>

#include "cli/App.h"
#include "sheet/files/ProjectFile.h"
#include "sheet/import/DelimitedText.h"

namespace synthara::cli {
namespace {

// Every row from the first data row to the last one holding anything.
int DataRowsOf(const sheet::Sheet& sheet) {
    const int last = sheet.GetLastRow();
    if (last == sheet::FixedRowCount && sheet.isRowEmpty(last)) return 0;
    return last - sheet::FixedRowCount + 1;
}

int LoadProject(const std::string& path, const std::string& format, sheet::Sheet& sheet,
                sheet::ImportResult& imported, std::ostream& err) {
    const sheet::FileResult loaded = sheet::LoadProjectFile(sheet, path);
    if (!loaded.ok) {
        err << path << ": " << loaded.message << '\n';
        return ExitRefused;
    }
    // A project's rows already carry their formats: --format names none of them.
    if (!format.empty()) err << "--format has no effect on a project file\n";
    imported.ok = true;
    imported.dataRows = DataRowsOf(sheet);
    return ExitDone;
}

}  // namespace

bool IsProjectFile(const std::string& path) {
    const auto dot = path.rfind('.');
    if (dot == std::string::npos) return false;
    std::string ext = path.substr(dot + 1);
    for (auto& c : ext)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return ext == "syn" || ext == "syt";
}

int LoadInput(const std::string& path, const std::string& format, sheet::Sheet& sheet,
              sheet::ImportResult& imported, std::ostream& err) {
    if (!format.empty() && sheet::FindFormatByAnyName(format) == nullptr) {
        err << "Unknown data format \"" << format << "\" (--format)\n";
        return ExitUsage;
    }
    if (IsProjectFile(path)) return LoadProject(path, format, sheet, imported, err);
    const sheet::DelimitedResult text = sheet::ReadDelimitedFile(path);
    if (!text.ok) {
        err << text.Describe(path) << '\n';
        return ExitRefused;
    }
    imported = sheet::ImportTable(sheet, text.table, format, path);
    if (imported.ok) return ExitDone;
    if (imported.optionFault) {
        err << "No data format: give --format or a \"" << sheet::DataFormatTitle << "\" column\n";
        return ExitUsage;
    }
    err << imported.message << '\n';
    return ExitRefused;
}

}  // namespace synthara::cli
