#include "player/Powerup.h"

#include <GL/gl.h>

#include "player/Collision.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"

namespace {

constexpr float kFall = 0.2F;        // units per frame, down the screen
constexpr float kPullShare = 40.0F;  // a magnet covers this fraction of the way each frame
constexpr float kSpinStep = 5.0F;    // degrees per frame

int32_t view = 1;  // camera view of the level

}  // namespace

void Powerup::SetView(int32_t newView) {
    view = newView;
}

void Powerup::Place(Vec3 at, uint32_t displayList, int32_t code) {
    position = at;
    life = kLife;
    model = displayList;
    kind = code;
}

bool Powerup::Update(const MagnetPull& pull, const PlayerShip* player) {
    if (!stationary) {
        life -= 1.0F;
        if (life == 0.0F) {
            return true;
        }
        position.z += kFall;
    }
    if (pull.on && (!pull.selective || PowerupManager::IsWanted(*player, kind))) {
        position.x += (pull.towards.x - position.x) / kPullShare;
        position.y += (pull.towards.y - position.y) / kPullShare;
        position.z += (pull.towards.z - position.z) / kPullShare;
    }
    spin += kSpinStep;
    if (spin > 360.0F) {
        spin -= 360.0F;
    }
    return false;
}

void Powerup::Draw() const {
    glPushMatrix();
    glTranslatef(position.x, position.y, position.z);
    if (view == 4) {
        glRotatef(spin, 1.0F, 0.0F, 0.0F);
    } else {
        glRotatef(spin, 0.0F, 0.0F, 1.0F);
    }
    glCallList(model);
    glPopMatrix();
}

bool Powerup::HitTest(const Ship& ship) const {
    return Collision::PointInBox(ship.GetPosition(), position, ship.GetBounds());
}
