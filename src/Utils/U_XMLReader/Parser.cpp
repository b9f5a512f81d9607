#include "Utils/U_XMLReader/Parser.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_XMLReader/Entities.h"

namespace KM::XML {
namespace {

constexpr std::string_view Whitespace("\0 \t\r\n", 5);
constexpr std::string_view NameLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-";

/// Whether a character is in a set, by one look.
class CharacterSet {
public:
    constexpr explicit CharacterSet(std::string_view members) {
        for (const char c : members) has_[static_cast<unsigned char>(c)] = true;
    }
    constexpr bool operator()(char c) const { return has_[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> has_{};
};

constexpr CharacterSet IsWhitespace(Whitespace);
constexpr CharacterSet IsNameLetter(NameLetters);

class Parser {
public:
    Parser(std::string_view text, Processor& processor, bool translate)
        : rest_(text), processor_(processor), translate_(translate) {}

    void Run();

private:
    void ReadPiece();
    const std::string& ReadUntil(std::string_view mark, std::size_t opening, std::size_t closing);
    void ReadEndTag();
    void ReadStartTag();
    void ReadAttribute();
    void ReadText();

    bool IsAtEnd() const { return rest_.empty(); }
    bool IsAt(char c) const { return !rest_.empty() && rest_.front() == c; }
    bool IsAtQuote() const { return IsAt('"') || IsAt('\''); }
    void Skip(std::size_t count) { rest_.remove_prefix(count); }
    void SkipWhitespace();
    void CountLines(std::string_view passed);

    void ReadName(std::string& name);
    std::string_view TakeQuoted();
    void ReadUnquoted();
    void Translate();
    void PassTagEnd();
    [[noreturn]] void Fail(const std::string& what) const;

    std::string_view rest_;
    std::size_t line_ = 0;  // line feeds that were passed, but for those in quotes
    Processor& processor_;
    bool translate_;
    // Kept from piece to piece, so that a reading takes memory for its longest texts only.
    std::string element_;
    std::string attribute_;
    std::string value_;
};

void Parser::Run() {
    for (SkipWhitespace(); !IsAtEnd(); SkipWhitespace()) ReadPiece();
}

void Parser::ReadPiece() {
    if (!IsAt('<')) return ReadText();
    if (rest_.starts_with("<![CDATA[")) return processor_.OnCDATA(ReadUntil("]]>", 9, 3));
    if (rest_.starts_with("<?")) return processor_.OnCommand(ReadUntil("?>", 2, 2));
    if (rest_.starts_with("<!--")) return processor_.OnComment(ReadUntil("-->", 4, 3));
    // Cut as a comment is: hosts know the stumps of their declarations.
    if (rest_.starts_with("<!")) return processor_.OnComment(ReadUntil(">", 4, 3));
    if (rest_.starts_with("</")) return ReadEndTag();
    ReadStartTag();
}

// The text up to and with the mark, without so many characters at its ends.
const std::string& Parser::ReadUntil(std::string_view mark, std::size_t opening, std::size_t closing) {
    const std::size_t found = rest_.find(mark);
    const bool isClosed = found != std::string_view::npos;
    const std::string_view passed = isClosed ? rest_.substr(0, found + mark.size()) : rest_;
    CountLines(passed);
    Skip(passed.size());
    if (passed.size() >= opening + closing) return value_.assign(passed, opening, passed.size() - opening - closing);
    if (isClosed) throw std::length_error("string too long");
    value_.clear();
    return value_;
}

void Parser::ReadEndTag() {
    Skip(2);
    ReadName(element_);
    processor_.OnElementEnd(false);
    SkipWhitespace();
    PassTagEnd();
}

void Parser::ReadStartTag() {
    Skip(1);
    ReadName(element_);
    processor_.OnElementBegin(element_);
    SkipWhitespace();
    while (!IsAtEnd() && !IsAt('>') && !IsAt('/')) ReadAttribute();
    const bool isClosed = IsAt('/');
    if (isClosed) Skip(1);
    PassTagEnd();
    if (isClosed) processor_.OnElementEnd(true);
}

void Parser::ReadAttribute() {
    ReadName(attribute_);
    SkipWhitespace();
    if (IsAtEnd()) return;
    if (!IsAt('=')) Fail("Expected an equal sign while parsing attributes after" + attribute_);
    Skip(1);
    SkipWhitespace();
    if (IsAtQuote()) {
        value_ = TakeQuoted();
    } else {
        // An end is lost as if it were a quote, whatever stands there.
        ReadUnquoted();
        value_ = value_.size() > 2 ? value_.substr(1, value_.size() - 2) : std::string();
    }
    SkipWhitespace();
    Translate();
    processor_.OnAttribute(attribute_, value_);
}

void Parser::ReadText() {
    if (IsAtQuote()) {
        value_ = '"';
        value_ += TakeQuoted();
        value_ += '"';
        SkipWhitespace();
        // One character behind the quote is lost, unless a tag begins there.
        if (!IsAtEnd() && !IsAt('<')) Skip(1);
    } else {
        ReadUnquoted();
    }
    Translate();
    processor_.OnValue(value_);
}

void Parser::SkipWhitespace() {
    std::size_t count = 0;
    for (; count < rest_.size() && IsWhitespace(rest_[count]); ++count)
        if (rest_[count] == '\n') ++line_;
    Skip(count);
}

void Parser::CountLines(std::string_view passed) {
    line_ += static_cast<std::size_t>(std::count(passed.begin(), passed.end(), '\n'));
}

void Parser::ReadName(std::string& name) {
    std::size_t size = 0;
    while (size < rest_.size() && IsNameLetter(rest_[size])) ++size;
    name.assign(rest_, 0, size);
    Skip(size);
}

// What stands between this quote and the next one of its kind, or the end of the text. Its lines are not counted.
std::string_view Parser::TakeQuoted() {
    const std::size_t end = rest_.find(rest_.front(), 1);
    const std::string_view quoted = rest_.substr(1, end - 1);
    Skip(std::min(quoted.size() + 2, rest_.size()));
    return quoted;
}

void Parser::ReadUnquoted() {
    const std::string_view passed = rest_.substr(0, rest_.find('<'));
    Skip(passed.size());
    CountLines(passed);
    value_.assign(passed, 0, passed.find_last_not_of(Whitespace) + 1);
    if (value_.find_first_of("\r\n") != std::string::npos)
        std::erase_if(value_, [](char c) { return c == '\r' || c == '\n'; });
}

void Parser::Translate() {
    if (translate_) DecodeEntities(value_);
}

void Parser::PassTagEnd() {
    if (IsAtEnd()) return;
    if (!IsAt('>')) Fail("Wasn't found a proper closing element (>):" + element_);
    Skip(1);
}

void Parser::Fail(const std::string& what) const {
    Verbose::WriteMessage_1(Verbose::EMessageType::Error,
                            what + ", InLine: " + std::to_string(line_) + ". Execution Aborted");
    throw "Bad XML File";
}

}  // namespace

void Parse(std::string_view text, Processor& processor, bool translate) { Parser(text, processor, translate).Run(); }

}  // namespace KM::XML
