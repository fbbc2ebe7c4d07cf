#pragma once

#include "core/Geometry.h"

// Whatever lives in the play field.
class GameObject {
public:
    virtual ~GameObject() = default;
    virtual Vec3 GetPosition() const = 0;
    virtual void Draw() = 0;
    // One frame. True when the object is finished and may be removed or recycled by its owner.
    virtual bool Update() = 0;
    virtual void TakeDamage(int amount) = 0;
    // The collision box, relative to the position.
    virtual Bounds GetBounds() const = 0;

    bool active = true;  // cleared when the object has finished
};
