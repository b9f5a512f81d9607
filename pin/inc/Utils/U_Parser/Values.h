#pragma once

#include <string>

#include "Utils/U_Parser/Expression.h"

namespace KM::Parsing {

// The leaves of a tree. A text is the number at its start, 0.0 if there is none: with white space ahead, with an
// exponent, in base 16 behind "0x", "inf" or "nan"; the point is "." in every locale.

/// A number in the expression itself. It can be assigned to: "1 = 2" changes the node.
class KM_API DoubleConst : public Expression {
public:
    explicit DoubleConst(double value);
    DoubleConst(const DoubleConst& other);

    DoubleConst* Clone() const override;
    double ToDouble() const override { return number_; }
    bool IsDoubleHolder() override { return true; }
    using Expression::Set;
    void Set(double value) override { number_ = value; }
    std::string Name() const override;
    std::string Help() const override;

private:
    double number_;
};

/// A text in the expression itself.
class KM_API StringConst : public Expression {
public:
    explicit StringConst(std::string text);

    StringConst* Clone() const override;
    double ToDouble() const override;
    std::string ToString() const override { return text_; }
    bool IsStringHolder() override { return true; }
    using Expression::Set;
    void Set(const std::string& text) override { text_ = text; }
    bool EvaluateAsString() override { return true; }
    std::string Name() const override;
    std::string Help() const override;

private:
    std::string text_;
};

/// A variable: a number that the session owns, and that must outlive the node.
class KM_API DoubleChanger : public Expression {
public:
    explicit DoubleChanger(double* target) : Expression(target), target_(target) {}

    DoubleChanger* Clone() const override;
    double ToDouble() const override { return *target_; }
    bool IsDoubleHolder() override { return true; }
    using Expression::Set;
    void Set(double value) override { *target_ = value; }
    std::string Name() const override;
    std::string Help() const override;

private:
    double* target_;
};

/// A variable: a text that the session owns, and that must outlive the node.
class KM_API StringChanger : public Expression {
public:
    explicit StringChanger(std::string* target) : target_(target) {}

    StringChanger* Clone() const override;
    double ToDouble() const override;
    std::string ToString() const override { return *target_; }
    bool IsStringHolder() override { return true; }
    using Expression::Set;
    void Set(const std::string& text) override { *target_ = text; }
    bool EvaluateAsString() override { return true; }
    std::string Name() const override;
    std::string Help() const override;

private:
    std::string* target_;
};

/// No value: what an empty text, an empty block and a declaration are.
class KM_API Void : public Expression {
public:
    Void* Clone() const override;
    std::string Name() const override;
};

}  // namespace KM::Parsing
