#include "import_scene/properties.h"

#include <assimp/scene.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "common/spelling.h"
#include "scene/scene.h"

namespace {

constexpr const char* keyNames[] = {"COLLIDER",     "NOCOLLIDER",  "INVISIBLE",    "PHYSICS",
                                    "GROUPPARENT",  "GROUPMEMBER", "PLAYEROBJECT", "PLAYERSPAWNPOINT",
                                    "CAMERAOBJECT", "TRACK"};
constexpr int highestTrack = 999;
constexpr int highestPlayer = 63;

std::vector<float> NumbersIn(const std::string& text) {
    std::vector<float> numbers;
    for (const char* at = text.data(); at < text.data() + text.size();) {
        float number = 0.0f;
        const auto [end, error] = std::from_chars(at, text.data() + text.size(), number);
        if (error == std::errc() && std::isfinite(number)) {
            numbers.push_back(number);
            at = end;
        } else {
            at++;
        }
    }
    return numbers;
}

template <typename Value>
float NumberOf(const aiMetadataEntry& entry) {
    const auto number = static_cast<float>(*static_cast<const Value*>(entry.mData));
    return std::isfinite(number) ? number : 0.0f;
}

/// All numbers of a value: one, those in a text, or those of a list.
std::vector<float> NumbersOf(const aiMetadataEntry& entry) {
    if (entry.mData == nullptr) {
        return {};
    }
    switch (entry.mType) {
        case AI_BOOL:
            return {NumberOf<bool>(entry)};
        case AI_INT32:
            return {NumberOf<std::int32_t>(entry)};
        case AI_UINT64:
            return {NumberOf<std::uint64_t>(entry)};
        case AI_FLOAT:
            return {NumberOf<float>(entry)};
        case AI_DOUBLE:
            return {NumberOf<double>(entry)};
        case AI_AISTRING:
            return NumbersIn(static_cast<const aiString*>(entry.mData)->C_Str());
        case AI_AIVECTOR3D: {
            const auto& vector = *static_cast<const aiVector3D*>(entry.mData);
            return {vector.x, vector.y, vector.z};
        }
        case AI_AIMETADATA: {
            const auto& list = *static_cast<const aiMetadata*>(entry.mData);
            std::vector<float> numbers;
            for (unsigned i = 0; i < list.mNumProperties; i++) {
                if (list.mValues[i].mType != AI_AIMETADATA) {
                    const std::vector<float> inner = NumbersOf(list.mValues[i]);
                    numbers.insert(numbers.end(), inner.begin(), inner.end());
                }
            }
            return numbers;
        }
        default:
            return {};
    }
}

/// A flag is set unless its value says no.
bool IsSet(const aiMetadataEntry& entry) {
    const std::vector<float> numbers = NumbersOf(entry);
    if (!numbers.empty()) {
        return numbers[0] != 0.0f;
    }
    if (entry.mType != AI_AISTRING || entry.mData == nullptr) {
        return true;
    }
    const std::string text = static_cast<const aiString*>(entry.mData)->C_Str();
    return text != "false" && text != "False" && text != "no";
}

/// What exporters and the library write of their own accord.
constexpr const char* foreignKeys[] = {"AspectH",
                                       "AspectW",
                                       "BackgroundMode",
                                       "DefaultAttributeIndex",
                                       "ForegroundTransparent",
                                       "InheritType",
                                       "IsInstance",
                                       "MaxHandle",
                                       "ResolutionMode",
                                       "RotationActive",
                                       "ScalingMax",
                                       "ViewFrustum",
                                       "author",
                                       "currentUVSet",
                                       "filmboxTypeID",
                                       "lockInfluenceWeights",
                                       "name"};

bool IsForeign(const std::string& key) {
    return std::ranges::find(foreignKeys, key) != std::end(foreignKeys) || key.starts_with("mr ");
}

void WarnOfUnknown(const std::string& key, const std::string& nodeName, Report& report) {
    if (IsForeign(key)) {
        return;
    }
    report.Warn(
        "property " + key + " means nothing" + DidYouMean(key, {std::begin(keyNames), std::end(keyNames)}),
        nodeName);
}

/// Reads the values of one node, key by key.
struct PropertyReader {
    const std::string& nodeName;
    Report& report;
    Properties properties;

    std::optional<int> IndexOf(const std::string& key, const aiMetadataEntry& entry, int highest) {
        const std::vector<float> numbers = NumbersOf(entry);
        if (numbers.empty() || !(numbers[0] >= 0.0f && numbers[0] <= static_cast<float>(highest))) {
            report.Warn("property " + key + " wants a number from 0 to " + std::to_string(highest),
                        nodeName);
            return {};
        }
        return static_cast<int>(numbers[0]);
    }

    void ReadPhysics(const aiMetadataEntry& entry) {
        // What is left out is as the engine has it by itself.
        std::array<float, 3> physics{1.0f, 0.5f, 0.5f};
        const std::vector<float> numbers = NumbersOf(entry);
        for (std::size_t i = 0; i < physics.size() && i < numbers.size(); i++) {
            physics[i] = numbers[i];
        }
        if (numbers.size() != physics.size()) {
            report.Warn("property PHYSICS wants gravity, bounce and friction, as in \"1 0.5 0.5\"",
                        nodeName);
        }
        properties.physics = physics;
    }

    void Read(const std::string& key, const aiMetadataEntry& entry) {
        if (key == "COLLIDER") {
            properties.collider = IsSet(entry);
        } else if (key == "NOCOLLIDER") {
            properties.noCollider = IsSet(entry);
        } else if (key == "INVISIBLE") {
            properties.invisible = IsSet(entry);
        } else if (key == "PHYSICS") {
            ReadPhysics(entry);
        } else if (key == "GROUPPARENT") {
            properties.groupParent = IndexOf(key, entry, maxGroupId);
        } else if (key == "GROUPMEMBER") {
            if (const std::optional<int> group = IndexOf(key, entry, maxGroupId)) {
                properties.groupMember.push_back(*group);
            }
        } else if (key == "PLAYEROBJECT") {
            properties.playerObject = IndexOf(key, entry, highestPlayer);
        } else if (key == "PLAYERSPAWNPOINT") {
            properties.playerSpawnPoint = IndexOf(key, entry, highestPlayer);
        } else if (key == "CAMERAOBJECT") {
            properties.cameraObject = IndexOf(key, entry, highestPlayer);
        } else if (key == "TRACK") {
            properties.track = IndexOf(key, entry, highestTrack);
        } else {
            WarnOfUnknown(key, nodeName, report);
        }
    }
};

/// What formats and programs note for themselves.
bool IsNobodysProperty(const std::string& key, const aiMetadataEntry& entry) {
    return key == "extensions" || key == "IsNull" || key == "InheritType" || key == "UserProperties" ||
           key.starts_with("Collada_") || (entry.mType == AI_AIMETADATA && NumbersOf(entry).empty());
}

}  // namespace

Properties ReadProperties(const aiMetadata* metadata, const std::string& nodeName, Report& report) {
    PropertyReader reader{nodeName, report, {}};
    for (unsigned i = 0; metadata != nullptr && i < metadata->mNumProperties; i++) {
        const std::string key = metadata->mKeys[i].C_Str();
        if (!IsNobodysProperty(key, metadata->mValues[i])) {
            reader.Read(key.starts_with('*') ? key.substr(1) : key, metadata->mValues[i]);
        }
    }
    return reader.properties;
}
