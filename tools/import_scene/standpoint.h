#pragma once

#include <optional>
#include <vector>

#include "import_scene/world_object.h"
#include "scene_writer/player_parts.h"

/// From the floor to the centre of a player's body, a little more than it takes, so that the body doesn't
/// begin in the floor.
inline constexpr float standing = engine::standingHeight + 0.05f;
inline constexpr float eyeAboveCentre = 3.0f;
/// Half of a body's width and a little more, from its eye.
inline constexpr float bodyReach = 2.5f;

/// The highest floor below a point, as far as bodies can stand on it.
std::optional<float> FloorBelow(const std::vector<WorldObject>& objects, const aiVector3D& point);

struct Hit {
    float distance = 0.0f;  ///< in lengths of the ray's direction
    bool isFront = true;    ///< the triangle is seen from its front side
};

/// The first triangle that a ray from a point meets, from either side; or none.
std::optional<Hit> FirstHit(const std::vector<WorldObject>& objects, const aiVector3D& from,
                            const aiVector3D& direction);

/// Whether a body with this eye has room around it.
bool IsFree(const std::vector<WorldObject>& objects, const aiVector3D& eye);

/// Where a player begins and looks to.
struct Standpoint {
    aiVector3D eye;
    aiVector3D direction;
};

/// A place within the model, if it is one to be in: a closed room whose walls look inwards, or ground under
/// the open sky. None for a thing to be looked at from outside.
std::optional<Standpoint> FindStandpoint(const std::vector<WorldObject>& objects);
