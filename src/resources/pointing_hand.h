#pragma once

// The hand that points at links, as strokes on a grid of 32 by 32, so that it is crisp at any size.

namespace ostrova::resources {

/// A straight stroke with round ends.
struct HandStroke {
    double fromX = 0;
    double fromY = 0;
    double toX = 0;
    double toY = 0;
    double width = 0;
};

inline constexpr int HandGrid = 32;
inline constexpr int HandHotSpotX = 12;
inline constexpr int HandHotSpotY = 3;

/// The outline of the hand is that of all these together.
inline constexpr HandStroke HandParts[] = {
    {12, 5, 12, 22, 4},      // the index finger; its tip is the hot spot
    {16, 13, 16, 22, 4},     // middle finger
    {20, 14, 20, 22, 4},     // ring finger
    {24, 15.5, 24, 22, 4},   // little finger
    {6.5, 18.5, 12, 24, 4},  // thumb
    {15, 23, 21, 23, 10},    // the ball of the hand
    {14.5, 26, 21.5, 26, 6},
};

/// The lines between the fingers.
inline constexpr HandStroke HandCreases[] = {
    {14, 14, 14, 20, 1},
    {18, 15, 18, 20, 1},
    {22, 16, 22, 20, 1},
};

}  // namespace ostrova::resources
