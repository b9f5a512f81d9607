#pragma once

#include <string>
#include <vector>

#include "Numbers.h"

namespace KM::Tool {

/// How the value of an option is written, checked and read.
enum class Kind { Switch, Whole, Number, Numbers, Point, Direction, Places, Length, Distances, Text, Path, Files, Expressions };

/// Whether the values stand on the command line by themselves, without the name of the option.
constexpr bool IsPositional(Kind kind) { return kind == Kind::Files || kind == Kind::Expressions; }

/// What a kind of value is called: by the settings, and in a help text.
struct KindNames {
    const char* type;
    const char* placeholder;
};
const KindNames& NamesOf(Kind kind);

/// One option of a verb, declared once: it is a setting of the verb's action, an option of the command line, and a line of
/// the help.
struct Option {
    std::string name;  ///< of the command line, without "--": "whole-words". The setting is then "WholeWords"
    Kind kind = Kind::Text;
    std::string defaultValue;
    std::string help;
    bool isNeeded = false;  ///< of a text or a path: it has no default and must be given
};

class Values;

/// What `kmmesh VERB` does: an action of the framework under the key "Mesh." and the name, with settings of its own.
/// Each verb is a static object in a file of its own, with an `Entry` beside it:
///
///     void Run(const Values& values) { ... }
///     const Verb verb{"area", "adds up the area of parts", {InputFiles(), {"unit", Kind::Text, "mm", "..."}}, Run};
///     const Entry<verb> entry;
struct Verb {
    std::string name;
    std::string help;             ///< one line, small letter first, no full stop
    std::vector<Option> options;  ///< one at most is positional
    void (*run)(const Values&);   ///< throws `Failure` when it cannot do its work

    /// "Mesh.Area", the key of the action.
    std::string Key() const;
    /// The option of this name, which must be there.
    const Option& At(const std::string& option) const;
    /// The option whose values stand by themselves; null if there is none.
    const Option* Positional() const;
    /// "Actions.Mesh.Area.Unit".
    std::string SettingOf(const std::string& option) const;
};

/// The option of verbs that read STL files.
Option InputFiles();

/// The settings of a verb, as the configuration has them.
class Values {
public:
    explicit Values(const Verb& verb) : verb_(verb) {}

    bool IsOn(const std::string& option) const;
    int Whole(const std::string& option) const;
    double Number(const std::string& option) const;
    /// In units of a part with this diagonal, greater than 0; see Distances.h.
    /// @throws Failure  when the text does not fit
    double Length(const std::string& option, double diagonal) const;
    /// Ascending, in units of a part with this diagonal; see Distances.h.
    /// @throws Failure  when the text does not fit
    std::vector<double> Distances(const std::string& option, double diagonal) const;
    // See Numbers.h.
    // @throws Failure  when the text does not fit
    std::vector<double> Numbers(const std::string& option) const;
    TPoint<double> Point(const std::string& option) const;
    TPoint<double> Direction(const std::string& option) const;
    std::vector<Place> Places(const std::string& option) const;
    /// Of a text or a path.
    /// @throws Failure  when it is needed and empty
    std::string Text(const std::string& option) const;
    /// The value of the setting, and those of its children, in their order, without empty ones. What stands in a CDATA
    /// section is taken as it is.
    std::vector<std::string> Texts(const std::string& option) const;
    /// The same.
    /// @throws Failure  when there is none
    std::vector<std::string> Files(const std::string& option) const;

    /// The name of the setting, for what a verb itself has to say of a value.
    std::string SettingOf(const std::string& option) const { return verb_.SettingOf(option); }

private:
    /// What `read` makes of the text; its failures get the name of the setting in front.
    template <class Read>
    auto Fitting(const std::string& option, Read read) const;

    const Verb& verb_;
};

/// Gives the next slice of the verb's progress, up to this share of the whole, to the tasks that begin from now on.
void NextSlice(double upTo);

/// Runs the verb with the present settings. A failure passes on as an `Exception`, which the run of the application tells
/// in the log and makes an exit code of; people get one line on standard error.
void Execute(const Verb& verb);

/// All verbs, sorted by name.
const std::vector<const Verb*>& AllVerbs();

/// Declares all verbs to the settings and to the table of actions; once, at the start of `main`, since the order in which
/// static objects of several files are made is free, and that of the settings must not be.
void RegisterVerbs();

void Enter(const Verb& verb, void (*action)());

/// Enters a verb into the list while the program is loaded.
template <const Verb& verb>
struct Entry {
    Entry() {
        Enter(verb, [] { Execute(verb); });
    }
};

}  // namespace KM::Tool
