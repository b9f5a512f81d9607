#include "Utils/U_Console/Console.h"

#include <algorithm>
#include <cstdio>

#include "Platform/Terminal.h"
#include "Utils/U_Console/ConsoleState.h"

namespace KM::Console {
namespace {

constexpr int PlainAttribute = 7;  // light grey on black, what a console starts with

struct State {
    bool dumpEnabled = false;
    int foreground = 7;
    int background = 0;
    bool isForegroundRead = false;
    bool isBackgroundRead = false;
    int attribute = PlainAttribute;       // what the console was told last
    int shownAttribute = PlainAttribute;  // what the terminal shows; it is told with the next text
    std::ostream* stream = nullptr;       // written to last
    ScreenBuffer screen{132, 1000};
    std::string lastFailure;
};

State& Now() {
    static State state;
    return state;
}

bool TakesEscapes(const std::ostream& stream) { return Platform::IsTerminal(stream) && Platform::AreEscapesWanted(); }

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
    if (Now().dumpEnabled) Now().attribute = ((Now().background & 15) << 4) | (Now().foreground & 15);
}

void NoteFailure(const char* function, int line) {
    Now().lastFailure = std::string(__FILE__) + ": Error 0 from " + function + " on line " + std::to_string(line) +
                        ":\nThe terminal keeps its size.\n\nContinue execution?";
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

void Put(std::ostream& stream, const std::string& text) {
    State& now = Now();
    if (now.stream != &stream) {
        now.stream = &stream;
        now.shownAttribute = PlainAttribute;
    }
    if (now.shownAttribute != now.attribute && TakesEscapes(stream)) {
        stream << Sgr(now.attribute);
        now.shownAttribute = now.attribute;
    }
    stream << text;
    if (!now.dumpEnabled) return;
    for (const char c : text) now.screen.Put(c);
}

void SetTitle(std::ostream& stream, const std::string& title) {
    if (Now().dumpEnabled && TakesEscapes(stream)) stream << "\x1b]0;" << title << '\x07' << std::flush;
}

void Clear() {
    if (!Now().dumpEnabled) return;
    Now().screen.Clear();
    if (Now().stream != nullptr && TakesEscapes(*Now().stream)) *Now().stream << Sgr(Now().attribute) << "\x1b[2J\x1b[H";
}

void SetSizes(int screenX, int screenY, int bufferX, int bufferY) {
    if (!Now().dumpEnabled) return;
    const Platform::TerminalSize largest = Platform::SizeOfTerminal();
    Now().screen.Resize(bufferX, bufferY);
    if (std::min(screenX, largest.columns) != largest.columns || std::min(screenY, largest.rows) != largest.rows)
        NoteFailure("SetConsoleWindowInfo", __LINE__);
}

const ScreenBuffer& Screen() { return Now().screen; }
const std::string& LastFailure() { return Now().lastFailure; }

}  // namespace KM::Console
