#include "Configuration.h"

#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sstream>

#include "Failure.h"
#include "Utils/U_XMLReader/Dump.h"
#include "Utils/U_XMLReader/Reader.h"

namespace KM::Tool {
namespace {

namespace fs = std::filesystem;

std::string Absolute(const std::string& path) {
    if (path.empty()) throw Misuse("\"\"", "is no name of a file");
    return fs::absolute(path).lexically_normal().string();
}

const std::string& Plain(const std::string& text) {
    if (text.starts_with('%'))
        throw Misuse('"' + text + '"', "begins with %, which stands for an argument in a configuration");
    return text;
}

void SetFiles(XML::Element& setting, const std::vector<std::string>& files) {
    if (files.size() == 1) {
        setting.V(Absolute(files.front()));
        return;
    }
    int number = 0;
    for (const std::string& file : files) {
        std::string name("F");
        name += std::to_string(++number);
        setting.NewChild(name, Absolute(file));
    }
}

/// An option that was not given is left to its default, but for a path: the default is seen from the present folder.
void SetOption(const Request& request, const Option& option, XML::Element& root) {
    const auto given = request.values.find(option.name);
    const bool isGiven = given != request.values.end();
    XML::Element* const setting = isGiven || (option.kind == Kind::Path && !option.defaultValue.empty())
                                      ? &root[request.verb->SettingOf(option.name)]
                                      : nullptr;
    if (setting == nullptr) return;
    if (option.kind == Kind::Files) SetFiles(*setting, given->second);
    else if (option.kind == Kind::Path) setting->V(Absolute(isGiven ? given->second.front() : option.defaultValue));
    else setting->V(Plain(given->second.front()));
}

/// The text of a setting loses line feeds, and blanks at its ends; better told than done.
void CheckReadsBack(const XML::Element& written, const XML::Element& read) {
    if (written.V() != read.V())
        throw Misuse("\"" + written.V() + "\"",
                     "has a line feed, or a blank at an end, which no configuration can hold");
    auto other = read.Children().begin();
    for (const XML::Base* child : written.Children())
        CheckReadsBack(dynamic_cast<const XML::Element&>(*child), dynamic_cast<const XML::Element&>(**other++));
}

}  // namespace

std::string ConfigurationOf(const Request& request) {
    XML::Element root("Settings");
    root["Actions.Execute"].V(request.verb->Key());
    for (const Option& option : request.verb->options) SetOption(request, option, root);
    if (request.verbosity != 0) root["Debug.VerboseLevel"].V(std::to_string(request.verbosity));
    std::ostringstream text;
    text << root;

    XML::Element readBack("Settings");
    XML::ReadElementFromString(text.str(), readBack, true);
    CheckReadsBack(root, readBack);
    return text.str().substr(1) + '\n';  // the writer puts its line feeds in front
}

TemporaryConfiguration::TemporaryConfiguration(const std::string& text) {
    std::error_code noFolder;
    name_ = (fs::temp_directory_path(noFolder) / "kmmesh-XXXXXX.xml").string();
    if (noFolder) throw Failure("temporary folder", noFolder.message() + "; see the variable TMPDIR");
    const int file = mkstemps(name_.data(), 4);
    const bool isWritten = file != -1 && write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    const int error = errno;
    if (file != -1) close(file);
    if (!isWritten) throw Failure(name_, std::string("cannot be written: ") + std::strerror(error));
}

TemporaryConfiguration::~TemporaryConfiguration() { unlink(name_.c_str()); }

}  // namespace KM::Tool
