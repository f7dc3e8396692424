#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "platform/files.h"
#include "scene/object.h"

// One object in the binary mesh file of a scene: a head of fixed size and a body. Everything in it is
// little-endian and 4 bytes wide but the name. Nothing marks a damaged file.

/// Every record begins with a head of this many bytes.
inline constexpr std::int64_t recordHeadSize = 90;
/// Entries after the texture vertices of an object, once it has a single index list.
inline constexpr std::int32_t spareEntries = 4;

/// Values of the file become those of the machine.
template <typename Value>
void ToHostOrder(Value* values, std::size_t count) {
    if constexpr (std::endian::native == std::endian::big) {
        for (std::size_t i = 0; i < count; i++) {
            auto* bytes = reinterpret_cast<std::uint8_t*>(values + i);
            std::reverse(bytes, bytes + sizeof(Value));
        }
    }
}

/// The open file. Its size is that of the moment it was opened; reads show if it has shrunk since.
struct SceneFile {
    std::FILE* file;
    std::int64_t size;
    std::int64_t position = 0;  ///< of the next byte to read

    explicit SceneFile(std::FILE* newFile) : file(newFile), size(FileSize(newFile)) {
        std::setvbuf(file, buffer.get(), _IOFBF, bufferSize);
    }
    ~SceneFile() { std::fclose(file); }
    SceneFile(const SceneFile&) = delete;
    SceneFile& operator=(const SceneFile&) = delete;

    std::int64_t BytesFrom(std::int64_t offset) const { return size - offset; }
    bool Seek(std::int64_t offset) {
        if (offset == position) {
            return true;
        }
        position = offset;
        return std::fseek(file, offset, SEEK_SET) == 0;
    }
    bool ReadBytes(void* bytes, std::size_t count) {
        position += static_cast<std::int64_t>(count);
        return count == 0 || std::fread(bytes, 1, count, file) == count;
    }
    template <typename Value>
    bool Read(Value* values, std::int64_t count) {
        static_assert(sizeof(Value) == 4);
        const auto valueCount = static_cast<std::size_t>(count);
        if (!ReadBytes(values, valueCount * sizeof(Value))) {
            return false;
        }
        ToHostOrder(values, valueCount);
        return true;
    }

private:
    static constexpr std::size_t bufferSize = std::size_t{1} << 16;
    std::unique_ptr<char[]> buffer = std::make_unique_for_overwrite<char[]>(bufferSize);
};

/// The head of a record, and where the record lies.
struct RecordHead {
    std::string name;  ///< as the file has it, not yet unique
    std::int32_t vertexCount = 0;
    std::int32_t triangleCount = 0;
    std::int32_t centreVertex = 0;
    std::int32_t spareVertex = 0;
    std::int32_t xAxisVertex = 0;
    std::int32_t yAxisVertex = 0;
    std::int32_t zAxisVertex = 0;
    std::int32_t texVertexCount = 0;
    std::int32_t texTriangleCount = 0;
    std::int32_t keyTrackCount = 0;
    std::int64_t bodyOffset = 0;  ///< from the start of the file
    std::int64_t endOffset = 0;   ///< of the next record
};

/// What is wrong, and at which place of the file. An empty text means nothing is.
struct Damage {
    std::string text;
    std::int64_t offset = 0;
};

/// Describes a count that is negative or too large.
Damage CountDamage(const char* what, std::int32_t count, std::int64_t offset);

/// Reads the head of the record at the offset, and makes sure that the whole record is there: every count
/// is held against what is left of the file before memory is taken for it.
Damage ReadHead(SceneFile& file, std::int64_t offset, RecordHead& head);
/// Reads the body of a record whose head is known to be good into a fresh object: its mesh, as the file has
/// it, and its key tracks. False if the file has changed meanwhile.
bool ReadBody(SceneFile& file, const RecordHead& head, Object& object);
