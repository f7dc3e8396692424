#include "common/spelling.h"

#include <algorithm>
#include <numeric>

#include "platform/files.h"

namespace {

/// How many letters have to be put in, left out, changed or swapped with their neighbour.
std::size_t Distance(const std::string& from, const std::string& to) {
    std::vector<std::vector<std::size_t>> cost(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
    std::iota(cost[0].begin(), cost[0].end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); i++) {
        cost[i][0] = i;
        for (std::size_t j = 1; j <= to.size(); j++) {
            const std::size_t change = from[i - 1] == to[j - 1] ? 0 : 1;
            cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, cost[i - 1][j - 1] + change});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
                cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
            }
        }
    }
    return cost[from.size()][to.size()];
}

}  // namespace

std::string Nearest(const std::string& word, const std::vector<std::string>& candidates) {
    constexpr std::size_t longestWord = 60;  // beyond that nobody has merely mistyped
    if (word.size() > longestWord) {
        return {};
    }
    const std::string wanted = LowerCase(word);
    std::string nearest;
    std::size_t least = word.size() / 3 + 2;
    for (const std::string& candidate : candidates) {
        const std::size_t longer = std::max(candidate.size(), word.size());
        if (candidate.empty() || longer - std::min(candidate.size(), word.size()) >= least) {
            continue;
        }
        const std::size_t distance = Distance(wanted, LowerCase(candidate));
        if (distance < least && distance < candidate.size()) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string DidYouMean(const std::string& word, const std::vector<std::string>& candidates) {
    const std::string nearest = Nearest(word, candidates);
    return nearest.empty() ? "" : "; did you mean " + nearest + "?";
}
