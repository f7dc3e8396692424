#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "check_scene/keys.h"
#include "check_scene/text_file.h"
#include "check_scene/walk.h"
#include "common/windowless.h"
#include "loading/load_fault.h"
#include "loading/scene_record.h"

/// A block of an attribute file: an opening brace and what belongs to it.
struct Block {
    std::size_t headBegin = 0;  ///< of the word in front of the brace
    std::string head;           ///< that word
    std::size_t brace = 0;
    std::size_t end = 0;  ///< after the closing brace
    bool isClosed = false;
    std::int32_t depth = 0;            ///< how many other blocks it stands in
    std::vector<std::int32_t> takers;  ///< ids of the objects that are given this block
    bool isGlobals = false;            ///< the scene is given it
    std::vector<KeyUse> keys;          ///< if anybody is given it
};

/// One *LOADMESH and the files that it names.
struct SceneSource {
    std::string path;              ///< as the settings name it
    std::string shownName;         ///< for findings
    std::size_t loadPosition = 0;  ///< of its name in the settings
    bool isThere = false;
    bool isRepeated = false;  ///< an earlier one has this file; then it isn't loaded
    std::string attributesPath;
    std::string foreignAttributes;  ///< what the file is instead; then the scene isn't loaded
    bool hasAttributes = false;
    TextFile attributes;
    std::vector<Block> blocks;  ///< in the order of their braces
    std::int32_t globals = -1;  ///< index of the block of the scene
    std::int32_t firstObject = 0;
    std::int32_t objectEnd = 0;
    std::vector<LoadFault> faults;  ///< what the engine reported while it loaded this

    /// The block of the scene; null if there is none.
    const Block* Globals() const {
        return globals == -1 ? nullptr : &blocks[static_cast<std::size_t>(globals)];
    }
    Place AtByte(std::int64_t byte) const { return {shownName, 0, byte}; }
};

/// Where an object comes from.
struct ObjectSource {
    std::int32_t scene = 0;    ///< index of the source
    bool hasRecord = false;    ///< false for what stands after damage
    std::int64_t offset = 0;   ///< of its record in the file
    RecordHead head;           ///< as the file has it
    std::int32_t block = -1;   ///< index of the block that it is given
    bool meshDropped = false;  ///< its mesh couldn't be used, and the engine gave it a plain one
};

/// One *TEXTURE and the record that it made.
struct TextureUse {
    std::int32_t scene = 0;
    std::int32_t object = -1;  ///< -1 for the block GLOBALS
    const KeyUse* key = nullptr;
    std::int32_t texture = 0;  ///< index of the record
};

/// A world as the engine has loaded it, and where each part of it was read.
struct World {
    std::string shownFolder;  ///< put in front of all names of files; ends with a slash or is empty
    TextFile settings;
    std::vector<KeyUse> settingsKeys;
    std::size_t settingsEnd = 0;  ///< after the last character that is read
    bool settingsClosed = false;
    std::vector<SceneSource> scenes;
    std::vector<ObjectSource> objects;  ///< by object id
    std::vector<TextureUse> textureUses;
    Walks walks;  ///< empty as long as nobody has walked
    Windowless loaded;
    Engine* const engine = &loaded.engine;
    Scene* const scene = &loaded.scene;

    /// Reads the settings; false if there are none.
    bool ReadSettings(const std::string& name);
    /// Loads the scenes that the settings name.
    void LoadScenes();

    const SceneSource& SourceOf(std::int32_t id) const {
        return scenes[static_cast<std::size_t>(Of(id).scene)];
    }
    const ObjectSource& Of(std::int32_t id) const { return objects[static_cast<std::size_t>(id)]; }
    /// Whether it has triangles, and they are its own.
    bool HasMesh(std::int32_t id) const {
        return Of(id).hasRecord && !Of(id).meshDropped && scene->objects[id].faceValueCount > 0;
    }
    /// The *LIGHT of each light, in the order of the lights.
    std::vector<Place> LightPlaces() const;
    /// The object's block; null if it has none.
    const Block* BlockOf(std::int32_t id) const;
    /// The use of a key in the object's block; null if it has none.
    /// @param number the first number has to be this; any with -1
    const KeyUse* KeyOf(std::int32_t id, const char* key, std::int32_t number = -1) const;
    /// The place of that key, or else of the object in its scene file.
    Place At(std::int32_t id, const char* key, std::int32_t number = -1) const;
    /// The object's record in its scene file.
    Place At(std::int32_t id) const;
    /// The place of a key of the settings, or else the first line of them.
    Place AtSetting(const char* key, std::int32_t player = -1) const;
    const KeyUse* SettingOf(const char* key, std::int32_t player = -1) const;
    std::string ShownName(const std::string& path) const;
};

/// Whether the object is a body without gravity. It never touches the ground, so no key moves it: a player
/// has such a body to play key tracks, of a door for example.
bool StandsStill(const Object& object);
/// Whether the player has a camera without vertices, -1 and -1: it isn't meant to see anything.
bool IsBlind(const Player& player);
/// Who moves the object; -1 for nobody.
std::int32_t PlayerOf(const Scene& scene, std::int32_t id);
/// Whether the object is on the list of the group; no group has an id below 0.
bool IsMember(const Scene& scene, std::int32_t group, std::int32_t id);
/// `object "Crate"`.
std::string Named(const Object& object);
