#include "world/StarField.h"

#include <GL/gl.h>

#include "platform/Random.h"

namespace {

constexpr float kStarTop = -68.0F;
constexpr float kStarBottom = 100.0F;

float RandomShade() {
    return platform::RandomFraction() * 0.5F + 0.5F;
}

}  // namespace

void StarField::ResetAll() {
    for (Star& star : stars) {
        Respawn(star);
    }
}

void StarField::Respawn(Star& star) {
    star.colour = {RandomShade(), RandomShade(), RandomShade()};
    const float x = platform::RandomFraction() * 140.0F - 70.0F;
    const float y = platform::RandomFraction() * 108.0F - 54.0F;
    star.position = {x, y, kStarTop};
    star.speed = platform::RandomFraction() * 0.3F + 0.2F;
}

void StarField::Update() {
    for (Star& star : stars) {
        star.position.z += star.speed;
        if (star.position.z > kStarBottom) {
            Respawn(star);
        }
    }
}

// All stars in one batch, and without lighting: a point has no side that a lamp could shine on, and
// lit it would take its brightness from whatever material and glow were used last.
void StarField::Draw() const {
    glDisable(GL_LIGHTING);
    glBegin(GL_POINTS);
    for (const Star& star : stars) {
        glColor3f(star.colour.red, star.colour.green, star.colour.blue);
        glVertex3f(star.position.x, star.position.y, star.position.z);
    }
    glEnd();
    glEnable(GL_LIGHTING);
}
