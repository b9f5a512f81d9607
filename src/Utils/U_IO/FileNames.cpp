#include "Utils/U_IO/FileNames.h"

#include <algorithm>

#include "Platform/Files.h"

namespace KM::IO {
namespace {

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

std::string WithoutPath(const std::string& name) { return name.substr(FileNameManipulation::Path(name).size()); }

}  // namespace

namespace FileNameManipulation {

std::string Path(const std::string& name) {
    const std::size_t separator = name.find_last_of("/\\");
    return separator == std::string::npos ? std::string() : name.substr(0, separator + 1);
}

std::string Name(const std::string& name) {
    const std::string last = WithoutPath(name);
    return last.substr(0, last.rfind('.'));
}

std::string Extension(const std::string& name) {
    const std::string last = WithoutPath(name);
    const std::size_t dot = last.rfind('.');
    return dot == std::string::npos ? std::string() : last.substr(dot + 1);
}

std::string CurrentWorkingDirectory() {
    // Not validated: a folder whose name ends in a blank would become another one.
    std::string folder = Platform::CurrentFolder();
    std::replace(folder.begin(), folder.end(), '/', '\\');
    if (folder.empty() || folder.back() != '\\') folder += '\\';
    return folder;
}

void ConvertToAbsolutePath(std::string& name) {
    const bool hasDrive = name.size() > 1 && name[1] == ':';
    const bool isAbsolute = !name.empty() && IsSeparator(name[0]);
    if (!hasDrive && !isAbsolute) name = CurrentWorkingDirectory() + name;
}

}  // namespace FileNameManipulation

void ValidateFileName(std::string& name) {
    std::string valid;
    valid.reserve(name.size() + 1);
    const auto separate = [&valid] {
        while (!valid.empty() && valid.back() == ' ') valid.pop_back();
        valid += '\\';
    };
    for (const char c : name) {
        if (IsSeparator(c))
            separate();
        else
            valid += c;
    }
    if (name.empty() || !IsSeparator(name.back())) separate();
    name = std::move(valid);
}

std::string ValidateFileName(const std::string& name) {
    std::string valid = name;
    ValidateFileName(valid);
    return valid;
}

std::string ValidateFileName(const char* name) { return ValidateFileName(std::string(name != nullptr ? name : "")); }

}  // namespace KM::IO
