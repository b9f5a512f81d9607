#pragma once

#include <string>

#include "Utils/U_Parser/Expression.h"

namespace KM::Parsing {

/// "+": the sum of numbers. As a text it joins texts, when one of the two is a text; whether it is a text is up to its
/// first operand alone.
class KM_API AddType : public Expression {
public:
    AddType* Clone() const override;
    double ToDouble() const override;
    std::string ToString() const override;
    bool EvaluateAsString() override;
    int Parameters() const override { return 2; }
    int OpPrecedence() const override { return 6; }
    std::string Name() const override;
    std::string Help() const override;
    void OnOperands() override;

private:
    bool IsTextSum() const {
        if (IsNumber()) return false;
        return leftEnd_ != nullptr ? leftEnd_->EvaluateAsString() : IsText(0);
    }
    double JoinForEffects() const;

    Expression* leftEnd_ = nullptr;
    Operand left_;
    Operand right_;
};

/// "$TOSTRING(width, precision, value)": digits behind the point as `precision` says (6 if it is negative), filled with
/// blanks to the width, on the right of the text if the width is negative. Both are bounded by 4096.
class KM_API ToStringType : public Expression {
public:
    ToStringType* Clone() const override;
    double ToDouble() const override { return Value(2); }
    std::string ToString() const override;
    bool EvaluateAsString() override { return true; }
    int Parameters() const override { return 3; }
    std::string Name() const override;
};

}  // namespace KM::Parsing
