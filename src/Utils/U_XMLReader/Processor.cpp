#include "Utils/U_XMLReader/Processor.h"

namespace KM::XML {

Processor::~Processor() = default;

void Processor::OnElementBegin(const std::string&) {}
void Processor::OnElementEnd(bool) {}
void Processor::OnAttribute(const std::string&, const std::string&) {}
void Processor::OnAttributesEnd() {}
void Processor::OnValue(const std::string&) {}
void Processor::OnComment(const std::string&) {}
void Processor::OnCDATA(const std::string&) {}
void Processor::OnCommand(const std::string&) {}

}  // namespace KM::XML
