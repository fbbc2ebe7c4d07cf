#include "ModelCheck.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr float kLeastArea = 1e-6F;        // square units of a quad that shows anything
constexpr float kNormalTolerance = 0.01F;  // of a unit normal's length
// Smooth normals may lean away from a quad's own, but seen from the front they face the viewer on
// average. Below this they were made for the other side.
constexpr float kReversed = 0.0F;

Vec3 Cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

float Dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

// Twice the area of the quad, along the normal of its winding.
Vec3 AreaVector(const Face& face) {
    return Cross(face[2].position - face[0].position, face[3].position - face[1].position);
}

float LongestEdge(const Face& face) {
    float longest = 0.0F;
    for (size_t k = 0; k < face.size(); ++k) {
        longest = std::max(longest, Length(face[(k + 1) % 4].position - face[k].position));
    }
    return longest;
}

bool HasUnitNormals(const Face& face) {
    return std::all_of(face.begin(), face.end(), [](const FaceCorner& corner) {
        return std::abs(Length(corner.normal) - 1.0F) <= kNormalTolerance;
    });
}

// Null when the quad is fit.
const char* FaultOf(const Face& face, float maxEdge) {
    const Vec3 area = AreaVector(face);
    if (Length(area) / 2.0F < kLeastArea) {
        return "has no area";
    }
    if (!HasUnitNormals(face)) {
        return "has a normal that is not of length 1";
    }
    const Vec3 normal = face[0].normal + face[1].normal + face[2].normal + face[3].normal;
    if (Dot(area, normal) <= kReversed) {
        return "is reversed: its normals look against its winding";
    }
    return LongestEdge(face) > maxEdge ? "is oversized" : nullptr;
}

std::string Format(const char* format, float a, float b, float c) {
    char text[128];
    std::snprintf(text, sizeof text, format, static_cast<double>(a), static_cast<double>(b),
                  static_cast<double>(c));
    return text;
}

void CheckSize(const ModelData& model, const SizeClass& size, std::vector<std::string>& faults) {
    const Bounds b = BoundsOf(model);
    const Vec3 extent = {b.maxX - b.minX, b.maxY - b.minY, b.maxZ - b.minZ};
    const std::string name = size.name;
    if (extent.x > size.most.x || extent.y > size.most.y || extent.z > size.most.z) {
        faults.push_back(
            "too large for a " + name + ": " +
            Format("%.2f x %.2f x %.2f, ", extent.x, extent.y, extent.z) +
            Format("at most %.2f x %.2f x %.2f", size.most.x, size.most.y, size.most.z));
    }
    if (std::max({extent.x, extent.y, extent.z}) < size.least) {
        faults.push_back("too small for a " + name + ": " +
                         Format("%.2f x %.2f x %.2f", extent.x, extent.y, extent.z));
    }
}

// A switch ahead of the first face gives every face a material.
void CheckMaterials(const ModelData& model, std::vector<std::string>& faults) {
    if (!model.faces.empty() &&
        (model.separators.empty() || model.separators.front().streamIndex != 0)) {
        faults.emplace_back("its first faces have no material");
    }
    for (size_t m = 0; m < model.materials.size(); ++m) {
        const bool used = std::any_of(
            model.separators.begin(), model.separators.end(),
            [m](const MaterialSwitch& s) { return s.material == static_cast<int32_t>(m); });
        if (!used) {
            faults.push_back("material " + model.materials[m].name + " is not used");
        }
    }
}

}  // namespace

Bounds BoundsOf(const ModelData& model) {
    Bounds b;
    for (const Face& face : model.faces) {
        for (const auto& [normal, p] : face) {
            b = {std::min(b.minX, p.x), std::max(b.maxX, p.x), std::min(b.minY, p.y),
                 std::max(b.maxY, p.y), std::min(b.minZ, p.z), std::max(b.maxZ, p.z)};
        }
    }
    return b;
}

std::vector<std::string> FindModelFaults(const ModelData& model, const SizeClass& size) {
    std::vector<std::string> faults;
    for (size_t f = 0; f < model.faces.size(); ++f) {
        if (const char* const fault = FaultOf(model.faces[f], size.maxEdge)) {
            faults.push_back("quad " + std::to_string(f) + " " + fault);
        }
    }
    CheckMaterials(model, faults);
    CheckSize(model, size, faults);
    return faults;
}
