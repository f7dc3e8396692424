#pragma once

#include <vector>

#include "scene_writer/attribute_text.h"

using engine::Float3;

// The lights of the courtyard. Sun and sky reach everything; lamp and spot fade with distance.

engine::SceneLight Lamp();  ///< hangs in the arch; the first light, which the keyboard can move
engine::SceneLight Sun();
engine::SceneLight Sky();  ///< a weak light against the sun, so that shaded walls keep their shape
engine::SceneLight
Ground();  ///< from below, as the ground gives it back: without it there would be no bright sky
engine::SceneLight Spot();  ///< under the ceiling of the chamber

/// Where lamp and spot hang, for the meshes that show them.
inline constexpr Float3 lampPlace{13.0f, -12.0f, 10.6f};
inline constexpr Float3 spotPlace{-34.0f, 27.0f, 12.0f};

/// What OpenGL adds to all lights by itself.
inline constexpr float globalAmbient = 0.2f;

Float3 Colour(engine::Float4 value);
/// What reaches every surface without a direction.
Float3 Ambient();
/// Light of a direction on a surface with that normal.
Float3 Falling(const engine::SceneLight& light, Float3 normal);
/// The vertex colour that shows `wanted` under that light, as far as colours reach.
Float3 VertexColour(Float3 wanted, Float3 light);

/// All of them, in the order above.
std::vector<engine::SceneLight> Lights();
