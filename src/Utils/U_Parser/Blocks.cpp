#include "Utils/U_Parser/Blocks.h"

#include "Utils/U_Parser/Words.h"

namespace KM::Parsing {
Agregate* Agregate::Clone() const { return new Agregate(*this); }

double Agregate::ToDouble() const {
    double last = 0.0;
    for (std::size_t i = 0; i < subExpressions.size(); ++i) last = Value(i);
    return last;
}

std::string Agregate::ToString() const {
    std::string last;
    for (const Expression* statement : subExpressions) last = statement->ToString();
    return last;
}

Agregate::Route Agregate::FindRoute() const { return {subExpressions.empty() ? nullptr : subExpressions.back()}; }

std::string Agregate::Name() const { return "Agregate"; }

std::string Agregate::Help() const { return "Used to hold an Agregate expression."; }

AgregateBegin* AgregateBegin::Clone() const { return new AgregateBegin(*this); }

std::string AgregateBegin::Name() const { return std::string(OpenMark); }

std::string AgregateBegin::Help() const { return "Used to hold a Open paranthesis."; }

Function* Function::Clone() const { return new Function(*this); }

Function::Route Function::FindRoute() const { return {body, link_.get(), &subExpressions}; }

std::string Function::Name() const { return "Function"; }

std::string Function::Help() const { return "Used to hold a Function call."; }

}  // namespace KM::Parsing
