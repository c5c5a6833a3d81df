#include "shell/StartChoices.h"

#include <algorithm>

namespace synthara::shell {

std::vector<StartOffer> StartOptions(bool guideExists) {
    std::vector<StartOffer> offers{
        {StartOption::Blank, "Start a blank spreadsheet"},
        {StartOption::Template, "Start a new spreadsheet using a template"},
        {StartOption::File, "Open an existing file"},
    };
    if (guideExists) offers.push_back({StartOption::Tutorial, "Run the tutorial"});
    return offers;
}

StartOption FirstStartOption(const StoredSettings& settings, const sheet::RecentFiles& recent,
                             bool guideExists) {
    const std::vector<StartOffer> offers = StartOptions(guideExists);
    const std::string last = settings.Text("OptCurrentNameSelection");
    for (const StartOffer& offer : offers)
        if (last == std::to_string(static_cast<int>(offer.option))) return offer.option;
    return recent.Files().Found() ? StartOption::File : StartOption::Blank;
}

std::vector<std::string> StartList(StartOption option, const sheet::RecentFiles& recent) {
    std::vector<std::string> list;
    if (option == StartOption::Template || option == StartOption::File) {
        const auto& entries = option == StartOption::Template ? recent.Templates().Entries()
                                                              : recent.Files().Entries();
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(list),
                     [](const std::string& path) { return !path.empty(); });
        list.emplace_back(kMoreFilesEntry);
    }
    return list;
}

}  // namespace synthara::shell
