#include "Utils/U_App/AnalyzeSettings.h"

#include <vector>

#include "Utils/U_App/Services.h"
#include "Utils/U_App/SettingComparison.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_XMLReader/Dump.h"
#include "Utils/U_XMLReader/DumpProcessor.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM::Application {
namespace {

using Verbose::EMessageType;

constexpr int StaticInitialisation = 1;  // what every declared setting has in its stamp

// Far beyond any real key; keeps a spoilt file, with a key in each line of the log, from filling the memory.
constexpr std::size_t LongestKey = 1000;

/// Dumps show the stamps while it lives.
class StampsShown {
public:
    StampsShown() { XML::SetIsDumpSettingSession(true); }
    StampsShown(const StampsShown&) = delete;
    StampsShown& operator=(const StampsShown&) = delete;
    ~StampsShown() { XML::SetIsDumpSettingSession(false); }
};

/// Puts the colours of the console back, which a dump leaves as its last piece had them.
class ColorsKept {
public:
    ColorsKept() = default;
    ColorsKept(const ColorsKept&) = delete;
    ColorsKept& operator=(const ColorsKept&) = delete;
    ~ColorsKept() {
        Console::SetForeground(foreground_);
        Console::SetBackground(background_);
    }

private:
    int foreground_ = Console::GetForeground();
    int background_ = Console::GetBackground();
};

/// The walk over the settings. It keeps the open elements itself, since a tree can be deeper than the call stack.
class Analysis {
public:
    explicit Analysis(const XML::Element& settings) : result_(settings.N()) {
        result_.SettingSession(settings.SettingSession());
        Enter(settings);
    }

    void Walk() {
        while (!open_.empty()) {
            Open& top = open_.back();
            if (top.next == top.element->Children().end()) open_.pop_back();
            else Enter(**top.next++);
        }
    }

    void DumpChanges() const {
        if (!hasChanges_) return;
        Verbose::WriteMessage_1(EMessageType::Info, "Changed settings:");
        const ColorsKept colors;
        XML::DumpProcessor processor(Services::DumpStream(), true, "  ", Verbose::CurrentIndentation());
        XML::Dump(result_, processor, nullptr, nullptr);
    }

private:
    struct Open {
        const XML::Element* element;
        XML::Element::ChildList::const_iterator next;
    };

    void Enter(const XML::Base& node) {
        const auto* const element = dynamic_cast<const XML::Element*>(&node);
        if (element == nullptr || element->N() == XML::CommentName) return;
        open_.push_back({element, element->Children().begin()});
        Judge(*element);
    }

    void Judge(const XML::Element& element) {
        const Comparison comparison = CompareWithDefault(element);
        if (comparison == Comparison::Same) return;
        if ((element.SettingSession() & StaticInitialisation) == 0) Warn("it is set but it isn't used.");
        else if (comparison == Comparison::HasNoType)
            Warn("has a value but it hasn't a type! Probable an obsolete setting.");
        else if (comparison == Comparison::HasUnknownType) Warn("has a type that isn't known!");
        else KeepChange(element);
    }

    void Warn(const std::string& what) const {
        Verbose::WriteMessage_1(EMessageType::Warning, "Element: \"" + Key() + "\" " + what);
    }

    /// The key of the innermost open element; the root has no part in it. Of a key that is too long, the last parts.
    std::string Key() const {
        std::size_t first = open_.size();
        for (std::size_t length = 0; first > 1; --first) {
            length += open_[first - 1].element->N().size() + 1;
            if (length > LongestKey && first < open_.size()) break;
        }
        std::string key;
        for (std::size_t i = first; i < open_.size(); ++i) {
            if (i > first) key += '.';
            key += open_[i].element->N();
        }
        return first > 1 ? "..." + key : key;
    }

    void KeepChange(const XML::Element& element) {
        XML::Element* copy = &result_;
        for (std::size_t i = 1; i < open_.size(); ++i) {
            const std::string& name = open_[i].element->N();
            copy = &(*copy)[name.empty() ? "." : name];  // an empty path would be the element itself
            copy->SettingSession(open_[i].element->SettingSession());
        }
        copy->VAddress() = Shown(element, element.V());  // without a stamp of our own
        copy->SetAttribute("Default", Shown(element, element.AttributeValue("Default")));
        hasChanges_ = true;
    }

    std::vector<Open> open_;
    XML::Element result_;
    bool hasChanges_ = false;
};

}  // namespace

void AnalyzeSettings(const XML::Element& settings) {
    const Verbose::Scope scope("AnalyzeSettings");
    XML::DumpSessionSettingNameTable(Services::DumpStream());
    const StampsShown stamps;
    Analysis analysis(settings);
    analysis.Walk();
    analysis.DumpChanges();
}

}  // namespace KM::Application
