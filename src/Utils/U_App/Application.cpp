#include "Utils/U_App/Application.h"

#include "Utils/U_IO/FileNames.h"

namespace KM::Application {
namespace {

int exitCode = 0;

std::string& CurrentName() {
    static std::string name;
    return name;
}

bool IsOpening(const std::string& argument) { return argument.starts_with('"') && !argument.ends_with('"'); }

}  // namespace

void Arguments(int argc, char** const argv) {
    std::vector<std::string>& arguments = Arguments();
    arguments.clear();
    bool isQuoted = false;
    for (int i = 0; argv != nullptr && i < argc && argv[i] != nullptr; ++i) {
        const std::string argument = argv[i];
        if (isQuoted) {
            arguments.back() += argument;
            isQuoted = !argument.ends_with('"');
        } else {
            arguments.push_back(argument);
            isQuoted = IsOpening(argument);
        }
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
