#include "Utils/U_Console/ConsoleDumpingDevice.h"

#include <cstdio>
#include <memory>

#include "Platform/Files.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/ConsoleState.h"
#include "Utils/U_IO/Files.h"
#include "Utils/U_Settings/Settings.h"

namespace KM {
namespace {

bool isFirstLine = true;  // of the process, whatever the device

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

/// What a dump shows of a row of the console: up to 50 blanks in a row behind the first other byte, without those at
/// the end.
std::string ShownPart(const std::string& row) {
    constexpr int mostBlanks = 50;
    std::size_t end = 0;
    int blanks = 0;
    for (std::size_t i = row.find_first_not_of(' '); i < row.size() && blanks < mostBlanks; ++i) {
        blanks = row[i] == ' ' ? blanks + 1 : 0;
        if (row[i] != ' ') end = i + 1;
    }
    return row.substr(0, end);
}

void Print(const std::string& text, std::FILE* file) { std::fwrite(text.data(), 1, text.size(), file); }

void DumpScreen(std::FILE* file) {
    constexpr std::size_t mostBlankRows = 10;
    std::size_t blankRows = 0;
    for (const std::string& row : Console::Screen().Rows()) {
        const std::string text = ShownPart(row);
        if (text.empty()) {
            if (++blankRows == mostBlankRows) return;
            continue;
        }
        Print(std::string(blankRows, '\n') + text + '\n', file);
        blankRows = 0;
    }
}

}  // namespace

ConsoleDumpingDevice::ConsoleDumpingDevice(std::ostream& stream) : output_(new Console::Output{stream}) {
    output_->LookBehind();
    Console::Init();
}

ConsoleDumpingDevice::~ConsoleDumpingDevice() = default;

void ConsoleDumpingDevice::SetTitle(const std::string& title) { Console::SetTitle(*output_, title); }

void ConsoleDumpingDevice::FgColorB(int color) {
    // On a light background 0 stands for white, unlike in `AnalyzeColor`.
    if (!IsDarkBackground() && color == 0)
        color = 15;
    else
        AnalyzeColor(color);
    Console::SetForeground(color);
}

void ConsoleDumpingDevice::BkColorB(int color) { Console::SetBackground(color); }

void ConsoleDumpingDevice::Write(const std::string& text) { Console::Put(*output_, text); }

void ConsoleDumpingDevice::OnBegin() {
    std::unique_lock line(line_);
    output_->LookBehind();
    if (!isFirstLine) Console::Put(*output_, "\n");
    isFirstLine = false;
    line.release();  // until `OnEnd`
}

void ConsoleDumpingDevice::OnEnd() {
    const std::lock_guard line(line_, std::adopt_lock);
    Console::EndLine(*output_);
}

void ConsoleDumpingDevice::Reset() {
    isFirstLine = true;
    if (Settings::ToBool("Console.Init")) Console::Init();
    Console::SetSizes(132, 65, 500, 3000);
    Console::Clear(*output_);
}

void ConsoleDumpingDevice::ApplyBackground() { BkColorB(IsDarkBackground() ? 0 : 15); }

void ConsoleDumpingDevice::DumpAll(const std::string& file) {
    if (const OpenFile open{Platform::OpenFile(file, "w")}) {
        const std::string formatter = Settings::ToString("Console.XSLTFormatter");
        if (!formatter.empty()) Print("<?xml-stylesheet type=\"text/xsl\" href=\"" + formatter + "\"?>\n", open.get());
        if (Console::IsDumpEnabled()) DumpScreen(open.get());
    }
    if (Settings::ToBool("Console.ArchiveDumpFile")) IO::Archive(file);
}

}  // namespace KM
