// A process of its own for what only a fresh process, or one on a terminal, can show.
// Usage: km_log_child <scene>

#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "Km.h"

using namespace KM;

namespace {

constexpr auto Info = Verbose::EMessageType::Info;

void LogToStandardOutput() {
    Application::Services::DumpStream(std::cout);
    Services::GetOutputFormatter();
    Console::IsDumpEnabled(true);
}

void State() {
    std::cout << Verbose::Level() << Verbose::CurrentIndentation() << '"' << Verbose::IndentAppearance() << '"'
              << Verbose::CurrentLineNumber() << Verbose::LogRecords().size() << Console::IsDumpEnabled()
              << Services::HasOutputFormatter();
}

void Colors() {
    Console::IsDumpEnabled(true);
    Console::SetBackground(0x123);
    Console::SetForeground(5);
    for (int i = 0; i < 2; ++i) std::cout << Console::GetForeground() << ' ' << Console::GetBackground() << ' ';
}

void ColorsOff() {
    Console::SetBackground(1);
    Console::SetForeground(5);
    for (int i = 0; i < 2; ++i) std::cout << Console::GetForeground() << ' ' << Console::GetBackground() << ' ';
}

void Picture() {
    LogToStandardOutput();
    Verbose::WriteMessage_1(Info, "ok");
    WriteLine("x");
}

void Desynchronised() {
    std::ios::sync_with_stdio(false);
    Picture();
}

void Title() {
    LogToStandardOutput();
    Services::GetDumpingDevice()->SetTitle("a\x1b]b\ac");
    Console::IsDumpEnabled(false);
    Services::GetDumpingDevice()->SetTitle("off");
}

void Init() {
    Settings::ToXMLElement("Console.Init").V("Y");
    LogToStandardOutput();
    WriteLine("x");
}

void BadInit() {
    Settings::ToXMLElement("Console.Color.Background").V("%9");
    Init();
}

void Light() {
    LogToStandardOutput();
    Services::GetDumpingDevice()->EnableDarkBackground(false);
    WriteLine("x");
}

void Redirected() {
    std::ostringstream elsewhere;
    std::streambuf* const terminal = std::cout.rdbuf(elsewhere.rdbuf());
    Picture();
    std::cout.rdbuf(terminal);
    std::cout << elsewhere.str();
}

// Made before the log is first used, so destroyed after what the log would have made for its own end.
struct LateLogger {
    bool isOn = false;
    ~LateLogger() {
        if (!isOn) return;
        const Verbose::Scope scope("Late");
        Verbose::WriteMessage_1(Info, "from a destructor");
        Services::GetDumpingDevice()->Redraw();
        Verbose::ClearLog();
    }
} lateLogger;

void Late() {
    LogToStandardOutput();
    lateLogger.isOn = true;
    WriteLine("x");
}

}  // namespace

int main(int argc, char** argv) {
    const std::map<std::string, std::function<void()>> scenes = {{"state", State},
                                                                 {"colors", Colors},
                                                                 {"colors off", ColorsOff},
                                                                 {"picture", Picture},
                                                                 {"desynchronised", Desynchronised},
                                                                 {"title", Title},
                                                                 {"init", Init},
                                                                 {"bad init", BadInit},
                                                                 {"light", Light},
                                                                 {"redirected", Redirected},
                                                                 {"late", Late}};
    const auto scene = scenes.find(argc > 1 ? argv[1] : "");
    if (scene == scenes.end()) return 2;
    scene->second();
}
