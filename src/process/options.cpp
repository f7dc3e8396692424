#include "process/options.h"

#include <getopt.h>

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

constexpr int firstOption = 256;  ///< of getopt's values: those below are letters

template <typename Number>
bool ReadNumber(const char* begin, const char* end, Number& number) {
    const auto [stop, failure] = std::from_chars(begin, end, number);
    return failure == std::errc() && stop == end;
}

template <typename Number>
StoreOption IntoRange(Number& number, Number least, Number most, const std::string& takes) {
    assert(least <= most);
    return [=, &number](const std::string& text) {
        Number value{};
        const bool fits = ReadNumber(text.data(), text.data() + text.size(), value) && value >= least &&
                          value <= most;  // which no NaN is
        number = fits ? value : number;
        return fits ? "" : takes;
    };
}

std::string Left(const Option& option) {
    const std::string name = option.name == nullptr ? "" : std::string("  --") + option.name;
    return option.value == nullptr ? name : name + " " + option.value;
}

void PrintHelp(const Program& program) {
    std::vector<Option> options = program.options;
    options.push_back({"help", nullptr, "show this text", nullptr});
    options.push_back({"version", nullptr, "show the version", nullptr});
    std::size_t width = 0;
    for (const Option& option : options) {
        width = std::max(width, Left(option).size() + 2);
    }
    std::string text = program.beforeOptions;
    for (const Option& option : options) {
        std::string left = Left(option);
        left.resize(option.name == nullptr ? 0 : width, ' ');
        text += left;
        for (const char* c = option.help; *c != '\0'; c++) {
            text += *c == '\n' ? "\n" + std::string(width, ' ') : std::string(1, *c);
        }
        text += '\n';
    }
    std::printf("%s%s", text.c_str(), program.afterOptions);
}

/// What getopt has just stopped at, as the user wrote it.
std::string Refused(char** arguments) {
    return optopt > 0 && optopt < firstOption ? std::string("-") + static_cast<char>(optopt)
                                              : arguments[optind - 1];
}

}  // namespace

StoreOption Into(bool& flag, bool meaning) {
    return [&flag, meaning](const std::string&) {
        flag = meaning;
        return "";
    };
}

StoreOption Into(std::string& text) {
    return [&text](const std::string& value) {
        if (value.empty()) {
            return "takes a name";
        }
        text = value;
        return "";
    };
}

StoreOption Into(int& number, int least, int most) {
    const std::string from = "takes a whole number from " + std::to_string(least);
    const bool isBounded = most != std::numeric_limits<int>::max();
    return IntoRange(number, least, most, from + (isBounded ? " to " + std::to_string(most) : " on"));
}

StoreOption Into(float& number, float least, float most) {
    char range[80];
    std::snprintf(range, sizeof range, "takes a number from %g to %g", least, most);
    return IntoRange(number, least, most, range);
}

StoreOption IntoPoint(float& x, float& y, float& z) {
    return [&x, &y, &z](const std::string& text) {
        const char* begin = text.data();
        const char* const end = begin + text.size();
        for (float* number : {&x, &y, &z}) {
            const char* const stop = number == &z ? end : std::find(begin, end, ',');
            if (!ReadNumber(begin, stop, *number) || !std::isfinite(*number)) {
                return "takes X,Y,Z, three numbers with commas";
            }
            begin = std::min(stop + 1, end);
        }
        return "";
    };
}

Arguments ReadArguments(const Program& program, int count, char** arguments) {
    std::vector<option> known = {{"help", no_argument, nullptr, 'h'},
                                 {"version", no_argument, nullptr, 'v'}};
    for (std::size_t i = 0; i < program.options.size(); i++) {
        const Option& option = program.options[i];
        if (option.name != nullptr) {
            known.push_back({option.name, option.value == nullptr ? no_argument : required_argument,
                             nullptr, firstOption + static_cast<int>(i)});
        }
    }
    known.push_back({});
    opterr = 0;
    optind = 0;  // anew, should this be called again
    for (int found; (found = getopt_long(count, arguments, ":h", known.data(), nullptr)) != -1;) {
        switch (found) {
            case 'h':
                PrintHelp(program);
                return {{}, 0};
            case 'v':
                std::puts("Engine " ENGINE_VERSION);
                return {{}, 0};
            case ':':
                return {{}, RefuseArguments(program, "a value is missing after " + Refused(arguments))};
            case '?':
                return {{}, RefuseArguments(program, "unknown or ambiguous option " + Refused(arguments))};
            default:
                break;
        }
        const Option& given = program.options[static_cast<std::size_t>(found - firstOption)];
        const std::string value = optarg == nullptr ? "" : optarg;
        const std::string takes = given.store(value);
        if (!takes.empty()) {
            std::string refusal = "--";
            refusal.append(given.name).append(" ").append(takes).append(", not ").append(value);
            return {{}, RefuseArguments(program, refusal)};
        }
    }
    return {{arguments + optind, arguments + count}, -1};
}

int RefuseArguments(const Program& program, const std::string& reason) {
    std::fprintf(stderr, "%s: error: %s\n%s --help says what can be given.\n", program.name, reason.c_str(),
                 program.name);
    return wrongUsage;
}
