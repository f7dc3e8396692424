#pragma once

#include <string>

#include "scene_writer/scene_file.h"

namespace engine {

// What the writer refuses: whatever would make another world than its author meant, and in silence. All of
// these throw std::invalid_argument with a sentence.

/// @param subject what it is about, such as `object "Crate"`
[[noreturn]] void Refuse(const std::string& subject, const std::string& reason);
/// `object "Crate"`.
std::string Named(const SceneObject& object);

/// Whether `AddMarkers` has been there: without, all markers name vertex 0.
bool HasMarkers(const SceneObject& object);
/// Refuses a change that would tear the markers off their places.
void DemandNoMarkers(const SceneObject& object, const std::string& change);
/// Refuses a box whose corners don't lie as their names say.
void DemandCorners(const std::string& name, Float3 low, Float3 high);
/// Refuses an object that can't be loaded as it stands: names and lists that don't fit the file, indices
/// of nothing, values that are no numbers, tracks that can't be played.
void DemandWritable(const SceneObject& object);

}  // namespace engine
