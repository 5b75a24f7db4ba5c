#pragma once

#include <functional>

namespace JobRunner
{

/// A rectangle in client coordinates, in pixels.
struct LayoutBox
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    bool operator==(const LayoutBox&) const = default;
};

/// A place without a size of its own.
struct LayoutPoint
{
    int x = 0;
    int y = 0;

    bool operator==(const LayoutPoint&) const = default;
};

struct LayoutSize
{
    int width = 0;
    int height = 0;
};

/// Turns a distance at the usual density to that of the screen.
using LayoutScale = std::function<int(int distance)>;

/// Moves the input choice to its place and gives the caption column that it then has.
using CaptionColumn = std::function<int(LayoutPoint inputChoice)>;

} // namespace JobRunner
