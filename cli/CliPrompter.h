#pragma once
// The engine's message boxes on a terminal: each box becomes its title on a
// line of its own and its lines beneath, indented by two blanks and without
// the blanks that pad them, on standard error. Every question takes its
// default answer.
#include <iosfwd>

#include "ports/Prompter.h"

namespace synthara::cli {

class CliPrompter final : public ports::Prompter {
  public:
    explicit CliPrompter(std::ostream& err) : err_(err) {}
    void Message(const ports::Box& box) override;
    ports::Answer Ask(const ports::Box& box, ports::Buttons buttons,
                      ports::Answer byDefault) override;

  private:
    std::ostream& err_;
};

}  // namespace synthara::cli
