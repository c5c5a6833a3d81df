#pragma once
// Message boxes and questions on the screen, with the engine's titles and
// texts as they are, blanks included.
#include "ports/Prompter.h"

class QWidget;

namespace synthara::ui {

class QtPrompter final : public ports::Prompter {
  public:
    // The boxes open over `parent` (none until SetParent is called).
    explicit QtPrompter(QWidget* parent = nullptr) : parent_(parent) {}
    void SetParent(QWidget* parent) { parent_ = parent; }

    void Message(const ports::Box& box) override;
    ports::Answer Ask(const ports::Box& box, ports::Buttons buttons,
                      ports::Answer byDefault) override;

  private:
    QWidget* parent_;
};

}  // namespace synthara::ui
