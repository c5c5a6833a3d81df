#include "cli/LoadInput.h"

#include <ostream>

#include "cli/App.h"
#include "sheet/DelimitedText.h"

namespace synthara::cli {
namespace {

bool IsProjectFile(const std::string& path) {
    const auto dot = path.rfind('.');
    if (dot == std::string::npos) return false;
    std::string ext = path.substr(dot + 1);
    for (auto& c : ext)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return ext == "syn" || ext == "syt";
}

}  // namespace

int LoadInput(const std::string& path, const std::string& format, sheet::Sheet& sheet,
              sheet::ImportResult& imported, std::ostream& err) {
    if (!format.empty() && sheet::FindFormatByAnyName(format) == nullptr) {
        err << "Unknown data format \"" << format << "\" (--format)\n";
        return ExitUsage;
    }
    if (IsProjectFile(path)) {
        err << path << ": project files cannot be read by this version yet\n";
        return ExitRefused;
    }
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
