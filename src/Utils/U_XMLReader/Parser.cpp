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
        : text_(text), rest_(text), processor_(processor), translate_(translate) {}

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
    std::string_view TakeWhile(const CharacterSet& isMember);
    std::string_view TakeQuoted();
    void ReadUnquoted();
    void Translate();
    void PassTagEnd();
    [[noreturn]] void Fail(const std::string& what) const;

    std::string_view text_;
    std::string_view rest_;
    std::size_t quotedLines_ = 0;  // line feeds in quotes, which no report counts
    Processor& processor_;
    bool translate_;
    std::string_view tag_;  // the name of the last tag that began
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
    Skip(passed.size());
    if (passed.size() >= opening + closing) return value_.assign(passed, opening, passed.size() - opening - closing);
    if (isClosed) throw std::length_error("string too long");
    value_.clear();
    return value_;
}

void Parser::ReadEndTag() {
    Skip(2);
    tag_ = TakeWhile(IsNameLetter);
    processor_.OnElementEnd(false);
    SkipWhitespace();
    PassTagEnd();
}

void Parser::ReadStartTag() {
    Skip(1);
    tag_ = TakeWhile(IsNameLetter);
    element_ = tag_;
    processor_.OnElementBegin(element_);
    SkipWhitespace();
    while (!IsAtEnd() && !IsAt('>') && !IsAt('/')) ReadAttribute();
    const bool isClosed = IsAt('/');
    if (isClosed) Skip(1);
    PassTagEnd();
    if (isClosed) processor_.OnElementEnd(true);
}

void Parser::ReadAttribute() {
    attribute_ = TakeWhile(IsNameLetter);
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

void Parser::SkipWhitespace() { TakeWhile(IsWhitespace); }

std::string_view Parser::TakeWhile(const CharacterSet& isMember) {
    const char* const begin = rest_.data();
    const char* const end = begin + rest_.size();
    const char* at = begin;
    while (at != end && isMember(*at)) ++at;
    rest_ = {at, end};
    return {begin, at};
}

// What stands between this quote and the next one of its kind, or the end of the text.
std::string_view Parser::TakeQuoted() {
    const std::size_t end = rest_.find(rest_.front(), 1);
    const std::string_view quoted = rest_.substr(1, end - 1);
    Skip(std::min(quoted.size() + 2, rest_.size()));
    for (std::size_t at = quoted.find('\n'); at != std::string_view::npos; at = quoted.find('\n', at + 1))
        ++quotedLines_;
    return quoted;
}

void Parser::ReadUnquoted() {
    std::string_view passed = rest_.substr(0, rest_.find('<'));
    Skip(passed.size());
    while (!passed.empty() && IsWhitespace(passed.back())) passed.remove_suffix(1);
    value_ = passed;
    std::erase_if(value_, [](char c) { return c == '\r' || c == '\n'; });
}

void Parser::Translate() {
    if (translate_) DecodeEntities(value_);
}

void Parser::PassTagEnd() {
    if (IsAtEnd()) return;
    if (!IsAt('>')) Fail("Wasn't found a proper closing element (>):" + std::string(tag_));
    Skip(1);
}

void Parser::Fail(const std::string& what) const {
    const std::string_view passed = text_.substr(0, text_.size() - rest_.size());
    const auto lines = static_cast<std::size_t>(std::count(passed.begin(), passed.end(), '\n'));
    Verbose::WriteMessage_1(Verbose::EMessageType::Error,
                            what + ", InLine: " + std::to_string(lines - quotedLines_) + ". Execution Aborted");
    throw "Bad XML File";
}

}  // namespace

void Parse(std::string_view text, Processor& processor, bool translate) { Parser(text, processor, translate).Run(); }

}  // namespace KM::XML
