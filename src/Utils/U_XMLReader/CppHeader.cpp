#include "Utils/U_XMLReader/CppHeader.h"

#include <string>
#include <vector>

#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_XMLReader/NewLine.h"

namespace KM::XML {
namespace {

const std::string& TypeOf(const Element& element) { return element.AttributeValue("Type"); }

std::string Quoted(const Element& element, const char* attribute) {
    return '"' + element.AttributeValue(attribute) + '"';
}

struct PlainType {
    const char* type;
    const char* richName;
    const char* cppName;
};

constexpr PlainType PlainTypes[] = {
    {"Int32", "RTInt32", "int"},          {"Bool", "RTBool", "bool"},      {"Real64", "RTReal64", "double"},
    {"AutoReal64", "RTReal64", "double"}, {"Real32", "RTReal32", "float"}, {"AutoReal32", "RTReal32", "float"},
    {"String", "RTString", "String"},
};

const PlainType* PlainTypeOf(const std::string& type) {
    for (const PlainType& plain : PlainTypes)
        if (type == plain.type) return &plain;
    return nullptr;
}

bool IsEnumeration(const std::string& type) { return type == "Enum" || type == "Flag"; }

/// The walk over a settings tree. It keeps the open elements itself, since a tree can be deeper than the call stack.
class Generator {
public:
    Generator(std::ostream& out, const Element& root, int indent) : out_(out), root_(root), indent_(indent) {}

    void Run() {
        out_ << "#pragma once\n//Automatic generated header file.\nnamespace KM\n{\n\t using namespace ::KM::RichType;";
        Enter(root_, true);
        while (!open_.empty()) Step();
        out_ << "\n}//namespace KM";
    }

private:
    struct Open {
        const Element* element;
        Element::ChildList::const_iterator next;
    };

    void Step() {
        Open& top = open_.back();
        const auto end = top.element->Children().end();
        if (top.next == end) {
            const Element& element = *top.element;
            open_.pop_back();
            return Close(element);
        }
        const auto* const child = dynamic_cast<const Element*>(*top.next++);
        const bool isLast = top.next == end;
        if (child != nullptr) Enter(*child, isLast);
    }

    void Enter(const Element& element, bool isLast) {
        if (TypeOf(element) == "Descriptor") return;
        Begin(element, isLast);
        open_.push_back({&element, element.Children().begin()});
    }

    /// Each open element is one tab.
    void Line(int deeper, const std::string& text) {
        out_ << NewLine(indent_ + static_cast<long long>(open_.size()) + deeper, "\t") << text;
    }

    void Begin(const Element& element, bool isLast) {
        const std::string& type = TypeOf(element);
        if (const PlainType* plain = PlainTypeOf(type))
            Line(0, std::string("RTPODFactory(") + plain->richName + ", " + element.N() + ", " + plain->cppName + ", " +
                        Quoted(element, "Default") + ", " + Quoted(element, "Help") + ") ;");
        else if (type == "EnumValue" || type == "FlagValue")
            Line(0, element.N() + (element.V().empty() ? "" : " = " + element.V()) + (isLast ? "" : ","));
        else if (IsEnumeration(type))
            Line(0, "RTEnumBegin(" + element.N() + ", " + Quoted(element, "Default") + ", " + Quoted(element, "Help") +
                        ") ");
        else if (type.empty())
            BeginClass(element);
        else
            Verbose::WriteMessage_1(Verbose::EMessageType::Error,
                                    "Type: " + type + " is unknown while processing element: " + element.N() + "!");
    }

    void BeginClass(const Element& element) {
        out_ << '\n';
        Line(0, "class " + element.N() + "Type: public Base");
        Line(0, "{");
        Line(0, "public:");
        Line(1, "RTExpandAttributes(" + element.N() + ", " + Quoted(element, "Help") + ")");
    }

    void Close(const Element& element) {
        const std::string& type = TypeOf(element);
        if (IsEnumeration(type)) {
            Line(0, "}; } " + element.N() + ";");
            out_ << '\n';
        }
        if (!type.empty()) return;
        if (!element.Children().empty()) WriteApply(element);
        Line(0, &element == &root_ ? "};//" + element.N() : "} " + element.N() + ";");
    }

    void WriteApply(const Element& element) {
        out_ << '\n';
        Line(1, "void Apply(Visitor& v)");
        Line(1, "{");
        Line(1, "\tAutoRichTypeVisitor(v);");
        Line(1, "\tv(*this);");
        for (const Base* node : element.Children()) {
            const auto* const child = dynamic_cast<const Element*>(node);
            if (child != nullptr && TypeOf(*child) != "Descriptor") Line(1, "\t" + child->N() + ".Apply(v);");
        }
        Line(1, "}");
    }

    std::ostream& out_;
    const Element& root_;
    int indent_;
    std::vector<Open> open_;
};

}  // namespace

void ToCPPHeader(std::ostream& out, const Element& root, int indent) { Generator(out, root, indent).Run(); }

}  // namespace KM::XML
