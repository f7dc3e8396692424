#include "loading/attribute_file.h"

#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "scene/scene.h"
#include "services/log.h"
#include "settings/attribute_text.h"

namespace {

/// One block while its keys are applied.
struct Block {
    Scene& scene;
    AttributeFile& file;
    std::string name;
    std::string text;

    void LogIgnored(const char* key, std::int32_t number, const char* reason) const {
        Log::Write(scene.log, file.path + ": " + name + ": " + key + " " + std::to_string(number) +
                                  " ignored, " + reason);
    }
};

/// The player whose index stands behind the key; -1, and a line in the log, if there is no such player.
std::int32_t ScanPlayer(const Block& block, const char* key, const char*& cursor) {
    const std::int32_t player = ScanInt(cursor);
    if (player >= 0 && player < block.scene.playerCount) {
        return player;
    }
    block.LogIgnored(key, player, "there is no such player");
    return -1;
}

/// The group whose id stands behind the key, made if it is new; -1, and a line in the log, if the id can
/// be none.
std::int32_t ScanGroup(const Block& block, const char* key, const char*& cursor) {
    const std::int32_t group = ScanInt(cursor);
    if (group < 0 || group > maxGroupId) {
        block.LogIgnored(key, group, "group ids run from 0 to 65535");
        return -1;
    }
    block.scene.AddGroups(group + 1 - block.scene.groupCount);
    return group;
}

/// Asks for the move that brings the player's object to the spawn point.
void PlaceOnSpawnPoint(const Block& block, const Object& spawnPoint, std::int32_t playerIndex) {
    const Scene& scene = block.scene;
    if (playerIndex < 0) {
        block.LogIgnored("*PLAYERSPAWNPOINT", playerIndex, "there is no such player");
        return;
    }
    // A scene for more players than there are this time is nothing unusual.
    if (playerIndex >= scene.playerCount) {
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

void AddLight(Scene& scene, const char* cursor) {
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

/// Takes in the text of the block. False if there is no such block.
bool CaptureText(Block& block) {
    TextStream& stream = *block.file.stream;
    if (!block.file.blocks->Find(block.name.c_str(), stream)) {
        return false;
    }
    bool closed = false;
    block.text = ReadAttributeBlock(stream, &closed);
    if (!closed) {
        Log::Write(block.scene.log, block.file.path + ": " + block.name + ": the closing brace is missing");
    }
    return true;
}

void LogMissingFile(const Scene& scene, const AttributeFile& file) {
    Log::Write(scene.log, "Nebyl nalezen soubor s atributy: "_1250 + file.path);
}

/// @param objectId -1 if no object bears the name: then nothing is applied
bool ApplyObjectBlock(Scene& scene, AttributeFile& file, const std::string& name, std::int32_t objectId) {
    if (file.stream == nullptr) {
        LogMissingFile(scene, file);
        return false;
    }
    Block block{scene, file, name, {}};
    if (!CaptureText(block)) {
        Log::Write(scene.log, "Tento objekt nemá žádné atributy: "_1250 + name);
        return false;
    }
    if (objectId == -1) {
        Log::Write(scene.log, file.path + ": " + name + ": there is no such object");
        return false;
    }

    Object& object = scene.objects[objectId];
    ForEachKey(block.text, "*GROUPMEMBER ", [&](const char* cursor) {
        const std::int32_t group = ScanGroup(block, "*GROUPMEMBER", cursor);
        if (group != -1) {
            scene.groups[group].Add(objectId);
        }
    });
    ForEachKey(block.text, "*GROUPPARENT ", [&](const char* cursor) {
        const std::int32_t group = ScanGroup(block, "*GROUPPARENT", cursor);
        if (group != -1) {
            object.groupParent = group;
        }
    });
    ForEachKey(block.text, "*PLAYERSPAWNPOINT ",
               [&](const char* cursor) { PlaceOnSpawnPoint(block, object, ScanInt(cursor)); });
    ForEachKey(block.text, "*TEXTURE ", [&](const char* cursor) {
        AddTexture(block, ScanName(cursor), "Nahrána textura: "_1250);
        object.textureIndex = scene.textureCount - 1;
    });
    ForEachKey(block.text, "*PHYSICS", [&](const char* cursor) {
        object.MakePhysics();
        object.physics->gravity = ScanFloat(cursor);
        object.physics->bounce = ScanFloat(cursor);
        object.physics->friction = ScanFloat(cursor);
    });
    ForEachKey(block.text, "*CAMERAOBJECT", [&](const char* cursor) {
        const std::int32_t index = ScanPlayer(block, "*CAMERAOBJECT", cursor);
        if (index != -1) {
            // The vertices are taken as they are; rendering leaves out a camera whose vertices don't exist.
            Player& player = scene.players[index];
            player.cameraObject = objectId;
            player.eyeVertex = ScanInt(cursor);
            player.lookVertex = ScanInt(cursor);
        }
    });
    ForEachKey(block.text, "*PLAYEROBJECT", [&](const char* cursor) {
        const std::int32_t index = ScanPlayer(block, "*PLAYEROBJECT", cursor);
        if (index != -1) {
            scene.players[index].playerObject = objectId;
        }
    });
    ForEachKey(block.text, "*COLLIDER", [&](const char*) { object.MakeCollider(); });
    ForEachKey(block.text, "*NOCOLLIDER", [&](const char*) { object.attributes[collidableAttribute] = 0; });
    ForEachKey(block.text, "*INVISIBLE", [&](const char*) { object.attributes[invisibleAttribute] = 1; });
    return true;
}

}  // namespace

AttributeFile::AttributeFile(const char* newPath) : path(newPath), stream(OpenTextFile(newPath)) {
    if (stream != nullptr) {
        blocks = std::make_unique<BlockIndex>(stream->text);
    }
}

bool ApplyObjectAttributes(Scene& scene, AttributeFile& file, std::int32_t objectId) {
    return ApplyObjectBlock(scene, file, scene.objects[objectId].name, objectId);
}

bool ApplyGlobalAttributes(Scene& scene, AttributeFile& file) {
    if (file.stream == nullptr) {
        LogMissingFile(scene, file);
        return false;
    }
    Block block{scene, file, "GLOBALS", {}};
    if (!CaptureText(block)) {
        Log::Write(scene.log, "Tato scéna nemá žádné globální atributy: "_1250 + file.path);
        return false;
    }
    ForEachKey(block.text, "*TEXTURE ", [&](const char* cursor) {
        AddTexture(block, ScanName(cursor), "Nahrána globální textura: "_1250);
    });
    ForEachKey(block.text, "*LIGHT ", [&](const char* cursor) { AddLight(scene, cursor); });
    return true;
}

bool Scene::ReadObjectAttributes(const char* path, const char* objectName) {
    AttributeFile file(path);
    return ApplyObjectBlock(*this, file, objectName, FindObject(objectName));
}

bool Scene::ReadGlobalAttributes(const char* path) {
    AttributeFile file(path);
    return ApplyGlobalAttributes(*this, file);
}
