#pragma once

#include <optional>
#include <string>

#include "process/viewpoint.h"

/// What the user asked for when starting the program.
struct CommandLine {
    std::string folder;                  ///< to run in; empty: the present one
    std::string screenshot;              ///< the picture's file, with its whole path; empty: none
    std::optional<Viewpoint> viewpoint;  ///< of the picture, in place of the players'
    std::string record;                  ///< the file that takes a record of the run, with its whole path
    std::string replay;                  ///< the record that is played, with its whole path
    std::string film;                    ///< takes all frames of the record that is played
    bool thenPlay = false;               ///< after it the user plays on
    bool verify = false;                 ///< nothing of it is shown
    bool watch = false;                  ///< changes of the world's files are taken in while it is played
    bool fromStart = false;              ///< and the play begins anew then
    int frames = 0;                      ///< after which to end; 0: when the user ends it
    int exitCode = -1;  ///< to end with at once, as everything has been said; below 0: go on
};

/// Reads the arguments, answers `--help` and `--version`, and says what is wrong with the others.
CommandLine ReadCommandLine(int count, char** arguments);
