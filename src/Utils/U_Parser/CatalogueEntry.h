#pragma once

#include <array>
#include <string>

#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {

/// An entry of the catalogue, a number for good, with texts that live as long as the program.
class CatalogueEntry : public Expression {
public:
    struct Description {
        const char* name;
        const char* help;    // how it is written is told behind it
        int precedence = 0;  // 0 is a function, all else an infix operator
    };

    explicit CatalogueEntry(const Description& description) : description_(description) { BeNumber(); }

    int OpPrecedence() const override { return description_.precedence; }
    std::string Name() const override { return description_.name; }
    std::string Help() const override {
        const std::string help = description_.help;
        if (description_.precedence != 0) return help + " " + description_.name + ".";
        return help + (help.empty() ? "" : " ") + "Function call format(prefixed).";
    }

protected:
    CatalogueEntry(const Description& description, const double* value)
        : Expression(value), description_(description) {}

private:
    Description description_;
};

/// `Class` must derive from this as `Cloned<Class, count>`.
template <class Class, int Count>
class Cloned : public CatalogueEntry {
public:
    using CatalogueEntry::CatalogueEntry;
    Expression* Clone() const final { return new Class(static_cast<const Class&>(*this)); }
    int Parameters() const final { return Count; }
    void OnOperands() final {
        for (std::size_t i = 0; i < operands_.size(); ++i) operands_[i].Find(*this, i);
    }

protected:
    double Number(std::size_t operand) const { return operands_[operand].Value(*this, operand); }
    bool IsText(std::size_t operand) const {
        return !operands_[operand].IsPlainNumber() && Expression::IsText(operand);
    }

private:
    std::array<Operand, Count> operands_;
};

// Numbers in, a number out. Operands are evaluated from left to right.

template <double (*Rule)(double)>
class Of1 final : public Cloned<Of1<Rule>, 1> {
public:
    using Cloned<Of1<Rule>, 1>::Cloned;
    double ToDouble() const override { return Rule(this->Number(0)); }
};

template <double (*Rule)(double, double)>
class Of2 final : public Cloned<Of2<Rule>, 2> {
public:
    using Cloned<Of2<Rule>, 2>::Cloned;
    double ToDouble() const override {
        const double first = this->Number(0);
        return Rule(first, this->Number(1));
    }
};

/// Evaluates the second operand first.
template <double (*Rule)(double, double)>
class Of2Backwards final : public Cloned<Of2Backwards<Rule>, 2> {
public:
    using Cloned<Of2Backwards<Rule>, 2>::Cloned;
    double ToDouble() const override {
        const double second = this->Number(1);
        return Rule(this->Number(0), second);
    }
};

template <double (*Rule)(double, double, double)>
class Of3 final : public Cloned<Of3<Rule>, 3> {
public:
    using Cloned<Of3<Rule>, 3>::Cloned;
    double ToDouble() const override {
        const double first = this->Number(0);
        const double second = this->Number(1);
        return Rule(first, second, this->Number(2));
    }
};

template <class Entry>
void Register(ParsingSession& session, const CatalogueEntry::Description& description) {
    session.Add(description.name, session.AddToDealloc(new Entry(description)));
}

}  // namespace KM::Parsing
