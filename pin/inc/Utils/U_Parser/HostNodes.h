#pragma once

#include <ostream>
#include <string>

#include "Utils/U_Parser/Expression.h"

namespace KM::XML {
class Element;
}

namespace KM::Parsing {

// Functions that a host registers under a name of its choice, for instance
//   session.Add("WriteLine", session.AddToDealloc(new WriteLineType(std::cout, true)));

/// Reads a setting: its one operand is the key, a path below the element. The value is taken at the first use, and kept.
/// It is a text if the attribute "Type" of the setting is "String"; quotes round it are taken off.
///
/// A key that is not there makes its parts in the tree, as `XML::Element::operator[]` does.
/// @throws ParsingException  from the first use, without operand or for a setting without type; from `Set` always
class KM_API XMLValueConst : public Expression {
public:
    /// The element must outlive the node.
    explicit XMLValueConst(XML::Element* element) : element_(element) {}
    explicit XMLValueConst(XML::Element& element) : element_(&element) {}

    /// Takes the value now. Only the first call does something, even if it fails.
    void Update() const;

    XMLValueConst* Clone() const override;
    double ToDouble() const override;
    std::string ToString() const override;
    bool IsDoubleHolder() override;
    bool IsStringHolder() override;
    void Set(const std::string& text) override;
    void Set(double value) override;
    bool EvaluateAsString() override;
    int Parameters() const override { return 1; }
    std::string Name() const override;
    std::string Help() const override;

private:
    XML::Element* element_;
    mutable std::string text_;
    mutable double number_ = 0.0;
    mutable bool isString_ = false;
    mutable bool updated_ = false;
};

/// Writes the text of its operand on a line of its own, each time it is evaluated. The line end stands ahead of the line,
/// but not of the first one that any such node of the process writes.
class KM_API WriteLineType : public Expression {
public:
    /// The stream must outlive the node. A node that is not enabled writes nothing, and leaves its operand alone.
    WriteLineType(std::ostream& stream, bool enabled) : stream_(stream), enabled_(enabled) {}

    WriteLineType* Clone() const override;
    double ToDouble() const override;
    int Parameters() const override { return 1; }
    std::string Name() const override;
    std::string Help() const override;

private:
    std::ostream& stream_;
    bool enabled_;
};

}  // namespace KM::Parsing
