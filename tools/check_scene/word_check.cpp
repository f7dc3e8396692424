#include <algorithm>
#include <cctype>
#include <string>

#include "check_scene/checks.h"
#include "scene/scene.h"

// Words that would be keys if an asterisk stood right before them, and keys of the keyboard that are taken.

namespace {

bool IsLetter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

/// Whether the word is a key but for its asterisk.
const Key* KeyNamed(const std::string& word, KeyPlace place) {
    const std::vector<Key>& keys = KeysOf(place);
    const auto key = std::ranges::find(keys, "*" + word, &Key::name);
    return key == keys.end() ? nullptr : &*key;
}

/// @param lineStartsOnly whether the place also holds prose, so that only first words of lines count
void CheckText(Findings& findings, const TextFile& file, std::size_t begin, std::size_t end, KeyPlace place,
               bool lineStartsOnly) {
    const std::string& text = file.text;
    end = std::min(end, text.size());
    for (std::size_t at = begin; at < end;) {
        std::size_t wordEnd = at;
        while (wordEnd < end && IsLetter(text[wordEnd])) {
            wordEnd++;
        }
        if (wordEnd == at) {
            at++;
            continue;
        }
        const std::string word = text.substr(at, wordEnd - at);
        const std::size_t before = text.find_last_not_of(" \t", at == 0 ? 0 : at - 1);
        const char left = at == 0 || before == std::string::npos ? '\n' : text[before];
        const bool isApart = at == 0 || before + 1 < at;
        const bool isWanted =
            (left == '*' && isApart) || left == '\n' || (!lineStartsOnly && left != '#' && left != '*');
        if (isWanted && KeyNamed(word, place) != nullptr && !file.IsInComment(at)) {
            findings.Error("asterisk-missing", file.At(at),
                           std::string(word)
                               .append(" isn't read: an asterisk has to stand right before it, *")
                               .append(word));
        }
        at = wordEnd;
    }
}

void CheckEscape(Findings& findings, const World& world) {
    constexpr std::int32_t escape = 27;
    constexpr std::size_t lastUsed = 7;  // the eighth code is spare
    for (const KeyUse& use : world.settingsKeys) {
        for (std::size_t i = 1; use.Is("*PLAYERKEYBOARDCONTROLS") && i <= lastUsed; i++) {
            if (use.Whole(i) == escape) {
                findings.Error("key-escape", world.settings.At(use.numbers[i].begin),
                               "the key code 27 is Escape, which ends the program: choose another key");
            }
        }
    }
}

}  // namespace

void CheckWords(Findings& findings, const World& world) {
    CheckEscape(findings, world);
    CheckText(findings, world.settings, 0, world.settingsEnd, KeyPlace::Settings, true);
    for (const SceneSource& source : world.scenes) {
        for (const Block& block : source.blocks) {
            if (block.isGlobals || !block.takers.empty()) {
                CheckText(findings, source.attributes, block.brace + 1, block.end,
                          block.isGlobals ? KeyPlace::Globals : KeyPlace::Object, false);
            }
        }
    }
}
