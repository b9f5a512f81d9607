#include "Utils/U_Caching/FormatString.h"

#include <cstdint>
#include <utility>

#include "Utils/U_Caching/DescriptionLimit.h"

namespace KM::Caching {
namespace {

class Layout {
public:
    void Add(char c) {
        switch (c) {
            case ' ':
                return;
            case '(':
            case '[':
            case '{':
                return Open(c);
            case ')':
            case ']':
            case '}':
                return Close(c);
            case ',':
                return Separate();
            case '=':
                text_ += " = ";
                return;
            default:
                text_ += c;
                isFresh_ = false;
        }
    }

    std::string Take() { return std::move(text_); }

private:
    void Open(char bracket) {
        AddOnOwnLine(bracket);
        indent_ += 2;
        Indent();
        isFresh_ = true;
    }

    void Close(char bracket) {
        indent_ -= 2;
        isFresh_ = false;
        AddOnOwnLine(bracket);
    }

    /// A comma that opens a line says nothing: the line before it has ended already.
    void Separate() {
        if (isFresh_) return;
        if (text_.ends_with('\n')) text_.pop_back();
        text_ += ",\n";
        Indent();
        isFresh_ = true;
    }

    void AddOnOwnLine(char bracket) {
        if (!text_.ends_with('\n')) text_ += '\n';
        Indent();
        text_ += bracket;
        text_ += '\n';
    }

    void Indent() {
        if (indent_ > 0 && text_.size() < DescriptionLimit) text_.append(static_cast<std::size_t>(indent_), ' ');
    }

    std::string text_;
    std::int64_t indent_ = 0;  // below 0 behind brackets that nothing has opened
    bool isFresh_ = false;     // nothing but indentation since the line began
};

}  // namespace

std::string FormatString(const std::string& text) {
    Layout layout;
    for (const char c : text) layout.Add(c);
    return layout.Take();
}

}  // namespace KM::Caching
