#pragma once
// The engine's way of talking to the user: message boxes and questions.
// The desktop answers with dialogs, the command line with standard error and
// fixed answers, and the tests with a scripted recorder.
#include <string>
#include <vector>

namespace synthara::ports {

enum class Icon { None, Information, Warning, Critical, Question };
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

struct Box {
    std::string title;
    std::vector<std::string> lines;  // each line as the user reads it, blanks included
    Icon icon = Icon::None;

    std::string Text() const;  // the lines joined by line feeds
};

class Prompter {
  public:
    virtual ~Prompter() = default;
    virtual void Message(const Box& box) = 0;
    virtual Answer Ask(const Box& box, Buttons buttons, Answer byDefault) = 0;
};

// Says nothing and takes every question's default; for batch work.
class SilentPrompter final : public Prompter {
  public:
    void Message(const Box&) override {}
    Answer Ask(const Box&, Buttons, Answer byDefault) override { return byDefault; }
};

}  // namespace synthara::ports
