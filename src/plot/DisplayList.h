#pragma once
// A plot as data: the drawing primitives that layout code emits and one
// painter turns into screen, printer or file output. Coordinates are page
// units with y growing downward; nothing here knows about a toolkit.
#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace synthara::plot {

struct Point {
    double x = 0;
    double y = 0;
};

struct Color {
    std::uint8_t r = 0, g = 0, b = 0;
    friend bool operator==(const Color&, const Color&) = default;
};

inline constexpr Color Black{0, 0, 0};
inline constexpr Color White{255, 255, 255};

struct Line {
    Point from, to;
    Color color = Black;
    double width = 1;
};

struct Polyline {
    std::vector<Point> points;
    Color color = Black;
    double width = 1;
};

// A study marker: a circle around `centre`, filled when `filled`.
struct Circle {
    Point centre;
    double radius = 0;
    Color color = Black;
    bool filled = false;
};

// A summary diamond: its left and right tips at `left` and `right`, its
// middle at `centre`, `halfHeight` above and below the tips' line.
struct Diamond {
    double left = 0, centre = 0, right = 0;
    double y = 0;
    double halfHeight = 0;
    Color color = Black;
    bool filled = true;
};

enum class HAlign : std::uint8_t { Left, Centre, Right };
enum class VAlign : std::uint8_t { Top, Middle, Bottom };

struct Text {
    Point at;
    std::string text;
    double size = 10;  // points
    bool bold = false;
    HAlign hAlign = HAlign::Left;
    VAlign vAlign = VAlign::Top;
    Color color = Black;
    double angle = 0;  // degrees counter-clockwise; 90 for a vertical axis title
};

using Item = std::variant<Line, Polyline, Circle, Diamond, Text>;

struct DisplayList {
    double width = 0;  // page size in page units
    double height = 0;
    std::vector<Item> items;

    template <typename T>
    void Add(T item) {
        items.emplace_back(std::move(item));
    }
};

}  // namespace synthara::plot
