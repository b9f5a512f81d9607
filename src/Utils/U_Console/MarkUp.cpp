#include "Utils/U_Console/MarkUp.h"

#include <cstddef>
#include <cstdlib>
#include <exception>

namespace KM {
namespace {

constexpr char Quote = '`';

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A code is a backquote, a letter, perhaps a number of one or two digits, and a backquote:
//
//   B I U H A    begin or end, in turn
//   T S s        begin, or end if the flag of another code is set
//   C c Z        begin with the number; end if the closing backquote follows at once
class MarkUpReader {
public:
    MarkUpReader(DumpingDevice& device, const std::string& text) : device_(device), text_(text) {}

    void Run() {
        // The step behind each code or byte also steps over the closing backquote of a code.
        for (std::size_t i = 0; i < text_.size(); ++i) {
            if (text_[i] == Quote && i + 1 < text_.size())
                i = Code(i);
            else
                device_.Write(std::string(1, text_[i]));
        }
    }

private:
    using Operation = void (DumpingDevice::*)();
    using NumberOperation = void (DumpingDevice::*)(int);

    /// Returns the position of the code's closing backquote, or of the backquote itself when it begins no code.
    std::size_t Code(std::size_t i) {
        switch (text_[i + 1]) {
            case 'B':
                return Toggle(i, bold_, &DumpingDevice::BoldB, &DumpingDevice::BoldE);
            case 'I':
                return Toggle(i, italic_, &DumpingDevice::ItalicB, &DumpingDevice::ItalicE);
            case 'U':
                return Toggle(i, underline_, &DumpingDevice::UnderlineB, &DumpingDevice::UnderlineE);
            case 'H':
                return Toggle(i, hyperlink_, &DumpingDevice::HyperlinkB, &DumpingDevice::HyperlinkE);
            case 'A':
                return Toggle(i, accolade_, &DumpingDevice::AccoladeB, &DumpingDevice::AccoladeE);
            // These three have no flag of their own: a strike ends only within italics, and so on. Formatters rely on
            // it.
            case 'T':
                return Choose(i, italic_, &DumpingDevice::StrikeB, &DumpingDevice::StrikeE);
            case 'S':
                return Choose(i, underline_, &DumpingDevice::SuperB, &DumpingDevice::SuperE);
            case 's':
                return Choose(i, hyperlink_, &DumpingDevice::SubB, &DumpingDevice::SubE);
            case 'C':
                return Number(i, &DumpingDevice::FgColorB, &DumpingDevice::FgColorE);
            case 'c':
                return Number(i, &DumpingDevice::BkColorB, &DumpingDevice::BkColorE);
            case 'Z':
                return Number(i, &DumpingDevice::SizeB, &DumpingDevice::SizeE);
            default:
                return i;  // the backquote is dropped, and the byte behind it comes up as plain text
        }
    }

    std::size_t Toggle(std::size_t i, bool& flag, Operation begin, Operation end) {
        (device_.*(flag ? end : begin))();
        flag = !flag;
        return i + 2;
    }

    std::size_t Choose(std::size_t i, bool isEnd, Operation begin, Operation end) {
        (device_.*(isEnd ? end : begin))();
        return i + 2;
    }

    std::size_t Number(std::size_t i, NumberOperation begin, Operation end) {
        const std::size_t at = i + 2;
        if (at >= text_.size()) return at;  // the text ends inside the code, which then says nothing
        if (text_[at] == Quote) {
            (device_.*end)();
            return at;
        }
        // The first byte is taken whatever it is, so that a negative number of one digit comes through.
        char number[] = {text_[at], '\0', '\0'};
        const bool hasTwo = at + 1 < text_.size() && IsDigit(text_[at + 1]);
        if (hasTwo) number[1] = text_[at + 1];
        (device_.*begin)(std::atoi(number));
        return at + (hasTwo ? 2 : 1);
    }

    DumpingDevice& device_;
    const std::string& text_;
    bool bold_ = false;
    bool italic_ = false;
    bool underline_ = false;
    bool hyperlink_ = false;
    bool accolade_ = false;
};

/// Ends the line also when the device throws within it: `OnEnd` gives back what other threads wait for.
class Line {
public:
    explicit Line(DumpingDevice& device) : device_(device), exceptions_(std::uncaught_exceptions()) {
        device_.OnBegin();
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line() noexcept(false) {
        if (std::uncaught_exceptions() == exceptions_) {
            device_.OnEnd();
            return;
        }
        try {
            device_.OnEnd();
        } catch (...) {}  // the first exception is the one to know
    }

private:
    DumpingDevice& device_;
    int exceptions_;
};

}  // namespace

std::string ColorCode(int color) { return "`C" + std::to_string(color) + "`"; }

void WriteMarkedUp(DumpingDevice& device, const std::string& text) {
    const Line line(device);
    MarkUpReader(device, text).Run();
}

}  // namespace KM
