#pragma once

#include "check_scene/findings.h"
#include "check_scene/world.h"

struct MeshFacts;

// The judgements on a world that is loaded, each in a file of its own.

void CheckSettings(Findings& findings, const World& world);
void CheckBlocks(Findings& findings, const World& world);
void CheckTextures(Findings& findings, const World& world);
void CheckSceneFiles(Findings& findings, const World& world);
void CheckMeshes(Findings& findings, const World& world);
/// What the markers of all that moves show to be wrong with the whole world.
void CheckWorldAxes(Findings& findings, const World& world);
void CheckMarkers(Findings& findings, const World& world);
void CheckPlayers(Findings& findings, const World& world);
void CheckSpawnPoints(Findings& findings, const World& world);
void CheckSurface(Findings& findings, const World& world, std::int32_t id, const MeshFacts& facts);
void CheckTwins(Findings& findings, const World& world);
void CheckWords(Findings& findings, const World& world);
void CheckViews(Findings& findings, const World& world);
void CheckWays(Findings& findings, const World& world);
void CheckBodies(Findings& findings, const World& world);
void CheckLamps(Findings& findings, const World& world);
void CheckLights(Findings& findings, const World& world);
void CheckGroups(Findings& findings, const World& world);
void CheckKeyTracks(Findings& findings, const World& world);
