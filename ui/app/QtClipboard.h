#pragma once
// The system clipboard through Qt.
#include "ports/Clipboard.h"

namespace synthara::ui {

class QtClipboard final : public ports::Clipboard {
  public:
    std::string Text() const override;
    void SetText(const std::string& text) override;
};

}  // namespace synthara::ui
