#pragma once

#include <string>
#include <utility>

#include "Utils/U_XMLReader/EventJournal.h"

namespace KM::Test {

/// The rules of the reader in their plain form: one character after the other, as they are told to somebody. Refusals
/// end it, and are kept as text.
class PlainXmlReader {
public:
    /// The events, and behind them the text of the refusal, if there is one.
    static std::pair<std::string, std::string> Read(const std::string& text, bool translate) {
        PlainXmlReader reader(text, translate);
        try {
            reader.Run();
        } catch (const std::string& refusal) { return {reader.events_.journal, refusal}; }
        return {reader.events_.journal, ""};
    }

private:
    PlainXmlReader(const std::string& text, bool translate) : text_(text), translate_(translate) {}

    bool Ends() const { return at_ >= text_.size(); }
    char Here() const { return Ends() ? '\0' : text_[at_]; }
    bool Stands(const std::string& what) const { return text_.compare(at_, what.size(), what) == 0; }
    static bool IsBlank(char c) { return c == '\0' || c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

    void SkipBlanks() {
        for (; !Ends() && IsBlank(Here()); ++at_)
            if (Here() == '\n') ++line_;
    }

    std::string Name() {
        std::string name;
        const auto is = [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
        };
        while (!Ends() && is(Here())) name += text_[at_++];
        return name;
    }

    /// Stays on the last character of the mark.
    std::string Until(const std::string& mark) {
        std::string read;
        for (; !Ends(); ++at_) {
            read += Here();
            if (Here() == '\n') ++line_;
            if (read.ends_with(mark)) break;
        }
        return read;
    }

    std::string Cut(const std::string& mark, std::size_t first, std::size_t last) {
        const std::string read = Until(mark);
        if (read.size() >= first + last) return read.substr(first, read.size() - last - first);
        if (read.ends_with(mark)) throw std::string("string too long");
        return "";
    }

    std::string Value() {
        std::string value;
        if (!Ends() && (Here() == '"' || Here() == '\'')) {
            const char quote = text_[at_++];
            value = "\"";
            while (!Ends() && Here() != quote) value += text_[at_++];
            value += '"';
            ++at_;
        } else {
            for (; !Ends() && Here() != '<'; ++at_) {
                if (Here() == '\n') ++line_;
                if (Here() != '\n' && Here() != '\r') value += Here();
            }
        }
        while (!value.empty() && IsBlank(value.back())) value.pop_back();
        return value;
    }

    std::string Decoded(const std::string& value) const {
        if (!translate_) return value;
        const std::pair<std::string, char> entities[] = {
            {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&apos;", '\''}, {"&quot;", '"'}};
        std::string result;
        for (std::size_t i = 0; i < value.size(); ++i) {
            char c = value[i];
            std::size_t skipped = 0;
            for (const auto& [entity, character] : entities)
                if (value.compare(i, entity.size(), entity) == 0) c = character, skipped = entity.size() - 1;
            result += c;
            i += skipped;
        }
        return result;
    }

    [[noreturn]] void Fail(const std::string& what) const {
        throw what + ", InLine: " + std::to_string(line_) + ". Execution Aborted";
    }

    void EndTag() {
        at_ += 2;
        const std::string name = Name();
        events_.OnElementEnd(false);
        SkipBlanks();
        if (!Ends() && Here() != '>') Fail("Wasn't found a proper closing element (>):" + name);
    }

    void StartTag() {
        ++at_;
        const std::string name = Name();
        events_.OnElementBegin(name);
        SkipBlanks();
        while (!Ends() && Here() != '>' && Here() != '/') {
            SkipBlanks();
            const std::string attribute = Name();
            SkipBlanks();
            if (Ends()) return;
            if (Here() != '=') Fail("Expected an equal sign while parsing attributes after" + attribute);
            ++at_;
            SkipBlanks();
            const std::string value = Value();
            SkipBlanks();
            events_.OnAttribute(attribute, Decoded(value.size() < 2 ? "" : value.substr(1, value.size() - 2)));
        }
        if (Here() != '/' || Ends()) return;
        ++at_;
        if (!Ends() && Here() != '>') Fail("Wasn't found a proper closing element (>):" + name);
        events_.OnElementEnd(true);
    }

    void Text() {
        const std::string value = Value();
        SkipBlanks();
        if (!Ends() && Here() == '<') --at_;
        events_.OnValue(Decoded(value));
    }

    void Run() {
        for (;; ++at_) {
            SkipBlanks();
            if (Ends()) return;
            if (Stands("<![CDATA["))
                events_.OnCDATA(Cut("]]>", 9, 3));
            else if (Stands("<?"))
                events_.OnCommand(Cut("?>", 2, 2));
            else if (Stands("<!--"))
                events_.OnComment(Cut("-->", 4, 3));
            else if (Stands("<!"))
                events_.OnComment(Cut(">", 4, 3));
            else if (Stands("</"))
                EndTag();
            else if (Stands("<"))
                StartTag();
            else
                Text();
        }
    }

    std::string text_;
    bool translate_;
    EventJournal events_;
    std::size_t at_ = 0;
    int line_ = 0;
};

}  // namespace KM::Test
