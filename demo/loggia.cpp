#include "blocks.h"
#include "courtyard.h"
#include "scene_writer/shapes.h"
#include "scene_writer/texture_mapping.h"

namespace {

constexpr float loggiaNorth = 16.0f;
constexpr float floorEdge = -32.0f;
constexpr float floorHeight = 0.5f;
constexpr float ceiling = 13.0f;

void AddFloor(World& world, const std::string& name, float from, float to) {
    world.AddPainted(
        MakeBlock(name, {westWall, from, 0.0f}, {floorEdge, to, floorHeight}, 2.6f, top | east),
        {0.9f, 0.82f, 0.72f}, "ashlar.rgb", 10.0f);
}

void AddColumn(World& world, int number, float y) {
    const Float3 base{-34.0f, y, floorHeight};
    const float height = ceiling - floorHeight;
    const std::vector<engine::LathePoint> profile{
        {1.7f, 0.0f},  {1.7f, 0.7f},          {1.25f, 1.1f},         {1.2f, 4.0f},
        {1.15f, 7.5f}, {1.0f, height - 1.5f}, {1.7f, height - 0.8f}, {1.7f, height}};
    SceneObject column = engine::MakeLathe("Column" + std::to_string(number), base, profile, 10, 1.0f);
    ScaleTexture(column, 1.0f, 2.0f);
    Paint(column, {1.0f, 0.96f, 0.88f});
    world.AddTextured(column, Role::Fixed, "plaster.rgb");
}

}  // namespace

void AddLoggia(World& world) {
    AddFloor(world, "LoggiaFloorA", southWall, -10.0f);
    AddFloor(world, "LoggiaFloorB", -10.0f, loggiaNorth);
    for (int i = 0; i < 6; i++) {
        AddColumn(world, i, southWall + 6.0f + 8.0f * static_cast<float>(i));
    }
    // A beam on the columns, and tiles that fall from the wall to it.
    world.AddPainted(
        MakeBlock("LoggiaBeam", {-35.2f, southWall, ceiling}, {-32.8f, loggiaNorth, ceiling + 1.4f}, 3.0f),
        {0.85f, 0.8f, 0.72f}, "planks.rgb", 8.0f);
    SceneObject roof = MakeLeanTo("LoggiaRoof", {westWall, southWall, ceiling + 1.4f},
                                  {-31.4f, loggiaNorth, ceiling + 2.0f}, 18.5f, ceiling + 1.8f, 3.0f);
    ProjectTexture(roof, 8.0f);
    // The tiles' rows run along y: their texture is laid on turned.
    for (Float3& texVertex : roof.texVertices) {
        texVertex = {texVertex.y, -texVertex.x, 0.0f};
    }
    world.AddTextured(roof, Role::Fixed, "tiles.tga");
}
