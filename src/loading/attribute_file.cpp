#include "loading/attribute_file.h"

#include <string_view>
#include <utility>

#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "scene/scene.h"
#include "services/log.h"
#include "settings/attribute_text.h"

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

    KeyIndex& Keys() const { return file.content->keys; }
    void LogIgnored(const char* key, std::int32_t number, const char* reason) const {
        Log::Write(scene.log, file.path + ": " + name + ": " + key + " " + std::to_string(number) +
                                  " ignored, " + reason);
    }
};

bool IsPlayer(const Scene& scene, std::int32_t number) {
    return number >= 0 && number < scene.playerCount;
}

bool IsGroup(std::int32_t number) {
    return number >= 0 && number <= maxGroupId;
}

/// Calls `action` for the players whose indices stand behind the key, with how often they do and the cursor
/// in front of the last one. For indices of no player there is a line in the log.
template <typename Action>
void ForPlayers(const Block& block, Key key, const char* keyName, Action action) {
    const auto handlingOf = [&scene = block.scene](std::int32_t number) {
        return IsPlayer(scene, number) ? KeyIndex::Handling::together : KeyIndex::Handling::oneByOne;
    };
    for (KeyIndex::Occurrences& found : block.Keys().ForNumbers(block.body, key, handlingOf)) {
        if (IsPlayer(block.scene, found.number)) {
            action(found);
        } else {
            block.LogIgnored(keyName, found.number, "there is no such player");
        }
    }
}

/// The same for groups, which are made if they are new.
template <typename Action>
void ForGroups(const Block& block, Key key, const char* keyName, Action action) {
    const auto handlingOf = [](std::int32_t number) {
        return IsGroup(number) ? KeyIndex::Handling::together : KeyIndex::Handling::oneByOne;
    };
    for (KeyIndex::Occurrences& found : block.Keys().ForNumbers(block.body, key, handlingOf)) {
        if (IsGroup(found.number)) {
            block.scene.AddGroups(found.number + 1 - block.scene.groupCount);
            action(found);
        } else {
            block.LogIgnored(keyName, found.number, "group ids run from 0 to 65535");
        }
    }
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
    light.Activate();
    float value[4] = {};
    const auto scan = [&](int count) {
        for (int i = 0; i < count; i++) {
            value[i] = ScanFloat(cursor);
        }
        return value;
    };
    light.SetAmbient(scan(4));
    light.SetDiffuse(scan(4));
    light.SetSpecular(scan(4));
    light.SetPosition(scan(4));
    light.SetSpotDirection(scan(3));
    light.SetSpotExponent(ScanFloat(cursor));
    light.SetSpotCutoff(ScanFloat(cursor));
    light.SetConstantAttenuation(ScanFloat(cursor));
    light.SetLinearAttenuation(ScanFloat(cursor));
    light.SetQuadraticAttenuation(ScanFloat(cursor));
}

/// Finds the body of the block. False if there is no such block.
bool FindBody(Block& block) {
    AttributeFile::Content& content = *block.file.content;
    const BlockIndex::Block* found = content.blocks.Find(block.name);
    if (found == nullptr) {
        return false;
    }
    block.body = content.text.UpToZero(content.blocks.Body(*found));
    if (found->end == BlockIndex::notClosed) {
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
    ForGroups(block, groupMemberKey, "*GROUPMEMBER", [&](const KeyIndex::Occurrences& found) {
        IdList& group = scene.groups[found.number];
        for (std::size_t i = 0; i < found.count && group.Add(objectId); i++) {
        }
    });
    std::size_t lastParent = 0;
    ForGroups(block, groupParentKey, "*GROUPPARENT", [&](const KeyIndex::Occurrences& found) {
        if (found.last.position > lastParent) {
            lastParent = found.last.position;
            object.groupParent = found.number;
        }
    });
    const auto handlingOf = [&](std::int32_t player) {
        // A scene for more players than there are this time is nothing unusual.
        return player >= scene.playerCount ? KeyIndex::Handling::none : KeyIndex::Handling::oneByOne;
    };
    for (const KeyIndex::Occurrences& found :
         block.Keys().ForNumbers(block.body, spawnPointKey, handlingOf)) {
        PlaceOnSpawnPoint(block, object, found.number);
    }
    keys.ForEach(block.body, textureKey, [&](const TextCursor& cursor) {
        AddTexture(block, ScanName(cursor), "Nahrána textura: "_1250);
        object.textureIndex = scene.textureCount - 1;
    });
    keys.ForLast(block.body, physicsKey, [&](TextCursor cursor) {
        object.MakePhysics();
        object.physics->gravity = ScanFloat(cursor);
        object.physics->bounce = ScanFloat(cursor);
        object.physics->friction = ScanFloat(cursor);
    });
    ForPlayers(block, cameraObjectKey, "*CAMERAOBJECT", [&](KeyIndex::Occurrences& found) {
        // The vertices are taken as they are; rendering leaves out a camera whose vertices don't exist.
        Player& player = scene.players[found.number];
        player.cameraObject = objectId;
        ScanInt(found.last);  // the player
        player.eyeVertex = ScanInt(found.last);
        player.lookVertex = ScanInt(found.last);
    });
    ForPlayers(block, playerObjectKey, "*PLAYEROBJECT", [&](const KeyIndex::Occurrences& found) {
        scene.players[found.number].playerObject = objectId;
    });
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
    keys.ForEach(block.body, textureKey, [&](const TextCursor& cursor) {
        AddTexture(block, ScanName(cursor), "Nahrána globální textura: "_1250);
    });
    keys.ForEach(block.body, lightKey, [&](const TextCursor& cursor) { AddLight(scene, cursor); });
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
