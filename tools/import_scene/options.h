#pragma once

#include <optional>
#include <string>
#include <vector>

#include "scene_writer/scene_file.h"

/// What the command line asks for.
struct Options {
    std::string input;   ///< the model, or an image
    std::string output;  ///< path of the scene without an extension, or of a texture

    std::optional<float> scale;  ///< world units for one of the model's
    char up = 0;                 ///< 'x', 'y' or 'z'; 0: what the format says
    engine::Float3 move;         ///< world units, after scaling and turning
    float turn = 0.0f;           ///< degrees about z, counter-clockwise as seen from above
    float crease = 50.0f;        ///< degrees; sharper edges of a model without normals stay hard
    bool oneSided = false;       ///< no back sides for two-sided materials
    std::string images;          ///< a folder with images besides the model's own; empty: none
    int textureSize = 512;       ///< longest side of a texture

    bool merge = false;
    int piece = 4000;  ///< triangles, at most, of an object made by merging

    float lightScale = 1.0f;
    int framesPerSecond = 50;
    std::string player;     ///< name of the camera that gets the player; empty: the first
    bool addPlayer = true;  ///< a player where the model has none
    bool addFloor = true;   ///< a floor where nothing lies below the player
    bool animate = false;   ///< a player whose key plays what else nothing would play
    bool sprites = false;   ///< leave the engine's own sprites to be seen

    bool settings = false;
    std::vector<std::string> settingLines;  ///< as in settings.atr, in place of those of the same subject
    int windowWidth = 800;                  ///< pixels
    int windowHeight = 600;
    bool force = false;  ///< write over what was changed by hand
    bool dryRun = false;

    bool IsForTexture() const { return output.ends_with(".tga") || output.ends_with(".rgb"); }
};

/// Gives the exit code to end with at once, as everything has been said; below 0: go on.
int ReadOptions(Options& options, int argumentCount, char** arguments);
