#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "loading/block_index.h"
#include "loading/texture_index.h"
#include "platform/files.h"

struct Scene;

/// The attribute file of a scene, read once for all of its objects.
struct AttributeFile {
    std::string path;
    std::unique_ptr<TextStream> stream;  ///< the whole text; null if there is no such file
    std::unique_ptr<BlockIndex> blocks;  ///< null without a text
    TextureIndex textures;

    explicit AttributeFile(const char* newPath);
};

/// The attribute file stands beside the scene file, whose name says "bin" once, by its extension or by a
/// folder: there its name ends, with "atr".
std::string AttributeFileName(const std::string& path);

/// Applies the object's block. Needs the current OpenGL context if the block names textures.
/// @return false, and a line in the log, if there is no file or no block of the object's name.
bool ApplyObjectAttributes(Scene& scene, AttributeFile& file, std::int32_t objectId);
/// Applies the block "GLOBALS". Needs the current OpenGL context.
/// @return false, and a line in the log, if there is no file or no such block.
bool ApplyGlobalAttributes(Scene& scene, AttributeFile& file);
