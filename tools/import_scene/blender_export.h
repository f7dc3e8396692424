#pragma once

#include <string>

/// Whether the format is one that Blender reads right and the library doesn't.
/// @param format extension in small letters, without the point
bool NeedsBlender(const std::string& format);
/// Has an installed Blender write the model as glTF, with nothing of the user's set-up and no script of the
/// file's own. Throws std::runtime_error that says what to do if that fails.
/// @return path of the file, in a folder of its own that the caller takes away
std::string ExportByBlender(const std::string& model, const std::string& format);
