#include "Utils/U_XMLReader/DumpProcessor.h"

#include "Utils/U_App/Services.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/ConsoleState.h"
#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/Entities.h"
#include "Utils/U_XMLReader/NewLine.h"

namespace KM::XML {
namespace {

Console::Output OutputTo(std::ostream& out) {
    Console::Output output{out};
    output.LookBehind();
    return output;
}

// The console holds what goes to a terminal, and what the log's own device is given.
bool IsConsole(std::ostream& out) { return OutputTo(out).isTerminal || &out == &Application::Services::DumpStream(); }

}  // namespace

DumpProcessor::DumpProcessor(std::ostream& out, bool escape, const std::string& indent, int depth)
    : out_(out),
      escape_(escape),
      indent_(indent),
      depth_(depth),
      foreground_(ColorsOf("XML.Out.Color.Foreground")),
      background_(ColorsOf("XML.Out.Color.Background")),
      isConsole_(IsConsole(out)) {}

DumpProcessor::~DumpProcessor() = default;

DumpProcessor::ColorSet DumpProcessor::ColorsOf(const std::string& key) {
    static const char* const names[PartCount] = {"Element.Name", "Element.Value", "Attribute.Name", "Attribute.Value",
                                                 "CDATA.Name",   "CDATA.Value",   "Comment.Name",   "Comment.Value",
                                                 "Command.Name", "Command.Value", "Operator",       "Disabled"};
    const Element& settings = Settings::ToXMLElement(key);
    ColorSet colors;
    for (std::size_t part = 0; part < PartCount; ++part) colors[part] = settings.ToInt(names[part]);
    return colors;
}

void DumpProcessor::OnElementBegin(const std::string& name) {
    open_.push_back(name);
    PutNewLine();
    PutColored(Operator, "<");
    PutColored(ElementName, name);
    ++depth_;
}

void DumpProcessor::OnElementEnd(bool noChildren) {
    --depth_;
    if (!noChildren) PutNewLine();
    PutColored(Operator, "</");
    PutColored(ElementName, open_.empty() ? std::string() : open_.back());
    PutColored(Operator, ">");
    if (!open_.empty()) open_.pop_back();
}

void DumpProcessor::OnAttribute(const std::string& name, const std::string& value) {
    if (value.empty() || Settings::ToInt("XML.Out.Export.Attributes." + name) == 0) return;
    PutColored(AttributeName, " " + name);
    PutColored(Operator, "=\"");
    PutValue(AttributeValue, value);
    PutColored(Operator, "\"");
}

void DumpProcessor::OnAttributesEnd() { PutColored(Operator, ">"); }

void DumpProcessor::OnValue(const std::string& value) {
    if (Settings::ToInt("XML.Out.Export.Value") != 0) PutValue(ElementValue, value);
}

void DumpProcessor::OnComment(const std::string& text) { PutSpecial(CommentName, "<!--", CommentValue, text, "-->"); }

void DumpProcessor::OnCDATA(const std::string& text) { PutSpecial(CDATAName, "<![CDATA[", CDATAValue, text, "]]>"); }

void DumpProcessor::OnCommand(const std::string& text) { PutSpecial(CommandName, "<?", CommandValue, text, "?>"); }

void DumpProcessor::PutSpecial(Part name, const char* begin, Part value, const std::string& text, const char* end) {
    PutNewLine();
    PutColored(name, begin);
    PutColored(value, text);
    if (text.find('\n') != std::string::npos) PutNewLine();
    PutColored(name, end);
}

void DumpProcessor::PutValue(Part part, const std::string& value) {
    PutColored(part, escape_ ? WithEntities(value) : value);
}

void DumpProcessor::PutColored(Part part, const std::string& text) {
    Console::SetForeground(foreground_[part]);
    Console::SetBackground(background_[part]);
    Put(text);
}

void DumpProcessor::PutNewLine() { Put(NewLine(depth_, indent_)); }

void DumpProcessor::Put(const std::string& text) {
    if (isConsole_)
        Console::Put(OutputTo(out_), text);
    else
        out_ << text;
}

}  // namespace KM::XML
