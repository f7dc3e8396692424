#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The bytes of a run: what the devices gave, frame by frame. docs/record.md describes them one by one.

enum class RunItemKind : std::uint8_t {
    EndOfFrame,      ///< the checksum of all motion
    Message,         ///< code and wParam
    OuterRectangle,  ///< of the window on the screen: left, top, right, bottom
    ClientSize,      ///< width, height
    Activity,        ///< 1 while the window has the keyboard
    CursorPlace,     ///< 1 if it is known, x, y
    Joystick,        ///< the error, x, y, buttons
    TurnTime,        ///< milliseconds of the last turn of the loop
    EndOfRun,
};
inline constexpr int runItemKinds = 9;

/// The values of an item, in the order above; those that its kind doesn't have are 0.
using RunValues = std::array<std::int32_t, 4>;

struct RunItem {
    RunItemKind kind = RunItemKind::EndOfRun;
    RunValues values{};

    bool operator==(const RunItem&) const = default;
};

/// Turns items into bytes and bytes into items, one after the other from the first: of what the devices
/// read, only the differences are stored.
struct RunCoder {
    enum class Result { Taken, CutOff, Damaged };
    RunValues last[runItemKinds] = {};

    void Append(std::string& bytes, const RunItem& item);
    /// Takes an item off the front; what isn't `Taken` stays.
    Result Take(std::string_view& bytes, RunItem& item);
};

/// A file that the world of a run was read from.
struct RunFile {
    std::string name;  ///< as the program has opened it, from the world's folder
    std::uint64_t checksum = 0;

    bool operator==(const RunFile&) const = default;
};

struct RecordedRun {
    std::string version;  ///< of the engine that has recorded it
    std::vector<RunFile> files;
    std::string items;  ///< of whole frames
    std::int64_t frameCount = 0;
    bool isWhole = false;  ///< false: the recording was cut off, or goes on
};

/// The start of a run's file, before its items.
std::string RunHeadBytes(const std::string& version, const std::vector<RunFile>& files);
/// Reads the bytes of a run's file. Every item of the result has values that a device could give.
/// @return empty, or what is wrong with them
std::string ReadRun(std::string_view bytes, RecordedRun& run);

/// FNV-1a.
std::uint64_t ChecksumOf(std::string_view bytes);
