#include "import_scene/report.h"

namespace {

constexpr std::size_t mostSubjects = 5;

}  // namespace

void Report::Warn(const std::string& text, const std::string& subject) {
    const auto [entry, isNew] = subjects.try_emplace(text);
    if (isNew) {
        order.push_back(text);
    }
    if (!subject.empty()) {
        entry->second.push_back(subject);
    }
}

void Report::Note(const std::string& text) {
    notes.push_back(text);
}

std::vector<std::string> Report::Warnings() const {
    std::vector<std::string> lines;
    for (const std::string& text : order) {
        const std::vector<std::string>& about = subjects.at(text);
        std::string line = text;
        for (std::size_t i = 0; i < about.size() && i < mostSubjects; i++) {
            line += (i == 0 ? ": " : ", ") + about[i];
        }
        if (about.size() > mostSubjects) {
            line += " and " + std::to_string(about.size() - mostSubjects) + " more";
        }
        lines.push_back(line);
    }
    return lines;
}
