#include "loading/attribute_file.h"

#include <string_view>
#include <utility>

#include "gl_lights/gl_lights.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "scene/scene.h"
#include "services/log.h"
#include "text/attribute_text.h"

namespace {

/// The keys of all blocks, by their places in the list of their texts.
enum Key : std::size_t {
    groupMemberKey,
    groupParentKey,
    spawnPointKey,
    textureKey,
    physicsKey,
    cameraObjectKey,
    playerObjectKey,
    colliderKey,
    noColliderKey,
    invisibleKey,
    lightKey,
};
constexpr std::string_view keyTexts[] = {
    "*GROUPMEMBER ", "*GROUPPARENT ", "*PLAYERSPAWNPOINT ", "*TEXTURE ",  "*PHYSICS", "*CAMERAOBJECT",
    "*PLAYEROBJECT", "*COLLIDER",     "*NOCOLLIDER",        "*INVISIBLE", "*LIGHT ",
};

/// One block while its keys are applied.
struct Block {
    Scene& scene;
    AttributeFile& file;
    std::string name;
    TextRange body;

    const KeyIndex& Keys() const { return file.content->keys; }
    void LogIgnored(const char* key, std::int32_t number, const std::string& reason) const {
        Log::Write(scene.log, file.path + ": " + name + ": " + key + " " + std::to_string(number) +
                                  " ignored, " + reason);
    }
};

bool IsPlayer(const Scene& scene, std::int32_t number) {
    return number >= 0 && number < scene.playerCount;
}

/// Calls `action` for the keys of the block that name a group, which is made if it is new. For others there
/// is a line in the log.
template <typename Action>
void ForGroups(const Block& block, Key key, const char* keyName, Action action) {
    block.Keys().ForEach(block.body, key, [&](const TextCursor&, std::int32_t group) {
        if (group < 0 || group > maxGroupId) {
            block.LogIgnored(keyName, group, "group ids run from 0 to " + std::to_string(maxGroupId));
            return;
        }
        block.scene.AddGroups(group + 1 - block.scene.groupCount);
        action(group);
    });
}

/// Calls `action` for each player whom the key names in the block, with the cursor where it does so last.
/// For others there is a line in the log.
template <typename Action>
void ForPlayers(const Block& block, Key key, const char* keyName, Action action) {
    block.Keys().ForEach(block.body, key, [&](const TextCursor&, std::int32_t player) {
        if (!IsPlayer(block.scene, player)) {
            block.LogIgnored(keyName, player, "there is no such player");
        }
    });
    std::vector<bool> isDone(static_cast<std::size_t>(block.scene.playerCount));
    block.Keys().ForEachBackwards(block.body, key, [&](const TextCursor& cursor, std::int32_t player) {
        if (IsPlayer(block.scene, player) && !isDone[static_cast<std::size_t>(player)]) {
            isDone[static_cast<std::size_t>(player)] = true;
            action(block.scene.players[player], cursor);
        }
    });
}

/// Asks for the move that brings the player's object to the spawn point.
void PlaceOnSpawnPoint(const Block& block, const Object& spawnPoint, std::int32_t playerIndex) {
    const Scene& scene = block.scene;
    if (playerIndex < 0) {
        block.LogIgnored("*PLAYERSPAWNPOINT", playerIndex, "there is no such player");
        return;
    }
    const std::int32_t playerObject = scene.players[playerIndex].playerObject;
    if (playerObject < 0 || playerObject >= scene.objectCount) {
        MessageBoxA(nullptr, "*PLAYERSPAWNPOINT: Ještě neexistuje PlayerObject"_1250, ":-(", MB_ICONSTOP);
        return;
    }
    Object& object = scene.objects[playerObject];
    if (!spawnPoint.HasVertex(0) || !object.HasVertex(object.centreVertex)) {
        block.LogIgnored("*PLAYERSPAWNPOINT", playerIndex, "an object without vertices is nowhere");
        return;
    }
    object.attributes[spawnStateAttribute] = justSpawned;
    Vector target;
    Vector centre;
    spawnPoint.GetVertex(target, 0);
    object.GetVertex(centre, object.centreVertex);
    object.transform.Translate(target.x - centre.x, target.y - centre.y, target.z - centre.z);
}

/// Appends a record for the texture, loaded or, if it has been loaded before, copied.
void AddTexture(const Block& block, const std::string& fileName, const char* loadedText) {
    Scene& scene = block.scene;
    // Looked for first: the new record has no name yet, and an empty name is found in every other.
    const std::int32_t found = block.file.textures.Find(scene, fileName);
    scene.AddTextures(1);
    Texture& texture = scene.textures[scene.textureCount - 1];
    if (found != -1) {
        scene.textures[found].CopyTo(texture);
        Log::Write(scene.log, "Recyklace textury: "_1250 + fileName);
        return;
    }
    if (fileName.find(".rgb") != std::string::npos) {
        texture.LoadRgb(fileName.c_str(), scene.log);
    } else if (fileName.find(".tga") != std::string::npos) {
        texture.LoadTga(fileName.c_str());
    }
    Log::Write(scene.log, loadedText + fileName);
}

void AddLight(Scene& scene, TextCursor cursor) {
    scene.AddLights(1);
    Light& light = scene.lights[scene.lightCount - 1];
    Activate(light);
    float value[4] = {};
    const auto scan = [&](int count) {
        for (int i = 0; i < count; i++) {
            value[i] = ScanFloat(cursor);
        }
        return value;
    };
    SetAmbient(light, scan(4));
    SetDiffuse(light, scan(4));
    SetSpecular(light, scan(4));
    SetPosition(light, scan(4));
    SetSpotDirection(light, scan(3));
    SetSpotExponent(light, ScanFloat(cursor));
    SetSpotCutoff(light, ScanFloat(cursor));
    SetConstantAttenuation(light, ScanFloat(cursor));
    SetLinearAttenuation(light, ScanFloat(cursor));
    SetQuadraticAttenuation(light, ScanFloat(cursor));
}

/// Finds the body of the block. False if there is no such block.
bool FindBody(Block& block) {
    const AttributeFile::Content& content = *block.file.content;
    const BlockIndex::Block* found = content.blocks.Find(block.name);
    if (found == nullptr) {
        return false;
    }
    block.body = content.text.UpToZero({found->brace + 1, found->end});
    if (!found->isClosed) {
        Log::Write(block.scene.log, block.file.path + ": " + block.name + ": the closing brace is missing");
    }
    return true;
}

void LogMissingFile(const Scene& scene, const AttributeFile& file) {
    Log::Write(scene.log, "Nebyl nalezen soubor s atributy: "_1250 + file.path);
}

/// @param objectId -1 if no object bears the name: then nothing is applied
bool ApplyObjectBlock(Scene& scene, AttributeFile& file, const std::string& name, std::int32_t objectId) {
    if (file.content == nullptr) {
        LogMissingFile(scene, file);
        return false;
    }
    Block block{scene, file, name, {}};
    if (!FindBody(block)) {
        Log::Write(scene.log, "Tento objekt nemá žádné atributy: "_1250 + name);
        return false;
    }
    if (objectId == -1) {
        Log::Write(scene.log, file.path + ": " + name + ": there is no such object");
        return false;
    }

    Object& object = scene.objects[objectId];
    const KeyIndex& keys = block.Keys();
    ForGroups(block, groupMemberKey, "*GROUPMEMBER", [&](std::int32_t group) {
        IdList& members = scene.groups[group];
        if (members.ids[members.capacity - 1] == -1) {
            members.Add(objectId);
        }
    });
    ForGroups(block, groupParentKey, "*GROUPPARENT",
              [&](std::int32_t group) { object.groupParent = group; });
    keys.ForEach(block.body, spawnPointKey, [&](const TextCursor&, std::int32_t player) {
        // A scene for more players than there are this time is nothing unusual.
        if (player < scene.playerCount) {
            PlaceOnSpawnPoint(block, object, player);
        }
    });
    keys.ForEach(block.body, textureKey, [&](const TextCursor& cursor, std::int32_t) {
        AddTexture(block, ScanName(cursor), "Nahrána textura: "_1250);
        object.textureIndex = scene.textureCount - 1;
    });
    keys.ForLast(block.body, physicsKey, [&](TextCursor cursor) {
        object.MakePhysics();
        object.physics->gravity = ScanFloat(cursor);
        object.physics->bounce = ScanFloat(cursor);
        object.physics->friction = ScanFloat(cursor);
    });
    ForPlayers(block, cameraObjectKey, "*CAMERAOBJECT", [&](Player& player, TextCursor cursor) {
        // The vertices are taken as they are; rendering leaves out a camera whose vertices don't exist.
        player.cameraObject = objectId;
        ScanInt(cursor);  // the player
        player.eyeVertex = ScanInt(cursor);
        player.lookVertex = ScanInt(cursor);
    });
    ForPlayers(block, playerObjectKey, "*PLAYEROBJECT",
               [&](Player& player, const TextCursor&) { player.playerObject = objectId; });
    keys.ForLast(block.body, colliderKey, [&](const TextCursor&) { object.MakeCollider(); });
    keys.ForLast(block.body, noColliderKey,
                 [&](const TextCursor&) { object.attributes[collidableAttribute] = 0; });
    keys.ForLast(block.body, invisibleKey,
                 [&](const TextCursor&) { object.attributes[invisibleAttribute] = 1; });
    return true;
}

}  // namespace

AttributeFile::Content::Content(std::string characters)
    : text(std::move(characters)), blocks(text.characters), keys(text, keyTexts) {}

AttributeFile::AttributeFile(const std::string& newPath, TextureIndex& newTextures)
    : path(newPath), textures(newTextures) {
    if (const auto stream = OpenTextFile(path.c_str())) {
        content = std::make_unique<Content>(std::move(stream->text));
    }
}

bool ApplyObjectAttributes(Scene& scene, AttributeFile& file, std::int32_t objectId) {
    return ApplyObjectBlock(scene, file, scene.objects[objectId].name, objectId);
}

bool ApplyGlobalAttributes(Scene& scene, AttributeFile& file) {
    if (file.content == nullptr) {
        LogMissingFile(scene, file);
        return false;
    }
    Block block{scene, file, "GLOBALS", {}};
    if (!FindBody(block)) {
        Log::Write(scene.log, "Tato scéna nemá žádné globální atributy: "_1250 + file.path);
        return false;
    }
    const KeyIndex& keys = block.Keys();
    keys.ForEach(block.body, textureKey, [&](const TextCursor& cursor, std::int32_t) {
        AddTexture(block, ScanName(cursor), "Nahrána globální textura: "_1250);
    });
    keys.ForEach(block.body, lightKey,
                 [&](const TextCursor& cursor, std::int32_t) { AddLight(scene, cursor); });
    return true;
}

bool Scene::ReadObjectAttributes(const char* path, const char* objectName) {
    TextureIndex known;
    AttributeFile file(path, known);
    return ApplyObjectBlock(*this, file, objectName, FindObject(objectName));
}

bool Scene::ReadGlobalAttributes(const char* path) {
    TextureIndex known;
    AttributeFile file(path, known);
    return ApplyGlobalAttributes(*this, file);
}
