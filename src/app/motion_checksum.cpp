#include "app/motion_checksum.h"

#include <bit>

#include "scene/physics.h"
#include "scene/scene.h"

namespace {

struct Mixer {
    std::uint64_t state = 0;

    /// One to one for every state: a difference never goes by itself.
    void Add(std::uint32_t word) { state = std::rotl(state ^ word, 27) * 0x9E3779B97F4A7C15u; }
    void Add(std::int32_t number) { Add(static_cast<std::uint32_t>(number)); }
    void Add(float number) {
        constexpr std::uint32_t noNumber = 0x7FC00000;  // which one it is differs between processors
        Add(number == number ? std::bit_cast<std::uint32_t>(number) : noNumber);
    }
    void Add(Vector vector) {
        Add(vector.x);
        Add(vector.y);
        Add(vector.z);
    }
};

void AddObject(Mixer& mixer, const Object& object) {
    for (const std::int32_t marker :
         {object.centreVertex, object.xAxisVertex, object.yAxisVertex, object.zAxisVertex}) {
        if (object.HasVertex(marker)) {
            Vector place;
            object.GetVertex(place, marker);
            mixer.Add(place);
        }
    }
    if (object.physics != nullptr) {
        mixer.Add(object.physics->velocity);
    }
    if (object.collider != nullptr) {
        mixer.Add(std::uint32_t{object.collider->airborne});
    }
    for (std::int32_t i = 0; i < object.keyTrackCount; i++) {
        mixer.Add(object.keyTracks[i].currentKey);
    }
}

}  // namespace

std::uint32_t MotionChecksum(const Scene& scene) {
    Mixer mixer;
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        AddObject(mixer, scene.objects[i]);
    }
    for (std::int32_t i = 0; i < scene.lightCount; i++) {
        for (const float coordinate : scene.lights[i].position) {
            mixer.Add(coordinate);
        }
    }
    return static_cast<std::uint32_t>(mixer.state ^ mixer.state >> 32);
}
