#include "Configuration.h"

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sstream>

#include "Expressions.h"
#include "Failure.h"
#include "Utils/U_Console/Console.h"
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

void SetFile(XML::Element& setting, const std::string& file) { setting.V(Absolute(file)); }

/// Whether the reader of configurations gives this back as it is, and not an argument in its place.
bool IsPlainValue(const std::string& text) {
    return !text.starts_with('%') && !text.starts_with('"') && text.find_first_of("\r\n") == std::string::npos;
}

/// A text of any form goes into a CDATA section.
void SetExpression(XML::Element& setting, const std::string& word) {
    const std::string text = ExpressionOf(word);
    if (IsPlainValue(text)) return setting.V(text);
    if (text.find("]]>") != std::string::npos)
        throw Misuse('"' + text + '"', "needs a blank ahead of each >, since no configuration can hold \"]]>\" in it");
    setting.NewChild(XML::CDATAName, text);
}

/// A single word is the value, several are children.
void SetWords(XML::Element& setting, const std::vector<std::string>& words,
              void (*set)(XML::Element&, const std::string&)) {
    if (words.size() == 1) return set(setting, words.front());
    int number = 0;
    for (const std::string& word : words) {
        std::string name("F");
        name += std::to_string(++number);
        set(setting.NewChild(name), word);
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
    if (option.kind == Kind::Files) SetWords(*setting, given->second, SetFile);
    else if (option.kind == Kind::Expressions) SetWords(*setting, given->second, SetExpression);
    else if (option.kind == Kind::Path) setting->V(Absolute(isGiven ? given->second.front() : option.defaultValue));
    else setting->V(Plain(given->second.front()));
}

/// The text of a setting loses line feeds, and blanks at its ends; better told than done.
void CheckReadsBack(const XML::Element& written, const XML::Element& read) {
    // The writer adds white space to sections of several lines, which changes no expression.
    const bool isSame = written.N() == XML::CDATAName ? written.V() == Trimmed(read.V()) : written.V() == read.V();
    if (!isSame)
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

bool IsNameOfConfiguration(const std::string& name) {
    std::string extension = fs::path(name).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    return extension == ".xml";
}

std::string BrokenConfigurationOf(const std::vector<std::string>& words) {
    Console::IsDumpEnabled(false);
    for (const std::string& word : words) {
        std::error_code error;
        if (!IsNameOfConfiguration(word) || !fs::is_regular_file(word, error)) continue;
        try {
            XML::Element nowhere("");
            XML::ReadElement(word, nowhere, true);
        } catch (...) {
            return word;
        }
    }
    return "";
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
