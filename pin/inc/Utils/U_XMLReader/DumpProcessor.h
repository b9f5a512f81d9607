#pragma once

#include <array>
#include <ostream>
#include <string>
#include <vector>

#include "KmApi.h"
#include "Utils/U_XMLReader/Processor.h"

namespace KM::XML {

/// Writes events as text: each element on a line of its own, in the colours of the settings "XML.Out.Color.*". Where
/// the stream is the console, it is coloured; anywhere else the text is plain, and only the colours that the console
/// holds change.
///
/// Settings decide while it writes: "XML.Out.Export.Attributes." and the name of an attribute switches that attribute
/// (one without such a setting is on), "XML.Out.Export.Value" all values. Attributes without a value are left out.
class KM_API DumpProcessor : public Processor {
public:
    /// Reads the colours.
    /// @param out     not owned, outlives the processor
    /// @param escape  attributes and values are written with the five entities; other texts never are
    /// @param indent  stands at the start of a line, once for each level
    /// @param depth   level of the first line. Lines are indented for 0 to 1000 levels, whatever the depth.
    DumpProcessor(std::ostream& out, bool escape, const std::string& indent, int depth);
    ~DumpProcessor() override;

    void OnElementBegin(const std::string& name) override;
    /// Without an open element, the name is empty.
    void OnElementEnd(bool noChildren) override;
    void OnAttribute(const std::string& name, const std::string& value) override;
    void OnAttributesEnd() override;
    void OnValue(const std::string& value) override;
    void OnComment(const std::string& text) override;
    void OnCDATA(const std::string& text) override;
    void OnCommand(const std::string& text) override;

private:
    /// The parts of a text that have colours of their own.
    enum class Part {
        NameOfElement,
        ValueOfElement,
        NameOfAttribute,
        ValueOfAttribute,
        NameOfCDATA,
        ValueOfCDATA,
        NameOfComment,
        ValueOfComment,
        NameOfCommand,
        ValueOfCommand,
        Operator,
        Disabled
    };
    using ColorSet = std::array<int, 12>;

    static ColorSet ColorsOf(const std::string& key);
    void Put(const std::string& text);
    void PutColored(Part part, const std::string& text);
    void PutValue(Part part, const std::string& value);
    void PutNewLine();
    void PutSpecial(Part name, const char* begin, Part value, const std::string& text, const char* end);

    std::ostream& out_;
    bool escape_;
    std::string indent_;
    long long depth_;  // wider than what the caller gives, so that no level runs over
    ColorSet foreground_;
    ColorSet background_;
    std::vector<std::string> open_;  // names of the open elements
    bool isConsole_;
};

}  // namespace KM::XML
