#pragma once

#include <vector>

#include "import_scene/model.h"
#include "import_scene/world_object.h"
#include "scene_writer/attribute_text.h"

/// The lights of a scene, the brightest first: the model's lamps, or a sun where it has none.
std::vector<engine::SceneLight> MakeLights(const Model& model, const std::vector<WorldObject>& objects,
                                           const Options& options, Report& report);
