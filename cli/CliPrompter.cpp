#include "cli/CliPrompter.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>

namespace synthara::cli {
namespace {

std::string_view TrimEnd(std::string_view text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\r'))
        text.remove_suffix(1);
    return text;
}

// The title on a line of its own, then each line of the box beneath it,
// indented. The blanks that pad a dialog's lines mean nothing on a terminal
// and are left off at the end of each line.
void Write(std::ostream& err, const ports::Box& box) {
    std::string_view indent;
    if (const std::string_view title = TrimEnd(box.title); !title.empty()) {
        err << title << '\n';
        indent = "  ";
    }
    for (const std::string& line : box.lines) {
        for (std::size_t from = 0; from <= line.size();) {
            // A line may hold line breaks of its own; each part is indented.
            const std::size_t to = std::min(line.find('\n', from), line.size());
            err << indent << TrimEnd(std::string_view(line).substr(from, to - from)) << '\n';
            from = to + 1;
        }
    }
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
