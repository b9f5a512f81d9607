#include "Verb.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <new>

#include "Distances.h"
#include "FailureInText.h"
#include "KmVersion.h"
#include "Output.h"
#include "Utils/U_App/Factory.h"
#include "Utils/U_App/Progress.h"
#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/Element.h"

namespace KM::Tool {
namespace {

/// "whole-words" becomes "WholeWords".
std::string InCapitals(const std::string& name) {
    std::string result;
    bool isFirst = true;
    for (const char c : name) {
        if (c != '-') result += isFirst ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
        isFirst = c == '-';
    }
    return result;
}

struct ByName {
    bool operator()(const Verb* a, const Verb* b) const { return a->name < b->name; }
};
using Table = std::map<const Verb*, void (*)(), ByName>;

Table& Entries() {
    static Table table;  // made by whichever file is loaded first
    return table;
}

void Register(const Verb& verb, void (*action)()) {
    const Factory::FactorySubscriber subscriber(verb.Key(), "V" KM_VERSION, action, "", verb.help, __FILE__,
                                                std::to_string(__LINE__));
    for (const Option& option : verb.options)
        Settings::Add(verb.SettingOf(option.name), option.defaultValue, NamesOf(option.kind).type, option.help, "", "",
                      "", __FILE__, std::to_string(__LINE__), true);
}

/// Comments and the like are elements with names that no setting has.
bool IsSetting(const XML::Base& child) {
    return dynamic_cast<const XML::Element*>(&child) != nullptr && child.N() != XML::CommentName &&
           child.N() != XML::CDATAName && child.N() != XML::CommandName;
}

/// Adds the value of the setting, and what its CDATA sections hold.
void AddTexts(const std::string& key, std::vector<std::string>& texts) {
    texts.push_back(Settings::ToString(key));
    for (const XML::Base* child : Settings::ToXMLElement(key).Children())
        if (child->N() == XML::CDATAName) texts.push_back(child->V());
}

}  // namespace

const KindNames& NamesOf(Kind kind) {
    static constexpr KindNames names[] = {
        {"Bool", ""},                // Switch
        {"Int32", " N"},             // Whole
        {"Real64", " N"},            // Number
        {"String", " LIST"},         // Numbers
        {"String", " X,Y,Z"},        // Point
        {"String", " X,Y,Z"},        // Direction
        {"String", " PLACES"},       // Places
        {"String", " SIZE"},         // Length
        {"String", " LIST"},         // Distances
        {"String", " TEXT"},         // Text
        {"String", " PATH"},         // Path
        {"String", "FILE..."},       // Files
        {"String", "EXPRESSION..."}  // Expressions
    };
    return names[static_cast<std::size_t>(kind)];
}

std::string Verb::Key() const { return "Mesh." + InCapitals(name); }

const Option& Verb::At(const std::string& option) const {
    const auto found = std::find_if(options.begin(), options.end(), [&](const Option& o) { return o.name == option; });
    if (found != options.end()) return *found;
    throw KmException("In Verb::At. The verb " + name + " has no option " + option, __FILE__, __LINE__);
}

const Option* Verb::Positional() const {
    const auto found =
        std::find_if(options.begin(), options.end(), [](const Option& o) { return IsPositional(o.kind); });
    return found != options.end() ? &*found : nullptr;
}

std::string Verb::SettingOf(const std::string& option) const {
    return "Actions." + Key() + '.' + InCapitals(At(option).name);
}

Option InputFiles() { return {"files", Kind::Files, "", "STL files, text or binary"}; }

bool Values::IsOn(const std::string& option) const { return Settings::ToBool(verb_.SettingOf(option)); }
int Values::Whole(const std::string& option) const { return Settings::ToInt(verb_.SettingOf(option)); }
double Values::Number(const std::string& option) const { return Settings::ToDouble(verb_.SettingOf(option)); }

template <class Read>
auto Values::Fitting(const std::string& option, Read read) const {
    const std::string text = Text(option);
    try {
        return read(text);
    } catch (const Failure& failure) {
        throw Failure(verb_.SettingOf(option), failure.what());
    }
}

double Values::Length(const std::string& option, double diagonal) const {
    return Fitting(option, [&](const std::string& text) { return LengthOf(text, diagonal); });
}
std::vector<double> Values::Distances(const std::string& option, double diagonal) const {
    return Fitting(option, [&](const std::string& text) { return DistancesOf(text, diagonal); });
}
std::vector<double> Values::Numbers(const std::string& option) const { return Fitting(option, NumbersOf); }
TPoint<double> Values::Point(const std::string& option) const { return Fitting(option, PointOf); }
TPoint<double> Values::Direction(const std::string& option) const { return Fitting(option, DirectionOf); }
std::vector<Place> Values::Places(const std::string& option) const { return Fitting(option, PlacesOf); }

std::string Values::Text(const std::string& option) const {
    const std::string text = Settings::ToString(verb_.SettingOf(option));
    if (text.empty() && verb_.At(option).isNeeded) throw Failure(verb_.SettingOf(option), "is not set");
    return text;
}

std::vector<std::string> Values::Texts(const std::string& option) const {
    const std::string key = verb_.SettingOf(option);
    std::vector<std::string> texts;
    AddTexts(key, texts);
    for (const XML::Base* child : Settings::ToXMLElement(key).Children())
        if (IsSetting(*child)) AddTexts(key + '.' + child->N(), texts);
    std::erase(texts, std::string());
    return texts;
}

std::vector<std::string> Values::Files(const std::string& option) const {
    std::vector<std::string> files = Texts(option);
    if (files.empty()) throw Failure(verb_.SettingOf(option), "names no file");
    return files;
}

void NextSlice(double upTo) {
    // The innermost task is that of the action, as long as a verb has begun none.
    if (Progress::Auto* const task = Progress::Default().Last()) task->SubTask(upTo);
}

void Execute(const Verb& verb) {
    try {
        verb.run(Values(verb));
    } catch (const KmException& e) {
        Complain(e);
        throw Exception{e.what(), e.File(), static_cast<int>(e.Line())};
    } catch (const std::bad_alloc&) {
        Complain("not enough memory");
        throw;
    } catch (const std::exception& e) {
        Complain(e.what());
        throw Exception{e.what(), __FILE__, __LINE__};
    } catch (const XUserAbort&) {
        Complain("stopped");
        throw;
    }
}

const std::vector<const Verb*>& AllVerbs() {
    static const std::vector<const Verb*> verbs = [] {
        std::vector<const Verb*> list;
        for (const auto& [verb, action] : Entries()) list.push_back(verb);
        return list;
    }();
    return verbs;
}

void RegisterVerbs() {
    for (const auto& [verb, action] : Entries()) Register(*verb, action);
}

void Enter(const Verb& verb, void (*action)()) { Entries().emplace(&verb, action); }

}  // namespace KM::Tool
