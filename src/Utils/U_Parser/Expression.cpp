#include "Utils/U_Parser/Expression.h"

#include <cmath>

#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_Parser/NodePool.h"
#include "Utils/U_Parser/NumberText.h"

namespace KM::Parsing {

Expression::Expression(const Expression& other) : Expression(other, other.value_) {}

// The pool knows the other node, not this one.
Expression::Expression(const Expression& other, const double* value)
    : subExpressions(other.subExpressions), value_(value), depth_(other.depth_), isNumber_(other.isNumber_) {}

Expression::~Expression() { NodePool::Forget(*this); }

int Expression::ToInt() const { return TruncateToInt(std::floor(ToDouble() + 0.5)); }

double Expression::ToDouble() const { return 0.0; }

std::string Expression::ToString() const { return NumberText(ToDouble()); }

bool Expression::IsDoubleHolder() { return false; }

bool Expression::IsStringHolder() { return false; }

void Expression::Set(const std::string&) {}

void Expression::Set(double) {}

bool Expression::EvaluateAsString() { return false; }

int Expression::Parameters() const { return 0; }

int Expression::OpPrecedence() const { return 0; }

std::string Expression::Name() const { return "Expression"; }

std::string Expression::Help() const { return ""; }

void Expression::OnOperands() {}

int Expression::Int(std::size_t operand) const {
    return operand < subExpressions.size() ? subExpressions[operand]->ToInt() : TruncateToInt(Invalid);
}

std::string Expression::Text(std::size_t operand) const {
    return operand < subExpressions.size() ? subExpressions[operand]->ToString() : NumberText(Invalid);
}

}  // namespace KM::Parsing
