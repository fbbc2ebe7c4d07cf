#include "world/Ship.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"

namespace {

GLUquadric* shieldQuadric = nullptr;

}  // namespace

void Ship::Draw() {
    const Vec3 at = GetPosition();
    glPushMatrix();
    glTranslatef(at.x, at.y, at.z);
    glRotatef(GetRotationY(), 0.0F, -1.0F, 0.0F);
    glRotatef(GetRotationX(), -1.0F, 0.0F, 0.0F);
    glRotatef(GetRotationZ(), 0.0F, 0.0F, -1.0F);
    glCallList(model);
    if (shields != 0) {
        DrawShield();
    }
    glPopMatrix();
}

// The stronger the shield, the finer and thicker its net of lines.
void Ship::DrawShield() const {
    glColor4fv(shieldColour.data());
    glLineWidth(shields <= 4 ? static_cast<float>(shields) / 2.0F + 1.0F : 3.0F);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glTranslatef(centre.x, centre.y, centre.z);
    const int fineness = 2 * shields + 6;
    DrawSphere(radius, fineness, fineness);
    glWindow->RestorePolygonMode();
}

// The model before it has left its last material's textures and glow behind, which would paint the
// sphere.
void Ship::DrawSphere(float sphereRadius, int slices, int stacks) {
    constexpr std::array<GLfloat, 4> kNoGlow = {0.0F, 0.0F, 0.0F, 1.0F};
    if (shieldQuadric == nullptr) {
        return;
    }
    ObjectManager::Instance()->DisableTextures();
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, kNoGlow.data());
    gluSphere(shieldQuadric, sphereRadius, slices, stacks);
}

void Ship::DrawSampleSpheres() {
    constexpr int kFineness = 8;
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    DrawSphere(1.0F, kFineness, kFineness);
    glWindow->RestorePolygonMode();
    DrawSphere(1.0F, kFineness, kFineness);
}

void Ship::TakeDamage(int amount) {
    shields -= amount;
    if (shields < 0) {
        hitPoints += shields;
        shields = 0;
    }
}

Bounds Ship::GetBounds() const {
    if (shields > 0) {
        return {-radius, radius, -radius, radius, -radius, radius};
    }
    return box;
}

bool Ship::LoadModel(const char* fileName) {
    model = ObjectManager::Instance()->Load(fileName, box);
    CalculateBounds();
    return model != 0;
}

void Ship::SetShieldColour(float red, float green, float blue, float alpha) {
    shieldColour = {red, green, blue, alpha};
}

void Ship::CalculateBounds() {
    CalculateRadius();
    CalculateCentre();
}

// Of a sphere about the model's origin that reaches the box's far corner on the positive side.
void Ship::CalculateRadius() {
    radius = Length({box.maxX, box.maxY, box.maxZ});
}

void Ship::CalculateCentre() {
    centre = {(box.maxX + box.minX) / 2.0F, (box.maxY + box.minY) / 2.0F,
              (box.maxZ + box.minZ) / 2.0F};
}

void Ship::CreateQuadric() {
    DeleteQuadric();
    shieldQuadric = gluNewQuadric();
}

// GLU frees its own memory here and makes no GL call, so this is safe without a context.
void Ship::DeleteQuadric() {
    if (shieldQuadric != nullptr) {
        gluDeleteQuadric(shieldQuadric);
        shieldQuadric = nullptr;
    }
}
