#pragma once

#include "world.h"

/// Darkens the vertex colours of everything fixed by what stands between it and the sun, and by how much of
/// the sky its neighbours hide. The engine's lights pass through walls; vertex colours are the only shadows
/// that there can be.
void PaintShadows(World& world);

/// One normal for each vertex, as the engine makes them: the mean of the triangles around it.
std::vector<Float3> VertexNormals(const SceneObject& mesh);
