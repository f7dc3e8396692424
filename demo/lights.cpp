#include "lights.h"

#include <algorithm>

engine::SceneLight Lamp() {
    engine::SceneLight lamp;
    lamp.ambient = {0.26f, 0.17f, 0.06f, 1.0f};  // what is close to it glows
    lamp.diffuse = {1.15f, 0.78f, 0.36f, 1.0f};
    lamp.position = {lampPlace.x, lampPlace.y, lampPlace.z - 1.2f, 1.0f};
    lamp.constantAttenuation = 0.6f;
    lamp.linearAttenuation = 0.05f;
    lamp.quadraticAttenuation = 0.016f;
    return lamp;
}

engine::SceneLight Sun() {
    engine::SceneLight sun;
    sun.ambient = {0.16f, 0.18f, 0.22f, 1.0f};
    sun.diffuse = {0.92f, 0.84f, 0.66f, 1.0f};
    sun.position = {0.45f, -0.42f, 0.9f, 0.0f};
    return sun;
}

engine::SceneLight Sky() {
    engine::SceneLight sky;
    sky.diffuse = {0.12f, 0.15f, 0.2f, 1.0f};
    sky.position = {-0.5f, 0.5f, 0.7f, 0.0f};
    return sky;
}

engine::SceneLight Ground() {
    engine::SceneLight ground;
    ground.diffuse = {0.3f, 0.32f, 0.38f, 1.0f};
    ground.position = {0.0f, 0.0f, -1.0f, 0.0f};
    return ground;
}

engine::SceneLight Spot() {
    engine::SceneLight spot;
    spot.diffuse = {5.0f, 4.2f, 2.6f, 1.0f};
    spot.position = {spotPlace.x, spotPlace.y, spotPlace.z, 1.0f};
    spot.spotDirection = {0.0f, 0.0f, -1.0f};
    spot.spotExponent = 6.0f;
    spot.spotCutoff = 40.0f;
    spot.linearAttenuation = 0.03f;
    return spot;
}

Float3 Colour(engine::Float4 value) {
    return {value.x, value.y, value.z};
}

Float3 Ambient() {
    return Float3{globalAmbient, globalAmbient, globalAmbient} + Colour(Sun().ambient);
}

Float3 Falling(const engine::SceneLight& light, Float3 normal) {
    const Float3 direction = Normalised(Colour(light.position));
    return Colour(light.diffuse) * std::max(0.0f, Dot(normal, direction));
}

Float3 VertexColour(Float3 wanted, Float3 light) {
    const Float3 colour = wanted / light;
    return {std::min(colour.x, 1.0f), std::min(colour.y, 1.0f), std::min(colour.z, 1.0f)};
}

std::vector<engine::SceneLight> Lights() {
    return {Lamp(), Sun(), Sky(), Ground(), Spot()};
}
