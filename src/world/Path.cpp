#include "world/Path.h"

#include "core/Registry.h"
#include "graphics/GLWindow.h"

bool Path::Read(LevelText& file) {
    const int count = file.ReadInt("number of points of a path", kMinPoints, kMaxPoints);
    file.SkipToColon("points of a path");
    points.clear();
    while (!file.HasFailed() && PointCount() < count) {
        const float x = file.ReadFloat("x of a point");
        const float y = file.ReadFloat("y of a point");
        const float z = file.ReadFloat("z of a point");
        points.push_back({x, y, z});
    }
    return file.HasFailed();
}

void Path::Follow(Vec3& position, float speed, int& index, bool& finished, float& heading) const {
    const Vec3 offset = points[index] - position;
    const float distance = Length(offset);
    if (distance <= speed) {
        ++index;
        finished = finished || index >= PointCount();
        return;
    }
    position = position + offset * (speed / distance);
    heading = TravelHeading(offset.x, offset.z, heading);
}

float Path::TravelHeading(float dx, float dz, float current) {
    const int32_t view = glWindow->GetView();
    return view == 1 || view == 4 ? HeadingTowards(dx, dz, current) : 180.0F;
}
