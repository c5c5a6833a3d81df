#pragma once
// Text sizes from Qt's font metrics, given in points whatever the screen's
// resolution.
#include "ports/TextMeasurer.h"

namespace synthara::ui {

class QtTextMeasurer final : public ports::TextMeasurer {
  public:
    ports::TextSize Measure(const std::string& text, const ports::FontSpec& font) const override;
};

}  // namespace synthara::ui
