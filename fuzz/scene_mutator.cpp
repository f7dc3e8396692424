#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "scene_input.h"

// Changes one or two things in an input that is otherwise as it should be: a damaged head ends a load at
// once, and what lies after it is never reached by bytes that change at random.

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

constexpr std::size_t headSize = 90;
/// Where the numbers of a record's head begin: two counts, five vertices, three counts.
constexpr std::size_t firstNumber = 50;

std::int32_t NumberAt(const std::string& bytes, std::size_t offset) {
    std::int32_t number = 0;
    if (offset + sizeof number <= bytes.size()) {
        std::memcpy(&number, bytes.data() + offset, sizeof number);
    }
    return number;
}

/// One input while it changes.
struct Mutation {
    std::mt19937 random;
    SceneInput input;

    std::size_t Below(std::size_t count) { return random() % std::max<std::size_t>(count, 1); }

    /// The offsets of the records, as far as their heads make sense.
    std::vector<std::size_t> Records() const {
        std::vector<std::size_t> records;
        std::size_t offset = 4;
        while (offset + headSize <= input.scene.size()) {
            records.push_back(offset);
            std::size_t end = offset + headSize;
            const int weights[] = {2, 1, 0, 0, 0, 0, 0, 1, 1};  // of the numbers of the head, in triples
            for (std::size_t i = 0; i < std::size(weights); i++) {
                const std::int32_t count = NumberAt(input.scene, offset + firstNumber + 4 * i);
                end += std::size_t{12} * weights[i] * std::clamp(count, 0, 1 << 20);
            }
            const std::int32_t tracks = std::clamp(NumberAt(input.scene, offset + 86), 0, 1 << 20);
            for (std::int32_t track = 0; track < tracks && end < input.scene.size(); track++) {
                end += 4 + std::size_t{40} * std::clamp(NumberAt(input.scene, end), 0, 1 << 20);
            }
            offset = end;
        }
        return records;
    }

    void PutNumber(std::size_t offset) {
        if (offset + 4 > input.scene.size()) {
            return;
        }
        const auto before = static_cast<std::uint32_t>(NumberAt(input.scene, offset));
        // The last two are no number and infinity.
        const std::uint32_t numbers[] = {
            before + 1, before - 1, 0,          ~0u,
            0x7FFFFFFF, 0x80000000, 0x2AAAAAAA, static_cast<std::uint32_t>(random() % 20),
            0x7FC00000, 0x7F800000,
        };
        const std::uint32_t number = numbers[Below(std::size(numbers))];
        std::memcpy(input.scene.data() + offset, &number, sizeof number);
    }

    void ChangeRecord() {
        const std::vector<std::size_t> records = Records();
        if (records.empty()) {
            return;
        }
        const std::size_t chosen = Below(records.size());
        const std::size_t begin = records[chosen];
        const std::size_t end = chosen + 1 < records.size() ? records[chosen + 1] : input.scene.size();
        if (Below(2) == 0) {
            PutNumber(begin + firstNumber + 4 * Below(10));
        } else {
            PutNumber(begin + headSize + 4 * Below((end - std::min(end, begin + headSize)) / 4));
        }
    }

    /// Puts a key after a brace or an end of line, or a block around what stands there.
    void ChangeText() {
        static const char* const words[] = {
            "*GROUPMEMBER ",
            "*GROUPPARENT ",
            "*PLAYERSPAWNPOINT ",
            "*TEXTURE wall.tga",
            "*PHYSICS ",
            "*CAMERAOBJECT ",
            "*PLAYEROBJECT ",
            "*COLLIDER ",
            "*NOCOLLIDER ",
            "*INVISIBLE ",
            "*LIGHT ",
            "Box {",
            "Hero {",
            "}",
            "Box1 \n{",
        };
        std::string inserted = words[Below(std::size(words))];
        for (std::size_t count = Below(4); count > 0; count--) {
            static const char* const numbers[] = {"0 ",     "1 ",    "-1 ",        "0.5 ",
                                                  "65535 ", "1e39 ", "2147483648 "};
            inserted += numbers[Below(std::size(numbers))];
        }
        const std::size_t after = input.text.find_first_of("{\n", Below(input.text.size()));
        input.text.insert(after == std::string::npos ? input.text.size() : after + 1, inserted + "\n");
    }
};

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    Mutation mutation{std::mt19937(seed), {}};
    const std::size_t kind = mutation.Below(8);
    if (kind == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    mutation.input = kind < 4 ? ValidSceneInput() : SplitSceneInput(data, size);
    for (std::size_t changes = 1 + mutation.Below(2) + 2 * mutation.Below(2); changes > 0; changes--) {
        if (mutation.Below(2) == 0) {
            mutation.ChangeRecord();
        } else {
            mutation.ChangeText();
        }
    }
    const std::string changed = JoinSceneInput(mutation.input);
    const std::size_t changedSize = std::min(changed.size(), maxSize);
    std::copy_n(changed.data(), changedSize, data);
    return changedSize;
}
