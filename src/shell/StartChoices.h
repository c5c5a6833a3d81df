#pragma once
// The start dialog's choices: what it offers, which option it selects when it
// opens, and the list beside the options.
#include <string>
#include <string_view>
#include <vector>

#include "sheet/files/RecentFiles.h"
#include "shell/Settings.h"

namespace synthara::shell {

enum class StartOption : int { Blank = 1, Template = 2, File = 3, Tutorial = 4 };

struct StartOffer {
    StartOption option;
    std::string_view caption;
};

// The last entry of the list, which opens the file dialog.
inline constexpr std::string_view kMoreFilesEntry = "More files ...";
inline constexpr std::string_view kMoreFilesValue = "More files";

// The options in order; the tutorial only when a guide exists to run.
std::vector<StartOffer> StartOptions(bool guideExists);

// The option selected on opening: the one used last time when it is still
// offered, else "Open an existing file" when a recent file is at hand, else a
// blank sheet.
StartOption FirstStartOption(const StoredSettings& settings, const sheet::RecentFiles& recent,
                             bool guideExists);

// The list beside the options: the recent templates for a template, the
// recent files otherwise, then "More files ...".
std::vector<std::string> StartList(StartOption option, const sheet::RecentFiles& recent);

}  // namespace synthara::shell
