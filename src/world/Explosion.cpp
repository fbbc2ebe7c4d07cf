#include "world/Explosion.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <string>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "platform/Random.h"

namespace {

// A piece of debris is a tetrahedron; its four triangles.
constexpr Vec3 kCornerA = {0.0F, -0.2F, 0.4F};
constexpr Vec3 kCornerB = {-0.4F, -0.2F, -0.2F};
constexpr Vec3 kCornerC = {0.4F, -0.2F, -0.2F};
constexpr Vec3 kCornerD = {0.0F, 0.4F, 0.0F};
constexpr std::array<Vec3, 12> kDebris = {kCornerA, kCornerB, kCornerC, kCornerD,
                                          kCornerB, kCornerA, kCornerD, kCornerC,
                                          kCornerB, kCornerD, kCornerA, kCornerC};

constexpr Colour kRingColour = {1.0F, 0.6F, 0.15F};
constexpr float kFirstRadius = 0.1F;
constexpr float kRingGrowth = 0.2F;  // units per frame
constexpr int kRingSlices = 14;
// The rings are flat and of one colour, so more loops than one would only draw the same picture in
// more, smaller pieces: 14 loops cost a software renderer seven times as much.
constexpr int kRingLoops = 1;

Colour debrisColour;
GLUquadric* ringQuadric = nullptr;

// A number from -25 to 24 as a part of `divisor`: units per frame.
float RandomVelocity(float divisor) {
    return static_cast<float>(platform::Random() % 50 - 25) / divisor;
}

// 0 to 9 twenty-fifths less than `most`.
float RandomShade(float most) {
    return most - static_cast<float>(platform::Random() % 10) / 25.0F;
}

// Turns what follows to face the camera.
void TurnToCamera(int32_t view) {
    if (view == 1) {
        glRotatef(-90.0F, 1.0F, 0.0F, 0.0F);
    } else if (view == 2) {
        glRotatef(-90.0F, 0.0F, 1.0F, 0.0F);
    } else if (view == 3) {
        glRotatef(90.0F, 0.0F, 1.0F, 0.0F);
    }
}

void DrawRing(float inner, float outer, float alpha) {
    glColor4f(kRingColour.red, kRingColour.green, kRingColour.blue, alpha);
    gluDisk(ringQuadric, inner, outer, kRingSlices, kRingLoops);
}

}  // namespace

void Explosion::Start(Vec3 at, int32_t newPoints) {
    ringRadius = kFirstRadius;
    position = at;
    points = newPoints;
    for (Particle& particle : particles) {
        particle.alive = true;
        particle.life = 1.0F;
        particle.fade = static_cast<float>(platform::Random() % 10) / 1000.0F + 0.03F;
        particle.position = at;
        // Widest across X, least along Z.
        particle.velocity = {RandomVelocity(80.0F), RandomVelocity(100.0F), RandomVelocity(120.0F)};
    }
    active = true;
}

bool Explosion::Update() {
    int dead = 0;
    for (Particle& particle : particles) {
        if (!particle.alive) {
            ++dead;
            continue;
        }
        particle.position = particle.position + particle.velocity;
        particle.life -= particle.fade;
        particle.alive = particle.life > 0.0F;
    }
    if (dead == kParticles) {
        active = false;
    }
    ringRadius += kRingGrowth;
    return !active;
}

void Explosion::Draw() {
    if (!active) {
        Log("ERROR: Attempting to draw an inactive explosion.");
    }
    DrawDebris();
    glPushMatrix();
    glTranslatef(position.x, position.y, position.z);
    TurnToCamera(glWindow->GetView());
    DrawRings();
    DrawScore();
    glPopMatrix();
}

// All the pieces in one batch. Moved one by one with the matrix they would be 75 drawings of four
// triangles each, and their number, not their size, is what costs.
void Explosion::DrawDebris() const {
    glBegin(GL_TRIANGLES);
    for (const Particle& particle : particles) {
        if (!particle.alive) {
            continue;
        }
        glColor4f(debrisColour.red, debrisColour.green, debrisColour.blue, particle.life);
        for (const Vec3& corner : kDebris) {
            const Vec3 at = particle.position + corner;
            glVertex3f(at.x, at.y, at.z);
        }
    }
    glEnd();
}

// Two rings that overlap and fade with one piece of debris each, so that they flicker out.
void Explosion::DrawRings() const {
    if (ringQuadric == nullptr) {
        return;
    }
    const float outer = ringRadius * 1.2F;
    DrawRing(ringRadius, outer, particles[0].life);
    DrawRing(ringRadius * 1.1F, outer, particles[1].life);
}

void Explosion::DrawScore() const {
    if (points <= 0) {
        return;
    }
    const std::string digits = std::to_string(points);  // short enough to need no allocation
    glColor4f(0.1F, 1.0F, 0.4F, 0.4F);
    glRasterPos2i(0, 0);
    glPushAttrib(GL_LIST_BIT);
    glListBase(glWindow->GetFontBase() - 32);
    glCallLists(static_cast<GLsizei>(digits.size()), GL_UNSIGNED_BYTE, digits.data());
    glPopAttrib();
}

void Explosion::DrawSample() {
    Explosion sample;
    sample.particles.front().alive = true;
    sample.particles.front().life = 1.0F;
    sample.ringRadius = kFirstRadius;
    sample.points = 1;
    sample.active = true;
    sample.Draw();
}

void Explosion::InitResources() {
    const float red = RandomShade(1.0F);
    const float green = RandomShade(0.8F);
    const float blue = RandomShade(0.4F);
    debrisColour = {red, green, blue};
    CreateGLObjects();
}

void Explosion::FreeResources() {
    DeleteGLObjects();
}

void Explosion::CreateGLObjects() {
    DeleteGLObjects();
    ringQuadric = gluNewQuadric();
}

// GLU frees its own memory here and makes no GL call, so this is safe without a context.
void Explosion::DeleteGLObjects() {
    if (ringQuadric != nullptr) {
        gluDeleteQuadric(ringQuadric);
        ringQuadric = nullptr;
    }
}
