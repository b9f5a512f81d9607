#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <map>

#include "Distances.h"
#include "Help.h"
#include "KmVersion.h"

namespace KM::Tool {
namespace {

constexpr int Lacking = 3;
constexpr int Invalid = 4;

/// The parser of one command line. What it reads lands in its fields.
class Parser {
public:
    Parser() {
        app_.set_version_flag("--version", "kmmesh " KM_VERSION);
        AddCommonOptions(app_);
        app_.require_subcommand(1);
        for (const Verb* verb : AllVerbs()) AddVerb(*verb);
    }

    CommandLine Run(std::vector<std::string> arguments) {
        CommandLine result;
        TakeBehindMark(arguments);
        std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
        try {
            app_.parse(arguments);
            result.request = Take();
        } catch (const CLI::CallForHelp&) {
            result.text = HelpAskedFor();
        } catch (const CLI::CallForVersion& version) {
            result.text = version.what() + std::string("\n");
        } catch (const CLI::ParseError& error) {
            Explain(error, result);
        }
        return result;
    }

private:
    /// Behind "--" all words are files. The parser would end the verb there, once it has a file.
    void TakeBehindMark(std::vector<std::string>& arguments) {
        const auto mark = std::find(arguments.begin(), arguments.end(), "--");
        if (mark == arguments.end()) return;
        behindMark_.assign(mark + 1, arguments.end());
        arguments.erase(mark, arguments.end());
    }

    void AddCommonOptions(CLI::App& app) {
        app.set_help_flag("-h,--help");
        app.add_flag("-q,--quiet", request_.isQuiet);
        app.add_option("--verbose", request_.verbosity)->check(CLI::Range(0, 6));
        app.add_option("--save", request_.save)->check(&IsNameOfConfiguration);
    }

    static std::string IsNameOfConfiguration(const std::string& name) {
        std::string extension = std::filesystem::path(name).extension().string();
        std::transform(extension.begin(), extension.end(), extension.begin(),
                       [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
        return extension == ".xml" ? "" : "\"" + name + "\" does not end in .xml";
    }

    void AddVerb(const Verb& verb) {
        CLI::App& app = *app_.add_subcommand(verb.name);
        AddCommonOptions(app);
        for (const Option& option : verb.options) AddOption(app, verb, option);
        apps_[&verb] = &app;
    }

    void AddOption(CLI::App& app, const Verb& verb, const Option& option) {
        std::vector<std::string>& values = values_[&verb][option.name];
        if (option.kind == Kind::Files) {
            app.add_option("FILE", values);
        } else if (option.kind == Kind::Switch) {
            app.add_flag_callback("--" + option.name, [&values] { values = {"Y"}; });
        } else {
            CLI::Option& parsed = *app.add_option("--" + option.name, values)->expected(1)->required(option.isNeeded);
            if (option.kind == Kind::Whole) parsed.check(CLI::TypeValidator<int>("INTEGER"));
            if (option.kind == Kind::Number) parsed.check(CLI::Number);
            if (option.kind == Kind::Distances) parsed.check(FaultOfDistances);
        }
    }

    const Verb* VerbAskedFor() const {
        for (const auto& [verb, app] : apps_)
            if (app->parsed()) return verb;
        return nullptr;
    }

    std::string HelpAskedFor() const {
        const Verb* const verb = VerbAskedFor();
        return verb == nullptr ? HelpOfTool() : HelpOf(*verb);
    }

    void TakeFiles(const Verb& verb) {
        const auto& options = verb.options;
        const auto files =
            std::find_if(options.begin(), options.end(), [](const Option& o) { return o.kind == Kind::Files; });
        if (files == options.end()) {
            if (!behindMark_.empty()) throw CLI::ExtrasError(behindMark_);
            return;
        }
        std::vector<std::string>& values = values_[&verb][files->name];
        values.insert(values.end(), behindMark_.begin(), behindMark_.end());
        if (values.empty()) throw CLI::RequiredError("FILE");
    }

    Request Take() {
        TakeFiles(*VerbAskedFor());
        request_.verb = VerbAskedFor();
        for (const auto& [name, values] : values_[request_.verb])
            if (!values.empty()) request_.values[name] = values;
        return request_;
    }

    void Explain(const CLI::ParseError& error, CommandLine& result) const {
        const Verb* const verb = VerbAskedFor();
        const std::vector<std::string> unknown = app_.remaining();
        const bool isLacking = unknown.empty() && dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
        result.exitCode = isLacking ? Lacking : Invalid;
        result.fault = error.what();
        // The parser misses the verb first, and calls it by another name.
        if (verb == nullptr && isLacking) result.fault = "no verb";
        if (verb == nullptr && !unknown.empty()) result.fault = "\"" + unknown.front() + "\" is no verb and no option";
        result.fault += "; see kmmesh " + (verb == nullptr ? "" : verb->name + ' ') + "--help";
    }

    CLI::App app_;
    std::map<const Verb*, CLI::App*> apps_;
    std::map<const Verb*, std::map<std::string, std::vector<std::string>>> values_;
    std::vector<std::string> behindMark_;
    Request request_;
};

bool IsVerb(const std::string& word) {
    const auto& verbs = AllVerbs();
    return std::any_of(verbs.begin(), verbs.end(), [&](const Verb* verb) { return verb->name == word; });
}

/// Letters alone, and no file: somebody meant a verb. A configuration has an extension.
bool IsMisspeltVerb(const std::string& word) {
    const bool isWord = std::all_of(
        word.begin(), word.end(), [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-'; });
    std::error_code error;
    return isWord && !word.empty() && !std::filesystem::exists(word, error);
}

}  // namespace

bool IsForPeople(const std::vector<std::string>& arguments) {
    if (arguments.empty()) return false;
    const std::string& first = arguments.front();
    return first.starts_with('-') || IsVerb(first) || IsMisspeltVerb(first);
}

CommandLine Parse(const std::vector<std::string>& arguments) {
    const std::string& first = arguments.front();
    if (!first.starts_with('-') && !IsVerb(first))
        return {{}, "", "\"" + first + "\" is no verb and no file; see kmmesh --help", Invalid};
    return Parser().Run(arguments);
}

}  // namespace KM::Tool
