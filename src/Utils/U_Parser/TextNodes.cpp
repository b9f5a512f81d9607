#include "Utils/U_Parser/TextNodes.h"

#include "Utils/U_Parser/NumberText.h"

namespace KM::Parsing {

AddType* AddType::Clone() const { return new AddType(*this); }

// In a chain of sums the operand at its left end decides for all. Found once: asking down the chain at each of its
// levels would cost the square of its length.
void AddType::OnOperands() {
    const auto* const left = dynamic_cast<const AddType*>(subExpressions[0]);
    decider_ = left != nullptr ? left->decider_ : subExpressions[0];
}

bool AddType::EvaluateAsString() { return decider_ != nullptr ? decider_->EvaluateAsString() : IsText(0); }

double AddType::ToDouble() const {
    if (decider_ != nullptr ? decider_->EvaluateAsString() : IsText(0)) {
        ToString();
        return 0.0;
    }
    const double left = Value(0);
    return left + Value(1);
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
