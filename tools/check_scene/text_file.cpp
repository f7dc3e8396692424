#include "check_scene/text_file.h"

#include <algorithm>
#include <iterator>

#include "platform/files.h"

bool TextFile::Read(const std::string& name, const std::string& newShownName) {
    shownName = newShownName;
    const auto stream = OpenTextFile(name.c_str());
    if (stream == nullptr) {
        return false;
    }
    text = std::move(stream->text);
    lineStarts = {0};
    for (std::size_t end = 0; (end = text.find('\n', end)) != std::string::npos;) {
        lineStarts.push_back(++end);
    }
    for (std::size_t at = 0; (at = text.find("/*", at)) != std::string::npos;) {
        const std::size_t end = std::min(text.find("*/", at + 2), text.size());
        longComments.emplace_back(at, end);
        at = end;
    }
    return true;
}

int TextFile::LineOf(std::size_t position) const {
    return static_cast<int>(std::ranges::upper_bound(lineStarts, position) - lineStarts.begin());
}

bool TextFile::IsInComment(std::size_t position) const {
    constexpr std::size_t farEnough = 500;
    const std::size_t start = lineStarts[static_cast<std::size_t>(LineOf(position)) - 1];
    const std::size_t from = std::max(start, position - std::min(position, farEnough));
    const std::string before = text.substr(from, position - from);
    for (const char* mark : {"//", "#", ";", "--", "<!--"}) {
        if (before.find(mark) != std::string::npos) {
            return true;
        }
    }
    // The asterisk of the mark itself may be the one that is asked about.
    const auto after = std::ranges::upper_bound(longComments, std::pair(position, std::string::npos));
    return after != longComments.begin() && position < std::prev(after)->second;
}
