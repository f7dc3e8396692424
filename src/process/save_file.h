#pragma once

#include <string>
#include <string_view>

/// Writes a file as a whole: beside its place, with ".part" at the end of the name, and then into it. So a
/// full disk, or an end halfway, leaves what was there before. What is no plain file, as a pipe, and a file
/// in a folder that takes no new ones, are written where they are.
/// @return empty, or the system's reason why it can't be written
std::string SaveFile(const std::string& path, std::string_view bytes);
/// The system's reason why a file can't be written there, as far as that shows beforehand; empty for none.
std::string ReasonNotToSave(const std::string& path);
