#pragma once

// Draws everything once without showing it. OpenGL drivers make the shader for a set of lights,
// textures and fog when something is first drawn with it; on the first start on a machine that can
// take a tenth of a second and more each time, in the middle of a fight. So all the sets that play
// can bring are gone through while the title and the menus stand and the first enemies are on their
// way.

#include <cstdint>

class Rehearsal {
public:
    // Goes on for a few milliseconds. Called in every frame within the scene, with the window's
    // context current.
    void Continue();
    // Begins anew: another context may need its shaders made again.
    void Restart() { *this = {}; }
    // Whether all models loaded so far have been drawn with everything.
    bool IsDone() const;

private:
    void Step();
    void DrawItem() const;

    int32_t item = 0;  // what is drawn next
    int lightSet = 0;  // and with which of the shots' lights
};
