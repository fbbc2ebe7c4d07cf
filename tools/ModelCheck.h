#pragma once

#include <string>
#include <vector>

#include "ModelSizes.h"
#include "graphics/ModelData.h"

// What the renderer would draw wrongly or the game could not use, in words.
std::vector<std::string> FindModelFaults(const ModelData& model, const SizeClass& size);

Bounds BoundsOf(const ModelData& model);
