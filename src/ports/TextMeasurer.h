#pragma once
// The size of a text as it will be drawn, in points (1/72 inch), so that a
// plot laid out by the engine fits its texts on the screen and on paper.
#include <string>

namespace synthara::ports {

struct FontSpec {
    std::string family;  // "" for the system's default
    double points = 10;
    bool bold = false;
    bool italic = false;
};

struct TextSize {
    double width = 0;   // the advance of the whole text
    double height = 0;  // one line: ascent and descent
};

class TextMeasurer {
  public:
    virtual ~TextMeasurer() = default;
    virtual TextSize Measure(const std::string& text, const FontSpec& font) const = 0;
};

}  // namespace synthara::ports
