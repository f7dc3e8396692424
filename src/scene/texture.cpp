#include "scene/texture.h"

void Texture::CopyTo(Texture& destination) const {
    destination.name = name;
    destination.glName = glName;
    destination.width = width;
    destination.height = height;
    destination.components = components;
    destination.magFilter = magFilter;
    destination.minFilter = minFilter;
}
