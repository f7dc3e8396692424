#pragma once

#include <cstdint>
#include <string>

struct Log;

/// What is wrong in a file that is being loaded. The log has it as a sentence; programs that judge worlds
/// go by the rest.
struct LoadFault {
    enum class Kind { RecordsLeftOut, MeshDropped, TexVerticesMissing, MarkersReset, ImageDamaged };
    Kind kind;
    std::string path;          ///< of the file, as it was asked for
    std::string what;          ///< what is wrong
    std::int64_t byte = -1;    ///< where in the file; -1 for no certain place
    std::int32_t object = -1;  ///< id of the object that has it; -1 for none
    std::string objectName{};

    /// What is wrong and what comes of it.
    std::string Sentence() const {
        const char* const consequences[] = {"; this and what follows is left out",
                                            "; it gets the mesh of a new object", "; these are 0", "",
                                            "; what is missing is drawn as 0"};
        return what + (byte < 0 ? "" : " (at byte " + std::to_string(byte) + ")") +
               consequences[static_cast<std::size_t>(kind)];
    }
};

/// Writes the line of the log. Gives its text.
std::string ReportFault(Log* log, const LoadFault& fault);
