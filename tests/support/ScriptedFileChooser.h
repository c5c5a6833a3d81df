#pragma once
// A FileChooser for tests: answers each dialog from a script ("" cancels) and
// keeps what every dialog was asked, so a test can assert titles and filters.
#include <deque>
#include <string>
#include <vector>

#include "ports/FileChooser.h"

namespace synthara::testing {

class ScriptedFileChooser final : public ports::FileChooser {
  public:
    struct Asked {
        bool save = false;
        std::string title;
        ports::FileFilter filter;
        std::string suggestion;  // start folder or suggested name
    };

    std::string ChooseOpen(const std::string& title, const ports::FileFilter& filter,
                           const std::string& startFolder) override {
        asked.push_back({false, title, filter, startFolder});
        return Next();
    }
    std::string ChooseSave(const std::string& title, const ports::FileFilter& filter,
                           const std::string& suggestedName) override {
        asked.push_back({true, title, filter, suggestedName});
        return Next();
    }

    std::vector<Asked> asked;
    std::deque<std::string> answers;

  private:
    std::string Next() {
        if (answers.empty()) return {};
        std::string answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

}  // namespace synthara::testing
