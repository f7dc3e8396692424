#include "check_scene/findings.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "platform/windows1250.h"

namespace {

const char* Severity(const Finding& finding) {
    return finding.isError ? "error" : "warning";
}

/// How long the UTF-8 character is that begins there; 0 if it is none.
std::size_t CharacterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const std::string_view rest = text.substr(1, length - 1);
    const bool isWhole = length > 0 && lead < 0xF5 && rest.size() + 1 == length &&
                         std::ranges::all_of(rest, [](char c) { return (c & 0xC0) == 0x80; });
    const auto second = static_cast<unsigned char>(isWhole && length > 1 ? rest[0] : 0);
    // What has a shorter form, surrogates, and what lies beyond the last code point.
    const bool isWrong = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                         (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return isWhole && !isWrong ? length : 0;
}

}  // namespace

void Findings::Sort() {
    std::map<std::string, std::size_t> fileOrder;
    std::set<std::pair<std::string, int>> causes;
    std::set<std::tuple<std::string, int, std::int64_t, std::string>> seen;
    std::erase_if(list, [&](const Finding& finding) {
        const Place& place = finding.place;
        fileOrder.emplace(place.file, fileOrder.size());
        if (finding.isCause) {
            causes.emplace(place.file, place.line);
        }
        return !seen.emplace(place.file, place.line, place.byte, finding.text).second;
    });
    const auto key = [&](const Finding& finding) {
        const Place& place = finding.place;
        return std::tuple(!causes.contains({place.file, place.line}), !finding.isError,
                          fileOrder[place.file], place.line, place.byte);
    };
    std::ranges::stable_sort(list, {}, key);
}

bool Findings::HasCause() const {
    return std::ranges::any_of(list, &Finding::isCause);
}

bool Findings::Has(std::string_view code) const {
    return std::ranges::find(list, code, &Finding::code) != list.end();
}

int Findings::ErrorCount() const {
    return static_cast<int>(std::ranges::count_if(list, &Finding::isError));
}

void PrintFindings(std::ostream& out, const Findings& findings, bool isNumbered, bool isColoured) {
    int number = 0;
    for (const Finding& finding : findings.list) {
        const Place& place = finding.place;
        out << Utf8(place.file) << ':';
        if (place.line > 0) {
            out << place.line << ':';
        }
        constexpr const char* red = "\033[1;31m";
        constexpr const char* magenta = "\033[1;35m";
        out << ' '
            << (!isColoured       ? ""
                : finding.isError ? red
                                  : magenta)
            << Severity(finding) << (isColoured ? "\033[0m" : "") << ": " << Utf8(finding.text);
        if (place.byte >= 0) {
            out << " (at byte " << place.byte << ')';
        }
        number++;
        out << " [" << finding.code << ']';
        if (isNumbered) {
            out << " [" << number << ']';
        }
        out << '\n';
    }
}

nlohmann::ordered_json JsonOf(const Findings& findings) {
    auto list = nlohmann::ordered_json::array();
    for (const Finding& finding : findings.list) {
        nlohmann::ordered_json one = {{"file", Utf8(finding.place.file)}};
        if (finding.place.line > 0) {
            one["line"] = finding.place.line;
        }
        if (finding.place.byte >= 0) {
            one["byte"] = finding.place.byte;
        }
        one["severity"] = Severity(finding);
        one["code"] = finding.code;
        one["text"] = Utf8(finding.text);
        list.push_back(std::move(one));
    }
    return list;
}

std::string Utf8(const std::string& text) {
    std::string utf8;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = CharacterLength(std::string_view(text).substr(at));
        const std::string one = text.substr(at, std::max<std::size_t>(length, 1));
        const auto code = static_cast<unsigned char>(one[0]);
        const bool steers = code == 0x7F || (code < 0x20 && code != '\n');
        utf8 += steers ? "?" : length > 0 ? one : Windows1250ToUtf8(one.c_str());
        at += one.size();
    }
    return utf8;
}

std::string Shown(double value) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.6g", value + 0.0);  // -0 is shown as 0
    return digits;
}

std::string ShownPoint(Vector point) {
    const auto rounded = [](float value) { return Shown(std::round(double{value} * 100.0) / 100.0); };
    return "(" + rounded(point.x) + ", " + rounded(point.y) + ", " + rounded(point.z) + ")";
}

std::string Counted(std::int64_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}
