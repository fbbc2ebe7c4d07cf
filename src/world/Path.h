#pragma once

// A flight path: the route along which enemies enter the play field. Many enemies share one; each
// keeps its own progress.

#include <vector>

#include "core/Geometry.h"
#include "world/LevelText.h"

class Path {
public:
    static constexpr int kMinPoints = 2;  // an enemy starts at point 0 and flies towards point 1
    static constexpr int kMaxPoints = 4096;

    Path() = default;
    explicit Path(std::vector<Vec3> points) : points(std::move(points)) {}
    virtual ~Path() = default;

    // Reads the path's record: a count of at least kMinPoints and the points. True = failure (the
    // fault is the reader's).
    bool Read(LevelText& file);

    int PointCount() const { return static_cast<int>(points.size()); }
    Vec3 GetStart() const { return points.front(); }
    Vec3 GetPoint(int index) const { return points[index]; }

    // One frame of a ship that flies towards point `index` with `speed` units a frame. `index` and
    // `finished` are the ship's own progress. `heading` becomes the heading to turn towards; it
    // stays as it is in the frame that reaches a point, in which the ship does not move.
    void Follow(Vec3& position, float speed, int& index, bool& finished, float& heading) const;

    // The heading that a ship travelling by (dx, dz) should turn towards in the current camera
    // view: its nose follows its travel where the field is seen from above or behind; seen from the
    // side it always faces down the screen.
    static float TravelHeading(float dx, float dz, float current);

private:
    std::vector<Vec3> points;
};
