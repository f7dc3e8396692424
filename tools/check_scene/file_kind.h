#pragma once

#include <string>

/// What a file has to be in its place.
enum class FileUse { Text, Scene, Image };

/// What the file is instead, by its first bytes, and how to make of it what is wanted, as in `is a PNG
/// image: ...`. Empty if it may be what is wanted.
std::string ForeignKind(const std::string& name, FileUse wanted);
