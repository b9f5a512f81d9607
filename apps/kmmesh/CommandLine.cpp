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

/// Null if there is none.
const Verb* VerbCalled(const std::string& name) {
    const auto& verbs = AllVerbs();
    const auto found = std::find_if(verbs.begin(), verbs.end(), [&](const Verb* verb) { return verb->name == name; });
    return found != verbs.end() ? *found : nullptr;
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
        ShieldExpressions(arguments);
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

    /// "-3 + 1" is no option, nor "[1, 2]" a list of values. With a blank ahead, which changes no expression, the parser
    /// takes both as they are.
    void ShieldExpressions(std::vector<std::string>& arguments) {
        const auto name = std::find_if(arguments.begin(), arguments.end(), VerbCalled);
        const Verb* const verb = name != arguments.end() ? VerbCalled(*name) : nullptr;
        const Option* const positional = verb != nullptr ? verb->Positional() : nullptr;
        if (positional == nullptr || positional->kind != Kind::Expressions) return;
        for (auto word = name + 1; word != arguments.end(); ++word) {
            const CLI::Option* const before = apps_[verb]->get_option_no_throw(*(word - 1));
            const bool isValue = before != nullptr && before->get_items_expected_min() > 0;
            if (!isValue && !IsOption(*word)) word->insert(0, 1, ' ');
        }
    }

    static bool IsOption(const std::string& word) { return word.starts_with("--") || word == "-q" || word == "-h"; }

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
        if (IsPositional(option.kind)) {
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
            if (option.kind == Kind::Length) parsed.check(FaultOfLength);
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
        const Option* const files = verb.Positional();
        if (files == nullptr) {
            if (!behindMark_.empty()) throw CLI::ExtrasError(behindMark_);
            return;
        }
        std::vector<std::string>& values = values_[&verb][files->name];
        values.insert(values.end(), behindMark_.begin(), behindMark_.end());
        if (values.empty() && files->kind == Kind::Files) throw CLI::RequiredError("FILE");
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
    return first.starts_with('-') || VerbCalled(first) != nullptr || IsMisspeltVerb(first);
}

CommandLine Parse(const std::vector<std::string>& arguments) {
    const std::string& first = arguments.front();
    if (!first.starts_with('-') && VerbCalled(first) == nullptr)
        return {{}, "", first + ": no such verb or file; see kmmesh --help", Invalid};
    return Parser().Run(arguments);
}

}  // namespace KM::Tool
