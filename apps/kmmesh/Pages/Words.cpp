#include "Words.h"

namespace KM::Tool {

std::string Joined(const std::vector<std::string>& words, const char* between) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

std::vector<std::string> VerbNames(const Verbs& verbs) {
    std::vector<std::string> names;
    for (const Verb* verb : verbs) names.push_back(verb->name);
    return names;
}

std::string ValuesOf(const Option& option) {
    constexpr double handful = 10.0;
    if (option.kind != Kind::Whole || !(option.range.most - option.range.least < handful))
        return NamesOf(option.kind).words;
    std::vector<std::string> numbers;
    for (double number = option.range.least; number <= option.range.most; ++number)
        numbers.push_back(std::to_string(static_cast<int>(number)));
    return Joined(numbers, " ");
}

}  // namespace KM::Tool
