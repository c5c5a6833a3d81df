#include "cli/CliPrompter.h"

#include <ostream>

namespace synthara::cli {
namespace {

void Write(std::ostream& err, const ports::Box& box) {
    if (!box.title.empty()) err << box.title << ": ";
    err << box.Text() << '\n';
}

const char* AnswerWord(ports::Answer answer) {
    switch (answer) {
        case ports::Answer::Ok:
            return "OK";
        case ports::Answer::Cancel:
            return "Cancel";
        case ports::Answer::Yes:
            return "Yes";
        case ports::Answer::No:
            return "No";
    }
    return "";
}

}  // namespace

void CliPrompter::Message(const ports::Box& box) {
    Write(err_, box);
}

ports::Answer CliPrompter::Ask(const ports::Box& box, ports::Buttons, ports::Answer byDefault) {
    Write(err_, box);
    err_ << "  (answered " << AnswerWord(byDefault) << ")\n";
    return byDefault;
}

}  // namespace synthara::cli
