#include "Utils/U_Parser/TextNodes.h"

#include "Utils/U_Parser/NumberText.h"

namespace KM::Parsing {

AddType* AddType::Clone() const { return new AddType(*this); }

// In a chain of sums the operand at its left end decides for all. Found once: asking down the chain at each of its
// levels would cost the square of its length.
void AddType::OnOperands() {
    if (subExpressions.empty()) return;
    Expression* const left = subExpressions[0];
    const auto* const sum = dynamic_cast<const AddType*>(left);
    leftEnd_ = sum != nullptr && sum->leftEnd_ != nullptr ? sum->leftEnd_ : left;
    BeNumber(IsNumber(0));
    left_.Find(*this, 0);
    right_.Find(*this, 1);
}

bool AddType::EvaluateAsString() { return IsTextSum(); }

double AddType::ToDouble() const {
    if (IsTextSum()) return JoinForEffects();
    const double left = left_.Value(*this, 0);
    return left + right_.Value(*this, 1);
}

double AddType::JoinForEffects() const {
    ToString();
    return 0.0;
}

std::string AddType::ToString() const {
    if (!IsText(0) && !IsText(1)) return Expression::ToString();
    std::string text = Text(0);
    text += Text(1);
    return text;
}

std::string AddType::Name() const { return "AddType"; }

std::string AddType::Help() const {
    return "Add opperator. Works on all types. For strings append strings. Infix format.";
}

ToStringType* ToStringType::Clone() const { return new ToStringType(*this); }

std::string ToStringType::ToString() const {
    const double value = Value(2);
    const int precision = Int(1);
    return FixedText(Int(0), precision, value);
}

std::string ToStringType::Name() const { return "ToStringType"; }

}  // namespace KM::Parsing
