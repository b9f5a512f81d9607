#include "Utils/U_Console/OutputFormatter.h"

namespace KM {
namespace {

constexpr const char* Bold = "`B`";

}  // namespace

OutputFormatter::~OutputFormatter() = default;
void OutputFormatter::OnInit() {}
void OutputFormatter::OnClose() {}
std::string OutputFormatter::Header() const { return {}; }
std::string OutputFormatter::Footer() const { return {}; }
bool OutputFormatter::HasNoLabels() const { return false; }
std::string OutputFormatter::OpenMarkStart() const { return {}; }
std::string OutputFormatter::OpenMarkEnd() const { return {}; }
bool OutputFormatter::IsOpenLabelPlain() const { return false; }
std::string OutputFormatter::CloseMarkStart() const { return {}; }
std::string OutputFormatter::CloseMarkEnd() const { return {}; }
bool OutputFormatter::IsCloseLabelPlain() const { return false; }
std::string OutputFormatter::OpenLabelStyleStart() const { return {}; }
std::string OutputFormatter::OpenLabelStyleEnd() const { return {}; }
std::string OutputFormatter::CloseLabelStyleStart() const { return {}; }
std::string OutputFormatter::CloseLabelStyleEnd() const { return {}; }

std::string OutputFormatterBoldLabel::OpenLabelStyleStart() const { return Bold; }
std::string OutputFormatterBoldLabel::OpenLabelStyleEnd() const { return Bold; }
std::string OutputFormatterBoldLabel::CloseLabelStyleStart() const { return Bold; }
std::string OutputFormatterBoldLabel::CloseLabelStyleEnd() const { return Bold; }

std::string XMLFormatter::OpenMarkStart() const { return "`C7`<"; }
std::string XMLFormatter::OpenMarkEnd() const { return "`C7`>"; }
std::string XMLFormatter::CloseMarkStart() const { return "`C7`</"; }
std::string XMLFormatter::CloseMarkEnd() const { return "`C7`>"; }

}  // namespace KM
