#include "check_scene/keys.h"

#include <algorithm>
#include <cctype>
#include <limits>

#include "scene/scene.h"
#include "text/attribute_text.h"

namespace {

constexpr double any = std::numeric_limits<double>::max();

Argument Whole(const char* what, double low, double high) {
    return {what, true, low, high, Meaning::Number};
}

Argument Real(const char* what, double low, double high) {
    return {what, false, low, high, Meaning::Number};
}

const Argument player{"player", true, 0, any, Meaning::Player};

std::vector<Key> MakeSettingsKeys() {
    const Argument code = Whole("key code", 0, 255);
    return {
        {"*RESOLUTION",
         false,
         false,
         {Whole("width", 1, 16384), Whole("height", 1, 16384), Whole("colour bits", 16, 32)},
         Repeat::LastWins},
        {"*FONT", false, true, {}, Repeat::LastWins},
        {"*REFFERENCESPEED", false, false, {Whole("speed", 0, any)}, Repeat::LastWins},
        {"*FRAMERATELIMIT", false, false, {Whole("frames per second", 5, 1000)}, Repeat::LastWins},
        {"*PLAYERCOUNT", false, false, {Whole("count", 0, 1000)}, Repeat::AddsUp},
        {"*PLAYERHEADLIMIT", false, false, {player, Real("limit", -1, 1)}, Repeat::LastWinsForItsNumber},
        {"*PLAYERKEYBOARDCONTROLS",
         false,
         false,
         {player, code, code, code, code, code, code, code, code},
         Repeat::LastWinsForItsNumber},
        {"*MOUSESENSITIVITY", false, false, {Real("radians per pixel", 1e-6, 0.05)}, Repeat::LastWins},
        {"*JOYSTICKSENSITIVITY",
         false,
         false,
         {Real("radians per frame and unit of deflection", 1e-9, 0.001)},
         Repeat::LastWins},
        {"*PLAYERCONTROLLER",
         false,
         false,
         {player, Whole("device", -any, any)},
         Repeat::LastWinsForItsNumber},
        {"*PLAYERVIEWPORT",
         false,
         false,
         {player, Whole("x", -any, any), Whole("y", -any, any), Whole("width", 1, any),
          Whole("height", 1, any)},
         Repeat::LastWinsForItsNumber},
        {"*NEARCLIPPINGPLANE", false, false, {Real("distance", 1e-6, 10)}, Repeat::LastWins},
        {"*FARCLIPPINGPLANE", false, false, {Real("distance", 1e-6, any)}, Repeat::LastWins},
        {"*FULLSCREEN", false, false, {}, Repeat::LastWins},
        {"*SAFE", false, false, {}, Repeat::LastWins},
        {"*LOADMESH", false, true, {}, Repeat::Allowed},
    };
}

std::vector<Key> MakeObjectKeys() {
    const Argument group = Whole("group id", 0, maxGroupId);
    const Argument vertex = Whole("vertex", -1, any);
    return {
        {"*GROUPMEMBER", true, false, {group}, Repeat::LastWinsForItsNumber},
        {"*GROUPPARENT", true, false, {group}, Repeat::LastWins},
        {"*PLAYERSPAWNPOINT", true, false, {player}, Repeat::LastWinsForItsNumber},
        {"*TEXTURE", true, true, {}, Repeat::LastWins},
        {"*PHYSICS",
         false,
         false,
         {Real("gravity", 0, 3), Real("bounce", 0, 1), Real("friction", 0, 1)},
         Repeat::LastWins},
        {"*CAMERAOBJECT", false, false, {player, vertex, vertex}, Repeat::LastWinsForItsNumber},
        {"*PLAYEROBJECT", false, false, {player}, Repeat::LastWinsForItsNumber},
        {"*COLLIDER", false, false, {}, Repeat::LastWins},
        {"*NOCOLLIDER", false, false, {}, Repeat::LastWins},
        {"*INVISIBLE", false, false, {}, Repeat::LastWins},
    };
}

std::vector<Key> MakeGlobalKeys() {
    Key light{"*LIGHT", true, false, {}, Repeat::Allowed};
    for (const char* colour : {"ambient", "diffuse", "specular"}) {
        for (const char* part : {" red", " green", " blue", " alpha"}) {
            light.arguments.push_back({std::string(colour) + part, false, -any, any, Meaning::Number});
        }
    }
    for (const char* part : {"position x", "position y", "position z"}) {
        light.arguments.push_back(Real(part, -any, any));
    }
    light.arguments.push_back(Real("position w", 0, 1));
    for (const char* part : {"spot direction x", "spot direction y", "spot direction z"}) {
        light.arguments.push_back(Real(part, -any, any));
    }
    light.arguments.push_back(Real("spot exponent", 0, 128));
    light.arguments.push_back(Real("spot cutoff", 0, 180));
    for (const char* part : {"constant attenuation", "linear attenuation", "quadratic attenuation"}) {
        light.arguments.push_back(Real(part, 0, any));
    }
    return {{"*TEXTURE", true, true, {}, Repeat::Allowed}, light};
}

bool IsWordCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

/// The key that the engine finds at the asterisk; null if there is none.
const Key* KeyAt(const std::string& text, std::size_t position, const std::vector<Key>& keys) {
    for (const Key& key : keys) {
        if (text.compare(position, key.name.size(), key.name) == 0 &&
            (!key.needsBlank || text[position + key.name.size()] == ' ')) {
            return &key;
        }
    }
    return nullptr;
}

/// Reads one number with the engine's own scanner.
/// @param offset of the cursor's text in the file
NumberRead ReadNumber(const Argument& argument, TextCursor& cursor, std::size_t offset) {
    const AttributeText::Number* next = cursor.text.NextNumber(cursor.position);
    const std::size_t begin = next == nullptr ? cursor.end : std::min(next->begin, cursor.end);
    NumberRead number;
    number.isMissing = begin == cursor.end;
    number.begin = offset + begin;
    number.value = argument.isWhole ? ScanInt(cursor) : static_cast<double>(ScanFloat(cursor));
    number.end = offset + cursor.position;
    return number;
}

}  // namespace

const std::vector<Key>& KeysOf(KeyPlace place) {
    static const std::vector<Key> settingsKeys = MakeSettingsKeys();
    static const std::vector<Key> objectKeys = MakeObjectKeys();
    static const std::vector<Key> globalKeys = MakeGlobalKeys();
    if (place == KeyPlace::Settings) {
        return settingsKeys;
    }
    return place == KeyPlace::Object ? objectKeys : globalKeys;
}

std::string PlaceName(KeyPlace place) {
    if (place == KeyPlace::Settings) {
        return "the settings";
    }
    return place == KeyPlace::Object ? "an object's block" : "the block GLOBALS";
}

std::vector<KeyUse> FindKeyUses(const TextFile& file, std::size_t begin, std::size_t end, KeyPlace place) {
    AttributeText scanned(file.text.substr(begin, end - begin));
    const std::string& text = scanned.characters;
    std::vector<KeyUse> uses;
    for (std::size_t at = 0; (at = text.find('*', at)) != std::string::npos; at++) {
        std::size_t wordEnd = at + 1;
        while (wordEnd < text.size() && IsWordCharacter(text[wordEnd])) {
            wordEnd++;
        }
        if (wordEnd == at + 1) {
            continue;
        }
        KeyUse use;
        use.word = text.substr(at, wordEnd - at);
        use.position = begin + at;
        use.end = begin + wordEnd;
        use.key = KeyAt(text, at, KeysOf(place));
        if (use.key != nullptr) {
            const std::size_t keyEnd = at + use.key->name.size();
            TextCursor cursor{scanned, keyEnd, scanned.UpToZero({keyEnd, text.size()}).end};
            use.end = begin + keyEnd;
            if (use.key->takesName) {
                use.name = ScanName(cursor);
                cursor.position = std::min(scanned.NextWord(keyEnd), cursor.end);
                use.nameBegin = begin + cursor.position;
            }
            for (const Argument& argument : use.key->arguments) {
                use.numbers.push_back(ReadNumber(argument, cursor, begin));
            }
        }
        uses.push_back(std::move(use));
    }
    return uses;
}
