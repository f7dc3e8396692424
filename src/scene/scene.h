#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "scene/id_list.h"
#include "scene/light.h"
#include "scene/object.h"
#include "scene/player.h"
#include "scene/sprite.h"

struct Engine;
struct Log;
struct Timer;

/// Longest name of objects, textures and fonts, in characters.
inline constexpr std::size_t maxNameLength = 199;
/// Largest group id that a file may name.
inline constexpr std::int32_t maxGroupId = 65535;

/// The container of the loaded world. Its arrays only grow; growth moves the records, so everything
/// refers to them by index, and -1 means none.
struct Scene {
    Log* log = nullptr;      ///< not owned; may be null
    Timer* timer = nullptr;  ///< not owned
    std::int32_t objectCount = 0;
    std::int32_t spriteCount = 0;
    std::int32_t playerCount = 0;
    std::int32_t groupCount = 0;
    std::int32_t textureCount = 0;
    std::int32_t lightCount = 0;
    std::string fontName = "Courier New";  ///< face of the text overlay
    std::uint32_t fontListBase = 0;        ///< first of the font's 96 display lists
    std::unique_ptr<Object[]> objects;     ///< the index is the object id
    std::unique_ptr<Sprite[]> sprites;
    std::unique_ptr<Player[]> players;
    std::unique_ptr<IdList[]> groups;  ///< the index is the group id
    std::unique_ptr<Texture[]> textures;
    std::unique_ptr<Light[]> lights;
    /// How many records fit before the array has to grow.
    std::int32_t objectCapacity = 0;
    std::int32_t spriteCapacity = 0;
    std::int32_t playerCapacity = 0;
    std::int32_t groupCapacity = 0;
    std::int32_t textureCapacity = 0;
    std::int32_t lightCapacity = 0;
    /// What collision has found out about the places of the objects, for collision alone to make and to
    /// read; null before the first sweep.
    std::shared_ptr<void> collisionIndex;

    void SetLog(Log* newLog) { log = newLog; }
    void SetTimer(Timer* newTimer) { timer = newTimer; }

    // Each appends n default records; a count of 0 or less changes nothing.

    void AddObjects(std::int32_t n);
    void AddSprites(std::int32_t n);
    void AddPlayers(std::int32_t n);
    void AddGroups(std::int32_t n);
    void AddTextures(std::int32_t n);
    void AddLights(std::int32_t n);

    /// Id of the first object of exactly this name, or -1.
    std::int32_t FindObject(const std::string& name) const;
    /// That object as a pointer, good until the objects grow. Shows a box and gives null if there is none.
    Object* pGetObject(const std::string& name);
    /// Index of the first texture whose own name occurs anywhere in `name`, or -1. A record with an empty
    /// name is found for any name.
    std::int32_t FindTexture(const std::string& name) const;
    /// `name`, or `name` followed by the first number from 1 up that makes a name no object bears yet.
    void MakeUniqueObjectName(const std::string& name, std::string& result) const;

    // Loading, in loading/. Needs the current OpenGL context.

    /// Reads a scene: the binary file and the attribute file beside it. Its objects join those that stand.
    /// @return false if the file can't be opened or is damaged.
    bool LoadMesh(const char* path);
    /// Reads several scenes, one after the other.
    void LoadMeshes(const std::vector<std::string>& paths);
    /// Applies the block of the object in the attribute file. False if there is no such file or block.
    bool ReadObjectAttributes(const char* path, const char* objectName);
    /// Applies the block "GLOBALS". False if there is no such file or block.
    bool ReadGlobalAttributes(const char* path);

    // Simulation, in simulation/.

    /// Advances the world by one frame.
    void StepWorld();
    /// Moves a body as far as the world lets it, sliding along what it hits.
    /// @param objectIndex an object with a collider
    /// @param position its centre, in world coordinates
    /// @param displacement wanted, in world units
    /// @return where the centre comes to stand, in world coordinates
    Vector MoveWithCollision(std::int32_t objectIndex, Vector position, Vector displacement);
    /// One level of the slide, in ellipsoid space; calls itself for the next.
    Vector SlideStep(std::int32_t objectIndex, Vector position, Vector displacement);

    // Rendering, in render/. Needs the current OpenGL context.

    void ReportGlCapabilities();
    /// Draws one frame with vertex arrays, for every player, and swaps the buffers.
    void RenderFrame(const Engine& engine);
    /// Draws that picture corner by corner.
    void RenderFrameSafe(const Engine& engine);
    /// All sprites, from the farthest to the nearest as this player sees them; the player must have a
    /// camera and the modelview matrix hold it.
    void DrawSprites(std::int32_t playerIndex);
    /// Whether the player's camera object and both its vertices exist. Without, the player is not drawn.
    bool HasCamera(std::int32_t playerIndex) const;
    /// Whether the index names a texture; an index outside the array counts as -1, no texture.
    bool HasTexture(std::int32_t textureIndex) const {
        return textureIndex >= 0 && textureIndex < textureCount;
    }
    /// Builds the display lists of the overlay's font. On success the words of the log entry are
    /// appended to `name` itself.
    void BuildFont(const Engine& engine, std::string& name);
    /// Draws a text at the raster position, as printf formats it; cut at 255 characters.
    void PrintText(const char* format, ...) const __attribute__((format(printf, 2, 3)));
    void ReleaseFont();
};
