#include "Utils/U_App/Application.h"

#include <cstdlib>

#include "Utils/U_App/HostMessages.h"
#include "Utils/U_IO/FileNames.h"

namespace KM::Application {
namespace {

int exitCode = 0;

std::string& CurrentName() {
    static std::string name;
    return name;
}

constexpr std::size_t WordsWithWindow = 5;  // how a host starts a tool: the window comes last

std::vector<std::string> WordsOf(int argc, char** const argv) {
    std::vector<std::string> words;
    for (int i = 0; argv != nullptr && i < argc && argv[i] != nullptr; ++i) words.emplace_back(argv[i]);
    return words;
}

}  // namespace

void Arguments(int argc, char** const argv) {
    const std::vector<std::string> words = WordsOf(argc, argv);
    if (words.size() == WordsWithWindow) HostMessages::Window(std::strtoull(words.back().c_str(), nullptr, 10));
    std::vector<std::string>& arguments = Arguments();
    arguments.clear();
    bool isQuoted = false;
    for (const std::string& word : words) {
        const bool isOpening = !isQuoted && word.starts_with('"');
        if (isQuoted) arguments.back() += word;
        else arguments.push_back(word);
        isQuoted = (isQuoted || isOpening) && !word.ends_with('"');
    }
}

int ExitCode() { return exitCode; }

void ExitCode(int code) { exitCode = code; }

std::string Name() { return CurrentName(); }

void Name(const std::string& name) { CurrentName() = name; }

std::string GetEXEFilePath() {
    return Arguments().empty() ? std::string() : IO::FileNameManipulation::Path(Arguments().front());
}

}  // namespace KM::Application
