#include "FailureInText.h"

#include <algorithm>

#include "Expressions.h"
#include "Output.h"

namespace KM::Tool {
namespace {

using Parsing::ParsingException;

// What is shown of a line: so many characters ahead of the token, and so many in all.
constexpr std::size_t MostAhead = 40;
constexpr std::size_t MostInAll = 70;

/// Whether a character begins here; the bytes of UTF-8 behind its first one do not count.
bool IsBegin(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

std::size_t CharactersIn(const std::string& text, std::size_t begin, std::size_t end) {
    return static_cast<std::size_t>(std::count_if(text.begin() + static_cast<std::ptrdiff_t>(begin),
                                                  text.begin() + static_cast<std::ptrdiff_t>(end), IsBegin));
}

/// One line of a text.
struct Line {
    std::size_t begin;
    std::size_t end;
};

Line LineAround(const std::string& text, std::size_t position) {
    const std::size_t feed = position == 0 ? std::string::npos : text.rfind('\n', position - 1);
    const std::size_t begin = feed == std::string::npos ? 0 : feed + 1;
    return {begin, std::min(text.find('\n', position), text.size())};
}

bool IsSingleLine(const std::string& text) { return Trimmed(text).find('\n') == std::string::npos; }

std::string PlaceIn(const std::string& text, std::size_t position) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(position);
    const auto line = std::count(text.begin(), end, '\n') + 1;
    const std::size_t column = CharactersIn(text, LineAround(text, position).begin, position) + 1;
    return ':' + std::to_string(line) + ':' + std::to_string(column);
}

/// The language counts words "_NL_"; beside the line of the text its 0 would mislead.
std::string WithoutLineZero(const std::string& message) {
    for (const std::string end : {" on line: 0.", " On line: 0."})
        if (message.ends_with(end)) {
            const std::string rest = message.substr(0, message.size() - end.size());
            return rest.ends_with('!') ? rest : rest + '.';
        }
    return message;
}

std::string SubjectOf(const std::string& subject, const std::string& text, const ParsingException& failure) {
    const bool isPlaceShown = failure.Position() <= text.size() && !IsSingleLine(text);
    return isPlaceShown ? subject + PlaceIn(text, failure.Position()) : subject;
}

std::string ReasonOf(const std::string& text, const ParsingException& failure) {
    return IsSingleLine(text) ? failure.what() : WithoutLineZero(failure.what());
}

std::size_t StepBack(const std::string& text, std::size_t from, std::size_t least, std::size_t characters) {
    for (; from > least && characters > 0; --characters) do
            --from;
        while (from > least && !IsBegin(text[from]));
    return from;
}

std::size_t StepOn(const std::string& text, std::size_t from, std::size_t most, std::size_t characters) {
    for (; from < most && characters > 0; --characters) do
            ++from;
        while (from < most && !IsBegin(text[from]));
    return from;
}

std::string Part(const std::string& text, std::size_t begin, std::size_t end) {
    std::string part = text.substr(begin, end - begin);
    std::replace(part.begin(), part.end(), '\t', ' ');
    return OnOneLine(part);
}

std::string ExcerptAround(const std::string& text, std::size_t position, bool hasCaret) {
    Line line = LineAround(text, position);
    if (line.end > line.begin && line.end > position && text[line.end - 1] == '\r') --line.end;
    const std::size_t begin = StepBack(text, position, line.begin, MostAhead);
    const std::size_t end = StepOn(text, begin, line.end, MostInAll);
    const std::string cut = begin > line.begin ? "..." : "";
    std::string excerpt = "  " + cut + Part(text, begin, end) + (end < line.end ? "...\n" : "\n");
    if (hasCaret) excerpt += std::string(2 + cut.size() + CharactersIn(text, begin, position), ' ') + "^\n";
    return excerpt;
}

std::string ExcerptOf(const std::string& text, const ParsingException& failure) {
    if (failure.Position() <= text.size()) return ExcerptAround(text, failure.Position(), true);
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    return IsSingleLine(text) && begin != std::string::npos ? ExcerptAround(text, begin, false) : "";
}

}  // namespace

FailureInText::FailureInText(const std::string& subject, const std::string& text, const ParsingException& failure)
    : Failure(SubjectOf(subject, text, failure), ReasonOf(text, failure)), excerpt_(ExcerptOf(text, failure)) {}

void Complain(const KmException& failure) {
    const auto* const inText = dynamic_cast<const FailureInText*>(&failure);
    Complain(failure.what(), inText != nullptr ? inText->Excerpt() : "");
}

}  // namespace KM::Tool
