#include "check_scene/world.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "check_scene/file_kind.h"
#include "check_scene/stand_ins.h"
#include "loading/attribute_file.h"
#include "platform/files.h"
#include "simulation/group_members.h"
#include "text/attribute_text.h"
#include "text/block_index.h"

namespace {

bool IsSpace(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

/// All blocks of a text, whoever may be given them.
std::vector<Block> FindBlocks(const std::string& text) {
    std::vector<Block> blocks;
    std::vector<std::size_t> open;
    for (std::size_t at = 0; (at = text.find_first_of("{}", at)) != std::string::npos; at++) {
        if (text[at] == '}') {
            if (!open.empty()) {
                blocks[open.back()].end = at + 1;
                blocks[open.back()].isClosed = true;
                open.pop_back();
            }
            continue;
        }
        Block block;
        block.brace = at;
        block.end = text.size();
        block.depth = static_cast<std::int32_t>(open.size());
        std::size_t end = at;
        while (end > 0 && IsSpace(text[end - 1])) {
            end--;
        }
        block.headBegin = end;
        while (block.headBegin > 0 && !IsSpace(text[block.headBegin - 1]) &&
               text[block.headBegin - 1] != '}' && text[block.headBegin - 1] != '{') {
            block.headBegin--;
        }
        block.head = text.substr(block.headBegin, end - block.headBegin);
        open.push_back(blocks.size());
        blocks.push_back(std::move(block));
    }
    return blocks;
}

/// The heads of all records, as the engine reads them.
void ReadHeads(const std::string& path, std::vector<ObjectSource>& objects, std::int32_t first) {
    std::FILE* opened = OpenFile(path.c_str(), "rb");
    if (opened == nullptr) {
        return;
    }
    SceneFile file(opened);
    std::int64_t offset = 4;
    for (std::size_t id = static_cast<std::size_t>(first); id < objects.size(); id++) {
        ObjectSource& source = objects[id];
        source.offset = offset;
        if (!ReadHead(file, offset, source.head).text.empty()) {
            return;
        }
        source.hasRecord = true;
        offset = source.head.endOffset;
    }
}

/// Which block each object is given, found as the engine finds it.
void AssignBlocks(SceneSource& source, World& world) {
    BlockIndex index(source.attributes.text);
    const auto blockAt = [&](const std::string& name) {
        const BlockIndex::Block* found = index.Find(name);
        if (found == nullptr) {
            return -1;
        }
        const auto block = std::ranges::lower_bound(source.blocks, found->brace, {}, &Block::brace);
        return static_cast<std::int32_t>(block - source.blocks.begin());
    };
    const auto readKeys = [&](std::int32_t block, KeyPlace place) {
        Block& taken = source.blocks[static_cast<std::size_t>(block)];
        if (taken.keys.empty()) {
            taken.keys = FindKeyUses(source.attributes, taken.brace + 1, taken.end, place);
        }
    };
    for (std::int32_t id = source.firstObject; id < source.objectEnd; id++) {
        ObjectSource& object = world.objects[static_cast<std::size_t>(id)];
        if (!object.hasRecord) {
            continue;
        }
        object.block = blockAt(world.scene->objects[id].name);
        if (object.block != -1) {
            source.blocks[static_cast<std::size_t>(object.block)].takers.push_back(id);
            readKeys(object.block, KeyPlace::Object);
        }
    }
    source.globals = blockAt("GLOBALS");
    if (source.globals != -1) {
        source.blocks[static_cast<std::size_t>(source.globals)].isGlobals = true;
        readKeys(source.globals, KeyPlace::Globals);
    }
}

/// Which record each *TEXTURE has made: they come in the order in which the engine applies the blocks.
void AssignTextures(World& world, std::int32_t sceneIndex, std::int32_t texture) {
    const SceneSource& source = world.scenes[static_cast<std::size_t>(sceneIndex)];
    const auto take = [&](const Block* block, std::int32_t object) {
        if (block == nullptr) {
            return;
        }
        for (const KeyUse& key : block->keys) {
            if (key.Is("*TEXTURE") && texture < world.scene->textureCount) {
                world.textureUses.push_back({sceneIndex, object, &key, texture++});
            }
        }
    };
    for (std::int32_t id = source.firstObject; id < source.objectEnd; id++) {
        take(world.BlockOf(id), id);
    }
    take(source.Globals(), -1);
}

}  // namespace

std::string World::ShownName(const std::string& path) const {
    return shownFolder + ResolveFileName(path.c_str());
}

bool World::ReadSettings(const std::string& name) {
    if (!settings.Read(name, shownFolder + name)) {
        return false;
    }
    TextStream stream{settings.text};
    ReadAttributeBlock(stream, &settingsClosed);
    settingsEnd = stream.position;
    settingsKeys = FindKeyUses(settings, 0, settingsEnd, KeyPlace::Settings);
    return true;
}

void World::LoadScenes() {
    engine->ReadSettings(settings.shownName.substr(shownFolder.size()).c_str());
    for (const KeyUse& use : settingsKeys) {
        if (!use.Is("*LOADMESH")) {
            continue;
        }
        SceneSource source;
        source.path = use.name;
        source.shownName = ShownName(use.name);
        source.loadPosition = use.position;
        source.firstObject = scene->objectCount;
        source.attributesPath = AttributeFileName(use.name);
        const std::int32_t firstTexture = scene->textureCount;
        std::FILE* file = OpenFile(use.name.c_str(), "rb");
        source.isThere = file != nullptr;
        if (file != nullptr) {
            std::fclose(file);
        }
        source.foreignAttributes = ForeignKind(source.attributesPath, FileUse::Text);
        source.isRepeated =
            std::ranges::find(scenes, source.shownName, &SceneSource::shownName) != scenes.end();
        if (source.foreignAttributes.empty() && !source.isRepeated) {
            scene->LoadMesh(use.name.c_str());
        }
        source.objectEnd = scene->objectCount;
        source.faults = std::exchange(theReports.faults, {});
        ObjectSource empty;
        empty.scene = static_cast<std::int32_t>(scenes.size());
        objects.resize(static_cast<std::size_t>(scene->objectCount), empty);
        ReadHeads(source.path, objects, source.firstObject);
        source.hasAttributes =
            source.foreignAttributes.empty() &&
            source.attributes.Read(source.attributesPath, ShownName(source.attributesPath));
        source.blocks = FindBlocks(source.attributes.text);
        AssignBlocks(source, *this);
        for (const LoadFault& fault : source.faults) {
            if (fault.kind == LoadFault::Kind::MeshDropped) {
                objects[static_cast<std::size_t>(fault.object)].meshDropped = true;
            }
        }
        scenes.push_back(std::move(source));
        AssignTextures(*this, empty.scene, firstTexture);
    }
}

std::vector<Place> World::LightPlaces() const {
    std::vector<Place> places;
    for (const SceneSource& source : scenes) {
        for (const KeyUse& use : source.globals == -1 ? std::vector<KeyUse>{} : source.Globals()->keys) {
            if (use.Is("*LIGHT") && places.size() < static_cast<std::size_t>(scene->lightCount)) {
                places.push_back(source.attributes.At(use.position));
            }
        }
    }
    return places;
}

const Block* World::BlockOf(std::int32_t id) const {
    const std::int32_t block = Of(id).block;
    return block == -1 ? nullptr : &SourceOf(id).blocks[static_cast<std::size_t>(block)];
}

const KeyUse* World::KeyOf(std::int32_t id, const char* key, std::int32_t number) const {
    const Block* block = BlockOf(id);
    if (block == nullptr) {
        return nullptr;
    }
    const KeyUse* last = nullptr;  // which is the one that counts
    for (const KeyUse& use : block->keys) {
        if (use.Is(key) && (number == -1 || (!use.numbers.empty() && use.Whole(0) == number))) {
            last = &use;
        }
    }
    return last;
}

Place World::At(std::int32_t id, const char* key, std::int32_t number) const {
    const KeyUse* use = KeyOf(id, key, number);
    return use == nullptr ? At(id) : SourceOf(id).attributes.At(use->position);
}

Place World::At(std::int32_t id) const {
    return SourceOf(id).AtByte(Of(id).offset);
}

const KeyUse* World::SettingOf(const char* key, std::int32_t player) const {
    const KeyUse* last = nullptr;
    for (const KeyUse& use : settingsKeys) {
        if (use.Is(key) && (player == -1 || use.Whole(0) == player)) {
            last = &use;
        }
    }
    return last;
}

Place World::AtSetting(const char* key, std::int32_t player) const {
    const KeyUse* use = SettingOf(key, player);
    return settings.At(use == nullptr ? 0 : use->position);
}

bool StandsStill(const Object& object) {
    return object.collider != nullptr && object.physics != nullptr && object.physics->gravity == 0.0f;
}

bool IsBlind(const Player& player) {
    return player.cameraObject != -1 && player.eyeVertex == -1 && player.lookVertex == -1;
}

std::int32_t PlayerOf(const Scene& scene, std::int32_t id) {
    for (std::int32_t i = 0; i < scene.playerCount; i++) {
        if (scene.players[i].playerObject == id) {
            return i;
        }
    }
    return -1;
}

bool IsMember(const Scene& scene, std::int32_t group, std::int32_t id) {
    bool isMember = false;
    ForEachMember(scene, group, [&](std::int32_t member) { isMember |= member == id; });
    return isMember;
}

std::string Named(const Object& object) {
    return "object \"" + object.name + "\"";
}
