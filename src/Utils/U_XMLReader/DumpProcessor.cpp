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
    static const char* const names[std::tuple_size_v<ColorSet>] = {
        "Element.Name", "Element.Value", "Attribute.Name", "Attribute.Value", "CDATA.Name", "CDATA.Value",
        "Comment.Name", "Comment.Value", "Command.Name",   "Command.Value",   "Operator",   "Disabled"};
    const Element& settings = Settings::ToXMLElement(key);
    ColorSet colors;
    for (std::size_t part = 0; part < colors.size(); ++part) colors[part] = settings.ToInt(names[part]);
    return colors;
}

void DumpProcessor::OnElementBegin(const std::string& name) {
    open_.push_back(name);
    PutNewLine();
    PutColored(Part::Operator, "<");
    PutColored(Part::NameOfElement, name);
    ++depth_;
}

void DumpProcessor::OnElementEnd(bool noChildren) {
    --depth_;
    if (!noChildren) PutNewLine();
    PutColored(Part::Operator, "</");
    PutColored(Part::NameOfElement, open_.empty() ? std::string() : open_.back());
    PutColored(Part::Operator, ">");
    if (!open_.empty()) open_.pop_back();
}

void DumpProcessor::OnAttribute(const std::string& name, const std::string& value) {
    if (value.empty() || Settings::ToInt("XML.Out.Export.Attributes." + name) == 0) return;
    PutColored(Part::NameOfAttribute, " " + name);
    PutColored(Part::Operator, "=\"");
    PutValue(Part::ValueOfAttribute, value);
    PutColored(Part::Operator, "\"");
}

void DumpProcessor::OnAttributesEnd() { PutColored(Part::Operator, ">"); }

void DumpProcessor::OnValue(const std::string& value) {
    if (Settings::ToInt("XML.Out.Export.Value") != 0) PutValue(Part::ValueOfElement, value);
}

void DumpProcessor::OnComment(const std::string& text) {
    PutSpecial(Part::NameOfComment, "<!--", Part::ValueOfComment, text, "-->");
}

void DumpProcessor::OnCDATA(const std::string& text) {
    PutSpecial(Part::NameOfCDATA, "<![CDATA[", Part::ValueOfCDATA, text, "]]>");
}

void DumpProcessor::OnCommand(const std::string& text) {
    PutSpecial(Part::NameOfCommand, "<?", Part::ValueOfCommand, text, "?>");
}

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
    Console::SetForeground(foreground_[static_cast<std::size_t>(part)]);
    Console::SetBackground(background_[static_cast<std::size_t>(part)]);
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
