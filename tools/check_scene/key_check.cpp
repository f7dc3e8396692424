#include "check_scene/key_check.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

#include "common/spelling.h"
#include "platform/files.h"

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// One text while its keys are judged.
struct KeyCheck {
    Findings& findings;
    const TextFile& file;
    KeyPlace place;
    int playerCount;

    void Error(const char* code, std::size_t position, const std::string& text) {
        findings.Error(code, file.At(position), text);
    }
    void Warn(const char* code, std::size_t position, const std::string& text) {
        findings.Warn(code, file.At(position), text);
    }
    char At(std::size_t position) const { return position < file.text.size() ? file.text[position] : '\0'; }

    void CheckUnread(const KeyUse& use);
    bool CheckCount(const KeyUse& use);
    void CheckForm(const KeyUse& use, std::size_t i);
    void CheckRange(const KeyUse& use, std::size_t i);
    void CheckRest(const KeyUse& use);
    void CheckName(const KeyUse& use);
    void CheckUse(const KeyUse& use);
};

std::string NoKeyOf(const std::string& word, KeyPlace place) {
    return word + " is no key of " + PlaceName(place);
}

/// A word that the engine passes over.
void KeyCheck::CheckUnread(const KeyUse& use) {
    if (file.IsInComment(use.position)) {
        return;
    }
    std::vector<std::string> names;
    for (const Key& key : KeysOf(place)) {
        names.push_back(key.name);
        if (key.name == use.word) {
            Error("key-without-blank", use.position,
                  use.word +
                      " isn't read here: a blank has to stand right after it, in front "
                      "of its value on the same line");
            return;
        }
        if (EqualButForCase(key.name, use.word)) {
            Error("key-small-letters", use.position,
                  use.word + " isn't read: keys are written in capital letters, " + key.name);
            return;
        }
    }
    for (const KeyPlace other : {KeyPlace::Settings, KeyPlace::Object, KeyPlace::Globals}) {
        const std::vector<Key>& keys = KeysOf(other);
        if (other != place && std::ranges::find(keys, use.word, &Key::name) != keys.end()) {
            Error("key-misplaced", use.position,
                  NoKeyOf(use.word, place) + ", it isn't read here: it belongs into " + PlaceName(other));
            return;
        }
    }
    const std::string suggestion = DidYouMean(use.word, names);
    if (suggestion.empty()) {
        Warn("key-unknown", use.position, NoKeyOf(use.word, place) + " and isn't read");
    } else {
        Error("key-misspelt", use.position, NoKeyOf(use.word, place) + suggestion);
    }
}

/// Whether the key has its numbers to itself.
bool KeyCheck::CheckCount(const KeyUse& use) {
    std::size_t from = use.end;
    for (std::size_t i = 0; i < use.numbers.size(); i++) {
        const NumberRead& number = use.numbers[i];
        const std::string has = use.key->name + " has " + std::to_string(i) + " of its " +
                                Counted(static_cast<int>(use.numbers.size()), "number");
        if (number.isMissing) {
            Error("number-missing", use.position,
                  has + "; 0 is taken for the " + use.key->arguments[i].what);
            return false;
        }
        for (std::size_t at = file.text.find('*', from); at < number.begin;
             at = file.text.find('*', at + 1)) {
            if (std::isalpha(static_cast<unsigned char>(At(at + 1))) != 0) {
                Error("number-far", use.position,
                      has + "; the " + use.key->arguments[i].what + " is taken from line " +
                          std::to_string(file.LineOf(number.begin)) + ", where another key stands");
                return false;
            }
        }
        from = number.end;
    }
    return true;
}

/// Numbers that are read otherwise than they look.
void KeyCheck::CheckForm(const KeyUse& use, std::size_t i) {
    const NumberRead& number = use.numbers[i];
    const bool isLast = i + 1 == use.numbers.size();
    const std::string token = file.text.substr(number.begin, number.end - number.begin);
    const std::string read = use.key->name + ": " + use.key->arguments[i].what + ": ";
    const char before = number.begin > 0 ? At(number.begin - 1) : '\0';
    const char after = At(number.end);
    const char second = At(number.end + 1);
    if (before == '.' && token[0] != '-' && number.begin > use.end &&
        !(number.begin > 1 && IsDigit(At(number.begin - 2)))) {
        Error("number-without-zero", number.begin,
              read + "." + token + " is read as " + Shown(number.value) + "; write 0." + token);
    } else if (use.key->arguments[i].isWhole && after == '.' && IsDigit(second)) {
        Error("number-with-point", number.begin,
              read + "a whole number is wanted, and what stands after the point of " + token + "." +
                  second + " is read as the next one");
    } else if ((after == 'x' || after == 'X') && token == "0") {
        Error("number-hexadecimal", number.begin,
              read + "0x is read as 0, and what follows as the next number; write it decimal");
    } else if (token == "-" || token == "-." || token == "--") {
        Error("number-hyphen", number.begin, read + "a hyphen alone is read as the number 0; take it out");
    } else if (token.find('-', 1) != std::string::npos || std::ranges::count(token, '.') > 1) {
        Error("number-joined", number.begin,
              read + token + " is read as " + Shown(number.value) + "; put a blank between numbers");
    } else if ((after == 'e' || after == 'E') && !isLast &&
               (IsDigit(second) || second == '-' || second == '+')) {
        Error("number-exponent", number.begin,
              read +
                  "the digits of the exponent are read once more, as the next number; "
                  "write the number without an exponent");
    } else if (after == ',' && IsDigit(second) && isLast && !use.key->arguments[i].isWhole) {
        Error("number-comma", number.begin,
              read + "a comma separates numbers, so that " + token + " is read and no more; write a point");
    } else if (use.key->arguments[i].isWhole && token.size() > 9 &&
               std::fabs(number.value) >= 2147483647.0) {
        Error("number-too-large", number.begin,
              read + token + " is more than fits; " + Shown(number.value) + " is taken");
    }
}

void KeyCheck::CheckRange(const KeyUse& use, std::size_t i) {
    const NumberRead& number = use.numbers[i];
    const Argument& argument = use.key->arguments[i];
    if (argument.meaning == Meaning::Player) {
        if (playerCount > 0 && (number.value < 0 || number.value >= playerCount)) {
            const std::string text = "there is no player " + Shown(number.value) +
                                     ", and keys for them are ignored: *PLAYERCOUNT makes " +
                                     std::to_string(playerCount) + ", and they count from 0";
            if (!std::ranges::count(findings.list, text,
                                    &Finding::text)) {  // most often the count is wrong
                Error("player-unknown", number.begin, text);
            }
        }
        return;
    }
    if (number.value >= argument.low && number.value <= argument.high) {
        return;
    }
    std::string sensible = Shown(argument.low) + " to " + Shown(argument.high);
    if (argument.high > 1e9) {
        sensible = Shown(argument.low) + " or more";
    }
    Error("number-range", number.begin,
          use.key->name + ": the " + argument.what + " is " + Shown(number.value) +
              "; sensible values are " + sensible);
}

/// Numbers after the last one that is read.
void KeyCheck::CheckRest(const KeyUse& use) {
    std::size_t at = use.numbers.empty() ? use.end : use.numbers.back().end;
    while (At(at) == ' ' || At(at) == '\t' || At(at) == ',') {
        at++;
    }
    const char first = At(at);
    if (!IsDigit(first) && !((first == '-' || first == '.') && IsDigit(At(at + 1)))) {
        return;
    }
    if (use.numbers.empty()) {
        Warn("number-unread", at, use.key->name + " takes no number: it takes effect by standing there");
    } else {
        Warn("numbers-unread", at,
             use.key->name + " takes " + Counted(static_cast<int>(use.numbers.size()), "number") +
                 "; further ones aren't read");
    }
}

void KeyCheck::CheckName(const KeyUse& use) {
    const std::size_t nextKey = file.text.find('*', use.end);
    if (use.name.empty() || nextKey < use.nameBegin) {
        Error("name-missing", use.position, use.key->name + " has no name after it");
        return;
    }
    std::size_t begin = use.nameBegin;
    while (begin > use.end && std::isspace(static_cast<unsigned char>(At(begin - 1))) == 0) {
        begin--;
    }
    std::size_t end = begin;
    while (end < file.text.size() && std::isspace(static_cast<unsigned char>(At(end))) == 0 &&
           At(end) != '}') {
        end++;
    }
    const std::string written = file.text.substr(begin, end - begin);
    if (written != use.name && written != "\"" + use.name + "\"") {
        Error("name-characters", begin,
              use.key->name + ": " + written + " is read as " + use.name +
                  ": names hold letters, digits, points and backslashes only; rename the file" +
                  (written.find('/') != std::string::npos ? ", or write a backslash for each slash" : ""));
    } else if (use.Is("*FONT") && At(end) == ' ' &&
               std::isalpha(static_cast<unsigned char>(At(end + 1))) != 0) {
        Warn("font-blank", begin, "*FONT: the name ends at the blank: " + use.name + " is asked for");
    }
}

void KeyCheck::CheckUse(const KeyUse& use) {
    if (file.IsInComment(use.position)) {
        Warn("key-in-comment", use.position,
             use.key->name +
                 " stands in a comment and counts all the same: there are no "
                 "comments. Change its asterisk to take it out of use");
    }
    if (use.word != use.key->name) {
        Warn("key-longer", use.position,
             use.word + " counts as " + use.key->name +
                 ", which it begins with; change its asterisk if that isn't meant");
    }
    if (use.key->takesName) {
        CheckName(use);
        return;
    }
    if (!CheckCount(use)) {
        return;
    }
    const std::size_t before = findings.list.size();
    for (std::size_t i = 0; i < use.numbers.size(); i++) {
        CheckForm(use, i);
    }
    if (findings.list.size() > before) {
        return;  // the values are not what was meant
    }
    for (std::size_t i = 0; i < use.numbers.size(); i++) {
        CheckRange(use, i);
    }
    CheckRest(use);
}

/// Two occurrences that concern the same thing have the same text here.
std::string Subject(const KeyUse& use) {
    if (use.key->repeat == Repeat::LastWinsForItsNumber && !use.numbers.empty()) {
        return use.key->name + " " + Shown(use.numbers[0].value);
    }
    if (use.key->repeat == Repeat::Allowed) {
        return use.key->name + " " + use.name;
    }
    return use.key->name;
}

}  // namespace

void CheckKeys(Findings& findings, const TextFile& file, const std::vector<KeyUse>& uses, KeyPlace place,
               int playerCount) {
    KeyCheck check{findings, file, place, playerCount};
    std::map<std::string, std::size_t> firstOf;
    for (const KeyUse& use : uses) {
        if (use.key == nullptr) {
            check.CheckUnread(use);
            continue;
        }
        check.CheckUse(use);
        const std::string subject = Subject(use);
        const auto [first, isNew] = firstOf.emplace(subject, use.position);
        if (isNew || use.Is("*LIGHT") || use.Is("*LOADMESH")) {
            continue;
        }
        const std::string text =
            subject + " stands in line " + std::to_string(file.LineOf(first->second)) +
            (use.key->repeat == Repeat::AddsUp ? ", too, and the counts add up" : ", too; this one counts");
        check.Warn("key-repeated", use.position, text);
    }
}
