#include "Utils/U_XMLReader/Dump.h"

#include <bitset>
#include <string>
#include <vector>

#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/ConsoleState.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_XMLReader/DumpProcessor.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM::XML {
namespace {

// Sessions beyond the eighth have no digit.
std::string DigitsOf(unsigned long long stamp) { return std::bitset<8>(stamp).to_string(); }

/// Tells an element that stands for something else. False for any other.
bool TellNamed(const Element& element, Processor& processor) {
    if (element.N() == CommentName)
        processor.OnComment(element.V());
    else if (element.N() == CDATAName)
        processor.OnCDATA(element.V());
    else if (element.N() == CommandName)
        processor.OnCommand(element.V());
    else
        return false;
    return true;
}

/// Tells a node of a tree that was built by hand. Classes that a document does not know are left out.
void TellByClass(const Base& node, Processor& processor) {
    if (dynamic_cast<const Comment*>(&node) != nullptr) processor.OnComment(node.V());
    if (dynamic_cast<const CDATA*>(&node) != nullptr) processor.OnCDATA(node.V());
}

void TellStart(const Element& element, Processor& processor) {
    processor.OnElementBegin(element.N());
    if (IsDumpSettingSession()) processor.OnAttribute("SS", DigitsOf(static_cast<unsigned>(element.SettingSession())));
    for (const auto& [key, attribute] : element.Attributes())
        if (!attribute.N().empty()) processor.OnAttribute(attribute.N(), attribute.V());
    processor.OnAttributesEnd();
    if (!element.V().empty()) processor.OnValue(element.V());
}

/// The walk over one tree. It keeps the open elements itself, since a tree can be deeper than the call stack.
class Walk {
public:
    explicit Walk(Processor& processor) : processor_(processor) {}

    void Tell(const Base& root) {
        Enter(root);
        while (!open_.empty()) {
            Open& top = open_.back();
            if (top.next != top.end)
                Enter(**top.next++);
            else
                Leave();
        }
    }

private:
    struct Open {
        const Element* element;
        Element::ChildList::const_iterator next;
        Element::ChildList::const_iterator end;
    };

    void Enter(const Base& node) {
        const auto* const element = dynamic_cast<const Element*>(&node);
        if (element == nullptr) return TellByClass(node, processor_);
        if (TellNamed(*element, processor_)) return;
        TellStart(*element, processor_);
        const Element::ChildList& children = element->Children();
        open_.push_back({element, children.begin(), children.end()});
    }

    void Leave() {
        processor_.OnElementEnd(open_.back().element->Children().empty());
        open_.pop_back();
    }

    Processor& processor_;
    std::vector<Open> open_;
};

void TellChildren(const Element* parent, Processor& processor) {
    if (parent == nullptr) return;
    for (const Base* child : parent->Children()) Walk(processor).Tell(*child);
}

/// Keeps the foreground of the console for its life time, and leaves a terminal in it.
class KeptForeground {
public:
    explicit KeptForeground(std::ostream& out) : output_{out} { output_.LookBehind(); }
    KeptForeground(const KeptForeground&) = delete;
    KeptForeground& operator=(const KeptForeground&) = delete;
    ~KeptForeground() {
        Console::SetForeground(color_);
        Console::EndLine(output_);
    }

private:
    Console::Output output_;
    int color_ = Console::GetForeground();
};

}  // namespace

void Dump(const Element& element, Processor& processor, const Element* before, const Element* after) {
    if (TellNamed(element, processor)) return;
    const bool isRoot = element.P() == nullptr;
    if (isRoot) TellChildren(before, processor);
    Walk(processor).Tell(element);
    if (isRoot) TellChildren(after, processor);
}

std::ostream& operator<<(std::ostream& out, const Element& element) {
    const KeptForeground kept(out);
    Console::SetForeground(7);
    DumpProcessor processor(out, true, "  ", 0);
    Dump(element, processor, nullptr, nullptr);
    return out;
}

void DumpSessionSettingNameTable(std::ostream&) {
    using Verbose::EMessageType;
    const Verbose::Scope scope("DumpSessionSettingNameTable");
    Verbose::WriteMessage_1(EMessageType::Info, "This is a legend for the SS (= SessionSetting) attribute;");
    Verbose::WriteMessage_1(EMessageType::Info, "00000001 - Static initialisation;");
    unsigned session = 1;
    for (const std::string& name : SettingSessionNames())
        Verbose::WriteMessage_1(EMessageType::Info, DigitsOf(session *= 2) + " - " + name);
}

}  // namespace KM::XML
