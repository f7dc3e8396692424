#include "check_scene/findings.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <ostream>
#include <string_view>
#include <tuple>

namespace {

const char* Severity(const Finding& finding) {
    return finding.isError ? "error" : "warning";
}

void PrintQuoted(std::ostream& out, const std::string& text) {
    out << '"';
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out << '\\' << c;
        } else if (code < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", code);
            out << escaped;
        } else {
            out << c;
        }
    }
    out << '"';
}

}  // namespace

void Findings::Sort() {
    std::map<std::string, std::size_t> fileOrder;
    for (const Finding& finding : list) {
        fileOrder.emplace(finding.place.file, fileOrder.size());
    }
    const auto key = [&](const Finding& finding) {
        return std::tuple(fileOrder[finding.place.file], finding.place.line, finding.place.byte,
                          std::string_view(finding.text));
    };
    std::ranges::stable_sort(
        list, [&](const Finding& left, const Finding& right) { return key(left) < key(right); });
    const auto isTwin = [&](const Finding& left, const Finding& right) { return key(left) == key(right); };
    list.erase(std::unique(list.begin(), list.end(), isTwin), list.end());
}

int Findings::ErrorCount() const {
    return static_cast<int>(std::ranges::count_if(list, &Finding::isError));
}

void PrintFindings(std::ostream& out, const Findings& findings, bool isNumbered) {
    int number = 0;
    for (const Finding& finding : findings.list) {
        const Place& place = finding.place;
        out << place.file << ':';
        if (place.line > 0) {
            out << place.line << ':';
        }
        out << ' ' << Severity(finding) << ": " << finding.text;
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

void PrintFindingsAsJson(std::ostream& out, const Findings& findings) {
    out << '[';
    const char* separator = "\n";
    for (const Finding& finding : findings.list) {
        out << separator << "  {\"file\": ";
        PrintQuoted(out, finding.place.file);
        if (finding.place.line > 0) {
            out << ", \"line\": " << finding.place.line;
        }
        if (finding.place.byte >= 0) {
            out << ", \"byte\": " << finding.place.byte;
        }
        out << ", \"severity\": \"" << Severity(finding) << "\", \"code\": \"" << finding.code
            << "\", \"text\": ";
        PrintQuoted(out, finding.text);
        out << '}';
        separator = ",\n";
    }
    out << "\n]\n";
}

std::string Shown(double value) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.6g", value);
    return digits;
}

std::string ShownPoint(Vector point) {
    const auto rounded = [](float value) { return Shown(std::round(double{value} * 100.0) / 100.0); };
    return "(" + rounded(point.x) + ", " + rounded(point.y) + ", " + rounded(point.z) + ")";
}

std::string Counted(std::int64_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}
