#pragma once
// File dialogs. An empty result means the user cancelled.
#include <string>

namespace synthara::ports {

struct FileFilter {
    std::string description;  // "Data files (*.syn)"
    std::string pattern;      // "*.syn"
};

class FileChooser {
  public:
    virtual ~FileChooser() = default;
    virtual std::string ChooseOpen(const std::string& title, const FileFilter& filter,
                                   const std::string& startFolder) = 0;
    virtual std::string ChooseSave(const std::string& title, const FileFilter& filter,
                                   const std::string& suggestedName) = 0;
};

}  // namespace synthara::ports
