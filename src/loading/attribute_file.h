#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "loading/texture_index.h"
#include "text/attribute_text.h"
#include "text/block_index.h"
#include "text/key_index.h"

struct Scene;

/// The attribute file of a scene, read once for all of its objects.
struct AttributeFile {
    /// The text and where blocks and keys stand in it.
    struct Content {
        AttributeText text;
        BlockIndex blocks;
        KeyIndex keys;

        explicit Content(std::string characters);
    };

    std::string path;
    std::unique_ptr<Content> content;  ///< null if there is no such file
    TextureIndex& textures;            ///< of the scene that the attributes are for

    AttributeFile(const std::string& newPath, TextureIndex& newTextures);
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
