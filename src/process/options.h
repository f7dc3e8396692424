#pragma once

#include <functional>
#include <limits>
#include <string>
#include <vector>

// The command lines of all programs: `--name value`, `--name=value`, names shortened as long as they are
// clear, `--` before what only looks like an option, and `-h`, `--help` and `--version` everywhere.

inline constexpr int wrongUsage = 2;  ///< the exit code for arguments that can't be right

/// Takes the value of an option. Gives nothing, or, for a value that can't be, what the option takes.
using StoreOption = std::function<std::string(const std::string& value)>;

// Where values go; what they refer to outlives the reading.

StoreOption Into(bool& flag, bool meaning = true);
StoreOption Into(std::string& text);
StoreOption Into(int& number, int least, int most = std::numeric_limits<int>::max());
StoreOption Into(float& number, float least, float most);
/// Three finite numbers with commas between them.
StoreOption IntoPoint(float& x, float& y, float& z);

struct Option {
    const char* name = nullptr;   ///< without its dashes; none: `help` is a heading
    const char* value = nullptr;  ///< what `--help` calls its value; none: it takes none
    const char* help = "";        ///< one line or several
    StoreOption store;
};

/// A program as its `--help` shows it.
struct Program {
    const char* name;
    const char* beforeOptions;  ///< how it is called and what it does
    std::vector<Option> options;
    const char* afterOptions;  ///< exit codes, examples
};

struct Arguments {
    std::vector<std::string> plain;  ///< those that are no options
    int exitCode = -1;               ///< to end with at once, as everything has been said; below 0: go on
};

/// Stores the options, answers `--help` and `--version`, and refuses what can't be.
Arguments ReadArguments(const Program& program, int count, char** arguments);
/// Says on the standard error stream what is wrong with the arguments. Gives `wrongUsage`.
int RefuseArguments(const Program& program, const std::string& reason);
