#pragma once

#include <string>
#include <vector>

// Waits for changes in the folders of files, as editors and exporters make them: in several steps, by
// writing in place or by a new file that takes the name of the old one.

/// From now on these folders count, and no others. Folders that aren't there are passed over.
/// @param except a file in them whose changes don't count: what the program itself writes all the time
void WatchFolders(const std::vector<std::string>& folders, const std::string& except);
/// True once after changes, when nothing has happened there for 200 ms. Never waits.
bool ChangesHaveSettled();
