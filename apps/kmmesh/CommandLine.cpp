#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <filesystem>
#include <map>

#include "Configuration.h"
#include "Distances.h"
#include "Failure.h"
#include "Help.h"
#include "KmVersion.h"

namespace KM::Tool {
namespace {

constexpr int Lacking = 3;
constexpr int Invalid = 4;

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

std::string Between(const std::string& text, const std::string& opening, const std::string& closing) {
    const std::size_t begin = text.find(opening) + opening.size();
    return text.substr(begin, text.find(closing, begin) - begin);
}

template <class T>
bool IsRead(const std::string& text, T& value) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end;
}

std::string FaultOfWhole(const std::string& text) {
    int value = 0;
    return IsRead(text, value) ? "" : Quoted(text) + " is no whole number";
}

std::string FaultOfNumber(const std::string& text) {
    double value = 0.0;
    return IsRead(text, value) ? "" : Quoted(text) + " is no number";
}

template <auto read>
std::string FaultOfReading(const std::string& text) {
    try {
        read(text);
        return "";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

std::string FaultOfVerbosity(const std::string& text) {
    return text.size() == 1 && text[0] >= '0' && text[0] <= '6' ? "" : Quoted(text) + " is no level from 0 to 6";
}

std::string FaultOfNameOfConfiguration(const std::string& name) {
    return IsNameOfConfiguration(name) ? "" : Quoted(name) + " does not end in .xml";
}

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
        app.add_option("--verbose", request_.verbosity)->check(FaultOfVerbosity);
        app.add_option("--save", request_.save)->check(FaultOfNameOfConfiguration);
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
            parsed.allow_extra_args(false);  // or the files behind it would be values, too
            if (option.kind == Kind::Whole) parsed.check(FaultOfWhole);
            if (option.kind == Kind::Number) parsed.check(FaultOfNumber);
            if (option.kind == Kind::Numbers) parsed.check(FaultOfReading<NumbersOf>);
            if (option.kind == Kind::Point) parsed.check(FaultOfReading<PointOf>);
            if (option.kind == Kind::Direction) parsed.check(FaultOfReading<DirectionOf>);
            if (option.kind == Kind::Places) parsed.check(FaultOfReading<PlacesOf>);
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

    /// The parser's own words are of several voices.
    std::string FaultOf(const CLI::ParseError& error) const {
        std::vector<std::string> unknown = app_.remaining(true);
        if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr && unknown.empty()) unknown = behindMark_;
        if (!unknown.empty() && VerbAskedFor() == nullptr) return unknown.front() + ": no such verb or option";
        if (!unknown.empty()) return unknown.front() + ": not expected here";
        const std::string text = error.what();
        // It misses the verb first, and calls it by another name.
        if (IsLacking(error))
            return VerbAskedFor() == nullptr ? "no verb" : text.substr(0, text.find(' ')) + ": is needed";
        if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
            return text.substr(0, text.find(':')) + ": takes one value";
        if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr)  // "Could not convert: --text = x"
            return Between(text, ": ", " = ") + ": takes no value";
        return text;
    }

    static bool IsLacking(const CLI::ParseError& error) {
        return dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    }

    void Explain(const CLI::ParseError& error, CommandLine& result) const {
        const Verb* const verb = VerbAskedFor();
        result.exitCode = IsLacking(error) && app_.remaining(true).empty() ? Lacking : Invalid;
        result.fault = FaultOf(error) + "; see kmmesh " + (verb == nullptr ? "" : verb->name + ' ') + "--help";
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
        return {{}, "", first + ": no such verb or file; see kmmesh --help", Invalid};
    return Parser().Run(arguments);
}

}  // namespace KM::Tool
