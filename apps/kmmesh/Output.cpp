#include "Output.h"

#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <vector>

#include "ProgressLine.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM::Tool {
namespace {

bool isQuiet = false;

bool IsErrorColored() {
    const char* const noColor = std::getenv("NO_COLOR");
    return isatty(STDERR_FILENO) != 0 && (noColor == nullptr || *noColor == '\0');
}

}  // namespace

void BeQuiet() { isQuiet = true; }

void Print(const std::string& lines) {
    ProgressLine::Clear();
    if (!Console::IsDumpEnabled()) {
        std::cout << lines;
        return;
    }
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) WriteLine(line);
}

void Tell(const std::string& lines) {
    if (!isQuiet) Print(lines);
}

std::string OnOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127; }, '?');
    return text;
}

void Note(const std::string& line) {
    if (isQuiet) return;
    ProgressLine::Clear();
    std::cout << std::flush;
    std::cerr << "kmmesh: " << OnOneLine(line) << '\n';
}

void Complain(const std::string& line, const std::string& below) {
    ProgressLine::Clear();
    std::cout << std::flush;
    const char* const red = IsErrorColored() ? "\x1b[31m" : "";
    const char* const plain = IsErrorColored() ? "\x1b[0m" : "";
    std::cerr << red << "kmmesh: " << OnOneLine(line) << plain << '\n' << below;
}

std::string Format(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int size = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(static_cast<std::size_t>(size) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, again);
    va_end(again);
    text.pop_back();
    return text;
}

std::string Count(long long count, const std::string& one) {
    return std::to_string(count) + ' ' + one + (count == 1 ? "" : "s");
}

}  // namespace KM::Tool
