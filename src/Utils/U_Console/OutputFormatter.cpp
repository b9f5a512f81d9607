#include "Utils/U_Console/OutputFormatter.h"

namespace KM {
namespace {

constexpr const char* Bold = "`B`";

}  // namespace

OutputFormatter::~OutputFormatter() = default;
void OutputFormatter::OnInit() {}
void OutputFormatter::OnClose() {}
std::string OutputFormatter::Header() { return {}; }
std::string OutputFormatter::Footer() { return {}; }
bool OutputFormatter::HasNoLabels() { return false; }
std::string OutputFormatter::OpenMarkStart() { return {}; }
std::string OutputFormatter::OpenMarkEnd() { return {}; }
bool OutputFormatter::IsOpenLabelPlain() { return false; }
std::string OutputFormatter::CloseMarkStart() { return {}; }
std::string OutputFormatter::CloseMarkEnd() { return {}; }
bool OutputFormatter::IsCloseLabelPlain() { return false; }
std::string OutputFormatter::OpenLabelStyleStart() { return {}; }
std::string OutputFormatter::OpenLabelStyleEnd() { return {}; }
std::string OutputFormatter::CloseLabelStyleStart() { return {}; }
std::string OutputFormatter::CloseLabelStyleEnd() { return {}; }

std::string OutputFormatterBoldLabel::OpenLabelStyleStart() { return Bold; }
std::string OutputFormatterBoldLabel::OpenLabelStyleEnd() { return Bold; }
std::string OutputFormatterBoldLabel::CloseLabelStyleStart() { return Bold; }
std::string OutputFormatterBoldLabel::CloseLabelStyleEnd() { return Bold; }

std::string XMLFormatter::OpenMarkStart() { return "`C7`<"; }
std::string XMLFormatter::OpenMarkEnd() { return "`C7`>"; }
std::string XMLFormatter::CloseMarkStart() { return "`C7`</"; }
std::string XMLFormatter::CloseMarkEnd() { return "`C7`>"; }

}  // namespace KM
