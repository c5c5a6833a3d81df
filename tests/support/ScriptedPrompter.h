#pragma once
// A Prompter for tests: keeps every box shown and answers questions from a
// script, so a test can assert the exact title and text the user would see.
#include <deque>
#include <string>
#include <vector>

#include "ports/Prompter.h"

namespace synthara::testing {

class ScriptedPrompter final : public ports::Prompter {
  public:
    struct Shown {
        ports::Box box;
        bool question = false;
        // For a question: the buttons offered and the one that is the default.
        ports::Buttons buttons = ports::Buttons::Ok;
        ports::Answer byDefault = ports::Answer::Ok;
    };

    void Message(const ports::Box& box) override { shown.push_back({box, false}); }
    ports::Answer Ask(const ports::Box& box, ports::Buttons buttons,
                      ports::Answer byDefault) override {
        shown.push_back({box, true, buttons, byDefault});
        if (answers.empty()) return byDefault;
        auto answer = answers.front();
        answers.pop_front();
        return answer;
    }

    // A box as "title|line|line".
    static std::string Text(const ports::Box& box) {
        std::string text = box.title;
        for (const std::string& line : box.lines)
            text += "|" + line;
        return text;
    }
    // The one box shown; says how many were shown when not exactly one.
    std::string Only() const {
        if (shown.size() != 1) return "<" + std::to_string(shown.size()) + " boxes>";
        return Text(shown[0].box);
    }
    std::string Last() const { return shown.empty() ? "<none>" : Text(shown.back().box); }

    std::vector<Shown> shown;
    std::deque<ports::Answer> answers;
};

}  // namespace synthara::testing
