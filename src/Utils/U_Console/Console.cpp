#include "Utils/U_Console/Console.h"

#include <cstdint>
#include <system_error>

#include "Platform/Terminal.h"
#include "Utils/U_Console/ConsoleState.h"

namespace KM::Console {
namespace {

constexpr std::uint16_t PlainAttribute = 7;  // light grey on black, what a console starts with

// What a console holds at most. A log that never resets its device keeps as much for its dump.
constexpr int MostColumns = 500;
constexpr int MostRows = 32767;

struct State {
    bool dumpEnabled = false;
    int foreground = 7;
    int background = 0;
    bool isForegroundRead = false;
    bool isBackgroundRead = false;
    std::uint16_t attribute = PlainAttribute;       // what the console was told last
    std::uint16_t shownAttribute = PlainAttribute;  // what the terminal shows; it is told with the next text
    ScreenBuffer screen{MostColumns, MostRows};
    std::string lastFailure;
};

State& Now() {
    // Never destroyed: static objects may log after `main`.
    static State& state = *new State;
    return state;
}

/// The console counts blue as 1 and red as 4, a terminal the other way round.
int TerminalColor(int color) { return ((color & 1) << 2) | (color & 2) | ((color & 4) >> 2); }

std::string Sgr(int attribute) {
    // A terminal has colours of its own for plain text, which are not always grey on black.
    if (attribute == PlainAttribute) return "\x1b[0m";
    const int foreground = attribute & 15;
    const int background = (attribute >> 4) & 15;
    std::string text("\x1b[0;");
    text += std::to_string((foreground < 8 ? 30 : 90) + TerminalColor(foreground & 7));
    if (background != 0) {
        text += ';';
        text += std::to_string((background < 8 ? 40 : 100) + TerminalColor(background & 7));
    }
    return text + 'm';
}

void ApplyColors() {
    if (!Now().dumpEnabled) return;
    const unsigned word = static_cast<unsigned>(Now().background) * 16 + static_cast<unsigned>(Now().foreground);
    Now().attribute = static_cast<std::uint16_t>(word);
}

/// Called in the handler of what the buffer of a stream threw: goes on with it only if the stream is told to throw.
void NoteBadBuffer(std::ostream& stream) {
    try {
        stream.setstate(std::ios::badbit);
    } catch (const std::ios::failure&) {}  // what the buffer threw tells more
    if ((stream.exceptions() & std::ios::badbit) != 0) throw;
}

/// As the stream itself would, but without its ceremony for each single byte of a line.
void WriteBytes(std::ostream& stream, const std::string& text) {
    using Traits = std::ostream::traits_type;
    if (stream.tie() != nullptr && stream.good()) stream.tie()->flush();
    for (const char c : text) {
        if (!stream.good()) return stream.setstate(std::ios::failbit);
        bool isWritten = true;
        try {
            isWritten = !Traits::eq_int_type(stream.rdbuf()->sputc(c), Traits::eof());
        } catch (...) { NoteBadBuffer(stream); }
        if (!isWritten) stream.setstate(std::ios::badbit);
    }
}

void ShowColors(const Output& output) {
    State& now = Now();
    if (now.shownAttribute == now.attribute || !output.isColored) return;
    output.stream << Sgr(now.attribute);
    now.shownAttribute = now.attribute;
}

void NoteFailure(const char* function, int error, int line) {
    Now().lastFailure = std::string(__FILE__) + ": Error " + std::to_string(error) + " from " + function + " on line " +
                        std::to_string(line) + ":\n" + std::generic_category().message(error) +
                        "\n\nContinue execution?";
}

}  // namespace

void IsDumpEnabled(bool enabled) { Now().dumpEnabled = enabled; }
bool IsDumpEnabled() { return Now().dumpEnabled; }

int GetForeground() {
    if (Now().isForegroundRead) return Now().foreground;
    Now().isForegroundRead = true;
    return Now().attribute;
}

int GetBackground() {
    if (Now().isBackgroundRead) return Now().background;
    Now().isBackgroundRead = true;
    return (Now().attribute >> 4) & 0xFF;
}

void SetForeground(int color) {
    Now().foreground = color;
    ApplyColors();
}

void SetBackground(int color) {
    Now().background = color;
    ApplyColors();
}

void Output::LookBehind() {
    isTerminal = Platform::IsTerminal(stream);
    isColored = isTerminal && Platform::AreEscapesWanted();
}

void Put(const Output& output, const std::string& text) {
    ShowColors(output);
    WriteBytes(output.stream, text);
    if (!Now().dumpEnabled) return;
    for (const char c : text) Now().screen.Put(c);
}

void EndLine(const Output& output) {
    ShowColors(output);
    const bool isImmediate = (output.stream.flags() & std::ios::unitbuf) != 0;
    if (output.isTerminal || isImmediate) output.stream << std::flush;
}

void SetTitle(const Output& output, const std::string& title) {
    if (!Now().dumpEnabled || !output.isColored) return;
    std::string shown;
    // A title with a control byte would end the sequence, and what follows would go to the screen.
    for (const char c : title)
        if (static_cast<unsigned char>(c) >= 32 && c != 127) shown += c;
    output.stream << "\x1b]0;" << shown << '\x07' << std::flush;
}

void Clear(const Output& output) {
    if (!Now().dumpEnabled) return;
    Now().screen.Clear();
    if (!output.isColored) return;
    ShowColors(output);
    output.stream << "\x1b[2J\x1b[H" << std::flush;
}

void SetSizes(int screenX, int screenY, int bufferX, int bufferY) {
    if (!Now().dumpEnabled) return;
    const Platform::TerminalSize largest = Platform::SizeOfTerminal();
    if (largest.error != 0)
        NoteFailure("GetConsoleScreenBufferInfo", largest.error, __LINE__);
    else if (screenX < largest.columns || screenY < largest.rows)
        NoteFailure("SetConsoleWindowInfo", static_cast<int>(std::errc::not_supported), __LINE__);
    Now().screen.Resize(bufferX, bufferY);
}

const ScreenBuffer& Screen() { return Now().screen; }
const std::string& LastFailure() { return Now().lastFailure; }

}  // namespace KM::Console
